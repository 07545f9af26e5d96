// How a stored picture is turned and mirrored to be seen upright: the eight values of the
// Orientation tag (TIFF 6.0, section 8; Exif 2.32, 4.6.4), and how they go together.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_ORIENTATION_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_ORIENTATION_H_

#include "pdf/Matrix.h"

namespace TarnixTools::engines {

// 1 as stored, 2 mirrored left to right, 3 turned by 180 degrees, 4 mirrored top to bottom, 5
// mirrored at the diagonal from the upper left, 6 turned by 90 degrees clockwise, 7 mirrored at the
// other diagonal, 8 turned by 90 degrees counter-clockwise: what has to be done to the stored
// picture.
inline constexpr int kUpright = 1;

// Values that are none of the eight count as 1.
constexpr int ValidOrientation(long value) {
  return value >= 1 && value <= 8 ? static_cast<int>(value) : kUpright;
}

// Whether width and height change places.
constexpr bool SwapsSides(int orientation) {
  return orientation >= 5;
}

// The orientation that has the effect of first `inner`, then `outer`.
int Compose(int inner, int outer);

// Puts the unit square of an image (8.9.5.1) onto the unit square so that the picture is seen as
// the orientation demands.
pdf::Matrix OrientationMatrix(int orientation);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_ORIENTATION_H_
