// Checks the XMP packets of a document: their form, their properties, what the document's own one
// claims, and whether the document information agrees with it (ISO 19005-1, 6.7; -2 and -3, 6.6).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_METADATACHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_METADATACHECK_H_

#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

void CheckMetadata(CheckedDocument& checked);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_METADATACHECK_H_
