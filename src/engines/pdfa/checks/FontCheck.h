// Checks a font that text is shown in: its dictionaries, its program, and each code that is shown
// (ISO 19005-1, 6.3; -2 and -3, 6.2.11).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_FONTCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_FONTCHECK_H_

#include <string_view>

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/ShownFonts.h"

namespace TarnixTools::engines::pdfa {

// Throws pdf::Error for a document that cannot be read any more.
void CheckFont(CheckedDocument& checked, const ShownFonts::Font& font);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_FONTCHECK_H_
