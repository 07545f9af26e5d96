#include "engines/support/layout/paragraphs/FlowParagraphs.h"

#include <algorithm>

namespace TarnixTools::engines {

std::vector<Paragraph*> FlowParagraphs(PageLayout& page) {
  std::vector<Paragraph*> paragraphs;
  for (Band& band : page.bands) {
    for (Column& column : band.columns) {
      for (Block& block : column.blocks) {
        if (auto* paragraph = std::get_if<Paragraph>(&block.content)) {
          paragraphs.push_back(paragraph);
        }
      }
    }
  }
  return paragraphs;
}

std::string TextOf(const Paragraph& paragraph) {
  std::string text;
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      text += piece.text;
    }
    if (line.joint != LineJoint::kNothing && &line != &paragraph.lines.back()) {
      text += ' ';
    }
  }
  return text;
}

TextPiece PartOf(const TextPiece& piece, std::size_t begin, std::size_t end) {
  TextPiece part = piece;
  const double per_byte =
      piece.width / static_cast<double>(std::max<std::size_t>(piece.text.size(), 1));
  part.text = piece.text.substr(begin, end - begin);
  part.x = piece.x + per_byte * static_cast<double>(begin);
  part.width = per_byte * static_cast<double>(end - begin);
  return part;
}

}  // namespace TarnixTools::engines
