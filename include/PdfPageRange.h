// A run of pages: those of a split, those to be removed, those that are decorated.
//
//   PdfSplitTask task(document);
//   task.SetSplitMode(PdfSplitMode::Ranges);
//   task.AddSplitRange(PdfPageRange(1, 3));   // three pages
//   task.AddSplitRange(PdfPageRange(5, 5));   // one page
//
//   document.IsValidRange(PdfPageRange(1, 3));   // does it have these pages?
#ifndef TARNIX_PDF_PAGE_RANGE_H_
#define TARNIX_PDF_PAGE_RANGE_H_

#include <cstdint>

#include "TarnixExport.h"

namespace TarnixTools {

// Page numbers are one-based, both ends are included, and the start is never after the end. Whether
// a document has these pages is PdfDoc::IsValidRange's question: a range knows of no document.
//
// A plain value without setters: a range that was made stays valid.
class TARNIX_EXPORT PdfPageRange {
 public:
  // The two may come in either order: (5, 2) is 2 to 5. Throws PdfException with the code
  // InvalidParameter when one of them is below 1; the start is looked at first. There is no upper
  // bound.
  PdfPageRange(std::int32_t start, std::int32_t end);

  // The lower of the two numbers, at least 1.
  std::int32_t GetStartPageNum() const { return start_; }

  // The higher of the two, which belongs to the range.
  std::int32_t GetEndPageNum() const { return end_; }

  // Number of pages in the range, at least 1.
  std::int32_t GetPagesNum() const { return end_ - start_ + 1; }

 private:
  std::int32_t start_;
  std::int32_t end_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_PAGE_RANGE_H_
