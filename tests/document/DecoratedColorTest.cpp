// PdfDoc::Transform on pages that give device colours another meaning: what is painted keeps its own.
#include <cstdlib>

#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/PageViews.h"
#include "support/RawPdf.h"
#include "support/TestImage.h"

namespace TarnixTools {
namespace {

using testing::Pixel;
using testing::RawPdf;

constexpr int kDpi = 72;

// Spaces that show red as blue, and what is gray or a process colour as white.
const char* const kSwapped =
    "[/CalRGB<</WhitePoint[.9505 1 1.089]/Gamma[2.2 2.2 2.2]/Matrix[.1805 .0722 .9505 .3576 .7152 "
    ".1192 .4124 .2126 .0193]>>]";
const char* const kWhiteGray = "[/Separation/A/DeviceCMYK 1020 0 R]";
const char* const kWhiteProcess = "[/DeviceN[/A/B/C/D]/DeviceCMYK 1021 0 R]";

void ExpectNear(const Pixel& seen, const Pixel& expected, const std::string& what) {
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_LE(std::abs(seen[i] - expected[i]), 4) << what << " " << i;
  }
}

class DecoratedColorTest : public testing::DocumentTest {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdftoppm");
    TARNIX_NEED_PROGRAM("mutool");
    TARNIX_NEED_PROGRAM("qpdf");
    text_.SetInputText("\u2588\u2588\u2588");  // full blocks
    text_.SetFontSize(30);
    text_.SetVerticalPosition(PdfTransformVerticalPos::Top);
    image_.SetPixelsPerPoint(1);
    image_.SetVerticalPosition(PdfTransformVerticalPos::Bottom);
  }

  // Pages of 100 by 100 points with default colour spaces; a patch of the page's own in the corner.
  void MakeDocument(int page_count) const {
    RawPdf pdf;
    pdf.Pages(page_count, std::string("/MediaBox[0 0 100 100]/Contents 1030 0 R/Resources<<"
                                      "/ColorSpace<</DefaultRGB ") +
                              kSwapped + "/DefaultGray" + kWhiteGray + "/DefaultCMYK" +
                              kWhiteProcess + ">>>>")
        .Stream(1020, "/FunctionType 4/Domain[0 1]/Range[0 1 0 1 0 1 0 1]", "{pop 0 0 0 0}")
        .Stream(1021, "/FunctionType 4/Domain[0 1 0 1 0 1 0 1]/Range[0 1 0 1 0 1 0 1]",
                "{pop pop pop pop 0 0 0 0}")
        .Stream(1030, "", "1 0 0 rg 0 0 10 10 re f");
    testing::WriteBytes(Path("doc.pdf"), pdf.Table());
  }

  void Decorate() {
    std::vector<PdfTransformation> both = {text_, image_};
    Doc("doc.pdf").Transform(both, Path("out.pdf"), "");
    EXPECT_EQ(testing::QpdfComplaints(Path("out.pdf")), "");
  }

  void ExpectColors(const Pixel& text, const Pixel& image) const {
    const auto poppler = testing::Pictures(Path("out.pdf"), kDpi).at(0);
    const auto mupdf = testing::PicturesByMupdf(Path("out.pdf"), kDpi).at(0);
    for (const auto* page : {&poppler, &mupdf}) {
      const std::string reader = page == &poppler ? "poppler" : "MuPDF";
      ExpectNear(page->At(50, 35), text, reader + " text");
      ExpectNear(page->At(50, 75), image, reader + " image");
    }
    ExpectNear(poppler.At(5, 95), {0, 0, 255}, "the page's own");
  }

  PdfTransformation text_{PdfTransformType::StampText};
  PdfTransformation image_{PdfTransformType::StampImage};
};

TEST_F(DecoratedColorTest, KeepsColoursWherePagesGiveThemAnotherMeaning) {
  MakeDocument(1);
  testing::WriteBytes(Path("green.png"), testing::PngOf(30, 30, {0, 200, 100}));
  image_.SetInputImage(Path("green.png"));
  text_.SetFontColor("#C08020");
  for (const auto layer : {PdfTransformLayerPos::Over, PdfTransformLayerPos::Under}) {
    text_.SetLayerPosition(layer);
    image_.SetLayerPosition(layer);
    Decorate();
    ExpectColors({0xC0, 0x80, 0x20}, {0, 200, 100});
  }
}

// The form that paints, its colour spaces and the stream that shows it are there once.
TEST_F(DecoratedColorTest, PaintsTheSameOnManyPagesOnce) {
  testing::WriteBytes(Path("green.png"), testing::PngOf(30, 30, {0, 200, 100}));
  image_.SetInputImage(Path("green.png"));
  const auto size_with = [&](int pages) {
    MakeDocument(pages);
    Decorate();
    return testing::ReadBytes(Path("out.pdf")).size();
  };
  const std::size_t few = size_with(10);
  EXPECT_LT(size_with(110) - few, 100 * 60U);
}

}  // namespace
}  // namespace TarnixTools
