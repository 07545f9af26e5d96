// What pages paint: the content of pages, and of forms, patterns, soft masks, glyphs and appearances
// that they lead to, operator by operator.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_CONTENTCHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_CONTENTCHECK_H_

#include <cstdint>

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Content with damage becomes what can be read of it.
void CheckContent(CheckContext& context);

// Looks at that many bytes of content at least, and lists the pages that it does not come to.
void CheckContentUpTo(std::uint64_t allowance, CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_CONTENTCHECK_H_
