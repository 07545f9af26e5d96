// Which version of PDF a document says it is.
#ifndef TARNIX_PDF_TREE_DOCUMENTVERSION_H_
#define TARNIX_PDF_TREE_DOCUMENTVERSION_H_

#include <string_view>

#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

// 17 for a text that starts with "1.7"; 0 for one that starts with no version. There is none from
// 1.8 to 1.9.
int VersionOf(std::string_view text);

// The later of what the header and the catalog say (ISO 32000-2, 7.5.2), as VersionOf has it; 0 when
// both say nothing.
int DocumentVersion(Document& document);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_DOCUMENTVERSION_H_
