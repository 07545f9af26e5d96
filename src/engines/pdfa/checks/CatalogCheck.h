// Checks what the catalog and the pages have, and the configurations of layers.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_CATALOGCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_CATALOGCHECK_H_

#include <cstddef>

#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

void CheckCatalog(CheckedDocument& checked);

//   page - its dictionary
void CheckPage(CheckedDocument& checked, const pdf::Object& page, std::size_t page_index);

// ISO 19005-2 and -3, 6.9.
void CheckLayers(CheckedDocument& checked);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_CATALOGCHECK_H_
