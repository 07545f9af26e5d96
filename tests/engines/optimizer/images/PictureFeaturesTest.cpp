#include <gtest/gtest.h>

#include "engines/optimizer/images/PictureFeatures.h"
#include "engines/optimizer/images/ScenePicture.h"

namespace TarnixTools::engines::optimizer {
namespace {

// Of so many colours, none beside its like.
SamplePicture Colorful(int components, int colors) {
  return PictureOf(64, 64, components, [=](int x, int y, int component) {
    const int color = (x + 64 * y) % colors;
    return (component == 0 ? color % 256 : color / 256) / 255.0;
  });
}

TEST(PictureFeatures, OfAPhotograph) {
  for (const int components : {1, 3, 4}) {
    const PictureFeatures features = FeaturesOf(ScenePicture(components));
    EXPECT_FALSE(features.is_gray) << components;
    EXPECT_FALSE(features.is_one_color) << components;
    EXPECT_FALSE(features.has_few_colors) << components;
    EXPECT_LT(features.repeated_part, 0.5) << components;
    EXPECT_FALSE(features.is_flat()) << components;
  }
}

TEST(PictureFeatures, OfOneColor) {
  for (const int components : {1, 3, 4}) {
    const PictureFeatures features =
        FeaturesOf(PictureOf(8, 5, components, [](int, int, int c) { return c / 4.0; }));
    EXPECT_TRUE(features.is_one_color) << components;
    EXPECT_TRUE(features.is_flat()) << components;
    EXPECT_DOUBLE_EQ(features.repeated_part, 7.0 / 8) << components;
  }
}

TEST(PictureFeatures, OfOnePixel) {
  const PictureFeatures features =
      FeaturesOf(PictureOf(1, 1, 4, [](int, int, int) { return 1.0; }));
  EXPECT_TRUE(features.is_one_color);
  EXPECT_EQ(features.repeated_part, 0);
}

TEST(PictureFeatures, AreNotOfOneColorForOnePixel) {
  const auto last = [](int x, int y, int) { return x == 7 && y == 4 ? 1.0 : 0.0; };
  EXPECT_FALSE(FeaturesOf(PictureOf(8, 5, 1, last)).is_one_color);
  EXPECT_FALSE(FeaturesOf(PictureOf(8, 5, 3, last)).is_one_color);
}

TEST(PictureFeatures, CountColors) {
  EXPECT_TRUE(FeaturesOf(Colorful(3, 256)).has_few_colors);
  EXPECT_FALSE(FeaturesOf(Colorful(3, 257)).has_few_colors);
  EXPECT_TRUE(FeaturesOf(Colorful(4, 256)).has_few_colors);
  EXPECT_TRUE(FeaturesOf(Colorful(1, 32)).has_few_colors);
  EXPECT_FALSE(FeaturesOf(Colorful(1, 33)).has_few_colors);
}

TEST(PictureFeatures, CallPicturesThatRepeatThemselvesFlat) {
  const auto stripes = [](int width) {
    return PictureOf(120, 60, 3, [=](int x, int y, int component) {
      return component == 0 ? (x / width) / 120.0 : y / 60.0;
    });
  };
  EXPECT_TRUE(FeaturesOf(stripes(3)).is_flat());
  EXPECT_FALSE(FeaturesOf(stripes(3)).has_few_colors);
  EXPECT_FALSE(FeaturesOf(stripes(1)).is_flat());
}

TEST(PictureFeatures, SeeGrayInRgb) {
  const auto shaded = [](int by) {
    return PictureOf(50, 50, 3, [=](int x, int y, int component) {
      return (2 * x + 2 * y + (component == 1 ? by : 0)) / 255.0;
    });
  };
  EXPECT_TRUE(FeaturesOf(shaded(0)).is_gray);
  EXPECT_TRUE(FeaturesOf(shaded(2)).is_gray);
  EXPECT_FALSE(FeaturesOf(shaded(3)).is_gray);
}

TEST(PictureFeatures, SeeTheOnePixelThatHasAColor) {
  SamplePicture picture = PictureOf(50, 50, 3, [](int x, int, int) { return x / 50.0; });
  EXPECT_TRUE(FeaturesOf(picture).is_gray);
  picture.samples.back() = static_cast<std::uint8_t>(picture.samples.back() - 9);
  EXPECT_FALSE(FeaturesOf(picture).is_gray);
}

TEST(PictureFeatures, DoNotCallGrayOrInksGrayInRgb) {
  const auto even = [](int x, int, int) { return x / 50.0; };
  EXPECT_FALSE(FeaturesOf(PictureOf(50, 50, 1, even)).is_gray);
  EXPECT_FALSE(FeaturesOf(PictureOf(50, 50, 4, even)).is_gray);
}

TEST(GrayOf, KeepsWhatEveryPixelIs) {
  SamplePicture picture = PictureOf(50, 40, 3, [](int x, int y, int) { return (x + y) / 90.0; });
  picture.is_whole = false;
  const SamplePicture gray = GrayOf(picture);
  EXPECT_EQ(gray.width, 50U);
  EXPECT_EQ(gray.height, 40U);
  EXPECT_EQ(gray.components, 1);
  EXPECT_FALSE(gray.is_whole);
  EXPECT_EQ(gray.samples,
            PictureOf(50, 40, 1, [](int x, int y, int) { return (x + y) / 90.0; }).samples);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
