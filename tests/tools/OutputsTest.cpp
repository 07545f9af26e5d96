// Where outputs go and what they are called, in every job; what is left of a job that is interrupted.
#include <cerrno>
#include <csignal>

#include <sys/stat.h>

#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Outputs : public CliTest {
 protected:
  Outputs() {
    WritePdf("a.pdf", 1);
    WritePdf("b.pdf", 2);
  }

  RunResult Rotate(std::vector<std::string> words, const RunSetup& setup = {}) const {
    words.insert(words.begin(), {"rotate", "--angle", "90"});
    return Run(words, setup);
  }
};

TEST_F(Outputs, AreNamedAfterTheInputAndWhatWasDone) {
  directory_.MakeDir("in");
  WritePdf("in/report.v2.pdf", 2);
  const std::vector<std::vector<std::string>> jobs = {
      {"rotate", "report.v2-rotated.pdf", "--angle", "90"},
      {"number", "report.v2-numbered.pdf"},
      {"protect", "report.v2-locked.pdf", "--new-password", "x"},
      {"compress", "report.v2-compressed.pdf"},
      {"repair", "report.v2-repaired.pdf"},
      {"xmp", "report.v2.xmp"},
  };
  for (const auto& job : jobs) {
    std::vector<std::string> words = {job[0], "in/report.v2.pdf"};
    words.insert(words.end(), job.begin() + 2, job.end());
    EXPECT_EQ(Run(words).out, job[1] + "\n") << job[0];
    EXPECT_TRUE(HasFile(job[1]));
  }
  EXPECT_THAT(directory_.Names("in"), ElementsAre("report.v2.pdf"));
}

TEST_F(Outputs, GoToAFileOrADirectory) {
  EXPECT_EQ(Rotate({"a.pdf", "-o", "x/y.pdf"}).out, "x/y.pdf\n");
  EXPECT_EQ(Rotate({"a.pdf", "-o", "x/Y.PDF"}).out, "x/Y.PDF\n");
  EXPECT_EQ(Rotate({"a.pdf", "-o", "z"}).out, "z/a-rotated.pdf\n");
  EXPECT_EQ(Rotate({"a.pdf", "-o", "d.pdf/"}).out, "d.pdf/a-rotated.pdf\n");
  EXPECT_EQ(Rotate({"b.pdf", "-o", "d.pdf"}).out, "d.pdf/b-rotated.pdf\n");
  EXPECT_EQ(Rotate({"a.pdf", "--out-dir", "z"}).out, "z/a-rotated.pdf\n");
  ExpectUsageError(Rotate({"a.pdf", "b.pdf", "-o", "one.pdf"}),
                   "--output: 'one.pdf' looks like a file, and several are written",
                   "tarnix rotate");
  ExpectUsageError(Run({"split", "b.pdf", "-o", "one.pdf"}),
                   "--output: 'one.pdf' looks like a file, and several are written",
                   "tarnix split");
  EXPECT_FALSE(HasFile("one.pdf"));
}

TEST_F(Outputs, GoToStandardOutput) {
  const auto result = Rotate({"b.pdf", "-o", "-"});
  EXPECT_EQ(result.status, 0) << result.err;
  WriteFile("copy.pdf", result.out);
  EXPECT_EQ(PagesOf("copy.pdf"), 2);
  EXPECT_FALSE(HasFile("-"));
  EXPECT_FALSE(HasFile("b-rotated.pdf"));
  ExpectUsageError(Rotate({"a.pdf", "b.pdf", "-o", "-"}),
                   "standard output takes one file, and several are written", "tarnix rotate");
  EXPECT_EQ(Rotate({"a.pdf", "-o", "-", "--json"}).status, 2);
}

TEST_F(Outputs, HaveNamesWithStemAndNumber) {
  EXPECT_EQ(Rotate({"a.pdf", "b.pdf", "--name", "{n}-{stem}-x.pdf"}).out, "1-a-x.pdf\n2-b-x.pdf\n");
  EXPECT_EQ(Run({"merge", "a.pdf", "b.pdf", "--name", "all.pdf"}).out, "all.pdf\n");
  EXPECT_EQ(Rotate({"a.pdf", "--prefix", "p"}).out, "p_a.pdf\n");
  ExpectUsageError(Rotate({"a.pdf", "b.pdf", "--name", "x.pdf"}),
                   "more than one output would be 'x.pdf'", "tarnix rotate");
  WritePdf("{n}{stem}.pdf", 1);
  EXPECT_EQ(Rotate({"{n}{stem}.pdf"}).out, "{n}{stem}-rotated.pdf\n");
  EXPECT_EQ(Run({"split", "{n}{stem}.pdf"}).out, "{n}{stem}-01.pdf\n");
}

TEST_F(Outputs, AreNotReplacedWhereThatIsAsked) {
  EXPECT_EQ(Rotate({"a.pdf", "-n"}).status, 0);
  ExpectFailure(Rotate({"a.pdf", "-n"}), 16,
                "FileNotFound: Unable to create new file [a-rotated.pdf] (File exists)");
  EXPECT_EQ(Rotate({"a.pdf"}).status, 0);
  EXPECT_EQ(Run({"split", "b.pdf", "--no-clobber"}).status, 0);
  EXPECT_EQ(Run({"split", "b.pdf", "--no-clobber"}).status, 16);
  EXPECT_EQ(Rotate({"b.pdf", "a.pdf", "-n"}).status, 16);
  EXPECT_FALSE(HasFile("b-rotated.pdf")) << "refused before any work";
}

TEST_F(Outputs, ReplaceTheInputOnlyWhenAsked) {
  ExpectUsageError(Rotate({"a.pdf", "-o", "a.pdf"}),
                   "the output 'a.pdf' is also an input (--in-place writes over it)",
                   "tarnix rotate");
  EXPECT_EQ(Rotate({"a.pdf", "b.pdf", "--in-place"}).out, "a.pdf\nb.pdf\n");
  EXPECT_EQ(WidthsOf("a.pdf"), std::vector<int>{792});
  EXPECT_EQ(Rotate({"a.pdf", "--in-place", "-o", "x.pdf"}).status, 2);
  WritePdf("b-01.pdf", 1);
  ExpectUsageError(Run({"split", "b.pdf", "b-01.pdf"}), "the output 'b-01.pdf' is also an input",
                   "tarnix split");
}

TEST_F(Outputs, ReplaceNoFileTwice) {
  directory_.MakeDir("in");
  std::filesystem::create_symlink(Path("a.pdf"), Path("in/link.pdf"));
  for (const std::string again : {"a.pdf", "./a.pdf", "in/../a.pdf", "in/link.pdf"}) {
    ExpectUsageError(Rotate({"--in-place", "a.pdf", again}),
                     "more than one output would be '" + again + "'", "tarnix rotate");
  }
}

TEST_F(Outputs, OfAFailedJobLeaveNoDirectoryBehind) {
  WriteFile("text.pdf", "nothing of a document");
  directory_.MakeDir("there");
  for (const std::string out : {"new", "new/one/x.pdf", "there/new/x.pdf", "there", "./new//x/"}) {
    EXPECT_EQ(Rotate({"text.pdf", "-o", out}).status, 23);
    EXPECT_EQ(Run({"metadata", "--author", "A", "text.pdf", "-o", out}).status, 23);
  }
  EXPECT_EQ(Run({"extract-images", "a.pdf", "-o", "new/images"}).status, 18);
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf", "b.pdf", "text.pdf", "there"));
  EXPECT_THAT(directory_.Names("there"), ElementsAre());
  EXPECT_EQ(Rotate({"a.pdf", "text.pdf", "-o", "new/some"}).out, "new/some/a-rotated.pdf\n");
  EXPECT_TRUE(HasFile("new/some/a-rotated.pdf"));
}

TEST_F(Outputs, OfAFailedJobAreTold) {
  directory_.MakeDir("out");
  directory_.MakeDir("out/b-02.pdf");
  const auto result = Run({"split", "b.pdf", "-o", "out"});
  EXPECT_NE(result.status, 0);
  EXPECT_EQ(result.out, "out/b-01.pdf\n");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("b-01.pdf", "b-02.pdf"));
}

// The output is a pipe that nobody empties, so the job lasts until it is interrupted.
TEST_F(Outputs, OfAnInterruptedJobAreGone) {
  WritePdf("many.pdf", 5000);
  for (const int signal : {SIGINT, SIGTERM}) {
    ASSERT_TRUE(mkfifo(Path("pipe").c_str(), 0600) == 0 || errno == EEXIST);
    const std::string script =
        "set -m; cd " + directory_.Path() + "; (exec 3<>pipe; exec " + TarnixPath() +
        " merge many.pdf many.pdf -o . --name pipe --json --progress always >out.json 2>err.txt) & "
        "until [ -s err.txt ]; do sleep 0.05; done; kill -" +
        std::to_string(signal) + " $!; wait $!; echo $?";
    const auto result = RunCommand({"bash", "-c", script});
    EXPECT_EQ(result.out, std::to_string(128 + signal) + "\n") << result.err;
    EXPECT_EQ(Json::parse(ReadBytes(Path("out.json")), nullptr, false)["error"]["code"],
              "Interrupted");
    EXPECT_THAT(ReadBytes(Path("err.txt")),
                HasSubstr(signal == SIGINT ? "interrupted" : "terminated"));
    std::filesystem::remove(Path("err.txt"));
  }
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf", "b.pdf", "many.pdf", "out.json", "pipe"));
}

}  // namespace
}  // namespace TarnixTools::testing
