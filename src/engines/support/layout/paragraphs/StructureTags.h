// What the structure tree says of a paragraph.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_STRUCTURETAGS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_STRUCTURETAGS_H_

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/paragraphs/TextRows.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// Gives a paragraph the role that the tree has for its first row, where it has one.
void ReadTag(const PageModel& page, const TextRow& first, Paragraph& paragraph);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_STRUCTURETAGS_H_
