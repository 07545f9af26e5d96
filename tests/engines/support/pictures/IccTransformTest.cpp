#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/pictures/IccTransform.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using Rgb = std::array<std::uint8_t, 3>;

Rgb Converted(const IccTransform& transform, Rgb color) {
  Rgb rgb{};
  transform.Convert(color.data(), rgb.data(), 1);
  return rgb;
}

TEST(IccTransformTest, ConvertsByTheToneCurveOfTheProfile) {
  const auto dark = IccTransform::Make(testing::TestRgbProfile(3), 3);
  const auto light = IccTransform::Make(testing::TestRgbProfile(1), 3);
  ASSERT_NE(dark, nullptr);
  ASSERT_NE(light, nullptr);
  // 128/255 to the power of 3 and of 1, in sRGB's own curve.
  EXPECT_NEAR(Converted(*dark, {128, 128, 128})[1], 99, 2);
  EXPECT_NEAR(Converted(*light, {128, 128, 128})[1], 188, 2);
}

// By the name that its description has, in letters of one byte or of two.
TEST(IccTransformTest, KnowsSrgbByItsName) {
  const std::string wide("s\0R\0G\0B\0 \0I\0E\0C\0", 16);
  EXPECT_TRUE(IccTransform::IsSrgb("desc sRGB IEC61966-2.1"));
  EXPECT_TRUE(IccTransform::IsSrgb("mluc" + wide));
  EXPECT_TRUE(IccTransform::IsSrgb(std::string(1, '\0') + wide.substr(0, 15)));
  EXPECT_FALSE(IccTransform::IsSrgb(wide.substr(0, 14)));
  EXPECT_FALSE(IccTransform::IsSrgb("desc sRGB IEC6196"));
  EXPECT_FALSE(IccTransform::IsSrgb("Adobe RGB (1998)"));
  EXPECT_FALSE(IccTransform::IsSrgb(""));
}

TEST(IccTransformTest, ProfilesThatComeAgainShareOneTransform) {
  const auto first = IccTransform::Make(testing::TestRgbProfile(1.5), 3);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(IccTransform::Make(testing::TestRgbProfile(1.5), 3), first);
}

TEST(IccTransformTest, ProfilesInTurnKeepTheirColors) {
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 8; ++i) {  // more than are kept
      const double gamma = 1 + 0.25 * i;
      const auto transform = IccTransform::Make(testing::TestRgbProfile(gamma), 3);
      ASSERT_NE(transform, nullptr);
      const double linear = std::pow(100 / 255.0, gamma);
      const double encoded =
          linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
      EXPECT_NEAR(Converted(*transform, {100, 100, 100})[0], encoded * 255, 2) << gamma;
    }
  }
}

TEST(IccTransformTest, AProfileOfOtherComponentsIsRefused) {
  const std::string profile = testing::TestRgbProfile(2.2);
  ASSERT_NE(IccTransform::Make(profile, 3), nullptr);
  EXPECT_EQ(IccTransform::Make(profile, 4), nullptr);
  EXPECT_EQ(IccTransform::Make("not a profile", 3), nullptr);
}

}  // namespace
}  // namespace TarnixTools::engines
