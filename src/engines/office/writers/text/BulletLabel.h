// Bullets as text that every face has.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_BULLETLABEL_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_BULLETLABEL_H_

#include <string>

namespace TarnixTools::engines::office {

// What to show for a bullet, and whether it is in the document's face. Fonts of symbols have their
// bullets at codes for private use, which other faces show as an empty box.
struct BulletLabel {
  std::string text;
  bool is_own_face = true;
};

BulletLabel BulletLabelOf(const std::string& text);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_BULLETLABEL_H_
