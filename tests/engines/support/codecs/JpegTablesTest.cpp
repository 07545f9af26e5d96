#include <string>

#include <gtest/gtest.h>
#include <jpeglib.h>

#include "engines/support/codecs/JpegSamples.h"
#include "engines/support/codecs/JpegTables.h"

namespace TarnixTools::engines {
namespace {

using testing::Encoded;

JpegHeader HeaderOf(const std::string& jpeg) {
  return ReadJpegHeader(jpeg).value();
}

// Of a header of which nothing else is known.
JpegHeader HeaderWith(const JpegSteps& steps) {
  JpegHeader header;
  header.components = 1;
  header.steps[0] = steps;
  return header;
}

TEST(JpegTables, AreThoseOfLibjpeg) {
  for (int quality = 1; quality <= 100; ++quality) {
    const JpegHeader header = HeaderOf(Encoded({.quality = quality}));
    EXPECT_EQ(LibjpegSteps(JpegPlane::kLuminance, quality), header.steps[0]) << quality;
    EXPECT_EQ(LibjpegSteps(JpegPlane::kChrominance, quality), header.steps[1]) << quality;
  }
}

TEST(JpegTables, TellTheQualityOfLibjpeg) {
  for (int quality = 1; quality <= 100; ++quality) {
    const auto found = EstimateQuality(HeaderOf(Encoded({.quality = quality})));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->luminance, quality);
    EXPECT_NEAR(found->chrominance, quality, quality < 10 ? 2 : 0);  // where all steps are 255
    EXPECT_EQ(EstimateQuality(HeaderOf(Encoded({.space = JCS_GRAYSCALE})))->chrominance, 0);
  }
}

TEST(JpegTables, TellAboutWhatQualityTablesOfOthersStandFor) {
  JpegSteps flat;
  flat.fill(16);
  const auto quality = EstimateQuality(HeaderWith(flat));
  ASSERT_TRUE(quality);
  EXPECT_GT(quality->luminance, 60);
  EXPECT_LT(quality->luminance, 85);
  flat.fill(5000);
  EXPECT_EQ(EstimateQuality(HeaderWith(flat))->luminance, 1);
}

TEST(JpegTables, TellNothingWhereTheyAreMissing) {
  JpegHeader header = HeaderWith({});
  EXPECT_FALSE(EstimateQuality(header));
  EXPECT_FALSE(AreStepsAsCoarse(header, 100));
  header = HeaderWith(LibjpegSteps(JpegPlane::kLuminance, 50));
  EXPECT_TRUE(EstimateQuality(header));
  header.components = 3;
  header.component[1].table = 1;
  EXPECT_FALSE(EstimateQuality(header));
  header.component[0].table = 200;
  EXPECT_FALSE(AreStepsAsCoarse(header, 100));
}

TEST(JpegTables, TellTheQualityOfTheEncoder) {
  for (int quality = 5; quality <= 95; ++quality) {
    JpegHeader header = HeaderWith(EncoderSteps(JpegPlane::kLuminance, quality));
    header.components = 3;
    header.steps[1] = EncoderSteps(JpegPlane::kChrominance, quality);
    header.component[1].table = 1;
    EXPECT_EQ(EstimateQuality(header)->luminance, quality);
    EXPECT_EQ(EstimateQuality(header)->chrominance, quality);
  }
}

TEST(JpegTables, TellWhetherTheQualityIsNoHigher) {
  for (int quality = 1; quality <= 100; ++quality) {
    for (const JpegSteps& steps : {EncoderSteps(JpegPlane::kLuminance, quality),
                                   LibjpegSteps(JpegPlane::kLuminance, quality)}) {
      EXPECT_TRUE(AreStepsAsCoarse(HeaderWith(steps), quality)) << quality;
    }
  }
  for (int quality = 10; quality <= 90; ++quality) {
    for (const JpegSteps& steps : {EncoderSteps(JpegPlane::kLuminance, quality),
                                   LibjpegSteps(JpegPlane::kLuminance, quality)}) {
      EXPECT_TRUE(AreStepsAsCoarse(HeaderWith(steps), quality + 1)) << quality;
      EXPECT_FALSE(AreStepsAsCoarse(HeaderWith(steps), quality - 1)) << quality;
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines
