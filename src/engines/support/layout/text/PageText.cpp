#include "engines/support/layout/text/PageText.h"

#include <utility>

#include "engines/support/layout/text/GlyphRows.h"
#include "engines/support/layout/text/Gutters.h"
#include "engines/support/layout/text/WordLines.h"
#include "engines/support/layout/text/WordMarks.h"

namespace TarnixTools::engines {

PageText ReadPageText(const PageModel& page) {
  PageText text;
  for (const TurnedRows& rows : RowsOf(page)) {
    TurnedText turned{.angle = rows.angle, .is_vertical = rows.is_vertical, .lines = {}};
    for (const GlyphRow& row : rows.rows) {
      CutIntoLines(page, row, turned.lines);
    }
    CutAtGutters(turned.lines);
    if (rows.angle == 0 && !rows.is_vertical) {
      text.upright = std::move(turned);
    } else if (!turned.lines.empty()) {
      text.turned.push_back(std::move(turned));
    }
  }
  text.marks = MarkWords(page, text.upright.lines);
  return text;
}

}  // namespace TarnixTools::engines
