// The logical structure that level a asks for (ISO 19005-1, 6.8; -2 and -3, 6.7): that of the document
// where it is sound, else one that is made of what the pages show.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_TAGS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_TAGS_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// Does nothing for other levels. After annotations are mended, and before edited pages are written.
// Throws pdf::Error for a document that cannot be read any more.
void MendTags(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_TAGS_H_
