// What characters are, at both ends of each run of them.
#include <cstdint>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/layout/text/Characters.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

constexpr char32_t kLast = 0x40010;  // no kind has one that is greater

// The characters of the text for which the question is answered with yes.
template <typename Question>
std::string Those(std::u32string_view text, const Question& question) {
  std::u32string those;
  for (const char32_t character : text) {
    if (question(character)) {
      those += character;
    }
  }
  return ToUtf8(those);
}

TEST(Characters, AreUpperCase) {
  EXPECT_EQ(Those(U"@AZ[az¿ÀÖ×ØÞßĀāĶĸĹĺŇňŉŸŹŽžſΐΑΩΪЀЯа", IsUpperCase), "AZÀÖØÞĀĶĹŇŸŹŽΑΩЀЯ");
}

TEST(Characters, AreLowerCase) {
  EXPECT_EQ(Those(U"AZ`az{ÀÞßàö÷øÿĀāķĹĺňŊŋŻżŽžſƀΰαωϊЯаџѠ\uFAFF\uFB00\uFB06\uFB07", IsLowerCase),
            "azßàöøÿāķĺňŋżžſαωаџ\uFB00\uFB06");
}

TEST(Characters, AreDigits) {
  EXPECT_EQ(Those(U"/09:a٣", IsDigit), "09");
}

TEST(Characters, AreHyphens) {
  EXPECT_EQ(Those(U",-.\u00AC\u00AD\u00AE\u200F\u2010\u2011", IsHyphen), "-\u00AD\u2010");
}

TEST(Characters, AreSpaces) {
  EXPECT_EQ(
      Those(U"!~\u00A1\u167F\u1681\u1FFF\u200C\u2027\u202A\u202E\u2030\u205E\u2061\u2FFF\u3001",
            IsSpace),
      "");
  const std::u32string_view spaces =
      U"\t \u007F\u00A0\u1680\u2000\u200B\u2028\u2029\u202F\u205F\u2060\u3000";
  EXPECT_EQ(Those(spaces, IsSpace), ToUtf8(spaces));
}

TEST(Characters, RunToTheLeft) {
  EXPECT_EQ(
      Those(U"aا\u058F\u0590\u08FF\u0900\uFB1C\uFB1D\uFDFF\uFE00\uFE70\uFEFC\uFEFD", RunsLeft),
      "ا\u0590\u08FF\uFB1D\uFDFF\uFE70\uFEFC");
  EXPECT_EQ(
      Those(U"\u05FF\u0600\u0605\u0606\u065F\u0660\u066C\u066D\u06EF\u06F0\u06F9\u06FA", RunsLeft),
      "\u05FF\u0606\u065F\u066D\u06EF\u06FA");
}

TEST(Characters, RunToTheRight) {
  EXPECT_EQ(Those(U"@AZ[`az{©ª«¬·¸»¼а\u0300\u05D0\u1FFE\u2000\u2BFF\u2C00中", RunsRight),
            "AZazª¬¸¼а\u1FFE\u2C00中");
}

TEST(Characters, HaveNoSpacesBetweenWords) {
  EXPECT_EQ(Those(U"aа\u0DFF\u0E00\u0EFF\u0F00\u0FFF\u1000\u109F\u10A0\u177F\u1780\u17FF\u1800"
                  U"\u2E7F\u2E80\u3040\u31FF\u3200\u33FF\u3400\u9FFF\uA000\uF8FF\uF900\uFAFF"
                  U"\uFB00\uFE2F\uFE30\uFE4F\uFE50\uFEFF\uFF00\uFFEF\uFFF0\U0001FFFF\U00020000"
                  U"\U0003FFFF\U00040000",
                  HasNoSpaces),
            "\u0E00\u0EFF\u1000\u109F\u1780\u17FF\u2E80\u3040\u31FF\u3400\u9FFF\uF900\uFAFF\uFE30"
            "\uFE4F\uFF00\uFFEF\U00020000\U0003FFFF");
}

TEST(Characters, CombineWithTheOneBefore) {
  EXPECT_EQ(Those(U"a\u02FF\u0300\u036F\u0370\u0482\u0483\u0489\u048A\u0590\u0591\u05BD\u05BE\u05BF"
                  U"\u05C7\u05C8\u064A\u064B\u065F\u0660\u0670\u0671\u1AAF\u1AB0\u1AFF\u1B00\u20CF"
                  U"\u20D0\u20FF\u2100",
                  IsCombining),
            "\u0300\u036F\u0483\u0489\u0591\u05BD\u05BF\u05C7\u064B\u065F\u0670\u1AB0\u1AFF\u20D0"
            "\u20FF");
}

TEST(Characters, OfOtherScriptsCombineToo) {
  EXPECT_EQ(Those(U"\u060F\u0610\u061A\u061B\u06D5\u06D6\u06DC\u06DD\u0E30\u0E31\u0E32\u0E33\u0E34"
                  U"\u0E3A\u0E3B\u0E46\u0E47"
                  U"\u0E4E\u0E4F",
                  IsCombining),
            "\u0610\u061A\u06D6\u06DC\u0E31\u0E34\u0E3A\u0E47\u0E4E");
}

// As the end of a sentence and the letter Sara Aa do.
TEST(Characters, BetweenMarksMayStandAlone) {
  EXPECT_EQ(Those(U"\u05BF\u05C0\u05C1\u05C2\u05C3\u05C4\u05C5\u05C6\u05C7", IsCombining),
            "\u05BF\u05C1\u05C2\u05C4\u05C5\u05C7");
}

TEST(Characters, BeyondTheFirstPlaneRunToTheLeftToo) {
  EXPECT_EQ(Those(U"\U000107FF\U00010800\U00010FFF\U00011000", RunsLeft), "\U00010800\U00010FFF");
}

TEST(Characters, AreAppendedPlain) {
  std::u32string plain;
  AppendPlain(plain, U"a\tb\n\uFEFFo\uFB00\uFB01\uFB02\uFB03\uFB04\uFB05\uFB06\uFB07\u001F ");
  EXPECT_EQ(ToUtf8(plain), "a\tbofffiflffifflstst\uFB07 ");
}

// All characters for which the question is answered with yes, as "30-39 41".
template <typename Question>
std::string Ranges(const Question& question) {
  std::ostringstream text;
  text << std::hex;
  for (char32_t first = 0; first <= kLast; ++first) {
    if (!question(first)) {
      continue;
    }
    char32_t last = first;
    while (last < kLast && question(last + 1)) {
      ++last;
    }
    text << " " << static_cast<std::uint32_t>(first);
    if (last > first) {
      text << "-" << static_cast<std::uint32_t>(last);
    }
    first = last + 1;
  }
  return text.str();
}

TEST(Characters, AreOfTheirKindsWhateverTheyAre) {
  const std::string text =
      "spaces" + Ranges(IsSpace) + "\nhyphens" + Ranges(IsHyphen) + "\ndigits" + Ranges(IsDigit) +
      "\nupper case" + Ranges(IsUpperCase) + "\nlower case" + Ranges(IsLowerCase) +
      "\nto the right" + Ranges(RunsRight) + "\nto the left" + Ranges(RunsLeft) +
      "\nwithout spaces" + Ranges(HasNoSpaces) + "\ncombining" + Ranges(IsCombining) + "\n";
  EXPECT_TRUE(testing::IsAsExpected("layout/characters.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
