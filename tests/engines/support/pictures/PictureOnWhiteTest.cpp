#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/pictures/PictureOnWhite.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

// Rows that are given.
class GivenRows : public RowSource {
 public:
  GivenRows(PixelLayout layout, std::vector<Bytes> rows)
      : RowSource(static_cast<std::uint32_t>(rows[0].size() / BytesPerPixel(layout)),
                  static_cast<std::uint32_t>(rows.size()), layout),
        rows_(std::move(rows)) {}

  bool ReadRow(std::uint8_t* row) override {
    std::copy(rows_[next_].begin(), rows_[next_].end(), row);
    ++next_;
    return true;
  }

  std::uint64_t held_bytes() const override { return 7; }

 private:
  std::vector<Bytes> rows_;
  std::size_t next_ = 0;
};

RowSourcePtr Gray(std::vector<Bytes> rows) {
  return std::make_unique<GivenRows>(PixelLayout::kGray, std::move(rows));
}

std::vector<Bytes> RowsOf(const RowSourcePtr& picture) {
  std::vector<Bytes> rows(picture->height(), Bytes(picture->row_bytes()));
  for (Bytes& row : rows) {
    EXPECT_TRUE(picture->ReadRow(row.data()));
  }
  return rows;
}

TEST(PictureOnWhite, MixesByAlpha) {
  for (int value = 0; value < 256; ++value) {
    for (int alpha = 0; alpha < 256; ++alpha) {
      auto pixel = static_cast<std::uint8_t>(value);
      const auto part = static_cast<std::uint8_t>(alpha);
      PutOnWhite(&pixel, PixelLayout::kGray, &part, 1);
      ASSERT_EQ(pixel, std::lround((value * alpha + 255.0 * (255 - alpha)) / 255.0))
          << value << " " << alpha;
    }
  }
}

// What a program with a matte stores, and what is seen of it.
TEST(PictureOnWhite, UndoesAMatte) {
  const Rgb matte = {0, 100, 255};
  for (int value = 0; value < 256; value += 5) {
    for (int alpha = 0; alpha < 256; alpha += 3) {
      const auto part = static_cast<std::uint8_t>(alpha);
      std::uint8_t pixel[3];
      for (std::size_t c = 0; c < 3; ++c) {
        pixel[c] =
            static_cast<std::uint8_t>(std::lround(matte[c] + alpha / 255.0 * (value - matte[c])));
      }
      PutOnWhite(pixel, PixelLayout::kRgb, &part, 1, matte);
      for (const std::uint8_t seen : pixel) {
        ASSERT_NEAR(seen, value * alpha / 255.0 + 255 - alpha, 1.01) << value << " " << alpha;
      }
    }
  }
}

TEST(PictureOnWhite, KeepsWhatIsOpaqueAndPixelsTogether) {
  const auto picture = PictureOnWhite(
      std::make_unique<GivenRows>(PixelLayout::kRgb, std::vector<Bytes>{{1, 2, 3, 4, 5, 6}}),
      Gray({{255, 0}}));
  EXPECT_EQ(picture->held_bytes(), 14U);
  EXPECT_THAT(RowsOf(picture), ElementsAre(Bytes{1, 2, 3, 255, 255, 255}));
}

TEST(PictureOnWhite, TakesTheNearestSampleOfAnotherSize) {
  const std::vector<Bytes> black(4, Bytes(4, 0));
  EXPECT_THAT(RowsOf(PictureOnWhite(Gray(black), Gray({{255, 0}, {0, 255}}))),
              ElementsAre(Bytes{0, 0, 255, 255}, Bytes{0, 0, 255, 255}, Bytes{255, 255, 0, 0},
                          Bytes{255, 255, 0, 0}));
  const Bytes fine = {255, 255, 0, 255, 0, 255};
  EXPECT_THAT(RowsOf(PictureOnWhite(Gray({{0, 0}}), Gray({Bytes(6, 0), fine, Bytes(6, 0)}))),
              ElementsAre(Bytes{0, 255}));
}

}  // namespace
}  // namespace TarnixTools::engines
