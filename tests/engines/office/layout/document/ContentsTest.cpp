// Entries of tables of contents, whose dots become tabulators.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "engines/office/layout/document/Contents.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;

// A document with these lines below each other, ten points wide for each byte.
OfficeDocument DocumentOfLines(const std::vector<std::pair<double, std::string>>& lines) {
  std::vector<Block> blocks;
  for (const auto& [left, text] : lines) {
    const double y = 100 + 14 * static_cast<double>(blocks.size());
    Paragraph line = LineBetween(left, left + 10 * static_cast<double>(text.size()), y, text);
    line.alignment = Alignment::kJustified;
    blocks.push_back(Block{line});
  }
  return DocumentOf({PageWith(std::move(blocks))});
}

std::vector<Paragraph*> Found(OfficeDocument& document) {
  FindContents(document);
  return FlowParagraphs(document.pages[0].layout);
}

bool IsEntry(const std::string& text) {
  OfficeDocument document = DocumentOfLines({{72, text}});
  return Found(document)[0]->role == ParagraphRole::kContents;
}

std::string TextOf(const std::vector<TextPiece>& pieces) {
  std::string text;
  for (const TextPiece& piece : pieces) {
    text += piece.text + "|";
  }
  return text;
}

TEST(Contents, HaveATabInThePlaceOfTheirDots) {
  OfficeDocument document = DocumentOfLines({{72, "Scope ....  12"}});
  const Paragraph& entry = *Found(document)[0];
  EXPECT_EQ(entry.role, ParagraphRole::kContents);
  EXPECT_EQ(entry.alignment, Alignment::kLeft);
  const std::vector<TextPiece>& pieces = entry.lines[0].pieces;
  ASSERT_EQ(pieces.size(), 3u);
  EXPECT_EQ(pieces[0].text, "Scope ");
  EXPECT_EQ(pieces[0].x, 72);
  EXPECT_EQ(pieces[1].kind, PieceKind::kTab);
  EXPECT_EQ(pieces[1].text, "\t");
  EXPECT_EQ(pieces[2].text, "12");
  // Dots and spaces are narrower than letters and digits; together they are as wide as the line.
  EXPECT_GT(pieces[0].width, pieces[1].width);
  EXPECT_NEAR(pieces[1].x, pieces[0].x + pieces[0].width, 1e-9);
  EXPECT_NEAR(pieces[2].x, pieces[1].x + pieces[1].width, 1e-9);
  EXPECT_NEAR(pieces[2].x + pieces[2].width, 72 + 140, 1e-9);
}

TEST(Contents, EndWithNumbers) {
  for (const char* text : {"Scope .... 1", "Scope....iv", "Scope . . . . XII", "Scope .... A-12",
                           "Scope .... 12345678", "Scope .... 7 ", "A. Scope .... 7"}) {
    EXPECT_TRUE(IsEntry(text)) << text;
  }
  for (const char* text : {"Scope ... 1", "Scope .... 123456789", "Scope .... 1b", "Scope ....",
                           ".... 12", "Scope .... and", "Scope .... 1 2", "Scope"}) {
    EXPECT_FALSE(IsEntry(text)) << text;
  }
}

TEST(Contents, HaveOneTabOfTheDotsAndTheirOwn) {
  TextPiece tab;
  tab.kind = PieceKind::kTab;
  tab.text = "\t";
  TextPiece number;
  number.text = "9";
  OfficeDocument document = DocumentOfLines({{72, "Scope ...."}, {72, "Scope"}, {72, "...."}});
  const std::vector<Paragraph*> lines = FlowParagraphs(document.pages[0].layout);
  std::vector<TextPiece>& ends = lines[0]->lines[0].pieces;
  ends.insert(ends.end(), {tab, number});
  std::vector<TextPiece>& between = lines[1]->lines[0].pieces;
  between.insert(between.end(), {tab, lines[2]->lines[0].pieces[0], tab, number});
  Found(document);
  EXPECT_EQ(TextOf(ends), "Scope |\t|9|");
  EXPECT_EQ(TextOf(between), "Scope|\t|9|");
}

TEST(Contents, HaveLevelsByTheirIndents) {
  OfficeDocument document = DocumentOfLines({{72, "a .... 1"},
                                             {90, "b .... 2"},
                                             {93, "c .... 3"},
                                             {110, "d .... 4"},
                                             {76, "e .... 5"},
                                             {90, "f .... 6"},
                                             {60, "g .... 7"}});
  std::vector<int> levels;
  for (const Paragraph* paragraph : Found(document)) {
    levels.push_back(paragraph->level);
  }
  EXPECT_THAT(levels, ElementsAre(0, 1, 1, 2, 0, 1, 0));
}

TEST(Contents, KeepWhatIsBeforeTheirDots) {
  OfficeDocument document = DocumentOfLines({{72, "A....1"}});
  const std::vector<TextPiece>& pieces = Found(document)[0]->lines[0].pieces;
  ASSERT_EQ(pieces.size(), 3u);
  EXPECT_EQ(pieces[0].text, "A");
}

}  // namespace
}  // namespace TarnixTools::engines::office
