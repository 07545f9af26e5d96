// Text for every code that is shown (ISO 19005-2, 6.2.11.7): what the font or its program tell, and
// a private character where nobody knows.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_UNICODEMAPS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_UNICODEMAPS_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"

namespace TarnixTools::engines::pdfa {

// Gives the font a /ToUnicode where some of its codes have no text. Throws pdf::Error,
// fonts::LibraryMissing.
void MendUnicode(Conversion& conversion, const FontUse& use);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_UNICODEMAPS_H_
