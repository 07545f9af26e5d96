// Texts that are painted over each other on one baseline: of each of them its letters belong
// together, not those that stand next to each other.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_OVERLAIDTEXT_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_OVERLAIDTEXT_H_

#include <vector>

#include "engines/support/layout/text/GlyphRows.h"

namespace TarnixTools::engines {

// The row, or where texts in it lie over each other, a row for each layer of them; what is painted
// first comes first.
std::vector<GlyphRow> PartOverlaid(const PageModel& page, GlyphRow row);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_OVERLAIDTEXT_H_
