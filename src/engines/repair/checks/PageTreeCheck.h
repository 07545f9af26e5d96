// The page tree: counts, parents, types, sizes and rotations of pages.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_PAGETREECHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_PAGETREECHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

void CheckPageTree(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_PAGETREECHECK_H_
