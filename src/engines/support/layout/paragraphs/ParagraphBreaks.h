// Where the paragraphs of a column end.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PARAGRAPHBREAKS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PARAGRAPHBREAKS_H_

#include <cstddef>
#include <vector>

#include "engines/support/layout/paragraphs/TextRows.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// The rows that paragraphs begin with, ascending; the first row is one of them.
std::vector<std::size_t> FindParagraphStarts(const PageModel& page,
                                             const std::vector<TextRow>& rows);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PARAGRAPHBREAKS_H_
