// By how much pages are turned.
#ifndef TARNIX_PDF_ROTATION_ANGLE_H_
#define TARNIX_PDF_ROTATION_ANGLE_H_

#include <cstdint>

namespace TarnixTools {

// The value is the angle itself, in degrees clockwise.
enum class PdfRotationAngle : std::int32_t {
  Rotate0 = 0,
  Rotate90 = 90,
  Rotate180 = 180,
  Rotate270 = 270,
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_ROTATION_ANGLE_H_
