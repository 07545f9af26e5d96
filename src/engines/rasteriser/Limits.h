// Bounds of the rasteriser.
#ifndef TARNIX_ENGINES_RASTERISER_LIMITS_H_
#define TARNIX_ENGINES_RASTERISER_LIMITS_H_

namespace TarnixTools::engines::rasteriser::limits {

// Pixels per inch: what the header of a JPEG file can say.
inline constexpr double kMaxDpi = 65535;

}  // namespace TarnixTools::engines::rasteriser::limits

#endif  // TARNIX_ENGINES_RASTERISER_LIMITS_H_
