// The glyph names that an encoding gives to codes itself (ISO 32000-2, 9.6.5 and table 112).
#ifndef TARNIX_PDF_CONTENT_DIFFERENCES_H_
#define TARNIX_PDF_CONTENT_DIFFERENCES_H_

#include <array>
#include <string_view>

#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

// By code, as /Differences has them; empty for a code that it does not name. The names live as long
// as the arena and the encoding.
//   encoding - a dictionary; of anything else there are none
std::array<std::string_view, 256> ReadDifferences(Document& document, const Object& encoding,
                                                  Arena& arena);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_DIFFERENCES_H_
