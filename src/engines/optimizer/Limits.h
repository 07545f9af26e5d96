// Bounds of the engine that compresses documents.
#ifndef TARNIX_ENGINES_OPTIMIZER_LIMITS_H_
#define TARNIX_ENGINES_OPTIMIZER_LIMITS_H_

namespace TarnixTools::engines::optimizer::limits {

// Pixels per inch to which images are resampled, and from which on.
inline constexpr float kMaxDpi = 65535;

}  // namespace TarnixTools::engines::optimizer::limits

#endif  // TARNIX_ENGINES_OPTIMIZER_LIMITS_H_
