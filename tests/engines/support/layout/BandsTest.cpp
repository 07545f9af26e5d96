#include <gmock/gmock.h>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/regions/Bands.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

// Lines of ten points, each of this width.
void AddLines(std::vector<RegionItem>& items, double left, double right, double upper, int count) {
  for (int i = 0; i < count; ++i) {
    const double y = upper + 12 * i;
    items.push_back({.box = {left, y, right, y + 5}, .size = 10, .letters = 30});
  }
}

TEST(Bands, ReadsColumnsBelowATitleOneAfterTheOther) {
  std::vector<RegionItem> items;
  AddLines(items, 72, 500, 100, 1);
  AddLines(items, 72, 270, 140, 4);
  AddLines(items, 300, 500, 140, 4);
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(2));
  EXPECT_THAT(bands[0].columns[0].items, ElementsAre(0));
  ASSERT_THAT(bands[1].columns, SizeIs(2));
  EXPECT_THAT(bands[1].columns[0].items, ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(bands[1].columns[1].items, ElementsAre(5, 6, 7, 8));
}

// The left column begins with labels and what is beside them: the gap between these is no gutter.
TEST(Bands, KeepsLongColumnsWhereOneOfThemHasLabels) {
  std::vector<RegionItem> items;
  AddLines(items, 72, 120, 100, 10);
  for (RegionItem& item : items) {
    item.letters = 8;
  }
  AddLines(items, 200, 270, 100, 10);
  AddLines(items, 72, 270, 220, 10);
  AddLines(items, 300, 500, 100, 20);
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(1));
  ASSERT_THAT(bands[0].columns, SizeIs(2));
  EXPECT_THAT(bands[0].columns[0].items, SizeIs(30));
  EXPECT_THAT(bands[0].columns[1].items, SizeIs(20));
}

TEST(Bands, LetsAColumnBeginAboveTheOther) {
  std::vector<RegionItem> items;
  AddLines(items, 72, 270, 124, 4);
  AddLines(items, 300, 500, 100, 6);
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(1));
  ASSERT_THAT(bands[0].columns, SizeIs(2));
  EXPECT_THAT(bands[0].columns[1].items, ElementsAre(4, 5, 6, 7, 8, 9));
}

TEST(Bands, ReadsColumnsFromTheRight) {
  std::vector<RegionItem> items;
  AddLines(items, 72, 270, 140, 3);
  AddLines(items, 300, 500, 140, 3);
  const std::vector<RegionBand> bands = CutIntoBands(items, true);
  ASSERT_THAT(bands, SizeIs(1));
  EXPECT_THAT(bands[0].columns[0].items, ElementsAre(3, 4, 5));
}

TEST(Bands, TakesTwoLinesSideBySideAsNoColumns) {
  std::vector<RegionItem> items;
  AddLines(items, 72, 270, 140, 2);
  AddLines(items, 300, 500, 140, 2);
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(1));
  EXPECT_THAT(bands[0].columns, SizeIs(1));
}

TEST(Bands, KeepsColumnsBesideAPageNumber) {
  std::vector<RegionItem> items;
  AddLines(items, 72, 270, 140, 5);
  AddLines(items, 300, 500, 140, 5);
  items.push_back({.box = {540, 164, 550, 169}, .size = 10, .letters = 3});
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(1));
  ASSERT_THAT(bands[0].columns, SizeIs(2));
  EXPECT_THAT(bands[0].columns[1].items, SizeIs(6));
}

TEST(Bands, EndsColumnsAtALineOverBoth) {
  std::vector<RegionItem> items;
  AddLines(items, 72, 270, 100, 4);
  AddLines(items, 300, 500, 100, 4);
  AddLines(items, 72, 500, 160, 2);
  AddLines(items, 72, 270, 200, 4);
  AddLines(items, 300, 500, 200, 4);
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(3));
  EXPECT_THAT(bands[1].columns, SizeIs(1));
}

TEST(Bands, ReadsColumnsWithinAColumn) {
  std::vector<RegionItem> items;
  AddLines(items, 20, 120, 100, 12);  // 0 to 11: on the left, over the whole height
  AddLines(items, 150, 550, 100, 1);  // 12: over the two others
  AddLines(items, 150, 340, 118, 4);  // 13 to 16
  AddLines(items, 360, 550, 118, 4);  // 17 to 20
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(1));
  ASSERT_THAT(bands[0].columns, SizeIs(2));
  EXPECT_THAT(bands[0].columns[1].items, ElementsAre(12, 13, 14, 15, 16, 17, 18, 19, 20));
}

TEST(Bands, JoinsColumnsBeyondTheMostThatThereMayBe) {
  std::vector<RegionItem> items;
  for (int i = 0; i < 100; ++i) {
    AddLines(items, 20 * i, 20 * i + 5, 100, 4);
  }
  const std::vector<RegionBand> bands = CutIntoBands(items, false);
  ASSERT_THAT(bands, SizeIs(1));
  EXPECT_THAT(bands[0].columns, SizeIs(limits::kMaxColumnsOfBand));
  EXPECT_THAT(bands[0].columns.back().items, SizeIs(4 * (101 - limits::kMaxColumnsOfBand)));
}

TEST(Bands, HasNoneForNothing) {
  EXPECT_THAT(CutIntoBands({}, false), SizeIs(0));
}

}  // namespace
}  // namespace TarnixTools::engines
