#include "engines/office/writers/word/JoinedColumns.h"

#include <algorithm>
#include <utility>

#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::uint32_t kLastColumn = kMostColumns - 1;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

class Joiner {
 public:
  explicit Joiner(const Table& table) : table_(table), owners_(table.rows.size(), kNone) {}

  Table Join() {
    Table joined = table_;
    joined.columns.resize(kMostColumns);
    joined.columns.push_back(table_.columns.back());
    joined.cells.clear();
    for (const TableCell& cell : table_.cells) {
      Add(joined.cells, cell);
    }
    return joined;
  }

 private:
  void Add(std::vector<TableCell>& cells, const TableCell& cell) {
    const std::size_t end = std::size_t{cell.column} + std::max(cell.column_span, 1u);
    if (end <= kLastColumn) {
      cells.push_back(cell);
      return;
    }
    const std::size_t first = std::min<std::size_t>(cell.row, owners_.size());
    const std::size_t last =
        std::min(std::size_t{cell.row} + std::max(cell.row_span, 1u), owners_.size());
    const auto from = owners_.begin() + static_cast<std::ptrdiff_t>(first);
    const auto to = owners_.begin() + static_cast<std::ptrdiff_t>(last);
    const auto owner = std::find_if(from, to, [](std::size_t index) { return index != kNone; });
    if (owner != to) {
      AddTo(cells[*owner], cell);
      return;
    }
    std::fill(from, to, cells.size());
    cells.push_back(cell);
    cells.back().column = std::min(cell.column, kLastColumn);
    cells.back().column_span = kLastColumn + 1 - cells.back().column;
  }

  static void AddTo(TableCell& joined, const TableCell& cell) {
    joined.box = Around(joined.box, cell.box);
    joined.borders[1] = cell.borders[1];
    joined.blocks.insert(joined.blocks.end(), cell.blocks.begin(), cell.blocks.end());
  }

  const Table& table_;
  std::vector<std::size_t> owners_;  // by row: the cell in the last column
};

}  // namespace

Table WithJoinedColumns(const Table& table) {
  return Joiner(table).Join();
}

}  // namespace TarnixTools::engines::office
