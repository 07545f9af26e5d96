// PdfTransformation: which pages are decorated.
#include <algorithm>
#include <cstdint>
#include <iterator>

#include "PdfException.h"
#include "PdfTransformation.h"
#include "foundation/PageNumber.h"

namespace TarnixTools {
namespace {

[[noreturn]] void ThrowBadPattern(const std::string& pattern) {
  throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid target pages pattern [%s]",
                     pattern.c_str());
}

[[noreturn]] void ThrowBadItem(const std::string& item) {
  throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                     "Invalid page number pages pattern [%s]", item.c_str());
}

}  // namespace

void PdfTransformation::AddTargetPage(int page_number) {
  AddTargetRange(PdfPageRange(page_number, page_number));
}

// Ranges are kept as such: a pattern that names a thousand million pages costs no more than one
// that names two.
void PdfTransformation::AddTargetRange(const PdfPageRange& range) {
  target_ranges_.push_back(range);
  int first = range.GetStartPageNum();
  int last = range.GetEndPageNum();
  auto next = selected_.upper_bound(first);
  if (next != selected_.begin() && std::prev(next)->second >= first - 1) {
    --next;
  }
  // Every selected run that overlaps or touches the range becomes part of it; what lies between
  // them is new.
  std::int64_t gap = first;
  for (; next != selected_.end() && next->first - 1 <= last; next = selected_.erase(next)) {
    if (gap < next->first) {
      target_runs_.emplace_back(static_cast<int>(gap), next->first - 1);
    }
    gap = std::max(gap, std::int64_t{next->second} + 1);
    first = std::min(first, next->first);
    last = std::max(last, next->second);
  }
  if (gap <= range.GetEndPageNum()) {
    target_runs_.emplace_back(static_cast<int>(gap), range.GetEndPageNum());
  }
  selected_.emplace(first, last);
}

void PdfTransformation::AddTargetPattern(const std::string& pattern) {
  if (pattern.find_first_not_of(kPagePatternCharacters) != std::string::npos) {
    ThrowBadPattern(pattern);
  }
  std::size_t start = 0;
  for (std::size_t comma = pattern.find(','); comma != std::string::npos;
       comma = pattern.find(',', start)) {
    if (comma == start) {
      ThrowBadPattern(pattern);
    }
    PatternToRange(pattern.substr(start, comma - start));
    start = comma + 1;
  }
  if (start < pattern.size()) {
    PatternToRange(pattern.substr(start));
  }
}

void PdfTransformation::PatternToRange(const std::string& item) {
  const std::size_t separator = item.find_first_not_of(kPageDigits);
  if (separator == std::string::npos) {
    AddTargetPage(LeadingPageNumber(item));
    return;
  }
  const std::string left = item.substr(0, separator);
  const std::string right = item.substr(separator + 1);
  if (left.empty() || right.empty() || std::count(item.begin(), item.end(), '-') > 1) {
    ThrowBadItem(item);
  }
  AddTargetRange(PdfPageRange(LeadingPageNumber(left), LeadingPageNumber(right)));
}

void PdfTransformation::ClearTargetPages() {
  target_ranges_.clear();
  target_runs_.clear();
  selected_.clear();
}

bool PdfTransformation::IsTargetPage(int page_number) const {
  if (selected_.empty()) {
    return true;
  }
  const auto next = selected_.upper_bound(page_number);
  return next != selected_.begin() && std::prev(next)->second >= page_number;
}

int PdfTransformation::GetTargetPagesNum() const {
  int count = 0;
  for (const PdfPageRange& run : target_runs_) {
    count += run.GetPagesNum();
  }
  return count;
}

std::list<int> PdfTransformation::GetTargetPages() const {
  std::list<int> pages;
  for (const PdfPageRange& run : target_runs_) {
    for (int offset = 0; offset < run.GetPagesNum(); ++offset) {
      pages.push_back(run.GetStartPageNum() + offset);
    }
  }
  return pages;
}

}  // namespace TarnixTools
