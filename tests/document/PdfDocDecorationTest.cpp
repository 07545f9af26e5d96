// PdfDoc::Transform: what is drawn, on which pages, and what goes wrong.
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>

#include "document/DecorationTest.h"

namespace TarnixTools {
namespace {

using testing::Box;
using ::testing::Each;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;
using testing::Picture;
using testing::TestPdf;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr long kArgumentError = 11;  // of the engine

class PdfDocDecorationTest : public DecorationTest {};

TEST_F(PdfDocDecorationTest, NumbersEveryPage) {
  MakePdf("doc.pdf", 10);
  number_.SetPageNumberTextTemplate("{n}/{p}");
  number_.SetStartingPageNum(5);
  const PdfReport report = Decorate(number_);
  const auto texts = Texts("out.pdf");
  ASSERT_EQ(texts.size(), 10U);
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(texts[static_cast<std::size_t>(i)],
              "Page " + std::to_string(i + 1) + "\n\n" + std::to_string(i + 5) + "/10");
  }
  EXPECT_THAT(report.GetEntries(), ElementsAre(Added(PdfReportKind::PageNumber, 10)));
  EXPECT_EQ(number_.GetPageNumberText(1, 1), "1/1");
}

TEST_F(PdfDocDecorationTest, StartsWithAnyNumber) {
  TestPdf().Page("").Page("").Page("").Write(Path("doc.pdf"));
  number_.SetStartingPageNum(-1);
  Decorate(number_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("-1", "0", "1"));
  number_.SetStartingPageNum(0);
  Decorate(number_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("0", "1", "2"));
}

// The first page is an odd one, whatever is printed on it.
TEST_F(PdfDocDecorationTest, FacesPagesByTheirOwnNumbers) {
  TestPdf().Page("").Page("").Write(Path("doc.pdf"));
  number_.SetDoFacingPages(true);
  number_.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
  for (const int start : {1, 2}) {
    number_.SetStartingPageNum(start);
    Decorate(number_);
    const auto words = testing::WordBoxes(Path("out.pdf"));
    EXPECT_NEAR(words.at(0).at(0).box.left, 0, 1);
    EXPECT_NEAR(words.at(1).at(0).box.right, TestPdf::kDefaultWidth, 1);
  }
}

TEST_F(PdfDocDecorationTest, DrawsOnTargetPagesOnlyAndOnlyWhereTheDecorationIs) {
  MakePdf("doc.pdf", 4);
  text_.AddTargetPattern("2,4,99");
  Decorate(text_);
  const auto differences = Differences();
  const auto words = testing::WordBoxes(Path("out.pdf"));
  for (const std::size_t page : {0U, 2U}) {
    EXPECT_FALSE(differences[page].has_value());
    EXPECT_EQ(words[page].size(), 2U);
  }
  for (const std::size_t page : {1U, 3U}) {
    ASSERT_TRUE(differences[page].has_value());
    ASSERT_EQ(words[page].front().text, "Draft");
    const Box& word = words[page].front().box;
    EXPECT_GE(differences[page]->left, word.left - 1);
    EXPECT_LE(differences[page]->right, word.right + 1);
    EXPECT_GE(differences[page]->bottom, word.bottom - 1);
    EXPECT_LE(differences[page]->top, word.top + 1);
    EXPECT_GT(differences[page]->right - differences[page]->left, 40);
  }
}

TEST_F(PdfDocDecorationTest, CopiesADocumentThatHasNoTargetPage) {
  MakePdf("doc.pdf", 2);
  text_.AddTargetPage(3);
  EXPECT_THAT(Decorate(text_).GetEntries(), IsEmpty());
  EXPECT_THAT(Differences(), Each(std::optional<Box>()));
}

TEST_F(PdfDocDecorationTest, NumbersADocumentWithoutPages) {
  PdfDoc::Merge({}, Path("doc.pdf"), "");
  Decorate(number_);
  EXPECT_EQ(Doc("out.pdf").GetPagesNum(), 0);
}

TEST_F(PdfDocDecorationTest, GivesTextBackAsItWasTyped) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  const std::string typed = "Grüße, Ελλάδα, Привет: “fine” — 50 € ½";
  text_.SetInputText(typed);
  Decorate(text_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre(typed));
  text_.SetInputText("tab\there\r\nand there");
  Decorate(text_);
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("tab here\nand there"));
}

TEST_F(PdfDocDecorationTest, AlignsTheLinesOfABlock) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  text_.SetInputText("short\nthelongestline\nmiddling");
  using Alignment = PdfTransformTextAlignment;
  for (const auto alignment : {Alignment::Left, Alignment::Center, Alignment::Right}) {
    text_.SetTextAlignment(alignment);
    Decorate(text_);
    const auto words = testing::WordBoxes(Path("out.pdf")).at(0);
    ASSERT_EQ(words.size(), 3U);
    const Box& longest = words[1].box;
    for (const testing::WordBox& word : words) {
      const double line_at = alignment == Alignment::Left    ? word.box.left
                             : alignment == Alignment::Right ? word.box.right
                                                             : (word.box.left + word.box.right) / 2;
      const double block_at = alignment == Alignment::Left    ? longest.left
                              : alignment == Alignment::Right ? longest.right
                                                              : (longest.left + longest.right) / 2;
      EXPECT_NEAR(line_at, block_at, 0.1) << word.text;
    }
    EXPECT_NEAR(words[0].box.top - words[1].box.top, 28.8, 0.01);
    EXPECT_NEAR(words[1].box.top - words[2].box.top, 28.8, 0.01);
    EXPECT_NEAR((longest.left + longest.right) / 2, TestPdf::kDefaultWidth / 2, 0.1);
  }
}

TEST_F(PdfDocDecorationTest, TurnsTextAboutTheStartOfItsFirstLine) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  text_.SetAbsolutePosition(PdfPagePoint(200, 300));
  Decorate(text_);
  const Box upright = testing::WordBoxes(Path("out.pdf")).at(0).at(0).box;
  text_.SetRotation(90);
  Decorate(text_);
  const Box turned = testing::WordBoxes(Path("out.pdf")).at(0).at(0).box;
  const double descent = 24 * 0.212;  // of the font that Arial is here
  const double base = upright.bottom + descent;
  EXPECT_NEAR(turned.bottom, base, 0.5);
  EXPECT_NEAR(turned.top, base + (upright.right - upright.left), 0.5);
  EXPECT_NEAR(turned.right, upright.left + descent, 0.5);
  EXPECT_NEAR(turned.left, upright.left - (upright.top - upright.bottom - descent), 0.5);
}

TEST_F(PdfDocDecorationTest, StampsAMosaicOfNine) {
  TestPdf().Page("").Page("").Write(Path("doc.pdf"));
  text_.SetMosaic(true);
  text_.SetVerticalAdjustment(40);
  text_.SetHorizontalAdjustment(-40);
  text_.SetInputText("Tile");
  const PdfReport report = Decorate(text_);
  for (const auto& words : testing::WordBoxes(Path("out.pdf"))) {
    ASSERT_EQ(words.size(), 9U);
    std::map<int, int> rows;
    for (const testing::WordBox& word : words) {
      ++rows[static_cast<int>(word.box.bottom)];
    }
    EXPECT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows.begin()->second, 3);
    EXPECT_NEAR(rows.begin()->first, 15, 1);
  }
  EXPECT_EQ(text_.GetVerticalPosition(), PdfTransformVerticalPos::Middle);
  EXPECT_EQ(text_.GetHorizontalPosition(), PdfTransformHorizontalPos::Right);
  EXPECT_EQ(text_.GetBaseHorizontalPosition(), PdfTransformHorizontalPos::Right);
  EXPECT_EQ(text_.GetVerticalAdjustment(), 0);
  EXPECT_EQ(text_.GetHorizontalAdjustment(), 0);
  EXPECT_EQ(text_.GetBaseHorizontalAdjustment(), 0);
  EXPECT_THAT(report.GetEntries(), ElementsAre(Added(PdfReportKind::TextStamp, 2)));
}

TEST_F(PdfDocDecorationTest, TurnsEveryTileOfAMosaic) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  text_.SetMosaic(true);
  text_.SetInputText("Til");  // short enough for the upper row
  const auto tiles = [&] {
    Decorate(text_);
    std::map<std::pair<long, long>, Box> boxes;  // by row and column
    const auto words = testing::WordBoxes(Path("out.pdf"));
    for (const testing::WordBox& word : words.at(0)) {
      boxes[{std::lround(word.box.bottom), std::lround(word.box.left)}] = word.box;
    }
    return boxes;
  };
  const auto upright = tiles();
  text_.SetRotation(90);
  const auto turned = tiles();
  ASSERT_EQ(upright.size(), 9U);
  ASSERT_EQ(turned.size(), 9U);
  const double descent = 24 * 0.212;  // of the font that Arial is here
  auto at = turned.begin();
  for (const auto& [place, box] : upright) {
    const Box& tile = (at++)->second;
    EXPECT_NEAR(tile.bottom, box.bottom + descent, 0.5);
    EXPECT_NEAR(tile.right, box.left + descent, 0.5);
    EXPECT_NEAR(tile.top - tile.bottom, box.right - box.left, 0.5);
  }
}

TEST_F(PdfDocDecorationTest, PaintsOverOrUnderThePage) {
  TestPdf().Page("").Content("0 1 0 rg 0 0 612 792 re f").Write(Path("doc.pdf"));
  for (PdfTransformation* transformation : {&number_, &text_, &image_}) {
    transformation->SetLayerPosition(PdfTransformLayerPos::Under);
    Decorate(*transformation);
    EXPECT_FALSE(Differences().at(0).has_value());
    transformation->SetLayerPosition(PdfTransformLayerPos::Over);
    Decorate(*transformation);
    EXPECT_TRUE(Differences().at(0).has_value());
  }
}

TEST_F(PdfDocDecorationTest, PaintsUnderThePageUnlessItIsToPaintOver) {
  TestPdf().Page("").Content("0 1 0 rg 0 0 612 792 re f").Write(Path("doc.pdf"));
  for (PdfTransformation* transformation : {&number_, &text_, &image_}) {
    transformation->SetLayerPosition(static_cast<PdfTransformLayerPos>(2));
    Decorate(*transformation);
    EXPECT_FALSE(Differences().at(0).has_value());
  }
}

TEST_F(PdfDocDecorationTest, IsNotDisturbedByWhatThePageLeavesBehind) {
  // A page whose content ends with another matrix, colour, clip and an unclosed text.
  TestPdf()
      .Page("")
      .Content("q 0.1 0 0 0.1 300 300 cm 1 0 0 rg 0 0 5 5 re W n q BT /F1 5 Tf 3 Tr")
      .Write(Path("doc.pdf"));
  Decorate(image_);
  const auto difference = Differences().at(0);
  ASSERT_TRUE(difference.has_value());
  EXPECT_NEAR(difference->left, 256, 1);
  EXPECT_NEAR(difference->top, 421, 1);
}

TEST_F(PdfDocDecorationTest, AppliesColourAndOpacityOfText) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  text_.SetInputText("\u2588\u2588\u2588");  // full blocks
  text_.SetFontColor("#FF0000");
  text_.SetTextOpacity(50);
  Decorate(text_);
  const Picture page = testing::Pictures(Path("out.pdf"), kDpi).at(0);
  const auto red = testing::BoxOf(page, kDpi, [&](int x, int y) {
    const testing::Pixel pixel = page.At(x, y);
    return pixel[0] > 250 && std::abs(pixel[1] - 128) < 3 && std::abs(pixel[2] - 128) < 3;
  });
  ASSERT_TRUE(red.has_value());
  EXPECT_GT(red->right - red->left, 30);
}

TEST_F(PdfDocDecorationTest, AppliesSeveralInTheirOrder) {
  MakePdf("doc.pdf", 3);
  PdfTransformation cover = image_;
  cover.SetPixelsPerPoint(0.25);  // 400 by 200 points, over the text
  cover.AddTargetPattern("2-3");
  text_.SetVerticalAdjustment(24);
  text_.AddTargetPattern("1-2");
  std::vector<PdfTransformation> text_last = {cover, text_};
  const PdfReport report = Decorate(text_last);
  EXPECT_THAT(report.GetEntries(), ElementsAre(Added(PdfReportKind::TextStamp, 2),
                                               Added(PdfReportKind::ImageStamp, 2, 2)));
  const auto dark = [&](int page) {
    const Picture picture =
        testing::Pictures(Path("out.pdf"), kDpi).at(static_cast<std::size_t>(page));
    return testing::BoxOf(
               picture, kDpi,
               [&](int x, int y) { return y > 350 && y < 440 && picture.At(x, y)[0] < 60; })
        .has_value();
  };
  EXPECT_TRUE(dark(0));
  EXPECT_TRUE(dark(1));
  EXPECT_FALSE(dark(2));
  std::vector<PdfTransformation> image_last = {text_, cover};
  Decorate(image_last);
  EXPECT_TRUE(dark(0));
  EXPECT_FALSE(dark(1));
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Draft\n\nPage 1", "Draft\n\nPage 2", "Page 3"));
}

TEST_F(PdfDocDecorationTest, CopiesPagesThatNoneOfSeveralTargets) {
  MakePdf("doc.pdf", 2);
  text_.AddTargetPage(2);
  number_.AddTargetPage(2);
  std::vector<PdfTransformation> both = {text_, number_};
  Decorate(both);
  const auto differences = Differences();
  EXPECT_FALSE(differences.at(0).has_value());
  EXPECT_TRUE(differences.at(1).has_value());
  std::vector<PdfTransformation> none;
  Decorate(none);
  EXPECT_THAT(Differences(), Each(std::optional<Box>()));
}

TEST_F(PdfDocDecorationTest, TakesHundredsOfTransformations) {
  MakePdf("doc.pdf", 2);
  std::vector<PdfTransformation> many;
  for (int i = 0; i < 500; ++i) {
    PdfTransformation& text = many.emplace_back(PdfTransformType::StampText);
    text.SetInputText("w" + std::to_string(i));
    text.SetFontSize(4);
    text.SetAbsolutePosition(PdfPagePoint(20 + i % 20 * 28, 20 + i / 20 * 28));
  }
  Decorate(many);
  for (const auto& words : testing::WordBoxes(Path("out.pdf"))) {
    EXPECT_EQ(words.size(), 502U);
  }
}

TEST_F(PdfDocDecorationTest, TakesALongTemplate) {
  MakePdf("doc.pdf", 2);
  std::string text;
  while (text.size() < 10'000) {
    text += text.size() % 70 < 3 ? "{n} of\n" : "{p}{n} ";
  }
  number_.SetPageNumberTextTemplate(text);
  number_.SetFontSize(4);
  Decorate(number_);
  EXPECT_GT(testing::WordBoxes(Path("out.pdf")).at(1).size(), 1000U);
}

TEST_F(PdfDocDecorationTest, ReplacesAFontThatIsNotInstalled) {
  MakePdf("doc.pdf", 1);
  Decorate(text_);
  const Picture arial = testing::Pictures(Path("out.pdf"), kDpi).at(0);
  text_.SetFontName("No Such Font At All");
  text_.SetFontStyle("Bold");
  const PdfReport report = Decorate(text_);
  EXPECT_EQ(testing::Pictures(Path("out.pdf"), kDpi).at(0), arial);
  EXPECT_THAT(report.GetEntries(),
              ElementsAre(PdfReportEntry{PdfReportKind::Font, PdfReportOutcome::Replaced, 1, 0,
                                         "No Such Font At All Bold cannot be used, Arial is used "
                                         "instead"},
                          Added(PdfReportKind::TextStamp, 1)));
}

TEST_F(PdfDocDecorationTest, ReportsCharactersThatNoFontHas) {
  MakePdf("doc.pdf", 2);
  text_.AddTargetPage(2);
  text_.SetInputText("a\n\U0010FF77");
  EXPECT_EQ(FailureToDecorate(text_),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to show text on page [2]: no installed font has the character "
                    "[U+10FF77]",
                    15));
}

TEST_F(PdfDocDecorationTest, ChecksTheFontSize) {
  MakePdf("doc.pdf", 1);
  for (const double size : {0.0, -2.0}) {
    number_.SetFontSize(size);
    EXPECT_EQ(
        FailureToDecorate(number_),
        Failure(PdfExceptionCode::InvalidParameter,
                "Invalid pdf text font size [" + std::to_string(static_cast<int>(size)) + "]"));
  }
  text_.SetFontSize(kNan);
  EXPECT_EQ(FailureToDecorate(text_),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid pdf text font size [0]"));
  text_.SetFontSize(kInfinity);
  EXPECT_EQ(FailureToDecorate(text_),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to create text generator for font <Arial> size <inf> at text stamp",
                    kArgumentError));
  number_.SetFontSize(kInfinity);
  EXPECT_EQ(FailureToDecorate(number_),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to create text generator for font <Arial> size <inf>", kArgumentError));
}

TEST_F(PdfDocDecorationTest, ReportsTurnsThatAreNone) {
  MakePdf("doc.pdf", 1);
  for (const double angle : {kNan, kInfinity, -kInfinity}) {
    text_.SetRotation(angle);
    EXPECT_EQ(FailureToDecorate(text_),
              Failure(PdfExceptionCode::EngineError, "Rotation definition failed for text stamp",
                      kArgumentError));
    image_.SetRotation(angle);
    EXPECT_EQ(FailureToDecorate(image_),
              Failure(PdfExceptionCode::EngineError, "Img rotation definition failed. ERROR [11]",
                      kArgumentError));
  }
}

TEST_F(PdfDocDecorationTest, IsNoConversionToPdfA) {
  MakePdf("doc.pdf", 1);
  std::vector<PdfTransformation> several = {text_, PdfTransformation(PdfTransformType::PdfA)};
  EXPECT_EQ(FailureToDecorate(several),
            Failure(PdfExceptionCode::InternalError, "Invalid PDF doc transformation type [3]"));
}

TEST_F(PdfDocDecorationTest, ProtectsTheOutput) {
  MakePdf("doc.pdf", 2);
  Doc("doc.pdf").Lock("in", Path("locked.pdf"));
  PdfDoc document = Doc("locked.pdf", "in");
  document.Transform(text_, Path("out.pdf"), "out");
  EXPECT_THAT(Texts("out.pdf", "out"), ElementsAre("Draft\n\nPage 1", "Draft\n\nPage 2"));
  EXPECT_EQ(testing::QpdfComplaints(Path("out.pdf"), "out"), "");
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out.pdf")));
}

TEST_F(PdfDocDecorationTest, ReportsDocumentsThatCannotBeRead) {
  EXPECT_EQ(FailureOf([&] {
              PdfDoc(Path("no.pdf"), "", false).Transform(text_, Path("o.pdf"), "");
            }).code,
            PdfExceptionCode::FileNotFound);
  testing::WriteBytes(Path("doc.pdf"), "nothing");
  const Failure failure = FailureToDecorate(text_);
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_EQ(failure.message, "NULL pages object at PDF doc");
  std::vector<PdfTransformation> several = {text_};
  EXPECT_EQ(FailureToDecorate(several), failure);
  MakePdf("doc.pdf", 1);
  Doc("doc.pdf").Lock("in", Path("locked.pdf"));
  EXPECT_EQ(FailureOf([&] { Doc("locked.pdf").Transform(text_, Path("o.pdf"), ""); }).code,
            PdfExceptionCode::PasswordError);
  EXPECT_EQ(FailureOf([&] { Doc("doc.pdf").Transform(text_, "", ""); }),
            Failure(PdfExceptionCode::InvalidParameter, "Empty path received at PDF doc"));
  EXPECT_FALSE(testing::Exists(Path("o.pdf")));
}

TEST_F(PdfDocDecorationTest, WritesTheSameBytesAgain) {
  MakePdf("doc.pdf", 3);
  std::vector<PdfTransformation> all = {text_, number_, image_};
  Decorate(all);
  const std::string bytes = testing::ReadBytes(Path("out.pdf"));
  Decorate(all);
  EXPECT_EQ(testing::ReadBytes(Path("out.pdf")), bytes);
}

TEST_F(PdfDocDecorationTest, MayReplaceItsInput) {
  MakePdf("doc.pdf", 2);
  PdfDoc document = Doc("doc.pdf");
  document.Transform(text_, Path("doc.pdf"), "");
  document.Transform(number_, Path("doc.pdf"), "");
  EXPECT_THAT(Texts("doc.pdf"), ElementsAre("Draft\n\nPage 1\n\n1", "Draft\n\nPage 2\n\n2"));
}

}  // namespace
}  // namespace TarnixTools
