// Checks whether the document information says what the document's XMP packet says (ISO 19005-1,
// 6.7.3).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_INFORMATIONCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_INFORMATIONCHECK_H_

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines::pdfa {

//   packet - null for a document without one that can be read
void CheckInformation(CheckedDocument& checked, const XmpTree* packet);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_INFORMATIONCHECK_H_
