// Dots that lead from the text of an entry to the number of its page.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LEADERS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LEADERS_H_

#include <cstddef>
#include <string_view>

namespace TarnixTools::engines {

// Where dots lead on: their first byte and the one behind them, spaces included.
struct Leader {
  std::size_t begin = 0;
  std::size_t end = 0;  // 0: there are none
};

// The first dots of the text, in UTF-8, that are enough to lead.
Leader LeaderIn(std::string_view text);

// Whether the text is the number of a page, or of pages: digits, or a Roman number. Spaces around it
// do not count.
bool IsPageNumber(std::string_view text);

// Whether the text ends as an entry of a table of contents does, with a leader and a number.
bool EndsAsEntry(std::string_view text);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LEADERS_H_
