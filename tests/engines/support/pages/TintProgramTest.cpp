#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "engines/support/pages/TintProgram.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<double> Results(std::string_view text, std::vector<double> numbers = {}) {
  const auto program = TintProgram::Read(text);
  return program ? program->Run(numbers) : std::vector<double>{-1};
}

TEST(TintProgram, Computes) {
  EXPECT_THAT(Results("{dup 0.5 mul exch 0.25 mul 1 exch sub}", {1}), ElementsAre(0.5, 0.75));
  EXPECT_THAT(Results("{2 copy add % of two\n}", {3, 4}), ElementsAre(3, 4, 7));
  EXPECT_THAT(Results("{1 index}", {5, 6}), ElementsAre(5, 6, 5));
  EXPECT_THAT(Results("{7 2 idiv 7 2 mod}"), ElementsAre(3, 1));
}

TEST(TintProgram, KnowsEveryOperatorOfCalculators) {
  const std::pair<const char*, double> kResults[] = {{"-3.5 abs", 3.5},
                                                     {"2 3 add", 5},
                                                     {"12 10 and", 8},
                                                     {"1 1 atan", 45},
                                                     {"-1 0 atan", 270},
                                                     {"0 -1 atan", 180},
                                                     {"3 2 bitshift", 12},
                                                     {"12 -2 bitshift", 3},
                                                     {"2.1 ceiling", 3},
                                                     {"-2.9 ceiling", -2},
                                                     {"60 cos", 0.5},
                                                     {"2.9 cvi", 2},
                                                     {"-2.9 cvi", -2},
                                                     {"2.9 cvr", 2.9},
                                                     {"7 2 div", 3.5},
                                                     {"7 0 div", 0},
                                                     {"2 2 eq", 1},
                                                     {"2 3 eq", 0},
                                                     {"9 0.5 exp", 3},
                                                     {"2 10 exp", 1024},
                                                     {"false", 0},
                                                     {"2.9 floor", 2},
                                                     {"-2.1 floor", -3},
                                                     {"3 3 ge", 1},
                                                     {"2 3 ge", 0},
                                                     {"3 3 gt", 0},
                                                     {"4 3 gt", 1},
                                                     {"-7 2 idiv", -3},
                                                     {"7 0 idiv", 0},
                                                     {"3 3 le", 1},
                                                     {"4 3 le", 0},
                                                     {"10 ln", 2.302585093},
                                                     {"1000 log", 3},
                                                     {"3 3 lt", 0},
                                                     {"2 3 lt", 1},
                                                     {"7 3 mod", 1},
                                                     {"-7 3 mod", -1},
                                                     {"7 0 mod", 0},
                                                     {"2 3 mul", 6},
                                                     {"2 3 ne", 1},
                                                     {"2 2 ne", 0},
                                                     {"2 neg", -2},
                                                     {"0 not", 1},
                                                     {"5 not", 0},
                                                     {"12 10 or", 14},
                                                     {"2.5 round", 3},
                                                     {"-2.5 round", -2},
                                                     {"2.4 round", 2},
                                                     {"30 sin", 0.5},
                                                     {"16 sqrt", 4},
                                                     {"-1 sqrt", 0},
                                                     {"2 3 sub", -1},
                                                     {"true", 1},
                                                     {"-2.9 truncate", -2},
                                                     {"12 10 xor", 6},
                                                     {"4 dup sub", 0},
                                                     {"1 4 exch sub", 3},
                                                     {"4 1 pop", 4},
                                                     {"+4", 4},
                                                     {"1 2 3 3 -2 roll sub mul", -3},
                                                     {"5 6 1 index sub add", 6},
                                                     {"2 3 2 copy mul mul mul", 36}};
  for (const auto& [text, result] : kResults) {
    const std::vector<double> found = Results("{" + std::string(text) + "}");
    ASSERT_EQ(found.size(), 1U) << text;
    EXPECT_NEAR(found[0], result, 1e-6) << text;
  }
}

TEST(TintProgram, FailsWhereAnOperatorHasTooFewNumbers) {
  for (const char* one : {"abs", "ceiling", "cos", "cvi", "cvr", "floor", "ln", "log", "neg", "not",
                          "round", "sin", "sqrt", "truncate", "dup", "pop"}) {
    EXPECT_THAT(Results("{9 pop " + std::string(one) + "}"), IsEmpty()) << one;
  }
  for (const char* two : {"add", "and", "atan", "bitshift", "div", "eq", "exp", "ge", "gt", "idiv",
                          "le", "lt", "mod", "mul", "ne", "or", "sub", "xor", "exch"}) {
    EXPECT_THAT(Results("{1 " + std::string(two) + "}"), IsEmpty()) << two;
  }
  for (const char* other : {"{copy}", "{2 copy}", "{1 index}", "{1 roll}", "{{1} if}"}) {
    EXPECT_THAT(Results(other), IsEmpty()) << other;
  }
}

TEST(TintProgram, HasBounds) {
  std::string text = "{";
  for (int i = 0; i < 99; ++i) {
    text += "1 ";
  }
  EXPECT_EQ(Results(text + "1}").size(), 100U);
  EXPECT_THAT(Results(text + "1 1}"), IsEmpty());
  std::string blocks = "1";
  for (int i = 0; i < 31; ++i) {
    blocks = "1 {" + blocks + "} if";
  }
  EXPECT_EQ(Results("{" + blocks + "}").size(), 1U);
  EXPECT_FALSE(TintProgram::Read("{1 {" + blocks + "} if}"));
  std::string steps;
  for (int i = 0; i < 4999; ++i) {
    steps += "1 pop ";
  }
  EXPECT_EQ(TintProgram::Read("{" + steps + "2}")->step_count(), 10'000U);
  EXPECT_FALSE(TintProgram::Read("{" + steps + "2 2}"));
}

TEST(TintProgram, RollsBothWays) {
  EXPECT_THAT(Results("{0 1 roll 7}"), ElementsAre(7)) << "two numbers are enough";
  EXPECT_THAT(Results("{1 roll 7}"), IsEmpty());
  EXPECT_THAT(Results("{3 1 roll}", {1, 2, 3}), ElementsAre(3, 1, 2));
  EXPECT_THAT(Results("{3 -1 roll}", {1, 2, 3}), ElementsAre(2, 3, 1));
}

TEST(TintProgram, Chooses) {
  EXPECT_THAT(Results("{0.5 gt {1 0} {0 1} ifelse}", {0.7}), ElementsAre(1, 0));
  EXPECT_THAT(Results("{0.5 gt {1 0} {0 1} ifelse}", {0.2}), ElementsAre(0, 1));
  EXPECT_THAT(Results("{dup 0.5 lt {pop 9} if}", {0.7}), ElementsAre(0.7));
}

TEST(TintProgram, FailsWhereNumbersAreMissing) {
  EXPECT_THAT(Results("{pop pop}", {1}), IsEmpty());
  EXPECT_THAT(Results("{3 1 roll}", {1}), IsEmpty());
  EXPECT_THAT(Results("{-100 copy}", {1}), IsEmpty());
  EXPECT_THAT(Results("{-1 ln}"), IsEmpty());
}

TEST(TintProgram, HasNumbersThatAreWholeWords) {
  EXPECT_THAT(Results("{1 +2 -3 .5 4. +.25 1e2}"), ElementsAre(1, 2, -3, 0.5, 4, 0.25, 100));
  for (const char* word : {"1x", "1.5.2", "--1", "+", "-", ".", "1e999", "0x1", "16#FF", "1,5"}) {
    EXPECT_FALSE(TintProgram::Read("{" + std::string(word) + "}")) << word;
  }
}

TEST(TintProgram, IsNoOtherText) {
  EXPECT_FALSE(TintProgram::Read("{1 2 foo}"));
  EXPECT_FALSE(TintProgram::Read("{{1}}"));
  EXPECT_FALSE(TintProgram::Read("{1 {2} 3 if}"));
  EXPECT_FALSE(TintProgram::Read("{1"));
  EXPECT_FALSE(TintProgram::Read(std::string(100, '{') + std::string(100, '}')));
}

}  // namespace
}  // namespace TarnixTools::engines
