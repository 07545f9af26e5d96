// Bounds of the rasteriser.
#ifndef TARNIX_ENGINES_RASTERISER_LIMITS_H_
#define TARNIX_ENGINES_RASTERISER_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Bytes of the pixels that are drawn at once. An image is drawn in up to 16 bands of that size,
// and in more when it is larger still; while one is drawn, the one before is encoded.
inline constexpr std::size_t kMinBandBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMaxBandBytes = std::size_t{48} << 20;
inline constexpr std::size_t kBands = 16;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_RASTERISER_LIMITS_H_
