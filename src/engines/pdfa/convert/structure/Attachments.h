// Embedded files as PDF/A-3 wants them (ISO 19005-3, 6.8): each says what it is and how it belongs to
// the document. Part 2 keeps those that are PDF/A, each by its name; part 1 has all taken out.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_ATTACHMENTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_ATTACHMENTS_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// After forbidden entries are removed. Throws pdf::Error for a document that cannot be read any more.
void MendAttachments(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_ATTACHMENTS_H_
