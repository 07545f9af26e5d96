// Glyphs of a page in rows: what stands on one baseline, with what is raised and lowered beside it.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_GLYPHROWS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_GLYPHROWS_H_

#include <vector>

#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

struct GlyphRow {
  double baseline = 0;
  std::vector<PlacedGlyph> glyphs;  // from left to right
};

// The glyphs of one direction; those that show nothing but space are among them.
struct TurnedRows {
  double angle = 0;            // degrees clockwise
  bool is_vertical = false;    // the glyphs stand upright below each other, where the angle is 90
  std::vector<GlyphRow> rows;  // from top to bottom
};

// The upright rows first, whether there are any or not. Glyphs without text and glyphs outside the
// page are left out; of glyphs that are painted over themselves one stays.
std::vector<TurnedRows> RowsOf(const PageModel& page);

void SortFromLeft(std::vector<PlacedGlyph>& glyphs);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_GLYPHROWS_H_
