// Fonts: what they are, their programs, their character maps, their widths.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_FONTCHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_FONTCHECK_H_

#include <cstdint>

#include "engines/repair/checks/Check.h"
#include "pdf/content/ResourceGraph.h"

namespace TarnixTools::engines::repair {

// What cannot be read of a font goes, and readers do without it.
//   page - the first that leads to the font, from 1
void CheckFont(CheckContext& context, const pdf::ResourceNode& font, std::uint32_t page);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_FONTCHECK_H_
