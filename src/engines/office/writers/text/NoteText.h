// Notes as text of their own.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_NOTETEXT_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_NOTETEXT_H_

#include <cstdint>
#include <vector>

#include "engines/office/writers/text/TextMeasure.h"
#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// The piece that a mark becomes.
struct MarkPiece {
  PieceKind kind = PieceKind::kText;
  std::uint32_t number = 0;
};

// The blocks of the note, the first line with the mark again that the analysis took away: before
// its text, a space apart.
std::vector<Block> WithMark(const Note& note, const PageLayout& page, TextMeasure& measure,
                            const MarkPiece& mark);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_NOTETEXT_H_
