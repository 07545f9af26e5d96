// Fonts with TrueType outlines whose codes do not surely lead to glyphs (ISO 19005-2, 6.2.11.6 and
// 6.2.11.8; 19005-1, 6.3.7): they become symbolic ones, whose programs say which glyph each code has.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_TRUETYPEFONTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_TRUETYPEFONTS_H_

#include <vector>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/fonts/SfntFile.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"
#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::pdfa {

// Whether the file was changed.
//   uses - all fonts that share the program
//   file - of the program, as it is to be written
bool MendTrueTypeFonts(Conversion& conversion, const std::vector<const FontUse*>& uses,
                       fonts::FontProgram& program, SfntFile& file);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_TRUETYPEFONTS_H_
