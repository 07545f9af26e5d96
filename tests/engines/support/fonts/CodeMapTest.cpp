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

// Codes of one byte, as often as said, where a word of the file begins and ends with these.
std::string Times(std::size_t count, const std::string& operands, const std::string& word) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += operands;
  }
  return text + word + " ";
}

std::shared_ptr<const CodeMap> NoMap(std::string_view) {
  return nullptr;
}

TEST(CodeMap, HasOneHundredSpacesAtMost) {
  const std::string space = "<00><7F>";
  EXPECT_TRUE(CodeMap::Read(Times(100, space, "endcodespacerange")));
  EXPECT_FALSE(CodeMap::Read(Times(101, space, "endcodespacerange")));
  EXPECT_TRUE(
      CodeMap::Read(Times(60, space, "endcodespacerange") + Times(40, space, "endcodespacerange")));
  EXPECT_FALSE(
      CodeMap::Read(Times(60, space, "endcodespacerange") + Times(41, space, "endcodespacerange")));
}

// The codes of the ranges go down, as their order in the file doesn't count.
std::string Ranges(std::uint32_t count, bool has_ends) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (std::uint32_t code = count; code-- > 0;) {
    std::string digits = "<00000>";
    for (std::size_t i = 5, left = code; left != 0; --i, left /= 16) {
      digits[i] = kDigits[left % 16];
    }
    digits.insert(1, "0");
    text += digits + (has_ends ? digits : "") + "1 ";
  }
  return text + (has_ends ? "endcidrange " : "endcidchar ");
}

TEST(CodeMap, HasOneHundredThousandRangesAtMost) {
  const std::string space = "<000000><FFFFFF>endcodespacerange ";
  const auto most = CodeMap::Read(space + Ranges(100'000, true));
  ASSERT_TRUE(most);
  EXPECT_EQ(most->range_count(), 100'001U);
  EXPECT_EQ(most->CidOf(99'999), 1U);
  EXPECT_FALSE(CodeMap::Read(space + Ranges(100'001, false)));
  EXPECT_FALSE(CodeMap::Read(space + Ranges(99'999, false) + "<0E0000><0E0001>1 " +
                             "<0F0000><0F0001>1 endcidrange"));
}

TEST(CodeMap, TakesThreeHundredThousandOperandsAtMost) {
  const std::string space = "<00><FF>endcodespacerange ";
  EXPECT_TRUE(CodeMap::Read(space + Times(300'000, "1 ", "other")));
  EXPECT_FALSE(CodeMap::Read(space + Times(300'001, "1 ", "other")));
}

TEST(CodeMap, HasCodesOfOneToFourBytes) {
  const std::string spaces[] = {"<20><7E>", "<8140><9FFC>", "<A0A1A2><AFAFAF>",
                                "<F0F1F2F3><FFFFFFFF>"};
  const std::string chars[] = {"<21>1 ", "<8141>2 ", "<A1A2A3>3 ", "<F1F2F3F4>65535 "};
  const std::string codes[] = {"!", "\x81\x41", "\xA1\xA2\xA3", "\xF1\xF2\xF3\xF4"};
  const std::uint32_t numbers[] = {0x21, 0x8141, 0xA1A2A3, 0xF1F2F3F4};
  const std::uint32_t cids[] = {1, 2, 3, 65535};
  std::string all;
  std::string all_spaces;
  for (std::size_t i = 0; i < 4; ++i) {
    const auto map = CodeMap::Read(spaces[i] + "endcodespacerange " + chars[i] + "endcidchar");
    ASSERT_TRUE(map) << i;
    EXPECT_EQ(map->code_bytes(), static_cast<int>(i) + 1);
    EXPECT_EQ(map->range_count(), 2U);
    Codes found;
    EXPECT_TRUE(map->Split(codes[i] + codes[i], found));
    EXPECT_EQ(found, (Codes{numbers[i], numbers[i]}));
    EXPECT_EQ(map->CidOf(numbers[i]), cids[i]);
    EXPECT_EQ(map->CidOf(numbers[i] - 1), 0U);
    EXPECT_EQ(map->CidOf(numbers[i] + 1), 0U);
    all_spaces += spaces[i];
    all += chars[i];
  }
  const auto map = CodeMap::ReadAny(all_spaces + "endcodespacerange " + all + "endcidchar", NoMap);
  ASSERT_TRUE(map);
  EXPECT_EQ(map->code_bytes(), 4);
  Codes found;
  EXPECT_TRUE(map->Split(codes[3] + codes[0] + codes[2] + codes[1] + codes[0], found));
  EXPECT_EQ(found, (Codes{numbers[3], numbers[0], numbers[2], numbers[1], numbers[0]}));
  EXPECT_FALSE(map->Split("\xF1\xF2\xF3", found));
  EXPECT_FALSE(CodeMap::ReadAny("<0000000000><FFFFFFFFFF>endcodespacerange", NoMap));
  EXPECT_FALSE(CodeMap::ReadAny("<><>endcodespacerange", NoMap));
}

// Each byte of a code is within its own bounds, which both belong to the space.
TEST(CodeMap, HasCodesOfWhichEachByteIsWithinItsBounds) {
  const auto map = CodeMap::Read("<102030><405060>endcodespacerange");
  ASSERT_TRUE(map);
  Codes found;
  for (const char* code : {"\x10\x20\x30", "\x40\x50\x60", "\x10\x50\x30", "\x40\x20\x60"}) {
    EXPECT_TRUE(map->Split(code, found)) << code;
  }
  for (const char* code : {"\x0F\x20\x30", "\x10\x1F\x30", "\x10\x20\x2F", "\x41\x50\x60",
                           "\x40\x51\x60", "\x40\x50\x61"}) {
    EXPECT_FALSE(map->Split(code, found)) << code;
  }
  EXPECT_EQ(found, (Codes{0x102030, 0x405060, 0x105030, 0x402060}));
}

TEST(CodeMap, TakesIdentifiersUpToTheHighest) {
  const auto map = CodeMap::Read(kSpace +
                                 "<0000><0000>65534 <0001><0004>65534 <0005><0006>65535 "
                                 "<0007><0007>65536 <0008><0008>-1 endcidrange");
  ASSERT_TRUE(map);
  std::vector<std::uint32_t> cids;
  for (std::uint32_t code = 0; code < 10; ++code) {
    cids.push_back(map->CidOf(code));
  }
  EXPECT_EQ(cids, (Codes{65534, 65534, 65535, 65535, 65535, 65535, 65535, 0, 0, 0}));
}

TEST(CodeMap, RefusesOperandsOfOtherKindsOrNumbers) {
  for (const char* odd :
       {"<0001> endcidchar", "<0001> <0002> endcidchar", "1 2 endcidchar", "1 <0001> endcidchar",
        "<0001> 1 1 endcidrange", "1 <0001> 1 endcidrange", "<0001> <0002> <0003> endcidrange",
        "<0001> <0002> 1 2 endcidrange", "<01> <0002> 1 endcidrange", "<0001> <02> 1 endcidrange",
        "<000001> 1 endcidchar", "endcodespacerange", "<0000> endcodespacerange",
        "<0000> <FF> endcodespacerange", "1 2 endcodespacerange", "<00> <FF> endcodespacerange",
        "<0002> <0001> 1 endcidrange", "<0001> 1 <0001> 1 endcidchar"}) {
    EXPECT_FALSE(CodeMap::Read(kSpace + odd)) << odd;
  }
  for (const char* fine : {"endcidchar", "endcidrange", "<0000> <FFFF> endcodespacerange",
                           "<0001> <0001> 1 endcidrange", "(ab) 1 endcidchar", "1.5 other",
                           "<0001> 1 <0002> 1 endcidchar", "1 other <0001> 1 endcidchar"}) {
    EXPECT_TRUE(CodeMap::Read(kSpace + fine)) << fine;
  }
}

TEST(CodeMap, HasAtLeastAsLongCodesAsTheMapThatItBuildsOn) {
  const auto base = std::make_shared<const CodeMap>(
      CodeMap::Read(kSpace + "<0010> <001F> 100 endcidrange").value());
  const auto one = std::make_shared<const CodeMap>(
      CodeMap::Read("<00> <FF> endcodespacerange <41> 9 endcidchar").value());
  const auto find = [&](std::string_view name) {
    return name == "A B" ? base : name == "One" ? one : nullptr;
  };
  const auto longer = CodeMap::ReadAny("/A#20B usecmap <00> <0F> endcodespacerange", find);
  ASSERT_TRUE(longer);
  EXPECT_EQ(longer->code_bytes(), 2);
  EXPECT_EQ(longer->range_count(), 1U);
  Codes found;
  EXPECT_TRUE(longer->Split("\x05", found)) << "its own codes take the place of the other's";
  EXPECT_FALSE(longer->Split("\x10\x10", found));
  const auto shorter = CodeMap::ReadAny("/One usecmap " + kSpace + "<0041> 7 endcidchar", find);
  ASSERT_TRUE(shorter);
  EXPECT_EQ(shorter->code_bytes(), 2);
  EXPECT_EQ(shorter->CidOf(0x41), 7U);
  const CodeMap same = CodeMap::SameAs(base);
  EXPECT_EQ(same.code_bytes(), 2);
  EXPECT_EQ(same.range_count(), 0U);
  EXPECT_EQ(same.CidOf(0x20), 0U);
  found.clear();
  EXPECT_TRUE(same.Split("ab", found));
  EXPECT_EQ(found, (Codes{0x6162}));
  EXPECT_FALSE(CodeMap::ReadAny("/One usecmap /A#20B usecmap", find));
  EXPECT_TRUE(CodeMap::ReadAny("/Other /One usecmap", find)) << "the last name is the map's";
  EXPECT_FALSE(CodeMap::ReadAny("/One usecmap <0000000001> 1 endcidchar", find));
  EXPECT_FALSE(CodeMap::ReadAny("/One usecmap <> 1 endcidchar", find));
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
