// A font that is not embedded, replaced by one that is: a composite font with the same codes and
// advances, whose glyphs come from an installed face.
//
//   if (!ReplaceFont(conversion, use)) { ... no face has its characters ... }
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_REPLACEDFONT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_REPLACEDFONT_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"

namespace TarnixTools::engines::pdfa {

// False where it cannot be replaced. Throws pdf::Error, fonts::LibraryMissing.
bool ReplaceFont(Conversion& conversion, const FontUse& use);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_REPLACEDFONT_H_
