#include "engines/support/layout/paragraphs/FlowParagraphs.h"

#include <algorithm>
#include <string_view>

#include "engines/support/pages/StandInFace.h"
#include "foundation/Utf8.h"

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

namespace {

// In units that are the same for all text of the face.
double WidthOf(std::string_view text, const Typeface* face) {
  if (face == nullptr) {
    return static_cast<double>(text.size());
  }
  double width = 0;
  for (const char32_t character : Utf8ToUtf32(text)) {
    width += StandInAdvance(*face, std::u32string_view(&character, 1));
  }
  return width;
}

void AddText(const TextLine& line, std::string& text) {
  for (const TextPiece& piece : line.pieces) {
    text += piece.text;
  }
}

}  // namespace

std::string TextOf(const Paragraph& paragraph) {
  std::string text;
  if (paragraph.initial) {
    AddText(paragraph.initial->line, text);
  }
  for (const TextLine& line : paragraph.lines) {
    AddText(line, text);
    if (line.joint != LineJoint::kNothing && &line != &paragraph.lines.back()) {
      text += ' ';
    }
  }
  return text;
}

void MoveBy(Paragraph& paragraph, double dx, double dy) {
  const auto move = [dx, dy](pdf::Box& box) {
    box = {box.left + dx, box.bottom + dy, box.right + dx, box.top + dy};
  };
  const auto move_line = [&](TextLine& line) {
    move(line.box);
    line.baseline += dy;
    for (TextPiece& piece : line.pieces) {
      piece.x += dx;
    }
  };
  move(paragraph.box);
  if (paragraph.initial) {
    move_line(paragraph.initial->line);
  }
  std::for_each(paragraph.lines.begin(), paragraph.lines.end(), move_line);
}

TextPiece PartOf(const TextPiece& piece, std::size_t begin, std::size_t end, const Typeface* face) {
  const std::string_view text = piece.text;
  const double all = WidthOf(text, face);
  const double unit = all > 0 ? piece.width / all : 0;
  TextPiece part = piece;
  part.text = piece.text.substr(begin, end - begin);
  part.x = piece.x + unit * WidthOf(text.substr(0, begin), face);
  part.width = unit * WidthOf(part.text, face);
  return part;
}

}  // namespace TarnixTools::engines
