#include "PageList.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "Failure.h"
#include "OptionTable.h"
#include "PdfException.h"

namespace TarnixTools::cli {
namespace {

// For documents that cannot tell how many pages they have.
constexpr int kUnknownPageCount = 9999;

int LongestOf(std::vector<PdfDoc>& documents) {
  int longest = 0;
  for (PdfDoc& document : documents) {
    try {
      longest = std::max(longest, document.GetPagesNum());
    } catch (const PdfException&) {
      longest = std::max(longest, kUnknownPageCount);
    }
  }
  return longest;
}

class PageListParser {
 public:
  PageListParser(const std::string& option, const std::string& list)
      : option_(option), list_(list) {}

  std::list<int> Parse(int longest) {
    std::string_view rest = list_;
    while (true) {
      const std::size_t comma = rest.find(',');
      AddItem(rest.substr(0, comma), longest);
      if (comma == std::string_view::npos) {
        break;
      }
      rest.remove_prefix(comma + 1);
    }
    return {pages_.begin(), pages_.end()};
  }

 private:
  void AddItem(std::string_view item, int longest) {
    const std::size_t dash = item.find('-');
    int first = Number(item.substr(0, dash));
    int last = dash == std::string_view::npos ? first : Number(item.substr(dash + 1));
    if (first > last) {
      std::swap(first, last);
    }
    pages_.insert(first);
    for (int page = first; page <= std::min(last, longest); ++page) {
      pages_.insert(page);
    }
  }

  int Number(std::string_view text) const {
    const auto number = text.starts_with('-') ? std::nullopt : ToInteger(text);
    if (!number || *number < 1) {
      throw UsageError("--" + option_ + ": '" + list_ +
                       "' is not a list of pages and ranges such as 1-3,5");
    }
    return *number;
  }

  const std::string& option_;
  const std::string& list_;
  std::set<int> pages_;
};

}  // namespace

std::list<int> ParsePageList(const std::string& option, const std::string& list,
                             std::vector<PdfDoc> documents) {
  if (list.empty()) {
    return {};
  }
  PageListParser(option, list).Parse(0);  // wrong usage is told before a file is looked at
  return PageListParser(option, list).Parse(LongestOf(documents));
}

}  // namespace TarnixTools::cli
