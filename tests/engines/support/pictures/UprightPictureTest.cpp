#include <cstdint>
#include <memory>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/pictures/GivenRows.h"
#include "engines/support/pictures/PictureLimits.h"
#include "engines/support/pictures/UprightPicture.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

// Gray pixels that count up: 0 1 2 in the first row of three.
class CountingRows : public RowSource {
 public:
  CountingRows(std::uint32_t width, std::uint32_t height)
      : RowSource(width, height, PixelLayout::kGray) {}

  bool ReadRow(std::uint8_t* row) override {
    for (std::uint32_t x = 0; x < width(); ++x) {
      row[x] = next_++;
    }
    return true;
  }

  std::uint64_t held_bytes() const override { return 0; }

 private:
  std::uint8_t next_ = 0;
};

std::vector<Bytes> Turned(int orientation) {
  const RowSourcePtr picture = MakeUpright(std::make_unique<CountingRows>(3, 2), orientation);
  std::vector<Bytes> rows(picture->height(), Bytes(picture->row_bytes()));
  for (Bytes& row : rows) {
    EXPECT_TRUE(picture->ReadRow(row.data()));
  }
  return rows;
}

TEST(UprightPicture, IsTurnedAndMirrored) {
  EXPECT_THAT(Turned(1), ElementsAre(Bytes{0, 1, 2}, Bytes{3, 4, 5}));
  EXPECT_THAT(Turned(2), ElementsAre(Bytes{2, 1, 0}, Bytes{5, 4, 3}));
  EXPECT_THAT(Turned(3), ElementsAre(Bytes{5, 4, 3}, Bytes{2, 1, 0}));
  EXPECT_THAT(Turned(4), ElementsAre(Bytes{3, 4, 5}, Bytes{0, 1, 2}));
  EXPECT_THAT(Turned(5), ElementsAre(Bytes{0, 3}, Bytes{1, 4}, Bytes{2, 5}));
  EXPECT_THAT(Turned(6), ElementsAre(Bytes{3, 0}, Bytes{4, 1}, Bytes{5, 2}));
  EXPECT_THAT(Turned(7), ElementsAre(Bytes{5, 2}, Bytes{4, 1}, Bytes{3, 0}));
  EXPECT_THAT(Turned(8), ElementsAre(Bytes{2, 5}, Bytes{1, 4}, Bytes{0, 3}));
}

TEST(UprightPicture, StaysAsItIsForOtherValues) {
  EXPECT_THAT(Turned(0), ElementsAre(Bytes{0, 1, 2}, Bytes{3, 4, 5}));
  EXPECT_THAT(Turned(9), ElementsAre(Bytes{0, 1, 2}, Bytes{3, 4, 5}));
}

TEST(UprightPicture, TellsThatRowsWereMissing) {
  const RowSourcePtr turned = MakeUpright(testing::Gray({testing::Bytes{1}}, 2), 3);
  std::uint8_t pixel = 0;
  EXPECT_FALSE(turned->ReadRow(&pixel));
  EXPECT_EQ(pixel, 255);
  EXPECT_EQ(turned->held_bytes(), 2U);
}

TEST(UprightPicture, HasABoundOnItsSize) {
  constexpr std::uint32_t kSide = 100'000;
  static_assert(std::uint64_t{kSide} * kSide > limits::kMaxTurnedBytes);
  EXPECT_THROW(MakeUpright(std::make_unique<CountingRows>(kSide, kSide), 3), pdf::Error);
}

}  // namespace
}  // namespace TarnixTools::engines
