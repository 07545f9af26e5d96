#include <algorithm>
#include <array>
#include <cstdlib>

#include <gtest/gtest.h>

#include "engines/optimizer/images/ScenePicture.h"
#include "engines/optimizer/scans/InkShapes.h"
#include "engines/optimizer/scans/PaperFill.h"
#include "engines/optimizer/scans/ScanLayers.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::ScanColor;
using testing::ScanInk;
using testing::ScanInkAt;

constexpr double kDpi = 300;
constexpr int kWidth = 400;
constexpr int kHeight = 300;
constexpr PictureSize kWhole = {kWidth, kHeight};

SamplePicture ScannedPage(int components = 3) {
  return PictureOf(kWidth, kHeight, components, [&](int x, int y, int component) {
    return ScanColor(x, y).at(components == 1 ? 1 : static_cast<std::size_t>(component));
  });
}

// Squares with soft borders, as in photographs.
SamplePicture Blobs() {
  return PictureOf(kWidth, kHeight, 1, [](int x, int y, int) {
    const int away = std::max(std::abs(x % 40 - 20), std::abs(y % 40 - 20));
    return 0.1 + 0.045 * away;
  });
}

bool HasInk(const ScanLayers& layers, const InkLayer& ink, int x, int y) {
  const auto at = static_cast<std::size_t>(x);
  return (ink.bits[static_cast<std::size_t>(y) * layers.stride + at / 8] >> (7 - at % 8) & 1) != 0;
}

TEST(ScanLayers, HaveTheVeryPixelsOfEachInk) {
  const std::optional<ScanLayers> layers = TakeApart(ScannedPage(), kDpi, kWhole);
  ASSERT_TRUE(layers);
  ASSERT_EQ(layers->inks.size(), 2U);
  int wrong = 0;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const bool is_first = HasInk(*layers, layers->inks[0], x, y);
      const bool is_second = HasInk(*layers, layers->inks[1], x, y);
      const ScanInk ink = ScanInkAt(x, y);
      wrong += is_first != (ink == ScanInk::kBlack) || is_second != (ink == ScanInk::kRed) ? 1 : 0;
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST(ScanLayers, HavePaperWhereInkHasBeen) {
  for (const int components : {1, 3}) {
    const std::optional<ScanLayers> layers = TakeApart(ScannedPage(components), kDpi, {200, 150});
    ASSERT_TRUE(layers);
    EXPECT_EQ(layers->background.width, 200U);
    EXPECT_EQ(layers->background.height, 150U);
    EXPECT_EQ(layers->background.components, components);
    const auto& samples = layers->background.samples;
    EXPECT_GT(*std::min_element(samples.begin(), samples.end()), 200);
  }
}

TEST(ScanLayers, LeaveWhatIsNoTextAsItIs) {
  EXPECT_FALSE(TakeApart(Blobs(), kDpi, kWhole));
  const SamplePicture empty = PictureOf(kWidth, kHeight, 1, [](int, int, int) { return 0.9; });
  EXPECT_FALSE(TakeApart(empty, kDpi, kWhole));
}

// Sharp squares are print; between soft ones they are a part of a photograph.
TEST(ScanLayers, LeavePhotographsWithAFewSharpEdges) {
  const auto is_square = [](int x, int y) { return x % 40 < 4 && y % 40 < 4; };
  const SamplePicture print = PictureOf(
      kWidth, kHeight, 1, [&](int x, int y, int) { return is_square(x, y) ? 0.1 : 0.95; });
  EXPECT_TRUE(TakeApart(print, kDpi, kWhole));
  SamplePicture photograph = Blobs();
  for (std::size_t i = 0; i < photograph.samples.size(); ++i) {
    const auto at = static_cast<int>(i);
    if (is_square(at % kWidth, at / kWidth)) {
      photograph.samples[i] = 25;
    }
  }
  EXPECT_FALSE(TakeApart(photograph, kDpi, kWhole));
}

TEST(ScanLayers, TakeAFewInksAtMost) {
  const SamplePicture page = PictureOf(kWidth, kHeight, 3, [](int x, int y, int component) {
    if (ScanInkAt(x, y) == ScanInk::kNone) {
      return 0.95;
    }
    return static_cast<double>((x / 18 * 5 + y / 30 * 3 + component * 7) % 11) / 16;
  });
  const std::optional<ScanLayers> layers = TakeApart(page, kDpi, kWhole);
  ASSERT_TRUE(layers);
  EXPECT_GT(layers->inks.size(), 2U);
  EXPECT_LE(layers->inks.size(), 6U);
}

// A red line runs through all letters of a line.
TEST(ScanLayers, TellInksApartThatTouch) {
  const auto is_line = [](int y) { return y % 30 == 15 || y % 30 == 16; };
  const SamplePicture page = PictureOf(kWidth, kHeight, 3, [&](int x, int y, int component) {
    constexpr std::array<double, 3> kRed = {0.8, 0.1, 0.1};
    const auto at = static_cast<std::size_t>(component);
    return is_line(y) && y < 90 && x >= 36 ? kRed.at(at) : ScanColor(x, y).at(at);
  });
  const std::optional<ScanLayers> layers = TakeApart(page, kDpi, kWhole);
  ASSERT_TRUE(layers);
  ASSERT_EQ(layers->inks.size(), 2U);
  int wrong = 0;
  for (int y = 0; y < 90; ++y) {
    for (int x = 36; x < kWidth - 10; ++x) {
      const bool is_red = HasInk(*layers, layers->inks[0], x, y);
      const bool is_black = HasInk(*layers, layers->inks[1], x, y);
      wrong += is_red != is_line(y) ? 1 : 0;
      wrong += is_black != (!is_line(y) && ScanInkAt(x, y) == ScanInk::kBlack) ? 1 : 0;
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST(InkShapes, AreWhatTouches) {
  const SamplePicture page = PictureOf(100, 60, 1, [](int x, int y, int) {
    const bool is_cross = (x >= 20 && x < 40 && y == 30) || (x == 30 && y >= 20 && y < 40);
    const bool is_corner = (x == 40 && y == 31);
    const bool is_other = x >= 60 && x < 64 && y >= 20 && y < 40;
    return is_cross || is_corner || is_other ? 0.1 : 0.9;
  });
  const InkShapes ink = FindInk(page, page, kDpi);
  ASSERT_EQ(ink.shapes.size(), 2U);
  EXPECT_EQ(ink.shapes[0].pixels, 40U);
  EXPECT_EQ(ink.shapes[1].pixels, 80U);
  EXPECT_EQ(ink.shapes[1].core_pixels, 36U);
  EXPECT_EQ(ink.shapes[1].edges, 48U);
  EXPECT_EQ(ink.shapes[1].soft_edges, 0U);
  EXPECT_TRUE(ink.shapes[1].IsPrinted(kDpi));
  EXPECT_FALSE(ink.shapes[1].IsPrinted(4 * kDpi)) << "a speck";
}

TEST(InkShapes, AreNotLookedForWhereMostIsDark) {
  for (const int dark : {8, 12}) {
    const SamplePicture bars =
        PictureOf(kWidth, kHeight, 1, [&](int x, int, int) { return x % 20 < dark ? 0.1 : 0.9; });
    EXPECT_EQ(FindInk(bars, bars, kDpi).shapes.empty(), dark == 12);
  }
}

TEST(PaperFill, TakesWhatIsAround) {
  SamplePicture page = PictureOf(64, 64, 1, [](int x, int, int) { return x < 32 ? 0.8 : 0.4; });
  page.samples[10 * 64 + 10] = 0;
  PaperFill paper(page, 1);
  paper.Cover(10, 10, 11);
  const SamplePicture filled = paper.Fill({64, 64});
  EXPECT_EQ(filled.row(10)[10], 204);
  EXPECT_EQ(filled.row(10)[40], 102);
}

TEST(PaperFill, IsWhiteWithoutPaper) {
  const SamplePicture page = PictureOf(8, 8, 3, [](int, int, int) { return 0.2; });
  PaperFill paper(page, 1);
  for (std::uint32_t y = 0; y < 8; ++y) {
    paper.Cover(y, 0, 8);
  }
  const SamplePicture filled = paper.Fill({4, 4});
  EXPECT_EQ(std::count(filled.samples.begin(), filled.samples.end(), 255), 48);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
