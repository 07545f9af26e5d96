// Parts of headers and footers that stand on one line.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/layout/document/MarginRows.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/support/layout/LayoutDump.h"

namespace TarnixTools::engines::office {
namespace {

Paragraph Part(double left, double right, double baseline, const std::string& text) {
  return LineBetween(left, right, baseline, text);
}

// The lines of the blocks, with where each of their pieces begins and ends; tabs are "->".
std::string Joined(std::vector<Block> blocks) {
  JoinRows(blocks);
  std::string text;
  for (const Block& block : blocks) {
    const auto* paragraph = std::get_if<Paragraph>(&block.content);
    text += text.empty() ? "" : "; ";
    if (paragraph == nullptr) {
      text += "no text";
      continue;
    }
    for (const TextLine& line : paragraph->lines) {
      for (const TextPiece& piece : line.pieces) {
        text += piece.kind == PieceKind::kTab ? "->" : piece.text;
        text += "(" + ShownNumber(piece.x) + " " + ShownNumber(piece.x + piece.width) + ")";
      }
    }
    text += " in " + ShownNumber(paragraph->box.left) + " " + ShownNumber(paragraph->box.right);
  }
  return text;
}

TEST(MarginRows, AreOneParagraphWithTabs) {
  EXPECT_EQ(Joined({Block{Part(72, 100, 40, "left")}, Block{Part(300, 340, 40, "right")}}),
            "left(72 100)->(100 300)right(300 340) in 72 340");
  EXPECT_EQ(Joined({Block{Part(300, 340, 40, "right")}, Block{Part(72, 100, 40, "left")}}),
            "left(72 100)->(100 300)right(300 340) in 72 340");
  EXPECT_EQ(Joined({Block{Part(300, 340, 40, "b")}, Block{Part(72, 100, 40, "a")},
                    Block{Part(500, 520, 40, "c")}}),
            "a(72 100)->(100 300)b(300 340)->(340 500)c(500 520) in 72 520");
}

TEST(MarginRows, HaveOneBaseline) {
  EXPECT_EQ(Joined({Block{Part(72, 100, 40, "a")}, Block{Part(300, 340, 41.5, "b")}}),
            "a(72 100)->(100 300)b(300 340) in 72 340");
  EXPECT_EQ(Joined({Block{Part(72, 100, 40, "a")}, Block{Part(300, 340, 41.75, "b")}}),
            "a(72 100) in 72 100; b(300 340) in 300 340");
  EXPECT_EQ(Joined({Block{Part(72, 100, 40, "a")}, Block{Part(90, 340, 40, "over it")}}),
            "a(72 100) in 72 100; over it(90 340) in 90 340");
  EXPECT_EQ(Joined({Block{Part(72, 100, 40, "a")}, Block{Part(100, 340, 40, "at it")}}),
            "a(72 100) in 72 100; at it(100 340) in 100 340");
}

TEST(MarginRows, AreOfLinesAlone) {
  Paragraph labelled = Part(300, 340, 40, "b");
  labelled.label = ListLabel();
  Paragraph leftwards = Part(300, 340, 40, "b");
  leftwards.is_right_to_left = true;
  Paragraph empty = Part(300, 340, 40, "b");
  empty.lines[0].pieces.clear();
  Paragraph high = Part(300, 340, 40, "b");
  high.lines.push_back(high.lines[0]);
  for (const Paragraph& other : {labelled, leftwards, empty, high}) {
    std::vector<Block> blocks = {Block{Part(72, 100, 40, "a")}, Block{other}};
    JoinRows(blocks);
    EXPECT_EQ(blocks.size(), 2U);
    blocks = {Block{other}, Block{Part(400, 420, 40, "a")}};
    JoinRows(blocks);
    EXPECT_EQ(blocks.size(), 2U);
  }
  Picture picture;
  picture.box = {200, 30, 220, 40};
  EXPECT_EQ(Joined({Block{Part(72, 100, 40, "a")}, Block{picture}, Block{Part(300, 340, 40, "b")},
                    Block{Part(72, 100, 60, "c")}}),
            "a(72 100)->(100 300)b(300 340) in 72 340; no text; c(72 100) in 72 100");
}

TEST(MarginRows, LeadToNothingWithTheirTabs) {
  Paragraph left = Part(72, 100, 40, "left");
  left.lines[0].pieces[0].link = 3;
  left.lines[0].pieces[0].places = {1, 2};
  left.alignment = Alignment::kCenter;
  std::vector<Block> blocks = {Block{left}, Block{Part(300, 340, 40, "right")}};
  JoinRows(blocks);
  ASSERT_EQ(blocks.size(), 1U);
  const auto& row = std::get<Paragraph>(blocks[0].content);
  EXPECT_EQ(row.alignment, Alignment::kLeft);
  const TextPiece& tab = row.lines[0].pieces.at(1);
  EXPECT_EQ(tab.text, "\t");
  EXPECT_EQ(tab.link, -1);
  EXPECT_TRUE(tab.places.empty());
  EXPECT_EQ(ShownNumber(row.lines[0].box.left) + " " + ShownNumber(row.lines[0].box.right),
            "72 340");
}

}  // namespace
}  // namespace TarnixTools::engines::office
