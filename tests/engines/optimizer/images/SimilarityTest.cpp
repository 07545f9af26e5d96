#include <algorithm>
#include <array>
#include <random>
#include <utility>
#include <vector>

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

// As the definition has it, window by window, in double precision.
double PlainSimilarity(const SamplePicture& first, const SamplePicture& second) {
  double total = 0;
  int windows = 0;
  for (std::uint32_t top = 0; top + 7 <= first.height; top += 2) {
    for (std::uint32_t left = 0; left + 7 <= first.width; left += 2) {
      double a = 0, b = 0, aa = 0, bb = 0, ab = 0;
      for (std::uint32_t y = top; y < top + 7; ++y) {
        for (std::uint32_t x = left; x < left + 7; ++x) {
          const double va = first.row(y)[x];
          const double vb = second.row(y)[x];
          a += va / 49;
          b += vb / 49;
          aa += va * va;
          bb += vb * vb;
          ab += va * vb;
        }
      }
      const double variances = (aa + bb - 49 * (a * a + b * b)) / 48;
      const double covariance = (ab - 49 * a * b) / 48;
      const double c1 = 0.01 * 255 * 0.01 * 255;
      const double c2 = 0.03 * 255 * 0.03 * 255;
      total += (2 * a * b + c1) * (2 * covariance + c2) / ((a * a + b * b + c1) * (variances + c2));
      ++windows;
    }
  }
  return total / windows;
}

TEST(Similarity, IsTheMeanOfThatOfAllWindows) {
  const auto slope = [](int x, int y, int) { return (x * 9 + y * 4) % 200 / 255.0; };
  const auto dark = [](int x, int y, int) { return (x * 5 + y * 3) % 7 / 255.0; };
  const auto squares = [](int x, int y, int) { return (x / 5 + y / 4) % 2 == 0 ? 0.05 : 0.9; };
  for (const auto& [width, height] :
       {std::pair{7, 7}, {8, 7}, {7, 8}, {9, 7}, {7, 9}, {9, 10}, {40, 31}, {41, 30}}) {
    SCOPED_TRACE(width * 100 + height);
    const std::array<SamplePicture, 3> pictures = {PictureOf(width, height, 1, slope),
                                                   PictureOf(width, height, 1, dark),
                                                   PictureOf(width, height, 1, squares)};
    for (const SamplePicture& first : pictures) {
      for (const SamplePicture& second : {pictures[0], pictures[1], Noisy(first, 20)}) {
        EXPECT_NEAR(StructuralSimilarity(first, second), PlainSimilarity(first, second), 1e-5);
      }
    }
  }
}

TEST(Similarity, IsSeenInMeansOfWholePixels) {
  const SamplePicture picture =
      PictureOf(10, 5, 1, [](int x, int y, int) { return (x * x + 11 * y) / 255.0; });
  const SamplePicture seen = SeenIn(picture, 4, 2);
  EXPECT_EQ(seen.width, 4U);
  EXPECT_EQ(seen.height, 2U);
  EXPECT_EQ(seen.samples, (Value{6, 15, 36, 70, 34, 43, 64, 98}));
  EXPECT_EQ(SeenIn(picture, 10, 5).samples, picture.samples);
  EXPECT_EQ(SeenIn(picture, 1, 1).samples, (Value{51}));
  EXPECT_EQ(SeenIn(picture, 10, 1).row(0)[3], 31);
  EXPECT_EQ(SeenIn(picture, 20, 2).samples.size(), 40U);
  EXPECT_EQ(SeenIn(picture, 4, 6).samples.size(), 24U);
}

TEST(Similarity, TakesTheLightnessOfEveryPixel) {
  const SamplePicture rgb =
      PictureOf(3, 2, 3, [](int x, int y, int c) { return (x * 50 + y * 90 + c * 30) / 255.0; });
  std::vector<int> expected;
  for (int i = 0; i < 6; ++i) {
    const int red = i % 3 * 50 + i / 3 * 90;
    expected.push_back(
        static_cast<int>((77 * red + 150 * (red + 30) + 29 * (red + 60) + 128) / 256));
  }
  const SamplePicture seen = LightnessOf(rgb, true);
  EXPECT_EQ(std::vector<int>(seen.samples.begin(), seen.samples.end()), expected);
  EXPECT_EQ(seen.components, 1);
  const SamplePicture inks =
      PictureOf(3, 2, 4, [](int x, int y, int c) { return (x * 30 + y * 60 + c * 20) / 255.0; });
  for (const bool is_inverted : {false, true}) {
    const SamplePicture light = LightnessOf(inks, is_inverted);
    for (int i = 0; i < 6; ++i) {
      const auto ink = [&](int c) {
        const int amount = i % 3 * 30 + i / 3 * 60 + c * 20;
        return is_inverted ? 255 - amount : amount;
      };
      const int paper = 255 - (77 * ink(0) + 150 * ink(1) + 29 * ink(2) + 128) / 256;
      EXPECT_EQ(int{light.samples[static_cast<std::size_t>(i)]}, paper * (255 - ink(3)) / 255);
    }
  }
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
