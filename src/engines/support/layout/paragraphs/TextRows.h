// Lines that stand side by side in one column, as one row of it.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_TEXTROWS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_TEXTROWS_H_

#include <cstdint>
#include <vector>

#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

struct TextRow {
  pdf::Box box;
  double baseline = 0;
  double size = 0;
  std::vector<const WordLine*> lines;  // in the order in which they are read
  bool is_right_to_left = false;
  std::uint32_t style = 0;    // in PageModel::styles: of most of its glyphs
  std::uint32_t element = 0;  // of the structure tree, that most of its glyphs belong to
  bool is_bold = false;       // all of it, by its typefaces or by painting
  double inset = 0;           // of its first line, which its box has too

  const WordLine& first() const { return *lines.front(); }
};

// From top to bottom.
std::vector<TextRow> JoinIntoRows(const PageModel& page, const std::vector<const WordLine*>& lines);

// What the structure tree says of the mark of a glyph; null for nothing.
const StructureRole* RoleOf(const PageModel& page, const PlacedGlyph& glyph);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_TEXTROWS_H_
