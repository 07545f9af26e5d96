// PdfDoc: page count, page size and page ranges.
#include "PdfDoc.h"
#include "PdfException.h"
#include "document/DocumentFacts.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {
namespace {

constexpr double kCentimetersPerInch = 2.54;
constexpr double kMillimetersPerInch = 25.4;

// What a length in points is multiplied with.
double FactorFor(PdfSizeUnits units, double resolution, double divisor, int page_number) {
  switch (units) {
    case PdfSizeUnits::Centimeters:
      return kCentimetersPerInch / resolution;
    case PdfSizeUnits::Millimeters:
      return kMillimetersPerInch / resolution;
    case PdfSizeUnits::Custom:
      return 1 / divisor;
    case PdfSizeUnits::Inches:
      return 1 / resolution;
    case PdfSizeUnits::Points:
      return 1;
  }
  throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                     "Unable not get page [%d] dimensions (invalid units value [%d])", page_number,
                     static_cast<int>(units));
}

}  // namespace

int PdfDoc::GetPagesNum() {
  OpenAndCountPages();
  Close();
  return pages_num_;
}

PdfSize PdfDoc::GetPageSize(int page_number, PdfSizeUnits units, double resolution,
                            double divisor) {
  OpenCheckPassword();
  engines::TPdfSize points;
  {
    const PageListPtr pages(engines::PdfDocumentGetPages(Document()));
    if (pages == nullptr) {
      throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                         "Unable to obtain current doc pages");
    }
    pages_num_ = engines::PdfPageListGetCount(pages.get());
    if (page_number < 1 || page_number > pages_num_) {
      throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                         "Page number [%d] is out of the expected range [1-%d]", page_number,
                         pages_num_);
    }
    const PagePtr page(engines::PdfPageListGet(pages.get(), page_number - 1));
    if (page == nullptr) {
      throw PdfException(PdfExceptionCode::EngineError, 0, "Unable not get access to page [%d]",
                         page_number);
    }
    if (engines::PdfPageGetSize(page.get(), &points) == 0) {
      throw PdfException(PdfExceptionCode::EngineError, 0, "Unable not get page [%d] dimensions",
                         page_number);
    }
  }
  const double factor = FactorFor(units, resolution, divisor, page_number);
  Close();
  return {points.width * factor, points.height * factor};
}

std::vector<PdfSize> PdfDoc::GetPageSizes() {
  OpenAndCountPages();
  const DiscardGuard closing(*this);
  return ReadPageSizes(Document(), pages_num_);
}

void PdfDoc::AddRange(const PdfPageRange& range) {
  ranges_.push_back(range);
}

void PdfDoc::ClearRanges() {
  ranges_.clear();
}

int PdfDoc::GetRangesNum() const {
  return static_cast<int>(ranges_.size());
}

bool PdfDoc::IsValidRange(const PdfPageRange& range) {
  OpenAndCountPages();
  Close();
  return IsValidRange(range, pages_num_);
}

bool PdfDoc::IsValidRange(const PdfPageRange& range, int pages_num) {
  return 1 <= range.GetStartPageNum() && range.GetStartPageNum() <= range.GetEndPageNum() &&
         range.GetEndPageNum() <= pages_num;
}

void PdfDoc::OpenAndCountPages() {
  OpenCheckPassword();
  RequireOpened();
  const PageListPtr pages(engines::PdfDocumentGetPages(Document()));
  if (pages == nullptr) {
    const std::int32_t error = engines::PdfGetLastError();
    Discard();
    throw PdfException(PdfExceptionCode::EngineError, error, "NULL pages object at PDF doc [%s]",
                       path_.c_str());
  }
  pages_num_ = engines::PdfPageListGetCount(pages.get());
}

}  // namespace TarnixTools
