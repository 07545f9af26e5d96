// A position on a page, for decorations that stand at a fixed place.
//
//   PdfStampTextTask task(report);
//   task.SetAbsolutePosition(PdfPagePoint(72, 36));   // an inch from the left, half an inch up
//
// From the size of a page in points, a place that depends on it:
//
//   const PdfSize page = report.GetPageSizes().front();
//   task.SetAbsolutePosition(PdfPagePoint(page.GetWidth() - 200, page.GetHeight() - 50));
#ifndef TARNIX_PDF_PAGE_POINT_H_
#define TARNIX_PDF_PAGE_POINT_H_

#include "TarnixExport.h"

namespace TarnixTools {

// Coordinates are points (1/72 inch), x to the right and y upwards; what they are measured from is
// said where a point is used. Whether a point lies on a page is nowhere checked: what is put beyond
// the edges cannot be seen. A plain value that owns nothing.
class TARNIX_EXPORT PdfPagePoint {
 public:
  // The origin: the lower-left corner of the page.
  PdfPagePoint() = default;

  // Throws PdfException with the code InvalidParameter when a coordinate is below 0.
  PdfPagePoint(double x, double y);

  // Points to the right of the origin.
  double GetX() const { return x_; }

  // Points above the origin.
  double GetY() const { return y_; }

  // Not checked, unlike the constructor's: a point may be moved to negative coordinates after it
  // was made, which lie beyond the left edge of the page.
  void SetX(double x) { x_ = x; }

  // Not checked, either: negative coordinates lie below the lower edge of the page.
  void SetY(double y) { y_ = y; }

 private:
  double x_ = 0;
  double y_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_PAGE_POINT_H_
