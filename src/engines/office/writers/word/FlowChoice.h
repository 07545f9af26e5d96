// Which blocks of a page follow each other downwards as the text flows. The others lie beside those,
// or above where the flow has come to: they stand at their places on the page, as written in line
// they would push everything below them away.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_FLOWCHOICE_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_FLOWCHOICE_H_

#include <set>
#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

using BlockLists = std::vector<const std::vector<Block>*>;  // none is null

// The paragraphs and tables of the lists that do not flow: as little text as can be.
std::set<const Block*> BlocksApart(const BlockLists& lists);

// Whether a footnote is referred to in it: only what flows can do that.
bool HasNoteMark(const Block& block);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_FLOWCHOICE_H_
