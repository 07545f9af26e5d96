// Narrow white space between columns, which a single line cannot tell from the space between words.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_GUTTERS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_GUTTERS_H_

#include <vector>

#include "engines/support/layout/text/PageText.h"

namespace TarnixTools::engines {

// Cuts lines where several that follow each other have a gap at the same place.
//   lines - from top to bottom
void CutAtGutters(std::vector<WordLine>& lines);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_GUTTERS_H_
