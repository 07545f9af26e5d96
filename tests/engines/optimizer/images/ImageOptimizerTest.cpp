#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/images/ImageOptimizer.h"
#include "engines/optimizer/images/ScenePicture.h"
#include "engines/support/pictures/GivenRows.h"
#include "support/JpegImage.h"

namespace TarnixTools::engines::optimizer {
namespace {

using ::testing::AnyOf;

constexpr std::uint64_t kMuch = 100'000'000;

OptimizerSettings SettingsFor(float resolution_dpi, float threshold_dpi) {
  return {.continuous_codecs = kContinuousJpeg,
          .image_quality = 60,
          .resolution_dpi = resolution_dpi,
          .threshold_dpi = threshold_dpi};
}

ImageGoals GoalsFor(float resolution_dpi, float threshold_dpi) {
  return GoalsOf(SettingsFor(resolution_dpi, threshold_dpi), false);
}

// Of the picture, which outlives it, as large as it is at this resolution.
ImageTask TaskFor(const SamplePicture& picture, double dpi) {
  ImageTask task;
  task.encoded_bytes = kMuch;
  task.width = picture.width;
  task.height = picture.height;
  task.rows = RowsOf(picture);
  task.is_placed = true;
  task.width_points = picture.width * 72 / dpi;
  task.height_points = picture.height * 72 / dpi;
  return task;
}

ImageTask SizedTask(std::uint32_t width, std::uint32_t height, double dpi) {
  ImageTask task;
  task.width = width;
  task.height = height;
  task.is_placed = true;
  task.width_points = width * 72 / dpi;
  task.height_points = height * 72 / dpi;
  return task;
}

std::pair<std::uint32_t, std::uint32_t> Wanted(const ImageTask& task, const ImageGoals& goals) {
  const PictureSize size = WantedSize(task, goals);
  return {size.width, size.height};
}

SamplePicture GrayInRgb() {
  return PictureOf(300, 200, 3, [](int x, int y, int) { return testing::SceneColor(x, y)[1]; });
}

SamplePicture Drawing() {
  return PictureOf(300, 200, 3, [](int x, int y, int component) {
    return (x / 50 + y / 50 + component) % 3 / 2.0;
  });
}

SamplePicture Plain() {
  return PictureOf(300, 200, 3, [](int, int, int component) { return component / 2.0; });
}

TEST(WantedSize, IsTheImagesOwnUpToTheThreshold) {
  EXPECT_EQ(Wanted(SizedTask(600, 800, 150), GoalsFor(72, 150)), std::pair(600U, 800U));
  EXPECT_EQ(Wanted(SizedTask(600, 800, 90), GoalsFor(72, 150)), std::pair(600U, 800U));
}

TEST(WantedSize, IsNeverBelowTheResolutionThatIsAskedFor) {
  for (const float target : {50.0F, 72.0F, 150.0F, 200.0F, 300.0F}) {
    for (const double dpi : {310.0, 450.0, 1200.0}) {
      const PictureSize size = WantedSize(SizedTask(3000, 4000, dpi), GoalsFor(target, 300));
      EXPECT_GE(size.width, 3000 * static_cast<double>(target) / dpi) << target << " of " << dpi;
      EXPECT_GE(size.height, 4000 * static_cast<double>(target) / dpi) << target << " of " << dpi;
      EXPECT_LE(size.width, 3000U);
      EXPECT_LE(size.height, 4000U);
    }
  }
}

TEST(WantedSize, IsFarBelowThatOfAnImageOfManyPixels) {
  const PictureSize size = WantedSize(SizedTask(3000, 4000, 1200), GoalsFor(72, 110));
  EXPECT_LE(size.width, 3000U / 4);
  EXPECT_LE(size.height, 4000U / 4);
}

TEST(WantedSize, IsTheImagesOwnWhereNothingIsResampled) {
  const ImageGoals goals = GoalsFor(72, 110);
  ImageTask unplaced = SizedTask(600, 800, 600);
  unplaced.is_placed = false;
  EXPECT_EQ(Wanted(unplaced, goals), std::pair(600U, 800U));
  ImageTask fixed = SizedTask(600, 800, 600);
  fixed.keeps_samples = true;
  EXPECT_EQ(Wanted(fixed, goals), std::pair(600U, 800U));
  const ImageTask task = SizedTask(600, 800, 600);
  EXPECT_EQ(Wanted(task, GoalsFor(0, 110)), std::pair(600U, 800U));
  EXPECT_EQ(Wanted(task, GoalsFor(72, 0)), std::pair(600U, 800U));
}

TEST(WantedSize, IsTheResolutionForImagesThatHaveOneSize) {
  ImageTask task = SizedTask(600, 800, 600);
  task.has_one_size = true;
  EXPECT_EQ(Wanted(task, GoalsFor(72, 110)), std::pair(72U, 96U));
  EXPECT_EQ(Wanted(task, GoalsFor(200, 400)), std::pair(200U, 267U));
}

// Of an image that is stretched the side with fewer pixels per inch counts.
TEST(WantedSize, CountsTheLesserResolution) {
  ImageTask task = SizedTask(600, 800, 600);
  task.width_points *= 6;
  EXPECT_EQ(Wanted(task, GoalsFor(72, 110)), std::pair(600U, 800U));
}

TEST(WantedSize, IsAtLeastAPixel) {
  ImageTask task = SizedTask(5, 9000, 90'000);
  task.has_one_size = true;
  const PictureSize size = WantedSize(task, GoalsFor(72, 110));
  EXPECT_EQ(size.width, 1U);
  EXPECT_GE(size.height, 7U);
}

// What each pair of a resolution that is asked for and one that there is comes to.
TEST(WantedSize, IsThatOfItsRow) {
  const struct {
    double dpi;
    float resolution;
    float threshold;
    std::pair<std::uint32_t, std::uint32_t> wanted;
  } kRows[] = {
      {300, 150, 225, {300, 400}}, {300, 72, 110, {300, 400}},  {226, 150, 225, {600, 800}},
      {225, 150, 225, {600, 800}}, {254, 72, 110, {600, 800}},  {256, 72, 110, {352, 469}},
      {400, 200, 300, {300, 400}}, {339, 200, 300, {600, 800}}, {341, 200, 300, {352, 470}},
      {600, 300, 400, {300, 400}},
  };

  for (const auto& row : kRows) {
    EXPECT_EQ(Wanted(SizedTask(600, 800, row.dpi), GoalsFor(row.resolution, row.threshold)),
              row.wanted)
        << row.dpi << " dpi to " << row.resolution;
  }
}

// Text keeps more pixels.
TEST(WantedSize, OfScannedPagesIsThatOfTheirText) {
  const ImageGoals goals = GoalsFor(72, 110);
  const auto read = [&](double dpi, bool may_be_scan) {
    ImageTask task = SizedTask(600, 800, dpi);
    task.may_be_scan = may_be_scan;
    const PictureSize size = ReadSize(task, goals);
    return std::pair(size.width, size.height);
  };
  EXPECT_EQ(read(300, true), std::pair(600U, 800U));
  EXPECT_EQ(read(399, true), std::pair(600U, 800U));
  EXPECT_EQ(read(401, true), std::pair(449U, 599U));
  EXPECT_EQ(read(600, true), std::pair(300U, 400U));
  EXPECT_EQ(read(600, false), std::pair(150U, 200U));
}

TEST(ImageGoals, SayWhatTheLookIsWorth) {
  const auto worth = [](int quality, float dpi) {
    return GoalsOf({.image_quality = quality, .resolution_dpi = dpi}, false).worth_of_look;
  };
  EXPECT_EQ(worth(100, 0), 18);
  EXPECT_EQ(worth(75, 0), 18);
  EXPECT_EQ(worth(75, 150), 18);
  EXPECT_EQ(worth(75, 149), 9);
  EXPECT_EQ(worth(74, 0), 20);
  EXPECT_EQ(worth(74, 150), 20);
  EXPECT_EQ(worth(50, 150), 20);
  EXPECT_EQ(worth(50, 149), 9);
  EXPECT_EQ(worth(49, 0), 9);
  EXPECT_EQ(worth(49, 600), 9);
  EXPECT_EQ(worth(1, 72), 9);
  EXPECT_EQ(worth(-1, 72), 9);
}

TEST(ImageGoals, SayWhatAnImageCosts) {
  const ImageGoals goals = GoalsOf({.image_quality = 75}, false);
  EXPECT_DOUBLE_EQ(CostOf(1, 1, goals), 0);
  EXPECT_DOUBLE_EQ(CostOf(1000, 1, goals), std::log(1000));
  EXPECT_DOUBLE_EQ(CostOf(1, 0.5, goals), 9);
  EXPECT_DOUBLE_EQ(CostOf(1000, 0.9, goals), std::log(1000) + 18 * (1 - 0.9));
}

TEST(ImageGoals, KeepInksWhereTheyAreIntended) {
  const OptimizerSettings rgb = {.color_conversion = ColorConversion::kRgb};
  EXPECT_TRUE(GoalsOf(rgb, false).converts_to_rgb);
  EXPECT_FALSE(GoalsOf(rgb, true).converts_to_rgb);
  EXPECT_FALSE(GoalsOf({}, false).converts_to_rgb);
}

TEST(OptimizeImage, CodesPhotographsAsJpeg) {
  for (const int components : {1, 3}) {
    const SamplePicture picture = ScenePicture(components);
    ImageTask task = TaskFor(picture, 100);
    const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
    EXPECT_EQ(outcome.kind, ImageClass::kPhotograph);
    EXPECT_FALSE(outcome.left_alone);
    ASSERT_TRUE(outcome.coded);
    EXPECT_EQ(outcome.coded->filter, "DCTDecode");
    EXPECT_EQ(outcome.coded->width, picture.width);
    EXPECT_EQ(outcome.coded->height, picture.height);
    EXPECT_EQ(outcome.coded->color_space, "");
    EXPECT_LT(outcome.coded->data.size(), picture.samples.size() / 10);
  }
}

TEST(OptimizeImage, ResamplesNeverBelowTheResolution) {
  const SamplePicture picture = ScenePicture(3);
  for (const float target : {72.0F, 150.0F, 200.0F}) {
    ImageTask task = TaskFor(picture, 480);
    const ImageOutcome outcome = OptimizeImage(task, GoalsFor(target, 200));
    ASSERT_TRUE(outcome.coded);
    EXPECT_GE(outcome.coded->width, static_cast<unsigned>(target)) << target;
    EXPECT_LT(outcome.coded->width, 480U) << target;
    EXPECT_NEAR(outcome.coded->height, outcome.coded->width * 4.0 / 3, 1.0);
  }
}

TEST(OptimizeImage, KeepsTheSizeUpToTheThreshold) {
  const SamplePicture picture = ScenePicture(3);
  ImageTask task = TaskFor(picture, 200);
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(72, 200));
  ASSERT_TRUE(outcome.coded);
  EXPECT_EQ(outcome.coded->width, picture.width);
}

TEST(OptimizeImage, CodesNothingWithLossUnlessAllowed) {
  const SamplePicture picture = ScenePicture(3);
  ImageTask task = TaskFor(picture, 100);
  OptimizerSettings settings = SettingsFor(72, 110);
  settings.continuous_codecs = 0;
  const ImageOutcome outcome = OptimizeImage(task, GoalsOf(settings, false));
  ASSERT_TRUE(outcome.coded);
  EXPECT_EQ(outcome.coded->filter, "FlateDecode");
}

TEST(OptimizeImage, KeepsSamplesThatMeanMoreThanColors) {
  const SamplePicture picture = ScenePicture(3);
  ImageTask task = TaskFor(picture, 600);
  task.keeps_samples = true;
  task.may_lose_color = true;
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(72, 110));
  ASSERT_TRUE(outcome.coded);
  EXPECT_EQ(outcome.coded->filter, "FlateDecode");
  EXPECT_EQ(outcome.coded->width, picture.width);
  EXPECT_EQ(outcome.coded->height, picture.height);
  EXPECT_EQ(outcome.coded->bits, 8);
  EXPECT_EQ(outcome.coded->color_space, "");
  EXPECT_TRUE(outcome.coded->palette.empty());
}

TEST(OptimizeImage, TakesColorFromGrayWhereItMay) {
  const SamplePicture picture = GrayInRgb();
  ImageTask task = TaskFor(picture, 100);
  task.may_lose_color = true;
  const ImageOutcome gray = OptimizeImage(task, GoalsFor(150, 150));
  ASSERT_TRUE(gray.coded);
  EXPECT_EQ(gray.coded->color_space, "/DeviceGray");
  task = TaskFor(picture, 100);
  const ImageOutcome colored = OptimizeImage(task, GoalsFor(150, 150));
  ASSERT_TRUE(colored.coded);
  EXPECT_EQ(colored.coded->color_space, "");
  EXPECT_LT(gray.coded->data.size(), colored.coded->data.size());
}

TEST(OptimizeImage, CodesDrawingsWithoutLoss) {
  const SamplePicture picture = Drawing();
  for (const bool may_lose_color : {true, false}) {
    ImageTask task = TaskFor(picture, 100);
    task.may_lose_color = may_lose_color;
    const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
    EXPECT_EQ(outcome.kind, ImageClass::kFlatArt);
    ASSERT_TRUE(outcome.coded);
    EXPECT_EQ(outcome.coded->filter, "FlateDecode");
    EXPECT_EQ(outcome.coded->palette.empty(), !may_lose_color);
    EXPECT_LT(outcome.coded->data.size(), 1000U);
  }
}

TEST(OptimizeImage, MakesOnePixelOfOneColor) {
  const SamplePicture picture = Plain();
  ImageTask task = TaskFor(picture, 100);
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
  ASSERT_TRUE(outcome.coded);
  EXPECT_EQ(outcome.coded->width, 1U);
  EXPECT_EQ(outcome.coded->height, 1U);
}

TEST(OptimizeImage, KeepsTheSizeOfOneColorThatGoesWithAMask) {
  const SamplePicture picture = Plain();
  ImageTask task = TaskFor(picture, 100);
  task.has_one_size = true;
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
  ASSERT_TRUE(outcome.coded);
  EXPECT_EQ(outcome.coded->width, picture.width);
}

TEST(OptimizeImage, HasTheOneSizeThatIsWanted) {
  const SamplePicture picture = ScenePicture(3);
  ImageTask task = TaskFor(picture, 480);
  task.has_one_size = true;
  const ImageGoals goals = GoalsFor(72, 110);
  const PictureSize wanted = WantedSize(task, goals);
  const ImageOutcome outcome = OptimizeImage(task, goals);
  ASSERT_TRUE(outcome.coded);
  EXPECT_THAT(outcome.coded->width, AnyOf(wanted.width, picture.width));
  EXPECT_THAT(outcome.coded->height, AnyOf(wanted.height, picture.height));
}

TEST(OptimizeImage, SaysWhatColorsItsRowsAreIn) {
  const SamplePicture picture = ScenePicture(3);
  ImageTask task = TaskFor(picture, 100);
  task.color_space = "/DeviceRGB";
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
  ASSERT_TRUE(outcome.coded);
  EXPECT_EQ(outcome.coded->color_space, "/DeviceRGB");
  EXPECT_EQ(outcome.coded->decode, "");
}

TEST(OptimizeImage, LeavesAloneWhatIsSmallEnough) {
  const SamplePicture picture = ScenePicture(3);
  ImageTask task = TaskFor(picture, 100);
  task.encoded_bytes = 100;
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
  EXPECT_EQ(outcome.left_alone, LeftAlone::kSmallest);
  EXPECT_FALSE(outcome.coded);
}

TEST(OptimizeImage, LeavesAloneWhatEndsEarly) {
  const std::vector<testing::Bytes> rows(59, testing::Bytes(50, 100));
  ImageTask task;
  task.encoded_bytes = kMuch;
  task.width = 50;
  task.height = 60;
  task.rows = testing::Gray(rows, 60);
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
  EXPECT_EQ(outcome.left_alone, LeftAlone::kUnreadable);
  EXPECT_FALSE(outcome.coded);
}

TEST(OptimizeImage, KnowsSoftMasks) {
  const SamplePicture picture = ScenePicture(1);
  ImageTask task = TaskFor(picture, 100);
  task.is_soft_mask = true;
  EXPECT_EQ(OptimizeImage(task, GoalsFor(150, 150)).kind, ImageClass::kSoftMask);
}

TEST(OptimizeImage, TakesAnySize) {
  for (const testing::SceneSize size : {testing::SceneSize{1, 1}, testing::SceneSize{1, 700},
                                        testing::SceneSize{700, 1}, testing::SceneSize{15, 17}}) {
    const SamplePicture picture = ScenePicture(3, size);
    ImageTask task = TaskFor(picture, 600);
    const ImageOutcome outcome = OptimizeImage(task, GoalsFor(72, 110));
    ASSERT_TRUE(outcome.coded) << size.width << " x " << size.height;
    EXPECT_LE(outcome.coded->width, picture.width);
    EXPECT_LE(outcome.coded->height, picture.height);
  }
}

// JPEG that is coarser than the level is only packed, in its own colours.
TEST(OptimizeImage, LeavesPackedJpegInItsColors) {
  const SamplePicture picture = GrayInRgb();
  ImageTask task = TaskFor(picture, 100);
  const std::string samples(picture.samples.begin(), picture.samples.end());
  task.jpeg = testing::EncodeJpeg(static_cast<int>(picture.width), static_cast<int>(picture.height),
                                  3, samples, 20);
  task.encoded_bytes = task.jpeg.size();
  task.may_lose_color = true;
  const ImageOutcome outcome = OptimizeImage(task, GoalsFor(150, 150));
  ASSERT_TRUE(outcome.coded);
  EXPECT_TRUE(outcome.coded->keeps_filter);
  EXPECT_EQ(outcome.coded->color_space, "");
  EXPECT_FALSE(outcome.coded->decode);
}

TEST(OptimizeImage, GivesTheSameBytesAgain) {
  const SamplePicture picture = ScenePicture(3);
  const auto data = [&] {
    ImageTask task = TaskFor(picture, 480);
    return OptimizeImage(task, GoalsFor(72, 110)).coded->data;
  };
  EXPECT_EQ(data(), data());
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
