#include "PageList.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "Failure.h"
#include "OptionTable.h"
#include "PdfException.h"

namespace TarnixTools::cli {
namespace {

constexpr std::size_t kMostPages = 10'000'000;  // of all items of a list

// One end of a range, before it is known how many pages there are.
struct PageEnd {
  int number = 0;            // of the page, from 1 on; 0 for what does not exist
  bool is_from_end = false;  // 1 is the last page then

  int In(int page_count) const { return is_from_end ? page_count + 1 - number : number; }
};

enum class Parity { Any, Odd, Even };

struct ParsedItem {
  PageEnd first;
  PageEnd last;
  bool is_range = false;
  Parity parity = Parity::Any;
};

std::optional<PageEnd> ParseEnd(std::string_view text) {
  if (text == "z") {
    return PageEnd{.number = 1, .is_from_end = true};
  }
  const bool is_from_end = text.starts_with('r');
  const std::string_view digits = text.substr(is_from_end ? 1 : 0);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  const std::optional<int> number = ToInteger(digits);
  return number ? std::optional(PageEnd{.number = *number, .is_from_end = is_from_end})
                : std::nullopt;
}

std::optional<ParsedItem> ParseItem(std::string_view text) {
  ParsedItem item;
  const std::size_t colon = text.find(':');
  if (colon != std::string_view::npos) {
    const std::string_view word = text.substr(colon);
    item.parity = word == ":odd" ? Parity::Odd : word == ":even" ? Parity::Even : Parity::Any;
    if (item.parity == Parity::Any) {
      return std::nullopt;
    }
    text = text.substr(0, colon);
  }
  const PageEnd last = {.number = 1, .is_from_end = true};
  if (text.empty() && item.parity != Parity::Any) {
    item.first = {.number = 1};
    item.last = last;
    item.is_range = true;
    return item;
  }
  const std::size_t hyphen = text.find('-');
  const std::optional<PageEnd> first = ParseEnd(text.substr(0, hyphen));
  std::optional<PageEnd> second = first;
  if (hyphen != std::string_view::npos) {
    item.is_range = true;
    second = hyphen + 1 == text.size() ? last : ParseEnd(text.substr(hyphen + 1));
  }
  if (!first || !second) {
    return std::nullopt;
  }
  item.first = *first;
  item.last = *second;
  return item;
}

std::vector<ParsedItem> ParseList(const std::string& what, std::string_view list) {
  std::vector<ParsedItem> items;
  std::string_view rest = list;
  while (true) {
    const std::size_t comma = rest.find(',');
    const std::optional<ParsedItem> item = ParseItem(rest.substr(0, comma));
    if (!item) {
      throw UsageError(what + ": '" + std::string(list) +
                       "' is not a list of pages such as 1-3,5,8-,z,r2,z-1,:odd");
    }
    items.push_back(*item);
    if (comma == std::string_view::npos) {
      return items;
    }
    rest.remove_prefix(comma + 1);
  }
}

int PageOf(const PageEnd& end, int page_count, const std::string& path) {
  const int page = end.In(page_count);
  if (end.number < 1 || page < 1 || page > page_count) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "No page [%s%d] in document [%s] ([%d] pages available)",
                       end.is_from_end ? "r" : "", end.number, path.c_str(), page_count);
  }
  return page;
}

PageItem Resolve(const ParsedItem& item, int page_count, const std::string& path) {
  const int first = PageOf(item.first, page_count, path);
  const int last = PageOf(item.last, page_count, path);
  PageItem resolved{.label = std::to_string(first), .pages = {}};
  if (first != last) {
    resolved.label += "-" + std::to_string(last);
  }
  for (int page = first;; page += first < last ? 1 : -1) {
    if (item.parity == Parity::Any || (page % 2 != 0) == (item.parity == Parity::Odd)) {
      resolved.pages.push_back(page);
    }
    if (page == last) {
      break;
    }
  }
  if (item.parity != Parity::Any) {
    resolved.label += item.parity == Parity::Odd ? "-odd" : "-even";
  }
  if (resolved.pages.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "No page left of [%s] in [%s]",
                       resolved.label.c_str(), path.c_str());
  }
  return resolved;
}

}  // namespace

void CheckPageList(const std::string& what, const std::string& list) {
  ParseList(what, list);
}

std::vector<PageItem> PageItemsOf(const std::string& what, const std::string& list,
                                  PdfDoc document) {
  const std::vector<ParsedItem> parsed = ParseList(what, list);
  const int page_count = document.GetPagesNum();
  std::vector<PageItem> items;
  std::size_t pages = 0;
  for (const ParsedItem& item : parsed) {
    items.push_back(Resolve(item, page_count, document.GetPath()));
    pages += items.back().pages.size();
    if (pages > kMostPages) {
      throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Too many pages in list of [%s]",
                         what.c_str());
    }
  }
  return items;
}

std::vector<int> PagesOf(const std::string& what, const std::string& list, PdfDoc document) {
  std::vector<int> pages;
  for (const PageItem& item : PageItemsOf(what, list, std::move(document))) {
    pages.insert(pages.end(), item.pages.begin(), item.pages.end());
  }
  return pages;
}

std::vector<PdfPageRange> RangesOf(const std::vector<int>& pages) {
  std::vector<PdfPageRange> ranges;
  for (std::size_t i = 0; i < pages.size();) {
    std::size_t end = i + 1;
    while (end < pages.size() && pages[end] == pages[end - 1] + 1) {
      ++end;
    }
    ranges.emplace_back(pages[i], pages[end - 1]);
    i = end;
  }
  return ranges;
}

std::string PatternOf(std::vector<int> pages) {
  std::sort(pages.begin(), pages.end());
  pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
  std::string pattern;
  for (const PdfPageRange& range : RangesOf(pages)) {
    pattern += (pattern.empty() ? "" : ",") + std::to_string(range.GetStartPageNum());
    if (range.GetPagesNum() > 1) {
      pattern += "-" + std::to_string(range.GetEndPageNum());
    }
  }
  return pattern;
}

}  // namespace TarnixTools::cli
