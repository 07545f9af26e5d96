// Takes out of every dictionary what PDF/A forbids: actions that run something, references to what
// is outside of the file, settings of printing devices, and what else is a key or a value by itself.
//
//   RemoveForbiddenEntries(conversion);
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_FORBIDDENENTRIES_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_FORBIDDENENTRIES_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// Of all objects of the document, before anything else is changed. Throws pdf::Error for a document
// that cannot be read any more.
void RemoveForbiddenEntries(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_FORBIDDENENTRIES_H_
