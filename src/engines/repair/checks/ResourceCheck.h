// What content uses: the dictionaries of resources themselves, and the fonts and images in them.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_RESOURCECHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_RESOURCECHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Everything that pages lead to is looked at once.
void CheckResources(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_RESOURCECHECK_H_
