// What counts as a table, by how much of it is filled with what.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/tables/TableJudge.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {
namespace {

// Rows of cells with words: "a b|12|" has two words, one, and none. Cells are 100 by 20 points.
TableShape ShapeOf(const std::vector<std::string>& rows) {
  TableShape shape;
  shape.columns = {0};
  for (std::size_t r = 0; r < rows.size(); ++r) {
    shape.rows.push_back(20.0 * static_cast<double>(r));
    std::size_t column = 0;
    std::string word;
    shape.cells.push_back({r, 0, r + 1, 1, {}});
    for (const char c : rows[r] + "|") {
      if (c != '|' && c != ' ') {
        word += c;
        continue;
      }
      if (!word.empty()) {
        Ink ink;
        Classify(Utf8ToUtf32(word), ink);
        shape.cells.back().inks.push_back(ink);
        word.clear();
      }
      if (c == '|') {
        ++column;
        shape.cells.push_back({r, column, r + 1, column + 1, {}});
      }
    }
    shape.cells.pop_back();
    for (; shape.columns.size() <= column;) {
      shape.columns.push_back(100.0 * static_cast<double>(shape.columns.size()));
    }
  }
  shape.rows.push_back(20.0 * static_cast<double>(rows.size()));
  return shape;
}

bool IsGrid(const std::vector<std::string>& rows) {
  return IsTable(ShapeOf(rows), AreaKind::kGrid, {});
}

bool IsText(const std::vector<std::string>& rows) {
  return IsTable(ShapeOf(rows), AreaKind::kText, {});
}

TEST(TableJudge, TakesGridsWithWordsInRowsAndColumns) {
  EXPECT_TRUE(IsGrid({"a|b", "c|d"}));
  EXPECT_FALSE(IsGrid({"a|b"}));
  EXPECT_FALSE(IsGrid({"a", "b", "c", "d"}));
  EXPECT_FALSE(IsGrid({"a|b", "c|"}));             // three cells
  EXPECT_FALSE(IsGrid({"a|b|c|d", "||||"}));       // one row
  EXPECT_FALSE(IsGrid({"a|", "b|", "c|", "d|"}));  // one column
  EXPECT_FALSE(IsGrid({"a|b|c", "d||", "e||"}));   // only one row has several
  EXPECT_TRUE(IsGrid({"a|b|c", "d|e|", "f||"}));
}

TEST(TableJudge, LeavesGridsWithHardlyAnything) {
  // One of five cells of the rows and columns that have any: 8 of 36 are enough, 9 of 49 are not.
  EXPECT_TRUE(IsGrid({"a|b||||||", "c|d||||||", "||e|||||", "|||f||||", "||||g|||", "|||||h||"}));
  EXPECT_FALSE(IsGrid(
      {"a|b||||||", "c|d||||||", "||e|||||", "|||f||||", "||||g|||", "|||||h||", "||||||i|"}));
}

TEST(TableJudge, LeavesGridsOfProse) {
  std::string words;
  for (int i = 0; i < 25; ++i) {
    words += "w ";
  }
  EXPECT_TRUE(IsGrid({words + "|" + words, words + "|" + words}));
  EXPECT_FALSE(IsGrid({words + "|" + words, words + "|" + words + "w"}));
}

TEST(TableJudge, TakesTextWithAColumnOfNumbers) {
  EXPECT_TRUE(IsText({"apple|1.5", "pear|2.5", "plum|0.5"}));
  EXPECT_FALSE(IsText({"apple|1.5", "pear|2.5"}));  // two rows
  EXPECT_FALSE(IsText({"apple|red", "pear|green", "plum|blue"}));
  EXPECT_TRUE(IsText({"apple|1.5", "pear|x", "plum|0.5"}));  // two of three are numbers
  EXPECT_FALSE(IsText({"apple|1.5", "pear|x", "plum|y"}));
  EXPECT_FALSE(IsText({"apple|1.5", "pear|2.5", "plum|0.5", "w|", "w|", "w|", "w|"}));
  EXPECT_TRUE(IsText({"a b c d e f g h a b c d e f g|1.5", "a b c d e f g h i j k l m n o|2.5",
                      "a b c d e f g h i j k l m n o|0.5"}));
  EXPECT_FALSE(IsText({"a b c d e f g h a b c d e f g h|1.5", "a b c d e f g h i j k l m n o|2.5",
                       "a b c d e f g h i j k l m n o|0.5"}));
}

TEST(TableJudge, TakesTextOfWordsInFourRowsOfThreeColumns) {
  EXPECT_TRUE(IsText({"a|b|c", "d|e|f", "g|h|i", "j|k|l"}));
  EXPECT_FALSE(IsText({"a|b|c", "d|e|f", "g|h|i"}));
  EXPECT_FALSE(IsText({"a|b", "d|e", "g|h", "j|k"}));
  EXPECT_TRUE(IsText({"a|b|c", "d|e|", "g|h|", "j|k|"}));  // nine of twelve
  EXPECT_FALSE(IsText({"a|b|c", "d|e|", "g|h|", "j||"}));  // eight
  EXPECT_FALSE(
      IsText({"a b c d e|b c d|c d e f g", "d e f g|e f g h|f", "g h i j|h i j k l|i j k l",
              "j k l m|k l m n o p q|l m n o"}));  // more than four words in a cell
}

TEST(TableJudge, LeavesListsAndContents) {
  EXPECT_FALSE(IsText({"1.|1.5", "2.|2.5", "3.|0.5"}));
  EXPECT_TRUE(IsText({"1.|1.5", "a|2.5", "b|0.5"}));
  // Numbers of pages never become less.
  EXPECT_FALSE(IsText({"one|1", "two|5", "three|5"}));
  EXPECT_TRUE(IsText({"one|1", "two|5", "three|4"}));
  EXPECT_TRUE(IsText({"one|5", "two|5", "three|5"}));
  EXPECT_TRUE(IsText({"2001|1", "2002|5", "2003|7"}));  // there are no titles
  EXPECT_TRUE(IsText({"x|one|12345", "y|two|12346", "z|three|12347"}));
}

TEST(TableJudge, LeavesTextWithDotsThatLead) {
  Ink leader;
  leader.left = 10;
  leader.right = 60;
  leader.upper = 25;
  leader.lower = 35;
  const TableShape shape = ShapeOf({"one|1.5", "two|0.5", "three|4.5"});
  EXPECT_TRUE(IsTable(shape, AreaKind::kText, std::vector<Ink>{leader}));
  EXPECT_FALSE(IsTable(shape, AreaKind::kText, std::vector<Ink>{leader, leader}));
  leader.upper = leader.lower = 70;
  EXPECT_TRUE(IsTable(shape, AreaKind::kText, std::vector<Ink>{leader, leader}));
  leader.upper = leader.lower = 30;
  leader.left = 200;
  EXPECT_TRUE(IsTable(shape, AreaKind::kText, std::vector<Ink>{leader, leader}));
  leader.left = -20;
  leader.right = 0;
  EXPECT_TRUE(IsTable(shape, AreaKind::kText, std::vector<Ink>{leader, leader}));
}

// Edges of fields that run between the words of a text are none of a table.
TEST(TableJudge, TellsFieldsBehindWordsFromCells) {
  const auto ink = [](double left, double right) {
    Ink made;
    made.left = left;
    made.right = right;
    made.upper = 92;
    made.lower = 102;
    made.baseline = 100;
    made.size = 10;
    return made;
  };
  TableArea area;
  area.vertical = {{51, 90, 110, 0, Rgb{}, true}};
  EXPECT_TRUE(CutsText(area.vertical, std::vector<Ink>{ink(0, 50), ink(53, 90)}));
  EXPECT_FALSE(
      CutsText(area.vertical, std::vector<Ink>{ink(0, 50), ink(54.6, 90)}));  // 0.45 ems apart
  EXPECT_FALSE(
      CutsText(area.vertical, std::vector<Ink>{ink(0, 53), ink(55, 90)}));  // beside the edge
  area.vertical[0].is_edge = false;
  EXPECT_FALSE(CutsText(area.vertical, std::vector<Ink>{ink(0, 50), ink(53, 90)}));
  area.vertical = {{51, 98, 110, 0, Rgb{}, true}};  // below the middle of the words
  EXPECT_FALSE(CutsText(area.vertical, std::vector<Ink>{ink(0, 50), ink(53, 90)}));
}

}  // namespace
}  // namespace TarnixTools::engines
