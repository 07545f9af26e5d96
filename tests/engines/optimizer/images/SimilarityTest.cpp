#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "engines/optimizer/images/ScenePicture.h"
#include "engines/optimizer/images/Similarity.h"

namespace TarnixTools::engines::optimizer {
namespace {

SamplePicture Noisy(SamplePicture picture, int most) {
  std::mt19937 random(1);
  for (std::uint8_t& sample : picture.samples) {
    const int noise = static_cast<int>(random() % static_cast<unsigned>(2 * most + 1)) - most;
    sample = static_cast<std::uint8_t>(std::clamp(sample + noise, 0, 255));
  }
  return picture;
}

SamplePicture Blurred(const SamplePicture& picture, std::uint32_t times) {
  return Scaled(Scaled(picture, picture.width / times, picture.height / times), picture.width,
                picture.height);
}

SamplePicture Turned(SamplePicture picture) {
  for (std::uint8_t& sample : picture.samples) {
    sample = static_cast<std::uint8_t>(255 - sample);
  }
  return picture;
}

SamplePicture Brighter(SamplePicture picture, int by) {
  for (std::uint8_t& sample : picture.samples) {
    sample = static_cast<std::uint8_t>(std::min(sample + by, 255));
  }
  return picture;
}

double SimilarityTo(const SamplePicture& first, const SamplePicture& second) {
  return Look(first, false, first.width, first.height).SimilarityOf(second);
}

std::vector<std::uint8_t> LightnessOfPixel(std::vector<std::uint8_t> pixel,
                                           bool is_inverted = false) {
  SamplePicture picture;
  picture.width = 1;
  picture.height = 1;
  picture.components = static_cast<int>(pixel.size());
  picture.samples = std::move(pixel);
  return LightnessOf(picture, is_inverted).samples;
}

using Value = std::vector<std::uint8_t>;

TEST(Similarity, OfEqualPicturesIsOne) {
  for (const int components : {1, 3, 4}) {
    const SamplePicture picture = ScenePicture(components);
    EXPECT_NEAR(SimilarityTo(picture, picture), 1, 1e-4) << components;
    EXPECT_NEAR(Look(picture, true, 100, 90).SimilarityOf(picture), 1, 1e-4) << components;
  }
}

TEST(Similarity, FallsWithNoise) {
  const SamplePicture picture = ScenePicture(1);
  const double little = SimilarityTo(picture, Noisy(picture, 4));
  const double much = SimilarityTo(picture, Noisy(picture, 40));
  EXPECT_LT(little, 0.999);
  EXPECT_LT(much, little);
  EXPECT_LT(much, 0.5);
}

TEST(Similarity, FallsWithBlur) {
  const SamplePicture picture = ScenePicture(3);
  const double little = SimilarityTo(picture, Blurred(picture, 2));
  const double much = SimilarityTo(picture, Blurred(picture, 16));
  EXPECT_LT(little, 0.999);
  EXPECT_LT(much, little);
}

// Steps that nobody sees, beside the loss of all structure.
TEST(Similarity, MindsLightnessLessThanStructure) {
  const SamplePicture picture = ScenePicture(1);
  EXPECT_GT(SimilarityTo(picture, Brighter(picture, 3)), 0.99);
  EXPECT_LT(SimilarityTo(picture, Turned(picture)), 0.5);
}

TEST(Similarity, IsThatOfTheSizeInWhichAPictureIsSeen) {
  const SamplePicture picture = ScenePicture(1);
  const SamplePicture half = Scaled(picture, picture.width / 2, picture.height / 2);
  const SamplePicture quarter = Scaled(picture, picture.width / 4, picture.height / 4);
  const Look whole(picture, false, picture.width, picture.height);
  EXPECT_LT(whole.SimilarityOf(quarter), whole.SimilarityOf(half));
  EXPECT_LT(whole.SimilarityOf(half), 0.999);
  const Look small(picture, false, picture.width / 4, picture.height / 4);
  EXPECT_GT(small.SimilarityOf(half), whole.SimilarityOf(half));
  EXPECT_GT(small.SimilarityOf(quarter), 0.99);
}

TEST(Similarity, IsToldOfPicturesOfAnySize) {
  const SamplePicture picture = ScenePicture(3, {123, 77});
  const Look larger(picture, false, 300, 211);
  EXPECT_EQ(larger.lightness().width, 300U);
  EXPECT_EQ(larger.lightness().height, 211U);
  EXPECT_NEAR(larger.SimilarityOf(picture), 1, 1e-4);
  const Look mixed(picture, false, 200, 30);
  EXPECT_NEAR(mixed.SimilarityOf(picture), 1, 1e-4);
  EXPECT_GT(mixed.SimilarityOf(Scaled(picture, 1, 1)), -1);
}

TEST(Similarity, OfPicturesSmallerThanAWindow) {
  const SamplePicture picture = ScenePicture(1, {6, 30});
  EXPECT_EQ(SimilarityTo(picture, picture), 1);
  EXPECT_EQ(SimilarityTo(picture, Turned(picture)), 0);
}

TEST(Similarity, OfOneWindow) {
  const SamplePicture picture = ScenePicture(1, {7, 7});
  EXPECT_NEAR(SimilarityTo(picture, picture), 1, 1e-4);
}

TEST(Similarity, OfOneColor) {
  const auto plain = [](double value) {
    return PictureOf(40, 40, 1, [=](int, int, int) { return value; });
  };
  EXPECT_NEAR(SimilarityTo(plain(1), plain(1)), 1, 1e-4);
  EXPECT_LT(SimilarityTo(plain(1), plain(0)), 0.01);
}

TEST(Similarity, DoesNotSeeColorsOfOneLightness) {
  const auto of = [](double red, double blue) {
    return PictureOf(20, 20, 3, [=](int, int, int component) {
      return component == 0 ? red : component == 2 ? blue : 0.5;
    });
  };
  EXPECT_GT(SimilarityTo(of(0.2, 0.2 + 77.0 / 29 * 0.2), of(0.4, 0.2)), 0.99);
}

TEST(Lightness, OfGrayIsTheGray) {
  EXPECT_EQ(LightnessOfPixel({90}), Value{90});
}

TEST(Lightness, OfRgbIsMostlyGreen) {
  EXPECT_EQ(LightnessOfPixel({255, 255, 255}), Value{255});
  EXPECT_EQ(LightnessOfPixel({0, 0, 0}), Value{0});
  EXPECT_EQ(LightnessOfPixel({90, 90, 90}), Value{90});
  EXPECT_GT(LightnessOfPixel({0, 255, 0}), LightnessOfPixel({255, 0, 0}));
  EXPECT_GT(LightnessOfPixel({255, 0, 0}), LightnessOfPixel({0, 0, 255}));
}

TEST(Lightness, OfInksIsWhatTheyLeaveOfThePaper) {
  EXPECT_EQ(LightnessOfPixel({0, 0, 0, 0}), Value{255});
  EXPECT_EQ(LightnessOfPixel({0, 0, 0, 255}), Value{0});
  EXPECT_EQ(LightnessOfPixel({255, 255, 255, 0}), Value{0});
  EXPECT_GT(LightnessOfPixel({0, 0, 255, 0}), LightnessOfPixel({0, 255, 0, 0}));
  EXPECT_EQ(LightnessOfPixel({255, 255, 255, 255}, true), Value{255});
  EXPECT_EQ(LightnessOfPixel({200, 100, 50, 230}, true), LightnessOfPixel({55, 155, 205, 25}));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
