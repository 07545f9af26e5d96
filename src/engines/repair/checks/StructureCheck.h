// The structure tree: elements that have others and pieces of content below them (ISO 32000-2,
// 14.7.2).
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_STRUCTURECHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_STRUCTURECHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Kids of elements that are none, or lead back, go.
void CheckStructure(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_STRUCTURECHECK_H_
