// Lines of a column as paragraphs.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PARAGRAPHMAKER_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PARAGRAPHMAKER_H_

#include <vector>

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/paragraphs/LookTable.h"
#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"
#include "pdf/Box.h"

namespace TarnixTools::engines {

class ParagraphMaker {
 public:
  // Both outlive this.
  ParagraphMaker(const PageModel& page, LookTable& looks) : page_(&page), looks_(&looks) {}

  // From top to bottom.
  //   column - the room that the lines have: a paragraph's alignment is told by it
  std::vector<Paragraph> Make(const std::vector<const WordLine*>& lines, const pdf::Box& column);

 private:
  const PageModel* page_;
  LookTable* looks_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PARAGRAPHMAKER_H_
