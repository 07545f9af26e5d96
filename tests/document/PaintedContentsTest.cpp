// PdfDoc::Transform: everything that decorations write, as one text.
#include "document/DecorationTest.h"
#include "support/Expected.h"
#include "support/PaintedText.h"
#include "support/RawPdf.h"

namespace TarnixTools {
namespace {

using testing::IsAsExpected;
using testing::PaintedText;
using testing::TestPdf;
using Horizontal = PdfTransformHorizontalPos;
using Vertical = PdfTransformVerticalPos;

class PaintedContentsTest : public DecorationTest {
 protected:
  // Pages that lie and stand, with a crop box, with another unit and without contents.
  PaintedContentsTest() {
    TestPdf()
        .Page("One")
        .Page("Two")
        .Rotate(90)
        .PageEntry("/CropBox [50 60 450 660]")
        .Page("Three")
        .PageEntry("/UserUnit 2")
        .Page("")
        .Rotate(180)
        .Size(300, 200)
        .Write(Path("doc.pdf"));
  }

  std::string Written() const { return PaintedText(Path("out.pdf")); }
};

// Pages of 100 by 100 points, each with streams of content and with entries of its own.
class GivenPages {
 public:
  GivenPages& Page(const std::vector<std::string>& streams, const std::string& entries = "") {
    std::string references;
    for (const std::string& content : streams) {
      pdf_.Stream(next_, "", content);
      references += std::to_string(next_++) + " 0 R ";
    }
    return PageOf(references, entries);
  }

  GivenPages& PageOf(const std::string& references, const std::string& entries = "") {
    pdf_.Object(next_, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 100 100]/Contents[" + references +
                           "]" + entries + ">>");
    kids_ += std::to_string(next_++) + " 0 R ";
    ++count_;
    return *this;
  }

  void Write(const std::string& path) {
    pdf_.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2,
                "<</Type/Pages/Kids[" + kids_ + "]/Count " + std::to_string(count_) +
                    "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>>>>>");
    testing::WriteBytes(path, pdf_.Table());
  }

 private:
  testing::RawPdf pdf_;
  std::string kids_;
  int count_ = 0;
  int next_ = 3;
};

// What a page leaves open is closed, what it closes too often is left out, what stops readers is put
// aside, and colours keep their meaning.
TEST_F(PaintedContentsTest, AreKeptApartFromThoseOfThePages) {
  GivenPages()
      .Page({"q 1 0 0 rg 0 0 9 9 re f BT /F 9 Tf"})
      .PageOf("3 0 R")  // the same content again
      .Page({"Q Q 0 0 1 rg 0 0 9 9 re f q"})
      .Page({"q 0 0 1 rg", "0 0 9 9 re f Q Q q", "Q 1 g Q 9 9 9 9 re f"})
      .Page({"BT /F 9 Tf (te", "xt) Tj ET q"})
      .Page({"0 0 9 9 re f 1 cm 0 0 5 5 re f"})
      .PageOf("15 0 R 15 0 R")
      .Page({"/Span BMC q /P <</MCID 0>> BDC 0 0 9 9 re f"})
      .Page({})
      .Page({"0 0 9 9 re f"}, "/Resources<<>>")
      .Page({"0 0 9 9 re f"},
            "/Resources<</Font<</TxF0<</Type/Font/Subtype/Type1/BaseFont/Courier>>>>>>")
      .Page({"0 0 9 9 re f"},
            "/Resources<</ColorSpace<</DefaultGray[/CalGray<</WhitePoint[1 1 1]>>]"
            "/DefaultCMYK[/Separation/A/DeviceCMYK<</FunctionType 2/Domain[0 1]/N 1"
            "/C0[0 0 0 0]/C1[1 0 0 0]>>]>>>>")
      .Write(Path("doc.pdf"));
  text_.SetFontSize(10);
  text_.SetInputText("A");
  text_.SetVerticalPosition(Vertical::Top);
  PdfTransformation under = image_;
  under.SetPixelsPerPoint(5);
  under.SetLayerPosition(PdfTransformLayerPos::Under);
  std::vector<PdfTransformation> both = {text_, under};
  Decorate(both);
  EXPECT_TRUE(IsAsExpected("decorations/pages.txt", Written()));
  Decorate(under);
  EXPECT_TRUE(IsAsExpected("decorations/pages_beneath.txt", Written()));
}

TEST_F(PaintedContentsTest, AreThoseOfPageNumbers) {
  number_.SetPageNumberTextTemplate("Page {n}\nof {p}");
  number_.SetHorizontalPosition(Horizontal::Right);
  number_.SetHorizontalAdjustment(-7);
  number_.SetVerticalAdjustment(3);
  number_.SetMarginX(11);
  number_.SetDoFacingPages(true);
  number_.SetFontColor("#204080");
  number_.SetTextOpacity(75);
  Decorate(number_);
  EXPECT_TRUE(IsAsExpected("decorations/numbers.txt", Written()));
}

TEST_F(PaintedContentsTest, AreThoseOfTextStamps) {
  text_.SetInputText("Draft\n\nof a text \u00E4\u20AC");
  text_.SetRotation(30);
  text_.SetTextAlignment(PdfTransformTextAlignment::Right);
  PdfTransformation tiled = text_;
  tiled.SetInputText("Til");
  tiled.SetLayerPosition(PdfTransformLayerPos::Under);
  tiled.SetTextOpacity(40);
  tiled.SetMosaic(true);
  tiled.AddTargetPattern("2,4");
  std::vector<PdfTransformation> both = {text_, tiled};
  Decorate(both);
  EXPECT_TRUE(IsAsExpected("decorations/texts.txt", Written()));
}

TEST_F(PaintedContentsTest, AreThoseOfImageStamps) {
  image_.SetRotation(-15);
  image_.SetImageWidth(30, PdfTransformWidthUnit::PercentOfPage);
  image_.SetOpacity(60);
  image_.SetApplyOpacity(true);
  image_.SetHorizontalPosition(Horizontal::Left);
  image_.SetVerticalPosition(Vertical::Top);
  PdfTransformation tiled(PdfTransformType::StampImage);
  tiled.SetInputImage(Path("magenta.png"));
  tiled.SetLayerPosition(PdfTransformLayerPos::Under);
  tiled.SetMosaic(true);
  tiled.AddTargetPattern("1-2");
  std::vector<PdfTransformation> both = {image_, tiled};
  Decorate(both);
  EXPECT_TRUE(IsAsExpected("decorations/images.txt", Written()));
}

}  // namespace
}  // namespace TarnixTools
