// Which paragraphs of a document are headings, by their looks: larger or bolder than most of its
// text, and short.
//
//   for (...) looks.push_back(LookOf(page, paragraph));   // of all paragraphs of the document
//   const std::vector<std::uint8_t> levels = HeadingLevels(looks);
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_HEADINGLOOKS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_HEADINGLOOKS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines {

// Levels of headings, and bytes of the longest one.
inline constexpr std::size_t kHeadingLevels = 6;
inline constexpr std::size_t kLongestHeading = 220;

// What of a paragraph tells whether it is a heading.
struct HeadingLook {
  std::int32_t size = 0;  // of most of its text, in tenths of a point
  bool is_bold = false;   // all of it
  bool may_be_heading = false;
  bool ends_a_sentence = false;
  std::uint32_t lines = 0;
  std::uint32_t bytes = 0;  // of its text
};

//   text - of the paragraph, as TextOf tells it
HeadingLook LookOf(const PageLayout& page, const Paragraph& paragraph, std::string_view text);

// 1 for the highest level, 0 for a paragraph that is none. Larger type is a higher level; of one
// size, bold type is.
std::vector<std::uint8_t> HeadingLevels(const std::vector<HeadingLook>& looks);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_HEADINGLOOKS_H_
