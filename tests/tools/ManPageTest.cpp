#include "support/Readers.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;

using ManPage = CliTest;

TEST_F(ManPage, PassesTheFormatterWithoutAWarning) {
  TARNIX_NEED_PROGRAM("groff");
  const auto page = Run({"man"});
  EXPECT_EQ(page.status, 0);
  const auto formatted = RunCommand({"groff", "-man", "-ww", "-z", "-"}, {.input = page.out});
  EXPECT_EQ(formatted.status, 0);
  EXPECT_EQ(formatted.err, "");
}

TEST_F(ManPage, ReadsAsItWasWritten) {
  TARNIX_NEED_PROGRAM("groff");
  const auto text =
      RunCommand({"groff", "-man", "-Tascii", "-P-cbou", "-"}, {.input = Run({"man"}).out}).out;
  for (const std::string part :
       {"TARNIX(1)", "tarnix merge [OPTIONS] INPUT INPUT...", "-o, --output PATH",
        "--units cm|mm|in|pt", "('-': standard input)", "TARNIX_PASSWORD"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
}

TEST_F(ManPage, ListsEveryExitStatus) {
  const auto page = Run({"man"}).out;
  for (const std::string status :
       {"0", "1", "2", "11", "13", "14", "16", "17", "18", "20", "21", "22", "23"}) {
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB" + status + "\\fR\n"));
  }
}

TEST_F(ManPage, TakesNoArguments) {
  ExpectUsageError(Run({"man", "merge"}), "unexpected argument merge", "tarnix");
}

}  // namespace
}  // namespace TarnixTools::testing
