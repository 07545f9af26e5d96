// Checks what only composite fonts have: their CIDFont and their map from codes to identifiers (ISO
// 19005-1, 6.3.3 and 6.3.5; -2 and -3, 6.2.11.3 and 6.2.11.4.2).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_COMPOSITEFONTCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_COMPOSITEFONTCHECK_H_

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/CheckedFont.h"
#include "engines/support/fonts/CMapFile.h"
#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::pdfa {

//   program - null for none that can be read
void CheckCompositeFont(CheckedDocument& checked, const CheckedFont& font,
                        fonts::FontProgram* program);

// /CIDSystemInfo of a CIDFont or a map.
fonts::CharacterCollection CollectionOf(CheckedDocument& checked, const pdf::Object& dictionary);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_COMPOSITEFONTCHECK_H_
