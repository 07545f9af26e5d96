// A font program with the glyphs only that a document shows. Glyphs keep their numbers, names and
// character identifiers, so that nothing else in the document has to change.
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_FONTCUTTER_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_FONTCUTTER_H_

#include <optional>
#include <string_view>

#include "engines/optimizer/fonts/FontJob.h"

namespace TarnixTools::engines::optimizer {

struct CutResult {
  std::optional<CutProgram> cut;
  FontLeftAlone left_alone = FontLeftAlone::kSmallest;  // where there is none
};

// program: decoded. There is a cut program only where it is smaller, and where every code that is
// shown surely leads to the outline and the advance that it led to before. Uses nothing but its
// arguments, on any thread.
CutResult CutFont(std::string_view program, const FontJob& job);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_FONTCUTTER_H_
