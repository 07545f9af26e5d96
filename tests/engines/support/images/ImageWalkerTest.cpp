#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/images/ImageWalker.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RawPdf;

// What a walk over the first page stops at: the number of the image, its matrix, and whether text
// clips it.
std::vector<std::string> Walk(RawPdf file, bool with_forms = true) {
  const std::string bytes = file.Table();
  const auto document = testing::OpenBytes(bytes);
  const pdf::PageTree pages(*document);
  const pdf::VisibleLayers layers(*document);
  ImageWalker walker(*document, pages, layers, 0, with_forms);
  std::vector<std::string> found;
  while (const DrawnImage* drawn = walker.Next()) {
    const pdf::Matrix& m = drawn->matrix;
    std::string text = std::to_string(drawn->image.number) + ":";
    for (const double value : {m.a, m.b, m.c, m.d, m.e, m.f}) {
      text += " " + std::to_string(static_cast<int>(value));
    }
    found.push_back(text + (drawn->is_clipped_by_text ? " clipped" : ""));
  }
  EXPECT_EQ(walker.Next(), nullptr);
  return found;
}

// A page of 200 by 100 with this content. Object 10 is an image, 11 a form, 12 a pattern that all
// draw the image.
RawPdf Page(const std::string& content, const std::string& entries = "",
            const std::string& form = "/I Do") {
  const std::string resources = "/Resources<</XObject<</I 10 0 R/F 11 0 R>>/Pattern<</P 12 0 R>>>>";
  RawPdf file;
  file.Pages(1, "/MediaBox[0 0 200 100]/Contents 9 0 R" + resources + entries)
      .Stream(9, "", content)
      .Stream(10, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray", "x")
      .Stream(11, "/Subtype/Form/BBox[0 0 9 9]/Matrix[2 0 0 2 0 0]" + resources, form)
      .Stream(12, "/PatternType 1/PaintType 1/BBox[0 0 9 9]/XStep 9/YStep 9" + resources, "/I Do");
  return file;
}

TEST(ImageWalker, StopsAtEveryImage) {
  EXPECT_THAT(Walk(Page("q 50 0 0 40 7 8 cm /I Do Q 3 0 0 4 0 0 cm /I Do")),
              ElementsAre("10: 50 0 0 40 7 8", "10: 3 0 0 4 0 0"));
  EXPECT_THAT(Walk(Page("0 0 9 9 re f /Missing Do")), IsEmpty());
}

TEST(ImageWalker, PlacesImagesOnThePageAsItIsSeen) {
  EXPECT_THAT(Walk(Page("9 0 0 9 30 20 cm /I Do", "/CropBox[30 20 900 900]/UserUnit 2")),
              ElementsAre("10: 18 0 0 18 0 0"));
  EXPECT_THAT(Walk(Page("9 0 0 9 30 20 cm /I Do", "/Rotate 90")),
              ElementsAre("10: 0 -9 9 0 20 170"));
}

TEST(ImageWalker, GoesIntoFormsAndPatternsAndAnnotations) {
  const std::string content = "/F Do /Pattern cs /P scn 0 0 50 50 re f";
  const std::string annotation = "/Annots[<</Subtype/Stamp/Rect[0 0 18 18]/AP<</N 11 0 R>>>>]";
  EXPECT_THAT(Walk(Page(content, annotation)),
              ElementsAre("10: 2 0 0 2 0 0", "10: 1 0 0 1 0 0", "10: 2 0 0 2 0 0"));
  EXPECT_THAT(Walk(Page(content, annotation), false), IsEmpty());
}

TEST(ImageWalker, DoesNotGoInCircles) {
  EXPECT_THAT(Walk(Page("/F Do", "", "/F Do /I Do")), ElementsAre("10: 2 0 0 2 0 0"));
}

TEST(ImageWalker, FindsInlineImages) {
  RawPdf file = Page("5 0 0 5 0 0 cm BI /W 1 /H 1 /BPC 8 /CS /G ID x EI");
  const std::string bytes = file.Table();
  const auto document = testing::OpenBytes(bytes);
  const pdf::PageTree pages(*document);
  const pdf::VisibleLayers layers(*document);
  ImageWalker walker(*document, pages, layers, 0, true);
  const DrawnImage* drawn = walker.Next();
  ASSERT_NE(drawn, nullptr);
  EXPECT_EQ(drawn->image.number, 0U);
  EXPECT_EQ(drawn->image.dictionary.Get("Width").IntegerOr(0), 1);
  EXPECT_TRUE(drawn->image.dictionary.Get("ColorSpace").IsName("DeviceGray"));
  EXPECT_EQ(drawn->image.data.substr(0, 1), "x");
  EXPECT_EQ(walker.Next(), nullptr);
}

TEST(ImageWalker, TellsImagesThatTextClips) {
  EXPECT_THAT(Walk(Page("BT 7 Tr (x) Tj ET /I Do")), ElementsAre("10: 1 0 0 1 0 0 clipped"));
}

TEST(ImageWalker, PassesOverHiddenLayers) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/OCProperties<</OCGs[20 0 R]/D<</OFF[20 0 R]>>>>>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 9 0 R/Resources<</XObject<</I "
              "10 0 R>>/Properties<</L 20 0 R>>>>>>")
      .Stream(9, "", "/OC/L BDC /I Do EMC 2 0 0 2 0 0 cm /I Do")
      .Stream(10, "/Subtype/Image/Width 1/Height 1", "x")
      .Object(20, "<</Type/OCG/Name(L)>>");
  EXPECT_THAT(Walk(file), ElementsAre("10: 2 0 0 2 0 0"));
}

}  // namespace
}  // namespace TarnixTools::engines
