// Checks the interactive form: its fields, their actions, and the signatures (ISO 19005-1, 6.6.2 and
// 6.9; -2 and -3, 6.1.12 and 6.4).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_FORMCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_FORMCHECK_H_

#include "engines/pdfa/checks/ActionCheck.h"
#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

void CheckForm(CheckedDocument& checked, ActionCheck& actions);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_FORMCHECK_H_
