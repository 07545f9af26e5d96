// The 14 fonts that every reader has, so that documents need not embed them (ISO 32000-1, 9.6.2.2).
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_STANDARDFONTNAMES_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_STANDARDFONTNAMES_H_

#include <string_view>

namespace TarnixTools::engines::fonts {

// name: as /BaseFont has it, without the tag of a subset.
bool IsStandardFontName(std::string_view name);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_STANDARDFONTNAMES_H_
