// Checks each code that is shown in a font against the font's program, and what tells its character
// (ISO 19005-1, 6.3.5, 6.3.6 and 6.3.8; -2 and -3, 6.2.11.4.1, 6.2.11.5, 6.2.11.7 and 6.2.11.8).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_GLYPHCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_GLYPHCHECK_H_

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/CheckedFont.h"
#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::pdfa {

//   program - null for none that can be read
void CheckGlyphs(CheckedDocument& checked, const CheckedFont& font, fonts::FontProgram* program);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_GLYPHCHECK_H_
