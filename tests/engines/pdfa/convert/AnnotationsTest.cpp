#include <algorithm>

#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/annotations/Annotations.h"
#include "engines/pdfa/convert/annotations/DrawnAppearance.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using testing::QpdfDocument;
using testing::RawPdf;

using Json = QpdfDocument::Json;

constexpr const char* kForm = "/Subtype/Form/BBox[0 0 9 9]";

class AnnotationsTest : public ConversionTest {
 protected:
  // The annotation as it is written, of a page that has one with these entries and two appearances
  // to refer to: 5 and 6.
  Json Mended(const std::string& entries, Level level = Level::k2b) {
    const bool is_field = entries.find("/Widget") != std::string::npos;
    RawPdf file = OnePage("/Annots[4 0 R]", is_field ? "/AcroForm<</Fields[4 0 R]>>" : "");
    file.Object(4, "<</Type/Annot/Rect[0 0 9 9]" + entries + (is_field ? "/T(a)>>" : ">>"));
    file.Stream(5, kForm, "0 g");
    file.Stream(6, kForm, "1 g");
    written_.emplace(Run(file, level, &MendAnnotations));
    const Json list = written_->Follow(written_->Page(1))["/Annots"];
    return list.empty() ? Json() : written_->Follow(list[0]);
  }

  // The appearance of the annotation.
  Json AppearanceOf(const Json& annotation) const {
    return written_->Follow(annotation["/AP"]["/N"]);
  }

  std::optional<QpdfDocument> written_;
};

TEST_F(AnnotationsTest, ArePrinted) {
  EXPECT_EQ(Mended("/Subtype/Link")["/F"], 4);
  EXPECT_EQ(Mended("/Subtype/Link/F 128")["/F"], 132);
}

TEST_F(AnnotationsTest, StayEmptyWhereTheyWereHidden) {
  const Json widget = Mended("/Subtype/Widget/FT/Tx/F 2/AP<</N 5 0 R>>");
  EXPECT_EQ(widget["/F"], 4);
  const Json appearance = written_->Follow(widget["/AP"]["/N"]);
  EXPECT_EQ(appearance["/Subtype"], "/Form");
  EXPECT_THAT(Report(), HasSubstr("hidden annotations into empty ones"));
}

TEST_F(AnnotationsTest, StayEmptyOnLayersThatAreNotSeen) {
  for (const Level level : {Level::k1b, Level::k2b}) {
    RawPdf file = OnePage("/Annots[4 0 R]", "/OCProperties<</OCGs[6 0 R]/D<</OFF[6 0 R]>>>>");
    file.Object(4, "<</Type/Annot/Subtype/Stamp/Rect[0 0 9 9]/OC 6 0 R/AP<</N 5 0 R>>>>");
    file.Stream(5, kForm, "0 g");
    file.Object(6, "<</Type/OCG/Name(x)>>");
    const QpdfDocument written = Run(file, level, &MendAnnotations);
    const Json stamp = written.Follow(written.Follow(written.Page(1))["/Annots"][0]);
    const Json box = written.Follow(stamp["/AP"]["/N"]);
    EXPECT_EQ(box.contains("/Resources"), level == Level::k1b);
  }
}

TEST_F(AnnotationsTest, HaveTheirNormalAppearanceOnly) {
  const Json widget = Mended("/Subtype/Widget/FT/Tx/AP<</N 5 0 R/D 6 0 R/R 6 0 R>>");
  EXPECT_EQ(widget["/AP"].size(), 1U);
  EXPECT_TRUE(widget["/AP"].contains("/N"));
}

TEST_F(AnnotationsTest, ShowTheAppearanceOfTheirStateWhenTheyAreNoButtons) {
  const Json note = Mended("/Subtype/Text/AS/On/AP<</N<</On 5 0 R/Off 6 0 R>>>>");
  EXPECT_EQ(written_->Follow(note["/AP"]["/N"])["/Subtype"], "/Form");
  EXPECT_FALSE(note.contains("/AS"));
  EXPECT_EQ(Report(), "");
}

TEST_F(AnnotationsTest, HaveNoStateWhereThatIsNoNameOfAnAppearance) {
  const std::string lost = "left out: what viewers draw for annotations without an appearance\n";
  for (const char* state : {"(On)", "/Off", "/Odd", "/None"}) {
    report_ = {};
    Mended("/Subtype/Stamp/AS" + std::string(state) + "/AP<</N<</On 5 0 R/Off 3 0 R/Odd<<>>>>>>");
    EXPECT_EQ(Report(), lost) << state;
  }
  report_ = {};
  Mended("/Subtype/Stamp/AS/On/AP<</N<</On 5 0 R/Off 3 0 R/Odd<<>>>>>>");
  EXPECT_EQ(Report(), "");
}

TEST_F(AnnotationsTest, HaveAppearancesByStateWhenTheyAreButtons) {
  const Json button = Mended("/Subtype/Widget/FT/Btn/AP<</N 5 0 R>>");
  EXPECT_EQ(button["/AS"], "/Off");
  EXPECT_TRUE(button["/AP"]["/N"].contains("/Off"));
  const Json box = Mended("/Subtype/Widget/FT/Btn/AS/Yes/AP<</N<</Yes 5 0 R>>>>");
  EXPECT_EQ(box["/AS"], "/Yes");
}

TEST_F(AnnotationsTest, GetAnEmptyAppearance) {
  const Json widget = Mended("/Subtype/Widget/FT/Tx");
  EXPECT_EQ(written_->Follow(widget["/AP"]["/N"])["/Subtype"], "/Form");
  EXPECT_EQ(Report(), "");
  Mended("/Subtype/Stamp");
  EXPECT_THAT(Report(),
              HasSubstr("left out: what viewers draw for annotations without an appearance"));
}

TEST_F(AnnotationsTest, AreDrawnWhereTheySayHowTheyLook) {
  const std::string quads = "/QuadPoints[0 9 9 9 0 0 9 0]";
  for (const std::string& entries :
       {std::string("/Subtype/Square/IC[1 0 0]"), std::string("/Subtype/Circle/C[0 0 0 1]"),
        std::string("/Subtype/Line/L[0 0 9 9]"), std::string("/Subtype/Ink/InkList[[0 0 9 9]]"),
        std::string("/Subtype/Polygon/Vertices[0 0 9 9 9 0]"),
        std::string("/Subtype/PolyLine/Vertices[0 0 9 9]"), "/Subtype/Highlight" + quads,
        "/Subtype/Underline" + quads, "/Subtype/Squiggly" + quads, "/Subtype/StrikeOut" + quads,
        std::string("/Subtype/Text")}) {
    const Json form = AppearanceOf(Mended(entries));
    EXPECT_TRUE(form["/Resources"].contains("/ExtGState")) << entries;
  }
  EXPECT_THAT(Report(), HasSubstr("annotations without an appearance, which are drawn (11)"));
}

TEST_F(AnnotationsTest, LookThroughHighlightsOnly) {
  const std::string quads = "/QuadPoints[0 9 9 9 0 0 9 0]/CA .5";
  const Json highlight = AppearanceOf(Mended("/Subtype/Highlight" + quads));
  EXPECT_EQ(highlight["/Resources"]["/ExtGState"]["/G"]["/BM"], "/Multiply");
  EXPECT_EQ(highlight["/Resources"]["/ExtGState"]["/G"]["/ca"], 0.5);
  const Json line = AppearanceOf(Mended("/Subtype/Underline" + quads));
  EXPECT_FALSE(line["/Resources"]["/ExtGState"]["/G"].contains("/BM"));
  EXPECT_TRUE(AppearanceOf(Mended("/Subtype/Underline" + quads, Level::k1b))["/Resources"].empty());
}

TEST_F(AnnotationsTest, AreEmptyWhereNothingOfThemIsSeen) {
  for (const char* entries :
       {"/Subtype/Square/BS<</W 0>>", "/Subtype/Square/C[]", "/Subtype/Line/L[0 0 9 9]/C[]",
        "/Subtype/Underline/QuadPoints[0 9 9 9 0 0 9 0]/C[]", "/Subtype/Line/L[1]",
        "/Subtype/Ink/InkList[[1]]", "/Subtype/Underline"}) {
    EXPECT_TRUE(AppearanceOf(Mended(entries))["/Resources"].empty()) << entries;
  }
}

TEST_F(AnnotationsTest, AreDrawnWithAsManyNumbersAsThereMayBe) {
  std::string quads;
  for (int i = 0; i < 100; ++i) {
    quads += "0 9 9999 9 0 0 9999 0 ";
  }
  RawPdf file = OnePage("");
  file.Object(4, "<</Subtype/Squiggly/Rect[0 0 9999 9]/QuadPoints[" + quads + "]>>");
  Run(file, Level::k2b, [](Conversion& conversion) {
    pdf::Arena arena;
    const pdf::Object annotation = conversion.document.Load({4, 0}, arena);
    std::size_t left = 200'000;
    const auto drawn = DrawnAppearance(annotation, conversion.document, true, left);
    ASSERT_TRUE(drawn);
    EXPECT_LT(std::count(drawn->content.begin(), drawn->content.end(), 'l'), 41'000);
    EXPECT_LT(left, 150'000U);
    left = 1;
    EXPECT_TRUE(DrawnAppearance(annotation, conversion.document, true, left));
    EXPECT_FALSE(DrawnAppearance(annotation, conversion.document, true, left));
  });
}

TEST_F(AnnotationsTest, BecomeStampsWhereTheirTypeIsNotAllowed) {
  EXPECT_EQ(Mended("/Subtype/Movie/AP<</N 5 0 R>>")["/Subtype"], "/Stamp");
  EXPECT_EQ(Mended("/Subtype/FileAttachment/AP<</N 5 0 R>>")["/Subtype"], "/FileAttachment");
  EXPECT_EQ(Mended("/Subtype/FileAttachment/AP<</N 5 0 R>>", Level::k1b)["/Subtype"], "/Stamp");
}

TEST_F(AnnotationsTest, GoWhereTheyShowNothingThatIsAllowed) {
  EXPECT_TRUE(Mended("/Subtype/Movie").is_null());
  EXPECT_THAT(Report(), HasSubstr("left out: annotations of types that are not allowed"));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
