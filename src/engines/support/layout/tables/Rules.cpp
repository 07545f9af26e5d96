#include "engines/support/layout/tables/Rules.h"

#include <algorithm>
#include <cmath>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/Colors.h"
#include "engines/support/layout/LayoutLimits.h"

namespace TarnixTools::engines {

namespace {

constexpr double kThin = 3;         // points: what is as thin as that is a rule
constexpr double kJoint = 3.2;      // between pieces of a dashed or dotted rule
constexpr double kSameLine = 0.8;   // pieces that lie on one line
constexpr double kShortest = 6;     // of a rule
constexpr double kStripGap = 0.6;   // between strips that fill one cell
constexpr double kPageShare = 0.9;  // a box over as much of the page's width and height is paper

enum class EdgeKind : std::uint8_t { kFrame, kFill };

void AddEdges(const Fill& fill, double width, EdgeKind kind, Rules& rules) {
  const pdf::Box& box = fill.box;
  const bool is_edge = kind == EdgeKind::kFill;
  for (const double y : {box.bottom, box.top}) {
    rules.horizontal.push_back({y, box.left, box.right, width, fill.color, is_edge});
  }
  for (const double x : {box.left, box.right}) {
    rules.vertical.push_back({x, box.bottom, box.top, width, fill.color, is_edge});
  }
}

void JoinAlong(std::vector<Rule>& line, std::vector<Rule>& joined) {
  std::sort(line.begin(), line.end(), [](const Rule& a, const Rule& b) { return a.from < b.from; });
  const std::size_t first = joined.size();
  for (const Rule& piece : line) {
    if (joined.size() > first && piece.from - joined.back().to <= kJoint) {
      Rule& rule = joined.back();
      rule.to = std::max(rule.to, piece.to);
      rule.width = std::max(rule.width, piece.width);
      rule.is_edge = rule.is_edge && piece.is_edge;
    } else {
      joined.push_back(piece);
    }
  }
  line.clear();
}

// Pieces of one line become one rule.
void Join(std::vector<Rule>& rules) {
  std::sort(rules.begin(), rules.end(), [](const Rule& a, const Rule& b) { return a.at < b.at; });
  std::vector<Rule> joined;
  std::vector<Rule> line;
  for (const Rule& rule : rules) {
    if (!line.empty() && rule.at - line.front().at > kSameLine) {
      JoinAlong(line, joined);
    }
    line.push_back(rule);
  }
  JoinAlong(line, joined);
  std::erase_if(joined, [](const Rule& rule) { return rule.length() < kShortest; });
  rules = std::move(joined);
}

class RuleCollector {
 public:
  explicit RuleCollector(const PageModel& page) : page_(&page) {}

  Rules Collect() {
    for (const PathShape& shape : page_->paths) {
      if (rules_.horizontal.size() + rules_.vertical.size() < limits::kMaxRulesOfPage) {
        Add(shape);
      }
    }
    Join(rules_.horizontal);
    Join(rules_.vertical);
    return std::move(rules_);
  }

 private:
  // What of it lies on the page.
  void Add(const PathShape& whole) {
    PathShape shape = whole;
    shape.box = {std::max(whole.box.left, 0.0), std::max(whole.box.bottom, 0.0),
                 std::min(whole.box.right, page_->width), std::min(whole.box.top, page_->height)};
    const pdf::Box& box = shape.box;
    if (box.left > box.right || box.bottom > box.top) {
      return;
    }
    const bool is_thin = box.width() <= kThin || box.height() <= kThin;
    if (shape.kind == PathShape::Kind::kOther && !is_thin) {
      return;
    }
    if (is_thin) {
      if (!UnderlinesLink(box)) {
        AddThin(shape);
      }
    } else if (shape.kind == PathShape::Kind::kRectangle) {
      AddBox(shape);
    }
  }

  // Whether it is a line within what is clicked on: words of a table are often links.
  bool UnderlinesLink(const pdf::Box& box) {
    compared_ += page_->links.size();
    return box.height() <= kThin && compared_ <= limits::kMaxBoxComparisons &&
           std::any_of(page_->links.begin(), page_->links.end(), [&box](const PageLink& link) {
             const double y = (box.bottom + box.top) / 2;
             return box.left >= link.box.left - kThin && box.right <= link.box.right + kThin &&
                    y > (link.box.bottom + link.box.top) / 2 && y <= link.box.top + kThin;
           });
  }

  void AddThin(const PathShape& shape) {
    const pdf::Box& box = shape.box;
    const Rgb color = shape.fill ? *shape.fill : shape.stroke.value_or(Rgb{});
    if ((!shape.fill && !shape.stroke) || IsWhite(color)) {
      return;
    }
    const double thickness = std::min(box.width(), box.height());
    const double width = shape.fill ? thickness : shape.line_width;
    // The caps of a short dash may make it as wide as it is long.
    if (box.width() >= box.height()) {
      rules_.horizontal.push_back(
          {(box.bottom + box.top) / 2, box.left, box.right, width, color, false});
    }
    if (box.height() >= box.width()) {
      rules_.vertical.push_back(
          {(box.left + box.right) / 2, box.bottom, box.top, width, color, false});
    }
  }

  void AddBox(const PathShape& shape) {
    const pdf::Box& box = shape.box;
    if (box.width() > kPageShare * page_->width && box.height() > kPageShare * page_->height) {
      return;
    }
    if (shape.fill && rules_.fills.size() < limits::kMaxFillsOfPage) {
      rules_.fills.push_back({box, *shape.fill});
    }
    if (shape.stroke && !IsWhite(*shape.stroke)) {
      AddEdges({box, *shape.stroke}, shape.line_width, EdgeKind::kFrame, rules_);
    }
  }

  const PageModel* page_;
  Rules rules_;
  std::size_t compared_ = 0;  // paths with links
};

bool Holds(const pdf::Box& outer, const pdf::Box& inner) {
  return Grown(outer, kSameLine).Encloses(inner);
}

// The upper one grows where the other goes on below it.
bool GoOn(const Fill& upper, const Fill& lower) {
  return upper.color == lower.color && std::abs(upper.box.left - lower.box.left) <= kSameLine &&
         std::abs(upper.box.right - lower.box.right) <= kSameLine &&
         std::abs(upper.box.top - lower.box.bottom) <= kStripGap;
}

bool IsInAny(std::span<const pdf::Box> areas, const pdf::Box& box) {
  const double x = (box.left + box.right) / 2;
  const double y = (box.bottom + box.top) / 2;
  return std::any_of(areas.begin(), areas.end(), [x, y](const pdf::Box& area) {
    return x > area.left && x < area.right && y > area.bottom && y < area.top;
  });
}

std::vector<Fill> CellFills(const std::vector<Fill>& fills, std::span<const pdf::Box> areas) {
  std::vector<Fill> sorted;
  std::copy_if(fills.begin(), fills.end(), std::back_inserter(sorted), [areas](const Fill& fill) {
    return !IsWhite(fill.color) && !IsInAny(areas, fill.box);
  });
  sorted.resize(std::min(sorted.size(), limits::kMaxRulesOfPage / 4));
  std::stable_sort(sorted.begin(), sorted.end(), [](const Fill& a, const Fill& b) {
    return a.box.width() * a.box.height() > b.box.width() * b.box.height();
  });
  std::vector<Fill> whole;
  for (const Fill& fill : sorted) {
    if (std::none_of(whole.begin(), whole.end(), [&fill](const Fill& other) {
          return other.color == fill.color && Holds(other.box, fill.box);
        })) {
      whole.push_back(fill);
    }
  }
  std::stable_sort(whole.begin(), whole.end(),
                   [](const Fill& a, const Fill& b) { return a.box.bottom < b.box.bottom; });
  std::vector<Fill> cells;
  for (const Fill& fill : whole) {
    const auto upper = std::find_if(cells.rbegin(), cells.rend(),
                                    [&fill](const Fill& other) { return GoOn(other, fill); });
    if (upper != cells.rend()) {
      upper->box.top = fill.box.top;
    } else {
      cells.push_back(fill);
    }
  }
  return cells;
}

}  // namespace

void AddFillEdges(std::span<const pdf::Box> areas, Rules& rules) {
  for (const Fill& fill : CellFills(rules.fills, areas)) {
    AddEdges(fill, 0, EdgeKind::kFill, rules);
  }
  Join(rules.horizontal);
  Join(rules.vertical);
}

Rules RulesOf(const PageModel& page) {
  return RuleCollector(page).Collect();
}

}  // namespace TarnixTools::engines
