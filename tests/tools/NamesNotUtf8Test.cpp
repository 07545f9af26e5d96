// Names of files that are not UTF-8: every job reads and writes them as they are.
#include "support/TestImages.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

class NamesNotUtf8 : public CliTest {
 protected:
  NamesNotUtf8() {
    TestPdf()
        .Page()
        .Content("BI /W 8 /H 8 /BPC 1 /CS /G /F /AHx ID 00FF00FF00FF00FF> EI ")
        .Write(Path("J\xF6rg.pdf"));
    WriteFile("J\xF6rg.jpg", TestJpeg(3));
  }

  // The one output of a run.
  void ExpectOutput(const std::vector<std::string>& arguments, const std::string& name) const {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, name + "\n");
    EXPECT_TRUE(HasFile(name));
  }
};

TEST_F(NamesNotUtf8, Merge) {
  WritePdf("\xC3.pdf", 2);
  ExpectOutput({"merge", "J\xF6rg.pdf", "\xC3.pdf", "--name", "\xFF.pdf"}, "\xFF.pdf");
  EXPECT_EQ(PagesOf("\xFF.pdf"), 3);
}

TEST_F(NamesNotUtf8, Img2Pdf) {
  ExpectOutput({"img2pdf", "J\xF6rg.jpg", "--name", "\xFF.pdf"}, "\xFF.pdf");
  EXPECT_EQ(PagesOf("\xFF.pdf"), 1);
  ExpectOutput({"img2pdf", "--no-merge", "-o", "\xE9", "J\xF6rg.jpg"}, "\xE9/J\xF6rg.pdf");
  EXPECT_EQ(PagesOf("\xE9/J\xF6rg.pdf"), 1);
}

TEST_F(NamesNotUtf8, StampImage) {
  ExpectOutput({"stamp-image", "--image", "J\xF6rg.jpg", "--name", "\xFF.pdf", "J\xF6rg.pdf"},
               "\xFF.pdf");
  EXPECT_EQ(PagesOf("\xFF.pdf"), 1);
}

TEST_F(NamesNotUtf8, Pdf2Img) {
  ExpectOutput({"pdf2img", "--dpi", "9", "J\xF6rg.pdf"}, "J\xF6rg-page-0001.jpg");
  ExpectOutput({"pdf2img", "--dpi", "9", "--prefix", "\xFF", "-o", "\xE9", "J\xF6rg.pdf"},
               "\xE9/\xFF_J\xF6rg-page-0001.jpg");
}

TEST_F(NamesNotUtf8, ExtractImages) {
  ExpectOutput({"extract-images", "-o", "\xE9", "J\xF6rg.pdf"}, "\xE9/J\xF6rg-image-0001.jpg");
}

}  // namespace
}  // namespace TarnixTools::testing
