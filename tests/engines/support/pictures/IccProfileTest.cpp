#include <string>

#include <gtest/gtest.h>

#include "engines/support/pictures/IccProfile.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::TestProfile;

TEST(IccProfile, TellsItsComponents) {
  EXPECT_EQ(ComponentsOfProfile(TestProfile("GRAY")), 1);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("RGB ")), 3);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("Lab ")), 3);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("CMYK")), 4);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("6CLR")), 0);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("RGB ").substr(0, 127)), 0);
}

TEST(IccProfile, IsUsableForItsComponentsOnly) {
  const std::string profile = TestProfile("RGB ");
  EXPECT_EQ(UsableProfile(profile + "what follows", 3), profile);
  EXPECT_EQ(UsableProfile(profile, 1), "");
  EXPECT_EQ(UsableProfile(TestProfile("Lab "), 3), "");
  EXPECT_EQ(UsableProfile(TestProfile("6CLR"), 0), "");
  EXPECT_EQ(UsableProfile(profile.substr(0, profile.size() - 1), 3), "");
}

}  // namespace
}  // namespace TarnixTools::engines
