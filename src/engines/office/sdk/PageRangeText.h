// Page ranges as the conversion library's interface has them: "3", "1-8", "1,4-6".
#ifndef TARNIX_ENGINES_OFFICE_SDK_PAGERANGETEXT_H_
#define TARNIX_ENGINES_OFFICE_SDK_PAGERANGETEXT_H_

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::office {

struct PageNumbers {
  std::size_t first = 0;  // one-based
  std::size_t last = 0;   // not less than the first
};

// Nothing for a text that names no pages: numbers are from 1 on, and none is larger than its end.
std::optional<std::vector<PageNumbers>> ReadPageRange(std::wstring_view text);

// Zero-based, ascending, each once; pages that the document does not have are left out. An empty
// text means all.
std::vector<std::size_t> PagesOf(std::wstring_view text, std::size_t page_count);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_SDK_PAGERANGETEXT_H_
