#include "engines/office/layout/document/MarginRows.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSameBaseline = 1.5;  // points

// The paragraph, if it is a line that may be a part of one.
Paragraph* LineOf(Block& block) {
  auto* paragraph = std::get_if<Paragraph>(&block.content);
  const bool is_line = paragraph != nullptr && paragraph->lines.size() == 1 && !paragraph->label &&
                       !paragraph->is_right_to_left && !paragraph->lines.front().pieces.empty();
  return is_line ? paragraph : nullptr;
}

bool AreRow(const Paragraph& a, const Paragraph& b) {
  return std::abs(a.lines.front().baseline - b.lines.front().baseline) <= kSameBaseline &&
         SharedWidth(a.box, b.box) < 0;
}

void Append(Paragraph& left, Paragraph& right) {
  TextLine& line = left.lines.front();
  TextLine& more = right.lines.front();
  TextPiece tab = line.pieces.back();
  tab.kind = PieceKind::kTab;
  tab.text = "\t";
  tab.link = -1;
  tab.x = left.box.right;
  tab.width = right.box.left - left.box.right;
  tab.places.clear();
  line.pieces.push_back(std::move(tab));
  line.pieces.insert(line.pieces.end(), std::make_move_iterator(more.pieces.begin()),
                     std::make_move_iterator(more.pieces.end()));
  line.box = Around(line.box, more.box);
  left.box = Around(left.box, right.box);
  left.alignment = Alignment::kLeft;
}

}  // namespace

void JoinRows(std::vector<Block>& blocks) {
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    for (std::size_t k = i + 1; k < blocks.size();) {
      Paragraph* one = LineOf(blocks[i]);
      Paragraph* other = LineOf(blocks[k]);
      if (one == nullptr || other == nullptr || !AreRow(*one, *other)) {
        ++k;
        continue;
      }
      if (other->box.left < one->box.left) {
        std::swap(*one, *other);
      }
      Append(*one, *other);
      blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(k));
      k = i + 1;
    }
  }
}

}  // namespace TarnixTools::engines::office
