#include "engines/office/sdk/PageRangeText.h"

#include <algorithm>

namespace TarnixTools::engines::office {

namespace {

constexpr std::size_t kMaxNumber = 100'000'000;

// Takes a number from the front; nothing where there is none, for 0 and for one that is too large.
std::optional<std::size_t> TakeNumber(std::wstring_view& text) {
  std::size_t number = 0;
  std::size_t digits = 0;
  while (digits < text.size() && text[digits] >= L'0' && text[digits] <= L'9') {
    number = number * 10 + static_cast<std::size_t>(text[digits] - L'0');
    if (number > kMaxNumber) {
      return std::nullopt;
    }
    ++digits;
  }
  text.remove_prefix(digits);
  return number == 0 ? std::nullopt : std::optional(number);
}

bool Take(std::wstring_view& text, wchar_t character) {
  const bool is_there = text.starts_with(character);
  text.remove_prefix(is_there ? 1 : 0);
  return is_there;
}

}  // namespace

std::optional<std::vector<PageNumbers>> ReadPageRange(std::wstring_view text) {
  std::vector<PageNumbers> ranges;
  do {
    const auto first = TakeNumber(text);
    if (!first) {
      return std::nullopt;
    }
    const auto last = Take(text, L'-') ? TakeNumber(text) : first;
    if (!last || *last < *first) {
      return std::nullopt;
    }
    ranges.push_back({*first, *last});
  } while (Take(text, L','));
  return text.empty() ? std::optional(ranges) : std::nullopt;
}

std::vector<std::size_t> PagesOf(std::wstring_view text, std::size_t page_count) {
  std::vector<bool> is_named(page_count, text.empty());
  for (const PageNumbers& range : ReadPageRange(text).value_or(std::vector<PageNumbers>())) {
    for (std::size_t number = range.first; number <= std::min(range.last, page_count); ++number) {
      is_named[number - 1] = true;
    }
  }
  std::vector<std::size_t> pages;
  for (std::size_t index = 0; index < page_count; ++index) {
    if (is_named[index]) {
      pages.push_back(index);
    }
  }
  return pages;
}

}  // namespace TarnixTools::engines::office
