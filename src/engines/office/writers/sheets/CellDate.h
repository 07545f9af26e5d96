// Dates in cells, of the forms that can be read in one way only.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_CELLDATE_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_CELLDATE_H_

#include <optional>
#include <string_view>

#include "engines/office/writers/sheets/CellValue.h"

namespace TarnixTools::engines::office {

// "2011-09-30" and "30.09.2011", from 1900-03-01 on, as days since the end of 1899. Where day and
// month might be either, as in "05/04/2011", there is nothing.
std::optional<CellValue> ReadCellDate(std::string_view text);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_CELLDATE_H_
