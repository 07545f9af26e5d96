// What stands at its place on the page, apart from the flow of the text.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_ANCHOREDWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_ANCHOREDWRITER_H_

#include <vector>

#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

// Its pictures and drawings at their places, its text in a box, as runs of the paragraph that is
// open.
void WriteFloating(Story& story, const OfficePage& page, const Floating& floating);

// Drawings, and pictures that text runs beside or over, as runs of the paragraph that is open.
void WriteAnchored(Story& story, const OfficePage& page, const std::vector<Block>& blocks);

// What floats on the page with text of its own, as it is read: from the top, and what is level from
// the left; then what is written vertically.
std::vector<const Floating*> FloatsWithText(const PageLayout& page);

// The background, all that is anchored in the flow, and what floats without text.
void WriteAnchoredOfPage(Story& story, const OfficePage& page);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_ANCHOREDWRITER_H_
