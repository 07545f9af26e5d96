// Lists among paragraphs: items with their labels and levels, over columns and pages.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LISTS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LISTS_H_

#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines {

// Takes the labels out of the lines of the items.
//   pages - in the order in which they are read: those of a document, or one
void FindLists(const std::vector<PageLayout*>& pages);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LISTS_H_
