#include <functional>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/pictures/GivenRows.h"
#include "engines/support/pictures/ReducedPicture.h"

namespace TarnixTools::engines {
namespace {

using testing::Bytes;
using ::testing::Each;
using ::testing::ElementsAre;
using testing::GivenRows;
using testing::Gray;
using testing::RowsOf;

TEST(ReducedPicture, HasTheMeanOfWhatAPixelCovers) {
  const auto rows = RowsOf(
      ReducePicture(Gray({{10, 30, 0, 0}, {20, 40, 0, 255}, {8, 8, 4, 4}, {8, 8, 4, 4}}), 2, 2));
  EXPECT_THAT(rows, ElementsAre(ElementsAre(25, 64), ElementsAre(8, 4)));
}

TEST(ReducedPicture, CountsDividedPixelsByTheirParts) {
  // Three become two: each has one and a half.
  EXPECT_THAT(RowsOf(ReducePicture(Gray({{90, 30, 240}}), 2, 1)),
              ElementsAre(ElementsAre(70, 170)));
  const auto rows = RowsOf(ReducePicture(Gray({{90}, {30}, {240}}), 1, 2));
  EXPECT_NEAR(rows[0][0], 70, 1);
  EXPECT_NEAR(rows[1][0], 170, 1);
}

TEST(ReducedPicture, KeepsAnEvenColorWhateverTheSizes) {
  for (std::uint32_t width = 1; width <= 37; ++width) {
    for (const std::uint8_t value : {0, 1, 127, 254, 255}) {
      const auto rows =
          RowsOf(ReducePicture(Gray(std::vector<Bytes>(41, Bytes(37, value))), width, width));
      EXPECT_THAT(rows, Each(Each(value))) << width;
    }
  }
}

TEST(ReducedPicture, StaysNearTheMeanWhateverTheSizes) {
  std::vector<Bytes> source(601, Bytes(601));
  double sum = 0;
  for (std::size_t y = 0; y < 601; ++y) {
    for (std::size_t x = 0; x < 601; ++x) {
      source[y][x] = static_cast<std::uint8_t>((x * 7 + y * 13 + x * y) % 256);
      sum += source[y][x];
    }
  }
  for (const std::uint32_t size : {1U, 2U, 200U, 300U, 512U, 600U}) {
    double reduced = 0;
    for (const Bytes& row : RowsOf(ReducePicture(Gray(source), size, size))) {
      for (const std::uint8_t value : row) {
        reduced += value;
      }
    }
    EXPECT_NEAR(reduced / size / size, sum / 601 / 601, 1) << size;
  }
}

TEST(ReducedPicture, KeepsComponentsApart) {
  const Bytes row = {10, 20, 30, 30, 40, 50, 100, 0, 200, 100, 0, 100};
  auto source = std::make_unique<GivenRows>(4, 1, PixelLayout::kRgb, std::vector<Bytes>{row});
  EXPECT_THAT(RowsOf(ReducePicture(std::move(source), 2, 1)),
              ElementsAre(ElementsAre(20, 30, 40, 100, 0, 150)));
}

TEST(ReducedPicture, IsTheSourceWhereTheSizesAreTheSame) {
  RowSourcePtr source = Gray({{1, 2}, {3, 4}});
  const RowSource* given = source.get();
  EXPECT_EQ(ReducePicture(std::move(source), 2, 2).get(), given);
}

TEST(ReducedPicture, IsWhiteWhereThereIsNoData) {
  const auto rows = RowsOf(ReducePicture(Gray({{0, 0}, {0, 0}}, 1000), 1, 500));
  EXPECT_EQ(rows[0][0], 0);
  EXPECT_THAT(std::vector<Bytes>(rows.begin() + 1, rows.end()), Each(ElementsAre(255)));
}

}  // namespace
}  // namespace TarnixTools::engines
