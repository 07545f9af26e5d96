#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/CodeMap.h"

namespace TarnixTools::engines::fonts {
namespace {

using Codes = std::vector<std::uint32_t>;

const std::string kSpace = "1 begincodespacerange <0000> <FFFF> endcodespacerange\n";

TEST(CodeMap, SplitsIntoBytesOrPairs) {
  Codes codes;
  EXPECT_TRUE(CodeMap::OneByte().Split("A\xFF", codes));
  EXPECT_TRUE(CodeMap::Identity().Split("\x01\x02", codes));
  EXPECT_EQ(codes, (Codes{0x41, 0xFF, 0x102}));
  EXPECT_FALSE(CodeMap::Identity().Split("abc", codes));
  EXPECT_EQ(CodeMap::Identity().CidOf(0x102), 0x102U);
}

TEST(CodeMap, ReadsRangesAndCharacters) {
  const auto map =
      CodeMap::Read("/CIDInit /ProcSet findresource begin 12 dict begin begincmap\n" + kSpace +
                    "2 begincidrange <0010> <001F> 100 <0000> <0003> 7 endcidrange\n"
                    "1 begincidchar <0020> 500 endcidchar endcmap");
  ASSERT_TRUE(map);
  EXPECT_EQ(map->code_bytes(), 2);
  EXPECT_EQ(map->CidOf(0x02), 9U);
  EXPECT_EQ(map->CidOf(0x1F), 115U);
  EXPECT_EQ(map->CidOf(0x20), 500U);
  EXPECT_EQ(map->CidOf(0x04), 0U);
  EXPECT_EQ(map->CidOf(0x21), 0U);
}

TEST(CodeMap, RefusesCodesThatItDoesNotHave) {
  const auto map = CodeMap::Read(
      "2 begincodespacerange <0020> <01FF> <8140> <9FFC> endcodespacerange "
      "1 begincidrange <0020> <007E> 1 endcidrange");
  ASSERT_TRUE(map);
  Codes codes;
  EXPECT_TRUE(map->Split("\x01\x20\x81\x40", codes));
  EXPECT_FALSE(map->Split(std::string("\x00\x1F", 2), codes));
  EXPECT_FALSE(map->Split("\x81\x30", codes));
}

TEST(CodeMap, IsUnknownWhereReadersMayDiffer) {
  EXPECT_FALSE(CodeMap::Read(""));
  EXPECT_FALSE(CodeMap::Read("/Identity-H usecmap " + kSpace));
  EXPECT_FALSE(CodeMap::Read("2 begincodespacerange <00> <80> <8140> <9FFC> endcodespacerange"));
  EXPECT_FALSE(CodeMap::Read("1 begincodespacerange <0000000000> <FFFFFFFFFF> endcodespacerange"));
  EXPECT_FALSE(
      CodeMap::Read(kSpace + "2 begincidrange <0000> <0009> 1 <0005> <0010> 7 endcidrange"));
  EXPECT_FALSE(CodeMap::Read(kSpace + "1 begincidrange <0009> <0000> 1 endcidrange"));
  EXPECT_FALSE(CodeMap::Read(kSpace + "1 begincidrange <09> <0A> 1 endcidrange"));
  EXPECT_FALSE(CodeMap::Read(kSpace + "1 begincidrange <0009> <000A> endcidrange"));
}

TEST(CodeMap, HasCodesOfSeveralLengthsWhereThatIsAllowed) {
  const auto map = CodeMap::ReadAny(
      "2 begincodespacerange <00> <80> <8140> <9FFC> endcodespacerange "
      "2 begincidrange <20> <7E> 1 <8140> <817E> 633 endcidrange",
      [](std::string_view) { return nullptr; });
  ASSERT_TRUE(map);
  EXPECT_EQ(map->code_bytes(), 2);
  Codes codes;
  EXPECT_TRUE(map->Split("A\x81\x41 ", codes));
  EXPECT_EQ(codes, (Codes{0x41, 0x8141, 0x20}));
  EXPECT_EQ(map->CidOf(0x8141), 634U);
  EXPECT_FALSE(map->Split("A\x81", codes));
  EXPECT_EQ(codes.back(), 0x41U) << "what comes before is known";
}

TEST(CodeMap, BuildsOnAnotherWhereThatIsFound) {
  const auto base = std::make_shared<const CodeMap>(
      CodeMap::Read(kSpace + "1 begincidrange <0010> <001F> 100 endcidrange").value());
  const auto find = [&](std::string_view name) { return name == "Base-H" ? base : nullptr; };
  const std::string own = " 1 begincidchar <0011> 7 endcidchar";
  const auto map = CodeMap::ReadAny("/Base-H usecmap" + own, find);
  ASSERT_TRUE(map);
  EXPECT_EQ(map->CidOf(0x10), 100U);
  EXPECT_EQ(map->CidOf(0x11), 7U);
  Codes codes;
  EXPECT_TRUE(map->Split(std::string("\x00\x11", 2), codes));
  EXPECT_FALSE(CodeMap::ReadAny("/Other-H usecmap" + own, find));
  EXPECT_FALSE(CodeMap::ReadAny("/Base-H usecmap /Base-H usecmap" + own, find));
  EXPECT_EQ(CodeMap::SameAs(base).CidOf(0x12), 102U);
}

TEST(CodeMap, OfACutFileHasNoRangeThatIsCut) {
  const std::string whole = kSpace + "1 begincidrange <0010> <001F> 100 endcidrange";
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const auto map = CodeMap::Read(whole.substr(0, size));
    EXPECT_TRUE(!map || map->CidOf(0x10) == 0) << size;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
