// Whether what was built is a table, or only text that stands like one.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEJUDGE_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEJUDGE_H_

#include <span>

#include "engines/support/layout/tables/TableArea.h"
#include "engines/support/layout/tables/TableBuilder.h"

namespace TarnixTools::engines {

//   leaders - rows of dots that lead from an entry to its number
bool IsTable(const TableShape& shape, AreaKind kind, std::span<const Ink> leaders);

// Whether filled boxes part words that run on, as those behind a word of a text do, or lines run
// through text, as those of a drawing do.
bool CutsText(std::span<const Rule> vertical, std::span<const Ink> inks);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEJUDGE_H_
