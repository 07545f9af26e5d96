// Paragraphs whose large initials are paragraphs of their own, for where nothing can run beside them.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_PARAGRAPHINITIALS_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_PARAGRAPHINITIALS_H_

#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

bool HasInitials(const std::vector<Block>& blocks);

// The blocks, those with an initial as three paragraphs: the letter, the lines beside it, the others.
std::vector<Block> WithInitialsApart(const std::vector<Block>& blocks);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_PARAGRAPHINITIALS_H_
