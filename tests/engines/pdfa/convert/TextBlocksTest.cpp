#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/tags/TextBlocks.h"

namespace TarnixTools::engines::pdfa {
namespace {

class TextBlocksTest : public ::testing::Test {
 protected:
  // A string from left to right.
  std::uint32_t Show(double x, double y, double width, double size = 10) {
    return blocks_.Add({.begin = {x, y},
                        .end = {x + width, y},
                        .along = {1, 0},
                        .up = {0, 1},
                        .size = size,
                        .codes = static_cast<std::size_t>(width / size * 2)});
  }

  std::vector<PageBlock> found_;
  TextBlocks blocks_{found_};
};

TEST_F(TextBlocksTest, PutWordsOfALineTogether) {
  EXPECT_EQ(Show(10, 100, 50), 0U);
  EXPECT_EQ(Show(63, 100, 50), 0U);
  EXPECT_EQ(Show(115, 103, 5, 6), 0U);  // a footnote's number
  EXPECT_EQ(found_[0].lines, 1U);
  EXPECT_EQ(found_[0].size, 10);
}

TEST_F(TextBlocksTest, BeginAtAColumn) {
  EXPECT_EQ(Show(10, 100, 50), 0U);
  EXPECT_EQ(Show(100, 100, 50), 1U);
}

TEST_F(TextBlocksTest, PutLinesOfAParagraphTogether) {
  EXPECT_EQ(Show(22, 100, 178), 0U);  // indented
  EXPECT_EQ(Show(10, 88, 190), 0U);
  EXPECT_EQ(Show(10, 76, 100), 0U);
  EXPECT_EQ(found_[0].lines, 3U);
  EXPECT_EQ(found_[0].box, (pdf::Box{10, 76, 200, 110}));
  EXPECT_EQ(Show(10, 64, 190), 1U) << "the line before ended early";
}

TEST_F(TextBlocksTest, BeginAtAnIndentAndAtAGap) {
  Show(10, 100, 190);
  Show(10, 88, 190);
  EXPECT_EQ(Show(30, 76, 170), 1U);
  EXPECT_EQ(Show(10, 64, 190), 1U);
  EXPECT_EQ(Show(10, 30, 190), 2U);
}

TEST_F(TextBlocksTest, BeginAtAnotherSizeAndDirection) {
  Show(10, 100, 190, 18);
  EXPECT_EQ(Show(10, 82, 190, 10), 1U);
  EXPECT_EQ(blocks_.Add({.begin = {10, 70},
                         .end = {10, 90},
                         .along = {0, 1},
                         .up = {-1, 0},
                         .size = 10,
                         .codes = 4}),
            2U);
}

TEST_F(TextBlocksTest, BeginAfterABreak) {
  Show(10, 100, 50);
  blocks_.Break();
  EXPECT_EQ(Show(63, 100, 50), 1U);
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
