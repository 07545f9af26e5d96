#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/jbig2/AdaptivePixel.h"
#include "support/ByteText.h"

namespace TarnixTools::engines::jbig2 {
namespace {

constexpr std::uint32_t kWidth = 256;
constexpr std::uint32_t kHeight = 200;
constexpr int kPeriod = 61;  // beyond any distance that is looked at

// Noise in which every pixel is like the one at that distance: one of so many is black.
std::vector<std::uint8_t> Repeating(int dx, int dy, unsigned part) {
  const std::string noise =
      testing::NoiseBytes(static_cast<std::size_t>(kPeriod) * kHeight, part, 3);
  std::vector<std::uint8_t> rows(std::size_t{kWidth / 8} * kHeight);
  for (int y = 0; y < static_cast<int>(kHeight); ++y) {
    for (int x = 0; x < static_cast<int>(kWidth); ++x) {
      const int row = dy == 0 ? y : y % -dy;
      const int column = dy == 0 ? x % -dx : (x + dx * (y / -dy) + 100 * kPeriod) % kPeriod;
      const auto at = static_cast<std::size_t>(row * kPeriod + column);
      if (noise[at] == 0) {
        rows[static_cast<std::size_t>(y) * (kWidth / 8) + static_cast<std::size_t>(x / 8)] |=
            static_cast<std::uint8_t>(0x80U >> x % 8);
      }
    }
  }
  return rows;
}

TemplatePixel ChosenFor(int dx, int dy, unsigned part = 9) {
  const std::vector<std::uint8_t> rows = Repeating(dx, dy, part);
  return ChooseAdaptivePixel(
      {.rows = rows.data(), .stride = kWidth / 8, .width = kWidth, .height = kHeight, .black = 1});
}

std::string Text(TemplatePixel pixel) {
  return std::to_string(pixel.x) + " " + std::to_string(pixel.y);
}

std::string Text(int x, int y) {
  return std::to_string(x) + " " + std::to_string(y);
}

TEST(AdaptivePixel, StandsWherePixelsAreAlike) {
  for (const int dy : {-1, -3, -23, -24}) {
    for (const int dx : {-24, -5, 5, 24}) {
      EXPECT_EQ(Text(ChosenFor(dx, dy)), Text(dx, dy));
    }
  }
  for (const auto& [dx, dy] :
       {std::pair(-4, -3), {0, -3}, {4, -24}, {-13, 0}, {-23, 0}, {-24, 0}}) {
    EXPECT_EQ(Text(ChosenFor(dx, dy)), Text(dx, dy));
  }
  EXPECT_EQ(Text(ChosenFor(-5, 0)), Text(-20, 0));  // of several that are alike, the furthest
}

// What is further away than it may stand tells nothing.
TEST(AdaptivePixel, StaysWhereItNominallyIs) {
  for (const auto& [dx, dy] : {std::pair(25, -1), {-25, -1}, {7, -25}, {-25, 0}, {30, -30}}) {
    EXPECT_EQ(Text(ChosenFor(dx, dy, 2)), Text(3, -1)) << dx << " " << dy;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::jbig2
