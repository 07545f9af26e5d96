// Fonts: what they are, their programs, their character maps, their widths.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_FONTCHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_FONTCHECK_H_

#include <cstdint>
#include <unordered_map>

#include "engines/repair/checks/Check.h"
#include "pdf/content/ResourceGraph.h"

namespace TarnixTools::engines::repair {

// Whether streams that fonts share can be read, by their numbers: each is looked at once.
struct FontStreams {
  std::unordered_map<std::uint32_t, bool> maps;
  std::unordered_map<std::uint32_t, bool> programs;
};

// What cannot be read of a font goes, and readers do without it.
//   page - the first that leads to the font, from 1
void CheckFont(CheckContext& context, const pdf::ResourceNode& font, std::uint32_t page,
               FontStreams& streams);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_FONTCHECK_H_
