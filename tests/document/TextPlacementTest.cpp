// What a host asks beforehand is where the text then stands: with public headers only.
#include "TarnixTools.h"
#include "support/DocumentTest.h"
#include "support/PageViews.h"

namespace TarnixTools {
namespace {

using testing::Box;
using testing::Failure;
using testing::FailureOf;
using testing::TestPdf;

class TextPlacementTest : public testing::DocumentTest {
 protected:
  void SetUp() override { TARNIX_NEED_PROGRAM("pdftotext"); }
};

TEST_F(TextPlacementTest, IsWhatAHostHasComputedBefore) {
  TestPdf().Page("").Size(400, 300).Write(Path("doc.pdf"));
  PdfTransformation stamp(PdfTransformType::StampText);
  stamp.SetInputText("First\nand widest line");
  stamp.SetFontSize(18);
  const PdfFont font(stamp.GetFontName(), stamp.GetFontStyle());
  PdfText block(stamp.GetInputText(), font.Get(), stamp.GetFontSize());
  const double width = font.GetTextWidth(block.GetLongestLine(), block.GetFontSize());
  for (const auto vertical : {PdfTransformVerticalPos::Top, PdfTransformVerticalPos::Middle,
                              PdfTransformVerticalPos::Bottom}) {
    for (const auto horizontal :
         {PdfTransformHorizontalPos::Left, PdfTransformHorizontalPos::Center,
          PdfTransformHorizontalPos::Right}) {
      stamp.SetVerticalPosition(vertical);
      stamp.SetHorizontalPosition(horizontal);
      const engines::TPdfPoint start =
          stamp.GetTextPosition(1, {400, 300}, {width, block.GetTextHeight()}, block);
      Doc("doc.pdf").Transform(stamp, Path("out.pdf"), "");
      const auto words = testing::WordBoxes(Path("out.pdf")).at(0);
      ASSERT_EQ(words.size(), 4U);
      const Box& first = words.front().box;
      EXPECT_NEAR(first.left, start.x, 0.1);
      EXPECT_NEAR(first.bottom, start.y + block.GetDescent(), 0.1);
      EXPECT_NEAR(words.back().box.right, start.x + width, 0.1);
      EXPECT_NEAR(first.bottom - words.back().box.bottom, block.GetLeading(), 0.1);
    }
  }
}

TEST_F(TextPlacementTest, MeasuresInTheFontThatDecorationsTake) {
  const PdfFont arial("Arial", "");
  const PdfFont bold("Arial", "Bold");
  const PdfFont missing("No Such Font At All", "Bold");
  EXPECT_GT(bold.GetTextWidth("Text", 10), arial.GetTextWidth("Text", 10));
  EXPECT_EQ(missing.GetTextWidth("Text", 10), arial.GetTextWidth("Text", 10));
  EXPECT_NEAR(arial.GetTextWidth("Text", 20), 2 * arial.GetTextWidth("Text", 10), 1e-9);
  EXPECT_EQ(arial.GetTextWidth("Text", 0), 0);
  EXPECT_EQ(arial.GetTextWidth("", 10), 0);
}

TEST_F(TextPlacementTest, SharesAFontAmongItsCopies) {
  PdfFont font("Arial", "");
  const PdfFont copy = font;
  EXPECT_EQ(copy.Get(), font.Get());
  PdfFont moved = std::move(font);
  EXPECT_EQ(moved.Get(), copy.Get());
  moved = PdfFont("Courier New", "");
  EXPECT_NE(moved.Get(), copy.Get());
  EXPECT_GT(copy.GetTextWidth("Text", 10), 0);
  EXPECT_EQ(FailureOf([] { PdfText("a", nullptr, 10); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid pdf text font"));
}

}  // namespace
}  // namespace TarnixTools
