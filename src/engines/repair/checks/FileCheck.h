// The file: header and end, cross-reference, objects as they are written, updates, trailer,
// encryption.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_FILECHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_FILECHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Looks for every object. Where one is not in its place, the whole file is read for objects.
void CheckFile(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_FILECHECK_H_
