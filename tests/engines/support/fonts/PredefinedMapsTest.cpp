#include <gtest/gtest.h>

#include "engines/support/fonts/PredefinedMaps.h"

namespace TarnixTools::engines::fonts {
namespace {

TEST(PredefinedMaps, HasThoseOfBothDirections) {
  for (const char* name : {"UniJIS-UTF16-H", "UniJIS-UTF16-V", "H", "V", "EUC-V", "90pv-RKSJ-H"}) {
    ASSERT_TRUE(PredefinedMapOf(name).has_value()) << name;
    EXPECT_EQ(PredefinedMapOf(name)->ordering, "Japan1") << name;
  }
  EXPECT_EQ(PredefinedMapOf("GBK2K-V")->supplement, 4);
}

TEST(PredefinedMaps, HasNoOthers) {
  for (const char* name : {"", "-H", "Identity-H", "UniJIS-UTF16", "KSCpc-EUC-V", "83pv-RKSJ-V",
                           "Adobe-Japan1-UCS2", "HH"}) {
    EXPECT_FALSE(PredefinedMapOf(name).has_value()) << name;
  }
  EXPECT_TRUE(IsIdentityMap("Identity-V"));
  EXPECT_FALSE(IsIdentityMap("Identity"));
  EXPECT_TRUE(IsKnownCollection("Adobe", "Korea1"));
  EXPECT_FALSE(IsKnownCollection("Adobe", "Identity"));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
