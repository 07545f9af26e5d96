#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/Limits.h"
#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What was heard, as text: "OFFSET TEXT" of a token, with a star for a key, and "again: NAME".
class Listener : public SyntaxObserver {
 public:
  void OnToken(const TokenSyntax& token) override {
    heard.push_back(std::to_string(token.offset) + " " + std::string(token.token.text) +
                    (token.is_key ? "*" : ""));
  }

  void OnRepeatedKey(const RepeatedKeySyntax& key) override {
    heard.push_back(std::to_string(key.offset) + " again: " + std::string(key.name));
  }

  std::vector<std::string> heard;
};

std::vector<std::string> Heard(std::string_view text, std::uint64_t offset = 0) {
  Listener listener;
  ObserveTokens(text, offset, listener);
  return listener.heard;
}

std::vector<std::string> RepeatedKeys(std::string_view text) {
  std::vector<std::string> keys;
  for (const std::string& heard : Heard(text)) {
    if (heard.find(" again: ") != std::string::npos) {
      keys.push_back(heard);
    }
  }
  return keys;
}

TEST(SyntaxObserver, HearsTokensAsTheyStand) {
  EXPECT_THAT(Heard(" /A#42 (a\\)b) <4 1> +0012 -.50 99999999999999999999", 100),
              ElementsAre("101 /A#42", "107 (a\\)b)", "114 <4 1>", "120 +0012", "126 -.50",
                          "131 99999999999999999999"));
}

TEST(SyntaxObserver, PassesOverComments) {
  EXPECT_THAT(Heard("1 % (no) /Token\n2"), ElementsAre("0 1", "16 2"));
  EXPECT_THAT(Heard(""), IsEmpty());
  EXPECT_THAT(Heard("% alone"), IsEmpty());
}

TEST(SyntaxObserver, TellsKeysFromNames) {
  EXPECT_THAT(Heard("<</A/B/C[/D<</E 1>>]/F 2 0 R/G null/H(s)>>"),
              ElementsAre("0 <<", "2 /A*", "4 /B", "6 /C*", "8 [", "9 /D", "11 <<", "13 /E*",
                          "16 1", "17 >>", "19 ]", "20 /F*", "23 2", "25 0", "27 R", "28 /G*",
                          "31 null", "35 /H*", "37 (s)", "40 >>"));
}

TEST(SyntaxObserver, HearsARepeatedKey) {
  EXPECT_THAT(RepeatedKeys("<</A 1/B 2/A 3>>"), ElementsAre("10 again: A"));
  EXPECT_THAT(RepeatedKeys("<</A/A/B/A/A 3>>"), ElementsAre("10 again: A"));
  EXPECT_THAT(RepeatedKeys("<</A 1 0 R/A 2 0 R/A 3>>"), ElementsAre("10 again: A", "18 again: A"));
}

TEST(SyntaxObserver, ComparesKeysWithoutTheirEscapes) {
  EXPECT_THAT(RepeatedKeys("<</AB 1/A#42 2>>"), ElementsAre("7 again: AB"));
}

TEST(SyntaxObserver, KeepsTheKeysOfDictionariesApart) {
  EXPECT_THAT(RepeatedKeys("<</A<</A 1>>/B[<</A 1>><</A 2>>]>>"), IsEmpty());
  EXPECT_THAT(RepeatedKeys("<</A<</B 1>>/A 2>>"), ElementsAre("12 again: A"));
}

// As the parser takes it: ">>" closes an array that was left open as well, "]" closes nothing else.
TEST(SyntaxObserver, KeepsDictionariesApartThatAreNotClosedProperly) {
  EXPECT_THAT(RepeatedKeys("<</B<</A[1/A>>/A 2>>"), IsEmpty());
  EXPECT_THAT(RepeatedKeys("<</A 1]/A 2>>"), ElementsAre("7 again: A"));
}

TEST(SyntaxObserver, HearsAllOfIrregularSyntax) {
  EXPECT_EQ(Heard(">> ] <</A [ >> (open").size(), 7U);
  EXPECT_EQ(Heard("<</A").size(), 2U);
}

TEST(SyntaxObserver, BearsAnyNesting) {
  const std::size_t depth = static_cast<std::size_t>(limits::kMaxNesting) * 3;
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) {
    text += "<</A ";
  }
  for (std::size_t i = 0; i < depth; ++i) {
    text += ">>";
  }
  EXPECT_EQ(Heard("[" + text + "<</B 1/B 2>>]").size(), depth * 3 + 2 + 6 + 1);
}

TEST(SyntaxObserver, CanDoWithoutListening) {
  SyntaxObserver deaf;
  ObserveTokens("<</A 1/A 2>>", 0, deaf);
  deaf.OnHeader({});
  deaf.OnObject({});
  deaf.OnStream({});
  deaf.OnObjectEnd({});
  deaf.OnXrefTable({});
  deaf.OnXrefSubsection({});
  deaf.OnXrefEntry({});
  deaf.OnTrailer({});
  deaf.OnStartXref({});
  deaf.OnFileEnd({});
  deaf.OnLinearization({});
}

HexSyntax HexSyntaxOfText(std::string_view text) {
  return HexSyntaxOf({Token::Kind::kHexString, text, 0});
}

TEST(HexSyntax, CountsDigitsAndWhatIsNone) {
  EXPECT_EQ(HexSyntaxOfText("<>").digits, 0U);
  EXPECT_EQ(HexSyntaxOfText("<4aF>").digits, 3U);
  EXPECT_EQ(HexSyntaxOfText("<4 1\n\r\t\f>").digits, 2U);
  EXPECT_EQ(HexSyntaxOfText("<4 1\n\r\t\f>").others, 0U);
  EXPECT_EQ(HexSyntaxOfText("<4g1<->").digits, 2U);
  EXPECT_EQ(HexSyntaxOfText("<4g1<->").others, 3U);
  EXPECT_EQ(HexSyntaxOfText("<41").digits, 2U) << "the input ended first";
}

TEST(LineEnds, AreTold) {
  for (const char* text : {"\r\n", "\n", "\r"}) {
    EXPECT_TRUE(IsLineEnd(text));
    EXPECT_TRUE(StartsWithLineEnd(text));
    EXPECT_TRUE(EndsWithLineEnd(text));
  }
  for (const char* text : {"", " ", "\n\r", "\n\n", " \n", "\n ", "x"}) {
    EXPECT_FALSE(IsLineEnd(text));
  }
  EXPECT_FALSE(StartsWithLineEnd(" \n"));
  EXPECT_FALSE(EndsWithLineEnd("\n "));
}

}  // namespace
}  // namespace TarnixTools::pdf
