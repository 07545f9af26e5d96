// Where decorations come out on pages as they are seen: every position, on pages of every rotation,
// with crop boxes that start anywhere.
#include <cmath>

#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/PageViews.h"
#include "support/TestImage.h"

namespace TarnixTools {
namespace {

using testing::Box;
using testing::TestPdf;
using Horizontal = PdfTransformHorizontalPos;
using Vertical = PdfTransformVerticalPos;

constexpr double kTolerance = 0.5;  // points
constexpr int kDpi = 72;
constexpr Vertical kVerticals[] = {Vertical::Top, Vertical::Bottom, Vertical::Middle,
                                   Vertical::Absolute};
constexpr Horizontal kHorizontals[] = {Horizontal::Left, Horizontal::Center, Horizontal::Right,
                                       Horizontal::Absolute};

// How a page is seen.
struct SeenPage {
  std::string name;
  double width;
  double height;
};

class DecorationPlacementTest : public testing::DocumentTest {
 protected:
  static constexpr int kMarginX = 20;
  static constexpr int kMarginY = 30;
  static constexpr int kAdjustX = 5;
  static constexpr int kAdjustY = -3;
  static constexpr double kX = 60;
  static constexpr double kY = 90;

  // A page of each kind: its boxes, and each of them turned by every right angle.
  DecorationPlacementTest() {
    TestPdf pdf;
    for (const int angle : {0, 90, 180, 270, -90, 450}) {
      AddPage(pdf, "", angle, 612, 792);
      AddPage(pdf, "/CropBox [50 60 450 660]", angle, 400, 600);
      AddPage(pdf, "/CropBox [-100 -100 300.5 900]", angle, 300.5, 792);
    }
    pdf.Page("").NoMediaBox().PageEntry("/MediaBox [-200 -300 100 200] /Rotate 90");
    pages_.push_back({"negative media box", 500, 300});
    pdf.Write(Path("doc.pdf"));
  }

  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdftotext");
    TARNIX_NEED_PROGRAM("pdftoppm");
  }

  void AddPage(TestPdf& pdf, const std::string& crop_box, int angle, double width, double height) {
    pdf.Page("").Rotate(angle);
    if (!crop_box.empty()) {
      pdf.PageEntry(crop_box);
    }
    const bool is_lying = angle % 180 != 0;
    pages_.push_back({crop_box + " /Rotate " + std::to_string(angle), is_lying ? height : width,
                      is_lying ? width : height});
  }

  static void SetPlace(PdfTransformation& transformation, Vertical vertical,
                       Horizontal horizontal) {
    transformation.SetMarginX(kMarginX);
    transformation.SetMarginY(kMarginY);
    transformation.SetHorizontalAdjustment(kAdjustX);
    transformation.SetVerticalAdjustment(kAdjustY);
    transformation.SetAbsolutePosition(PdfPagePoint(kX, kY));
    transformation.SetVerticalPosition(vertical);
    transformation.SetHorizontalPosition(horizontal);
  }

  // The lower and the left end of a block of text of this size.
  static double TextBottom(Vertical vertical, double page_height, double height) {
    switch (vertical) {
      case Vertical::Top:
        return page_height - kMarginY - height + kAdjustY;
      case Vertical::Bottom:
        return kMarginY + kAdjustY;
      case Vertical::Middle:  // one block height below the middle of the page
        return page_height / 2 - height / 2 - height + kAdjustY;
      case Vertical::Absolute:
        break;
    }
    return kY + kMarginY + kAdjustY;
  }

  static double TextLeft(Horizontal horizontal, double page_width, double width) {
    switch (horizontal) {
      case Horizontal::Left:
        return kMarginX + kAdjustX;
      case Horizontal::Center:
        return page_width / 2 - width / 2 + kAdjustX;
      case Horizontal::Right:
        return page_width - kMarginX - width + kAdjustX;
      case Horizontal::Absolute:
        break;
    }
    return kX + kMarginX + kAdjustX;
  }

  // An image of 60 by 40 points.
  static Box ImageBox(Vertical vertical, Horizontal horizontal, const SeenPage& page) {
    const double left = horizontal == Horizontal::Left     ? kMarginX
                        : horizontal == Horizontal::Center ? page.width / 2 - 30
                        : horizontal == Horizontal::Right  ? page.width - kMarginX - 60
                                                           : kY;
    const double bottom = vertical == Vertical::Top      ? page.height - kMarginY - 40
                          : vertical == Vertical::Bottom ? kMarginY
                          : vertical == Vertical::Middle ? page.height / 2 - 20
                                                         : kX;
    return {left + kAdjustX, bottom + kAdjustY, left + kAdjustX + 60, bottom + kAdjustY + 40};
  }

  void Decorate(PdfTransformation& transformation) const {
    Doc("doc.pdf").Transform(transformation, Path("out.pdf"), "");
  }

  std::vector<SeenPage> pages_;
};

TEST_F(DecorationPlacementTest, OfTextIsAsTheFormulaSays) {
  for (const Vertical vertical : kVerticals) {
    for (const Horizontal horizontal : kHorizontals) {
      PdfTransformation text(PdfTransformType::StampText);
      text.SetInputText("Placement");
      text.SetFontSize(18);
      SetPlace(text, vertical, horizontal);
      Decorate(text);
      const auto words = testing::WordBoxes(Path("out.pdf"));
      ASSERT_EQ(words.size(), pages_.size());
      for (std::size_t i = 0; i < pages_.size(); ++i) {
        SCOPED_TRACE(pages_[i].name + ": " + std::to_string(static_cast<int>(vertical)) + " " +
                     std::to_string(static_cast<int>(horizontal)));
        ASSERT_EQ(words[i].size(), 1U);
        const Box& box = words[i][0].box;
        EXPECT_NEAR(box.top - box.bottom, 18 * 1.117, kTolerance);
        EXPECT_NEAR(box.right - box.left, 18 * 4.724, kTolerance);
        EXPECT_NEAR(box.bottom, TextBottom(vertical, pages_[i].height, box.top - box.bottom),
                    kTolerance);
        EXPECT_NEAR(box.left, TextLeft(horizontal, pages_[i].width, box.right - box.left),
                    kTolerance);
      }
    }
  }
}

TEST_F(DecorationPlacementTest, OfImagesIsAsTheFormulaSays) {
  testing::WriteBytes(Path("image.png"), testing::PngOf(60, 40, {0, 0, 255}));
  for (const Vertical vertical : kVerticals) {
    for (const Horizontal horizontal : kHorizontals) {
      PdfTransformation image(PdfTransformType::StampImage);
      image.SetInputImage(Path("image.png"));
      image.SetPixelsPerPoint(1);
      SetPlace(image, vertical, horizontal);
      Decorate(image);
      const auto pictures = testing::Pictures(Path("out.pdf"), kDpi);
      ASSERT_EQ(pictures.size(), pages_.size());
      for (std::size_t i = 0; i < pages_.size(); ++i) {
        SCOPED_TRACE(pages_[i].name + ": " + std::to_string(static_cast<int>(vertical)) + " " +
                     std::to_string(static_cast<int>(horizontal)));
        const testing::Picture& picture = pictures[i];
        const auto drawn =
            testing::BoxOf(picture, kDpi, [&](int x, int y) { return picture.At(x, y)[0] < 128; });
        ASSERT_TRUE(drawn.has_value());
        const Box expected = ImageBox(vertical, horizontal, pages_[i]);
        EXPECT_NEAR(drawn->left, expected.left, 1);
        EXPECT_NEAR(drawn->bottom, expected.bottom, 1);
        EXPECT_NEAR(drawn->right, expected.right, 1);
        EXPECT_NEAR(drawn->top, expected.top, 1);
      }
    }
  }
}

// The reader of the boxes takes a user unit for a point: its coordinates are the seen ones over the
// unit.
TEST_F(DecorationPlacementTest, CountsInPointsWhateverTheUserUnit) {
  TestPdf pdf;
  for (const std::string unit : {"2", "0.5", "10"}) {
    pdf.Page("").PageEntry("/UserUnit " + unit).PageEntry("/CropBox [100 100 500 600]");
  }
  pdf.Write(Path("doc.pdf"));
  PdfTransformation text(PdfTransformType::StampText);
  text.SetInputText("Placement");
  text.SetFontSize(18);
  SetPlace(text, Vertical::Top, Horizontal::Right);
  Decorate(text);
  const auto words = testing::WordBoxes(Path("out.pdf"));
  ASSERT_EQ(words.size(), 3U);
  const double units[] = {2, 0.5, 10};
  for (std::size_t i = 0; i < 3; ++i) {
    ASSERT_EQ(words[i].size(), 1U);
    const Box& box = words[i][0].box;
    const double unit = units[i];
    EXPECT_NEAR((box.top - box.bottom) * unit, 18 * 1.117, kTolerance);
    EXPECT_NEAR(box.right * unit, 400 * unit - kMarginX + kAdjustX, kTolerance);
    EXPECT_NEAR(box.top * unit, 500 * unit - kMarginY + kAdjustY, kTolerance);
  }
}

TEST_F(DecorationPlacementTest, OfNumbersChangesSidesOnFacingPages) {
  PdfTransformation number(PdfTransformType::AddPageNumber);
  number.SetFontSize(18);
  number.SetPageNumberTextTemplate("p{n}");
  number.SetDoFacingPages(true);
  number.SetHorizontalPosition(Horizontal::Right);
  number.SetHorizontalAdjustment(-10);
  Decorate(number);
  const auto words = testing::WordBoxes(Path("out.pdf"));
  ASSERT_EQ(words.size(), pages_.size());
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    ASSERT_EQ(words[i].size(), 1U);
    EXPECT_EQ(words[i][0].text, "p" + std::to_string(i + 1));
    if ((i + 1) % 2 == 0) {
      EXPECT_NEAR(words[i][0].box.right, pages_[i].width - 10, kTolerance);
    } else {
      EXPECT_NEAR(words[i][0].box.left, 10, kTolerance);
    }
    EXPECT_NEAR(words[i][0].box.bottom, 0, kTolerance);
  }
}

}  // namespace
}  // namespace TarnixTools
