#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

using std::string_view_literals::operator""sv;

// One U+FFFD for each maximal part.
struct Malformed {
  std::string bytes;
  std::size_t parts;
};

const Malformed kMalformed[] = {
    {"\x80", 1},              // a continuation without its lead
    {"\xFF\xFE", 2},          // bytes that never occur
    {"\xC0\xAF", 2},          // overlong forms
    {"\xE0\x80\xAF", 3},      //
    {"\xF0\x8F\xBF\xBF", 4},  //
    {"\xED\xA0\x80", 3},      // surrogates
    {"\xED\xBF\xBF", 3},      //
    {"\xF4\x90\x80\x80", 4},  // beyond the last character
    {"\xF5\x80", 2},          //
    {"\xC3\xC0", 2},          // no continuation, but the first byte behind those
    {"\xE1\xC0\x80", 3},      //
    {"\xE1\x80\xC0", 2},      //
    {"\xED\xC0", 2},          //
    {"\xF1\xC0", 2},          //
    {"\xF4\xC0", 2},          //
    {"\xC3", 1},              // cut
    {"\xE6\x96", 1},          //
    {"\xF0\x9F\x98", 1},      //
};

TEST(Utf8, ReplacesEachMaximalPartOfAMalformedSequence) {
  for (const Malformed& malformed : kMalformed) {
    const std::u32string replaced(malformed.parts, kReplacementCharacter);
    EXPECT_EQ(Utf8ToUtf32(malformed.bytes), replaced) << malformed.bytes;
    EXPECT_EQ(Utf8ToUtf32("a" + malformed.bytes + "z"), U"a" + replaced + U"z");
    EXPECT_EQ(Utf8ToWide(malformed.bytes), std::wstring(malformed.parts, 0xFFFD));
    EXPECT_FALSE(DecodeUtf8(malformed.bytes).is_well_formed);
  }
  EXPECT_EQ(Utf8ToUtf32("\xF0\x9F\xC3\xA9"), U"\xFFFD\u00E9");
}

TEST(Utf8, TellsAReplacementThatStandsInTheText) {
  const DecodedCharacter decoded = DecodeUtf8("\xEF\xBF\xBDz");
  EXPECT_EQ(decoded.character, kReplacementCharacter);
  EXPECT_EQ(decoded.length, 3U);
  EXPECT_TRUE(decoded.is_well_formed);
}

TEST(Utf8, ReadsBackEveryCharacter) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (character >= 0xD800 && character < 0xE000) {
      continue;
    }
    std::string utf8;
    AppendUtf8(utf8, character);
    const DecodedCharacter decoded = DecodeUtf8(utf8);
    ASSERT_TRUE(decoded.is_well_formed && decoded.length == utf8.size())
        << std::uint32_t{character};
    ASSERT_EQ(decoded.character, character);
    std::wstring wide;
    AppendWide(wide, character);
    const DecodedCharacter decoded_wide = DecodeUtf16(wide);
    ASSERT_TRUE(decoded_wide.is_well_formed && decoded_wide.length == wide.size());
    ASSERT_EQ(decoded_wide.character, character);
  }
}

TEST(Utf8, HasTheLengthsOfTheStandard) {
  std::string utf8;
  for (const char32_t character : U"a\x7F\x80\x7FF\x800\xFFFF\x10000\x10FFFF"sv) {
    AppendUtf8(utf8, character);
  }
  EXPECT_EQ(utf8, "a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf8, WritesAReplacementForWhatIsNoCharacter) {
  for (const char32_t value : {0xD800U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
    std::string utf8;
    AppendUtf8(utf8, value);
    EXPECT_EQ(utf8, "\xEF\xBF\xBD");
    std::wstring wide;
    AppendWide(wide, value);
    EXPECT_EQ(wide, std::wstring(1, 0xFFFD));
  }
}

TEST(Utf8, EndsWideTextAtTheFirstNul) {
  EXPECT_EQ(Utf8ToWide(std::string("ab\0cd", 5)), L"ab");
  EXPECT_EQ(Utf8ToUtf32(std::string("a\0b", 3)), std::u32string(U"a\0b", 3));
}

TEST(Utf8, IsCutBetweenCharacters) {
  const std::string text = "a\xC3\xA9\xF0\x9F\x98\x80";
  for (const auto& [size, length] : {std::pair(0U, 0U), {1U, 1U}, {2U, 1U}, {3U, 3U}, {6U, 3U}}) {
    EXPECT_EQ(Utf8LengthWithin(text, size), length) << size;
  }
  EXPECT_EQ(Utf8LengthWithin(text, 7), 7U);
  EXPECT_EQ(Utf8LengthWithin(text, 99), 7U);
  EXPECT_EQ(Utf8LengthWithin("", 5), 0U);
}

TEST(Utf8, IsNotReadBehindItsEnd) {
  const std::string_view cut = std::string_view("\xC3\xA9").substr(0, 1);
  EXPECT_EQ(Utf8ToUtf32(cut), U"\xFFFD");
  EXPECT_EQ(Utf8LengthWithin(cut, 5), 1U);
  EXPECT_EQ(Utf8LengthWithin("\x80\x80\x80", 2), 0U) << "nothing begins there";
  const std::wstring pair = {0xD83D, 0xDE00};
  EXPECT_EQ(WideToUtf32(std::wstring_view(pair).substr(0, 1)), U"\xFFFD");
}

TEST(WideText, JoinsSurrogatePairs) {
  EXPECT_EQ(WideToUtf8(std::wstring{0xD83D, 0xDE00, L'!'}), "\xF0\x9F\x98\x80!");
  EXPECT_EQ(WideToUtf32(std::wstring{0xDBFF, 0xDFFF}), U"\x10FFFF");
  EXPECT_EQ(WideToUtf8(L""), "");
}

TEST(WideText, TakesWholeCharactersToo) {
  EXPECT_EQ(WideToUtf8(std::wstring{0x1F600}), "\xF0\x9F\x98\x80");
}

TEST(WideText, ReplacesWhatIsNoCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(WideToUtf8(std::wstring{0xD83D}), replacement);
  EXPECT_EQ(WideToUtf8(std::wstring{0xD83D, L'a'}), replacement + "a");
  EXPECT_EQ(WideToUtf8(std::wstring{0xDE00, 0xD83D}), replacement + replacement);
  EXPECT_EQ(WideToUtf8(std::wstring{0xDC00, 0xDC00}), replacement + replacement);
  EXPECT_EQ(WideToUtf8(std::wstring{0xD800, 0xE000}), replacement + "\xEE\x80\x80");
  EXPECT_EQ(WideToUtf8(std::wstring{0x110000}), replacement);
  EXPECT_EQ(WideToUtf8(std::wstring{static_cast<wchar_t>(-1)}), replacement);
}

}  // namespace
}  // namespace TarnixTools
