// Checks graphics states that content sets (ISO 19005-1, 6.2.8, 6.2.9 and 6.4; -2 and -3, 6.2.5,
// 6.2.6 and 6.2.10.1).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_GRAPHICSSTATECHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_GRAPHICSSTATECHECK_H_

#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

// Returns whether it makes what is painted transparent.
//   state - its dictionary
bool CheckGraphicsState(CheckedDocument& checked, const pdf::Object& state, const Place& place);

// A rendering intent, wherever it is named; null for one that is not.
void CheckRenderingIntent(CheckedDocument& checked, const pdf::Object& intent, const Place& place);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_GRAPHICSSTATECHECK_H_
