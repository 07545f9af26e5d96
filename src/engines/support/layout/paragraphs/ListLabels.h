// Labels of list items, as texts begin with them.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LISTLABELS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LISTLABELS_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines {

struct FoundLabel {
  ListKind kind = ListKind::kBullet;
  std::int32_t value = 0;     // of a number; of one with parts, the last one's
  std::uint32_t parts = 1;    // of "2.1." two
  bool may_be_roman = false;  // a letter that is a Roman number too: its value as one is another
  std::int32_t roman_value = 0;
};

// What the first word of a text is when it can be a label: "•", "(a)", "2.1.", "iv)".
std::optional<FoundLabel> ReadLabel(std::u32string_view word);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LISTLABELS_H_
