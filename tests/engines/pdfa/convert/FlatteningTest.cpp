#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/transparency/Flattening.h"
#include "engines/pdfa/convert/transparency/TransparentAreas.h"
#include "support/PageViews.h"
#include "support/Readers.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::QpdfDocument;
using testing::RawPdf;
using testing::RunProgram;
using ::testing::SizeIs;

using Json = QpdfDocument::Json;

constexpr const char* kResources =
    "/Contents 4 0 R/Resources<</ExtGState<</H<</ca .5>>/N<</ca 1>>>>/XObject<</I 5 0 R/F 7 0 "
    "R>>>>";

class FlatteningTest : public ConversionTest {
 protected:
  static RawPdf WithContent(const std::string& content, const std::string& page = "") {
    RawPdf file = OnePage(kResources + page);
    file.Stream(4, "", content);
    const std::string image =
        "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8";
    file.Stream(5, image + "/SMask 6 0 R", "x");
    file.Stream(6, image, "x");
    file.Stream(7, "/Subtype/Form/BBox[0 0 9 9]/Group<</S/Transparency>>", "0 0 9 9 re f");
    return file;
  }

  TransparentPage Find(const RawPdf& file) {
    TransparentPage found;
    Run(file, Level::k1b, [&](Conversion& conversion) {
      found = TransparentAreas(conversion.document, conversion.pages).Find(0);
    });
    return found;
  }

  QpdfDocument Flattened(const RawPdf& file, Level level = Level::k1b) {
    return Run(file, level, [this](Conversion& conversion) {
      conversion.pictured_annotations.insert(8);
      FlattenTransparency(conversion, platform::WidePath(Path("in.pdf")), "");
      WriteEditedContents(conversion);
    });
  }
};

TEST_F(FlatteningTest, FindsWhatIsHalfTransparent) {
  EXPECT_THAT(Find(WithContent("0 0 9 9 re f /N gs 0 0 9 9 re f")).areas, IsEmpty());
  const TransparentPage found = Find(WithContent("q /H gs 10 20 30 10 re f Q 0 0 9 9 re f"));
  ASSERT_THAT(found.areas, SizeIs(1));
  EXPECT_EQ(found.areas[0], (pdf::Box{10, 20, 40, 30}));
}

TEST_F(FlatteningTest, FindsGroupsThatArePaintedHalfTransparent) {
  EXPECT_THAT(Find(WithContent("/F Do")).areas, IsEmpty());
  EXPECT_THAT(Find(WithContent("/H gs /F Do")).areas, SizeIs(1));
}

TEST_F(FlatteningTest, LeavesMaskedImagesOnWhite) {
  EXPECT_THAT(Find(WithContent("q 9 0 0 9 50 50 cm /I Do Q")).areas, IsEmpty());
  EXPECT_THAT(Find(WithContent("1 g 0 0 99 99 re f q 9 0 0 9 50 50 cm /I Do Q")).areas, IsEmpty());
  EXPECT_THAT(Find(WithContent("0 0 99 99 re f q 9 0 0 9 50 50 cm /I Do Q")).areas, SizeIs(1));
}

TEST_F(FlatteningTest, JoinsWhatOverlaps) {
  const std::string content = "/H gs 0 0 20 20 re f 50 0 20 20 re f 10 10 45 5 re f 90 90 5 5 re f";
  EXPECT_THAT(Find(WithContent(content)).areas, SizeIs(2));
  const TransparentPage grown =
      Find(WithContent("/H gs 59 20 11 10 re f 50 0 10 10 re f 52 0 6 40 re f"));
  ASSERT_THAT(grown.areas, SizeIs(1)) << "what two have become overlaps the first";
  EXPECT_EQ(grown.areas[0], (pdf::Box{50, 0, 70, 40}));
}

TEST_F(FlatteningTest, LeavesPagesThatCannotBeDrawn) {
  Run(WithContent("/H gs 10 20 30 10 re f"), Level::k1b, [this](Conversion& conversion) {
    FlattenTransparency(conversion, platform::WidePath(Path("missing.pdf")), "");
    EXPECT_TRUE(conversion.page_edits.empty());
  });
  EXPECT_EQ(Report(), "left out: transparency of pages that cannot be drawn\n");
}

TEST_F(FlatteningTest, PaintsAPictureOverIt) {
  const QpdfDocument written =
      Flattened(WithContent("0 1 0 rg 0 0 200 100 re f q 1 0 0 rg /H gs 72 20 72 36 re f"));
  const Json page = written.Follow(written.Page(1));
  const Json objects = page["/Resources"]["/XObject"];
  EXPECT_EQ(objects.size(), 3U);
  const auto found = std::find_if(objects.items().begin(), objects.items().end(),
                                  [](const auto& it) { return it.key().starts_with("/Flat"); });
  ASSERT_TRUE(found != objects.items().end());
  const Json picture = written.Follow(found.value());
  EXPECT_NEAR(picture["/Width"].get<double>(), 205, 3);  // an inch and the margin
  EXPECT_NEAR(picture["/Height"].get<double>(), 105, 3);
  EXPECT_THAT(RunProgram({"qpdf", "--qdf", Path("out.pdf"), "-"}).output,
              HasSubstr("Q\nQ\n/Artifact BMC\nq "));
  EXPECT_THAT(Report(), HasSubstr("into pictures"));
}

bool IsPlain(const testing::Picture& picture, int x, int y) {
  for (int i = 0; i < 25; ++i) {
    if (picture.At(x - 2 + i % 5, y - 2 + i / 5) != picture.At(x, y)) {
      return false;
    }
  }
  return true;
}

// How many pixels are of another color than before, of those that are not near an edge.
std::size_t Changed(const testing::Picture& before, const testing::Picture& after) {
  constexpr int kMuch = 6;
  std::size_t changed = 0;
  for (int y = 2; y < before.height - 2; ++y) {
    for (int x = 2; x < before.width - 2; ++x) {
      const testing::Pixel a = before.At(x, y);
      const testing::Pixel b = after.At(x, y);
      const bool differs = std::abs(a[0] - b[0]) > kMuch || std::abs(a[1] - b[1]) > kMuch ||
                           std::abs(a[2] - b[2]) > kMuch;
      changed += differs && IsPlain(before, x, y) ? 1 : 0;
    }
  }
  return changed;
}

// However the page is turned, cropped or measured: stripes through which a half-transparent area and an
// annotation are seen.
TEST_F(FlatteningTest, LooksAsItDidBefore) {
  std::string content;
  for (int i = 0; i < 10; ++i) {
    content += (i % 2 == 0 ? "0 0 1 rg 0 " : "0 1 0 rg 0 ") + std::to_string(10 * i) +
               " 200 10 re f 1 0 0 rg " + std::to_string(20 * i) + " 0 5 100 re f ";
  }
  content += "q 1 0 0 rg /H gs 60 25 52 36 re f Q";
  for (const char* page : {"", "/Rotate 90/CropBox[20 10 190 80]", "/Rotate 180/UserUnit 2",
                           "/Rotate 270/CropBox[80 30 190 80]"}) {
    RawPdf file = WithContent(content, "/Annots[8 0 R]" + std::string(page));
    file.Object(8, "<</Type/Annot/Subtype/Stamp/F 4/Rect[130 40 170 75]/AP<</N 9 0 R>>>>");
    file.Stream(9, "/Subtype/Form/BBox[0 0 9 9]/Resources<</ExtGState<</H<</ca .5>>>>>>",
                "1 1 0 rg /H gs 0 0 9 9 re f");
    Flattened(file);
    EXPECT_THAT(Report(), HasSubstr("transparent annotations into pictures")) << page;
    EXPECT_THAT(Report(), HasSubstr("transparent parts of pages into pictures")) << page;
    const std::vector<testing::Picture> before = testing::Pictures(Path("in.pdf"), 72);
    const std::vector<testing::Picture> after = testing::Pictures(Path("out.pdf"), 72);
    ASSERT_EQ(before.size(), 1U);
    ASSERT_EQ(after.size(), 1U);
    ASSERT_EQ(after[0].width, before[0].width) << page;
    ASSERT_EQ(after[0].height, before[0].height) << page;
    EXPECT_EQ(Changed(before[0], after[0]), 0U) << page;
  }
}

TEST_F(FlatteningTest, KeepsTheResourcesThatAPageInherits) {
  RawPdf file = WithContent("/H gs 72 20 72 36 re f");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1/Resources<</ExtGState<</H<</ca .5>>>>>>>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Contents 4 0 R>>");
  const Json resources = Flattened(file).Follow(Flattened(file).Page(1))["/Resources"];
  EXPECT_TRUE(resources["/ExtGState"].contains("/H"));
  EXPECT_EQ(resources["/XObject"].size(), 1U);
}

TEST_F(FlatteningTest, MakesPicturesOfAnnotations) {
  RawPdf file = WithContent(" ", "/Annots[8 0 R]");
  file.Object(8, "<</Type/Annot/Subtype/Highlight/Rect[10 10 50 20]/AP<</N 9 0 R>>>>");
  file.Stream(9, "/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
  const QpdfDocument written = Flattened(file);
  const Json annotation = written.Follow(written.Follow(written.Page(1))["/Annots"][0]);
  const Json form = written.Follow(annotation["/AP"]["/N"]);
  EXPECT_EQ(form["/BBox"], Json::array({10, 10, 50, 20}));
  EXPECT_TRUE(form["/Resources"]["/XObject"].contains("/Flat"));
}

TEST_F(FlatteningTest, StandsInTheWayWhereAPageIsTooMuch) {
  RawPdf file =
      OnePage("/Contents 4 0 R/Resources<</ExtGState<</H<</ca .5>>>>/XObject<</L 5 0 R>>>>");
  file.Stream(4, "", "/L Do /H gs 10 20 30 10 re f 90 20 30 10 re f");
  file.Stream(5, "/Subtype/Form/BBox[0 0 9 9]", "/L Do /L Do");
  Flattened(file);
  EXPECT_THAT(Report(), HasSubstr("not mended: a page with transparency is too much to be drawn"));
}

TEST_F(FlatteningTest, CoversAPageThatStandsTwiceOnce) {
  RawPdf file = WithContent("/H gs 0 0 9 9 re f");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 3 0 R]/Count 2>>");
  const QpdfDocument written = Flattened(file);
  EXPECT_EQ(written.Follow(written.Page(1))["/Resources"]["/XObject"].size(), 3U);
}

TEST_F(FlatteningTest, MakesNoMorePicturesOfAnnotationsThanItMay) {
  std::string annotations;
  for (std::size_t i = 0; i < limits::kMaxPicturedAnnotations + 5; ++i) {
    annotations += " " + std::to_string(10 + i) + " 0 R";
  }
  RawPdf file = WithContent(" ", "/Annots[" + annotations + "]");
  for (std::size_t i = 0; i < limits::kMaxPicturedAnnotations + 5; ++i) {
    file.Object(static_cast<int>(10 + i),
                "<</Type/Annot/Subtype/Square/Rect[10 10 15 15]/AP<</N 9 0 R>>>>");
  }
  file.Stream(9, "/Subtype/Form/BBox[0 0 9 9]/Resources<</ExtGState<</H<</ca .5>>>>>>",
              "/H gs 0 0 9 9 re f");
  Flattened(file);
  EXPECT_EQ(Report(),
            "changed: transparent annotations into pictures (" +
                std::to_string(limits::kMaxPicturedAnnotations) +
                ")\nleft out: transparency of annotations that are too many for one page (5)\n");
}

TEST_F(FlatteningTest, LeavesOtherPartsAlone) {
  const QpdfDocument written = Flattened(WithContent("/H gs 0 0 9 9 re f"), Level::k2b);
  EXPECT_EQ(written.Follow(written.Page(1))["/Resources"]["/XObject"].size(), 2U);
  EXPECT_EQ(Report(), "");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
