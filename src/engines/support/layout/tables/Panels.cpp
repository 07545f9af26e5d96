// Tables side by side, each below a rule of its own.
#include <algorithm>
#include <cmath>
#include <optional>

#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

namespace {

// All in points.
constexpr double kLevel = 1.5;           // between rules of one level
constexpr double kShortest = 60;         // of their rules
constexpr double kNarrowest = 3;         // gap between them
constexpr double kWidest = 60;           // likewise
constexpr double kOverhang = 4;          // of words over the ends of their rule
constexpr double kInside = 1;            // by which a table is narrower than its rule
constexpr std::size_t kRows = 2;         // of several chunks, that a table has at least
constexpr std::size_t kMost = 40;        // side by side
constexpr std::size_t kMostLevels = 50;  // of rules, that are looked at

double MiddleY(const Ink& ink) {
  return (ink.upper + ink.lower) / 2;
}

class PanelFinder {
 public:
  PanelFinder(const Rules& rules, std::span<const Ink> inks) : rules_(&rules), inks_(inks) {}

  std::vector<TableArea> Find();

 private:
  using Level = std::vector<Rule>;

  std::vector<Level> Levels() const;
  double EndOf(const Level& level) const;
  double WithoutHeadings(const Level& level, double end) const;
  std::vector<Ink> Between(double upper, double lower) const;
  std::optional<TableArea> AreaBelow(const Rule& rule, double end, std::span<const Ink> inks) const;
  void AddBelow(const Level& level, std::vector<TableArea>& areas) const;

  const Rules* rules_;
  std::span<const Ink> inks_;
};

// Rules beside each other with gaps as between columns of a page.
std::vector<PanelFinder::Level> PanelFinder::Levels() const {
  std::vector<Level> levels;
  for (const Rule& rule : rules_->horizontal) {
    if (rule.is_edge || rule.length() < kShortest) {
      continue;
    }
    if (levels.empty() || rule.at - levels.back().front().at > kLevel) {
      levels.emplace_back();
    }
    levels.back().push_back(rule);
  }
  for (Level& level : levels) {
    std::sort(level.begin(), level.end(),
              [](const Rule& a, const Rule& b) { return a.from < b.from; });
  }
  std::erase_if(levels, [](const Level& level) {
    const auto wrong =
        std::adjacent_find(level.begin(), level.end(), [](const Rule& a, const Rule& b) {
          return b.from - a.to < kNarrowest || b.from - a.to > kWidest;
        });
    return level.size() < 2 || level.size() > kMost || wrong != level.end();
  });
  levels.resize(std::min(levels.size(), kMostLevels));
  return levels;
}

// Where words or rules run over one of the gaps first.
double PanelFinder::EndOf(const Level& level) const {
  const double upper = level.front().at;
  double end = upper;
  for (const Ink& ink : inks_) {
    end = std::max(end, ink.lower + 1);
  }
  for (std::size_t i = 1; i < level.size(); ++i) {
    const double gap = (level[i - 1].to + level[i].from) / 2;
    for (const Ink& ink : inks_) {
      if (MiddleY(ink) > upper && ink.left < gap && ink.right > gap) {
        end = std::min(end, ink.upper);
      }
    }
    for (const Rule& rule : rules_->horizontal) {
      if (rule.at > upper + kLevel && rule.from < gap && rule.to > gap) {
        end = std::min(end, rule.at);
      }
    }
  }
  return end;
}

std::vector<Ink> PanelFinder::Between(double upper, double lower) const {
  std::vector<Ink> inks;
  std::copy_if(inks_.begin(), inks_.end(), std::back_inserter(inks),
               [&](const Ink& ink) { return MiddleY(ink) > upper && MiddleY(ink) < lower; });
  return inks;
}

// The last row is of what follows where each text of it begins with a rule right below.
double PanelFinder::WithoutHeadings(const Level& level, double end) const {
  const std::vector<InkRow> rows = RowsOf(Between(level.front().at, end));
  if (rows.empty()) {
    return end;
  }
  const bool is_heading =
      std::all_of(rows.back().chunks.begin(), rows.back().chunks.end(), [&](const Chunk& chunk) {
        return std::any_of(rules_->horizontal.begin(), rules_->horizontal.end(),
                           [&](const Rule& rule) {
                             return std::abs(rule.at - end) <= kLevel &&
                                    std::abs(rule.from - chunk.left) <= kOverhang;
                           });
      });
  return is_heading ? rows.back().upper - kInside : end;
}

// A table has rows of several chunks, most of which begin with a text: what begins with numbers is
// but some of the columns of one.
std::optional<TableArea> PanelFinder::AreaBelow(const Rule& rule, double end,
                                                std::span<const Ink> inks) const {
  std::vector<Ink> own;
  std::copy_if(inks.begin(), inks.end(), std::back_inserter(own), [&](const Ink& ink) {
    return ink.left >= rule.from - kOverhang && ink.right <= rule.to + kOverhang;
  });
  std::size_t several = 0;
  std::size_t labelled = 0;
  for (const InkRow& row : RowsOf(own)) {
    several += row.chunks.size() > 1 ? 1 : 0;
    labelled += row.chunks.size() > 1 && !row.chunks.front().is_numeric ? 1 : 0;
  }
  if (several < kRows || 2 * labelled < several) {
    return std::nullopt;
  }
  TableArea area;
  area.kind = AreaKind::kStripes;
  area.box = {rule.from + kInside, rule.at, rule.to - kInside, end};
  for (const Rule& other : rules_->horizontal) {
    if (other.at >= rule.at - kLevel && other.at <= end && other.from >= rule.from - kInside &&
        other.to <= rule.to + kInside) {
      area.horizontal.push_back(other);
      area.rows.push_back(other.at);
    }
  }
  area.rows = Snap(std::move(area.rows));
  return area;
}

void PanelFinder::AddBelow(const Level& level, std::vector<TableArea>& areas) const {
  const double end = WithoutHeadings(level, EndOf(level));
  const std::vector<Ink> inks = Between(level.front().at, end);
  const bool are_below = std::all_of(inks.begin(), inks.end(), [&level](const Ink& ink) {
    return std::any_of(level.begin(), level.end(), [&ink](const Rule& rule) {
      return ink.left >= rule.from - kOverhang && ink.right <= rule.to + kOverhang;
    });
  });
  if (!are_below) {
    return;
  }
  std::vector<TableArea> own;
  for (const Rule& rule : level) {
    std::optional<TableArea> area = AreaBelow(rule, end, inks);
    if (!area) {
      return;
    }
    own.push_back(std::move(*area));
  }
  areas.insert(areas.end(), own.begin(), own.end());
}

std::vector<TableArea> PanelFinder::Find() {
  std::vector<TableArea> areas;
  double end = -1e9;
  for (const Level& level : Levels()) {
    if (level.front().at >= end) {
      AddBelow(level, areas);
      end = areas.empty() ? end : areas.back().box.top;
    }
  }
  return areas;
}

}  // namespace

std::vector<TableArea> FindPanels(const Rules& rules, std::span<const Ink> inks) {
  return PanelFinder(rules, inks).Find();
}

}  // namespace TarnixTools::engines
