#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "engines/support/layout/tables/OpenRows.h"
#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

namespace {

constexpr double kLevel = 2;           // points between rules that stand side by side
constexpr double kGutter = 3;          // points between them, at least
constexpr double kHeadingGap = 1.2;    // of the font's size: from a heading's baseline to its rule
constexpr std::size_t kMostRows = 50;  // of panels
constexpr std::size_t kMostSections = 100;  // of a panel

// A rule with one text over its beginning.
struct Heading {
  Rule rule;
  double upper = 0;
  std::vector<std::uint32_t> words;
};

class PanelFinder {
 public:
  PanelFinder(const Rules& rules, std::span<const Ink> inks) : rules_(&rules), inks_(inks) {}

  Panels Find();

 private:
  std::optional<Heading> HeadingOver(const Rule& rule) const;
  void FindRows();
  void AddRow(std::vector<Rule> level);
  double EndOf(std::size_t row) const;
  bool HasTextBeside(const std::vector<Heading>& row, double end) const;
  std::optional<TableArea> AreaBelow(const Rule& rule, double end) const;
  std::vector<Heading> HeadingsOfPanel(const Heading& first, double end) const;
  void AddPanels(std::size_t row);

  const Rules* rules_;
  std::span<const Ink> inks_;
  std::vector<std::vector<Heading>> rows_;  // from the top; each from the left
  Panels panels_;
};

std::optional<Heading> PanelFinder::HeadingOver(const Rule& rule) const {
  std::vector<Ink> above;
  for (const Ink& ink : inks_) {
    const double x = (ink.left + ink.right) / 2;
    const double gap = rule.at - ink.baseline;
    if (x > rule.from && x < rule.to && gap > -1 && gap <= kHeadingGap * ink.size) {
      above.push_back(ink);
    }
  }
  const std::vector<InkRow> rows = RowsOf(above);
  if (rows.size() != 1 || rows[0].chunks.size() != 1) {
    return std::nullopt;
  }
  const Chunk& chunk = rows[0].chunks[0];
  if (chunk.is_numeric || std::abs(chunk.left - rule.from) > kSameEnd ||
      chunk.right > rule.to + 1) {
    return std::nullopt;
  }
  Heading heading{.rule = rule, .upper = rows[0].upper, .words = {}};
  for (const Ink& ink : rows[0].inks) {
    heading.words.push_back(ink.word);
  }
  return heading;
}

// Rules on one level make a row where each has a heading.
void PanelFinder::AddRow(std::vector<Rule> level) {
  std::sort(level.begin(), level.end(),
            [](const Rule& a, const Rule& b) { return a.from < b.from; });
  std::vector<Heading> row;
  for (const Rule& rule : level) {
    std::optional<Heading> heading = HeadingOver(rule);
    if (!heading || (!row.empty() && rule.from - row.back().rule.to < kGutter)) {
      return;
    }
    row.push_back(std::move(*heading));
  }
  rows_.push_back(std::move(row));
}

void PanelFinder::FindRows() {
  std::vector<Rule> level;
  const auto close = [&] {
    if (level.size() >= 2 && rows_.size() < kMostRows) {
      AddRow(std::move(level));
    }
    level.clear();
  };
  for (const Rule& rule : rules_->horizontal) {
    if (rule.is_edge || rule.length() < kShortestRule) {
      continue;
    }
    if (!level.empty() && rule.at - level.front().at > kLevel) {
      close();
    }
    level.push_back(rule);
  }
  close();
}

// The panels end where others begin, or where something runs over a gutter.
double PanelFinder::EndOf(std::size_t row) const {
  const std::vector<Heading>& panels = rows_[row];
  const double at = panels.front().rule.at;
  double end = std::numeric_limits<double>::infinity();
  if (row + 1 < rows_.size()) {
    for (const Heading& heading : rows_[row + 1]) {
      end = std::min(end, heading.upper);
    }
  }
  for (std::size_t i = 1; i < panels.size(); ++i) {
    const double left = panels[i - 1].rule.to;
    const double right = panels[i].rule.from;
    for (const Rule& rule : rules_->horizontal) {
      if (rule.at > at + kLevel && rule.from < left - 1 && rule.to > right + 1) {
        end = std::min(end, rule.at);
      }
    }
    for (const Ink& ink : inks_) {
      if (ink.upper > at && ink.left < left - 1 && ink.right > right + 1) {
        end = std::min(end, ink.upper);
      }
    }
  }
  return end;
}

// As the labels of a table are, whose columns have headings with rules.
bool PanelFinder::HasTextBeside(const std::vector<Heading>& row, double end) const {
  const double left = row.front().rule.from - kSameEnd;
  const double right = row.back().rule.to + kSameEnd;
  return std::any_of(inks_.begin(), inks_.end(), [&](const Ink& ink) {
    const double y = (ink.upper + ink.lower) / 2;
    return y > row.front().upper && y < end && (ink.left < left || ink.right > right);
  });
}

// The rows in columns that follow the rule closely.
std::optional<TableArea> PanelFinder::AreaBelow(const Rule& rule, double end) const {
  std::vector<InkRow> rows = RowsOf(InksIn(inks_, {rule.from - 1, rule.at, rule.to + 1, end}));
  double last = rule.at;
  const auto far = std::find_if(rows.begin(), rows.end(), [&last](const InkRow& row) {
    return row.baseline - std::exchange(last, row.baseline) > kFarRuledRow * row.size;
  });
  rows.erase(far, rows.end());
  if (rows.size() < 2 || !IsTabular(rows, rule.length())) {
    return std::nullopt;
  }
  TableArea area;
  area.kind = AreaKind::kStripes;
  area.box = {rule.from, rule.at - 1, rule.to, rows.back().lower + 1};
  AddRulesIn(*rules_, area);
  return area;
}

std::vector<Heading> PanelFinder::HeadingsOfPanel(const Heading& first, double end) const {
  std::vector<Heading> headings{first};
  for (const Rule& rule : rules_->horizontal) {
    const bool is_of_panel = rule.at > first.rule.at + kLevel && rule.at < end && !rule.is_edge &&
                             std::abs(rule.from - first.rule.from) <= kSameEnd &&
                             std::abs(rule.to - first.rule.to) <= kSameEnd;
    if (is_of_panel && headings.size() < kMostSections) {
      if (std::optional<Heading> heading = HeadingOver(rule)) {
        headings.push_back(std::move(*heading));
      }
    }
  }
  return headings;
}

// All of a row or none: where one is text, the rules are not those of panels.
void PanelFinder::AddPanels(std::size_t row) {
  const double end = EndOf(row);
  if (HasTextBeside(rows_[row], end)) {
    return;
  }
  Panels found;
  for (const Heading& panel : rows_[row]) {
    const std::vector<Heading> headings = HeadingsOfPanel(panel, end);
    for (std::size_t i = 0; i < headings.size(); ++i) {
      const double below = i + 1 < headings.size() ? headings[i + 1].upper : end;
      std::optional<TableArea> area = AreaBelow(headings[i].rule, below);
      if (!area && i == 0) {
        return;
      }
      if (area) {
        found.areas.push_back(std::move(*area));
        found.headings.insert(found.headings.end(), headings[i].words.begin(),
                              headings[i].words.end());
      }
    }
  }
  std::move(found.areas.begin(), found.areas.end(), std::back_inserter(panels_.areas));
  panels_.headings.insert(panels_.headings.end(), found.headings.begin(), found.headings.end());
}

Panels PanelFinder::Find() {
  FindRows();
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    AddPanels(row);
  }
  return std::move(panels_);
}

}  // namespace

Panels FindPanels(const Rules& rules, std::span<const Ink> inks) {
  return PanelFinder(rules, inks).Find();
}

}  // namespace TarnixTools::engines
