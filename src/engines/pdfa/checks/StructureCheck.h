// Checks the logical structure (ISO 19005-1, 6.8; -2 and -3, 6.7).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_STRUCTURECHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_STRUCTURECHECK_H_

#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

void CheckStructure(CheckedDocument& checked);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_STRUCTURECHECK_H_
