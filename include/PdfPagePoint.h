// A position on a page.
#ifndef TARNIX_PDF_PAGE_POINT_H_
#define TARNIX_PDF_PAGE_POINT_H_

#include "TarnixExport.h"

namespace TarnixTools {

// Coordinates are points (1/72 inch); what they are measured from is said where a point is used.
class TARNIX_EXPORT PdfPagePoint {
 public:
  PdfPagePoint() = default;

  // Throws InvalidParameter when a coordinate is below 0.
  PdfPagePoint(double x, double y);

  double GetX() const { return x_; }

  double GetY() const { return y_; }

  // Not checked: a point may be moved to negative coordinates after it was made.
  void SetX(double x) { x_ = x; }

  void SetY(double y) { y_ = y; }

 private:
  double x_ = 0;
  double y_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_PAGE_POINT_H_
