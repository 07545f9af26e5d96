#include "engines/support/layout/tables/TableBuilder.h"

#include <algorithm>
#include <cmath>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/tables/CellMerger.h"
#include "engines/support/layout/tables/TableColumns.h"
#include "engines/support/layout/tables/TableRows.h"

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kRowsInGrid = 3;  // that must show columns which no rule parts
constexpr std::size_t kRowsInOpen = 2;
constexpr double kSamePlace = 3;
constexpr double kAligned = 2.5;  // points

constexpr std::size_t kMostHeaderRows = 5;

struct RowFacts {
  bool has_words = false;
  bool has_number = false;
  bool is_bold = true;
};

class Builder {
 public:
  Builder(const TableArea& area, std::span<const Ink> inks)
      : area_(&area), lines_(RowsOf(inks, area.vertical)) {}

  std::optional<TableShape> Build();

 private:
  bool HasColumns(double left, double right) const;
  void FindColumns();
  void FindRows();

  struct Extent {
    double left = 1e9;
    double right = -1e9;
  };

  std::vector<Extent> Extents() const;
  bool IsAligned(const Chunk& part, std::span<const Extent> extents) const;
  std::vector<Chunk> PartsOf(const InkRow& line, const Chunk& chunk) const;
  void SplitChunks();
  void FillCells(CellGrid& grid) const;

  const TableArea* area_;
  std::vector<InkRow> lines_;
  std::vector<double> columns_;
  std::vector<double> rows_;
  std::vector<std::size_t> row_of_line_;
};

// Whether most lines between two rules have words in several places.
bool Builder::HasColumns(double left, double right) const {
  std::size_t filled = 0;
  std::size_t columned = 0;
  for (const InkRow& line : lines_) {
    const auto count = std::count_if(
        line.chunks.begin(), line.chunks.end(),
        [left, right](const Chunk& chunk) { return chunk.left >= left && chunk.right <= right; });
    filled += count > 0 ? 1 : 0;
    columned += count > 1 ? 1 : 0;
  }
  return 5 * columned >= 3 * filled;
}

void Builder::FindColumns() {
  const bool is_grid = area_->kind == AreaKind::kGrid;
  std::vector<double> edges = area_->columns;
  if (!is_grid || edges.size() < 2) {
    edges = {area_->box.left, area_->box.right};
  }
  columns_ = {edges.front()};
  for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
    if (!is_grid || HasColumns(edges[i], edges[i + 1])) {
      const std::vector<double> gaps =
          FindColumnGaps(lines_, edges[i], edges[i + 1], is_grid ? kRowsInGrid : kRowsInOpen);
      columns_.insert(columns_.end(), gaps.begin(), gaps.end());
    }
    columns_.push_back(edges[i + 1]);
  }
}

// Where the words of each column stand that are in no other column too.
std::vector<Builder::Extent> Builder::Extents() const {
  std::vector<Extent> extents(columns_.size() - 1);
  for (const InkRow& line : lines_) {
    for (const Chunk& chunk : line.chunks) {
      const auto [first, last] = ColumnsOf(chunk, columns_);
      if (first == last) {
        extents[first].left = std::min(extents[first].left, chunk.left);
        extents[first].right = std::max(extents[first].right, chunk.right);
      }
    }
  }
  return extents;
}

bool Builder::IsAligned(const Chunk& part, std::span<const Extent> extents) const {
  const Extent& extent = extents[ColumnsOf(part, columns_).first];
  return std::abs(part.left - extent.left) <= kAligned ||
         std::abs(part.right - extent.right) <= kAligned ||
         std::abs(part.left + part.right - extent.left - extent.right) <= 2 * kAligned;
}

// The parts of a chunk between the edges of columns that no word of it crosses.
std::vector<Chunk> Builder::PartsOf(const InkRow& line, const Chunk& chunk) const {
  std::vector<Chunk> parts;
  Chunk part = {chunk.first, chunk.first, chunk.left, line.inks[chunk.first].right,
                line.inks[chunk.first].IsNumeric()};
  for (std::size_t i = chunk.first + 1; i <= chunk.last; ++i) {
    const Ink& ink = line.inks[i];
    const bool is_edge = std::any_of(columns_.begin(), columns_.end(), [&](double x) {
      return x >= line.inks[i - 1].right - 0.5 && x <= ink.left + 0.5;
    });
    if (is_edge) {
      parts.push_back(part);
      part = {i, i, ink.left, ink.right, true};
    }
    part.last = i;
    part.right = ink.right;
    part.is_numeric = part.is_numeric && ink.IsNumeric();
  }
  parts.push_back(part);
  return parts;
}

// What runs close to its neighbour is not one chunk with it: a label and its number, and words that
// stand in their columns each.
void Builder::SplitChunks() {
  const std::vector<Extent> extents = Extents();
  for (InkRow& line : lines_) {
    std::vector<Chunk> chunks;
    for (const Chunk& chunk : line.chunks) {
      const std::vector<Chunk> parts = PartsOf(line, chunk);
      const bool is_labelled = parts.size() == 2 && parts.back().is_numeric;
      if (is_labelled || std::all_of(parts.begin(), parts.end(),
                                     [&](const Chunk& part) { return IsAligned(part, extents); })) {
        chunks.insert(chunks.end(), parts.begin(), parts.end());
      } else {
        chunks.push_back(chunk);
      }
    }
    line.chunks = std::move(chunks);
  }
}

void Builder::FindRows() {
  const std::vector<LineCells> cells = CellsOfLines(lines_, columns_);
  const std::vector<std::size_t> starts = FindRowStarts(cells, area_->rows, area_->kind);
  rows_ = {area_->box.bottom};
  row_of_line_.assign(lines_.size(), 0);
  std::size_t rule = 0;
  std::size_t next = 0;
  const bool is_grid = area_->kind == AreaKind::kGrid;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const double middle = lines_[i].baseline - 0.3 * lines_[i].size;
    const bool is_start = next < starts.size() && starts[next] == i;
    next += is_start ? 1 : 0;
    bool is_ruled = i == 0;
    while (rule < area_->rows.size() && area_->rows[rule] < middle) {
      const double place = area_->rows[rule++];
      if ((is_grid || is_start) && place > rows_.back() + kSamePlace) {
        rows_.push_back(place);
        is_ruled = true;
      }
    }
    // Lines that reach into each other may leave no room for a row.
    const double between = i == 0 ? 0 : (lines_[i - 1].lower + lines_[i].upper) / 2;
    if (is_start && !is_ruled && between > rows_.back()) {
      rows_.push_back(between);
    }
    row_of_line_[i] = rows_.size() - 1;
  }
  for (; is_grid && rule < area_->rows.size(); ++rule) {
    if (area_->rows[rule] > rows_.back() + kSamePlace) {
      rows_.push_back(area_->rows[rule]);
    }
  }
  if (area_->box.top > rows_.back() + kSamePlace || rows_.size() < 2 ||
      row_of_line_.back() + 1 == rows_.size()) {
    rows_.push_back(std::max(area_->box.top, rows_.back() + 1));
  }
}

void Builder::FillCells(CellGrid& grid) const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const InkRow& line = lines_[i];
    for (const Chunk& chunk : line.chunks) {
      const auto [first, last] = ColumnsOf(chunk, columns_);
      const std::size_t row = row_of_line_[i];
      std::vector<Ink>& inks = grid.At(row, first).inks;
      for (std::size_t k = chunk.first; k <= chunk.last; ++k) {
        inks.push_back(line.inks[k]);
      }
      if (last > first) {
        grid.Merge(row, first, row, last);
      }
    }
  }
}

std::optional<TableShape> Builder::Build() {
  if (lines_.empty() || area_->columns.size() > limits::kMaxTableColumns) {
    return std::nullopt;
  }
  FindColumns();
  if (columns_.size() > limits::kMaxTableColumns) {
    return std::nullopt;
  }
  SplitChunks();
  FindRows();
  if (rows_.size() > limits::kMaxTableRows ||
      columns_.size() * rows_.size() > limits::kMaxTablePlaces) {
    return std::nullopt;
  }
  CellGrid grid(columns_, rows_);
  FillCells(grid);
  if (area_->kind == AreaKind::kGrid) {
    grid.MergeWithoutRules(*area_);
  }
  TableShape shape{columns_, rows_, grid.Cells(), 0};
  shape.header_rows = HeaderRowsOf(shape);
  return shape;
}

}  // namespace

std::size_t HeaderRowsOf(const TableShape& shape) {
  std::vector<RowFacts> rows(shape.rows.size() - 1);
  for (const CellShape& cell : shape.cells) {
    RowFacts& row = rows[cell.row];
    row.has_words = row.has_words || !cell.inks.empty();
    row.has_number =
        row.has_number ||
        (!cell.inks.empty() && std::all_of(cell.inks.begin(), cell.inks.end(),
                                           [](const Ink& ink) { return ink.IsNumeric(); }));
    row.is_bold = row.is_bold && std::all_of(cell.inks.begin(), cell.inks.end(),
                                             [](const Ink& ink) { return ink.is_bold; });
  }
  const auto count = [&rows](auto belongs) {
    const auto end = std::find_if_not(rows.begin(), rows.end(), belongs);
    const auto length = static_cast<std::size_t>(end - rows.begin());
    return length < rows.size() && length <= kMostHeaderRows ? length : 0;
  };
  const std::size_t bold = count([](const RowFacts& row) { return row.is_bold; });
  return bold > 0 ? bold : count([](const RowFacts& row) { return !row.has_number; });
}

std::optional<TableShape> BuildTable(const TableArea& area, std::span<const Ink> inks) {
  return Builder(area, inks).Build();
}

}  // namespace TarnixTools::engines
