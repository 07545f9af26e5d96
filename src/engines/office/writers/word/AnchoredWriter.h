// What stands at its place on the page, apart from the flow of the text.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_ANCHOREDWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_ANCHOREDWRITER_H_

#include <vector>

#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

// Drawings, and pictures that text runs beside or over, as runs of the paragraph that is open.
void WriteAnchored(Story& story, const OfficePage& page, const std::vector<Block>& blocks);

// The background, all that is anchored in the flow, and what floats.
void WriteAnchoredOfPage(Story& story, const OfficePage& page);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_ANCHOREDWRITER_H_
