// Tables of a Word document (ECMA-376, part 1, 17.4).
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_TABLEWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_TABLEWRITER_H_

#include "engines/office/writers/word/FlowWriter.h"

namespace TarnixTools::engines::office {

// top: where it begins, on the page. Returns how high it becomes, in points.
double WriteTable(Story& story, const OfficePage& page, const Table& table, const FlowRoom& room,
                  double top);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_TABLEWRITER_H_
