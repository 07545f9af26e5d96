// What lies on layers that are not seen, for PDF/A-1, which knows no layers: it would be seen
// without them.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_HIDDENCONTENT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_HIDDENCONTENT_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// Takes out of pages, forms and patterns what paints it; what else is said there stays in force.
// Contents are edited, and written by WriteEditedContents. Does nothing for other parts. Throws
// pdf::Error for a document that cannot be read any more.
void RemoveHiddenContent(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_HIDDENCONTENT_H_
