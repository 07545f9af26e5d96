#include <string>

#include <gtest/gtest.h>

#include "engines/support/pictures/IccProfile.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::Big32;
using testing::TestProfile;

// The profile with other bytes at a place.
std::string With(std::string profile, std::size_t at, const std::string& bytes) {
  return profile.replace(at, bytes.size(), bytes);
}

TEST(IccProfile, TellsItsComponents) {
  EXPECT_EQ(ComponentsOfProfile(TestProfile("GRAY")), 1);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("RGB ")), 3);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("Lab ")), 3);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("CMYK")), 4);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("6CLR")), 0);
  EXPECT_EQ(ComponentsOfProfile(TestProfile("RGB ").substr(0, 127)), 0);
}

TEST(IccProfile, IsUsableForItsOwnComponents) {
  const std::string rgb = TestProfile("RGB ");
  EXPECT_EQ(UsableProfile(rgb, 3), rgb);
  EXPECT_EQ(UsableProfile(rgb, 1), "");
  EXPECT_EQ(UsableProfile(rgb, 4), "");
  EXPECT_EQ(UsableProfile(rgb, 2), "");
  EXPECT_EQ(UsableProfile(TestProfile("Lab "), 3), "");
  EXPECT_EQ(UsableProfile(TestProfile("6CLR"), 0), "");
  EXPECT_NE(UsableProfile(TestProfile("GRAY"), 1), "");
  EXPECT_NE(UsableProfile(TestProfile("CMYK"), 4), "");
}

TEST(IccProfile, IsCutToItsSize) {
  const std::string rgb = TestProfile("RGB ");
  EXPECT_EQ(UsableProfile(rgb + "more", 3), rgb);
  EXPECT_EQ(UsableProfile(rgb.substr(0, rgb.size() - 1), 3), "");
  EXPECT_EQ(UsableProfile("", 3), "");
  EXPECT_EQ(UsableProfile(With(rgb, 0, Big32(131)), 3), "");
}

TEST(IccProfile, IsOfADevice) {
  const std::string rgb = TestProfile("RGB ");
  for (const char* kind : {"scnr", "prtr", "spac"}) {
    EXPECT_NE(UsableProfile(With(rgb, 12, kind), 3), "") << kind;
  }
  for (const char* kind : {"link", "abst", "nmcl"}) {
    EXPECT_EQ(UsableProfile(With(rgb, 12, kind), 3), "") << kind;
  }
  EXPECT_EQ(UsableProfile(With(rgb, 36, "pcsa"), 3), "");
}

TEST(IccProfile, HasItsTagsWithin) {
  const std::string rgb = TestProfile("RGB ");
  EXPECT_EQ(UsableProfile(With(rgb, 128, Big32(0)), 3), "");
  EXPECT_EQ(UsableProfile(With(rgb, 128, Big32(2)), 3), "");
  EXPECT_EQ(UsableProfile(With(rgb, 128, Big32(1001)), 3), "");
  EXPECT_EQ(UsableProfile(With(rgb, 136, Big32(145)), 3), "");
  EXPECT_EQ(UsableProfile(With(rgb, 140, Big32(1)), 3), "");
  EXPECT_EQ(UsableProfile(With(rgb, 136, Big32(0xFFFFFFFF)), 3), "");
}

}  // namespace
}  // namespace TarnixTools::engines
