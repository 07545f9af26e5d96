// Glyphs for the codes of a Type 3 font that have none (ISO 19005-2, 6.2.11.8).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_TYPE3FONTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_TYPE3FONTS_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"

namespace TarnixTools::engines::pdfa {

// Codes that show nothing get a glyph that shows nothing. Throws pdf::Error.
void MendType3Font(Conversion& conversion, const FontUse& use);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_TYPE3FONTS_H_
