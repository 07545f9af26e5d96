// PdfDoc::Transform: which decorations are reported to fall outside their page.
#include <cmath>

#include "PdfFont.h"
#include "PdfText.h"
#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/TestImage.h"

namespace TarnixTools {
namespace {

using testing::TestPdf;

constexpr double kWidth = 300;
constexpr double kHeight = 200;
constexpr double kLittle = 0.01;

class DecorationsOffPageTest : public testing::DocumentTest {
 protected:
  DecorationsOffPageTest() {
    TestPdf().Page("").Size(kWidth, kHeight).Write(Path("doc.pdf"));
    testing::WriteBytes(Path("image.png"), testing::PngOf(60, 20, {0, 0, 255}));
    image_.SetInputImage(Path("image.png"));
    image_.SetPixelsPerPoint(1);
    for (PdfTransformation* one : {&number_, &text_}) {
      one->SetMarginX(0);
      one->SetMarginY(0);
      one->SetInputText(kText);
      one->SetPageNumberTextTemplate(kText);
      one->SetFontSize(20);
    }
  }

  // Whether one decoration is reported to have been added; one that is not names its page and why.
  bool IsAdded(PdfTransformation& transformation) const {
    PdfDoc document = Doc("doc.pdf");
    document.Transform(transformation, Path("out.pdf"), "");
    const auto& entries = document.GetReport().GetEntries();
    EXPECT_EQ(entries.size(), 1U);
    if (entries.empty()) {
      return false;
    }
    const PdfReportEntry& entry = entries.front();
    EXPECT_EQ(entry.count, 1);
    EXPECT_EQ(entry.page, 1);
    const bool is_added = entry.outcome == PdfReportOutcome::Added;
    EXPECT_EQ(entry.reason, is_added ? "" : "falls outside the page");
    EXPECT_TRUE(is_added || entry.outcome == PdfReportOutcome::Dropped);
    return is_added;
  }

  // An image whose lower-left corner, before it is turned, is there.
  bool IsImageAddedAt(double left, double bottom) {
    image_.SetAbsolutePositionX(bottom);
    image_.SetAbsolutePositionY(left);
    return IsAdded(image_);
  }

  // A text whose first baseline starts there.
  bool IsTextAddedAt(PdfTransformation& transformation, double x, double y) {
    const PdfText block(kText, font_.Get(), 20);
    transformation.SetAbsolutePositionX(x);
    transformation.SetAbsolutePositionY(y - block.GetTextHeight() + block.GetAscent());
    return IsAdded(transformation);
  }

  static constexpr const char* kText = "Long enough\nShort";

  PdfFont font_{"Arial", ""};
  PdfTransformation number_{PdfTransformType::AddPageNumber};
  PdfTransformation text_{PdfTransformType::StampText};
  PdfTransformation image_{PdfTransformType::StampImage};
};

TEST_F(DecorationsOffPageTest, AreImagesBeyondAnEdge) {
  EXPECT_TRUE(IsImageAddedAt(-60, 100));
  EXPECT_FALSE(IsImageAddedAt(-60 - kLittle, 100));
  EXPECT_TRUE(IsImageAddedAt(kWidth, 100));
  EXPECT_FALSE(IsImageAddedAt(kWidth + kLittle, 100));
  EXPECT_TRUE(IsImageAddedAt(100, -20));
  EXPECT_FALSE(IsImageAddedAt(100, -20 - kLittle));
  EXPECT_TRUE(IsImageAddedAt(100, kHeight));
  EXPECT_FALSE(IsImageAddedAt(100, kHeight + kLittle));
}

// About their centres, 30 and 10 points from their edges.
TEST_F(DecorationsOffPageTest, AreTurnedImagesBeyondAnEdge) {
  image_.SetRotation(90);
  EXPECT_TRUE(IsImageAddedAt(-40 + kLittle, 100));
  EXPECT_FALSE(IsImageAddedAt(-40 - kLittle, 100));
  EXPECT_TRUE(IsImageAddedAt(100, -40 + kLittle));
  EXPECT_FALSE(IsImageAddedAt(100, -40 - kLittle));
  EXPECT_TRUE(IsImageAddedAt(kWidth - 20 - kLittle, 100));
  EXPECT_FALSE(IsImageAddedAt(kWidth - 20 + kLittle, 100));
  EXPECT_TRUE(IsImageAddedAt(100, kHeight + 20 - kLittle));
  EXPECT_FALSE(IsImageAddedAt(100, kHeight + 20 + kLittle));
  const double reach = (30 + 10) * std::sqrt(0.5);  // of the corners, each way
  for (const double angle : {45.0, -45.0, 135.0, 585.0}) {
    image_.SetRotation(angle);
    EXPECT_TRUE(IsImageAddedAt(-30 - reach + kLittle, 100)) << angle;
    EXPECT_FALSE(IsImageAddedAt(-30 - reach - kLittle, 100)) << angle;
    EXPECT_TRUE(IsImageAddedAt(100, -10 - reach + kLittle)) << angle;
    EXPECT_FALSE(IsImageAddedAt(100, -10 - reach - kLittle)) << angle;
    EXPECT_TRUE(IsImageAddedAt(kWidth - 30 + reach - kLittle, 100)) << angle;
    EXPECT_FALSE(IsImageAddedAt(kWidth - 30 + reach + kLittle, 100)) << angle;
    EXPECT_TRUE(IsImageAddedAt(100, kHeight - 10 + reach - kLittle)) << angle;
    EXPECT_FALSE(IsImageAddedAt(100, kHeight - 10 + reach + kLittle)) << angle;
  }
}

// From a font size above the first baseline to a line below the last.
TEST_F(DecorationsOffPageTest, AreTextsBeyondAnEdge) {
  const double width = font_.GetTextWidth("Long enough", 20);
  const double depth = 2 * PdfText(kText, font_.Get(), 20).GetLeading();
  for (PdfTransformation* one : {&number_, &text_}) {
    EXPECT_TRUE(IsTextAddedAt(*one, -width + kLittle, 100));
    EXPECT_FALSE(IsTextAddedAt(*one, -width - kLittle, 100));
    EXPECT_TRUE(IsTextAddedAt(*one, kWidth - kLittle, 100));
    EXPECT_FALSE(IsTextAddedAt(*one, kWidth + kLittle, 100));
    EXPECT_TRUE(IsTextAddedAt(*one, 100, -20 + kLittle));
    EXPECT_FALSE(IsTextAddedAt(*one, 100, -20 - kLittle));
    EXPECT_TRUE(IsTextAddedAt(*one, 100, kHeight + depth - kLittle));
    EXPECT_FALSE(IsTextAddedAt(*one, 100, kHeight + depth + kLittle));
  }
}

// About the start of the first line, stamps only.
TEST_F(DecorationsOffPageTest, AreTurnedTextsBeyondAnEdge) {
  const double width = font_.GetTextWidth("Long enough", 20);
  number_.SetRotation(180);
  text_.SetRotation(180);
  EXPECT_FALSE(IsTextAddedAt(number_, kWidth + kLittle, 100));
  EXPECT_TRUE(IsTextAddedAt(text_, kWidth + width - kLittle, 100));
  EXPECT_FALSE(IsTextAddedAt(text_, kWidth + width + kLittle, 100));
  EXPECT_TRUE(IsTextAddedAt(text_, kLittle, 100));
  EXPECT_FALSE(IsTextAddedAt(text_, -kLittle, 100));
  EXPECT_TRUE(IsTextAddedAt(text_, 100, kHeight + 20 - kLittle));
  EXPECT_FALSE(IsTextAddedAt(text_, 100, kHeight + 20 + kLittle));
  text_.SetRotation(90);
  EXPECT_TRUE(IsTextAddedAt(text_, 20 - kLittle, 100));
  EXPECT_TRUE(IsTextAddedAt(text_, 100, -width + kLittle));
  EXPECT_FALSE(IsTextAddedAt(text_, 100, -width - kLittle));
  EXPECT_TRUE(IsTextAddedAt(text_, kWidth + 20 - kLittle, 100));
  EXPECT_FALSE(IsTextAddedAt(text_, kWidth + 20 + kLittle, 100));
}

// Nobody looks for all nine of them.
TEST_F(DecorationsOffPageTest, AreNoMosaics) {
  for (PdfTransformation* one : {&text_, &image_}) {
    one->SetMarginX(5000);
    one->SetMarginY(-5000);
    one->SetMosaic(true);
    EXPECT_TRUE(IsAdded(*one));
  }
}

}  // namespace
}  // namespace TarnixTools
