// Which installed face stands in for a font that a document does not embed: one of the same name or
// with the same metrics, else one that is alike and has the characters.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_SUBSTITUTEFACE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_SUBSTITUTEFACE_H_

#include <memory>
#include <string>
#include <vector>

#include "engines/support/fonts/FontFace.h"

namespace TarnixTools::engines::pdfa {

// What is wanted of it.
struct FaceWish {
  std::string name;  // as /BaseFont has it
  bool is_fixed_pitch = false;
  bool is_serif = false;
  bool is_bold = false;  // as the descriptor says; the name may, too
  bool is_italic = false;
  std::string language;  // "zh-cn"; empty for none
  // Characters that it is to have, with their advances in thousandths; below 0 where any will do.
  std::vector<std::pair<char32_t, double>> characters;
};

// Null where no face is installed that may be embedded. Throws fonts::LibraryMissing.
std::unique_ptr<fonts::FontFace> FindSubstitute(const FaceWish& wish);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_SUBSTITUTEFACE_H_
