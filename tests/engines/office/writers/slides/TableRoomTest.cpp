#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/slides/TableRoom.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;

// About 152 points wide, in cells of 100.
constexpr const char* kLong = "Text that runs over the edge of its cell";

Table OpenTable(const std::vector<std::string>& texts) {
  Table table = TableAt(0, 0, texts);
  for (TableCell& cell : table.cells) {
    cell.borders.fill({});
  }
  return table;
}

// Moves the text of a cell to the right end of the table, a few points before it.
void MoveToEnd(Table& table, std::size_t cell) {
  TextPiece& piece = std::get<Paragraph>(table.cells[cell].blocks[0].content).lines[0].pieces[0];
  piece.x = table.columns.back() - piece.width - 2;
}

double RightOf(const TableCell& cell) {
  const auto& piece = std::get<Paragraph>(cell.blocks[0].content).lines[0].pieces[0];
  return piece.x + piece.width;
}

TEST(TableRoom, LeavesTablesWhoseTextStaysInItsCells) {
  const Table table = WithRoomForText(OpenTable({"a", "b", "c", "d"}));
  EXPECT_THAT(table.columns, ElementsAre(0, 100, 200));
}

TEST(TableRoom, MovesAnEdgeThatTextCrosses) {
  Table table = OpenTable({kLong, "b", "c", "d"});
  MoveToEnd(table, 1);
  MoveToEnd(table, 3);
  const Table shown = WithRoomForText(table);
  ASSERT_EQ(shown.columns.size(), 3U);
  EXPECT_GT(shown.columns[1], RightOf(table.cells[0]));
  EXPECT_LT(shown.columns[1], 195);
}

TEST(TableRoom, MovesTheEdgeOfOneRowWhereOthersDoNotAllowIt) {
  Table table = OpenTable({kLong, "b", "c", "d"});
  MoveToEnd(table, 1);
  const Table shown = WithRoomForText(table);
  ASSERT_EQ(shown.columns.size(), 4U);
  EXPECT_EQ(shown.columns[1], 100);
  EXPECT_GT(shown.columns[2], RightOf(table.cells[0]));
  EXPECT_EQ(shown.cells[0].column_span, 2U);
  EXPECT_EQ(shown.cells[1].column, 2U);
  EXPECT_EQ(shown.cells[2].column_span, 1U);
  EXPECT_EQ(shown.cells[3].column_span, 2U);
}

TEST(TableRoom, GivesEmptyCellsToTextThatCoversThem) {
  Table table =
      OpenTable({"Text over the whole of two cells, which are not half as wide", "", "c", "d"});
  table.cells[1].blocks.clear();
  const Table shown = WithRoomForText(table);
  ASSERT_EQ(shown.cells.size(), 3U);
  EXPECT_EQ(shown.cells[0].column_span, 2U);
  EXPECT_THAT(shown.columns, ElementsAre(0, 100, 200));
}

TEST(TableRoom, LeavesCellsWithTurnedText) {
  Table table = OpenTable({kLong, "b", "c", "d"});
  MoveToEnd(table, 1);
  table.cells[0].angle = 90;
  EXPECT_THAT(WithRoomForText(table).columns, ElementsAre(0, 100, 200));
}

TEST(TableRoom, LeavesEdgesWithARuleOrAChangeOfColour) {
  Table ruled = TableAt(0, 0, {kLong, "b", "c", "d"});
  MoveToEnd(ruled, 1);
  EXPECT_THAT(WithRoomForText(ruled).columns, ElementsAre(0, 100, 200));
  Table coloured = OpenTable({kLong, "b", "c", "d"});
  MoveToEnd(coloured, 1);
  coloured.cells[1].fill = Rgb{255, 255, 0};
  EXPECT_THAT(WithRoomForText(coloured).columns, ElementsAre(0, 100, 200));
}

}  // namespace
}  // namespace TarnixTools::engines::office
