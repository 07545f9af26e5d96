// PdfDoc::Transform: everything that decorations write, as one text.
#include <sstream>

#include "document/DecorationTest.h"
#include "support/Expected.h"

namespace TarnixTools {
namespace {

using testing::IsAsExpected;
using testing::PdfText;
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

  // Without the font programs, which are those of the system, and what tells where objects are.
  std::string Written() const {
    std::string written;
    std::istringstream objects(PdfText(Path("out.pdf")));
    std::string object;
    for (std::string line; std::getline(objects, line);) {
      if (line.starts_with("obj:") || line.starts_with("trailer")) {
        written += IsOfTheFile(object) ? "" : object;
        object.clear();
      }
      object += line + "\n";
    }
    return written;
  }

  static bool IsOfTheFile(const std::string& object) {
    for (const char* key : {"\"/Length1\"", "\"/ObjStm\"", "\"/XRef\""}) {
      if (object.find(key) != std::string::npos) {
        return true;
      }
    }
    return false;
  }
};

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
