// Transformation matrices (ISO 32000-2, 8.3.4).
#ifndef TARNIX_ENGINES_SUPPORT_CONTENT_DRAWINGMATRIX_H_
#define TARNIX_ENGINES_SUPPORT_CONTENT_DRAWINGMATRIX_H_

#include <cstdint>

namespace TarnixTools::engines {

struct DrawingMatrix {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double e = 0;
  double f = 0;

  // First this, then the other.
  DrawingMatrix Then(const DrawingMatrix& next) const;
};

// EXIF orientation of an image that the matrix draws, the nearest: 1 upright, 6 turned by 90
// degrees clockwise, ...
std::int32_t OrientationOf(const DrawingMatrix& matrix);

// Neither upright nor turned by a multiple of 90 degrees.
bool IsSkewed(const DrawingMatrix& matrix);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTENT_DRAWINGMATRIX_H_
