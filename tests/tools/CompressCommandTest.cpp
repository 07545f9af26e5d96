// tarnix compress.
#include "support/TestPackets.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;

class CompressCommand : public CliTest {
 protected:
  CompressCommand() { WritePdf("doc.pdf", 30); }

  std::size_t SizeOf(const std::string& name) const { return ReadBytes(Path(name)).size(); }
};

TEST_F(CompressCommand, WritesToTheCurrentDirectoryByDefault) {
  directory_.MakeDir("in");
  WritePdf("in/a.pdf", 30);
  const auto result = Run({"compress", "in/a.pdf"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "a-compressed.pdf\n");
  EXPECT_EQ(result.err, "");
  EXPECT_LT(SizeOf("a-compressed.pdf"), SizeOf("in/a.pdf"));
  EXPECT_EQ(PagesOf("a-compressed.pdf"), 30);
}

TEST_F(CompressCommand, NamesItsOutput) {
  EXPECT_EQ(Run({"compress", "doc.pdf", "-o", "out"}).out, "out/doc-compressed.pdf\n");
  EXPECT_EQ(Run({"compress", "doc.pdf", "-o", "out", "--name", "x"}).out, "out/x\n");
  EXPECT_EQ(Run({"compress", "doc.pdf", "--prefix", "small"}).out, "small_doc.pdf\n");
  EXPECT_TRUE(HasFile("out/doc-compressed.pdf"));
  EXPECT_TRUE(HasFile("out/x"));
  EXPECT_TRUE(HasFile("small_doc.pdf"));
}

TEST_F(CompressCommand, TellsTheRatio) {
  for (const char* const level : {"low", "recommended", "extreme"}) {
    const Json result = RunJson({"compress", "doc.pdf", "--level", level});
    EXPECT_EQ(result["outputs"], Json({"doc-compressed.pdf"}));
    const double ratio = 100.0 * static_cast<double>(SizeOf("doc-compressed.pdf")) /
                         static_cast<double>(SizeOf("doc.pdf"));
    EXPECT_NEAR(result["ratio"], ratio, 0.01) << level;
    EXPECT_EQ(result["images"], Json::array());
    EXPECT_EQ(result["fonts"]["count"], 0);
    EXPECT_FALSE(result.contains("files"));
    EXPECT_EQ(result["report"], Json::array());
  }
}

TEST_F(CompressCommand, TakesSeveralInputs) {
  WritePdf("other.pdf", 60);
  const auto result = Run({"compress", "doc.pdf", "other.pdf", "-o", "out"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "out/doc-compressed.pdf\nout/other-compressed.pdf\n");
  EXPECT_EQ(PagesOf("out/other-compressed.pdf"), 60);
  const Json files = RunJson({"compress", "doc.pdf", "other.pdf"})["files"];
  ASSERT_EQ(files.size(), 2U);
  EXPECT_EQ(files[1]["input"], "other.pdf");
  EXPECT_EQ(files[1]["outputs"], Json({"other-compressed.pdf"}));
  const double ratio = 100.0 * static_cast<double>(SizeOf("other-compressed.pdf")) /
                       static_cast<double>(SizeOf("other.pdf"));
  EXPECT_NEAR(files[1]["ratio"], ratio, 0.01);
}

TEST_F(CompressCommand, GoesOnBehindAnInputThatFails) {
  WriteFile("bad.pdf", "no document");
  WritePdf("other.pdf", 60);
  const std::vector<std::string> inputs = {"compress", "bad.pdf", "missing.pdf", "other.pdf"};
  const auto result = Run(inputs);
  EXPECT_EQ(result.status, 23);
  EXPECT_EQ(result.out, "other-compressed.pdf\n");
  EXPECT_THAT(result.err, HasSubstr("tarnix: EngineError: Could not compress document [bad.pdf]"));
  EXPECT_THAT(result.err, HasSubstr("tarnix: FileNotFound: "));
  const Json object =
      Json::parse(Run({"compress", "bad.pdf", "missing.pdf", "other.pdf", "--json"}).out);
  EXPECT_EQ(object["outputs"], Json({"other-compressed.pdf"}));
  ASSERT_EQ(object["errors"].size(), 2U);
  EXPECT_EQ(object["errors"][0]["input"], "bad.pdf");
  EXPECT_EQ(object["errors"][0]["code"], "EngineError");
  EXPECT_EQ(object["errors"][1]["code"], "FileNotFound");
}

TEST_F(CompressCommand, WantsAnOutputForEachInput) {
  directory_.MakeDir("in");
  WritePdf("in/doc.pdf", 1);
  ExpectUsageError(Run({"compress", "doc.pdf", "in/doc.pdf"}),
                   "more than one output would be 'doc-compressed.pdf'", "tarnix compress");
  ExpectUsageError(Run({"compress", "doc.pdf", "other.pdf", "--name", "x.pdf"}),
                   "more than one output would be 'x.pdf'", "tarnix compress");
  EXPECT_FALSE(HasFile("doc-compressed.pdf"));
}

TEST_F(CompressCommand, KnowsThreeLevels) {
  ExpectUsageError(Run({"compress", "doc.pdf", "--level", "high"}),
                   "--level: 'high' is none of low|recommended|extreme", "tarnix compress");
}

TEST_F(CompressCommand, NeedsTheRightPassword) {
  WriteProtectedPdf("secret.pdf", "pw");
  ExpectFailure(Run({"compress", "secret.pdf"}), 11,
                "PasswordError: Could not compress document [secret.pdf], error [0x00000011]");
  ExpectFailure(Run({"compress", "secret.pdf", "--password", "wrong"}), 11,
                "PasswordError: Could not compress document [secret.pdf], error [0x00000011]");
  EXPECT_FALSE(HasFile("secret-compressed.pdf"));
}

TEST_F(CompressCommand, WarnsOfProtectionThatIsLost) {
  WriteProtectedPdf("secret.pdf", "pw");
  EXPECT_EQ(Run({"compress", "secret.pdf", "--password", "pw"}).err,
            "tarnix: protection dropped: the input is protected, the output is not\n");
  const auto quiet = Run({"compress", "secret.pdf", "--password", "pw", "-q"});
  EXPECT_EQ(quiet.err, "");
  const auto kept = Run({"compress", "secret.pdf", "--password", "pw", "--out-password", "new"});
  EXPECT_EQ(kept.err, "");
  EXPECT_EQ(PagesOf("secret-compressed.pdf", "new"), 1);
}

TEST_F(CompressCommand, WarnsOfAClaimThatIsLost) {
  const std::string packet = TestPacket(ClaimOf("2"));
  TestPdf()
      .Pages(30)
      .Object("packet", "<</Type/Metadata/Length " + std::to_string(packet.size()) +
                            ">>\nstream\n" + packet + "\nendstream")
      .CatalogEntry("/Metadata {{packet}}")
      .Write(Path("a.pdf"));
  const std::string line = "1 PDF/A claim dropped: does not hold for what is written\n";
  EXPECT_EQ(Run({"compress", "a.pdf"}).err, "tarnix: " + line);
  EXPECT_THAT(Run({"compress", "a.pdf", "-v"}).err,
              HasSubstr(line + "wrote a-compressed.pdf (30 pages)\n"));
  EXPECT_EQ(RunJson({"compress", "a.pdf"})["report"][0]["kind"], "PDF/A claim");
}

TEST_F(CompressCommand, RefusesWhatIsNoDocument) {
  WriteFile("a.pdf", "no document");
  const auto result = Run({"compress", "a.pdf"});
  EXPECT_EQ(result.status, 23);
  EXPECT_THAT(result.err, HasSubstr("EngineError"));
  EXPECT_EQ(Run({"compress", "missing.pdf"}).status, 16);
  EXPECT_FALSE(HasFile("a-compressed.pdf"));
}

TEST_F(CompressCommand, TellsThatTheOutputCannotBeMade) {
  WriteFile("file", "");
  EXPECT_EQ(Run({"compress", "doc.pdf", "-o", "file"}).status, 16);
  ExpectUsageError(Run({"compress", "doc.pdf", "--name", "missing/x.pdf"}),
                   "--name: 'missing/x.pdf' is not the name of a file", "tarnix compress");
}

TEST_F(CompressCommand, WritesOverItsInput) {
  const std::size_t before = SizeOf("doc.pdf");
  ExpectUsageError(Run({"compress", "doc.pdf", "--name", "doc.pdf"}),
                   "the output 'doc.pdf' is also an input (--in-place writes over it)",
                   "tarnix compress");
  EXPECT_EQ(Run({"compress", "doc.pdf", "--in-place"}).out, "doc.pdf\n");
  EXPECT_LT(SizeOf("doc.pdf"), before);
  EXPECT_EQ(PagesOf("doc.pdf"), 30);
}

}  // namespace
}  // namespace TarnixTools::testing
