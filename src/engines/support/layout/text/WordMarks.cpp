#include "engines/support/layout/text/WordMarks.h"

#include <algorithm>
#include <optional>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/Colors.h"
#include "engines/support/layout/LayoutLimits.h"

namespace TarnixTools::engines {

namespace {

// All in ems.
constexpr double kThickestRule = 0.15;
constexpr double kUnderlineAbove = 0.02;  // the baseline
constexpr double kUnderlineBelow = 0.3;
constexpr double kStrikeLowest = 0.15;  // above the baseline
constexpr double kStrikeHighest = 0.45;
constexpr double kOverhang = 0.35;  // beyond the words on either side
constexpr double kLeastHighlight = 0.6;
constexpr double kMostHighlight = 1.7;

constexpr double kCovered = 0.45;            // of a marked word's width
constexpr std::ptrdiff_t kLinesBeside = 64;  // that are looked at for one path

enum class MarkKind { kUnderline, kStrike, kHighlight };

struct Mark {
  pdf::Box box;
  Rgb color;
  bool is_rule = false;  // a thin one; else a fill
};

std::optional<Mark> MarkOf(const PathShape& path) {
  if (path.kind == PathShape::Kind::kOther || path.box.width() < 1) {
    return std::nullopt;
  }
  if (path.kind == PathShape::Kind::kLine) {
    const std::optional<Rgb>& color = path.fill ? path.fill : path.stroke;
    pdf::Box box = path.box;
    if (!path.fill) {
      box.bottom -= path.line_width / 2;
      box.top += path.line_width / 2;
    }
    return color ? std::optional(Mark{box, *color, true}) : std::nullopt;
  }
  const bool is_plain = path.fill && !path.stroke;
  return is_plain ? std::optional(Mark{path.box, *path.fill, false}) : std::nullopt;
}

// What a mark does to a line on whose words it lies.
std::optional<MarkKind> KindFor(const Mark& mark, const WordLine& line) {
  const double em = line.size;
  const double below = MiddleY(mark.box) - line.baseline;
  if (mark.is_rule) {
    if (mark.box.height() > kThickestRule * em) {
      return std::nullopt;
    }
    if (below >= -kUnderlineAbove * em && below <= kUnderlineBelow * em) {
      return MarkKind::kUnderline;
    }
    const bool is_through = below <= -kStrikeLowest * em && below >= -kStrikeHighest * em;
    return is_through ? std::optional(MarkKind::kStrike) : std::nullopt;
  }
  const bool is_high = mark.box.height() >= kLeastHighlight * em &&
                       mark.box.height() <= kMostHighlight * em &&
                       UpperEdge(mark.box) < line.baseline - 0.4 * em &&
                       LowerEdge(mark.box) > line.baseline - 0.1 * em;
  return is_high && !IsWhite(mark.color) ? std::optional(MarkKind::kHighlight) : std::nullopt;
}

bool Covers(const Mark& mark, const Word& word) {
  return SharedWidth(mark.box, word.box) >= kCovered * word.box.width();
}

// Whether the mark begins and ends where letters do: a rule of a table goes its own way.
//   compared - counts the glyphs that were looked at
bool FitsText(const Mark& mark, const WordLine& line, std::size_t& compared) {
  std::optional<double> left;
  double right = 0;
  for (const Word& word : line.words) {
    compared += word.glyphs.size();
    for (const PlacedGlyph& glyph : word.glyphs) {
      const double middle = (glyph.left + glyph.right) / 2;
      if (middle >= mark.box.left && middle <= mark.box.right) {
        left = std::min(left.value_or(glyph.left), glyph.left);
        right = std::max(right, glyph.right);
      }
    }
  }
  const double overhang = kOverhang * line.size;
  return left && mark.box.left >= *left - overhang && mark.box.right <= right + overhang;
}

bool Apply(const Mark& mark, WordLine& line, std::size_t& compared) {
  const std::optional<MarkKind> kind = KindFor(mark, line);
  if (!kind || !FitsText(mark, line, compared)) {
    return false;
  }
  for (Word& word : line.words) {
    if (!Covers(mark, word)) {
      continue;
    }
    word.is_underlined |= *kind == MarkKind::kUnderline;
    word.is_struck |= *kind == MarkKind::kStrike;
    if (*kind == MarkKind::kHighlight) {
      word.highlight = mark.color;
    }
  }
  return true;
}

}  // namespace

std::vector<std::uint32_t> MarkWords(const PageModel& page, std::vector<WordLine>& lines) {
  std::vector<std::uint32_t> used;
  std::vector<WordLine*> by_baseline;
  by_baseline.reserve(lines.size());
  for (WordLine& line : lines) {
    by_baseline.push_back(&line);
  }
  std::sort(by_baseline.begin(), by_baseline.end(),
            [](const WordLine* a, const WordLine* b) { return a->baseline < b->baseline; });
  std::size_t compared = 0;
  for (std::uint32_t i = 0; i < page.paths.size() && compared <= limits::kMaxBoxComparisons; ++i) {
    const std::optional<Mark> mark = MarkOf(page.paths[i]);
    if (!mark) {
      continue;
    }
    const double reach = mark->box.height() + 12;
    const auto first = std::lower_bound(
        by_baseline.begin(), by_baseline.end(), UpperEdge(mark->box) - reach,
        [](const WordLine* line, double baseline) { return line->baseline < baseline; });
    bool is_used = false;
    std::ptrdiff_t looked_at = 0;
    for (auto line = first; line != by_baseline.end() && looked_at < kLinesBeside &&
                            (*line)->baseline < LowerEdge(mark->box) + 2 * reach;
         ++line, ++looked_at) {
      is_used |= SharedWidth(mark->box, (*line)->box) > 0 && Apply(*mark, **line, compared);
    }
    if (is_used) {
      used.push_back(i);
    }
  }
  return used;
}

}  // namespace TarnixTools::engines
