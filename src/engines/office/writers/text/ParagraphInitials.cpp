#include "engines/office/writers/text/ParagraphInitials.h"

#include <algorithm>
#include <utility>

#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

Paragraph ParagraphOf(const Paragraph& whole, std::vector<TextLine> lines) {
  Paragraph part;
  part.role = whole.role;
  part.level = whole.level;
  part.alignment = whole.alignment;
  part.line_pitch = whole.line_pitch;
  part.box = lines.front().box;
  for (TextLine& line : lines) {
    part.box = Around(part.box, line.box);
    line.inset = 0;
  }
  part.lines = std::move(lines);
  return part;
}

void AddParts(const Paragraph& whole, std::vector<Block>& blocks) {
  Paragraph letter = ParagraphOf(whole, {whole.initial->line});
  letter.line_pitch = 0;
  letter.bookmark = whole.bookmark;
  letter.alignment = Alignment::kLeft;
  blocks.push_back(Block{std::move(letter)});
  const auto beside = whole.lines.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(
                                                whole.initial->lines_beside, whole.lines.size()));
  for (const auto& [first, last] :
       {std::pair(whole.lines.begin(), beside), std::pair(beside, whole.lines.end())}) {
    if (first != last) {
      blocks.push_back(Block{ParagraphOf(whole, std::vector<TextLine>(first, last))});
    }
  }
}

bool HasInitial(const Block& block) {
  const auto* paragraph = std::get_if<Paragraph>(&block.content);
  return paragraph != nullptr && paragraph->initial;
}

}  // namespace

bool HasInitials(const std::vector<Block>& blocks) {
  return std::any_of(blocks.begin(), blocks.end(), HasInitial);
}

std::vector<Block> WithInitialsApart(const std::vector<Block>& blocks) {
  std::vector<Block> apart;
  for (const Block& block : blocks) {
    if (HasInitial(block)) {
      AddParts(std::get<Paragraph>(block.content), apart);
    } else {
      apart.push_back(block);
    }
  }
  return apart;
}

}  // namespace TarnixTools::engines::office
