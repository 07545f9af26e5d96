// Pages that pictures are painted onto as a whole.
#include <cmath>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/content/Painted.h"
#include "pdf/write/DocumentText.h"
#include "support/Expected.h"
#include "support/RawPdf.h"
#include "support/TestImages.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;
using testing::ObjectsText;
using testing::RawPdf;
using testing::TestPng;

std::string Picture(std::uint32_t width, char gray) {
  TestPng png;
  png.width = width;
  png.height = 1;
  png.color_type = 0;
  png.rows = std::string(1, '\0') + std::string(width, gray);
  return png.Bytes();
}

// Pages whose contents are sound, open, cut, damaged, in several streams and not there.
std::string Pages() {
  std::string long_content;
  for (int i = 0; i < 40; ++i) {
    long_content += "0 0 " + std::to_string(i) + " 9 re f ";
  }
  return RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R>>
2 <</Type/Pages/Kids[3 0 R 4 0 R 5 0 R 6 0 R 7 0 R 8 0 R 9 0 R 10 0 R 11 0 R 12 0 R]/Count 10/MediaBox[0 0 90 80]
 /Resources<</XObject<</TxI0 40 0 R/Own 40 0 R>>>>>>
3 <</Type/Page/Parent 2 0 R/Contents 20 0 R>>
4 <</Type/Page/Parent 2 0 R/Contents[20 0 R 21 0 R]/Rotate 90/CropBox[10 20 60 70]>>
5 <</Type/Page/Parent 2 0 R/Contents 22 0 R/UserUnit 2/Resources<</ColorSpace<</DefaultGray 41 0 R/DefaultRGB 42 0 R/DefaultCMYK 42 0 R>>>>>>
6 <</Type/Page/Parent 2 0 R/Contents[23 0 R 24 0 R]/Resources<<>>>>
7 <</Type/Page/Parent 2 0 R/Contents 25 0 R/Resources 43 0 R>>
8 <</Type/Page/Parent 2 0 R/Contents[26 0 R 21 0 R 27 0 R]/Resources 43 0 R/Rotate 180>>
9 <</Type/Page/Parent 2 0 R/Resources null>>
10 <</Type/Page/Parent 2 0 R/Contents[99 0 R 28 0 R]/Rotate 270>>
11 <</Type/Page/Parent 2 0 R/Contents 25 0 R/Resources 43 0 R>>
12 <</Type/Page/Parent 2 0 R/Contents[23 0 R 29 0 R]>>
20 <<>> stream q 1 0 0 1 2 3 cm
21 <<>> stream Q Q /Own Do Q
22 <<>> stream Q BT /A BMC 0 0 m
23 <<>> stream q (cut
24 <<>> stream string) Tj Q Q
25 <<>> stream 0 0 cm q /Own Do
26 <</Filter/ASCIIHexDecode>> stream 71 20 5
27 <</Filter/NoSuchDecode>> stream Q
28 (no stream)
29 <<>> stream end) Tj 1 w w
40 <</Type/XObject/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8>> stream x
41 [/CalGray<</WhitePoint[1 1 1]>>]
42 [/CalRGB<</WhitePoint[1 1 1]>>]
43 <</XObject<</Own 40 0 R/TxI0 40 0 R/TxI1 40 0 R/Tx0.I0 40 0 R>>/Own 5/ProcSet[/PDF]/ExtGState<<>>>>
)")
      .Table();
}

TEST(PaintedTexts, OfPicturesOverThePage) {
  TARNIX_NEED_PROGRAM("qpdf");
  Painted painted(Pages());
  painted.Paint([](Canvas& canvas) {
    const TPdfRectangle rectangle{1, 2, 11.5, 22.25};
    EXPECT_EQ(canvas.Image(Picture(1, 'a'), rectangle), 1);
  });
  EXPECT_TRUE(IsAsExpected("paint/over.txt", ObjectsText(painted.path())));
}

TEST(PaintedTexts, OfPicturesUnderThePage) {
  TARNIX_NEED_PROGRAM("qpdf");
  Painted painted(Pages());
  painted.Paint([](Canvas& canvas) {
    const TPdfRectangle rectangle{0, 0, 9, 9};
    EXPECT_EQ(canvas.Image(Picture(1, 'a'), rectangle, true), 1);
    EXPECT_EQ(canvas.Image(Picture(2, 'b'), rectangle, true), 1);
  });
  EXPECT_TRUE(IsAsExpected("paint/under.txt", ObjectsText(painted.path())));
}

TEST(PaintedTexts, OfPagesPaintedOnBothSidesAndTwice) {
  TARNIX_NEED_PROGRAM("qpdf");
  Painted painted(Pages());
  painted.Paint(
      [](Canvas& canvas) {
        const TPdfRectangle rectangle{0, 0, 9, 9};
        EXPECT_EQ(canvas.Image(Picture(1, 'a'), rectangle, true), 1);
        EXPECT_EQ(canvas.Image(Picture(2, 'b'), rectangle), 1);
        EXPECT_EQ(canvas.Image(Picture(1, 'a'), {-3, 4, 5, -6}), 1);
      },
      nullptr, {4, 2, 8, 4});
  EXPECT_TRUE(IsAsExpected("paint/both.txt", ObjectsText(painted.path())));
  EXPECT_TRUE(IsAsExpected("paint/both_as_written.txt",
                           testing::DocumentText(testing::ReadBytes(painted.path()))));
}

// What a page's content has after these calls of the contract.
std::string OperatorsOf(const std::function<void(TPdfDocument*, TPdfContentGenerator*)>& calls,
                        const std::string& page_entries = "/MediaBox[0 0 90 80]") {
  Painted painted(RawPdf().Pages(1, page_entries).Table());
  painted.Paint([&](Canvas& canvas) {
    TPdfContent* content = PdfPageGetContent(canvas.page());
    TPdfContentGenerator* painter = PdfNewContentGenerator(content, false);
    calls(canvas.target(), painter);
    EXPECT_EQ(PdfClose(painter), 1);
    PdfClose(content);
  });
  const std::string text = ObjectsText(painted.path());
  const std::size_t start = text.find("/Artifact");
  return start == std::string::npos ? "" : text.substr(start, text.find("EMC", start) + 3 - start);
}

void PaintPicture(TPdfDocument* target, TPdfContentGenerator* painter, double alpha,
                  const TPdfRectangle& rectangle = {1, 2, 4, 8}) {
  MemoryFile bytes{Picture(3, 'c')};
  const TPdfStream stream = bytes.Descriptor();
  TPdfImage* image = PdfDocumentCreateImage(target, &stream);
  EXPECT_EQ(PdfImageGetWidth(image), 3);
  EXPECT_EQ(PdfImageGetHeight(image), 1);
  EXPECT_EQ(PdfContentGeneratorPaintAlphaImage(painter, image, &rectangle, alpha), 1);
  PdfClose(image);
}

TEST(PaintedTexts, OfGenerators) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string front = "/Artifact<</Type/Pagination>>BDC q ";
  EXPECT_EQ(OperatorsOf([](auto* target, auto* painter) { PaintPicture(target, painter, 1); }),
            front + "q 3 0 0 6 1 2 cm/TxI0 Do Q\nQ EMC");
  EXPECT_EQ(
      OperatorsOf([](auto* target, auto* painter) { PaintPicture(target, painter, 0.12345); }),
      front + "q/TxG0 gs 3 0 0 6 1 2 cm/TxI0 Do Q\nQ EMC");
  EXPECT_EQ(OperatorsOf([](auto* target, auto* painter) {
              PdfContentGeneratorSave(painter);
              PdfContentGeneratorSave(painter);
              PaintPicture(target, painter, 0);
              PdfContentGeneratorRestore(painter);
            }),
            front + "q q q/TxG0 gs 3 0 0 6 1 2 cm/TxI0 Do Q\nQ Q Q EMC");
  EXPECT_EQ(OperatorsOf([](auto* target, auto* painter) {
              TPdfTransformation* turn = PdfNewTransformationIdentity();
              EXPECT_EQ(PdfContentGeneratorTransform(painter, turn), 1);
              PdfTransformationTranslate(turn, 10, 20);
              PdfTransformationRotate(turn, 30);
              EXPECT_EQ(PdfContentGeneratorTransform(painter, turn), 1);
              PdfClose(turn);
              PaintPicture(target, painter, 1, {4, 8, 1, 2});
            }),
            front + ".866025 .5 -.5 .866025 10 20 cm\nq -3 0 0 -6 4 8 cm/TxI0 Do Q\nQ EMC");
  // As the page is seen: turned, cropped and in units of its own.
  EXPECT_EQ(OperatorsOf([](auto* target, auto* painter) { PaintPicture(target, painter, 1); },
                        "/MediaBox[0 0 90 80]/CropBox[10 20 60 70]/Rotate 90/UserUnit 2"),
            front + "0 .5 -.5 0 60 20 cm\nq 3 0 0 6 1 2 cm/TxI0 Do Q\nQ EMC");
  // Nothing painted, nothing there.
  EXPECT_EQ(OperatorsOf([](auto*, auto* painter) { PdfContentGeneratorSave(painter); }), "");
}

TEST(PaintedTexts, OfCallsThatAreRefused) {
  TARNIX_NEED_PROGRAM("qpdf");
  OperatorsOf([](auto* target, auto* painter) {
    EXPECT_EQ(PdfContentGeneratorRestore(painter), 0);
    MemoryFile bytes{Picture(1, 'c')};
    const TPdfStream stream = bytes.Descriptor();
    TPdfImage* image = PdfDocumentCreateImage(target, &stream);
    const auto paint = [&](const TPdfRectangle& rectangle, double alpha) {
      return PdfContentGeneratorPaintAlphaImage(painter, image, &rectangle, alpha);
    };
    EXPECT_EQ(paint({0, 0, 0, 1}, 1), 0);
    EXPECT_EQ(paint({0, 0, 1, 0}, 1), 0);
    EXPECT_EQ(paint({0, 0, 1, 1}, -0.01), 0);
    EXPECT_EQ(paint({0, 0, 1, 1}, 1.01), 0);
    EXPECT_EQ(paint({0, 0, std::nan(""), 1}, 1), 0);
    EXPECT_EQ(paint({0, 0, 1, 1}, 0), 1);
    EXPECT_EQ(paint({0, 0, 1, 1}, 1), 1);
    PdfClose(image);
    TPdfTransformation* turn = PdfNewTransformationIdentity();
    EXPECT_EQ(PdfTransformationTranslate(turn, std::nan(""), 0), 0);
    EXPECT_EQ(PdfTransformationTranslate(turn, 0, std::nan("")), 0);
    EXPECT_EQ(PdfTransformationRotate(turn, std::nan("")), 0);
    EXPECT_EQ(PdfTransformationTranslate(turn, 1e308, 0), 1);
    EXPECT_EQ(PdfTransformationTranslate(turn, 1e308, 0), 1);
    EXPECT_EQ(PdfContentGeneratorTransform(painter, turn), 0);
    PdfClose(turn);
  });
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
