// Room for the text of cells. On a page text may run over the edge of its cell where nothing is
// beside it; on a slide it would be broken there, and push down all rows below.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_TABLEROOM_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_TABLEROOM_H_

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// The table with edges between columns, of all rows or of some, where no text crosses them, as far
// as no rule and no change of colour stands there.
Table WithRoomForText(const Table& table);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_TABLEROOM_H_
