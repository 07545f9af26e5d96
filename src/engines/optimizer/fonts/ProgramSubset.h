// A subset of a font program by HarfBuzz: glyphs keep their numbers, what is not shown is empty.
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_PROGRAMSUBSET_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_PROGRAMSUBSET_H_

#include <cstdint>
#include <set>
#include <string>

#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::optimizer {

struct SubsetWishes {
  std::set<std::uint32_t> glyphs;
  bool keeps_names = false;  // of glyphs, in a TrueType font
  bool drops_hints = false;
  std::string maps;  // the 'cmap' table that it gets; empty for none
};

// Of a TrueType, OpenType or bare CFF program, as the same kind of program. Empty when it cannot be
// made. Throws LibraryMissing.
std::string SubsetOf(const fonts::FontProgram& program, const SubsetWishes& wishes);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_PROGRAMSUBSET_H_
