#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TableScene.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(RuledTables, HaveTheCellsOfTheirGrid) {
  TableScene scene;
  scene.Grid({100, 200, 300}, {100, 120, 140});
  scene.Text(105, 114, "Name").Text(205, 114, "Place");
  scene.Text(105, 134, "Anna").Text(205, 134, "Bonn");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("Name|Place", "Anna|Bonn")));
}

TEST(RuledTables, SpanWhereARuleIsMissing) {
  TableScene scene;
  scene.Line(100, 100, 300, 100).Line(100, 120, 300, 120).Line(200, 140, 300, 140);
  scene.Line(100, 160, 300, 160).Line(100, 100, 100, 160).Line(300, 100, 300, 160);
  scene.Line(200, 120, 200, 160);
  scene.Text(150, 114, "Whole width").Text(105, 144, "Both");
  scene.Text(205, 134, "One").Text(205, 154, "Two");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("Whole width|<", "Both|One", "^|Two")));
}

TEST(RuledTables, KeepLinesOfACellTogether) {
  TableScene scene;
  scene.Grid({100, 200, 300}, {100, 140, 160});
  scene.Text(105, 114, "A name that").Text(105, 126, "is long").Text(205, 120, "12");
  scene.Text(105, 154, "Short").Text(205, 154, "7");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("A name that is long|12", "Short|7")));
}

// The second row is filled; of the first cell only the upper line is.
TEST(RuledTables, LeaveFieldsThatTheirCellsDoNotShow) {
  TableScene scene;
  scene.Fill(100, 140, 300, 160, {0, 0, 200}).Fill(100, 100, 200, 118, {200, 0, 0});
  scene.Grid({100, 200, 300}, {100, 140, 160});
  scene.Text(105, 114, "A heading").Text(105, 130, "Its text").Text(205, 120, "12");
  scene.Text(105, 154, "Short").Text(205, 154, "7");
  const std::vector<FoundTable> tables = scene.Tables();
  ASSERT_EQ(tables.size(), 1U);
  EXPECT_EQ(tables[0].table.cells.back().fill, (Rgb{0, 0, 200}));
  EXPECT_EQ(tables[0].table.cells.front().fill, std::nullopt);
  EXPECT_THAT(tables[0].paths, ElementsAre(0, 2, 3, 4, 5, 6, 7));
}

TEST(RuledTables, HaveNoRowsAtTheLinesUnderLinks) {
  TableScene scene;
  scene.Grid({100, 200, 300}, {100, 140, 160});
  scene.Text(105, 114, "A link").Link({102, 104, 200, 117}).Line(101, 116, 200, 116);
  scene.Text(105, 130, "Its text").Text(205, 120, "12");
  scene.Text(105, 154, "Short").Text(205, 154, "7");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("A link Its text|12", "Short|7")));
}

TEST(RuledTables, PartRowsOfNumbersThatNoRuleParts) {
  TableScene scene;
  scene.Grid({100, 200, 300}, {100, 120, 190});
  scene.Text(105, 114, "Country").Text(205, 114, "Total");
  scene.Text(105, 134, "Spain").Text(205, 134, "12").Text(105, 150, "France").Text(205, 150, "345");
  scene.Text(105, 166, "Italy").Text(205, 166, "6");
  EXPECT_THAT(scene.Find(),
              ElementsAre(ElementsAre("Country|Total", "Spain|12", "France|345", "Italy|6")));
}

// Lines of a drawing, and what is written over them.
TEST(RuledTables, HaveNoLinesThroughTheirText) {
  for (const bool has_lines : {true, false}) {
    TableScene scene;
    for (double x = 100; x <= 250; x += has_lines ? 21 : 150) {
      scene.Line(x, 80, x, 200);
    }
    for (double y = 80; y <= 200; y += 40) {
      scene.Line(100, y, 400, y);
      scene.Text(110, y + 20, "some words that run on").Text(300, y + 20, "a remark");
    }
    EXPECT_EQ(scene.Find().empty(), has_lines);
  }
}

TEST(RuledTables, EndAtTheEdgeOfThePage) {
  TableScene scene;
  scene.Grid({100, 200, 900}, {-500, 120, 140, 160, 1700});
  scene.Text(105, 134, "Anna").Text(205, 134, "Bonn").Text(105, 154, "Paul").Text(205, 154, "Ulm");
  const std::vector<FoundTable> tables = scene.Tables();
  ASSERT_EQ(tables.size(), 1U);
  EXPECT_GE(tables[0].table.rows.front(), 0);
  EXPECT_LE(tables[0].table.rows.back(), 800);
  EXPECT_LE(tables[0].table.columns.back(), 600);
}

TEST(RuledTables, TakeDoubleRulesForOne) {
  TableScene scene;
  scene.Grid({100, 200, 300}, {100, 120, 140}).Grid({97.5, 302.5}, {97.5, 142.5});
  scene.Text(105, 114, "A").Text(205, 114, "B").Text(105, 134, "C").Text(205, 134, "D");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("A|B", "C|D")));
}

TEST(RuledTables, TakeDashesForOneRule) {
  TableScene scene;
  for (double x = 100; x < 300; x += 5) {
    for (const double y : {100.0, 120.0, 140.0}) {
      scene.Line(x, y, x + 3, y);
    }
  }
  for (const double x : {100.0, 200.0, 300.0}) {
    scene.Line(x, 100, x, 140);
  }
  scene.Text(105, 114, "A").Text(205, 114, "B").Text(105, 134, "C").Text(205, 134, "D");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("A|B", "C|D")));
}

TEST(RuledTables, AreMadeOfFilledBoxesToo) {
  constexpr Rgb kBlue = {80, 120, 200};
  TableScene scene;
  for (const double y : {100.0, 121.0}) {
    for (const double x : {100.0, 201.0}) {
      scene.Fill(x, y, x + 100, y + 20, kBlue);
      scene.Fill(x + 4, y + 4, x + 96, y + 16, kBlue);  // painted again behind the words
    }
  }
  scene.Text(105, 114, "A").Text(206, 114, "B").Text(105, 135, "C").Text(206, 135, "D");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("A|B", "C|D")));
  EXPECT_EQ(scene.Tables()[0].table.cells[0].fill, kBlue);
}

TEST(RuledTables, HaveBordersWhereRulesAre) {
  TableScene scene;
  scene.Grid({100, 200, 300}, {100, 120, 140}).Line(100, 120, 300, 120, 2);
  scene.Text(105, 114, "A").Text(205, 114, "B").Text(105, 134, "C").Text(205, 134, "D");
  const std::vector<FoundTable> tables = scene.Tables();
  ASSERT_EQ(tables.size(), 1U);
  EXPECT_TRUE(tables[0].table.is_ruled);
  EXPECT_EQ(tables[0].paths.size(), 7U);
  EXPECT_DOUBLE_EQ(tables[0].table.cells[0].borders[0].width, 0.5);
  EXPECT_DOUBLE_EQ(tables[0].table.cells[0].borders[2].width, 2);
}

TEST(RuledTables, AreNotFramesAroundAText) {
  TableScene scene;
  scene.Grid({100, 500}, {100, 200});
  scene.Text(105, 120, "A text in a frame").Text(105, 134, "with a second line");
  EXPECT_THAT(scene.Find(), IsEmpty());
}

TEST(RuledTables, AreNotBoxesBehindWordsOfAText) {
  constexpr Rgb kGray = {230, 230, 230};
  TableScene scene;
  for (int i = 0; i < 5; ++i) {
    const double y = 114 + 12 * i;
    const double x = 150 + 7.5 * i;
    scene.Text(x - 50, y, "some words").Text(x, y, "marked ones").Text(x + 55, y, "and others");
    scene.Fill(x - 1, y - 10, x + 54, y + 2, kGray);
  }
  EXPECT_THAT(scene.Find(), IsEmpty());
}

}  // namespace
}  // namespace TarnixTools::engines
