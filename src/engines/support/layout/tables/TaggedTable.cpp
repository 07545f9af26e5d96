#include "engines/support/layout/tables/TaggedTable.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/tables/CellMerger.h"

namespace TarnixTools::engines {

namespace {

constexpr double kOverlap = 0.3;          // ems that rows may share
constexpr double kSharedWidth = 1;        // points that cells of different columns may share
constexpr double kBeside = 15;            // points from words to the rule around them
constexpr double kCovered = 0.3;          // of the table, that a rule runs along to part it
constexpr std::size_t kMostCells = 1000;  // that are held against each other

// What words take along one axis.
struct Extent {
  double from = 1e9;
  double to = -1e9;

  void Add(double first, double last) {
    from = std::min(from, first);
    to = std::max(to, last);
  }
};

struct TagCell {
  std::size_t row = 0;
  Extent width;
  std::vector<Ink> inks;
  bool spans = false;
  std::size_t first = 0;  // of its columns
  std::size_t last = 0;
};

bool Overlap(const Extent& a, const Extent& b) {
  return std::min(a.to, b.to) - std::max(a.from, b.from) > kSharedWidth;
}

// The place of the rule that parts what ends at one place from what begins at another; without one
// the middle between them.
double EdgeBetween(std::span<const Rule> rules, const Extent& gap, const Extent& along) {
  for (const Rule& rule : rules) {
    const double covered = std::min(rule.to, along.to) - std::max(rule.from, along.from);
    if (rule.at >= gap.from - 1 && rule.at <= gap.to + 1 &&
        covered >= kCovered * (along.to - along.from)) {
      return rule.at;
    }
  }
  return (gap.from + gap.to) / 2;
}

// The edges of places one behind the other. Outside of them the next rule is the edge.
std::vector<double> EdgesOf(const std::vector<Extent>& places, std::span<const Rule> rules,
                            const Extent& along) {
  constexpr double kRoom = 1;  // points to the edge where there is no rule
  const auto outer = [&](double at, double side) {
    double edge = at + side * kRoom;
    double nearest = kBeside;
    for (const Rule& rule : rules) {
      const double away = side * (rule.at - at);
      const double covered = std::min(rule.to, along.to) - std::max(rule.from, along.from);
      if (away > -kRoom && away < nearest && covered >= kCovered * (along.to - along.from)) {
        nearest = away;
        edge = rule.at;
      }
    }
    return edge;
  };
  std::vector<double> edges{outer(places.front().from, -1)};
  for (std::size_t i = 1; i < places.size(); ++i) {
    edges.push_back(EdgeBetween(rules, {places[i - 1].to, places[i].from}, along));
  }
  edges.push_back(outer(places.back().to, 1));
  return edges;
}

bool Rise(const std::vector<double>& edges) {
  return std::adjacent_find(edges.begin(), edges.end(), std::greater_equal<>()) == edges.end();
}

class TaggedBuilder {
 public:
  explicit TaggedBuilder(std::span<const Ink> inks) : inks_(inks) {}

  std::optional<TaggedTable> Build(const Rules& rules);

 private:
  bool FindRows();
  bool FindColumns();
  void MarkSpans();
  void WidenOuterColumns();
  bool PlaceCells();

  std::span<const Ink> inks_;
  std::vector<TagCell> cells_;
  std::vector<Extent> rows_;
  std::vector<Extent> columns_;
};

// Rows stand below each other, whatever their order in the tree.
bool TaggedBuilder::FindRows() {
  std::map<std::uint32_t, Extent> extents;
  double size = 0;
  for (const Ink& ink : inks_) {
    if (ink.tagged_row == 0 || ink.tagged_cell == 0) {
      return false;
    }
    extents[ink.tagged_row].Add(ink.upper, ink.lower);
    size = std::max(size, ink.size);
  }
  std::vector<std::pair<double, std::uint32_t>> order;
  order.reserve(extents.size());
  for (const auto& [row, extent] : extents) {
    order.emplace_back(extent.from, row);
  }
  std::sort(order.begin(), order.end());
  std::map<std::uint32_t, std::size_t> places;
  for (const auto& [upper, row] : order) {
    if (!rows_.empty() && upper < rows_.back().to - kOverlap * size) {
      return false;
    }
    places[row] = rows_.size();
    rows_.push_back(extents[row]);
  }
  std::map<std::uint32_t, std::size_t> numbers;  // of cells
  for (const Ink& ink : inks_) {
    const auto [number, is_new] = numbers.try_emplace(ink.tagged_cell, cells_.size());
    if (is_new) {
      cells_.push_back({.row = places[ink.tagged_row], .width = {}, .inks = {}});
    }
    TagCell& cell = cells_[number->second];
    cell.width.Add(ink.left, ink.right);
    cell.inks.push_back(ink);
  }
  return rows_.size() >= 2 && cells_.size() <= kMostCells;
}

// A cell above or below two of another row is of several columns.
void TaggedBuilder::MarkSpans() {
  for (TagCell& cell : cells_) {
    std::vector<std::size_t> beside(rows_.size());
    for (const TagCell& other : cells_) {
      if (other.row != cell.row && Overlap(cell.width, other.width)) {
        cell.spans = cell.spans || ++beside[other.row] > 1;
      }
    }
  }
}

// As far as cells of several columns reach.
void TaggedBuilder::WidenOuterColumns() {
  for (const TagCell& cell : cells_) {
    if (!columns_.empty()) {
      columns_.front().from = std::min(columns_.front().from, cell.width.from);
      columns_.back().to = std::max(columns_.back().to, cell.width.to);
    }
  }
}

bool TaggedBuilder::FindColumns() {
  MarkSpans();
  std::vector<Extent> widths;
  for (const TagCell& cell : cells_) {
    if (!cell.spans) {
      widths.push_back(cell.width);
    }
  }
  std::sort(widths.begin(), widths.end(),
            [](const Extent& a, const Extent& b) { return a.from < b.from; });
  for (const Extent& width : widths) {
    if (columns_.empty() || !Overlap(columns_.back(), width)) {
      columns_.push_back(width);
    }
    columns_.back().Add(width.from, width.to);
  }
  WidenOuterColumns();
  return columns_.size() >= 2 && columns_.size() <= limits::kMaxTableColumns &&
         columns_.size() * rows_.size() <= limits::kMaxTablePlaces;
}

// Each place has one cell at most.
bool TaggedBuilder::PlaceCells() {
  std::vector<bool> is_taken(rows_.size() * columns_.size());
  for (TagCell& cell : cells_) {
    cell.first = columns_.size();
    for (std::size_t c = 0; c < columns_.size(); ++c) {
      if (Overlap(cell.width, columns_[c])) {
        cell.first = std::min(cell.first, c);
        cell.last = c;
      }
    }
    if (cell.first == columns_.size()) {
      return false;
    }
    for (std::size_t c = cell.first; c <= cell.last; ++c) {
      const std::size_t place = cell.row * columns_.size() + c;
      if (is_taken[place]) {
        return false;
      }
      is_taken[place] = true;
    }
  }
  return true;
}

std::optional<TaggedTable> TaggedBuilder::Build(const Rules& rules) {
  if (inks_.empty() || !FindRows() || !FindColumns() || !PlaceCells()) {
    return std::nullopt;
  }
  const Extent width{columns_.front().from, columns_.back().to};
  const Extent height{rows_.front().from, rows_.back().to};
  TaggedTable table;
  table.shape.columns = EdgesOf(columns_, rules.vertical, height);
  table.shape.rows = EdgesOf(rows_, rules.horizontal, width);
  if (!Rise(table.shape.columns) || !Rise(table.shape.rows)) {
    return std::nullopt;
  }
  CellGrid grid(table.shape.columns, table.shape.rows);
  for (TagCell& cell : cells_) {
    for (const InkRow& row : RowsOf(cell.inks)) {
      std::vector<Ink>& inks = grid.At(cell.row, cell.first).inks;
      inks.insert(inks.end(), row.inks.begin(), row.inks.end());
    }
    if (cell.last > cell.first) {
      grid.Merge(cell.row, cell.first, cell.row, cell.last);
    }
  }
  table.shape.cells = grid.Cells();
  table.shape.header_rows = HeaderRowsOf(table.shape);
  table.area.kind = AreaKind::kTagged;
  table.area.box = {table.shape.columns.front(), table.shape.rows.front(),
                    table.shape.columns.back(), table.shape.rows.back()};
  table.area.horizontal = rules.horizontal;
  table.area.vertical = rules.vertical;
  return table;
}

}  // namespace

std::optional<TaggedTable> BuildTaggedTable(std::span<const Ink> inks, const Rules& rules) {
  return TaggedBuilder(inks).Build(rules);
}

}  // namespace TarnixTools::engines
