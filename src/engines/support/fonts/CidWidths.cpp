#include "engines/support/fonts/CidWidths.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace TarnixTools::engines::fonts {

using pdf::Object;

namespace {

constexpr std::size_t kMaxRanges = 100'000;

}  // namespace

// Either a first identifier and the widths of those from there on, or a first and a last one and
// the width of all of them.
CidWidths::CidWidths(pdf::Document& document, const Object& font) {
  pdf::Arena arena;
  default_ = document.Resolve(font.Get("DW"), arena).NumberOr(default_);
  const auto items = document.Resolve(font.Get("W"), arena).Items();
  for (std::size_t i = 0; i + 1 < items.size();) {
    const std::int64_t first = document.Resolve(items[i], arena).IntegerOr(-1);
    const Object next = document.Resolve(items[i + 1], arena);
    if (next.IsArray()) {
      std::int64_t cid = first;
      for (const Object& width : next.Items()) {
        Add(cid, cid, document.Resolve(width, arena).NumberOr(0));
        ++cid;
      }
      i += 2;
    } else if (i + 2 < items.size()) {
      Add(first, next.IntegerOr(-1), document.Resolve(items[i + 2], arena).NumberOr(0));
      i += 3;
    } else {
      break;
    }
  }
  std::stable_sort(ranges_.begin(), ranges_.end(),
                   [](const Range& a, const Range& b) { return a.first < b.first; });
}

void CidWidths::Add(std::int64_t first, std::int64_t last, double width) {
  if (first >= 0 && first <= last && last <= std::numeric_limits<std::uint32_t>::max() &&
      ranges_.size() < kMaxRanges) {
    ranges_.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(last), width});
  }
}

double CidWidths::WidthOf(std::uint32_t cid) const {
  const auto after =
      std::upper_bound(ranges_.begin(), ranges_.end(), cid,
                       [](std::uint32_t value, const Range& range) { return value < range.first; });
  if (after == ranges_.begin() || cid > std::prev(after)->last) {
    return default_;
  }
  return std::prev(after)->width;
}

}  // namespace TarnixTools::engines::fonts
