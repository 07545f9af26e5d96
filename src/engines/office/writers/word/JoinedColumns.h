// Tables with more columns than Word opens.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_JOINEDCOLUMNS_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_JOINEDCOLUMNS_H_

#include <cstddef>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// Word refuses a file with a table that has more.
inline constexpr std::size_t kMostColumns = 63;

// The last columns of a table that has too many become one. Cells of a row that come to the same
// place are one cell, with all that they hold.
Table WithJoinedColumns(const Table& table);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_JOINEDCOLUMNS_H_
