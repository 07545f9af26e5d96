// What terminals of every kind are shown while a job runs.
#include <random>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;

class Terminal : public CliTest {
 protected:
  Terminal() { WritePdf("many.pdf", 5000); }

  ~Terminal() override {
    for (const int reader : readers_) {
      close(reader);
    }
  }

  // A job that does not end: its output goes to a pipe that nobody empties.
  std::vector<std::string> Lasting(const std::string& pipe, const std::vector<std::string>& job) {
    EXPECT_EQ(mkfifo(Path(pipe).c_str(), 0600), 0);
    readers_.push_back(open(Path(pipe).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    std::vector<std::string> words = job;
    words.insert(words.end(), {"-o", directory_.Path(), "--name", pipe});
    return words;
  }

  std::vector<std::string> LastingMerge(const std::string& pipe) {
    return Lasting(pipe, {"merge", Path("many.pdf"), Path("many.pdf")});
  }

  static std::vector<std::string> LinesDrawn(const std::string& shown) {
    std::vector<std::string> lines;
    std::istringstream parts(shown);
    for (std::string line; std::getline(parts, line, '\r');) {
      lines.push_back(line);
    }
    return lines;
  }

 private:
  std::vector<int> readers_;
};

TEST_F(Terminal, OfFewColumnsIsShownWhatFits) {
  for (const unsigned short columns : {10, 20, 30, 80}) {
    TerminalRun run({"merge", "--progress", "always", "-o", directory_.Path(), Path("many.pdf"),
                     Path("many.pdf")},
                    {.columns = columns});
    const std::string shown = run.Finish();
    EXPECT_EQ(run.Status(), 0);
    EXPECT_THAT(shown, HasSubstr(columns < 20   ? "\r"
                                 : columns < 30 ? "\rtarnix merge "
                                                : "\rtarnix merge ["));
    for (const std::string& line : LinesDrawn(shown)) {
      EXPECT_LT(line.size(), columns) << line;
    }
  }
}

// The others are given the time that an ordinary terminal takes to show its bar.
TEST_F(Terminal, ThatTakesNoBarIsShownNothing) {
  const std::vector<TerminalSetup> setups = {{.columns = 19}, {.columns = 80, .kind = "dumb"}};
  for (std::size_t i = 0; i < setups.size(); ++i) {
    TerminalRun silent(LastingMerge("silent" + std::to_string(i)), setups[i]);
    TerminalRun ordinary(LastingMerge("ordinary" + std::to_string(i)), {.columns = 20});
    EXPECT_TRUE(ordinary.WaitFor("tarnix merge"));
    EXPECT_EQ(silent.Kill(), "");
  }
}

TEST_F(Terminal, OfThirtyColumnsIsShownABar) {
  TerminalRun run(LastingMerge("pipe"), {.columns = 30});
  EXPECT_TRUE(run.WaitFor("tarnix merge ["));
}

// Steps that the engines tell, where a job works on one document. It has more bytes than a pipe takes.
TEST_F(Terminal, IsShownHowFarAJobOnOneDocumentIs) {
  std::mt19937 random(7);
  std::string content;
  while (content.size() < 600'000) {
    content += "% " + std::to_string(random()) + std::to_string(random()) + "\n";
  }
  TestPdf().Page().Content(content).Write(Path("large.pdf"));
  for (const std::string job : {"compress", "repair", "pdfa"}) {
    TerminalRun run(Lasting("pipe-" + job, {job, Path("large.pdf")}), {.columns = 80});
    EXPECT_TRUE(run.WaitFor("/100")) << job;
    EXPECT_THAT(run.Kill(), ContainsRegex("tarnix " + job + " \\[.*[0-9]+ % [0-9]+/100"));
  }
}

}  // namespace
}  // namespace TarnixTools::testing
