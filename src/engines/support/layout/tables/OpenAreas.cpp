#include <algorithm>
#include <cmath>
#include <optional>

#include "engines/support/layout/tables/OpenRows.h"
#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

namespace {

constexpr double kFarRow = 2.6;     // of the font's size, from baseline to baseline
constexpr double kProseWidth = 18;  // ems
constexpr std::size_t kProseWords = 5;
constexpr std::size_t kFewestRows = 3;

bool IsWide(const Chunk& chunk, const InkRow& row) {
  return !chunk.is_numeric && chunk.last - chunk.first + 1 >= kProseWords &&
         chunk.right - chunk.left > kProseWidth * row.size;
}

// Rules of about one length, above each other.
class StripeFinder {
 public:
  StripeFinder(const Rules& rules, std::span<const Ink> inks) : rules_(&rules), inks_(inks) {}

  std::vector<TableArea> Find();

 private:
  std::vector<std::vector<Rule>> Stacks() const;
  void AddChains(const std::vector<Rule>& stack, std::vector<TableArea>& areas) const;
  TableArea AreaOf(const std::vector<Rule>& stack, std::size_t first, std::size_t last) const;

  const Rules* rules_;
  std::span<const Ink> inks_;
};

std::vector<std::vector<Rule>> StripeFinder::Stacks() const {
  std::vector<std::vector<Rule>> stacks;
  for (const Rule& rule : rules_->horizontal) {
    if (rule.length() < kShortestRule || rule.is_edge) {
      continue;
    }
    const auto stack = std::find_if(stacks.begin(), stacks.end(), [&rule](const auto& other) {
      return std::abs(other.front().from - rule.from) <= kSameEnd &&
             std::abs(other.front().to - rule.to) <= kSameEnd;
    });
    if (stack != stacks.end()) {
      stack->push_back(rule);
    } else if (stacks.size() < 500) {
      stacks.push_back({rule});
    }
  }
  return stacks;
}

TableArea StripeFinder::AreaOf(const std::vector<Rule>& stack, std::size_t first,
                               std::size_t last) const {
  TableArea area;
  area.kind = AreaKind::kStripes;
  area.box = {stack[first].from - kSameEnd, stack[first].at, stack[first].to + kSameEnd,
              stack[last].at};
  for (const Rule& rule : rules_->horizontal) {
    if (rule.at >= area.box.bottom - 1 && rule.at <= area.box.top + 1 &&
        rule.from >= area.box.left - 1 && rule.to <= area.box.right + 1) {
      area.horizontal.push_back(rule);
      area.rows.push_back(rule.at);
    }
  }
  area.rows = Snap(std::move(area.rows));
  return area;
}

void StripeFinder::AddChains(const std::vector<Rule>& stack, std::vector<TableArea>& areas) const {
  std::size_t first = stack.size();  // of the chain; none yet
  std::size_t last = 0;
  const auto close = [&] {
    if (first < last) {
      areas.push_back(AreaOf(stack, first, last));
    }
    first = stack.size();
  };
  for (std::size_t i = 0; i + 1 < stack.size(); ++i) {
    const pdf::Box box = {stack[i].from - kSameEnd, stack[i].at, stack[i].to + kSameEnd,
                          stack[i + 1].at};
    const std::vector<Ink> inks = InksIn(inks_, box);
    if (inks.empty()) {
      if (box.height() > 20) {
        close();
      }
      continue;
    }
    if (!IsTabular(RowsOf(inks), box.width())) {
      close();
      continue;
    }
    first = std::min(first, i);
    last = i + 1;
  }
  close();
}

std::vector<TableArea> StripeFinder::Find() {
  std::vector<TableArea> areas;
  for (const std::vector<Rule>& stack : Stacks()) {
    AddChains(stack, areas);
  }
  return areas;
}

// Rows of several chunks that follow each other.
class TextAreaFinder {
 public:
  TextAreaFinder(const Rules& rules, std::span<const Ink> inks) : rules_(&rules) {
    rows_ = RowsOf(inks, rules.vertical);
    DropProse();
  }

  std::vector<TableArea> Find();

 private:
  void DropProse();
  bool IsProse(std::size_t row, const Chunk& chunk) const;
  bool HasRuleBetween(std::size_t i, std::size_t j) const;
  bool GoesOn(std::size_t i) const;
  std::optional<TableArea> AreaOf(std::size_t first, std::size_t last) const;

  const Rules* rules_;
  std::vector<InkRow> rows_;
};

bool TextAreaFinder::IsProse(std::size_t row, const Chunk& chunk) const {
  if (!IsWide(chunk, rows_[row])) {
    return false;
  }
  const double reach = kFarRow * rows_[row].size;
  const auto continues = [&](const InkRow& other) {
    return std::abs(other.baseline - rows_[row].baseline) <= reach &&
           std::any_of(other.chunks.begin(), other.chunks.end(), [&](const Chunk& next) {
             return std::abs(next.left - chunk.left) <= 3 * rows_[row].size && !next.is_numeric &&
                    next.last > next.first;
           });
  };
  return (row > 0 && continues(rows_[row - 1])) ||
         (row + 1 < rows_.size() && continues(rows_[row + 1]));
}

void TextAreaFinder::DropProse() {
  std::vector<std::vector<Chunk>> kept(rows_.size());
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    for (const Chunk& chunk : rows_[r].chunks) {
      if (!IsProse(r, chunk)) {
        kept[r].push_back(chunk);
      }
    }
  }
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    rows_[r].chunks = std::move(kept[r]);
  }
  std::erase_if(rows_, [](const InkRow& row) { return row.chunks.empty(); });
}

bool TextAreaFinder::HasRuleBetween(std::size_t i, std::size_t j) const {
  return std::any_of(rules_->horizontal.begin(), rules_->horizontal.end(), [&](const Rule& rule) {
    return rule.at > rows_[i].baseline - 1 && rule.at < rows_[j].baseline &&
           rule.from < rows_[i].chunks.back().right && rule.to > rows_[i].chunks.front().left;
  });
}

bool TextAreaFinder::GoesOn(std::size_t i) const {
  const double size = std::max(rows_[i].size, rows_[i + 1].size);
  const double pitch = rows_[i + 1].baseline - rows_[i].baseline;
  return pitch <= (HasRuleBetween(i, i + 1) ? kFarRuledRow : kFarRow) * size;
}

std::optional<TableArea> TextAreaFinder::AreaOf(std::size_t first, std::size_t last) const {
  if (last - first + 1 < kFewestRows) {
    return std::nullopt;
  }
  TableArea area;
  area.box = {1e9, rows_[first].upper - 1, -1e9, rows_[last].lower + 1};
  for (std::size_t r = first; r <= last; ++r) {
    area.box.left = std::min(area.box.left, rows_[r].chunks.front().left - 1);
    area.box.right = std::max(area.box.right, rows_[r].chunks.back().right + 1);
  }
  AddRulesIn(*rules_, area);
  return area;
}

std::vector<TableArea> TextAreaFinder::Find() {
  std::vector<TableArea> areas;
  for (std::size_t i = 0; i < rows_.size();) {
    if (rows_[i].chunks.size() < 2) {
      ++i;
      continue;
    }
    std::size_t last = i;  // the last row with several chunks
    for (std::size_t next = i; next + 1 < rows_.size() && GoesOn(next); ++next) {
      if (rows_[next + 1].chunks.size() >= 2) {
        last = next + 1;
      } else if (next + 1 - last > 2) {
        break;
      }
    }
    if (std::optional<TableArea> area = AreaOf(i, last)) {
      areas.push_back(std::move(*area));
    }
    i = last + 1;
  }
  return areas;
}

}  // namespace

std::vector<TableArea> FindStripes(const Rules& rules, std::span<const Ink> inks) {
  return StripeFinder(rules, inks).Find();
}

std::vector<TableArea> FindTextAreas(const Rules& rules, std::span<const Ink> inks) {
  return TextAreaFinder(rules, inks).Find();
}

TableArea AreaAround(std::span<const Ink> inks, const Rules& rules) {
  TableArea area;
  area.kind = AreaKind::kStripes;
  area.box = {1e9, 1e9, -1e9, -1e9};
  for (const Ink& ink : inks) {
    area.box = {std::min(area.box.left, ink.left - 1), std::min(area.box.bottom, ink.upper - 1),
                std::max(area.box.right, ink.right + 1), std::max(area.box.top, ink.lower + 1)};
  }
  AddRulesIn(rules, area);
  return area;
}

}  // namespace TarnixTools::engines
