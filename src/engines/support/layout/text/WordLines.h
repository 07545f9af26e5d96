// Rows of glyphs cut into lines and words.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_WORDLINES_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_WORDLINES_H_

#include <vector>

#include "engines/support/layout/text/GlyphRows.h"
#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// Adds the lines of a row, from left to right; of each the words as they are read.
void CutIntoLines(const PageModel& page, const GlyphRow& row, std::vector<WordLine>& lines);

// Makes the box, the baseline, the size and the text of a word, or of a line, from what it has.
void MeasureWord(const PageModel& page, Word& word);
void MeasureLine(WordLine& line);

// Puts words that stand from left to right into the order in which they are read.
void OrderWords(const PageModel& page, WordLine& line);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_WORDLINES_H_
