// Directions of mixed text (Unicode Standard Annex 9).
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_BIDILEVELS_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_BIDILEVELS_H_

#include <cstdint>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::fonts {

// The embedding level of each character of a line: odd from right to left. The line's own direction
// is that of its first letter. Throws LibraryMissing.
std::vector<std::uint8_t> BidiLevels(std::u32string_view line);

// The order in which runs with these levels are seen, from left to right: indexes into levels.
std::vector<std::size_t> VisualOrder(const std::vector<std::uint8_t>& levels);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_BIDILEVELS_H_
