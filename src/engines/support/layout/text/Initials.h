// Large letters that paragraphs begin with, as high as several lines which run beside them.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_INITIALS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_INITIALS_H_

#include <cstdint>
#include <vector>

#include "engines/support/layout/text/PageText.h"

namespace TarnixTools::engines {

struct LargeInitial {
  WordLine line;  // with the letter alone
  std::uint32_t lines_beside = 0;
};

// Gives each large initial to the line that goes on with its word, and the lines beside it their
// insets. Returns the lines that are left, in their order.
//   lines - the lines of a page, from top to bottom
std::vector<WordLine*> TakeInitials(const std::vector<WordLine*>& lines);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_INITIALS_H_
