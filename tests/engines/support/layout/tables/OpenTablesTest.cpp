#include <array>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TableScene.h"
#include "engines/support/layout/LayoutLimits.h"

namespace TarnixTools::engines {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

TEST(OpenTables, StandBetweenHorizontalRules) {
  TableScene scene;
  scene.Line(100, 100, 400, 100).Line(100, 118, 400, 118).Line(100, 160, 400, 160);
  scene.Text(105, 113, "Year").Text(200, 113, "Men").Text(300, 113, "Women");
  scene.Text(105, 132, "1995").RightText(220, 132, "15.1").RightText(330, 132, "8.25");
  scene.Text(105, 150, "2000").RightText(220, 150, "110.6").RightText(330, 150, "9.1");
  EXPECT_THAT(scene.Find(),
              ElementsAre(ElementsAre("Year|Men|Women", "1995|15.1|8.25", "2000|110.6|9.1")));
  EXPECT_EQ(scene.Tables()[0].table.header_rows, 1U);
}

TEST(OpenTables, JoinTheLinesOfTheirHeader) {
  TableScene scene;
  scene.Line(100, 90, 400, 90).Line(100, 130, 400, 130).Line(100, 170, 400, 170);
  scene.Text(200, 101, "Number of").Text(200, 113, "participants").Text(300, 113, "Share");
  scene.Text(105, 144, "Labour").RightText(250, 144, "51955").RightText(320, 144, "52");
  scene.Text(105, 160, "Other").RightText(250, 160, "91").RightText(320, 160, "55");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("|Number of participants|Share",
                                                    "Labour|51955|52", "Other|91|55")));
}

TEST(OpenTables, SpanHeadersOverTheirColumns) {
  TableScene scene;
  scene.Line(100, 90, 400, 90).Line(200, 106, 330, 106).Line(100, 122, 400, 122);
  scene.Line(100, 160, 400, 160);
  scene.Text(215, 102, "All of the public").Text(105, 118, "Year").Text(200, 118, "PK");
  scene.Text(300, 118, "Upper");
  scene.Text(105, 136, "1995").RightText(220, 136, "15.1").RightText(330, 136, "8.25");
  scene.Text(105, 152, "2000").RightText(220, 152, "10.6").RightText(330, 152, "9.1");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("|All of the public|<", "Year|PK|Upper",
                                                    "1995|15.1|8.25", "2000|10.6|9.1")));
}

TEST(OpenTables, NeedNoRulesWhereNumbersStandInColumns) {
  TableScene scene;
  scene.Text(100, 100, "Age Group").Text(200, 100, "Proportion");
  scene.Text(100, 114, "20-29").Text(200, 114, "0.2650");
  scene.Text(100, 128, "30-39").Text(200, 128, "0.2046");
  scene.Text(100, 142, "40-49").Text(200, 142, "0.1477");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("Age Group|Proportion", "20-29|0.2650",
                                                    "30-39|0.2046", "40-49|0.1477")));
}

TEST(OpenTables, KeepGroupsOfDigitsTogether) {
  TableScene scene;
  const std::array<const char*, 4> numbers = {"79 935", "2 961", "1 649 692", "13 560"};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const double y = 100 + 14 * static_cast<double>(i);
    scene.Text(100, y, "Kind").RightText(250, y, numbers[i]).RightText(300, y, "5");
  }
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("Kind|79 935|5", "Kind|2 961|5",
                                                    "Kind|1 649 692|5", "Kind|13 560|5")));
}

TEST(OpenTables, KeepMarksOfNotesWithTheirNumbers) {
  TableScene scene;
  for (int i = 0; i < 4; ++i) {
    const double y = 100 + 14 * i;
    scene.Text(100, y, "Kind").Text(200, y, i < 2 ? "107 (2)" : "103").Text(300, y, "12");
  }
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("Kind|107 (2)|12", "Kind|107 (2)|12",
                                                    "Kind|103|12", "Kind|103|12")));
}

TEST(OpenTables, PartNumbersThatStandClose) {
  TableScene scene;
  for (int i = 0; i < 4; ++i) {
    const double y = 100 + 14 * i;
    scene.Text(100, y, "Kind").Text(200, y, "12,345 67,890 11,111");
  }
  EXPECT_THAT(scene.Find(),
              ElementsAre(ElementsAre("Kind|12,345|67,890|11,111", "Kind|12,345|67,890|11,111",
                                      "Kind|12,345|67,890|11,111", "Kind|12,345|67,890|11,111")));
}

TEST(OpenTables, LeaveOutDotsThatLead) {
  TableScene scene;
  for (int i = 0; i < 4; ++i) {
    const double y = 100 + 14 * i;
    scene.Text(100, y, "0.9" + std::to_string(i) + " .............");
    scene.Text(200, y, "160").Text(240, y, "176").Text(280, y, "192");
  }
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("0.90|160|176|192", "0.91|160|176|192",
                                                    "0.92|160|176|192", "0.93|160|176|192")));
  EXPECT_EQ(scene.Tables()[0].fillers.size(), 4U);
}

TEST(OpenTables, AreNotTextInTwoColumns) {
  TableScene scene;
  for (int i = 0; i < 12; ++i) {
    const double y = 100 + 12 * i;
    scene.Text(60, y, "these are words of a column which go on and on over it");
    scene.Text(320, y, "and there is more in a second column that is read then");
  }
  EXPECT_THAT(scene.Find(), IsEmpty());
}

TEST(OpenTables, AreNotLists) {
  TableScene scene;
  for (int i = 1; i < 6; ++i) {
    const double y = 100 + 14 * i;
    scene.Text(100, y, std::to_string(i) + ".").Text(130, y, "An item");
  }
  EXPECT_THAT(scene.Find(), IsEmpty());
}

TEST(OpenTables, AreNotTablesOfContents) {
  TableScene scene;
  const std::array<const char*, 5> pages = {"1", "4", "4", "17", "120"};
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const double y = 100 + 14 * static_cast<double>(i);
    scene.Text(100, y, "A chapter").RightText(500, y, pages[i]);
  }
  EXPECT_THAT(scene.Find(), IsEmpty());
}

TEST(OpenTables, AreNotFormsOfLabelsAndAnswers) {
  TableScene scene;
  for (int i = 0; i < 5; ++i) {
    const double y = 100 + 14 * i;
    scene.Text(100, y, "First name:").Text(220, y, "Anna Maria");
  }
  EXPECT_THAT(scene.Find(), IsEmpty());
}

TEST(OpenTables, AreWhatTagsTellOf) {
  TableScene scene;
  scene.Tagged(100, 100, "Date:", 7).Tagged(200, 100, "Friday, March 13", 7);
  scene.Tagged(100, 114, "Location:", 7).Tagged(200, 114, "Newark", 7);
  scene.Text(100, 150, "One").Text(200, 150, "12").Text(100, 164, "Two").Text(200, 164, "15");
  scene.Text(100, 178, "Three").Text(200, 178, "11");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("Date:|Friday, March 13", "Location:|Newark")));
}

// Rows between rules, in a document whose tags tell of other tables.
TEST(OpenTables, AreNotWhatTagsTellToBeText) {
  TableScene told;
  TableScene untold;
  for (TableScene* scene : {&told, &untold}) {
    for (int i = 0; i < 4; ++i) {
      scene->Line(90, 90 + 16 * i, 300, 90 + 16 * i);
    }
  }
  for (int i = 0; i < 3; ++i) {
    const double y = 102 + 16 * i;
    told.TaggedText(100, y, "Label").TaggedText(260, y, "12.5");
    untold.Text(100, y, "Label").Text(260, y, "12.5");
  }
  EXPECT_THAT(untold.TreeWithTables().Find(), SizeIs(1));
  EXPECT_THAT(untold.RuledText(), IsEmpty());
  EXPECT_THAT(told.Find(), SizeIs(1));
  EXPECT_THAT(told.TreeWithTables().Find(), IsEmpty());
  EXPECT_THAT(told.RuledText(), SizeIs(1));
}

// Rules in both directions are not made for text.
TEST(OpenTables, AreRuledOnesEvenIfTagsTellOfText) {
  TableScene scene;
  scene.TreeWithTables().Grid({90, 200, 300}, {90, 106, 122});
  scene.TaggedText(100, 102, "One").TaggedText(210, 102, "Two");
  scene.TaggedText(100, 118, "Three").TaggedText(210, 118, "Four");
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("One|Two", "Three|Four")));
}

// Headings side by side with a rule below each, between rules over the whole width of the page.
// The text at the right is what follows in the row.
TableScene PanelScene(std::string_view right) {
  TableScene scene;
  scene.Line(50, 60, 550, 60).Line(50, 300, 550, 300);
  for (const double x : {50, 304}) {
    scene.Bold(x, 96, x < 100 ? "Parties" : "Totals of all").Line(x, 102, x + 246, 102);
  }
  for (int i = 0; i < 4; ++i) {
    scene.Text(54, 120 + 15 * i, "Name").RightText(290, 120 + 15 * i, "12.5");
    scene.Text(308, 124 + 15 * i, "Class").Text(500, 124 + 15 * i, right);
  }
  return scene;
}

TEST(OpenTables, StandSideBySideUnderHeadings) {
  EXPECT_THAT(PanelScene("7").Find(),
              ElementsAre(ElementsAre("Name|12.5", "Name|12.5", "Name|12.5", "Name|12.5"),
                          ElementsAre("Class|7", "Class|7", "Class|7", "Class|7")));
}

// A further heading with a rule of the same length.
TEST(OpenTables, EndAtTheNextHeadingOfTheirPanel) {
  TableScene scene = PanelScene("7");
  scene.Bold(50, 190, "More").Line(50, 196, 296, 196);
  for (int i = 0; i < 2; ++i) {
    scene.Text(54, 212 + 15 * i, "Item").RightText(290, 212 + 15 * i, "3");
  }
  EXPECT_THAT(scene.Find(),
              UnorderedElementsAre(ElementsAre("Name|12.5", "Name|12.5", "Name|12.5", "Name|12.5"),
                                   ElementsAre("Class|7", "Class|7", "Class|7", "Class|7"),
                                   ElementsAre("Item|3", "Item|3")));
}

// Columns under headings that share the labels at their left.
TEST(OpenTables, AreNotPartedAtRulesUnderTheirHeadings) {
  TableScene scene = PanelScene("7");
  for (int i = 0; i < 4; ++i) {
    scene.Text(10, 122 + 15 * i, "Label");
  }
  EXPECT_THAT(scene.Find(), SizeIs(1));
}

// Where one of the columns is a text, the rules are not those of tables.
TEST(OpenTables, AreNotColumnsOfText) {
  EXPECT_THAT(PanelScene("").Find(), Not(Contains(Contains("Name|12.5"))));
}

TEST(OpenTables, TakeEachWordOnce) {
  TableScene scene;
  scene.Line(100, 90, 400, 90).Line(100, 106, 400, 106).Line(100, 140, 400, 140);
  scene.Text(105, 102, "A").Text(300, 102, "B").Text(105, 120, "C").RightText(320, 120, "1");
  scene.Text(105, 134, "D").RightText(320, 134, "2");
  std::vector<std::uint32_t> words;
  for (const FoundTable& table : scene.Tables()) {
    for (const std::vector<std::uint32_t>& cell : table.words) {
      words.insert(words.end(), cell.begin(), cell.end());
    }
  }
  EXPECT_THAT(words, ElementsAre(0U, 1U, 2U, 3U, 4U, 5U));
}

TEST(OpenTables, FindsNoMoreThanAPageMayHave) {
  TableScene scene;
  for (std::uint32_t i = 0; i < limits::kMaxTablesOfPage + 20; ++i) {
    const double y = 100.0 * i;
    for (int row = 0; row < 3; ++row) {
      scene.Tagged(100, y + 15 * row, "Name", i + 1).Tagged(200, y + 15 * row, "12.5", i + 1);
    }
  }
  EXPECT_THAT(scene.Tables(), SizeIs(limits::kMaxTablesOfPage));
}

// Cells of several lines, one over both columns, one without words.
TEST(OpenTables, HaveTheCellsThatTagsTell) {
  TableScene scene;
  scene.TaggedCell(100, 100, "A title over both columns of the table", 1, 2);
  scene.TaggedCell(100, 114, "first", 3, 4).TaggedCell(100, 126, "line", 3, 4);
  scene.TaggedCell(220, 114, "alone", 3, 5);
  scene.TaggedCell(220, 140, "of a", 6, 7).TaggedCell(220, 152, "row", 6, 7);
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("A title over both columns of the table|<",
                                                    "first line|alone", "|of a row")));
}

TEST(OpenTables, AreAsWideAsTheirWidestCell) {
  TableScene scene;
  scene.TaggedCell(100, 100, "A title that is far longer than what the columns have", 1, 2);
  scene.TaggedCell(100, 114, "a", 3, 4).TaggedCell(130, 114, "b", 3, 5);
  const std::vector<FoundTable> tables = scene.Tables();
  ASSERT_THAT(tables, SizeIs(1));
  EXPECT_GT(tables[0].table.columns.back(), 300);
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre(
                                "A title that is far longer than what the columns have|<", "a|b")));
}

// Rows that stand beside each other are none.
TEST(OpenTables, DoNotBelieveTagsThatDoNotFit) {
  TableScene scene;
  scene.TaggedCell(100, 100, "Date:", 1, 2).TaggedCell(200, 100, "Friday, March 13", 3, 4);
  scene.TaggedCell(100, 114, "Location:", 1, 2).TaggedCell(200, 114, "Newark", 3, 4);
  EXPECT_THAT(scene.Find(), ElementsAre(ElementsAre("Date:|Friday, March 13", "Location:|Newark")));
}

}  // namespace
}  // namespace TarnixTools::engines
