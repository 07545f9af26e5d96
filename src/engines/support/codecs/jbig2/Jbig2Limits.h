// Bounds on what JBIG2 data may make us do.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_JBIG2LIMITS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_JBIG2LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::jbig2::limits {

// Pixels of one bitmap.
inline constexpr std::uint64_t kMaxPixels = std::uint64_t{160} << 20;

// Pixels a side of a picture that is encoded: PDFium decodes none with more.
inline constexpr std::uint32_t kMaxEncodedSide = 65'535;

// Segments of the data.
inline constexpr std::size_t kMaxSegments = 100'000;

// What decoding may cost, in pixels: some for any picture, and some for each pixel of it.
inline constexpr std::uint64_t kLeastBudget = std::uint64_t{8} << 20U;
inline constexpr std::uint64_t kBudgetOfPixel = 8;
// What it costs, in pixels, to keep the state of a coder for a later segment, and to refer to a
// symbol of another one.
inline constexpr std::uint64_t kRetainingCost = std::uint64_t{1} << 20U;
inline constexpr std::uint64_t kReferringCost = 64;

// Symbols of a dictionary, and as many that it takes from others; pixels of one in each direction.
inline constexpr std::uint32_t kMaxSymbols = 65'536;
inline constexpr std::int64_t kMaxSymbolSide = 65'535;
// What a symbol costs, be it empty, and what it costs to list one, in pixels.
inline constexpr std::uint64_t kSymbolCost = 256;
inline constexpr std::uint64_t kListingCost = 64;
// Empty runs of export flags, one after the other.
inline constexpr int kMaxEmptyRuns = 4;

// Patterns of a dictionary, and what one costs, be it empty, in pixels.
inline constexpr std::uint32_t kMaxPatterns = 65'536;
inline constexpr std::uint64_t kPatternCost = 256;
// Places of a halftone region's grid.
inline constexpr std::uint64_t kMaxGrid = std::uint64_t{64} << 20U;

// Coordinates in a text region, in pixels.
inline constexpr std::int64_t kFarthest = std::int64_t{1} << 32U;

// Bytes that an arithmetic decoder takes beyond the data: coders leave trailing bytes out, but much
// more than that is missing data.
inline constexpr int kMaxBytesBehindEnd = 1024;

}  // namespace TarnixTools::engines::jbig2::limits

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_JBIG2LIMITS_H_
