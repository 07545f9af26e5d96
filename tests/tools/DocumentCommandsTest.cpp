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
  EXPECT_EQ(result.out, "rotated_file.pdf\n");
  auto sizes = RunJson({"info", "rotated_file.pdf"})["files"][0]["pageSizes"];
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
  const Json result =
      RunJson({"rotate", "doc.pdf", "-o", "out", "--name", "x.pdf", "--out-password", "pw"});
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
      {"rotate", "rotated_file.pdf"},
      {"remove-pages", "truncated.pdf", "--pages", "1"},
      {"split", "doc-03.pdf"},
      {"protect", "locked_doc.pdf", "--new-password", "pw"},
      {"unlock", "unlocked_doc.pdf"},
      {"number", "document_with_page_numbers.pdf"},
      {"stamp-text", "document_after_text_stamp.pdf", "--text", "x"},
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
  EXPECT_EQ(result.out, "truncated.pdf\n");
  EXPECT_THAT(result.err, HasSubstr("wrote truncated.pdf (2 pages)\n"));
}

TEST_F(RemovePagesCommand, NamesItsOutput) {
  EXPECT_EQ(Run({"remove-pages", "doc.pdf", "--pages", "1", "--prefix", "p"}).out, "p.pdf\n");
  EXPECT_EQ(Run({"remove-pages", "doc.pdf", "--pages", "1", "--name", "n.pdf", "-o", "out"}).out,
            "out/n.pdf\n");
  EXPECT_EQ(PagesOf("p.pdf"), 4);
  EXPECT_EQ(PagesOf("out/n.pdf"), 4);
}

TEST_F(RemovePagesCommand, ReportsWhatCannotBeDone) {
  ExpectFailure(Run({"remove-pages", "doc.pdf"}), 14,
                "InvalidParameter: None page configured to be removed at input document");
  ExpectFailure(Run({"remove-pages", "doc.pdf", "--pages", "1-5"}), 13,
                "NoPages: All the pages will be removed from current PDF");
  ExpectFailure(Run({"remove-pages", "doc.pdf", "--pages", "1-6", "-o", "out"}), 14,
                "InvalidParameter: Invalid range [1-6] for document [doc.pdf]");
  ExpectFailure(Run({"remove-pages", "doc.pdf", "--pages", "1,,2"}), 14,
                "InvalidParameter: Invalid remove pages pattern [1,,2]");
  EXPECT_FALSE(HasFile("out"));
}

class MetadataCommand : public DocumentCommands {};

TEST_F(MetadataCommand, ShowsTheValues) {
  const auto result = Run({"metadata", "doc.pdf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "author    Ada\nkeywords\ncreator   a?b\nproducer\n");
  const Json expected = {
      {"job", "metadata"},
      {"outputs", Json::array()},
      {"report", Json::array()},
      {"metadata", {{"author", "Ada"}, {"keywords", ""}, {"creator", "a\rb"}, {"producer", ""}}}};
  EXPECT_EQ(RunJson({"metadata", "doc.pdf"}), expected);
  EXPECT_EQ(directory_.Names(), std::vector<std::string>{"doc.pdf"});
}

TEST_F(MetadataCommand, WritesACopy) {
  directory_.MakeDir("in");
  WritePdf("in/a.pdf", 1);
  EXPECT_EQ(Run({"metadata", "in/a.pdf", "--author", "Zo\xC3\xAB", "--producer", "P"}).out,
            "in/document_with_meta_params_set.pdf\n");
  const Json expected = {
      {"author", "Zo\xC3\xAB"}, {"keywords", ""}, {"creator", ""}, {"producer", "P"}};
  EXPECT_EQ(Metadata("in/document_with_meta_params_set.pdf"), expected);
}

TEST_F(MetadataCommand, NamesAndProtectsItsOutput) {
  EXPECT_EQ(Run({"metadata", "doc.pdf", "--keywords", "k", "--creator", "c", "-o", "out", "--name",
                 "x.pdf", "--out-password", "pw"})
                .out,
            "out/x.pdf\n");
  const Json expected = {{"author", ""}, {"keywords", "k"}, {"creator", "c"}, {"producer", "\r"}};
  EXPECT_EQ(Metadata("out/x.pdf", "pw"), expected);
}

TEST_F(MetadataCommand, ClearsTheValuesOnlyWhenAllowed) {
  ExpectFailure(Run({"metadata", "doc.pdf", "--author", ""}), 14,
                "InvalidParameter: None META parameter defined at task, empty values setting "
                "disabled");
  EXPECT_EQ(Run({"metadata", "doc.pdf", "--allow-empty", "--name", "x.pdf"}).out, "x.pdf\n");
  const Json expected = {{"author", ""}, {"keywords", ""}, {"creator", ""}, {"producer", "\r"}};
  EXPECT_EQ(Metadata("x.pdf"), expected);
}

class ProtectCommand : public DocumentCommands {};

TEST_F(ProtectCommand, PutsAPasswordOnACopy) {
  const auto result = Run({"protect", "doc.pdf", "--new-password", "pw", "-v"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "locked_doc.pdf\n");
  EXPECT_THAT(result.err, HasSubstr("wrote locked_doc.pdf (5 pages)\n"));
  EXPECT_EQ(Run({"info", "locked_doc.pdf"}).status, 11);
  EXPECT_EQ(PagesOf("locked_doc.pdf", "pw"), 5);
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
  ExpectFailure(Run({"protect", "doc.pdf"}), 11,
                "PasswordError: No password provided to protect PDF doc");
  ExpectFailure(Run({"protect", "doc.pdf", "--out-password", "x"}), 11,
                "PasswordError: No password provided to protect PDF doc");
  ExpectUsageError(Run({"protect", "doc.pdf", "--new-password", "a", "--new-password-file", "b"}),
                   "--new-password and --new-password-file exclude each other", "tarnix protect");
}

class UnlockCommand : public DocumentCommands {};

TEST_F(UnlockCommand, TakesThePasswordOff) {
  WriteProtectedPdf("secret.pdf", "pw");
  EXPECT_EQ(Run({"unlock", "secret.pdf", "--password", "pw"}).out, "unlocked_secret.pdf\n");
  EXPECT_EQ(PagesOf("unlocked_secret.pdf"), 1);
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

TEST_F(DocumentCommands, TakeOneInput) {
  for (const std::string job : {"rotate", "remove-pages", "metadata", "protect", "unlock"}) {
    ExpectUsageError(Run({job, "doc.pdf", "doc.pdf"}), job + " takes 1 input (given: 2)",
                     "tarnix " + job);
  }
}

TEST_F(DocumentCommands, ReportInJsonWhenVerbose) {
  TestPdf().Page("a").PageEntry("/Thumb {{t}}").Object("t", "<</Width 1>>").Write(Path("t.pdf"));
  const Json entry = {
      {"kind", "thumbnail"}, {"outcome", "dropped"}, {"count", 1}, {"reason", "not carried over"}};
  const std::vector<std::vector<std::string>> jobs = {{"rotate", "t.pdf"},
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
