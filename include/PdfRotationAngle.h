// By how much pages are turned.
//
//   PdfDoc scan("/data/scan.pdf", "", true);
//   scan.Rotate(PdfRotationAngle::Rotate90, "/data/upright.pdf", "");
//
// Of the tasks, PdfRotateTask takes one.
#ifndef TARNIX_PDF_ROTATION_ANGLE_H_
#define TARNIX_PDF_ROTATION_ANGLE_H_

#include <cstdint>

namespace TarnixTools {

// The value is the angle itself, in degrees clockwise, and is added to what a page is turned by
// already (ISO 32000-2, 7.7.3.3, /Rotate): Rotate0 leaves every page as it is seen. Those four are
// all that a page can be turned by.
//
// A number of degrees from elsewhere is cast to it; a job refuses one that is none of the four.
enum class PdfRotationAngle : std::int32_t {
  Rotate0 = 0,
  Rotate90 = 90,    // to the right: what was on top is on the right
  Rotate180 = 180,  // upside down
  Rotate270 = 270,  // to the left: what was on top is on the left
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_ROTATION_ANGLE_H_
