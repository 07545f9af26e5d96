#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/pictures/EnlargedPicture.h"
#include "engines/support/pictures/GivenRows.h"

namespace TarnixTools::engines {
namespace {

using testing::Bytes;
using ::testing::Each;
using ::testing::ElementsAre;
using testing::GivenRows;
using testing::Gray;
using testing::RowsOf;

TEST(EnlargedPicture, MixesTheNearestPixels) {
  // The middles of the new pixels are a quarter and three quarters of the way between old ones.
  EXPECT_THAT(RowsOf(EnlargePicture(Gray({{0, 100, 200}}), 6, 1)),
              ElementsAre(ElementsAre(0, 25, 75, 125, 175, 200)));
  EXPECT_THAT(RowsOf(EnlargePicture(Gray({{0}, {200}}), 1, 4)),
              ElementsAre(ElementsAre(0), ElementsAre(50), ElementsAre(150), ElementsAre(200)));
}

TEST(EnlargedPicture, MixesEveryComponentByItself) {
  auto picture = std::make_unique<GivenRows>(2, 1, PixelLayout::kRgb,
                                             std::vector<Bytes>{{0, 255, 40, 100, 255, 0}});
  EXPECT_THAT(RowsOf(EnlargePicture(std::move(picture), 4, 1)),
              ElementsAre(ElementsAre(0, 255, 40, 25, 255, 30, 75, 255, 10, 100, 255, 0)));
}

TEST(EnlargedPicture, KeepsAnEvenColorWhateverTheSizes) {
  for (std::uint32_t side = 37; side <= 90; ++side) {
    for (const std::uint8_t value : {0, 1, 127, 254, 255}) {
      const auto rows =
          RowsOf(EnlargePicture(Gray(std::vector<Bytes>(37, Bytes(37, value))), side, side + 1));
      EXPECT_EQ(rows.size(), side + 1);
      EXPECT_THAT(rows, Each(Each(value))) << side;
    }
  }
}

TEST(EnlargedPicture, KeepsGradientsInOrder) {
  std::vector<Bytes> steps(16, Bytes(16));
  for (std::size_t y = 0; y < steps.size(); ++y) {
    for (std::size_t x = 0; x < steps.size(); ++x) {
      steps[y][x] = static_cast<std::uint8_t>(8 * x + 7 * y);
    }
  }
  for (std::uint32_t side = 16; side <= 64; ++side) {
    const auto rows = RowsOf(EnlargePicture(Gray(steps), side, side));
    EXPECT_EQ(rows[0][0], 0) << side;
    EXPECT_EQ(rows[side - 1][side - 1], 225) << side;
    for (std::uint32_t i = 0; i < side; ++i) {
      EXPECT_TRUE(std::is_sorted(rows[i].begin(), rows[i].end())) << side;
      EXPECT_LE(rows[i > 0 ? i - 1 : 0][i], rows[i][i]) << side;
    }
  }
}

TEST(EnlargedPicture, IsWhiteWhereThereAreNoRows) {
  const auto rows = RowsOf(EnlargePicture(Gray({{10}, {10}}, 4), 1, 8));
  EXPECT_THAT(rows[0], ElementsAre(10));
  EXPECT_THAT(rows[2], ElementsAre(10));
  EXPECT_THAT(rows[5], ElementsAre(255));
  EXPECT_THAT(rows[7], ElementsAre(255));
}

TEST(EnlargedPicture, OfTheSameSizeIsThePicture) {
  RowSourcePtr picture = Gray({{1, 2}});
  const RowSource* const address = picture.get();
  EXPECT_EQ(EnlargePicture(std::move(picture), 2, 1).get(), address);
}

}  // namespace
}  // namespace TarnixTools::engines
