// Where white space parts words into columns.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLECOLUMNS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLECOLUMNS_H_

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "engines/support/layout/tables/Ink.h"

namespace TarnixTools::engines {

// Places on the x axis, within (left, right), that hardly any row crosses; sorted. None where there
// are more than a table may have columns.
//   min_rows - as many rows must have something on both sides
std::vector<double> FindColumnGaps(std::span<const InkRow> rows, double left, double right,
                                   std::size_t min_rows);

// The columns that a chunk stands in, of those between the edges; the first and the last one.
std::pair<std::size_t, std::size_t> ColumnsOf(const Chunk& chunk, std::span<const double> edges);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLECOLUMNS_H_
