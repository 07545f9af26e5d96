// Whether what is painted stands where it was meant to be on the page as a person sees it.
#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/content/Painted.h"
#include "support/TestImages.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using TarnixTools::testing::QpdfComplaints;
using TarnixTools::testing::TestPdf;
using TarnixTools::testing::TestPng;

std::string BlackPng() {
  TestPng png;
  png.width = 1;
  png.height = 1;
  png.color_type = 0;
  png.rows = std::string(2, '\0');
  return png.Bytes();
}

void ExpectInk(const Ink& ink, const TPdfRectangle& wanted, double unit) {
  EXPECT_TRUE(ink.is_there);
  EXPECT_NEAR(ink.left * unit, wanted.left, 0.5);
  EXPECT_NEAR(ink.bottom * unit, wanted.bottom, 0.5);
  EXPECT_NEAR(ink.right * unit, wanted.right, 0.5);
  EXPECT_NEAR(ink.top * unit, wanted.top, 0.5);
}

struct Seen {
  const char* name;
  const char* boxes;
  double width, height;  // of the visible part, in units
};

class Placement : public ::testing::TestWithParam<std::tuple<Seen, int, int>> {};

// pdftoppm takes a unit for a point, whatever /UserUnit says.
TEST_P(Placement, IsOnThePageAsItIsSeen) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  const auto& [seen, rotation, turn] = GetParam();
  for (const double unit : {1.0, 2.0}) {
    Painted painted(TestPdf()
                        .Page("")
                        .NoMediaBox()
                        .PageEntry(seen.boxes)
                        .Rotate(rotation)
                        .PageEntry("/UserUnit " + std::to_string(unit))
                        .Bytes());
    // Of an angle that is no multiple of 90, whole quarters count.
    const bool is_on_side = (rotation / 90 * 90 + turn) % 180 != 0;
    const double width = (is_on_side ? seen.height : seen.width) * unit;
    const double height = (is_on_side ? seen.width : seen.height) * unit;
    const TPdfRectangle wanted = {width - 50, 20, width - 10, 30};
    painted.Paint([&, turned = turn](Canvas& page) {
      EXPECT_EQ(PdfPageRotate(page.page(), turned), 1);
      TPdfSize size;
      EXPECT_EQ(PdfPageGetSize(page.page(), &size), 1);
      EXPECT_NEAR(size.width, width, 0.01);
      EXPECT_NEAR(size.height, height, 0.01);
      EXPECT_EQ(page.Image(BlackPng(), wanted), 1);
    });
    ExpectInk(DarkInk(painted.path()), wanted, unit);
    EXPECT_EQ(QpdfComplaints(painted.path()), "");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Pages, Placement,
    ::testing::Combine(
        ::testing::Values(
            Seen{"Plain", "/MediaBox[0 0 200 120]", 200, 120},
            Seen{"Offset", "/MediaBox[-30 40 170 160]", 200, 120},
            Seen{"Cropped", "/MediaBox[0 0 300 300]/CropBox[40 60 240 180]", 200, 120},
            Seen{"CropBeyondMedia", "/MediaBox[10 20 210 140]/CropBox[-90 -90 900 900]", 200, 120},
            Seen{"CornersSwapped", "/MediaBox[300 300 0 0]/CropBox[240 180 40 60]", 200, 120}),
        ::testing::Values(0, 90, 180, 270, -90, 450, 45, 100), ::testing::Values(0, 90)),
    [](const auto& test) {
      const int rotation = std::get<1>(test.param);
      return std::string(std::get<0>(test.param).name) + (rotation < 0 ? "Minus" : "") +
             std::to_string(std::abs(rotation)) + "Turned" +
             std::to_string(std::get<2>(test.param));
    });

TEST(PlacementOnPages, FollowsInheritedBoxes) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  Painted painted(TestPdf()
                      .InheritedEntry("/MediaBox[0 0 400 400]/CropBox[100 100 300 250]/Rotate 90")
                      .Page("")
                      .NoMediaBox()
                      .Bytes());
  const TPdfRectangle wanted = {10, 20, 40, 30};
  painted.Paint([&](Canvas& page) { page.Image(BlackPng(), wanted); });
  ExpectInk(DarkInk(painted.path()), wanted, 1);
}

TEST(PlacementOnPages, TurnsAboutAPoint) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  Painted painted(TestPdf().Page("").Size(200, 200).Bytes());
  painted.Paint([&](Canvas& page) {
    MemoryFile file{BlackPng()};
    const TPdfStream stream = file.Descriptor();
    TPdfImage* image = PdfDocumentCreateImage(page.target(), &stream);
    TPdfContent* content = PdfPageGetContent(page.page());
    TPdfContentGenerator* generator = PdfNewContentGenerator(content, false);
    TPdfTransformation* turn = PdfNewTransformationIdentity();
    PdfTransformationTranslate(turn, 100, 100);
    EXPECT_EQ(PdfTransformationRotate(turn, 90), 1);
    PdfTransformationTranslate(turn, -100, -100);
    PdfContentGeneratorSave(generator);
    EXPECT_EQ(PdfContentGeneratorTransform(generator, turn), 1);
    const TPdfRectangle rectangle = {110, 100, 150, 104};
    EXPECT_EQ(PdfContentGeneratorPaintImage(generator, image, &rectangle), 1);
    PdfContentGeneratorRestore(generator);
    PdfClose(turn);
    PdfClose(generator);
    PdfClose(content);
    PdfClose(image);
  });
  ExpectInk(DarkInk(painted.path()), {96, 110, 100, 150}, 1);
}

// The picture of the file is black at its left and white at its right half.
TEST(PlacementOnPages, PutsPicturesUpright) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  Painted painted(TestPdf().Page("").Size(100, 100).Bytes());
  painted.Paint([&](Canvas& page) {
    MemoryFile file{TarnixTools::testing::TestJpeg(1, TarnixTools::testing::ExifJpegSegment(6))};
    const TPdfStream stream = file.Descriptor();
    TPdfImage* image = PdfDocumentCreateImage(page.target(), &stream);
    EXPECT_EQ(PdfImageGetWidth(image), 8);
    EXPECT_EQ(PdfImageGetHeight(image), 16);
    PdfClose(image);
  });
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
