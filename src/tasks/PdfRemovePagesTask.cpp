#include "PdfRemovePagesTask.h"

#include <algorithm>

#include "PdfException.h"
#include "foundation/PageNumber.h"

namespace TarnixTools {
namespace {

[[noreturn]] void ThrowBadPattern(const std::string& pattern) {
  throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid remove pages pattern [%s]",
                     pattern.c_str());
}

}  // namespace

PdfRemovePagesTask::PdfRemovePagesTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfRemovePagesTask::PdfRemovePagesTask(const PdfRemovePagesTask& other) = default;
PdfRemovePagesTask::PdfRemovePagesTask(PdfRemovePagesTask&& other) noexcept = default;
PdfRemovePagesTask& PdfRemovePagesTask::operator=(const PdfRemovePagesTask& other) = default;
PdfRemovePagesTask& PdfRemovePagesTask::operator=(PdfRemovePagesTask&& other) noexcept = default;
PdfRemovePagesTask::~PdfRemovePagesTask() = default;

void PdfRemovePagesTask::AddRemovedPage(int page_number) {
  AddRemovedRange(PdfPageRange(page_number, page_number));
}

void PdfRemovePagesTask::AddRemovedRange(const PdfPageRange& range) {
  std::optional<int> pages_num;
  AddRange(range, pages_num);
}

// A document of many removed ranges is opened for the first of them only: pages_num tells the rest.
void PdfRemovePagesTask::AddRange(const PdfPageRange& range, std::optional<int>& pages_num) {
  PdfDoc document = FirstDocument();
  if (!pages_num) {
    pages_num = document.GetPagesNum();
  }
  if (range.GetEndPageNum() > *pages_num) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid range [%d-%d] for document [%s]", range.GetStartPageNum(),
                       range.GetEndPageNum(), document.GetPath().c_str());
  }
  removed_ranges_.push_back(range);
}

void PdfRemovePagesTask::AddRemovedPattern(const std::string& pattern) {
  if (pattern.find_first_not_of(kPagePatternCharacters) != std::string::npos) {
    ThrowBadPattern(pattern);
  }
  std::optional<int> pages_num;
  std::size_t start = 0;
  for (std::size_t comma = pattern.find(','); comma != std::string::npos;
       comma = pattern.find(',', start)) {
    if (comma == start) {
      ThrowBadPattern(pattern);
    }
    PatternToRange(pattern.substr(start, comma - start), pages_num);
    start = comma + 1;
  }
  if (start < pattern.size()) {
    PatternToRange(pattern.substr(start), pages_num);
  }
}

void PdfRemovePagesTask::ClearPages() {
  removed_ranges_.clear();
  kept_ranges_.clear();
}

void PdfRemovePagesTask::SetOutPrefix(const std::string& prefix) {
  if (!prefix.empty()) {
    out_prefix_ = prefix;
  }
}

void PdfRemovePagesTask::SetOutPdfName(const std::string& name) {
  out_pdf_name_ = name;
}

void PdfRemovePagesTask::Execute() {
  RunJob("remove pages", [this] { Run(); });
}

void PdfRemovePagesTask::Run() {
  if (removed_ranges_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "None page configured to be removed at input document");
  }
  PdfDoc document = FirstDocument();
  AddKeptRanges(document.GetPagesNum());
  if (kept_ranges_.empty()) {
    throw PdfException(PdfExceptionCode::NoPages, 0,
                       "All the pages will be removed from current PDF");
  }
  const std::string name = out_pdf_name_.empty() ? out_prefix_ + ".pdf" : out_pdf_name_;
  document.Split(kept_ranges_, output_path_, out_prefix_, true, name, out_password_);
  written_files_ = {output_path_ + name};
  report_ = document.GetReport();
}

void PdfRemovePagesTask::SetDefaults() {
  out_prefix_ = "truncated";
  reserved_ = 0;
  ClearPages();
}

PdfDoc PdfRemovePagesTask::FirstDocument() const {
  if (documents_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "None PDF doc defined to remove pages from");
  }
  return InputDocument();
}

// An item is a page or a range: digits and hyphens, and not empty.
void PdfRemovePagesTask::PatternToRange(const std::string& item, std::optional<int>& pages_num) {
  const std::size_t hyphen = item.find_first_not_of(kPageDigits);
  if (hyphen == std::string::npos) {
    AddRange(PdfPageRange(LeadingPageNumber(item), LeadingPageNumber(item)), pages_num);
    return;
  }
  const std::string left = item.substr(0, hyphen);
  const std::string right = item.substr(hyphen + 1);
  if (left.empty() || right.empty() || right.find_first_not_of(kPageDigits) != std::string::npos) {
    ThrowBadPattern(item);
  }
  AddRange(PdfPageRange(LeadingPageNumber(left), LeadingPageNumber(right)), pages_num);
}

// The runs of pages that are in no removed range.
void PdfRemovePagesTask::AddKeptRanges(int pages_num) {
  std::vector<bool> is_removed(static_cast<std::size_t>(pages_num) + 1);  // by page number
  for (const PdfPageRange& range : removed_ranges_) {
    const int end = std::min(range.GetEndPageNum(), pages_num);
    for (int page = std::max(range.GetStartPageNum(), 1); page <= end; ++page) {
      is_removed[static_cast<std::size_t>(page)] = true;
    }
  }
  const auto next_page = [&](int page, bool removed) {
    return static_cast<int>(std::find(is_removed.begin() + page, is_removed.end(), removed) -
                            is_removed.begin());
  };
  for (int first = next_page(1, false); first <= pages_num;) {
    const int last = next_page(first, true) - 1;
    kept_ranges_.emplace_back(first, last);
    first = next_page(last + 1, false);
  }
}

}  // namespace TarnixTools
