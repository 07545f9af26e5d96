// The jobs that write one changed copy of one document.
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;

class DocumentCommands : public CliTest {
 protected:
  DocumentCommands() {
    TestPdf().Pages(5).InfoEntry("/Author (Ada) /Creator (a\\rb)").Write(Path("doc.pdf"));
  }

  Json Metadata(const std::string& name, const std::string& password = "") {
    return RunJson({"metadata", name, "--password", password})["metadata"];
  }
};

class RotateCommand : public DocumentCommands {};

TEST_F(RotateCommand, WritesToTheCurrentDirectoryByDefault) {
  directory_.MakeDir("in");
  WritePdf("in/a.pdf", 1);
  const auto result = Run({"rotate", "in/a.pdf", "--angle", "90"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "a-rotated.pdf\n");
  auto sizes = RunJson({"info", "a-rotated.pdf"})["files"][0]["pageSizes"];
  EXPECT_EQ(sizes[0]["width"], 792);
  EXPECT_EQ(sizes[0]["height"], 612);
}

TEST_F(RotateCommand, TurnsFromHowPagesAreSeen) {
  for (const auto& [angle, width] : {std::pair{100, 200.0}, std::pair{45, 100.0}}) {
    TestPdf().Page().Size(200, 100).Rotate(angle).Write(Path("odd.pdf"));
    EXPECT_EQ(Run({"rotate", "odd.pdf", "--angle", "90", "--name", "turned.pdf"}).status, 0);
    auto sizes = RunJson({"info", "turned.pdf"})["files"][0]["pageSizes"];
    EXPECT_EQ(sizes[0]["width"], width) << angle;
  }
}

TEST_F(RotateCommand, NamesItsOutput) {
  const Json result = RunJson({"rotate", "doc.pdf", "--angle", "0", "-o", "out", "--name", "x.pdf",
                               "--out-password", "pw"});
  EXPECT_EQ(result["outputs"], Json({"out/x.pdf"}));
  EXPECT_EQ(result["report"].size(), 1U);
  EXPECT_EQ(PagesOf("out/x.pdf", "pw"), 5);
}

TEST_F(RotateCommand, RejectsOtherAngles) {
  ExpectUsageError(Run({"rotate", "doc.pdf", "--angle", "45"}),
                   "--angle: '45' is none of 0|90|180|270", "tarnix rotate");
}

TEST_F(DocumentCommands, KeepWhatTheDocumentSaysOfItself) {
  const std::vector<std::vector<std::string>> jobs = {
      {"rotate", "doc-rotated.pdf", "--angle", "0"},
      {"remove-pages", "doc-truncated.pdf", "--pages", "1"},
      {"split", "doc-03.pdf"},
      {"protect", "doc-locked.pdf", "--new-password", "pw"},
      {"unlock", "doc-unlocked.pdf"},
      {"number", "doc-numbered.pdf"},
      {"stamp-text", "doc-stamped.pdf", "--text", "x"},
  };
  for (const std::vector<std::string>& job : jobs) {
    std::vector<std::string> command = {job[0], "doc.pdf"};
    command.insert(command.end(), job.begin() + 2, job.end());
    const Json result = RunJson(command);
    EXPECT_EQ(result["report"][0]["kind"], "metadata value") << job[0];
    EXPECT_EQ(result["report"][0]["outcome"], "kept");
    EXPECT_EQ(Metadata(job[1], job[0] == "protect" ? "pw" : "")["author"], "Ada") << job[0];
  }
}

class RemovePagesCommand : public DocumentCommands {};

TEST_F(RemovePagesCommand, LeavesPagesOut) {
  const auto result = Run({"remove-pages", "doc.pdf", "--pages", "1,3-4", "-v"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "doc-truncated.pdf\n");
  EXPECT_THAT(result.err, HasSubstr("wrote doc-truncated.pdf (2 pages)\n"));
}

TEST_F(RemovePagesCommand, NamesItsOutput) {
  EXPECT_EQ(Run({"remove-pages", "doc.pdf", "--pages", "1", "--prefix", "p"}).out, "p_doc.pdf\n");
  EXPECT_EQ(Run({"remove-pages", "doc.pdf", "--pages", "1", "--name", "n.pdf", "-o", "out"}).out,
            "out/n.pdf\n");
  EXPECT_EQ(PagesOf("p_doc.pdf"), 4);
  EXPECT_EQ(PagesOf("out/n.pdf"), 4);
}

TEST_F(RemovePagesCommand, ReportsWhatCannotBeDone) {
  ExpectUsageError(Run({"remove-pages", "doc.pdf"}), "--pages is needed", "tarnix remove-pages");
  ExpectFailure(Run({"remove-pages", "doc.pdf", "--pages", "1-5"}), 13,
                "NoPages: All the pages will be removed from current PDF");
  ExpectFailure(Run({"remove-pages", "doc.pdf", "--pages", "1-6", "-o", "out"}), 14,
                "InvalidParameter: Invalid range [1-6] for document [doc.pdf]");
  ExpectFailure(Run({"remove-pages", "doc.pdf", "--pages", "6-"}), 14,
                "InvalidParameter: No page [6] in document [doc.pdf] ([5] pages available)");
  EXPECT_EQ(Run({"remove-pages", "doc.pdf", "--pages", "1,,2"}).status, 2);
  EXPECT_FALSE(HasFile("out"));
}

class MetadataCommand : public DocumentCommands {};

TEST_F(MetadataCommand, ShowsTheValues) {
  const auto result = Run({"metadata", "doc.pdf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "author    Ada\nkeywords\ncreator   a?b\nproducer\ntitle\nsubject\n");
  const Json expected = {{"job", "metadata"},
                         {"outputs", Json::array()},
                         {"report", Json::array()},
                         {"metadata",
                          {{"author", "Ada"},
                           {"keywords", ""},
                           {"creator", "a\rb"},
                           {"producer", ""},
                           {"title", ""},
                           {"subject", ""}}}};
  EXPECT_EQ(RunJson({"metadata", "doc.pdf"}), expected);
  EXPECT_EQ(directory_.Names(), std::vector<std::string>{"doc.pdf"});
}

TEST_F(MetadataCommand, WritesACopy) {
  directory_.MakeDir("in");
  WritePdf("in/a.pdf", 1);
  EXPECT_EQ(Run({"metadata", "in/a.pdf", "--author", "Zo\xC3\xAB", "--producer", "P"}).out,
            "a-metadata.pdf\n");
  const Json expected = {{"author", "Zo\xC3\xAB"}, {"keywords", ""}, {"creator", ""},
                         {"producer", "P"},        {"title", ""},    {"subject", ""}};
  EXPECT_EQ(Metadata("a-metadata.pdf"), expected);
}

TEST_F(MetadataCommand, NamesAndProtectsItsOutput) {
  EXPECT_EQ(Run({"metadata", "doc.pdf", "--keywords", "k", "--creator", "c", "-o", "out", "--name",
                 "x.pdf", "--out-password", "pw"})
                .out,
            "out/x.pdf\n");
  const Json expected = {{"author", "Ada"}, {"keywords", "k"}, {"creator", "c"},
                         {"producer", ""},  {"title", ""},     {"subject", ""}};
  EXPECT_EQ(Metadata("out/x.pdf", "pw"), expected);
}

TEST_F(MetadataCommand, KeepsWhatIsNotGivenUnlessItIsCleared) {
  EXPECT_EQ(Run({"metadata", "doc.pdf", "--author", ""}).status, 0);
  EXPECT_EQ(Metadata("doc-metadata.pdf")["author"], "");
  EXPECT_EQ(Metadata("doc-metadata.pdf")["creator"], "a\rb");
  EXPECT_EQ(Run({"metadata", "doc.pdf", "--clear", "--name", "x.pdf"}).out, "x.pdf\n");
  const Json expected = {{"author", ""},     {"keywords", ""}, {"creator", ""},
                         {"producer", "\r"}, {"title", ""},    {"subject", ""}};
  EXPECT_EQ(Metadata("x.pdf"), expected);
}

TEST_F(MetadataCommand, SetsTitleAndSubjectAlone) {
  EXPECT_EQ(Run({"metadata", "doc.pdf", "--title", "T", "--name", "t.pdf"}).status, 0);
  EXPECT_EQ(Run({"metadata", "t.pdf", "--subject", "S", "--name", "s.pdf"}).status, 0);
  const Json values = Metadata("s.pdf");
  EXPECT_EQ(values["title"], "T");
  EXPECT_EQ(values["subject"], "S");
  EXPECT_EQ(values["author"], "Ada");
  EXPECT_EQ(Run({"metadata", "s.pdf", "--clear", "--name", "c.pdf"}).status, 0);
  EXPECT_EQ(Metadata("c.pdf")["title"], "");
}

class ProtectCommand : public DocumentCommands {};

TEST_F(ProtectCommand, PutsAPasswordOnACopy) {
  const auto result = Run({"protect", "doc.pdf", "--new-password", "pw", "-v"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "doc-locked.pdf\n");
  EXPECT_THAT(result.err, HasSubstr("wrote doc-locked.pdf (5 pages)\n"));
  EXPECT_EQ(Run({"info", "doc-locked.pdf"}).status, 11);
  EXPECT_EQ(PagesOf("doc-locked.pdf", "pw"), 5);
}

TEST_F(ProtectCommand, ReadsThePasswordFromAFile) {
  WriteFile("pw", "from file\n");
  EXPECT_EQ(
      Run({"protect", "doc.pdf", "--new-password-file", "pw", "--prefix", "safe", "-o", "out"}).out,
      "out/safe_doc.pdf\n");
  EXPECT_EQ(PagesOf("out/safe_doc.pdf", "from file"), 5);
  const auto result = Run({"protect", "out/safe_doc.pdf", "--password-file", "-",
                           "--new-password-file", "-", "--name", "x.pdf"},
                          {.input = "from file\nnew\n"});
  EXPECT_EQ(result.out, "x.pdf\n") << result.err;
  EXPECT_EQ(PagesOf("x.pdf", "new"), 5);
}

TEST_F(ProtectCommand, NeedsANewPassword) {
  const std::string line = "protect needs --new-password, --new-password-file or --owner-password";
  ExpectUsageError(Run({"protect", "doc.pdf"}), line, "tarnix protect");
  ExpectUsageError(Run({"protect", "doc.pdf", "--new-password", ""}), line, "tarnix protect");
  EXPECT_FALSE(HasFile("doc-locked.pdf"));
  EXPECT_EQ(Run({"protect", "doc.pdf", "--out-password", "x"}).status, 2);
  ExpectUsageError(Run({"protect", "doc.pdf", "--new-password", "a", "--new-password-file", "b"}),
                   "--new-password and --new-password-file exclude each other", "tarnix protect");
}

TEST_F(ProtectCommand, DeniesWhatNeedsTheOwner) {
  EXPECT_EQ(Run({"protect", "doc.pdf", "--new-password", "u", "--owner-password", "o", "--deny",
                 "print,copy"})
                .status,
            0);
  EXPECT_EQ(PagesOf("doc-locked.pdf", "u"), 5);
  EXPECT_EQ(PagesOf("doc-locked.pdf", "o"), 5);
  const std::string told =
      RunCommand({"qpdf", "--show-encryption", "--password=u", Path("doc-locked.pdf")}).out;
  if (!told.empty()) {
    EXPECT_THAT(told, HasSubstr("print low resolution: not allowed"));
    EXPECT_THAT(told, HasSubstr("extract for any purpose: not allowed"));
    EXPECT_THAT(told, HasSubstr("modify annotations: allowed"));
  }
  EXPECT_EQ(Run({"protect", "doc.pdf", "--owner-password", "o", "-o", "open.pdf"}).status, 0);
  EXPECT_EQ(PagesOf("open.pdf"), 5);
  ExpectUsageError(Run({"protect", "doc.pdf", "--owner-password", "o", "--deny", "prnt"}),
                   "--deny: 'prnt' is none of print,copy,edit,annotate,fill,assemble (did you mean "
                   "print?)",
                   "tarnix protect");
  ExpectUsageError(Run({"protect", "doc.pdf", "--deny", "print"}), "--deny needs --owner-password",
                   "tarnix protect");
}

class UnlockCommand : public DocumentCommands {};

TEST_F(UnlockCommand, TakesThePasswordOff) {
  WriteProtectedPdf("secret.pdf", "pw");
  EXPECT_EQ(Run({"unlock", "secret.pdf", "--password", "pw"}).out, "secret-unlocked.pdf\n");
  EXPECT_EQ(PagesOf("secret-unlocked.pdf"), 1);
  EXPECT_EQ(Run({"unlock", "secret.pdf", "-o", "out", "--name", "x.pdf"},
                {.environment = {{"TARNIX_PASSWORD", "pw"}}})
                .out,
            "out/x.pdf\n");
}

TEST_F(UnlockCommand, NeedsTheRightPassword) {
  WriteProtectedPdf("secret.pdf", "pw");
  ExpectFailure(Run({"unlock", "secret.pdf"}), 11,
                "PasswordError: PDF password required to unlock PDF doc");
  ExpectFailure(Run({"unlock", "secret.pdf", "--password", "wrong"}), 11,
                "PasswordError: Invalid password for PDF [secret.pdf]");
}

TEST_F(UnlockCommand, CopiesADocumentWithoutPassword) {
  EXPECT_EQ(Run({"unlock", "doc.pdf", "--prefix", "open"}).out, "open_doc.pdf\n");
  EXPECT_EQ(PagesOf("open_doc.pdf"), 5);
}

TEST_F(RotateCommand, TurnsThesePagesOnly) {
  WriteNumberedPdf("n.pdf", 4);
  EXPECT_EQ(Run({"rotate", "n.pdf", "--angle", "90", "--pages", "z,2-3:odd"}).status, 0);
  EXPECT_EQ(WidthsOf("n-rotated.pdf"), (std::vector<int>{101, 102, 50, 50}));
  EXPECT_EQ(Run({"rotate", "n.pdf", "--angle", "90", "--pages", "5"}).status, 14);
  ExpectUsageError(Run({"rotate", "n.pdf"}), "--angle is needed", "tarnix rotate");
}

TEST_F(DocumentCommands, ReportInJsonWhenVerbose) {
  TestPdf().Page("a").PageEntry("/Thumb {{t}}").Object("t", "<</Width 1>>").Write(Path("t.pdf"));
  const Json entry = {
      {"kind", "thumbnail"}, {"outcome", "dropped"}, {"count", 1}, {"reason", "not carried over"}};
  const std::vector<std::vector<std::string>> jobs = {{"rotate", "t.pdf", "--angle", "0"},
                                                      {"metadata", "t.pdf", "--author", "A"},
                                                      {"protect", "t.pdf", "--new-password", "p"},
                                                      {"unlock", "t.pdf"}};
  for (std::vector<std::string> arguments : jobs) {
    arguments.insert(arguments.end(), {"-v", "-o", "out"});
    EXPECT_THAT(RunJson(arguments)["report"], ::testing::Contains(entry)) << arguments.front();
  }
}

}  // namespace
}  // namespace TarnixTools::testing
