// Bounds of the engine that compresses documents.
#ifndef TARNIX_ENGINES_OPTIMIZER_LIMITS_H_
#define TARNIX_ENGINES_OPTIMIZER_LIMITS_H_

#include <cstdint>

namespace TarnixTools::engines::optimizer::limits {

// Pixels per inch to which images are resampled, and from which on.
inline constexpr float kMaxDpi = 65535;

// Bytes of coded images and streams that wait in memory until they are written; more wait in a file.
inline constexpr std::uint64_t kMaxHeldResults = std::uint64_t{32} << 20;

}  // namespace TarnixTools::engines::optimizer::limits

#endif  // TARNIX_ENGINES_OPTIMIZER_LIMITS_H_
