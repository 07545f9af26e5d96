// Text as a part of a workbook can hold it.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETTEXT_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETTEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace TarnixTools::engines::office {

// What XML forbids (XML 1.0, 2.2) is left out, what is malformed becomes U+FFFD, and what is too much
// is cut off.
//   most_units - of UTF-16, as workbooks count
std::string SheetText(std::string_view text, std::size_t most_units);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETTEXT_H_
