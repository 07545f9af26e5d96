// The outline: items that lead to the next ones, to the ones before, and to those below (ISO
// 32000-2, 12.3.3).
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_OUTLINECHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_OUTLINECHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// A list of items ends before one that cannot be used, or that stands elsewhere already.
void CheckOutline(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_OUTLINECHECK_H_
