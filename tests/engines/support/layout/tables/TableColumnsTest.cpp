#include <gmock/gmock.h>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/tables/TableColumns.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

// Rows with as many words below each other.
std::vector<InkRow> RowsWith(std::size_t words) {
  InkRow row;
  row.size = 10;
  for (std::size_t i = 0; i < words; ++i) {
    const double left = 20 * static_cast<double>(i);
    row.chunks.push_back({.first = i, .last = i, .left = left, .right = left + 10});
  }
  return std::vector<InkRow>(3, row);
}

TEST(TableColumns, FindsGapsBetweenColumns) {
  EXPECT_THAT(FindColumnGaps(RowsWith(100), 0, 1e6, 2), SizeIs(99));
}

TEST(TableColumns, FindsNoneBetweenMoreThanATableMayHave) {
  EXPECT_THAT(FindColumnGaps(RowsWith(limits::kMaxTableColumns + 2), 0, 1e6, 2), SizeIs(0));
}

TEST(TableColumns, AreThoseOfTheRowsThatShowThemBest) {
  // Rows of two words each, across what others have as four: they tell nothing of the columns.
  std::vector<InkRow> rows = RowsWith(4);
  InkRow other;
  other.size = 10;
  other.chunks = {{.first = 0, .last = 0, .left = 0, .right = 45}};
  rows.push_back(other);
  EXPECT_THAT(FindColumnGaps(rows, 0, 1e6, 2), ElementsAre(15, 35, 55));
  EXPECT_THAT(FindColumnGaps(rows, 0, 1e6, 4), SizeIs(0));  // too few rows
  InkRow few;
  few.size = 10;
  for (std::size_t i = 0; i < 5; ++i) {
    few.chunks.push_back({.first = i,
                          .last = i,
                          .left = 20.0 * static_cast<double>(i),
                          .right = 20.0 * static_cast<double>(i) + 10});
  }
  InkRow across = few;
  across.chunks.resize(2);
  across.chunks[1].right = 95;
  EXPECT_THAT(FindColumnGaps(std::vector<InkRow>{few, few, across}, 0, 1e6, 2),
              ElementsAre(15, 35, 55, 75));
}

TEST(TableColumns, LieWithinTheirBoundsAndAreWideEnough) {
  EXPECT_THAT(FindColumnGaps(RowsWith(4), 25, 1e6, 2), ElementsAre(35, 55));
  EXPECT_THAT(FindColumnGaps(RowsWith(4), 0, 40, 2), ElementsAre(15));
  std::vector<InkRow> rows = RowsWith(2);
  for (InkRow& row : rows) {
    row.chunks[1].left = 12.5;  // a quarter of the size
  }
  EXPECT_THAT(FindColumnGaps(rows, 0, 1e6, 2), ElementsAre(11.25));
  for (InkRow& row : rows) {
    row.chunks[1].left = 12.4;
  }
  EXPECT_THAT(FindColumnGaps(rows, 0, 1e6, 2), SizeIs(0));
}

TEST(TableColumns, AreNoneThatHardlyAnyRowHas) {
  std::vector<InkRow> rows = RowsWith(3);
  rows[1].chunks.pop_back();
  rows[2].chunks.pop_back();  // the third column has one word
  EXPECT_THAT(FindColumnGaps(rows, 0, 1e6, 2), ElementsAre(15));
}

}  // namespace
}  // namespace TarnixTools::engines
