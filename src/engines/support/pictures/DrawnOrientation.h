// How a matrix turns and mirrors the image that it draws.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_DRAWNORIENTATION_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_DRAWNORIENTATION_H_

#include <cstdint>

#include "pdf/Matrix.h"

namespace TarnixTools::engines {

// EXIF orientation of an image that the matrix draws, the nearest: 1 upright, 6 turned by 90
// degrees clockwise, ...
std::int32_t OrientationOf(const pdf::Matrix& matrix);

// Neither upright nor turned by a multiple of 90 degrees.
bool IsSkewed(const pdf::Matrix& matrix);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_DRAWNORIENTATION_H_
