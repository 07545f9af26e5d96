#include "engines/support/fonts/BidiLevels.h"

#include <algorithm>
#include <numeric>

#include "engines/support/fonts/FontLibraries.h"

namespace TarnixTools::engines::fonts {

namespace {

// Below this nothing is written from right to left, and no control character changes direction.
constexpr char32_t kFirstBidi = 0x590;

}  // namespace

std::vector<std::uint8_t> BidiLevels(std::u32string_view line) {
  std::vector<std::uint8_t> levels(line.size(), 0);
  if (std::none_of(line.begin(), line.end(), [](char32_t c) { return c >= kFirstBidi; })) {
    return levels;
  }
  const FriBidi& bidi = FriBidi::Get();
  const auto length = static_cast<FriBidiStrIndex>(line.size());
  const std::vector<FriBidiChar> text(line.begin(), line.end());
  std::vector<FriBidiCharType> types(line.size());
  std::vector<FriBidiBracketType> brackets(line.size());
  std::vector<FriBidiLevel> found(line.size());
  bidi.fribidi_get_bidi_types(text.data(), length, types.data());
  bidi.fribidi_get_bracket_types(text.data(), length, types.data(), brackets.data());
  FriBidiParType direction = FRIBIDI_PAR_ON;
  if (bidi.fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), length, &direction,
                                               found.data()) == 0) {
    return levels;
  }
  std::copy(found.begin(), found.end(), levels.begin());
  // White space at the end goes with the line (rule L1).
  const auto base = static_cast<std::uint8_t>(FRIBIDI_DIR_TO_LEVEL(direction));
  for (std::size_t i = line.size(); i > 0 && FRIBIDI_IS_EXPLICIT_OR_BN_OR_WS(types[i - 1]); --i) {
    levels[i - 1] = base;
  }
  return levels;
}

std::vector<std::size_t> VisualOrder(const std::vector<std::uint8_t>& levels) {
  std::vector<std::size_t> order(levels.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (levels.empty()) {
    return order;
  }
  // Rule L2: from the highest level down, what is at that level or above is reversed.
  for (unsigned level = *std::max_element(levels.begin(), levels.end()); level > 0; --level) {
    for (std::size_t i = 0; i < levels.size();) {
      std::size_t end = i;
      while (end < levels.size() && levels[end] >= level) {
        ++end;
      }
      std::reverse(order.begin() + static_cast<std::ptrdiff_t>(i),
                   order.begin() + static_cast<std::ptrdiff_t>(end));
      i = std::max(end, i + 1);
    }
  }
  return order;
}

}  // namespace TarnixTools::engines::fonts
