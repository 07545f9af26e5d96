// Units of the resolutions in image files.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_UNITS_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_UNITS_H_

namespace TarnixTools::engines {

inline constexpr double kCentimetresPerInch = 2.54;
inline constexpr double kMetresPerInch = 0.0254;

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_UNITS_H_
