// tarnix repair and tarnix check.
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

class RepairCommand : public CliTest {
 protected:
  RepairCommand() {
    WritePdf("sound.pdf", 2);
    const std::string bytes = TestPdf().Pages(2).Bytes();
    WriteFile("torn.pdf", bytes.substr(0, bytes.rfind("xref\n0")));
    WriteFile("lost.pdf", Without(bytes, "/Type /Page "));
  }

  // A document whose first page is no dictionary.
  static std::string Without(std::string bytes, const std::string& part) {
    const std::size_t page = bytes.find(part);
    const std::size_t start = bytes.rfind("<<", page);
    EXPECT_NE(page, std::string::npos);
    return bytes.replace(start, 2, "( ");
  }

  static Json Parsed(const RunResult& result) { return Json::parse(result.out, nullptr, false); }
};

TEST_F(RepairCommand, WritesToTheCurrentDirectoryByDefault) {
  const auto result = Run({"repair", "torn.pdf"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "torn-repaired.pdf\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(PagesOf("torn-repaired.pdf"), 2);
  EXPECT_EQ(Run({"check", "torn-repaired.pdf"}).status, 0);
}

TEST_F(RepairCommand, NamesItsOutput) {
  EXPECT_EQ(Run({"repair", "torn.pdf", "-o", "out"}).out, "out/torn-repaired.pdf\n");
  EXPECT_EQ(Run({"repair", "torn.pdf", "-o", "out", "--name", "x.pdf"}).out, "out/x.pdf\n");
  EXPECT_TRUE(HasFile("out/torn-repaired.pdf"));
  EXPECT_TRUE(HasFile("out/x.pdf"));
}

TEST_F(RepairCommand, ListsWhatWasWrong) {
  const Json torn = RunJson({"repair", "torn.pdf"});
  EXPECT_EQ(torn["outputs"], Json({"torn-repaired.pdf"}));
  EXPECT_THAT(torn["problems"],
              Contains(Json("Nothing tells where the cross-reference starts; fixed")));
  EXPECT_EQ(torn["report"][0]["kind"], "damage");
  EXPECT_EQ(RunJson({"repair", "sound.pdf"})["problems"], Json::array());
}

TEST_F(RepairCommand, TellsThatSomethingIsLost) {
  const auto result = Run({"repair", "lost.pdf"});
  EXPECT_EQ(result.status, 3) << result.err;
  EXPECT_THAT(result.err, HasSubstr("tarnix: "));
  EXPECT_EQ(PagesOf("lost-repaired.pdf"), 2);
  EXPECT_EQ(Run({"repair", "lost.pdf", "-q"}).err, "");
}

TEST_F(RepairCommand, TakesSeveralInputs) {
  WriteFile("text.pdf", "no document");
  const auto result = Run({"repair", "torn.pdf", "sound.pdf", "-o", "out"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "out/torn-repaired.pdf\nout/sound-repaired.pdf\n");
  const auto lost = Run({"repair", "lost.pdf", "torn.pdf", "--json"});
  EXPECT_EQ(lost.status, 3);
  EXPECT_THAT(lost.err, HasSubstr("tarnix: lost.pdf: damage: "));
  const Json files = Parsed(lost)["files"];
  ASSERT_EQ(files.size(), 2U);
  EXPECT_EQ(files[1]["input"], "torn.pdf");
  EXPECT_EQ(files[1]["outputs"], Json({"torn-repaired.pdf"}));
  EXPECT_THAT(files[1]["problems"],
              Contains(Json("Nothing tells where the cross-reference starts; fixed")));
  const auto failed = Run({"repair", "text.pdf", "torn.pdf", "lost.pdf", "--json"});
  EXPECT_EQ(failed.status, 23);
  EXPECT_EQ(Parsed(failed)["outputs"], Json({"torn-repaired.pdf", "lost-repaired.pdf"}));
  EXPECT_EQ(Parsed(failed)["errors"][0]["input"], "text.pdf");
  ExpectUsageError(Run({"repair", "torn.pdf", "sound.pdf", "--name", "x.pdf"}),
                   "more than one output would be 'x.pdf'", "tarnix repair");
}

TEST_F(RepairCommand, NeedsTheRightPassword) {
  WriteProtectedPdf("secret.pdf", "pw");
  ExpectFailure(Run({"repair", "secret.pdf"}), 11,
                "PasswordError: Unable to open doc [secret.pdf] to be repaired");
  EXPECT_EQ(Run({"check", "secret.pdf", "--password", "wrong"}).status, 11);
  EXPECT_EQ(Run({"check", "secret.pdf", "--password", "pw"}).status, 0);
  EXPECT_EQ(Run({"repair", "secret.pdf", "--password", "pw"}).err,
            "tarnix: protection dropped: the input is protected, the output is not\n");
  EXPECT_EQ(PagesOf("secret-repaired.pdf"), 1);
}

TEST_F(RepairCommand, RefusesWhatIsNoDocument) {
  WriteFile("text.pdf", "no document");
  EXPECT_EQ(Run({"repair", "text.pdf"}).status, 23);
  EXPECT_EQ(Run({"check", "text.pdf"}).status, 23);
  EXPECT_EQ(Run({"repair", "missing.pdf"}).status, 16);
  EXPECT_FALSE(HasFile("text-repaired.pdf"));
}

TEST_F(RepairCommand, ChecksDocuments) {
  const auto result = Run({"check", "sound.pdf", "torn.pdf"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("sound.pdf: sound\ntorn.pdf: damaged\n  "));
  EXPECT_THAT(result.out,
              HasSubstr("\n  Nothing tells where the cross-reference starts; can be fixed\n"));
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(Run({"check", "sound.pdf"}).status, 0);
}

TEST_F(RepairCommand, ChecksDocumentsInJson) {
  const auto result = Run({"check", "sound.pdf", "torn.pdf", "--json"});
  EXPECT_EQ(result.status, 1);
  const Json files = Parsed(result)["files"];
  EXPECT_EQ(files[0],
            Json({{"path", "sound.pdf"}, {"damaged", false}, {"problems", Json::array()}}));
  EXPECT_EQ(files[1]["damaged"], true);
  EXPECT_THAT(files[1]["problems"],
              Contains(Json("Nothing tells where the cross-reference starts; can be fixed")));
}

TEST_F(RepairCommand, ChecksOnBehindWhatCannotBeRead) {
  WriteFile("text.pdf", "no document");
  const auto result = Run({"check", "torn.pdf", "text.pdf", "sound.pdf", "--json"});
  EXPECT_EQ(result.status, 23);
  EXPECT_THAT(result.err, HasSubstr("tarnix: EngineError: Unable to open doc [text.pdf]"));
  const Json files = Parsed(result)["files"];
  EXPECT_EQ(files[0]["damaged"], true);
  EXPECT_EQ(files[1]["path"], "text.pdf");
  EXPECT_EQ(files[1]["error"]["engineCode"], 4);
  EXPECT_EQ(files[2]["damaged"], false);
  EXPECT_EQ(Parsed(result)["errors"][0]["input"], "text.pdf");
  EXPECT_EQ(Parsed(Run({"check", "text.pdf", "--json"}))["error"]["engineCode"], 4);
}

}  // namespace
}  // namespace TarnixTools::testing
