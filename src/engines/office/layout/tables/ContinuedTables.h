// Tables that a page end has cut in two.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_CONTINUEDTABLES_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_CONTINUEDTABLES_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// Sets Table::goes_on where the flow of a page begins with a table whose columns are those of the
// one that the page before ends with. Headers and footers are out of the flow by now.
void MarkContinuedTables(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_CONTINUEDTABLES_H_
