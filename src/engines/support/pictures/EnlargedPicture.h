// Pictures made larger: every pixel is mixed of the four that are nearest to its middle.
//
//   RowSourcePtr large = EnlargePicture(std::move(picture), 3400, 4400);
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_ENLARGEDPICTURE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_ENLARGEDPICTURE_H_

#include <cstdint>

#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

// The layout stays. A row of the source without data is white, and the source is not asked for any
// after it. Needs memory for some rows only.
//   width, height - pixels, at least what the source has, up to 2^31
RowSourcePtr EnlargePicture(RowSourcePtr source, std::uint32_t width, std::uint32_t height);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_ENLARGEDPICTURE_H_
