#include "engines/support/layout/text/GlyphRows.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/text/Characters.h"
#include "engines/support/layout/text/OverlaidText.h"

namespace TarnixTools::engines {

namespace {

constexpr double kDegrees = 57.29577951308232;  // of a radian
constexpr double kSlack = 2;                    // points that a glyph may be outside the page
constexpr int kSkew = 3;                        // degrees by which a scanned page may be turned

// All in ems.
constexpr double kRowTolerance = 0.25;  // between baselines of one row
constexpr double kDoubling = 0.12;      // between the glyphs of painted boldness
constexpr double kSamePlace = 0.005;
constexpr double kClusterGap = 0.3;         // within a raised text
constexpr double kGapBefore = 0.35;         // before a raised text
constexpr double kGapBehind = 0.2;          // behind one
constexpr double kReachIn = 0.5;            // of a raised text into the glyph before it
constexpr double kReachOver = 0.25;         // and into the one behind it
constexpr double kHighest = 0.75;           // above the baseline
constexpr double kLowest = 0.45;            // below it
constexpr double kRaisedSize = 0.87;        // against the text beside it, at most
constexpr std::size_t kRaisedLength = 16;   // glyphs
constexpr std::ptrdiff_t kRowsBeside = 32;  // that are looked at on either side
constexpr std::size_t kDoublesBeside = 6;   // glyphs
constexpr std::ptrdiff_t kSpacesBehind = 8;

// The direction in which the glyphs follow each other.
struct Direction {
  double x;
  double y;
};

Direction DirectionOf(const TextStyle& style) {
  return style.is_vertical ? Direction{-style.direction_y, style.direction_x}
                           : Direction{style.direction_x, style.direction_y};
}

// Scanned text that is slightly turned counts as straight.
int AngleOf(const Direction& direction) {
  const double degrees = std::atan2(direction.y, direction.x) * kDegrees;
  int angle = static_cast<int>(std::lround(degrees));
  const int straight = static_cast<int>(std::lround(degrees / 90)) * 90;
  if (std::abs(angle - straight) <= kSkew) {
    angle = straight;
  }
  return (angle % 360 + 360) % 360;
}

// Glyphs that stand below each other have their line through their middle.
PlacedGlyph Place(const Glyph& glyph, const TextStyle& style, std::uint32_t index) {
  const Direction direction = DirectionOf(style);
  const double along = glyph.x * direction.x + glyph.y * direction.y;
  const double across = glyph.y * direction.x - glyph.x * direction.y;
  const double lower = style.is_vertical ? (kAscent - kDescent) / 2 * style.size : 0;
  return {.glyph = index,
          .left = along,
          .right = along + std::max(0.0, glyph.advance),
          .baseline = across + lower,
          .size = style.size};
}

// Numbers that boxes can be made of.
bool HasPlace(const Glyph& glyph, const TextStyle& style) {
  return std::isfinite(glyph.x) && std::isfinite(glyph.y) &&
         std::abs(glyph.advance) <= limits::kMaxFontSize && style.size > 0 &&
         style.size <= limits::kMaxFontSize;
}

bool IsOnPage(const PageModel& page, const Glyph& glyph, const TextStyle& style) {
  const Direction direction = DirectionOf(style);
  const double x = glyph.x + direction.x * glyph.advance / 2;
  const double y = glyph.y + direction.y * glyph.advance / 2;
  return x >= -kSlack && x <= page.width + kSlack && y >= -kSlack &&
         y <= page.height + kSlack + style.size * kDescent;
}

std::u32string_view TextOf(const PageModel& page, const PlacedGlyph& placed) {
  const Glyph& glyph = page.glyphs[placed.glyph];
  return std::u32string_view(page.text).substr(glyph.text, glyph.length);
}

// The angle in degrees clockwise, and whether the glyphs stand below each other.
using Orientation = std::pair<int, bool>;

std::map<Orientation, std::vector<PlacedGlyph>> ByOrientation(const PageModel& page) {
  std::map<Orientation, std::vector<PlacedGlyph>> groups;
  std::vector<Orientation> angles;
  for (const TextStyle& style : page.styles) {
    angles.emplace_back(AngleOf(DirectionOf(style)), style.is_vertical);
  }
  groups[{0, false}];
  for (std::uint32_t i = 0; i < page.glyphs.size(); ++i) {
    const Glyph& glyph = page.glyphs[i];
    const TextStyle& style = page.styles[glyph.style];
    if (glyph.length > 0 && HasPlace(glyph, style) && IsOnPage(page, glyph, style)) {
      groups[angles[glyph.style]].push_back(Place(glyph, style, i));
    }
  }
  return groups;
}

std::vector<GlyphRow> CutIntoRows(std::vector<PlacedGlyph> glyphs) {
  std::stable_sort(glyphs.begin(), glyphs.end(), [](const PlacedGlyph& a, const PlacedGlyph& b) {
    return a.baseline < b.baseline;
  });
  std::vector<GlyphRow> rows;
  double least_size = 0;
  for (const PlacedGlyph& glyph : glyphs) {
    least_size = rows.empty() ? glyph.size : std::min(least_size, glyph.size);
    if (rows.empty() || glyph.baseline - rows.back().baseline > kRowTolerance * least_size) {
      rows.push_back({.baseline = glyph.baseline, .glyphs = {}});
      least_size = glyph.size;
    }
    rows.back().glyphs.push_back(glyph);
  }
  for (GlyphRow& row : rows) {
    SortFromLeft(row.glyphs);
  }
  return rows;
}

// Text that is seen stays rather than text that is hidden, and what is painted later.
bool IsAbove(const PageModel& page, const PlacedGlyph& a, const PlacedGlyph& b) {
  const bool a_is_hidden = page.styles[page.glyphs[a.glyph].style].is_hidden;
  const bool b_is_hidden = page.styles[page.glyphs[b.glyph].style].is_hidden;
  return a_is_hidden != b_is_hidden ? b_is_hidden : a.glyph > b.glyph;
}

bool AreOneTwice(const PageModel& page, const PlacedGlyph& a, const PlacedGlyph& b) {
  const double nearness = kDoubling * std::min(a.size, b.size);
  return std::abs(a.left - b.left) < nearness && std::abs(a.baseline - b.baseline) < nearness &&
         TextOf(page, a) == TextOf(page, b);
}

// Returns whether there were any.
bool DropDoubles(const PageModel& page, GlyphRow& row) {
  std::vector<PlacedGlyph> kept;
  for (PlacedGlyph& glyph : row.glyphs) {
    const auto end = kept.rend() - static_cast<std::ptrdiff_t>(
                                       kept.size() - std::min(kept.size(), kDoublesBeside));
    const auto twin = std::find_if(kept.rbegin(), end, [&](const PlacedGlyph& other) {
      return AreOneTwice(page, glyph, other);
    });
    if (twin == end) {
      kept.push_back(glyph);
      continue;
    }
    const double apart =
        std::abs(glyph.left - twin->left) + std::abs(glyph.baseline - twin->baseline);
    const bool is_doubled = twin->is_doubled || apart > kSamePlace * glyph.size;
    if (IsAbove(page, glyph, *twin)) {
      twin->glyph = glyph.glyph;
    }
    twin->is_doubled = is_doubled;
  }
  const bool has_doubles = kept.size() < row.glyphs.size();
  row.glyphs = std::move(kept);
  return has_doubles;
}

// The raised or lowered text of a row that belongs to larger text of another.
class RaisedText {
 public:
  RaisedText(const PageModel& page, std::vector<GlyphRow>& rows) : page_(&page), rows_(&rows) {}

  // Moves what is raised to the rows that it belongs to.
  void Settle();

 private:
  using Glyphs = std::vector<PlacedGlyph>;

  std::optional<std::size_t> OwnerOf(std::size_t row, const PlacedGlyph* first,
                                     const PlacedGlyph* last) const;
  bool IsBeside(const GlyphRow& row, const PlacedGlyph& first, const PlacedGlyph& last) const;

  const PageModel* page_;
  std::vector<GlyphRow>* rows_;
};

bool IsLarger(const PlacedGlyph& owner, const PlacedGlyph& raised) {
  const double above = owner.baseline - raised.baseline;
  return raised.size <= kRaisedSize * owner.size && above <= kHighest * owner.size &&
         above >= -kLowest * owner.size;
}

// Text that runs above or below several letters of larger text is a line of its own.
bool RaisedText::IsBeside(const GlyphRow& row, const PlacedGlyph& first,
                          const PlacedGlyph& last) const {
  const auto behind =
      std::lower_bound(row.glyphs.begin(), row.glyphs.end(), first.left,
                       [](const PlacedGlyph& glyph, double left) { return glyph.left < left; });
  const bool is_large_behind = behind != row.glyphs.end() && IsLarger(*behind, first);
  const auto end = behind + std::min(row.glyphs.end() - behind, kSpacesBehind);
  const auto seen = std::find_if_not(
      behind, end, [this](const PlacedGlyph& glyph) { return TextOf(*page_, glyph) == U" "; });
  if (seen != end && IsLarger(*seen, first) && last.right - seen->left > kReachOver * seen->size) {
    return false;
  }
  if (behind != row.glyphs.begin()) {
    const PlacedGlyph& before = *(behind - 1);
    const double gap = first.left - before.right;
    if (IsLarger(before, first) && gap <= kGapBefore * before.size &&
        gap >= -kReachIn * before.size) {
      return true;
    }
  }
  return is_large_behind && behind->left - last.right <= kGapBehind * behind->size;
}

std::optional<std::size_t> RaisedText::OwnerOf(std::size_t row, const PlacedGlyph* first,
                                               const PlacedGlyph* last) const {
  const auto count = static_cast<std::ptrdiff_t>(rows_->size());
  for (std::ptrdiff_t step = 1; step <= kRowsBeside; ++step) {
    for (const std::ptrdiff_t offset : {step, -step}) {
      const std::ptrdiff_t other = static_cast<std::ptrdiff_t>(row) + offset;
      if (other >= 0 && other < count &&
          IsBeside((*rows_)[static_cast<std::size_t>(other)], *first, *last)) {
        return static_cast<std::size_t>(other);
      }
    }
  }
  return std::nullopt;
}

void RaisedText::Settle() {
  std::map<std::size_t, Glyphs> moved;
  for (std::size_t i = 0; i < rows_->size(); ++i) {
    Glyphs& glyphs = (*rows_)[i].glyphs;
    Glyphs kept;
    for (std::size_t begin = 0; begin < glyphs.size();) {
      std::size_t end = begin + 1;
      while (end < glyphs.size() &&
             glyphs[end].left - glyphs[end - 1].right <= kClusterGap * glyphs[end].size &&
             glyphs[end].size <= 1.01 * glyphs[end - 1].size) {
        ++end;
      }
      const auto owner = end - begin <= kRaisedLength ? OwnerOf(i, &glyphs[begin], &glyphs[end - 1])
                                                      : std::nullopt;
      Glyphs& target = owner ? moved[*owner] : kept;
      target.insert(target.end(), glyphs.begin() + static_cast<std::ptrdiff_t>(begin),
                    glyphs.begin() + static_cast<std::ptrdiff_t>(end));
      begin = end;
    }
    glyphs = std::move(kept);
  }
  for (const auto& [row, glyphs] : moved) {
    Glyphs& all = (*rows_)[row].glyphs;
    all.insert(all.end(), glyphs.begin(), glyphs.end());
    SortFromLeft(all);
  }
  std::erase_if(*rows_, [](const GlyphRow& row) { return row.glyphs.empty(); });
}

}  // namespace

void SortFromLeft(std::vector<PlacedGlyph>& glyphs) {
  std::stable_sort(glyphs.begin(), glyphs.end(),
                   [](const PlacedGlyph& a, const PlacedGlyph& b) { return a.left < b.left; });
}

std::vector<TurnedRows> RowsOf(const PageModel& page) {
  std::vector<TurnedRows> all;
  for (auto& [orientation, glyphs] : ByOrientation(page)) {
    TurnedRows turned{.angle = static_cast<double>(orientation.first),
                      .is_vertical = orientation.second,
                      .rows = {}};
    for (GlyphRow& row : CutIntoRows(std::move(glyphs))) {
      if (DropDoubles(page, row)) {  // the rest of a second painting is no other text
        turned.rows.push_back(std::move(row));
        continue;
      }
      for (GlyphRow& layer : PartOverlaid(page, std::move(row))) {
        turned.rows.push_back(std::move(layer));
      }
    }
    RaisedText(page, turned.rows).Settle();
    all.push_back(std::move(turned));
  }
  return all;
}

}  // namespace TarnixTools::engines
