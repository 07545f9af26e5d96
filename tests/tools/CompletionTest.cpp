#include <sstream>

#include "support/Readers.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

class BashCompletion : public CliTest {
 protected:
  BashCompletion() {
    const auto result = Run({"completion", "bash"});
    EXPECT_EQ(result.status, 0);
    WriteFile("completion", result.out);
  }

  void SetUp() override { TARNIX_NEED_PROGRAM("bash"); }

  // What bash offers for the last of the words.
  std::vector<std::string> Offers(const std::vector<std::string>& words) {
    std::vector<std::string> command = {
        "bash", "--norc", "-c",
        "source ./completion; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _tarnix;"
        "for offer in \"${COMPREPLY[@]}\"; do echo \"$offer\"; done",
        "bash"};
    command.insert(command.end(), words.begin(), words.end());
    const auto result = RunCommand(command, {.directory = directory_.Path()});
    EXPECT_EQ(result.err, "");
    std::vector<std::string> offers;
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) {
      offers.push_back(line);
    }
    return offers;
  }
};

TEST_F(BashCompletion, IsValidBash) {
  const auto result = RunCommand({"bash", "-n", Path("completion")});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
}

TEST_F(BashCompletion, IsBoundToTheProgram) {
  const auto result =
      RunCommand({"bash", "--norc", "-c", "source " + Path("completion") + "; complete -p tarnix"});
  EXPECT_THAT(result.out, ::testing::HasSubstr("-F _tarnix tarnix"));
}

TEST_F(BashCompletion, OffersEveryJobThatHelpNames) {
  const auto offers = Offers({"tarnix", ""});
  std::istringstream help(Run({"help"}).out);
  std::string line;
  while (std::getline(help, line) && line != "Jobs:") {
  }
  int jobs = 0;
  while (std::getline(help, line) && !line.empty()) {
    ++jobs;
    EXPECT_THAT(offers, Contains(line.substr(2, line.find(' ', 2) - 2)));
  }
  EXPECT_GE(jobs, 3);
  EXPECT_THAT(Offers({"tarnix", "me"}), Contains("merge"));
  EXPECT_THAT(Offers({"tarnix", "help", "sp"}), Contains("split"));
}

TEST_F(BashCompletion, DoesNotOfferHelperCommands) {
  EXPECT_THAT(Offers({"tarnix", ""}), Not(Contains("completion")));
  EXPECT_THAT(Offers({"tarnix", ""}), Not(Contains("man")));
}

TEST_F(BashCompletion, OffersTheOptionsOfTheJob) {
  EXPECT_THAT(Offers({"tarnix", "split", "--"}), Contains("--ranges"));
  EXPECT_THAT(Offers({"tarnix", "merge", "--"}), Not(Contains("--ranges")));
  EXPECT_THAT(Offers({"tarnix", "merge", "a.pdf", "--outp"}), ElementsAre("--output"));
}

TEST_F(BashCompletion, OffersTheWordsOfAnOption) {
  EXPECT_THAT(Offers({"tarnix", "info", "--units", ""}), ElementsAre("cm", "mm", "in", "pt"));
  EXPECT_THAT(Offers({"tarnix", "info", "--progress", "a"}), ElementsAre("auto", "always"));
  EXPECT_THAT(Offers({"tarnix", "info", "--units", "=", "m"}), ElementsAre("mm"));
  EXPECT_THAT(Offers({"tarnix", "split", "--every", ""}), IsEmpty());
}

TEST_F(BashCompletion, OffersDocumentsAndDirectories) {
  WriteFile("a *.pdf", "");
  WriteFile("B.PDF", "");
  WriteFile("notes.txt", "");
  directory_.MakeDir("out");
  EXPECT_THAT(Offers({"tarnix", "merge", ""}), UnorderedElementsAre("a *.pdf", "B.PDF", "out"));
  EXPECT_THAT(Offers({"tarnix", "merge", "-o", ""}), Contains("out"));
  EXPECT_THAT(Offers({"tarnix", "merge", "--password-file", "n"}), ElementsAre("notes.txt"));
}

TEST_F(BashCompletion, KnowsNoOtherShell) {
  ExpectUsageError(Run({"completion"}), "completion needs the name of a shell: bash, zsh or fish",
                   "tarnix");
  ExpectUsageError(Run({"completion", "tcsh"}),
                   "completion needs the name of a shell: bash, zsh or fish", "tarnix");
}

class FishCompletion : public CliTest {
 protected:
  void SetUp() override { TARNIX_NEED_PROGRAM("fish"); }

  // What fish offers at the end of a command line, a line each with its description.
  std::string Offers(const std::string& line) const {
    WriteFile("completion", Run({"completion", "fish"}).out);
    const auto result =
        RunCommand({"fish", "--no-config", "-c", "source ./completion; complete -C '" + line + "'"},
                   {.directory = directory_.Path()});
    EXPECT_EQ(result.err, "");
    return result.out;
  }
};

TEST_F(FishCompletion, OffersJobsOptionsAndWords) {
  EXPECT_EQ(Offers("tarnix mer"), "merge\tjoin documents into one\n");
  EXPECT_EQ(Offers("tarnix help mer"), "merge\tjoin documents into one\n");
  EXPECT_THAT(Offers("tarnix split --ran"), ::testing::StartsWith("--ranges\tone piece"));
  EXPECT_EQ(Offers("tarnix merge --ran"), "");
  EXPECT_THAT(Offers("tarnix info --units c"), ::testing::StartsWith("cm"));
}

class ZshCompletion : public CliTest {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("zsh");
    WriteFile("_tarnix", Run({"completion", "zsh"}).out);
  }
};

TEST_F(ZshCompletion, IsBoundToTheProgramWhenItIsSourced) {
  const auto result =
      RunCommand({"zsh", "-f", "-c",
                  "autoload -U compinit; compinit -D; source ./_tarnix; print $_comps[tarnix]"},
                 {.directory = directory_.Path()});
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out, "_tarnix\n");
}

TEST_F(ZshCompletion, OffersJobsOptionsAndWords) {
  // Runs an interactive shell on a terminal of its own, types the line and a tabulator, and prints what
  // stands there then.
  const std::string script = R"(
    zmodload zsh/zpty
    zpty shell zsh -f -i
    zpty -w shell 'PS1=; autoload -U compinit; compinit -D; source ./_tarnix; print re''ady'
    zpty -r -m shell text '*ready*'
    zpty -w -n shell "$1"$'\t'
    zpty -r -m shell text "*$2*"
    print -r -- found
  )";
  const auto finds = [&](const std::string& typed, const std::string& completed) {
    return RunCommand({"timeout", "10", "zsh", "-f", "-c", script, "zsh", typed, completed},
                      {.directory = directory_.Path()})
               .out == "found\n";
  };
  EXPECT_TRUE(finds("tarnix extract-i", "tarnix extract-images"));
  EXPECT_TRUE(finds("tarnix split --ran", "tarnix split --ranges"));
  EXPECT_TRUE(finds("tarnix pdfa --level=1", "1a*1b"));
}

}  // namespace
}  // namespace TarnixTools::testing
