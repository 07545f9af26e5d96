// Pictures made smaller: every pixel is the mean of the area that it covers.
//
//   RowSourcePtr small = ReducePicture(std::move(picture), 850, 1100);
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_REDUCEDPICTURE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_REDUCEDPICTURE_H_

#include <cstdint>

#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

// The layout stays. Pixels at the borders count by the part of them that is covered. A row without
// data is white, and the source is not asked for any after it. Needs memory for some rows only.
//   width, height - pixels, from 1 to what the source has
RowSourcePtr ReducePicture(RowSourcePtr source, std::uint32_t width, std::uint32_t height);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_REDUCEDPICTURE_H_
