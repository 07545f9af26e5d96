// Tables as tags tell of them: each word is in a cell, each cell in a row.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TAGGEDTABLE_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TAGGEDTABLE_H_

#include <optional>
#include <span>

#include "engines/support/layout/tables/Ink.h"
#include "engines/support/layout/tables/Rules.h"
#include "engines/support/layout/tables/TableArea.h"
#include "engines/support/layout/tables/TableBuilder.h"

namespace TarnixTools::engines {

struct TaggedTable {
  TableArea area;
  TableShape shape;
};

// Nothing where the tags do not fit what is seen: words without a cell, rows that do not stand below
// each other, cells of one row in one column; and for a table of one row or one column.
//   inks - all words of one table
std::optional<TaggedTable> BuildTaggedTable(std::span<const Ink> inks, const Rules& rules);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TAGGEDTABLE_H_
