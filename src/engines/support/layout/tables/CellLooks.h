// How the cells of a table look: their borders and what fills them.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_CELLLOOKS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_CELLLOOKS_H_

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/tables/Rules.h"
#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

// Borders where rules of the area run along a cell; the fill that is painted last behind its middle.
void SetLooks(const TableArea& area, const Rules& rules, Table& table);

// Whether most of the box lies behind cells that are filled.
bool HasFilledCells(const pdf::Box& box, const Table& table);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_CELLLOOKS_H_
