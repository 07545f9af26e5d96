// Fonts as PDF/A wants them (ISO 19005-2, 6.2.11; 19005-1, 6.3): embedded, and saying the same as
// their programs.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_FONTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_FONTS_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"

namespace TarnixTools::engines::pdfa {

// Throws pdf::Error for a document that cannot be read any more.
void MendFonts(Conversion& conversion, const ContentSurvey& survey);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_FONTS_H_
