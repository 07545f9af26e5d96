// Bounds on what a document may make a conversion do.
#ifndef TARNIX_ENGINES_OFFICE_LIMITS_H_
#define TARNIX_ENGINES_OFFICE_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::office::limits {

// Bytes of a font's program that is read for its characters.
inline constexpr std::size_t kMaxFontProgramBytes = std::size_t{64} << 20;
// Of one page; what is beyond them is left out, and the page counts as partial.
inline constexpr std::size_t kMaxGlyphsOfPage = 500'000;
inline constexpr std::size_t kMaxPathsOfPage = 200'000;
inline constexpr std::size_t kMaxImagesOfPage = 20'000;
// Fonts of a document that are kept.
inline constexpr std::size_t kMaxFonts = 20'000;

}  // namespace TarnixTools::engines::office::limits

#endif  // TARNIX_ENGINES_OFFICE_LIMITS_H_
