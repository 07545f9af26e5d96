// Optional content as PDF/A-2 and -3 want it (ISO 19005-2, 6.9): every configuration has a name of
// its own, lists all layers or none, and changes nothing by itself.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_LAYERS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_LAYERS_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// Throws pdf::Error for a document that cannot be read any more.
void MendLayers(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_LAYERS_H_
