// Which cell of a table has each of its places.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TABLEGRID_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TABLEGRID_H_

#include <algorithm>
#include <cstddef>
#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

class TableGrid {
 public:
  // The table outlives this. Cells that overlap others or reach beyond the edges lose those places.
  explicit TableGrid(const Table& table)
      : rows_(table.rows.empty() ? 0 : table.rows.size() - 1),
        columns_(table.columns.empty() ? 0 : table.columns.size() - 1),
        places_(rows_ * columns_, nullptr) {
    for (const TableCell& cell : table.cells) {
      for (std::size_t row = cell.row; row < std::min(rows_, End(cell.row, cell.row_span)); ++row) {
        for (std::size_t column = cell.column;
             column < std::min(columns_, End(cell.column, cell.column_span)); ++column) {
          const TableCell*& place = places_[row * columns_ + column];
          place = place == nullptr ? &cell : place;
        }
      }
    }
  }

  std::size_t rows() const { return rows_; }

  std::size_t columns() const { return columns_; }

  // Null for a place that no cell has.
  const TableCell* At(std::size_t row, std::size_t column) const {
    return places_[row * columns_ + column];
  }

  // How many places from this one on to the right are of one cell.
  std::size_t SpanAt(std::size_t row, std::size_t column) const {
    const TableCell* cell = At(row, column);
    std::size_t end = column + 1;
    while (cell != nullptr && end < columns_ && At(row, end) == cell) {
      ++end;
    }
    return end - column;
  }

  // How many places from this one on downwards are of one cell.
  std::size_t HeightAt(std::size_t row, std::size_t column) const {
    const TableCell* cell = At(row, column);
    std::size_t end = row + 1;
    while (cell != nullptr && end < rows_ && At(end, column) == cell) {
      ++end;
    }
    return end - row;
  }

 private:
  static std::size_t End(std::uint32_t first, std::uint32_t span) {
    return std::size_t{first} + std::max<std::uint32_t>(span, 1);
  }

  std::size_t rows_;
  std::size_t columns_;
  std::vector<const TableCell*> places_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TABLEGRID_H_
