// Images: whether their dictionaries say what they are, and their data is as large as that.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_IMAGECHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_IMAGECHECK_H_

#include <cstdint>

#include "engines/repair/checks/Check.h"
#include "pdf/content/ResourceGraph.h"

namespace TarnixTools::engines::repair {

// Missing samples are filled up, sizes and colour spaces taken from the data where that tells them.
//   page - the first that leads to the image, from 1
void CheckImage(CheckContext& context, const pdf::ResourceNode& image, std::uint32_t page);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_IMAGECHECK_H_
