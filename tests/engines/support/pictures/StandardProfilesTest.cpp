#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/IccTransform.h"
#include "engines/support/pictures/StandardProfiles.h"

namespace TarnixTools::engines {
namespace {

TEST(StandardProfiles, AreProfiles) {
  EXPECT_EQ(UsableProfile(SrgbProfile(), 3), SrgbProfile());
  EXPECT_EQ(UsableProfile(GrayProfile(), 1), GrayProfile());
  EXPECT_LT(SrgbProfile().size(), 600U);
  EXPECT_LT(GrayProfile().size(), 500U);
}

// Little CMS takes its colours for what they are.
TEST(StandardProfiles, LeaveColoursAsTheyAre) {
  const auto transform = IccTransform::Make(SrgbProfile(), 3);
  ASSERT_NE(transform, nullptr);
  std::vector<std::uint8_t> colors;
  for (int i = 0; i < 256; ++i) {
    for (const int component : {i, 255 - i, i * 7 % 256}) {
      colors.push_back(static_cast<std::uint8_t>(component));
    }
  }
  std::vector<std::uint8_t> seen(colors.size());
  transform->Convert(colors.data(), seen.data(), 256);
  for (std::size_t i = 0; i < colors.size(); ++i) {
    EXPECT_LE(std::abs(seen[i] - colors[i]), 1) << i;
  }
}

}  // namespace
}  // namespace TarnixTools::engines
