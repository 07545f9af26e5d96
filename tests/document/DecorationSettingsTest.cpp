// PdfDoc::Transform: which settings what kind of decoration heeds, and those of each of several.
#include <algorithm>
#include <cmath>
#include <limits>

#include "PdfFont.h"
#include "PdfText.h"
#include "document/DecorationTest.h"

namespace TarnixTools {
namespace {

using testing::Box;
using ::testing::ElementsAre;
using testing::Picture;
using testing::Pixel;
using testing::TestPdf;
using Horizontal = PdfTransformHorizontalPos;
using Vertical = PdfTransformVerticalPos;

constexpr const char* kBlocks = "\u2588\u2588\u2588";  // which fill the line
constexpr double kMargin = 15;                         // of stamps
constexpr double kNear = 0.05;                         // points

class DecorationSettingsTest : public DecorationTest {
 protected:
  DecorationSettingsTest() { TestPdf().Page("").Write(Path("doc.pdf")); }

  // The bytes that the decoration makes.
  std::string Decorated(PdfTransformation transformation) {
    Decorate(transformation);
    return testing::ReadBytes(Path("out.pdf"));
  }

  // The words on the first page.
  std::vector<testing::WordBox> Words() const { return testing::WordBoxes(Path("out.pdf")).at(0); }

  static double WidthOf(const PdfTransformation& look, const std::string& line) {
    return PdfFont(look.GetFontName(), look.GetFontStyle()).GetTextWidth(line, look.GetFontSize());
  }
};

// Each is painted in a line of its own, by which its pixels are found.
TEST_F(DecorationSettingsTest, HaveEachOfSeveralItsOwnPaint) {
  struct Look {
    const char* color;
    int opacity;
    Pixel seen;
  };

  const Look looks[] = {{"#000000", 100, {0, 0, 0}},      {"#FF0000", 100, {255, 0, 0}},
                        {"#000000", 40, {153, 153, 153}}, {"#0000FF", 100, {0, 0, 255}},
                        {"#FF0000", 20, {255, 204, 204}}, {"#00FF00", 99, {3, 255, 3}}};
  std::vector<PdfTransformation> several;
  for (const Look& look : looks) {
    const bool is_number = several.size() % 2 != 0;  // numbers have a paint as stamps have
    PdfTransformation& added = several.emplace_back(is_number ? number_ : text_);
    added.SetInputText(kBlocks);
    added.SetPageNumberTextTemplate(kBlocks);
    added.SetFontSize(24);
    added.SetFontColor(look.color);
    added.SetTextOpacity(look.opacity);
    added.SetAbsolutePosition(PdfPagePoint(100, 50 * static_cast<double>(several.size())));
  }
  Decorate(several);
  const Picture page = testing::Pictures(Path("out.pdf"), kDpi).at(0);
  for (std::size_t i = 0; i < several.size(); ++i) {
    const int y = page.height - 50 * static_cast<int>(i + 1) - (i % 2 != 0 ? 12 : 27);
    const Pixel pixel = page.At(125, y);
    for (std::size_t c = 0; c < 3; ++c) {
      EXPECT_NEAR(pixel[c], looks[i].seen[c], 1) << looks[i].color << " " << looks[i].opacity;
    }
  }
}

TEST_F(DecorationSettingsTest, HaveEachOfSeveralItsOwnFont) {
  struct Look {
    const char* name;
    const char* style;
    double size;
  };

  std::vector<PdfTransformation> several;
  for (const Look& look : {Look{"Arial", "", 12}, Look{"Arial", "Bold", 12}, Look{"Arial", "", 20},
                           Look{"Courier New", "", 12}, Look{"Courier New", "Bold", 9}}) {
    PdfTransformation& added = several.emplace_back(text_);
    added.SetInputText("Illustration");
    added.SetFontName(look.name);
    added.SetFontStyle(look.style);
    added.SetFontSize(look.size);
    added.SetAbsolutePosition(PdfPagePoint(100, 50 * static_cast<double>(several.size())));
  }
  EXPECT_THAT(Decorate(several).GetEntries(), ElementsAre(Added(PdfReportKind::TextStamp, 5)));
  std::vector<double> widths(several.size());
  for (const testing::WordBox& word : Words()) {
    widths.at(static_cast<std::size_t>(word.box.bottom / 50) - 1) = word.box.right - word.box.left;
  }
  for (std::size_t i = 0; i < several.size(); ++i) {
    EXPECT_NEAR(widths[i], WidthOf(several[i], "Illustration"), kNear) << i;
    EXPECT_GT(widths[i], 0);
  }
}

TEST_F(DecorationSettingsTest, TellOfEachFontThatIsAnotherOne) {
  const auto replaced = [](const std::string& reason) {
    return PdfReportEntry{PdfReportKind::Font, PdfReportOutcome::Replaced, 1, 0, reason};
  };
  number_.SetFontName("No Such Font");
  EXPECT_THAT(Decorate(number_).GetEntries(),
              ElementsAre(replaced("No Such Font cannot be used, Arial is used instead"),
                          Added(PdfReportKind::PageNumber, 1)));
  text_.SetFontStyle("Swash");
  EXPECT_THAT(Decorate(text_).GetEntries(),
              ElementsAre(replaced("Arial has no style Swash, the closest is used instead"),
                          Added(PdfReportKind::TextStamp, 1)));
  std::vector<PdfTransformation> several = {text_, number_, text_, number_};
  EXPECT_THAT(Decorate(several).GetEntries(),
              ::testing::UnorderedElementsAre(
                  replaced("Arial has no style Swash, the closest is used instead"),
                  replaced("No Such Font cannot be used, Arial is used instead"),
                  Added(PdfReportKind::TextStamp, 2), Added(PdfReportKind::PageNumber, 2)));
}

// They are of another kind of decoration.
TEST_F(DecorationSettingsTest, OfStampsAreNoneOfPageNumbers) {
  const std::string plain = Decorated(number_);
  PdfTransformation number = number_;
  number.SetRotation(90);
  number.SetMosaic(true);
  number.SetInputText("Draft");
  number.SetInputImage(Path("missing.png"));
  number.SetOpacity(1);
  number.SetApplyOpacity(true);
  number.SetPixelsPerPoint(3);
  EXPECT_EQ(Decorated(number), plain);
}

TEST_F(DecorationSettingsTest, OfPageNumbersAndImagesAreNoneOfTexts) {
  const std::string plain = Decorated(text_);
  PdfTransformation text = text_;
  text.SetPageNumberTextTemplate("{n} of {p}");
  text.SetStartingPageNum(7);
  text.SetInputImage(Path("missing.png"));
  text.SetOpacity(1);
  text.SetApplyOpacity(true);
  text.SetPixelsPerPoint(3);
  EXPECT_EQ(Decorated(text), plain);
}

TEST_F(DecorationSettingsTest, OfTextAreNoneOfImages) {
  const std::string plain = Decorated(image_);
  PdfTransformation image = image_;
  image.SetInputText("Draft");
  image.SetPageNumberTextTemplate("{n} of {p}");
  image.SetFontName("No Such Font At All");
  image.SetFontSize(0);
  image.SetFontColor("#FF0000");
  image.SetTextOpacity(1);
  image.SetTextAlignment(PdfTransformTextAlignment::Right);
  EXPECT_EQ(Decorated(image), plain);
}

TEST_F(DecorationSettingsTest, FillNothingIntoATextStamp) {
  text_.SetInputText("{n}/{p}");
  text_.SetStartingPageNum(7);
  Decorate(text_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("{n}/{p}"));
}

TEST_F(DecorationSettingsTest, NumberInSeveralLines) {
  TestPdf().Page("").Page("").Write(Path("doc.pdf"));
  number_.SetPageNumberTextTemplate("{n}\nof {p}\n\n{n}");
  Decorate(number_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("1\nof 2\n1", "2\nof 2\n2"));
  const auto words = Words();
  ASSERT_EQ(words.size(), 4U);
  const double leading = 12 * 1.2;
  EXPECT_NEAR(words[0].box.bottom - words[3].box.bottom, 3 * leading, kNear);
  EXPECT_NEAR(words[3].box.bottom, 0, kNear);
  EXPECT_NEAR(words[0].box.left + words[0].box.right, TestPdf::kDefaultWidth, kNear);
}

TEST_F(DecorationSettingsTest, CountTheTotalOfTheDocumentOnTargetPages) {
  TestPdf().Page("").Page("").Page("").Write(Path("doc.pdf"));
  number_.SetPageNumberTextTemplate("{n}/{p}");
  number_.SetStartingPageNum(-3);
  number_.AddTargetPattern("3,1");
  Decorate(number_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("-3/3", "", "-1/3"));
}

TEST_F(DecorationSettingsTest, StopCountingAtTheLargestNumber) {
  TestPdf().Page("").Page("").Write(Path("doc.pdf"));
  number_.SetStartingPageNum(std::numeric_limits<int>::max());
  Decorate(number_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("2147483647", "2147483647"));
  number_.SetStartingPageNum(std::numeric_limits<int>::min());
  Decorate(number_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("-2147483648", "-2147483647"));
}

// The line of most bytes makes the block, also where another one is wider.
TEST_F(DecorationSettingsTest, MakeABlockAsWideAsItsLineOfMostBytes) {
  text_.SetInputText("iiiiiiii\nWWWWWW");
  const double block = WidthOf(text_, "iiiiiiii");
  const double wide = WidthOf(text_, "WWWWWW");
  ASSERT_GT(wide, 2 * block);
  text_.SetHorizontalPosition(Horizontal::Left);
  text_.SetMarginX(200);
  using Alignment = PdfTransformTextAlignment;
  for (const auto& [alignment, offset] :
       {std::pair(Alignment::Left, 0.0), std::pair(Alignment::Center, (block - wide) / 2),
        std::pair(Alignment::Right, block - wide), std::pair(static_cast<Alignment>(3), 0.0)}) {
    text_.SetTextAlignment(alignment);
    Decorate(text_);
    const auto words = Words();
    ASSERT_EQ(words.size(), 2U);
    EXPECT_NEAR(words[0].box.left, 200, kNear);
    EXPECT_NEAR(words[1].box.left, 200 + offset, kNear) << static_cast<int>(alignment);
  }
  text_.SetTextAlignment(Alignment::Left);
  text_.SetMarginX(15);
  text_.SetHorizontalPosition(Horizontal::Right);
  Decorate(text_);
  EXPECT_NEAR(Words().at(1).box.left, TestPdf::kDefaultWidth - 15 - block, kNear);
}

TEST_F(DecorationSettingsTest, MeasureLinesByTheirCharacters) {
  text_.SetInputText("\u00C4\u00D6\u00DC\u20AC\nWWWWWWW");
  text_.SetHorizontalPosition(Horizontal::Left);
  text_.SetTextAlignment(PdfTransformTextAlignment::Right);
  Decorate(text_);
  const auto words = Words();
  ASSERT_EQ(words.size(), 2U);
  EXPECT_NEAR(words[0].box.left, kMargin, kNear);
  EXPECT_NEAR(words[0].box.right, words[1].box.right, kNear);
}

// Of the lines, the first is the one that the vertical position is about.
TEST_F(DecorationSettingsTest, PlaceBlocksOfSeveralLines) {
  text_.SetInputText("First\nSecond\nThird");
  const PdfFont font("Arial", "");
  const PdfText block(text_.GetInputText(), font.Get(), text_.GetFontSize());
  const double height = block.GetTextHeight();
  const std::pair<Vertical, double> tops[] = {{Vertical::Top, 792 - 15},
                                              {Vertical::Middle, 396 - height / 2},
                                              {Vertical::Bottom, 15 + height}};
  for (const auto& [vertical, top] : tops) {
    text_.SetVerticalPosition(vertical);
    Decorate(text_);
    const auto words = Words();
    ASSERT_EQ(words.size(), 3U);
    EXPECT_NEAR(words[0].box.top, top, kNear) << static_cast<int>(vertical);
    EXPECT_NEAR(words[2].box.bottom, top - height, kNear) << static_cast<int>(vertical);
  }
}

TEST_F(DecorationSettingsTest, TakeAbsolutePlacesWhateverStoodThereBefore) {
  text_.SetHorizontalPosition(Horizontal::Right);
  text_.SetHorizontalAdjustment(4);
  text_.SetVerticalAdjustment(6);
  text_.SetAbsolutePosition(PdfPagePoint(100, 300));
  Decorate(text_);
  const Box word = Words().at(0).box;
  EXPECT_NEAR(word.left, 100 + kMargin + 4, kNear);
  EXPECT_NEAR(word.bottom, 300 + kMargin + 6, kNear);
}

TEST_F(DecorationSettingsTest, FacePagesOfTextsAndNotOfImages) {
  TestPdf().Page("").Page("").Write(Path("doc.pdf"));
  for (PdfTransformation* stamp : {&text_, &image_}) {
    stamp->SetDoFacingPages(true);
    stamp->SetHorizontalPosition(Horizontal::Left);
    stamp->SetHorizontalAdjustment(30);
  }
  Decorate(text_);
  const auto words = testing::WordBoxes(Path("out.pdf"));
  EXPECT_NEAR(words.at(0).at(0).box.right, TestPdf::kDefaultWidth - kMargin - 30, kNear);
  EXPECT_NEAR(words.at(1).at(0).box.left, kMargin + 30, kNear);
  Decorate(image_);
  for (const auto& difference : Differences()) {
    ASSERT_TRUE(difference.has_value());
    EXPECT_NEAR(difference->left, kMargin + 30, 1);
  }
  EXPECT_EQ(image_.GetHorizontalAdjustment(), 30);
}

// A host that wants to know what was drawn last can look.
TEST_F(DecorationSettingsTest, KeepWhatFacingPagesMadeOfThem) {
  TestPdf().Page("").Page("").Page("").Write(Path("doc.pdf"));
  number_.SetDoFacingPages(true);
  number_.SetHorizontalPosition(Horizontal::Right);
  number_.SetHorizontalAdjustment(-10);
  Decorate(number_);
  EXPECT_EQ(number_.GetHorizontalPosition(), Horizontal::Left);
  EXPECT_EQ(number_.GetHorizontalAdjustment(), 10);
  EXPECT_EQ(number_.GetBaseHorizontalPosition(), Horizontal::Right);
  EXPECT_EQ(number_.GetBaseHorizontalAdjustment(), -10);
  number_.ClearTargetPages();
  number_.AddTargetPattern("1-2");
  Decorate(number_);
  EXPECT_EQ(number_.GetHorizontalPosition(), Horizontal::Right);
  EXPECT_EQ(number_.GetHorizontalAdjustment(), -10);
}

TEST_F(DecorationSettingsTest, KeepWhatAMosaicMadeOfEachOfSeveral) {
  std::vector<PdfTransformation> several = {text_, image_, number_, text_};
  for (PdfTransformation& one : several) {
    one.SetHorizontalPosition(Horizontal::Left);
    one.SetVerticalPosition(Vertical::Top);
    one.SetHorizontalAdjustment(5);
    one.SetVerticalAdjustment(-5);
    one.SetMosaic(true);
  }
  several[3].AddTargetPage(2);  // which there is not
  Decorate(several);
  for (const std::size_t drawn : {0U, 1U}) {
    EXPECT_EQ(several[drawn].GetVerticalPosition(), Vertical::Middle);
    EXPECT_EQ(several[drawn].GetHorizontalPosition(), Horizontal::Right);
    EXPECT_EQ(several[drawn].GetBaseHorizontalPosition(), Horizontal::Right);
    EXPECT_EQ(several[drawn].GetVerticalAdjustment(), 0);
    EXPECT_EQ(several[drawn].GetHorizontalAdjustment(), 0);
    EXPECT_EQ(several[drawn].GetBaseHorizontalAdjustment(), 0);
  }
  for (const std::size_t other : {2U, 3U}) {
    EXPECT_EQ(several[other].GetVerticalPosition(), Vertical::Top);
    EXPECT_EQ(several[other].GetHorizontalPosition(), Horizontal::Left);
    EXPECT_EQ(several[other].GetVerticalAdjustment(), -5);
    EXPECT_EQ(several[other].GetBaseHorizontalAdjustment(), 5);
  }
}

TEST_F(DecorationSettingsTest, TileEveryPageAlike) {
  TestPdf().Page("").Page("").Page("").Write(Path("doc.pdf"));
  text_.SetMosaic(true);
  text_.SetInputText("Til");
  text_.SetMarginX(40);
  text_.SetMarginY(50);
  Decorate(text_);
  const double width = WidthOf(text_, "Til");
  const PdfFont font("Arial", "");
  const double height = PdfText("Til", font.Get(), 24).GetTextHeight();
  std::vector<std::pair<double, double>> expected;  // in the order in which they are painted
  for (const double bottom : {792 - 50 - height, 50.0, 396 - height / 2 - height}) {
    for (const double left : {40.0, 306 - width / 2, 612 - 40 - width}) {
      expected.emplace_back(left, bottom);
    }
  }
  for (const auto& words : testing::WordBoxes(Path("out.pdf"))) {
    ASSERT_EQ(words.size(), expected.size());
    for (const auto& place : expected) {
      const bool is_there = std::any_of(words.begin(), words.end(), [&](const auto& word) {
        return std::abs(word.box.left - place.first) < kNear &&
               std::abs(word.box.bottom - place.second) < kNear;
      });
      EXPECT_TRUE(is_there) << place.first << " " << place.second;
    }
  }
}

}  // namespace
}  // namespace TarnixTools
