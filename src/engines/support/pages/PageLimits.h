// Bounds on what a document may make the reading of its pages do.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_PAGELIMITS_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_PAGELIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::limits {

// Characters of a page.
inline constexpr std::size_t kMaxTextOfPage = 4'000'000;
// Bytes of a text that a document gives in place of what is shown, or beside it: /ActualText, /Alt,
// an address, a title.
inline constexpr std::size_t kMaxEntryText = 8192;
// Bytes of a font's program that is read for its characters.
inline constexpr std::size_t kMaxFontProgramBytes = std::size_t{64} << 20;
// Of one page; what is beyond them is left out, and the page counts as partial.
inline constexpr std::size_t kMaxGlyphsOfPage = 500'000;
inline constexpr std::size_t kMaxPathsOfPage = 200'000;
inline constexpr std::size_t kMaxPlacedImages = 20'000;
// Glyphs of one page, each as often as something is painted that may lie over it.
inline constexpr std::size_t kMaxCoverChecks = 50'000'000;
// Bytes of the samples and programs that tell how tints of an ink look.
inline constexpr std::size_t kMaxTintBytes = std::size_t{1} << 20;
// Functions that the one that tells so is put together of, and how deep they are within each other.
inline constexpr std::size_t kMaxTintParts = 1'000;
inline constexpr std::size_t kMaxTintDepth = 8;
// Steps of the functions that tell how tints look, on one page; beyond them inks are as dark as they
// are.
inline constexpr std::size_t kMaxTintSteps = 20'000'000;
// Bytes of the programs of fonts that are kept.
inline constexpr std::size_t kMaxBytesOfPrograms = std::size_t{256} << 20;
// Colour spaces of a document that are kept.
inline constexpr std::size_t kMaxColorSpaces = 1'000;
// Fonts of a document that are kept.
inline constexpr std::size_t kMaxFonts = 20'000;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_PAGELIMITS_H_
