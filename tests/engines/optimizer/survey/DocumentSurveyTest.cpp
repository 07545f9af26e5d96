#include <cmath>
#include <memory>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/survey/DocumentSurvey.h"
#include "pdf/content/ContentFixture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using pdf::ContentDocument;
using pdf::kFormEntries;
using pdf::kImageEntries;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The image is object 9 and /I, another one 8 and /J; /X is object 5.
const std::string kResources = "/Resources<</XObject<</I 9 0 R/X 5 0 R/J 8 0 R>>";
const std::string kOwn = kResources + ">>";

class DocumentSurveyTest : public ::testing::Test {
 protected:
  // Of a page of 100 by 100 points.
  const ImagePlacement* PlacementOn(const std::string& content,
                                    const std::string& page_entries = "",
                                    const std::string& resources = "") {
    file_.Page(kResources + resources + ">>" + page_entries, content);
    file_.Stream(9, kImageEntries, "x").Stream(8, kImageEntries, "y");
    file_.Open();
    survey_ = std::make_unique<DocumentSurvey>(file_.document(), file_.pages());
    return survey_->PlacementOf(9);
  }

  ContentDocument file_;
  std::unique_ptr<DocumentSurvey> survey_;
};

// What is known of an image's size: "20x30", in points.
std::string SizeOf(const ImagePlacement* placement) {
  if (placement == nullptr) {
    return "not drawn";
  }
  if (!placement->is_known) {
    return "unknown";
  }
  std::ostringstream text;
  text << std::lround(placement->width_points * 100) / 100.0 << 'x'
       << std::lround(placement->height_points * 100) / 100.0;
  return text.str();
}

void ExpectShown(const ImagePlacement* placement, const pdf::Box& box) {
  ASSERT_NE(placement, nullptr);
  EXPECT_NEAR(placement->shown.left, box.left, 1e-6);
  EXPECT_NEAR(placement->shown.bottom, box.bottom, 1e-6);
  EXPECT_NEAR(placement->shown.right, box.right, 1e-6);
  EXPECT_NEAR(placement->shown.top, box.top, 1e-6);
}

TEST_F(DocumentSurveyTest, TellsTheSizeOfAnImage) {
  const ImagePlacement* const placement = PlacementOn("20 0 0 30 5 5 cm /I Do");
  EXPECT_EQ(SizeOf(placement), "20x30");
  ExpectShown(placement, {0, 0, 1, 1});
  EXPECT_FALSE(placement->has_default_spaces);
}

TEST_F(DocumentSurveyTest, MeasuresAlongTheImagesOwnSides) {
  EXPECT_EQ(SizeOf(PlacementOn("0 20 -30 0 50 5 cm /I Do")), "20x30");
}

TEST_F(DocumentSurveyTest, MeasuresTurnedImages) {
  EXPECT_EQ(SizeOf(PlacementOn("12 16 -24 18 50 5 cm /I Do")), "20x30");
}

TEST_F(DocumentSurveyTest, MeasuresMirroredImages) {
  EXPECT_EQ(SizeOf(PlacementOn("-20 0 0 -30 50 50 cm /I Do")), "20x30");
}

TEST_F(DocumentSurveyTest, JoinsMatrices) {
  EXPECT_EQ(SizeOf(PlacementOn("2 0 0 2 0 0 cm q 10 0 0 15 1 1 cm /I Do Q")), "20x30");
}

TEST_F(DocumentSurveyTest, MeasuresInTheUnitOfThePage) {
  EXPECT_EQ(SizeOf(PlacementOn("20 0 0 30 5 5 cm /I Do", "/UserUnit 2")), "40x60");
}

TEST_F(DocumentSurveyTest, MeasuresOnTurnedPages) {
  const ImagePlacement* const placement = PlacementOn("20 0 0 30 5 5 cm /I Do", "/Rotate 90");
  EXPECT_EQ(SizeOf(placement), "20x30");
  ExpectShown(placement, {0, 0, 1, 1});
}

bool IsPagePicture(const ImagePlacement* placement) {
  return placement != nullptr && placement->is_page_picture;
}

TEST_F(DocumentSurveyTest, TellsThePictureOfAPage) {
  EXPECT_TRUE(IsPagePicture(PlacementOn("100 0 0 80 0 10 cm /I Do BT (a) Tj ET")));
  file_.Stream(5, kFormEntries + kOwn, "100 0 0 80 0 0 cm /I Do");
  EXPECT_TRUE(IsPagePicture(PlacementOn("/X Do")));
}

TEST_F(DocumentSurveyTest, TellsThatAPictureIsNotAllOfAPage) {
  for (const char* const content :
       {"60 0 0 80 0 10 cm /I Do", "q 100 0 0 80 0 10 cm /I Do Q q 9 0 0 9 0 0 cm /J Do Q",
        "q 100 0 0 80 0 10 cm /I Do Q BI/W 1/H 1/BPC 8/CS/G ID x EI",
        "q 100 0 0 80 0 10 cm /I Do Q q 100 0 0 80 0 10 cm /I Do Q",
        "q 100 0 0 80 0 10 cm /I Do Q q 100 0 0 80 0 10 cm /J Do Q"}) {
    EXPECT_FALSE(IsPagePicture(PlacementOn(content))) << content;
  }
}

TEST_F(DocumentSurveyTest, TellsThatAPictureIsMixedWithWhatIsBehind) {
  for (const char* const entry : {"/ca 0.5", "/BM/Multiply", "/op true"}) {
    const std::string states = std::string("/ExtGState<</G<<") + entry + ">>>>";
    EXPECT_FALSE(IsPagePicture(PlacementOn("/G gs 100 0 0 100 0 0 cm /I Do", "", states))) << entry;
  }
  EXPECT_TRUE(IsPagePicture(PlacementOn("/G gs 100 0 0 100 0 0 cm /I Do", "",
                                        "/ExtGState<</G<</ca 1/BM/Normal/SMask/None>>>>")));
}

TEST_F(DocumentSurveyTest, TellsThatAPictureIsPartOfAPattern) {
  file_.Stream(5,
               "/Type/Pattern/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 100 100]/XStep 100"
               "/YStep 100" +
                   kOwn,
               "100 0 0 100 0 0 cm /I Do");
  EXPECT_FALSE(IsPagePicture(
      PlacementOn("/Pattern cs /P scn 0 0 100 100 re f", "", "/Pattern<</P 5 0 R>>")));
}

TEST_F(DocumentSurveyTest, MeasuresInForms) {
  file_.Stream(5, kFormEntries + "/Matrix[2 0 0 2 0 0]" + kOwn, "5 0 0 10 0 0 cm /I Do");
  EXPECT_EQ(SizeOf(PlacementOn("2 0 0 1 0 0 cm /X Do")), "20x20");
}

TEST_F(DocumentSurveyTest, MeasuresInPatterns) {
  file_.Stream(5,
               "/Type/Pattern/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9"
               "/Matrix[3 0 0 3 0 0]" +
                   kOwn,
               "5 0 0 7 0 0 cm /I Do");
  EXPECT_EQ(SizeOf(PlacementOn("/Pattern cs /P scn 0 0 50 50 re f", "", "/Pattern<</P 5 0 R>>")),
            "15x21");
}

TEST_F(DocumentSurveyTest, MeasuresInGlyphs) {
  file_.Stream(6, "", "1 0 d0 1 0 0 1 0 0 cm /I Do")
      .Object(5,
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]"
              "/CharProcs<</a 6 0 R>>/Encoding<</Differences[97/a]>>/FirstChar 97/LastChar 97"
              "/Widths[1]" +
                  kOwn + ">>");
  EXPECT_EQ(SizeOf(PlacementOn("BT /F 30 Tf (a) Tj ET", "", "/Font<</F 5 0 R>>")), "30x30");
}

TEST_F(DocumentSurveyTest, MeasuresInSoftMasks) {
  file_.Stream(5, kFormEntries + "/Group<</S/Transparency/CS/DeviceGray>>" + kOwn,
               "20 0 0 30 0 0 cm /I Do");
  EXPECT_EQ(SizeOf(PlacementOn("/G gs 0 0 9 9 re f", "",
                               "/ExtGState<</G<</SMask<</S/Luminosity/G 5 0 R>>>>>>")),
            "20x30");
}

TEST_F(DocumentSurveyTest, MeasuresInAppearances) {
  file_.Stream(5, kFormEntries + kOwn, "50 0 0 100 0 0 cm /I Do");
  EXPECT_EQ(SizeOf(PlacementOn("", "/Annots[<</Subtype/Stamp/Rect[0 0 20 30]/AP<</N 5 0 R>>>>]")),
            "10x30");
}

TEST_F(DocumentSurveyTest, DoesNotKnowSizesInAppearancesThatAreNotShown) {
  file_.Stream(5, kFormEntries, "").Stream(6, kFormEntries + kOwn, "5 0 0 9 0 0 cm /I Do");
  const ImagePlacement* const placement =
      PlacementOn("", "/Annots[<</Subtype/Stamp/Rect[0 0 20 30]/AP<</N 5 0 R/D 6 0 R>>>>]");
  EXPECT_EQ(SizeOf(placement), "unknown");
  ExpectShown(placement, {0, 0, 1, 1});
}

TEST_F(DocumentSurveyTest, DoesNotKnowSizesInFormsThatNothingUses) {
  file_.Stream(5, kFormEntries + kOwn, "5 0 0 9 0 0 cm /I Do");
  EXPECT_EQ(SizeOf(PlacementOn("20 0 0 30 5 5 cm /I Do")), "unknown");
}

TEST_F(DocumentSurveyTest, DoesNotKnowSizesWithoutArea) {
  EXPECT_EQ(SizeOf(PlacementOn("20 0 0 0 5 5 cm /I Do")), "unknown");
}

TEST_F(DocumentSurveyTest, TakesTheLargestOfAllUses) {
  const ImagePlacement* const placement =
      PlacementOn("q 20 0 0 10 5 5 cm /I Do Q q 10 0 0 30 5 5 cm /I Do Q q 1 0 0 1 5 5 cm /I Do Q");
  EXPECT_EQ(SizeOf(placement), "20x30");
}

TEST_F(DocumentSurveyTest, TellsWhatIsShownOfAClippedImage) {
  ExpectShown(PlacementOn("10 20 10 15 re W n 40 0 0 60 0 0 cm /I Do"),
              {0.25, 20.0 / 60, 0.5, 35.0 / 60});
}

TEST_F(DocumentSurveyTest, TellsWhatIsShownOfAnImageThatThePageCutsOff) {
  ExpectShown(PlacementOn("40 0 0 40 -10 80 cm /I Do"), {0.25, 0, 1, 0.5});
  EXPECT_EQ(SizeOf(survey_->PlacementOf(9)), "40x40");
}

TEST_F(DocumentSurveyTest, TellsWhatTheCropBoxLeaves) {
  ExpectShown(PlacementOn("100 0 0 100 0 0 cm /I Do", "/CropBox[10 20 60 70]"),
              {0.1, 0.2, 0.6, 0.7});
}

TEST_F(DocumentSurveyTest, TellsWhatIsShownOfATurnedImage) {
  // The image's left side lies at the bottom of the page, of which the lower half is shown.
  ExpectShown(PlacementOn("0 0 100 50 re W n 0 100 -100 0 100 0 cm /I Do"), {0, 0, 0.5, 1});
}

TEST_F(DocumentSurveyTest, JoinsWhatAllUsesShow) {
  ExpectShown(PlacementOn("q 0 0 10 20 re W n 40 0 0 40 0 0 cm /I Do Q "
                          "q 20 10 10 30 re W n 40 0 0 40 0 0 cm /I Do Q"),
              {0, 0, 0.75, 1});
}

TEST_F(DocumentSurveyTest, ShowsNothingOfAnImageBesideThePage) {
  const ImagePlacement* const placement = PlacementOn("40 0 0 40 200 200 cm /I Do");
  ASSERT_NE(placement, nullptr);
  EXPECT_TRUE(placement->shown.IsEmpty());
}

TEST_F(DocumentSurveyTest, KnowsNothingOfImagesThatAreNeverDrawn) {
  EXPECT_EQ(PlacementOn("20 0 0 30 5 5 cm /J Do"), nullptr);
  EXPECT_THAT(survey_->Images(), ElementsAre(8));
}

TEST_F(DocumentSurveyTest, ListsImagesInOrder) {
  PlacementOn("/I Do /J Do /I Do");
  EXPECT_THAT(survey_->Images(), ElementsAre(8, 9));
}

TEST_F(DocumentSurveyTest, ListsNoInlineImages) {
  PlacementOn("9 0 0 9 0 0 cm BI/W 1/H 1/BPC 8/CS/G ID x EI");
  EXPECT_THAT(survey_->Images(), IsEmpty());
}

TEST_F(DocumentSurveyTest, SeesDefaultColorSpaces) {
  for (const char* const key : {"DefaultGray", "DefaultRGB", "DefaultCMYK"}) {
    file_ = ContentDocument();
    const ImagePlacement* const placement =
        PlacementOn("/I Do", "", std::string("/ColorSpace<</") + key + "[/CalGray<<>>]>>");
    ASSERT_NE(placement, nullptr);
    EXPECT_TRUE(placement->has_default_spaces) << key;
  }
}

TEST_F(DocumentSurveyTest, EndsForFormsThatDrawThemselves) {
  file_.Stream(5, kFormEntries + kOwn, "/X Do 20 0 0 30 0 0 cm /I Do /X Do");
  EXPECT_EQ(SizeOf(PlacementOn("/X Do")), "20x30");
}

TEST(ImagePlacement, IncludesAnother) {
  ImagePlacement placement{.width_points = 5, .height_points = 9, .shown = {0, 0, 0.5, 1}};
  placement.Include({.width_points = 7,
                     .height_points = 2,
                     .shown = {0.25, 0.5, 1, 1},
                     .is_known = false,
                     .has_default_spaces = true});
  EXPECT_EQ(placement.width_points, 7);
  EXPECT_EQ(placement.height_points, 9);
  EXPECT_EQ(placement.shown, (pdf::Box{0, 0, 1, 1}));
  EXPECT_FALSE(placement.is_known);
  EXPECT_TRUE(placement.has_default_spaces);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
