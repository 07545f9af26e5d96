#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/pictures/ComposedRows.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;

using Pixels = std::vector<std::uint8_t>;

// Pixels that are given, row after row; rows that are missing are white.
class GivenPixels : public RowSource {
 public:
  GivenPixels(std::uint32_t width, std::uint32_t height, PixelLayout layout, Pixels pixels)
      : RowSource(width, height, layout), pixels_(std::move(pixels)) {}

  bool ReadRow(std::uint8_t* row) override {
    const std::size_t start = row_bytes() * next_++;
    if (start + row_bytes() > pixels_.size()) {
      std::fill_n(row, row_bytes(), std::uint8_t{255});
      return false;
    }
    std::copy_n(pixels_.data() + start, row_bytes(), row);
    return true;
  }

  std::uint64_t held_bytes() const override { return pixels_.size(); }

 private:
  Pixels pixels_;
  std::size_t next_ = 0;
};

RowSourcePtr Gray(std::uint32_t width, std::uint32_t height, Pixels pixels) {
  return std::make_unique<GivenPixels>(width, height, PixelLayout::kGray, std::move(pixels));
}

Pixels AllOf(RowSource& source) {
  Pixels pixels(source.row_bytes() * source.height());
  for (std::size_t y = 0; y < source.height(); ++y) {
    source.ReadRow(pixels.data() + y * source.row_bytes());
  }
  return pixels;
}

TEST(MaskedRows, PutsThePictureOnWhite) {
  MaskedRows rows(Gray(3, 1, {0, 0, 100}), Gray(3, 1, {0, 128, 255}), false, std::nullopt);
  EXPECT_THAT(AllOf(rows), ElementsAre(255, 127, 100));
  MaskedRows inverted(Gray(3, 1, {0, 0, 100}), Gray(3, 1, {0, 128, 255}), true, std::nullopt);
  EXPECT_THAT(AllOf(inverted), ElementsAre(0, 128, 255));
}

TEST(MaskedRows, TakesThePictureOutOfItsMatte) {
  MaskedRows black(Gray(2, 1, {50, 200}), Gray(2, 1, {128, 255}), false, Rgb{0, 0, 0});
  EXPECT_THAT(AllOf(black), ElementsAre(177, 200));
  MaskedRows white(Gray(2, 1, {200, 200}), Gray(2, 1, {0, 255}), false, Rgb{255, 255, 255});
  EXPECT_THAT(AllOf(white), ElementsAre(200, 200));
}

TEST(MaskedRows, TakesTheNearestSampleOfTheMask) {
  MaskedRows fine(Gray(1, 2, {0, 0}), Gray(3, 4, {9, 9, 9, 9, 0, 9, 9, 9, 9, 9, 255, 9}), false,
                  std::nullopt);
  EXPECT_THAT(AllOf(fine), ElementsAre(255, 0));
  MaskedRows coarse(Gray(4, 1, {0, 0, 0, 0}), Gray(2, 1, {0, 255}), false, std::nullopt);
  EXPECT_THAT(AllOf(coarse), ElementsAre(255, 255, 0, 0));
  EXPECT_EQ(coarse.held_bytes(), 6U);
}

TEST(MaskedRows, MasksAllComponents) {
  auto picture = std::make_unique<GivenPixels>(1, 1, PixelLayout::kRgb, Pixels{255, 0, 100});
  auto mask = std::make_unique<GivenPixels>(1, 1, PixelLayout::kRgb, Pixels{128, 0, 0});
  MaskedRows rows(std::move(picture), std::move(mask), false, std::nullopt);
  EXPECT_THAT(AllOf(rows), ElementsAre(255, 127, 177));
}

TEST(MaskedRows, TellsWhereThePictureEnds) {
  MaskedRows rows(Gray(1, 2, {7}), Gray(1, 1, {255}), false, std::nullopt);
  std::uint8_t pixel = 0;
  EXPECT_TRUE(rows.ReadRow(&pixel));
  EXPECT_FALSE(rows.ReadRow(&pixel));
}

Pixels Turned(int orientation) {
  const RowSourcePtr source = Gray(3, 2, {1, 2, 3, 4, 5, 6});
  TurnedRows rows(*source, orientation);
  EXPECT_EQ(rows.width(), orientation > 4 ? 2U : 3U);
  EXPECT_EQ(rows.held_bytes(), 6U);
  return AllOf(rows);
}

TEST(TurnedRows, AreUpright) {
  EXPECT_THAT(Turned(2), ElementsAre(3, 2, 1, 6, 5, 4));
  EXPECT_THAT(Turned(3), ElementsAre(6, 5, 4, 3, 2, 1));
  EXPECT_THAT(Turned(4), ElementsAre(4, 5, 6, 1, 2, 3));
  EXPECT_THAT(Turned(5), ElementsAre(1, 4, 2, 5, 3, 6));
  EXPECT_THAT(Turned(6), ElementsAre(4, 1, 5, 2, 6, 3));
  EXPECT_THAT(Turned(7), ElementsAre(6, 3, 5, 2, 4, 1));
  EXPECT_THAT(Turned(8), ElementsAre(3, 6, 2, 5, 1, 4));
}

TEST(TurnedRows, TellThatRowsWereMissing) {
  const RowSourcePtr source = Gray(1, 2, {1});
  TurnedRows rows(*source, 3);
  std::uint8_t pixel = 0;
  EXPECT_FALSE(rows.ReadRow(&pixel));
  EXPECT_EQ(pixel, 255);
}

}  // namespace
}  // namespace TarnixTools::engines
