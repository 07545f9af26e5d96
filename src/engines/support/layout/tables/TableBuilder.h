// Makes rows, columns and cells of what an area holds.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEBUILDER_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEBUILDER_H_

#include <optional>
#include <span>
#include <vector>

#include "engines/support/layout/tables/Ink.h"
#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

// A cell before its look is known.
struct CellShape {
  std::size_t row = 0;
  std::size_t column = 0;
  std::size_t row_end = 0;  // one past
  std::size_t column_end = 0;
  std::vector<Ink> inks;  // by row of text, then from the left
};

struct TableShape {
  std::vector<double> columns;  // edges
  std::vector<double> rows;
  std::vector<CellShape> cells;  // by row, then by column
  std::size_t header_rows = 0;
};

// The first rows, which have no numbers where others do, or are all bold where others are not.
std::size_t HeaderRowsOf(const TableShape& shape);

// Nothing where there is no table: fewer than two rows or columns with words.
std::optional<TableShape> BuildTable(const TableArea& area, std::span<const Ink> inks);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEBUILDER_H_
