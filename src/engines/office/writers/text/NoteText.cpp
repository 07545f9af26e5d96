#include "engines/office/writers/text/NoteText.h"

#include "engines/office/writers/text/ParagraphFit.h"

namespace TarnixTools::engines::office {

std::vector<Block> WithMark(const Note& note, const PageLayout& page, TextMeasure& measure,
                            const MarkPiece& mark) {
  std::vector<Block> blocks = note.blocks;
  auto* paragraph = blocks.empty() ? nullptr : std::get_if<Paragraph>(&blocks.front().content);
  if (paragraph == nullptr || paragraph->lines.empty() || paragraph->lines.front().pieces.empty()) {
    return blocks;
  }
  std::vector<TextPiece>& pieces = paragraph->lines.front().pieces;
  const TextLook& look = page.looks[pieces.front().look];
  TextPiece piece;
  piece.kind = mark.kind;
  piece.number = mark.number;
  piece.text = note.label;
  piece.look = pieces.front().look;
  if (look.face) {
    piece.width = measure.WidthOf(*look.face, note.label, look.size * kRaisedSize);
    const double space = measure.WidthOf(*look.face, " ", look.size);
    piece.x = pieces.front().x - piece.width - space;
  }
  pieces.front().text.insert(0, " ");
  pieces.insert(pieces.begin(), std::move(piece));
  return blocks;
}

}  // namespace TarnixTools::engines::office
