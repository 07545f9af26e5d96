// How the cells of a table look: their borders and what fills them.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_CELLLOOKS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_CELLLOOKS_H_

#include "engines/office/layout/PageLayout.h"
#include "engines/office/layout/tables/Rules.h"
#include "engines/office/layout/tables/TableArea.h"

namespace TarnixTools::engines::office {

// Borders where rules of the area run along a cell; the fill that is painted last behind its middle.
void SetLooks(const TableArea& area, const Rules& rules, Table& table);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_CELLLOOKS_H_
