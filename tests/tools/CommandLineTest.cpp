// What all jobs share: usage, passwords, errors, exit statuses, progress.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/Surroundings.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class CommandLine : public CliTest {
 protected:
  CommandLine() { WritePdf("a.pdf", 1); }
};

TEST_F(CommandLine, ShowsItsVersion) {
  const auto result = Run({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "tarnix 5.4.0\n");
  EXPECT_EQ(Run({"merge", "--version"}).out, result.out);
}

TEST_F(CommandLine, ShowsItsJobs) {
  const auto result = Run({"help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, StartsWith("Usage: tarnix JOB [OPTIONS] INPUT...\n"));
  for (const std::string job : {"merge", "split", "info"}) {
    EXPECT_THAT(result.out, HasSubstr("\n  " + job + " "));
  }
  EXPECT_EQ(Run({"--help"}).out, result.out);
  EXPECT_EQ(Run({"-h"}).out, result.out);
}

TEST_F(CommandLine, ShowsTheHelpOfAJob) {
  const auto result = Run({"help", "split"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, StartsWith("Usage: tarnix split [OPTIONS] INPUT...\n"));
  EXPECT_THAT(result.out, HasSubstr("\n  --ranges PAGES "));
  EXPECT_THAT(result.out, HasSubstr("\n  -o, --output PATH "));
  EXPECT_EQ(Run({"split", "--help"}).out, result.out);
  EXPECT_EQ(Run({"split", "a.pdf", "-h"}).out, result.out);
}

TEST_F(CommandLine, DescribesOutputOptionsOnlyWhereThereIsOutput) {
  EXPECT_THAT(Run({"help", "merge"}).out, HasSubstr("--name NAME"));
  EXPECT_THAT(Run({"help", "split"}).out, HasSubstr("--name NAME"));
  EXPECT_THAT(Run({"help", "info"}).out, ::testing::Not(HasSubstr("--output")));
  EXPECT_THAT(Run({"help", "pdf2img"}).out, ::testing::Not(HasSubstr("--out-password")));
}

TEST_F(CommandLine, RejectsWrongUsage) {
  ExpectUsageError(Run({}), "no job given", "tarnix");
  ExpectUsageError(Run({"mrege", "a.pdf"}), "unknown job mrege (did you mean merge?)", "tarnix");
  ExpectUsageError(Run({"--jason", "info"}), "unknown option --jason", "tarnix");
  ExpectUsageError(Run({"help", "x"}), "unknown job x", "tarnix");
  ExpectUsageError(Run({"--version", "x"}), "unexpected argument x", "tarnix");
  ExpectUsageError(Run({"info"}), "info needs at least 1 input (given: 0)", "tarnix info");
  ExpectUsageError(Run({"info", "--jsn", "a.pdf"}), "unknown option --jsn (did you mean --json?)",
                   "tarnix info");
  ExpectUsageError(Run({"info", "-x", "a.pdf"}), "unknown option -x", "tarnix info");
  ExpectUsageError(Run({"info", "a.pdf", "--units"}), "--units needs a value", "tarnix info");
  ExpectUsageError(Run({"info", "a.pdf", "--json=yes"}), "--json takes no value", "tarnix info");
  ExpectUsageError(Run({"info", "a.pdf", "--units", "ft"}),
                   "--units: 'ft' is none of cm|mm|in|pt (did you mean pt?)", "tarnix info");
  ExpectUsageError(Run({"split", "a.pdf", "--every", "2x"}), "--every: '2x' is not a whole number",
                   "tarnix split");
  ExpectUsageError(Run({"info", "a.pdf", "-qv"}), "--quiet and --verbose exclude each other",
                   "tarnix info");
  ExpectUsageError(Run({"merge", "a.pdf", "a.pdf", "--output="}), "--output: the path is empty",
                   "tarnix merge");
}

TEST_F(CommandLine, KeepsToOneLineWhateverTheUserTyped) {
  ExpectUsageError(Run({"a\nb\x1B[1m"}), "unknown job a?b?[1m", "tarnix");
}

TEST_F(CommandLine, TellsWrongUsageAsJsonToo) {
  const auto result = Run({"info", "--json"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, StartsWith("tarnix: info needs at least 1 input (given: 0)\n"));
  const Json expected = {{"job", "info"},
                         {"outputs", Json::array()},
                         {"error",
                          {{"code", "WrongUsage"},
                           {"engineCode", 0},
                           {"message", "info needs at least 1 input (given: 0)"},
                           {"cause", ""}}}};
  EXPECT_EQ(Json::parse(result.out, nullptr, false), expected);
  EXPECT_EQ(Json::parse(Run({"no-job", "--json"}).out, nullptr, false)["job"], nullptr);
}

TEST_F(CommandLine, RefusesOptionsWithoutUse) {
  const std::vector<std::vector<std::string>> commands = {
      {"info", "a.pdf", "-o", "out"},
      {"img2pdf", "a.jpg", "--password", "x"},
      {"pdf2img", "a.pdf", "--out-password", "x"},
      {"unlock", "a.pdf", "--out-password", "x"},
      {"merge", "a.pdf", "a.pdf", "--in-place"},
      {"metadata", "a.pdf", "-o", "out"},
      {"metadata", "a.pdf", "--in-place"},
      {"metadata", "a.pdf", "--out-password", "x"},
      {"img2pdf", "a.jpg", "--landscape"},
      {"img2pdf", "a.jpg", "--landscape", "--page", "fit"}};
  for (const std::vector<std::string>& words : commands) {
    EXPECT_EQ(Run(words).status, 2) << words[0];
  }
  EXPECT_FALSE(HasFile("out"));
}

TEST_F(CommandLine, TellsTheCauseInWords) {
  WriteFile("text.pdf", "nothing of a document");
  directory_.MakeDir("dir.pdf");
  WriteFile("text.jpg", "no image");
  EXPECT_THAT(Run({"rotate", "--angle", "90", "text.pdf"}).err,
              ::testing::EndsWith(" (not a PDF document)\n"));
  EXPECT_THAT(Run({"check", "text.pdf"}).err, ::testing::EndsWith(" (not a PDF document)\n"));
  EXPECT_THAT(Run({"info", "dir.pdf"}).err, ::testing::EndsWith(" (Is a directory)\n"));
  EXPECT_THAT(Run({"img2pdf", "text.jpg"}).err, ::testing::EndsWith(" (not an image)\n"));
  EXPECT_EQ(Json::parse(Run({"split", "text.pdf", "--json"}).out, nullptr, false)["error"]["cause"],
            "not a PDF document");
}

TEST_F(CommandLine, RefusesBackslashes) {
  ExpectUsageError(Run({"info", "a\\b.pdf"}), "'a\\b.pdf': names with a backslash are not taken",
                   "tarnix info");
  ExpectUsageError(Run({"split", "a.pdf", "-o", "x\\y"}),
                   "--output: 'x\\y': names with a backslash are not taken", "tarnix split");
}

TEST_F(CommandLine, TakesADocumentFromStandardInput) {
  const RunSetup setup = {.input = ReadBytes(Path("a.pdf"))};
  EXPECT_EQ(Run({"rotate", "--angle", "90", "-"}, setup).out, "stdin-rotated.pdf\n");
  EXPECT_EQ(PagesOf("stdin-rotated.pdf"), 1);
  EXPECT_EQ(
      Json::parse(Run({"info", "-", "--json"}, setup).out, nullptr, false)["files"][0]["path"],
      "-");
  ExpectUsageError(Run({"merge", "-", "-"}, setup), "standard input can be given once",
                   "tarnix merge");
  ExpectUsageError(Run({"info", "-", "--password-file", "-"}, setup),
                   "standard input cannot be both a document and a password", "tarnix info");
}

TEST_F(CommandLine, DoesEachOfSeveralInputsOnItsOwn) {
  WriteFile("text.pdf", "nothing of a document");
  WritePdf("c.pdf", 3);
  const auto result = Run({"rotate", "--angle", "90", "a.pdf", "text.pdf", "none.pdf", "c.pdf"});
  EXPECT_EQ(result.status, 23);
  EXPECT_EQ(result.out, "a-rotated.pdf\nc-rotated.pdf\n");
  EXPECT_EQ(PagesOf("c-rotated.pdf"), 3);
  const Json json = Json::parse(Run({"rotate", "--angle", "90", "a.pdf", "none.pdf", "--json"}).out,
                                nullptr, false);
  EXPECT_EQ(json["outputs"], Json({"a-rotated.pdf"}));
  EXPECT_EQ(json["files"][0]["input"], "a.pdf");
  EXPECT_EQ(json["files"][0]["report"], json["report"]);
  EXPECT_EQ(json["errors"][0]["input"], "none.pdf");
  EXPECT_EQ(json["errors"][0]["code"], "FileNotFound");
  EXPECT_EQ(json["errors"][0]["cause"], "No such file or directory");
}

TEST_F(CommandLine, EndsAsTheFirstFailureOrElseTheWorstAnswer) {
  const std::string whole = ReadBytes(Path("a.pdf"));
  WriteFile("damaged.pdf", whole.substr(0, whole.rfind("startxref")));
  WriteFile("text.pdf", "nothing of a document");
  EXPECT_EQ(Run({"check", "a.pdf", "a.pdf"}).status, 0);
  EXPECT_EQ(Run({"check", "a.pdf", "damaged.pdf"}).status, 1);
  EXPECT_EQ(Run({"check", "damaged.pdf", "none.pdf", "text.pdf"}).status, 16);
  EXPECT_EQ(Run({"check", "text.pdf", "none.pdf"}).status, 23);
}

TEST_F(CommandLine, SaysWhichOfSeveralInputsAReportOrAFailureIsAbout) {
  TestPdf().Page().InfoEntry("/Author(A)").Write(Path("c.pdf"));
  WriteFile("text.pdf", "nothing of a document");
  EXPECT_EQ(Run({"rotate", "--angle", "90", "-v", "a.pdf", "c.pdf"}).err,
            "c.pdf: 1 metadata value kept\n"
            "wrote a-rotated.pdf (1 page)\nwrote c-rotated.pdf (1 page)\n");
  const auto images = Run({"extract-images", "text.pdf", "a.pdf"});
  EXPECT_THAT(images.err, StartsWith("tarnix: EngineError: Unable to open PDF file for images "
                                     "extraction (text.pdf: not a PDF document)\n"));
}

TEST_F(CommandLine, WritesTheTableOfErrorsThatIsInTheDocumentation) {
  EXPECT_EQ(Run({"errors"}).out, ReadBytes(SourceDir() + "/docs/errors.md"));
}

TEST_F(CommandLine, TakesTheLastOfRepeatedOptions) {
  EXPECT_THAT(Run({"info", "a.pdf", "--units", "cm", "--units", "in"}).out,
              HasSubstr("8.5 x 11 in"));
}

TEST_F(CommandLine, PrintsFailuresAsJson) {
  const auto result = Run({"split", "a.pdf", "--ranges", "7", "--json"});
  const std::string message = "No page [7] in document [a.pdf] ([1] pages available)";
  EXPECT_EQ(result.status, 14);
  EXPECT_EQ(result.err, "tarnix: InvalidParameter: " + message + "\n");
  const Json expected = {
      {"job", "split"},
      {"outputs", Json::array()},
      {"error",
       {{"code", "InvalidParameter"}, {"engineCode", 0}, {"message", message}, {"cause", ""}}}};
  EXPECT_EQ(Json::parse(result.out, nullptr, false), expected);
}

TEST_F(CommandLine, PrintsTheEnginesCodeAsJson) {
  WriteFile("text.pdf", "nothing of a document");
  const auto result = Run({"info", "text.pdf", "--json"});
  auto json = Json::parse(result.out, nullptr, false);
  EXPECT_EQ(result.status, 23);
  EXPECT_EQ(json["error"]["code"], "EngineError");
  EXPECT_NE(json["error"]["engineCode"], 0);
}

TEST_F(CommandLine, PrintsJsonForNamesThatAreNotUtf8) {
  const auto result = Run({"info", "\xFF.pdf", "--json"});
  EXPECT_EQ(result.status, 16);
  EXPECT_EQ(Json::parse(result.out, nullptr, false)["error"]["message"],
            "File not found or invalid content: [\xEF\xBF\xBD.pdf]");
}

TEST_F(CommandLine, PassesEmptyPathsToTheLibrary) {
  ExpectFailure(Run({"info", ""}), 14, "InvalidParameter: Empty path received at PDF doc");
}

class Passwords : public CommandLine {
 protected:
  Passwords() { WriteProtectedPdf("secret.pdf", "pw"); }

  int Status(std::vector<std::string> arguments, const RunSetup& setup = {}) {
    arguments.insert(arguments.begin(), {"info", "secret.pdf"});
    return Run(arguments, setup).status;
  }
};

TEST_F(Passwords, ComeFromOptionFileInputOrEnvironment) {
  WriteFile("file", "pw\nanother line\n");
  EXPECT_EQ(Status({"--password", "pw"}), 0);
  EXPECT_EQ(Status({"--password=pw"}), 0);
  EXPECT_EQ(Status({"--password-file", "file"}), 0);
  EXPECT_EQ(Status({"--password-file", "-"}, {.input = "pw\n"}), 0);
  EXPECT_EQ(Status({"--password-file", "-"}, {.input = "pw"}), 0);
  EXPECT_EQ(Status({}, {.environment = {{"TARNIX_PASSWORD", "pw"}}}), 0);
}

TEST_F(Passwords, ThatAreLostWithTheProtectionAreTold) {
  const auto result = Run({"rotate", "--angle", "90", "secret.pdf", "--password", "pw"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "tarnix: protection dropped: the input is protected, the output is not\n");
  EXPECT_EQ(Run({"unlock", "secret.pdf", "--password", "pw"}).err, "");
  EXPECT_EQ(Run({"rotate", "--angle", "90", "secret.pdf", "--password", "pw", "-q"}).err, "");
}

TEST_F(Passwords, AreAskedForOnATerminalWithoutEcho) {
  for (const auto& [typed, status] : {std::pair<std::string, int>{"pw", 0}, {"hush", 11}}) {
    TerminalRun run({"info", Path("secret.pdf")}, {.input = TerminalInput::Terminal});
    ASSERT_TRUE(run.WaitFor("Password for " + Path("secret.pdf") + ": "));
    run.Type(typed + "\n");
    EXPECT_THAT(run.Finish(), ::testing::Not(HasSubstr(typed + "\r")));
    EXPECT_EQ(run.Status(), status);
  }
}

TEST_F(Passwords, AreNotAskedForWhereOneIsGiven) {
  TerminalRun run({"info", Path("secret.pdf"), "--password", "wrong"},
                  {.input = TerminalInput::Terminal});
  EXPECT_THAT(run.Finish(), StartsWith("tarnix: PasswordError: "));
  EXPECT_EQ(run.Status(), 11);
}

TEST_F(Passwords, AreMissingOrWrong) {
  ExpectFailure(Run({"info", "secret.pdf"}), 11,
                "PasswordError: Invalid password for PDF [secret.pdf]");
  EXPECT_EQ(Status({"--password", "wrong"}), 11);
  EXPECT_EQ(Status({"--password-file", "-"}, {.input = "\n"}), 11);
}

TEST_F(Passwords, OnTheCommandLineComeBeforeTheEnvironment) {
  EXPECT_EQ(Status({"--password", "wrong"}, {.environment = {{"TARNIX_PASSWORD", "pw"}}}), 11);
  EXPECT_EQ(Status({"--password="}, {.environment = {{"TARNIX_PASSWORD", "pw"}}}), 11);
}

TEST_F(Passwords, OfTheEnvironmentAreNotForTheOutput) {
  Run({"merge", "a.pdf", "a.pdf"}, {.environment = {{"TARNIX_PASSWORD", "pw"}}});
  EXPECT_EQ(Run({"info", "merged.pdf"}).status, 0);
}

TEST_F(Passwords, ForInputAndOutputAreTwoLinesOfStandardInput) {
  const auto result =
      Run({"merge", "secret.pdf", "a.pdf", "--password-file", "-", "--out-password-file", "-"},
          {.input = "pw\nnew\n"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(PagesOf("merged.pdf", "new"), 2);
}

TEST_F(Passwords, NeedAFileThatHasOne) {
  WriteFile("empty", "");
  ExpectFailure(Run({"info", "a.pdf", "--password-file", "none"}), 16,
                "FileNotFound: Unable to open password file [none]", "No such file or directory");
  ExpectFailure(Run({"info", "a.pdf", "--password-file", "empty"}), 14,
                "InvalidParameter: No password in file [empty]");
  ExpectFailure(Run({"info", "a.pdf", "--password-file", "/dev/zero"}), 14,
                "InvalidParameter: Password in file [/dev/zero] is too long");
}

TEST_F(Passwords, AreTriedInTurn) {
  WriteFile("file", "pw\n");
  EXPECT_EQ(Status({"--password", "one", "--password", "pw"}), 0);
  EXPECT_EQ(Status({"--password", "pw", "--password", "two"}), 0);
  EXPECT_EQ(Status({"--password", "one", "--password-file", "file"}), 0);
  EXPECT_EQ(Status({"--password", "one", "--password", "two"}), 11);
}

TEST_F(Passwords, ForTheOutputAreGivenInOneWay) {
  ExpectUsageError(
      Run({"merge", "a.pdf", "a.pdf", "--out-password", "x", "--out-password-file", "y"}),
      "--out-password and --out-password-file exclude each other", "tarnix merge");
}

TEST_F(Passwords, AreNeverPrinted) {
  const std::vector<std::vector<std::string>> runs = {
      {"info", "secret.pdf", "--password", "hush", "--json"},
      {"info", "secret.pdf", "--pasword=hush"},
      {"pdf2img", "secret.pdf", "--password", "hush"},
      {"info", "secret.pdf", "-phush"},
      {"--password=hush", "info", "secret.pdf"},
      {"merge", "a.pdf", "a.pdf", "--out-password", "hush", "-v", "--json"},
  };
  for (const auto& arguments : runs) {
    const auto result = Run(arguments);
    EXPECT_THAT(result.out + result.err, ::testing::Not(HasSubstr("hush"))) << arguments[1];
  }
}

class StandardOutput : public CommandLine {
 protected:
  StandardOutput() { WritePdf("b.pdf", 2); }

  // The merge itself is done; its result could not be told.
  void ExpectUnwritable(const std::string& output, const std::string& reason) {
    const auto result = Run({"merge", "a.pdf", "b.pdf"}, {.output = output});
    EXPECT_EQ(result.status, 17);
    EXPECT_EQ(result.err,
              "tarnix: InternalError: Unable to write to standard output (" + reason + ")\n");
    EXPECT_EQ(PagesOf("merged.pdf"), 3);
  }
};

TEST_F(StandardOutput, ThatIsFullIsAnError) {
  ExpectUnwritable("/dev/full", "No space left on device");
}

TEST_F(StandardOutput, ThatNobodyReadsEndsTheProgramSilently) {
  const auto result = Run({"merge", "a.pdf", "b.pdf"}, {.output = "broken pipe"});
  EXPECT_EQ(result.status, 141);
  EXPECT_EQ(result.err, "");
}

TEST_F(StandardOutput, ThatIsClosedIsAnError) {
  ExpectUnwritable("closed", "Bad file descriptor");
}

class Progress : public CommandLine {
 protected:
  std::string BytesOnError(std::vector<std::string> options) {
    options.insert(options.begin(), {"merge", "a.pdf", "a.pdf"});
    const auto result = Run(options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "merged.pdf\n");
    return result.err;
  }
};

TEST_F(Progress, IsNotShownWithoutATerminal) {
  EXPECT_EQ(BytesOnError({}), "");
  EXPECT_EQ(BytesOnError({"--progress", "auto"}), "");
  EXPECT_EQ(BytesOnError({"--progress", "never"}), "");
}

TEST_F(Progress, IsShownAlwaysAndWiped) {
  const auto shown = BytesOnError({"--progress", "always"});
  EXPECT_THAT(shown, StartsWith("\rtarnix merge ["));
  EXPECT_THAT(shown, ::testing::ContainsRegex("\r +\r$"));
}

TEST_F(Progress, IsNotShownWhenQuiet) {
  EXPECT_EQ(BytesOnError({"--progress", "always", "--quiet"}), "");
}

// The output is a pipe that nobody empties, so the job lasts until it is killed.
TEST_F(Progress, IsShownOnATerminalWhileAJobLasts) {
  WritePdf("many.pdf", 5000);
  const std::string many = Path("many.pdf");
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  const int reader = open(Path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  ASSERT_GE(reader, 0);
  {
    TerminalRun run({"merge", many, many, "-o", directory_.Path(), "--name", "pipe"});
    EXPECT_TRUE(run.WaitFor("tarnix merge ["));
  }
  close(reader);
}

TEST_F(Progress, IsNeverShownOnATerminalWhenForbidden) {
  TerminalRun run(
      {"merge", "--progress", "never", "-o", directory_.Path(), Path("a.pdf"), Path("a.pdf")});
  EXPECT_EQ(run.Finish(), "");
}

}  // namespace
}  // namespace TarnixTools::testing
