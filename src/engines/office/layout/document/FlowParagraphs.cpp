#include "engines/office/layout/document/FlowParagraphs.h"

namespace TarnixTools::engines::office {

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

}  // namespace TarnixTools::engines::office
