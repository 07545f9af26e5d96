#include "PdfPagePoint.h"

#include "PdfException.h"

namespace TarnixTools {

PdfPagePoint::PdfPagePoint(double x, double y) : x_(x), y_(y) {
  if (x < 0 || y < 0) {
    throw PdfException(
        PdfExceptionCode::InvalidParameter, 0,
        "Invalid PDF page point coordinates [%f, %f], expected double positive values", x, y);
  }
}

}  // namespace TarnixTools
