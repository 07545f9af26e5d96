// Checks the annotations of pages (ISO 19005-1, 6.5; -2 and -3, 6.3) and their actions.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_ANNOTATIONCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_ANNOTATIONCHECK_H_

#include <cstddef>

#include "engines/pdfa/checks/ActionCheck.h"
#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

//   page - its dictionary
void CheckAnnotations(CheckedDocument& checked, ActionCheck& actions, const pdf::Object& page,
                      std::size_t page_index);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_ANNOTATIONCHECK_H_
