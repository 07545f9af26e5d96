#include "PdfPageRange.h"

#include <algorithm>

#include "PdfException.h"

namespace TarnixTools {

PdfPageRange::PdfPageRange(std::int32_t start, std::int32_t end)
    : start_(std::min(start, end)), end_(std::max(start, end)) {
  if (start < 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid PDF page range start value [%d], expected positive integer", start);
  }
  if (end < 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid PDF page range end value [%d], expected positive integer", end);
  }
}

}  // namespace TarnixTools
