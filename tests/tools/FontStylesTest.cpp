// Styles of fonts, where only the fonts of a test are installed.
#include "support/PageViews.h"
#include "support/Readers.h"
#include "support/TestFont.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::Not;

class FontStyles : public CliTest {
 protected:
  FontStyles() {
    TestPdf().Page("").Size(300, 100).Write(Path("doc.pdf"));
    WriteBytes(fonts_.Path("boxes.ttf"), TestFont{.family = "Boxes", .is_variable = true}.Bytes());
    // By their files' names, the one that is not called Regular would come first.
    WriteBytes(fonts_.Path("a.ttf"),
               TestFont{.family = "Tie", .style = "Caption", .width = 700}.Bytes());
    WriteBytes(fonts_.Path("b.ttf"), TestFont{.family = "Tie"}.Bytes());
  }

  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdffonts");
    TARNIX_NEED_PROGRAM("pdftoppm");
    TARNIX_NEED_PROGRAM("mutool");
  }

  // Stamps an "A" of 100 points; what the run says.
  std::string Stamp(const std::string& font, const std::string& style) const {
    RunSetup setup;
    setup.environment["FONTCONFIG_FILE"] = FontConfiguration(fonts_);
    const auto result = Run(
        {"stamp-text", "-v", "--text", "A", "--font", font, "--font-style", style, "--font-size",
         "100", "--position", "bottom-left", "--margin", "0,0", "--name", "out.pdf", "doc.pdf"},
        setup);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.err;
  }

  // How wide the box is, in points, which both readers agree on.
  double Width() const {
    constexpr int kDpi = 72;
    std::vector<double> widths;
    for (const Picture& page :
         {Pictures(Path("out.pdf"), kDpi).at(0), PicturesByMupdf(Path("out.pdf"), kDpi).at(0)}) {
      const auto box = BoxOf(page, kDpi, [&](int x, int y) { return page.At(x, y)[0] < 100; });
      widths.push_back(box ? box->right - box->left : 0);
    }
    EXPECT_NEAR(widths[0], widths[1], 1);
    return widths[0];
  }

  std::string EmbeddedFonts() const { return RunProgram({"pdffonts", Path("out.pdf")}).output; }

  TempDir fonts_;
};

TEST_F(FontStyles, AreInstancesOfVariableFonts) {
  EXPECT_THAT(Stamp("Boxes", ""), Not(HasSubstr("style")));
  EXPECT_NEAR(Width(), 30, 1);
  EXPECT_THAT(EmbeddedFonts(), HasSubstr("+Boxes-Regular "));
  for (const char* style : {"Bold", "bold", "Regular Bold"}) {
    EXPECT_THAT(Stamp("Boxes", style), Not(HasSubstr("style")));
    EXPECT_NEAR(Width(), 60, 1) << style;
    EXPECT_THAT(EmbeddedFonts(), HasSubstr("+Boxes-Bold "));
    EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  }
}

// The advance, too: what follows the box stands behind it.
TEST_F(FontStyles, HaveTheAdvancesOfTheirInstance) {
  Stamp("Boxes", "Bold");
  const auto words = WordBoxes(Path("out.pdf")).at(0);
  ASSERT_EQ(words.size(), 1U);
  EXPECT_NEAR(words[0].box.right - words[0].box.left, 70, 0.1);
}

TEST_F(FontStyles, AreReportedWhereTheFamilyLacksThem) {
  EXPECT_THAT(Stamp("Boxes", "Italic"),
              HasSubstr("Boxes has no style Italic, the closest is used instead"));
  EXPECT_NEAR(Width(), 30, 1);
  EXPECT_THAT(Stamp("Tie", "Bold"), HasSubstr("Tie has no style Bold"));
  EXPECT_THAT(Stamp("Tie", "Swash"), HasSubstr("Tie has no style Swash"));
  EXPECT_THAT(Stamp("Tie", "Caption"), Not(HasSubstr("style")));
  EXPECT_NEAR(Width(), 70, 1);
}

TEST_F(FontStyles, AreRegularUnlessAskedOtherwise) {
  Stamp("Tie", "");
  EXPECT_NEAR(Width(), 30, 1);
  EXPECT_THAT(EmbeddedFonts(), HasSubstr("+Tie-Regular "));
}

}  // namespace
}  // namespace TarnixTools::testing
