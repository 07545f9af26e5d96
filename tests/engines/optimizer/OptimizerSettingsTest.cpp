#include <gtest/gtest.h>

#include "engines/optimizer/OptimizerSettings.h"

namespace TarnixTools::engines::optimizer {
namespace {

TEST(OptimizerSettings, OfTheDefaultProfileKeepObjectsAndSizes) {
  const auto settings = ProfileSettings(0);
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->color_conversion, ColorConversion::kNone);
  EXPECT_EQ(settings->bitonal_codecs, 0x80U);
  EXPECT_EQ(settings->continuous_codecs, 2U);
  EXPECT_EQ(settings->image_quality, 75);
  EXPECT_EQ(settings->resolution_dpi, 0);
  EXPECT_EQ(settings->threshold_dpi, 0);
  EXPECT_FALSE(settings->clips_images);
  EXPECT_FALSE(settings->optimizes_resources);
  EXPECT_FALSE(settings->removes_redundant_objects);
  EXPECT_FALSE(settings->removes_standard_fonts);
  EXPECT_FALSE(settings->subsets_fonts);
  EXPECT_FALSE(settings->drops_hints);
  EXPECT_FALSE(settings->reduces_color_complexity);
  EXPECT_EQ(settings->strip, 0U);
}

TEST(OptimizerSettings, OfTheImageProfileAreForTheScreen) {
  const auto settings = ProfileSettings(2);
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->color_conversion, ColorConversion::kNone);
  EXPECT_EQ(settings->bitonal_codecs, 0x80U);
  EXPECT_EQ(settings->continuous_codecs, 2U);
  EXPECT_EQ(settings->image_quality, 75);
  EXPECT_EQ(settings->resolution_dpi, 150);
  EXPECT_EQ(settings->threshold_dpi, 225);
  EXPECT_FALSE(settings->clips_images);
  EXPECT_TRUE(settings->optimizes_resources);
  EXPECT_TRUE(settings->removes_redundant_objects);
  EXPECT_FALSE(settings->removes_standard_fonts);
  EXPECT_TRUE(settings->subsets_fonts);
  EXPECT_TRUE(settings->drops_hints);
  EXPECT_TRUE(settings->reduces_color_complexity);
  EXPECT_EQ(settings->strip, 0U);
}

TEST(OptimizerSettings, AreNoneForOtherNumbers) {
  for (const int number : {-1, 1, 3}) {
    EXPECT_FALSE(ProfileSettings(number)) << number;
  }
}

TEST(OptimizerSettings, AreWithoutLossAtFirst) {
  const OptimizerSettings settings;
  EXPECT_EQ(settings.bitonal_codecs + settings.continuous_codecs, 0U);
  EXPECT_EQ(settings.image_quality, 75);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
