// A width and a height, as PdfDoc tells the sizes of pages.
//
//   PdfDoc report("/data/report.pdf", "", true);
//   const PdfSize page = report.GetPageSize(1, PdfSizeUnits::Millimeters, 72, 0);
//   const bool is_landscape = page.GetWidth() > page.GetHeight();
//
//   const std::vector<PdfSize> all = report.GetPageSizes();   // in points, the file opened once
#ifndef TARNIX_PDF_SIZE_H_
#define TARNIX_PDF_SIZE_H_

#include "TarnixExport.h"

namespace TarnixTools {

// A plain value that owns nothing and throws nothing; copies are independent of each other.
//
// The unit is whatever the producer chose: PdfDoc::GetPageSize lets the caller choose it, and
// PdfDoc::GetPageSizes gives points. Nothing is checked, negative values included.
class TARNIX_EXPORT PdfSize {
 public:
  // Nothing wide and nothing high.
  PdfSize() = default;
  // The two as they are given.
  PdfSize(double width, double height);

  // From left to right, as a viewer shows the page: of one that is turned by 90 or 270 degrees, the
  // width is what lies upright in the file.
  double GetWidth() const { return width_; }

  // From top to bottom, as a viewer shows the page.
  double GetHeight() const { return height_; }

 private:
  double width_ = 0;
  double height_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_SIZE_H_
