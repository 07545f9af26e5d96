// Checks what only simple TrueType fonts have: an encoding that finds glyphs by way of the program's
// maps (ISO 19005-1, 6.3.7; -2 and -3, 6.2.11.6).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_TRUETYPECHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_TRUETYPECHECK_H_

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::pdfa {

//   program - null for none that can be read
void CheckTrueTypeFont(CheckedDocument& checked, const fonts::DocumentFont& font,
                       const pdf::Object& dictionary, fonts::FontProgram* program,
                       const Place& place);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_TRUETYPECHECK_H_
