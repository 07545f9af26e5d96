// Form fields and what pages list as annotations (ISO 32000-2, 12.5.2 and 12.7.3).
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_FIELDCHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_FIELDCHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Kids of fields that are none, or lead back, go.
void CheckFields(CheckContext& context);

// What is no annotation goes from the list of its page.
void CheckAnnotations(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_FIELDCHECK_H_
