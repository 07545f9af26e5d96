// Bounds of what is done to fonts.
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_FONTLIMITS_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_FONTLIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::optimizer::limits {

// Codes of more than two bytes that are remembered of one font; one that shows more is kept whole.
inline constexpr std::size_t kMaxLargeCodes = 100'000;
// Fonts that are no objects of their own and refer to nothing, each time that they are used; past
// them, no font is cut down.
inline constexpr std::size_t kMaxFontsInPlace = 1'000;
// Form fields whose fonts are looked for; past them, no font is cut down.
inline constexpr std::size_t kMaxFormFields = 1'000'000;
// Bytes of a font program that is looked at.
inline constexpr std::size_t kMaxProgramBytes = std::size_t{128} << 20;
// Characters in one table of a font.
inline constexpr std::size_t kMaxMappings = 300'000;

}  // namespace TarnixTools::engines::optimizer::limits

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_FONTLIMITS_H_
