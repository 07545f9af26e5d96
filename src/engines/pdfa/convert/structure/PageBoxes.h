// Page boundaries of a size that PDF/A-2 allows (ISO 19005-2, 6.1.13).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_PAGEBOXES_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_PAGEBOXES_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// Takes out those boxes of other sizes that a page can do without; nothing changes in what is seen.
// Throws pdf::Error for a document that cannot be read any more.
void MendPageBoxes(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_PAGEBOXES_H_
