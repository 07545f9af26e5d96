#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/writers/text/LineScripts.h"

namespace TarnixTools::engines::office {
namespace {

TEST(LineScripts, FindsTheEndOfTheFirstWord) {
  EXPECT_EQ(FirstBreak("real-time use", false), 9U);
  EXPECT_EQ(FirstBreak("real-time use", true), 5U);
  EXPECT_EQ(FirstBreak("-5 degrees", true), 2U);
  EXPECT_EQ(FirstBreak("10-20", true), std::string_view::npos);
  EXPECT_EQ(FirstBreak("標準", true), 3U);
}

TEST(LineScripts, CountsGapsBetweenScripts) {
  EXPECT_EQ(ScriptChanges(false).In("標準A標準"), 2U);
  EXPECT_EQ(ScriptChanges(false).In("標準 A, 標準"), 0U);
  EXPECT_EQ(ScriptChanges(true).In("標準 A, 標準"), 2U);
  EXPECT_EQ(ScriptChanges(true).In("標準,標準"), 2U);
}

// The characters for which the question is answered with yes.
template <typename Question>
std::string Those(const std::vector<std::string>& characters, const Question& question) {
  std::string those;
  for (const std::string& character : characters) {
    those += question(character) ? character + " " : "";
  }
  return those;
}

TEST(LineScripts, EndsLinesBesideIdeographsAndSyllables) {
  EXPECT_EQ(Those({"\u10FF", "\u1100", "\u11FF", "\u1200", "\u2E7F", "\u2E80", "\uFAFF", "\uFB00",
                   "\uFEFF", "\uFF00", "\U0002FFFF", "\U00030000", "a"},
                  [](const std::string& c) { return FirstBreak("a" + c, false) == 1; }),
            "\u1100 \u11FF \u2E80 \uFAFF \uFF00 \U0002FFFF ");
  EXPECT_EQ(Those({"-", "/", "\u2010", "\u2011", "\u2012", "\u2013", "\u2014", "\u2015", ".", "0"},
                  [](const std::string& c) { return FirstBreak("a" + c + "b", true) < 5; }),
            "- / \u2010 \u2013 \u2014 ");
  EXPECT_EQ(FirstBreak("", true), std::string_view::npos);
  EXPECT_EQ(FirstBreak(" a", true), 0U);
}

TEST(LineScripts, KnowsLettersBesideIdeographs) {
  const std::vector<std::string> characters = {"!", "/", "0",      "9",      ":",      "@",
                                               "A", "Z", "[",      "`",      "a",      "z",
                                               "{", "~", "\u00BF", "\u00C0", "\u052F", "\u0530"};
  const auto changes = [](bool has_gap_at_marks) {
    return [has_gap_at_marks](const std::string& c) {
      return ScriptChanges(has_gap_at_marks).In("標" + c) == 1;
    };
  };
  EXPECT_EQ(Those(characters, changes(false)), "0 9 A Z a z \u00C0 \u052F ");
  EXPECT_EQ(Those(characters, changes(true)), "! / 0 9 : @ A Z [ ` a z { ~ \u00C0 \u052F ");
}

TEST(LineScripts, KnowsWhichLettersAreJoined) {
  EXPECT_EQ(Those({"\u05FF", "\u0600", "\u077F", "\u0780", "\u089F", "\u08A0", "\u08FF", "\u0900",
                   "\uFB4F", "\uFB50", "\uFDFF", "\uFE00", "\uFE6F", "\uFE70", "\uFEFE", "\uFEFF"},
                  IsJoined),
            "\u0600 \u077F \u08A0 \u08FF \uFB50 \uFDFF \uFE70 \uFEFE ");
}

TEST(LineScripts, KnowsJoinedLetters) {
  EXPECT_TRUE(IsJoined("A العربية"));
  EXPECT_FALSE(IsJoined("A, שלום, 標準"));
}

}  // namespace
}  // namespace TarnixTools::engines::office
