// A width and a height.
#ifndef TARNIX_PDF_SIZE_H_
#define TARNIX_PDF_SIZE_H_

#include "TarnixExport.h"

namespace TarnixTools {

// The unit is whatever the producer chose: see PdfDoc::GetPageSize. Nothing is checked, negative
// values included.
class TARNIX_EXPORT PdfSize {
 public:
  PdfSize() = default;
  PdfSize(double width, double height);

  double GetWidth() const { return width_; }

  double GetHeight() const { return height_; }

 private:
  double width_ = 0;
  double height_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_SIZE_H_
