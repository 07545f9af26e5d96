// Pages with nothing but vertical writing: sections of Word can be written so, with all lines running
// downwards and following each other to the left.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_DOWNWARDPAGES_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_DOWNWARDPAGES_H_

#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// Whether all of the page between header and footer is text that runs downwards.
bool RunsDown(const PageLayout& page);

// The text of such a page in the order in which it is read, as it lies when the page is turned so
// that the lines run to the right: x is the distance from the top of the page, and y the distance
// from its right edge.
std::vector<Block> BlocksDown(const PageLayout& page);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_DOWNWARDPAGES_H_
