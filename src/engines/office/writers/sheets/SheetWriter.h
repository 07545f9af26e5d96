// Workbooks of the tables of a document (ECMA-376, part 1, 18): a sheet for each, or one for all.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETWRITER_H_

#include <atomic>

#include "engines/office/layout/OfficeDocument.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines::office {

// A table that goes on over pages is one. Numbers, percentages, amounts and dates are cells of that
// kind where no digit changes by it; else they are text.
//   is_single_table - all tables on one sheet, a blank row between them
// False, and nothing is written, where the document has no table. The same document always gives the
// same bytes. Throws Cancelled once the flag is set, pdf::Error(kWriteFailed), and what the sink
// throws.
bool WriteSheets(const OfficeDocument& document, bool is_single_table,
                 const std::atomic<bool>& is_cancelled, pdf::ByteSink& sink);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETWRITER_H_
