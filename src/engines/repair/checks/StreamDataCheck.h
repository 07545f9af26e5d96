// The data of streams: whether it can be decoded to its end. What images and fonts make of theirs
// is not looked at here.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_STREAMDATACHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_STREAMDATACHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Damaged data becomes what can be decoded of it.
void CheckStreamData(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_STREAMDATACHECK_H_
