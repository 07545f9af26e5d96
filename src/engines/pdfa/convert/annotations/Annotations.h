// Annotations as PDF/A wants them (ISO 19005-2, 6.3; 19005-1, 6.5): of types that stay readable,
// printed as they are seen, with one appearance each.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_ANNOTATIONS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_ANNOTATIONS_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// Throws pdf::Error for a document that cannot be read any more.
void MendAnnotations(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_ANNOTATIONS_H_
