// Inline images that ask for interpolation, which PDF/A does not allow (ISO 19005-2, 6.2.8; 19005-1,
// 6.2.4).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_INTERPOLATION_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_INTERPOLATION_H_

#include <cstddef>
#include <string_view>

namespace TarnixTools::engines::pdfa {

inline constexpr std::string_view kTrue = "true";

// Where the "true" of /I or /Interpolate stands; npos for an image that does not ask for it.
//   entries - between BI and ID, as they stand
std::size_t InterpolationOf(std::string_view entries);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_INTERPOLATION_H_
