// Lines under and through words, and colour behind them, which a page shows as thin paths and as
// fills.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_WORDMARKS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_WORDMARKS_H_

#include <cstdint>
#include <vector>

#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// Marks the words of upright lines. Returns which paths do so, in PageModel::paths, ascending.
std::vector<std::uint32_t> MarkWords(const PageModel& page, std::vector<WordLine>& lines);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_WORDMARKS_H_
