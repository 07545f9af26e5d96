// How the lines of a paragraph go together, and what parts of their pieces are.
#include <string>

#include <gtest/gtest.h>

#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/PieceMaker.h"

namespace TarnixTools::engines {
namespace {

TextLine LineOf(const std::string& text) {
  TextLine line;
  line.pieces.emplace_back().text = text;
  return line;
}

// The end of the first line and a sign for what is between: "~" for nothing, "_" for a space.
std::string Joined(const std::string& end, const std::string& start) {
  TextLine line = LineOf(end);
  JoinLines(line, LineOf(start));
  return line.pieces[0].text + (line.joint == LineJoint::kNothing ? "~" : "_") + start;
}

TEST(JoinLines, TakesHyphensOutOfPartedWords) {
  EXPECT_EQ(Joined("mid-", "dle"), "mid~dle");
  EXPECT_EQ(Joined("mid\u2010", "dle"), "mid~dle");
  EXPECT_EQ(Joined("mid\u00AD", "dle"), "mid~dle");
  EXPECT_EQ(Joined("a-", "b"), "a~b");
  // Before a capital letter the hyphen is the word's own.
  EXPECT_EQ(Joined("Anglo-", "Saxon"), "Anglo-~Saxon");
  EXPECT_EQ(Joined("10-", "year"), "10-_year");
  EXPECT_EQ(Joined("mid-", "10"), "mid-_10");
  EXPECT_EQ(Joined("-", "b"), "-_b");
  EXPECT_EQ(Joined("mid", "dle"), "mid_dle");
  EXPECT_EQ(Joined("", "dle"), "_dle");
  EXPECT_EQ(Joined("mid-", ""), "mid-_");
}

TEST(JoinLines, PutsNothingBetweenIdeographs) {
  EXPECT_EQ(Joined("標", "準"), "標~準");
  EXPECT_EQ(Joined("標", "a"), "標_a");
  EXPECT_EQ(Joined("a", "標"), "a_標");
}

TEST(JoinLines, LeavesLinesWithoutPieces) {
  TextLine line;
  JoinLines(line, LineOf("text"));
  EXPECT_EQ(line.joint, LineJoint::kSpace);
  line = LineOf("mid-");
  JoinLines(line, TextLine());
  EXPECT_EQ(line.joint, LineJoint::kSpace);
}

TEST(FlowParagraphs, HaveTheTextOfTheirLines) {
  Paragraph paragraph;
  paragraph.lines = {LineOf("one"), LineOf("two"), LineOf("three"), LineOf("four")};
  paragraph.lines[1].joint = LineJoint::kNothing;
  paragraph.lines[2].joint = LineJoint::kBreak;
  paragraph.lines[0].pieces.emplace_back().text = "!";
  EXPECT_EQ(TextOf(paragraph), "one! twothree four");
}

TEST(FlowParagraphs, HavePiecesWithParts) {
  TextPiece piece;
  piece.text = "abcd";
  piece.x = 10;
  piece.width = 8;
  piece.look = 3;
  const TextPiece part = PartOf(piece, 1, 3);
  EXPECT_EQ(part.text, "bc");
  EXPECT_EQ(part.x, 12);
  EXPECT_EQ(part.width, 4);
  EXPECT_EQ(part.look, 3U);
  piece.text.clear();
  EXPECT_EQ(PartOf(piece, 0, 0).width, 0);
}

}  // namespace
}  // namespace TarnixTools::engines
