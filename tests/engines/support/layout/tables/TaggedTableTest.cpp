// Tables whose cells tags tell, where they stand and where their edges are.
#include <vector>

#include <gmock/gmock.h>

#include "engines/support/layout/tables/TaggedTable.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;

// A word of a cell: rows and cells are numbered from 1.
Ink Cell(double left, double right, double upper, std::uint32_t row, std::uint32_t cell) {
  Ink ink;
  ink.left = left;
  ink.right = right;
  ink.upper = upper;
  ink.lower = upper + 10;
  ink.baseline = upper + 8;
  ink.size = 10;
  ink.table = 1;
  ink.tagged_row = row;
  ink.tagged_cell = cell;
  return ink;
}

std::vector<Ink> TwoByTwo() {
  return {Cell(100, 150, 100, 1, 1), Cell(200, 240, 100, 1, 2), Cell(102, 140, 130, 2, 3),
          Cell(190, 230, 130, 2, 4)};
}

TEST(TaggedTables, HaveEdgesBetweenTheirWords) {
  const auto table = BuildTaggedTable(TwoByTwo(), {});
  ASSERT_TRUE(table.has_value());
  EXPECT_THAT(table->shape.columns, ElementsAre(99, 170, 241));
  EXPECT_THAT(table->shape.rows, ElementsAre(99, 120, 141));
  EXPECT_EQ(table->area.kind, AreaKind::kTagged);
  EXPECT_EQ(table->area.box.left, 99);
  EXPECT_EQ(table->area.box.right, 241);
  EXPECT_EQ(table->area.box.bottom, 99);
  EXPECT_EQ(table->area.box.top, 141);
  ASSERT_EQ(table->shape.cells.size(), 4u);
  EXPECT_EQ(table->shape.cells[2].inks.at(0).tagged_cell, 3u);
}

TEST(TaggedTables, HaveEdgesAtRules) {
  Rules rules;
  for (const double x : {90.0, 95.0, 160.0, 240.0, 260.0}) {
    rules.vertical.push_back({x, 90, 150, 1, Rgb{}, false});
  }
  rules.vertical.push_back({98, 100, 104, 1, Rgb{}, false});  // too short to part a table
  for (const double y : {84.9, 125.0, 145.0}) {
    rules.horizontal.push_back({y, 90, 260, 1, Rgb{}, false});
  }
  const auto table = BuildTaggedTable(TwoByTwo(), rules);
  ASSERT_TRUE(table.has_value());
  // The nearest one on each side, if it is no more than 15 points away.
  EXPECT_THAT(table->shape.columns, ElementsAre(95, 160, 240));
  EXPECT_THAT(table->shape.rows, ElementsAre(99, 125, 145));
  EXPECT_EQ(table->area.horizontal.size(), 3u);
  EXPECT_EQ(table->area.vertical.size(), 6u);
}

TEST(TaggedTables, SpanColumns) {
  std::vector<Ink> inks = TwoByTwo();
  inks.push_back(Cell(90, 260, 160, 3, 5));
  const auto table = BuildTaggedTable(inks, {});
  ASSERT_TRUE(table.has_value());
  EXPECT_THAT(table->shape.columns, ElementsAre(89, 170, 261));
  ASSERT_EQ(table->shape.cells.size(), 5u);
  EXPECT_EQ(table->shape.cells[4].column, 0u);
  EXPECT_EQ(table->shape.cells[4].column_end, 2u);
  EXPECT_EQ(table->shape.cells[4].row, 2u);
}

TEST(TaggedTables, HaveRowsInTheOrderTheyStand) {
  std::vector<Ink> inks = TwoByTwo();
  inks[0].tagged_row = inks[1].tagged_row = 9;  // the tree has it last
  const auto table = BuildTaggedTable(inks, {});
  ASSERT_TRUE(table.has_value());
  EXPECT_EQ(table->shape.cells[0].inks.at(0).tagged_row, 9u);
}

TEST(TaggedTables, AreNoneWhereTagsDoNotFit) {
  EXPECT_FALSE(BuildTaggedTable({}, {}).has_value());
  std::vector<Ink> inks = TwoByTwo();
  inks[3].tagged_cell = 0;
  EXPECT_FALSE(BuildTaggedTable(inks, {}).has_value());
  inks = TwoByTwo();
  inks[3].tagged_row = 0;
  EXPECT_FALSE(BuildTaggedTable(inks, {}).has_value());
  inks = TwoByTwo();
  inks.resize(2);  // one row
  EXPECT_FALSE(BuildTaggedTable(inks, {}).has_value());
  inks = TwoByTwo();
  inks.erase(inks.begin() + 3);
  inks.erase(inks.begin() + 1);  // one column
  EXPECT_FALSE(BuildTaggedTable(inks, {}).has_value());
  inks = TwoByTwo();
  inks.push_back(Cell(105, 120, 131, 2, 5));  // two cells of one place
  EXPECT_FALSE(BuildTaggedTable(inks, {}).has_value());
}

// Three tenths of the size of what is largest.
TEST(TaggedTables, AreNoneWhereRowsOverlap) {
  const auto with_row_at = [](double upper) {
    std::vector<Ink> inks = TwoByTwo();
    for (std::size_t i = 2; i < 4; ++i) {
      inks[i].upper = upper;
      inks[i].lower = upper + 10;
    }
    return BuildTaggedTable(inks, {}).has_value();
  };
  EXPECT_TRUE(with_row_at(107));
  EXPECT_FALSE(with_row_at(106.9));
}

}  // namespace
}  // namespace TarnixTools::engines
