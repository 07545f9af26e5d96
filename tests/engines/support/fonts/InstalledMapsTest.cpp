#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/InstalledMaps.h"

namespace TarnixTools::engines::fonts {
namespace {

TEST(InstalledMaps, AreNoOthersThanThoseOfTheStandard) {
  EXPECT_EQ(InstalledMap("Identity-H"), nullptr);
  EXPECT_EQ(InstalledMap("../../../etc/passwd"), nullptr);
  EXPECT_EQ(InstalledMap(""), nullptr);
}

TEST(InstalledMaps, HaveTheIdentifiersOfCodes) {
  const auto map = InstalledMap("90ms-RKSJ-H");
  if (map == nullptr) {
    GTEST_SKIP() << "needs the package poppler-data";
  }
  std::vector<std::uint32_t> codes;
  EXPECT_TRUE(map->Split("A\x88\x9F\xB1", codes));
  EXPECT_EQ(codes, (std::vector<std::uint32_t>{0x41, 0x889F, 0xB1}));
  EXPECT_EQ(map->CidOf(0x889F), 1125U);
  EXPECT_EQ(InstalledMap("90ms-RKSJ-H"), map) << "read once";
}

TEST(InstalledMaps, OfVerticalTextBuildOnTheOther) {
  const auto map = InstalledMap("UniGB-UCS2-V");
  if (map == nullptr) {
    GTEST_SKIP() << "needs the package poppler-data";
  }
  const auto horizontal = InstalledMap("UniGB-UCS2-H");
  ASSERT_NE(horizontal, nullptr);
  EXPECT_EQ(map->CidOf(0x4E00), horizontal->CidOf(0x4E00));
  EXPECT_NE(map->CidOf(0x3001), horizontal->CidOf(0x3001));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
