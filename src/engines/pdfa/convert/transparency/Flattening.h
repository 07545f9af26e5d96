// Transparency for PDF/A-1, which has none (ISO 19005-1, 6.4): where a page has it, what is seen is
// drawn as a picture over what was there, whose text can go on to be selected and searched for.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TRANSPARENCY_FLATTENING_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TRANSPARENCY_FLATTENING_H_

#include <string>

#include "engines/pdfa/convert/Conversion.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::pdfa {

// Does nothing for other parts. After annotations are mended; edits pages that have transparency.
// The pictures are drawn when they are written. Throws pdf::Error for a document that cannot be read
// any more.
//   path, password - of the document
void FlattenTransparency(Conversion& conversion, const platform::WidePath& path,
                         const std::string& password);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TRANSPARENCY_FLATTENING_H_
