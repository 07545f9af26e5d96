#include "support/TestImages.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;

class Img2PdfCommandTest : public CliTest {
 protected:
  Img2PdfCommandTest() {
    WriteFile("a.jpg", TestJpeg(3));
    WriteFile("b.jpg", TestJpeg(1));
  }

  Json SizeOf(const std::string& name) const {
    return RunJson({"info", name, "--units", "pt"})["files"][0]["pageSizes"][0];
  }
};

TEST_F(Img2PdfCommandTest, JoinsImages) {
  const RunResult result = Run({"img2pdf", "a.jpg", "b.jpg"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "a.pdf\n");
  EXPECT_EQ(PagesOf("a.pdf"), 2);
  EXPECT_FALSE(HasFile("a.jpg.pdf"));
}

TEST_F(Img2PdfCommandTest, NamesTheOutput) {
  EXPECT_EQ(Run({"img2pdf", "-o", "out", "--name", "all.pdf", "a.jpg"}).out, "out/all.pdf\n");
  EXPECT_EQ(Run({"img2pdf", "-o", "out", "--prefix", "all", "a.jpg"}).out, "out/all_a.pdf\n");
  EXPECT_TRUE(HasFile("out/all.pdf"));
}

TEST_F(Img2PdfCommandTest, WritesOneDocumentForEachImage) {
  EXPECT_EQ(Run({"img2pdf", "--no-merge", "a.jpg", "b.jpg"}).out, "a.pdf\nb.pdf\n");
  EXPECT_EQ(Run({"img2pdf", "--no-merge", "-o", "out", "a.jpg", "b.jpg"}).out,
            "out/a.pdf\nout/b.pdf\n");
  EXPECT_EQ(PagesOf("out/b.pdf"), 1);
}

TEST_F(Img2PdfCommandTest, NamesTheDocumentOfEachImageByAPattern) {
  EXPECT_EQ(Run({"img2pdf", "--no-merge", "--name", "{n}-{stem}.pdf", "a.jpg", "b.jpg"}).out,
            "1-a.pdf\n2-b.pdf\n");
  EXPECT_EQ(PagesOf("2-b.pdf"), 1);
  ExpectUsageError(Run({"img2pdf", "--no-merge", "--name", "x.pdf", "a.jpg", "b.jpg"}),
                   "more than one output would be 'x.pdf'", "tarnix img2pdf");
}

// The documents of single images are not asked for, and none of them stays.
TEST_F(Img2PdfCommandTest, LeavesNoDocumentOfASingleImageBehind) {
  WriteFile("text.jpg", "no image");
  EXPECT_EQ(Run({"img2pdf", "a.jpg", "b.jpg", "text.jpg", "-o", "out"}).status, 23);
  EXPECT_EQ(Run({"img2pdf", "a.jpg", "b.jpg", "text.jpg", "--out-password", "x"}).status, 23);
  EXPECT_THAT(directory_.Names(), ::testing::ElementsAre("a.jpg", "b.jpg", "text.jpg"));
}

TEST_F(Img2PdfCommandTest, SetsThePage) {
  const auto size = [&](std::vector<std::string> options) {
    options.insert(options.begin(), "img2pdf");
    options.emplace_back("a.jpg");
    EXPECT_EQ(Run(options).status, 0);
    return SizeOf("a.pdf");
  };
  EXPECT_EQ(size({}), size({"--page", "fit"}));
  EXPECT_NE(size({}), size({"--rotate", "90"}));
  EXPECT_EQ(size({"--rotate", "90"}), size({"--rotate", "270"}));
  EXPECT_NE(size({}), size({"--margin", "3.5"}));
  EXPECT_NE(size({"--page", "a4"}), size({"--page", "letter"}));
  EXPECT_EQ(size({"--page", "a4", "--landscape"}), size({"--page", "letter", "--landscape"}));
}

TEST_F(Img2PdfCommandTest, ProtectsTheOutput) {
  EXPECT_EQ(Run({"img2pdf", "--out-password", "secret", "a.jpg"}).status, 0);
  EXPECT_EQ(PagesOf("a.pdf", "secret"), 1);
  EXPECT_EQ(Run({"info", "a.pdf"}).status, 11);
}

TEST_F(Img2PdfCommandTest, TellsOutputsAsJson) {
  const Json json = RunJson({"img2pdf", "a.jpg", "b.jpg"});
  EXPECT_EQ(json["job"], "img2pdf");
  EXPECT_EQ(json["outputs"], Json::array({"a.pdf"}));
}

TEST_F(Img2PdfCommandTest, FailsClearly) {
  WriteFile("text.jpg", "no image");
  ExpectFailure(Run({"img2pdf", "missing.jpg"}), 16, "FileNotFound: File not found: missing.jpg",
                "No such file or directory");
  ExpectFailure(Run({"img2pdf", "a.jpg", "a.jpg"}), 14,
                "InvalidParameter: Duplicated file in task: a.jpg");
  ExpectFailure(Run({"img2pdf", "text.jpg"}), 23,
                "EngineError: Error 0x00000004 while creating PDF document from img [text.jpg]",
                "not an image");
  ExpectUsageError(Run({"img2pdf", "--margin", "wide", "a.jpg"}),
                   "--margin: 'wide' is not a number", "tarnix img2pdf");
}

}  // namespace
}  // namespace TarnixTools::testing
