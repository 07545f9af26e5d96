// tarnix validate.
#include "support/RawPdf.h"
#include "support/TestPackets.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class ValidateCommand : public CliTest {
 protected:
  // A document with one empty page, and an annotation on it when entries are given; valid PDF/A-2b
  // but for that.
  void WriteArchive(const std::string& name, const std::string& annotation = "") const {
    const std::string packet =
        "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>"
        "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>" +
        ClaimOf("2") + "</rdf:RDF><?xpacket end='w'?>";
    RawPdf file("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
    file.Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 5 0 R>>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .Object(3, std::string("<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Resources<<>>") +
                       (annotation.empty() ? "" : "/Annots[4 0 R]") + ">>")
        .Object(4, annotation.empty() ? "null" : "<</Type/Annot" + annotation + ">>")
        .Stream(5, "/Type/Metadata/Subtype/XML", packet);
    WriteFile(name, file.Table("/Root 1 0 R/ID[<00112233445566778899AABBCCDDEEFF>"
                               "<00112233445566778899AABBCCDDEEFF>]"));
  }

  void WriteBroken(const std::string& name) const {
    WriteArchive(name, "/Subtype/Sound/Rect[50 20 100 70]/F 4");
  }

  std::string PageOf(const std::string& name) const {
    Run({"validate", name, "--report", "page.html"});
    return ReadBytes(Path("page.html"));
  }
};

TEST_F(ValidateCommand, SaysYesAndNo) {
  WriteArchive("fine.pdf");
  WriteBroken("broken.pdf");
  WritePdf("plain.pdf", 1);
  const auto fine = Run({"validate", "fine.pdf"});
  EXPECT_EQ(fine.out, "fine.pdf: valid PDF/A-2b\n") << fine.err;
  EXPECT_EQ(fine.status, 0);
  const auto broken = Run({"validate", "broken.pdf"});
  EXPECT_THAT(broken.out, StartsWith("broken.pdf: not valid PDF/A-2b\n  6.3.1-1 page 1 object 4"));
  EXPECT_EQ(broken.status, 1);
  const auto plain = Run({"validate", "plain.pdf"});
  EXPECT_THAT(plain.out, StartsWith("plain.pdf: not valid PDF/A-2b, and claims no level of PDF/A"));
  EXPECT_EQ(plain.status, 1);
  EXPECT_EQ(Run({"validate", "fine.pdf", "broken.pdf"}).status, 1);
}

TEST_F(ValidateCommand, LeavesFilesBesideItsReport) {
  WriteArchive("fine.pdf");
  WriteFile("page.html.1.part", "somebody's");
  EXPECT_THAT(PageOf("fine.pdf"), HasSubstr("fine.pdf"));
  EXPECT_EQ(ReadBytes(Path("page.html.1.part")), "somebody's");
  EXPECT_THAT(directory_.Names(),
              ::testing::UnorderedElementsAre("fine.pdf", "page.html", "page.html.1.part"));
}

TEST_F(ValidateCommand, JudgesByTheLevelAskedFor) {
  WriteArchive("fine.pdf");
  EXPECT_EQ(Run({"validate", "fine.pdf", "--level", "2b"}).status, 0);
  const auto other = Run({"validate", "fine.pdf", "--level", "3b"});
  EXPECT_THAT(other.out, StartsWith("fine.pdf: not valid PDF/A-3b\n  6.6.4-"));
  ExpectUsageError(Run({"validate", "fine.pdf", "--level", "1u"}),
                   "--level: '1u' is none of 1a|1b|2a|2b|2u|3a|3b|3u (did you mean 1a?)",
                   "tarnix validate");
}

TEST_F(ValidateCommand, PrintsJson) {
  WriteArchive("fine.pdf");
  WriteBroken("broken.pdf");
  const Json expected = {{"path", "fine.pdf"},
                         {"claims", "2b"},
                         {"level", "2b"},
                         {"valid", true},
                         {"findings", Json::array()}};
  EXPECT_EQ(RunJson({"validate", "fine.pdf"})["files"], Json::array({expected}));
  const Json broken = Json::parse(Run({"validate", "broken.pdf", "--json"}).out, nullptr, false);
  const Json finding = broken["files"][0]["findings"][0];
  EXPECT_EQ(finding["clause"], "6.3.1");
  EXPECT_EQ(finding["test"], 1);
  EXPECT_EQ(finding["object"], 4);
  EXPECT_EQ(finding["page"], 1);
  EXPECT_NE(finding["message"], "");
  EXPECT_NE(finding["cure"], "");
}

TEST_F(ValidateCommand, NeedsADocumentAndItsPassword) {
  WriteProtectedPdf("secret.pdf", "pw");
  EXPECT_EQ(Run({"validate", "secret.pdf"}).status, 11);
  EXPECT_EQ(Run({"validate", "secret.pdf", "--password", "pw"}).status, 1);
  WriteFile("text.pdf", "no document");
  EXPECT_EQ(Run({"validate", "text.pdf"}).status, 23);
  EXPECT_EQ(Run({"validate", "none.pdf"}).status, 16);
}

TEST_F(ValidateCommand, GoesOnWithoutWhatCannotBeRead) {
  WriteArchive("fine.pdf");
  WriteFile("text.pdf", "no document");
  const auto result = Run({"validate", "text.pdf", "fine.pdf"});
  EXPECT_EQ(result.out, "fine.pdf: valid PDF/A-2b\n");
  EXPECT_THAT(result.err, HasSubstr("EngineError"));
  EXPECT_EQ(result.status, 23);
  const Json object = Json::parse(Run({"validate", "text.pdf", "fine.pdf", "--json"}).out);
  EXPECT_EQ(object["files"][0]["path"], "text.pdf");
  EXPECT_EQ(object["files"][0]["error"]["code"], "EngineError");
  EXPECT_EQ(object["files"][1]["valid"], true);
  EXPECT_EQ(object["errors"][0]["input"], "text.pdf");
  EXPECT_EQ(Json::parse(Run({"validate", "text.pdf", "--json"}).out)["error"]["code"],
            "EngineError");
}

TEST_F(ValidateCommand, MakesAPageToLookAt) {
  WriteBroken("broken & <co>.pdf");
  const std::string page = PageOf("broken & <co>.pdf");
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
  EXPECT_THAT(page, HasSubstr("<h1>broken &amp; &lt;co&gt;.pdf</h1>"));
  EXPECT_THAT(page, HasSubstr("Not valid PDF/A-2b"));
  EXPECT_THAT(page, HasSubstr("<h2>6.3.1-1</h2>"));
  EXPECT_THAT(page, HasSubstr("<li>page 1, object 4"));
  EXPECT_THAT(page, HasSubstr("width=device-width"));
  EXPECT_THAT(page, HasSubstr("@media print"));
  EXPECT_THAT(page, Not(HasSubstr("http"))) << "works without a network";
  if (page.find("No pictures") == std::string::npos) {
    EXPECT_THAT(page, HasSubstr("src=\"data:image/jpeg;base64,/9j/"));
    EXPECT_THAT(page, HasSubstr("left:25.00%;top:30.00%;width:25.00%;height:50.00%\"><b>6.3.1-1, "
                                "6.3.3-1</b></span></div>"))
        << "one mark for all that is wrong there";
  }
}

TEST_F(ValidateCommand, MakesAPageOfAValidDocument) {
  WriteArchive("fine.pdf");
  const std::string page = PageOf("fine.pdf");
  EXPECT_THAT(page, HasSubstr("Valid PDF/A-2b"));
  EXPECT_THAT(page, Not(HasSubstr("<figure>")));
}

// As a browser lays it out: nothing is wider than a phone.
TEST_F(ValidateCommand, MakesAPageThatFitsAPhone) {
  std::string browser;
  for (const char* name : {"chromium", "chromium-browser", "google-chrome"}) {
    if (browser.empty() && RunCommand({name, "--version"}).status == 0) {
      browser = name;
    }
  }
  if (browser.empty()) {
    GTEST_SKIP() << "needs Chromium";
  }
  WriteBroken("broken.pdf");
  std::string page = PageOf("broken.pdf");
  page.insert(page.find("</body>"),
              "<script>document.title='width '+document.documentElement.scrollWidth+' marks '+"
              "document.querySelectorAll('.mark').length;</script>");
  WriteFile("page.html", page);
  const auto result =
      RunCommand({browser, "--headless", "--no-sandbox", "--disable-gpu", "--window-size=360,640",
                  "--dump-dom", "file://" + Path("page.html")});
  EXPECT_THAT(result.out, HasSubstr("<title>width "));
  const std::size_t width = result.out.find("<title>width ");
  EXPECT_LE(std::atoi(result.out.c_str() + width + 13), 500);  // the narrowest that it lays out
}

TEST_F(ValidateCommand, WritesItsReportWhereThatMayBe) {
  WriteArchive("a.pdf");
  const std::string before = ReadBytes(Path("a.pdf"));
  ExpectUsageError(Run({"validate", "--report", "./a.pdf", "a.pdf"}),
                   "the output './a.pdf' is also an input", "tarnix validate");
  EXPECT_EQ(Run({"validate", "--report", "x\\y.html", "a.pdf"}).status, 2);
  EXPECT_EQ(ReadBytes(Path("a.pdf")), before);
  EXPECT_EQ(Run({"validate", "--report", "new/sub/r.html", "a.pdf"}).status, 0);
  EXPECT_THAT(ReadBytes(Path("new/sub/r.html")), StartsWith("<!DOCTYPE html>"));
  ExpectFailure(Run({"validate", "--report", "new/sub", "a.pdf"}), 16,
                "FileNotFound: Unable to create new file [new/sub] (Is a directory)");
  ExpectFailure(Run({"validate", "--report", "a.pdf/r.html", "a.pdf"}), 16,
                "FileNotFound: Unable to create output directory [a.pdf] (Not a directory)");
  EXPECT_THAT(directory_.Names("new"), ::testing::ElementsAre("sub"));
}

TEST_F(ValidateCommand, JobsThatTakeTheClaimAwaySaySo) {
  struct Case {
    std::string lost;  // why; empty for a job that keeps the claim
    std::vector<std::string> words;
  };

  const std::string unmet = "does not hold for what is written";
  const std::vector<Case> cases = {
      {"", {"rotate", "--angle", "90"}},
      {"", {"extract-pages", "--pages", "1"}},
      {unmet, {"number"}},  // in colors that nothing defines
      {unmet, {"stamp-text", "--text", "x"}},
      {"", {"metadata", "--author", "A"}},
      {"what is encrypted cannot be PDF/A", {"protect", "--new-password", "x"}},
      {"", {"unlock"}},
      {"", {"compress"}},
      {"", {"repair"}},
  };
  WriteArchive("a.pdf");
  for (const Case& each : cases) {
    std::vector<std::string> words = each.words;
    words.insert(words.end(), {"a.pdf", "-o", "out.pdf"});
    EXPECT_EQ(Run(words).err,
              each.lost.empty() ? "" : "tarnix: 1 PDF/A claim dropped: " + each.lost + "\n")
        << words[0];
    words.emplace_back("--quiet");
    EXPECT_EQ(Run(words).err, "") << words[0];
  }
}

}  // namespace
}  // namespace TarnixTools::testing
