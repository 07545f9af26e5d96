#include <string>

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

TEST(TintProgram, RollsBothWays) {
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

TEST(TintProgram, IsNoOtherText) {
  EXPECT_FALSE(TintProgram::Read("{1 2 foo}"));
  EXPECT_FALSE(TintProgram::Read("{{1}}"));
  EXPECT_FALSE(TintProgram::Read("{1 {2} 3 if}"));
  EXPECT_FALSE(TintProgram::Read("{1"));
  EXPECT_FALSE(TintProgram::Read(std::string(100, '{') + std::string(100, '}')));
}

}  // namespace
}  // namespace TarnixTools::engines
