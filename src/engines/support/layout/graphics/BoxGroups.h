// Boxes that touch each other, in groups.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_GRAPHICS_BOXGROUPS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_GRAPHICS_BOXGROUPS_H_

#include <cstdint>
#include <vector>

#include "pdf/Box.h"

namespace TarnixTools::engines {

// Groups of indexes, each ascending; by their first.
//   margin - how far apart boxes may be that still touch
std::vector<std::vector<std::uint32_t>> GroupBoxes(const std::vector<pdf::Box>& boxes,
                                                   double margin);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_GRAPHICS_BOXGROUPS_H_
