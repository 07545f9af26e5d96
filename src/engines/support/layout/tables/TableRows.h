// Which lines of words make a row of a table together.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEROWS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEROWS_H_

#include <span>
#include <vector>

#include "engines/support/layout/tables/Ink.h"
#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

// What each line of words has in each column.
struct LineCells {
  const InkRow* line = nullptr;
  std::vector<InkKind> kinds;   // by column; kText also for a chunk over several columns
  std::vector<bool> is_filled;  // by column
  std::size_t filled = 0;       // columns
  bool has_number = false;
  bool has_span = false;
};

// The lines' columns, of which `edges` are the places.
std::vector<LineCells> CellsOfLines(std::span<const InkRow> lines, std::span<const double> edges);

// The numbers of the lines that begin a row; the first line always does.
//   rules - places of horizontal rules that part rows
//   kind  - whether the rules may be trusted to part every row
std::vector<std::size_t> FindRowStarts(std::span<const LineCells> lines,
                                       std::span<const double> rules, AreaKind kind);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEROWS_H_
