#include <utility>

#include "engines/rasteriser/ErrorCodes.h"
#include "engines/rasteriser/RasteriserFixture.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/images/WrittenImage.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/Surroundings.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines::rasteriser {
namespace {

using platform::WidePath;
using ::testing::ElementsAre;
using testing::JpegImage;
using testing::RawPdf;
using testing::ReadJpeg;
using testing::TestPdf;

constexpr testing::Rgb kRed = {255, 0, 0};
constexpr testing::Rgb kGreen = {0, 255, 0};
constexpr testing::Rgb kBlue = {0, 0, 255};
constexpr testing::Rgb kWhite = {255, 255, 255};

class Rasteriser : public RasteriserFixture {};

TEST_F(Rasteriser, DrawsAPageAtTheResolution) {
  ASSERT_TRUE(Open(Painted("1 0 0 rg 0 0 72 72 re f")));
  EXPECT_EQ(Pdf2ImgGetPageCount(object_), 1);
  EXPECT_EQ(Pdf2ImgSetDPI(object_, 150), 1);
  const JpegImage image = Render(1);
  EXPECT_EQ(image.width, 300);
  EXPECT_EQ(image.height, 150);
  EXPECT_TRUE(image.IsNear(10, 75, kRed));
  EXPECT_TRUE(image.IsNear(290, 75, kWhite));
}

TEST_F(Rasteriser, TellsTheResolutionInTheFile) {
  ASSERT_TRUE(Open(Painted("")));
  Pdf2ImgSetDPI(object_, 149.6F);
  const JpegImage image = Render(1);
  EXPECT_EQ(image.density_unit, 1);
  EXPECT_EQ(image.density_x, 150);
}

TEST_F(Rasteriser, DoesNotSubsampleColorsAtTheBestQuality) {
  ASSERT_TRUE(Open(Painted("1 0 0 rg 0 0 72 72 re f")));
  Pdf2ImgSetImageQuality(object_, 100);
  EXPECT_FALSE(Render(1).is_subsampled);
  ASSERT_TRUE(Open(Path("in.pdf")));
  Pdf2ImgSetImageQuality(object_, 60);
  EXPECT_TRUE(Render(1).is_subsampled);
}

TEST_F(Rasteriser, WritesColoursOrGrayInEitherFormat) {
  const std::string path =
      Painted("1 0 0 rg 0 0 1 1 re f 0 0 1 rg 1 0 1 1 re f", 2, 1).Write(Path("in.pdf"));
  const auto drawn = [&](std::int32_t format, int is_gray) {
    EXPECT_TRUE(Open(path));
    Pdf2ImgSetDPI(object_, 72);
    EXPECT_EQ(Pdf2ImgSetCompression(object_, format), 1);
    EXPECT_EQ(Pdf2ImgSetGray(object_, is_gray), 1);
    Render(1, "page");
    return testing::ReadBytes(Path("page"));
  };
  const auto rows = [](const std::string& png) {
    return WrittenImage(testing::OpenedImage(png).Embed(), png).Rows();
  };
  EXPECT_EQ(rows(drawn(kPdf2ImgPng, 0)), "FF0000 0000FF\n");
  EXPECT_EQ(rows(drawn(kPdf2ImgPng, 1)), "4C 1D\n");
  EXPECT_EQ(testing::DecodeJpeg(drawn(kPdf2ImgJpeg, 1)).components, 1);
  EXPECT_EQ(testing::DecodeJpeg(drawn(kPdf2ImgJpeg, 0)).components, 3);
  EXPECT_EQ(testing::DecodeJpeg(drawn(kPdf2ImgJpeg, 2)).components, 1);
}

TEST_F(Rasteriser, FitsThePageIntoAnImageOfGivenPixels) {
  ASSERT_TRUE(Open(Painted("0 0 1 rg 0 0 144 72 re f")));
  Pdf2ImgSetBitmapDimensions(object_, 200, 300);
  Pdf2ImgSetFitPage(object_, 1);
  const JpegImage image = Render(1);
  EXPECT_EQ(image.width, 200);
  EXPECT_EQ(image.height, 300);
  EXPECT_THAT(image.Ink(), ElementsAre(0, 100, 200, 200));
}

TEST_F(Rasteriser, PutsThePageInTheMiddleWhenItIsNotFitted) {
  ASSERT_TRUE(Open(Painted("0 0 1 rg 0 0 144 72 re f")));
  Pdf2ImgSetDPI(object_, 72);
  Pdf2ImgSetBitmapDimensions(object_, 200, 50);
  const JpegImage image = Render(1);
  EXPECT_EQ(image.height, 50);
  EXPECT_THAT(image.Ink(), ElementsAre(28, 0, 172, 50));
}

TEST_F(Rasteriser, TakesTheSizeOfAPageInPoints) {
  ASSERT_TRUE(Open(Painted("0 0 1 rg 0 0 144 72 re f")));
  Pdf2ImgSetDPI(object_, 36);
  Pdf2ImgSetPageSize(object_, 288, 288);
  Pdf2ImgSetFitPage(object_, 1);
  const JpegImage image = Render(1);
  EXPECT_EQ(image.width, 144);
  EXPECT_EQ(image.height, 144);
  EXPECT_THAT(image.Ink(), ElementsAre(0, 36, 144, 108));
}

TEST_F(Rasteriser, DrawsTurnedPagesAsTheyAreSeen) {
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image = RenderOnly(Painted("1 0 0 rg 0 0 72 72 re f").Rotate(90));
  EXPECT_EQ(image.width, 72);
  EXPECT_EQ(image.height, 144);
  EXPECT_TRUE(image.IsNear(36, 20, kRed));  // what was on the left is at the top
  EXPECT_TRUE(image.IsNear(36, 120, kWhite));
}

TEST_F(Rasteriser, CutsOffWhatTurnsMoreThanWholeQuarters) {
  Pdf2ImgSetDPI(object_, 72);
  EXPECT_EQ(RenderOnly(Painted("").Rotate(100)).width, 72);
  EXPECT_EQ(RenderOnly(Painted("").Rotate(45)).width, 144);
  EXPECT_EQ(RenderOnly(Painted("").PageEntry("/Rotate 90.0")).width, 72);
}

TEST_F(Rasteriser, DrawsTheCropBoxOnly) {
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image = RenderOnly(Painted("1 0 0 rg 0 0 72 72 re f 0 1 0 rg 72 0 72 72 re f")
                                         .PageEntry("/CropBox [62 10 102 50]"));
  EXPECT_EQ(image.width, 40);
  EXPECT_EQ(image.height, 40);
  EXPECT_TRUE(image.IsNear(2, 20, kRed));
  EXPECT_TRUE(image.IsNear(30, 20, kGreen));
}

TEST_F(Rasteriser, TakesTheUserUnitIntoAccount) {
  Pdf2ImgSetDPI(object_, 72);
  EXPECT_EQ(RenderOnly(Painted("").PageEntry("/UserUnit 2")).width, 288);
}

TEST_F(Rasteriser, PutsWhiteBehindWhatIsTransparent) {
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image =
      RenderOnly(Painted("/G gs 1 0 0 rg 0 0 72 72 re f")
                     .PageEntry("/Resources << /ExtGState << /G << /ca 0.5 >> >> >>"));
  EXPECT_TRUE(image.IsNear(36, 36, {255, 128, 128}));
  EXPECT_TRUE(image.IsNear(120, 36, kWhite));
}

constexpr const char* kGreenForm =
    "<< /Type /XObject /Subtype /Form /BBox [0 0 10 10] /Length 21 >>\nstream\n"
    "0 1 0 rg 0 0 9 9 re f\nendstream";

TEST_F(Rasteriser, DrawsAnnotationsThatAreToBePrinted) {
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image =
      RenderOnly(Painted("")
                     .Object("form", kGreenForm)
                     .Annotation("/Subtype /Stamp /F 4 /Rect [0 0 60 60] /AP << /N {{form}} >>")
                     .Annotation("/Subtype /Stamp /F 6 /Rect [80 0 140 60] /AP << /N {{form}} >>"));
  EXPECT_TRUE(image.IsNear(30, 40, kGreen));
  EXPECT_TRUE(image.IsNear(110, 40, kWhite));  // hidden
}

TEST_F(Rasteriser, DrawsFormFields) {
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image = RenderOnly(
      Painted("")
          .Object("form", kGreenForm)
          .CatalogEntry("/AcroForm << /Fields [] >>")
          .Annotation(
              "/Subtype /Widget /FT /Tx /T (a) /F 4 /Rect [0 0 60 60] /AP << /N {{form}} >>"));
  EXPECT_TRUE(image.IsNear(30, 40, kGreen));
}

TEST_F(Rasteriser, DrawsPagesInAnyOrderAndMoreThanOnce) {
  TestPdf document;
  document.Page().Size(72, 72).Content("1 0 0 rg 0 0 72 72 re f");
  document.Page().Size(36, 36).Content("0 0 1 rg 0 0 72 72 re f");
  ASSERT_TRUE(Open(document));
  Pdf2ImgSetDPI(object_, 72);
  for (const auto& [page, name] : {std::pair(2, "a"), std::pair(1, "b"), std::pair(2, "c")}) {
    ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path(name))), 1);
    EXPECT_EQ(Pdf2ImgRenderPage(object_, page), 1);
    EXPECT_EQ(Pdf2ImgCloseImage(object_), 1);
  }
  EXPECT_EQ(Pdf2ImgClose(object_), 1);
  EXPECT_TRUE(ReadJpeg(Path("a")).IsNear(9, 9, kBlue));
  EXPECT_TRUE(ReadJpeg(Path("b")).IsNear(50, 50, kRed));
  EXPECT_EQ(testing::ReadBytes(Path("a")), testing::ReadBytes(Path("c")));
}

TEST_F(Rasteriser, GivesTheSameBytesEveryTime) {
  TestPdf document;
  document.Pages(3);
  document.Write(Path("in.pdf"));
  for (const std::string name : {"a", "b"}) {
    ASSERT_TRUE(Open(Path("in.pdf")));
    Render(2, name);
  }
  EXPECT_EQ(testing::ReadBytes(Path("a")), testing::ReadBytes(Path("b")));
}

TEST_F(Rasteriser, DrawsWhatOnlyTheCoreCanRepair) {
  // Three kids, though the root claims one page, and the pages' parent is wrong.
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Count 1/Kids[3 0 R 4 0 R 5 0 R]>>");
  for (int number = 3; number <= 5; ++number) {
    file.Object(number, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 72 72]/Contents 6 0 R>>");
  }
  file.Stream(6, "", "1 0 0 rg 0 0 72 72 re f");
  testing::WriteBytes(Path("in.pdf"), file.Table());
  ASSERT_TRUE(Open(Path("in.pdf")));
  EXPECT_EQ(Pdf2ImgGetPageCount(object_), 3);
  Pdf2ImgSetDPI(object_, 72);
  EXPECT_TRUE(Render(3).IsNear(36, 36, kRed));
}

TEST_F(Rasteriser, DrawsLargePagesInBandsThatFitTogether) {
  std::string diagonals;
  for (int i = 0; i < 20; ++i) {
    diagonals += std::to_string(i * 20) + " 0 m 0 " + std::to_string(i * 20) + " l S ";
  }
  ASSERT_TRUE(Open(Painted("5 w " + diagonals, 200, 400)));
  Pdf2ImgSetDPI(object_, 576);
  const JpegImage large = Render(1, "large.jpg");
  ASSERT_EQ(large.height, 3200);
  ASSERT_TRUE(Open(Path("in.pdf")));
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage small = Render(1, "small.jpg");
  for (int y = 4; y < 400; y += 3) {
    for (int x = 4; x < 200; x += 7) {
      const int gray = large.At(x * 8 + 4, y * 8 + 4)[0];
      const int expected = small.At(x, y)[0];
      if (expected < 5 || expected > 250) {  // not at an edge
        EXPECT_NEAR(gray, expected, 30) << x << " " << y;
      }
    }
  }
}

TEST_F(Rasteriser, DrawsHugePagesWithBoundedMemory) {
  ASSERT_TRUE(Open(Painted("1 0 0 rg 0 0 14400 14400 re f", 14400, 200)));
  Pdf2ImgSetDPI(object_, 300);
  const JpegImage image = Render(1);
  EXPECT_EQ(image.width, 60000);
  EXPECT_TRUE(image.IsNear(59000, 800, kRed));
}

TEST_F(Rasteriser, DrawsPagesWithoutASizeAsLetters) {
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image = RenderOnly(Painted("", 0, 0));
  EXPECT_EQ(image.width, 612);
  EXPECT_EQ(image.height, 792);
}

TEST_F(Rasteriser, ShowsTheMediaBoxWhereTheCropBoxLiesBesideIt) {
  const std::string path = Path("in.pdf");
  testing::WriteBytes(path, RawPdf()
                                .Pages(2,
                                       "/MediaBox[0 0 72 72]/CropBox[300 300 400 400]"
                                       "/Contents 5 0 R")
                                .Stream(5, "", "1 0 0 rg 0 0 72 72 re f")
                                .Table());
  ASSERT_TRUE(Open(path));
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image = Render(1);
  EXPECT_EQ(image.width, 72);
  EXPECT_TRUE(image.IsNear(30, 30, kRed));
  ASSERT_TRUE(Open(path));
  EXPECT_EQ(Render(2).width, 72);
}

// A gray image with a profile of RGB, as some programs write it.
TEST_F(Rasteriser, DrawsImagesWhoseProfileIsOfOtherColors) {
  TestPdf file = Painted("144 0 0 72 0 0 cm /I Do");
  const std::string profile = testing::TestRgbProfile(2.2, true);
  file.Object("image",
              "<</Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace[/ICCBased "
              "{{profile}}]/Filter/ASCIIHexDecode/Length 3>>\nstream\n80>\nendstream")
      .Object("profile", "<</N 1/Length " + std::to_string(profile.size()) + ">>\nstream\n" +
                             profile + "\nendstream")
      .PageEntry("/Resources<</XObject<</I {{image}}>>>>");
  EXPECT_TRUE(RenderOnly(file).IsNear(36, 36, {128, 128, 128}));
}

// Has the stamp of a page draw {{image}}, which the page's own resources do not name.
void DrawInStamp(TestPdf& file) {
  file.Object("form",
              "<</Subtype/Form/BBox[0 0 1 1]/Resources<</XObject<</I {{image}}>>>>/Length 5>>\n"
              "stream\n/I Do\nendstream")
      .PageEntry("/Annots[<</Subtype/Stamp/F 4/Rect[0 0 144 72]/AP<</N {{form}}>>>>]");
}

TEST_F(Rasteriser, DrawsImagesOfStampsWhoseProfileIsOfOtherColors) {
  TestPdf file = Painted("0 0 m");
  const std::string profile = testing::TestRgbProfile(2.2, true);
  file.Object("image",
              "<</Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace[/ICCBased "
              "{{profile}}]/Filter/ASCIIHexDecode/Length 3>>\nstream\n80>\nendstream")
      .Object("profile", "<</N 1/Length " + std::to_string(profile.size()) + ">>\nstream\n" +
                             profile + "\nendstream");
  DrawInStamp(file);
  EXPECT_TRUE(RenderOnly(file).IsNear(36, 36, {128, 128, 128}));
}

// A picture of 16 by 8 pixels, gray with alpha.
void AddJpeg2000Image(TestPdf& file) {
  const std::string hex = testing::kGrayAlphaJpx;
  std::string jpx;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    jpx += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  file.Object("image",
              "<</Subtype/Image/Width 16/Height 8/BitsPerComponent 8/ColorSpace/DeviceGray"
              "/Filter/JPXDecode/Length " +
                  std::to_string(jpx.size()) + ">>\nstream\n" + jpx + "\nendstream");
}

TEST_F(Rasteriser, DrawsJpeg2000ImagesWithAlpha) {
  TestPdf file = Painted("144 0 0 72 0 0 cm /I Do");
  AddJpeg2000Image(file);
  file.PageEntry("/Resources<</XObject<</I {{image}}>>>>");
  const JpegImage image = RenderOnly(file);
  EXPECT_TRUE(image.IsNear(36, 36, {0, 0, 0}));
  EXPECT_TRUE(image.IsNear(150, 36, {80, 80, 80}));
}

TEST_F(Rasteriser, DrawsJpeg2000ImagesOfStampsWithAlpha) {
  TestPdf file = Painted("0 0 m");
  AddJpeg2000Image(file);
  DrawInStamp(file);
  EXPECT_TRUE(RenderOnly(file).IsNear(36, 36, {0, 0, 0}));
}

// Ten pixels for each of the image's: its second cross is at (90, 20).
TEST_F(Rasteriser, DrawsJbig2ImagesWithRefinedSymbols) {
  const std::string hex = std::string(testing::kRefinedJbig2) + ">";
  const std::string entries =
      "<</Subtype/Image/Width 120/Height 12/BitsPerComponent 1"
      "/Filter[/ASCIIHexDecode/JBIG2Decode]/Length " +
      std::to_string(hex.size());
  TestPdf file =
      Painted("q 864 0 0 86.4 0 0 cm /I Do Q 1 0 0 rg 864 0 0 86.4 0 86.4 cm /M Do", 864, 172.8);
  file.Object("image", entries + "/ColorSpace/DeviceGray>>\nstream\n" + hex + "\nendstream")
      .Object("mask", entries + "/ImageMask true>>\nstream\n" + hex + "\nendstream")
      .PageEntry("/Resources<</XObject<</I {{image}}/M {{mask}}>>>>");
  const JpegImage image = RenderOnly(file);
  EXPECT_TRUE(image.IsNear(115, 45, kRed));
  EXPECT_TRUE(image.IsNear(92, 22, kWhite));
  EXPECT_TRUE(image.IsNear(115, 165, {0, 0, 0}));
  EXPECT_TRUE(image.IsNear(92, 142, kWhite));
}

// A scan whose text is a JBIG2 mask.
TEST_F(Rasteriser, DrawsTheTextOfAScanThatIsAMask) {
  const std::string scan = "/compress/jbig2--test_3863.pdf";
  TARNIX_NEED_CORPUS(scan);
  ASSERT_TRUE(Open(testing::CorpusDir() + scan));
  const JpegImage image = Render(1);
  // The title, a tenth from the top.
  int dark = 0;
  for (int y = image.height / 16; y < image.height / 9; ++y) {
    for (int x = image.width / 9; x < image.width / 3; ++x) {
      dark += image.IsNear(x, y, {30, 30, 30}, 60) ? 1 : 0;
    }
  }
  EXPECT_GT(dark, 300);
}

TEST_F(Rasteriser, GivesTinyPagesAPixel) {
  Pdf2ImgSetDPI(object_, 72);
  const JpegImage image = RenderOnly(Painted("", 0.01, 100));
  EXPECT_EQ(image.width, 1);
  EXPECT_EQ(image.height, 100);
}

TEST_F(Rasteriser, AcceptsPathsThatAreNoUtf8) {
  Painted("").Write(Path("\xE9.pdf"));
  ASSERT_TRUE(Open(Path("\xE9.pdf")));
  EXPECT_GT(Render(1, "\xFF\xE9.jpg").width, 0);
}

TEST_F(Rasteriser, LeavesOutFormsThatDrawThemselves) {
  TestPdf document = Painted("/F Do 1 0 0 rg 0 0 72 72 re f");
  document
      .Object("form",
              "<< /Type /XObject /Subtype /Form /BBox [0 0 9 9] /Resources << /XObject << /F "
              "{{form}} >> >> /Length 11 >>\nstream\n/F Do /F Do\nendstream")
      .PageEntry("/Resources << /XObject << /F {{form}} >> >>")
      .Annotation("/Subtype /Stamp /F 4 /Rect [72 0 144 72] /AP << /N {{form}} >>");
  document.Page().Size(72, 72);
  ASSERT_TRUE(Open(document));
  Listen();
  const JpegImage image = Render(1);
  EXPECT_TRUE(image.IsNear(10, 50, kRed));
  EXPECT_TRUE(image.IsNear(150, 50, kWhite));
  EXPECT_THAT(reports_,
              ElementsAre(std::pair(1, static_cast<std::uint32_t>(kPdf2ImgPartialPageError))));
  ASSERT_TRUE(Open(Path("in.pdf")));
  EXPECT_EQ(Render(2).width, 100);
  EXPECT_EQ(reports_.size(), 1U);
}

// A field with the same kid twice, and so on: 2 to the power of 30 of them.
TEST_F(Rasteriser, DrawsPagesOfADocumentWhoseFieldsUnfold) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[4 0 R]>>>>")
      .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 72 72]/Contents 40 0 R>>");
  for (int number = 4; number < 34; ++number) {
    const std::string kid = std::to_string(number + 1) + " 0 R ";
    file.Object(number, "<</Kids[" + kid + kid + "]>>");
  }
  file.Object(34, "<</T(a)/FT/Tx>>").Stream(40, "", "1 0 0 rg 0 0 72 72 re f");
  testing::WriteBytes(Path("in.pdf"), file.Table());
  ASSERT_TRUE(Open(Path("in.pdf")));
  EXPECT_TRUE(Render(1).IsNear(30, 30, kRed));
}

TEST_F(Rasteriser, OpensALargeDocumentAnewOnTheWay) {
  TestPdf document;  // 24 pages with an incompressible megabyte each
  unsigned state = 1;
  for (int page = 0; page < 24; ++page) {
    std::string noise;
    for (int i = 0; i < 500'000; ++i) {
      state = state * 1664525 + 1013904223;
      noise += "0123456789ABCDEF"[state >> 28];
    }
    const std::string name = "image" + std::to_string(page);
    document.Object(name,
                    "<</Subtype/Image/Width 500/Height 500/BitsPerComponent 8/ColorSpace"
                    "/DeviceGray/Filter/ASCIIHexDecode/Length 500001>>\nstream\n" +
                        noise + ">\nendstream");
    document.Page()
        .Size(72, 72)
        .Content("q 72 0 0 72 0 0 cm /I Do Q 1 0 0 rg 0 0 9 9 re f")
        .PageEntry("/Resources <</XObject <</I {{" + name + "}}>>>>");
  }
  ASSERT_TRUE(Open(document));
  Pdf2ImgSetDPI(object_, 72);
  for (int page = 1; page <= 24; ++page) {
    const std::string name = std::to_string(page) + ".jpg";
    ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path(name))), 1);
    EXPECT_EQ(Pdf2ImgRenderPage(object_, page), 1);
    EXPECT_EQ(Pdf2ImgCloseImage(object_), 1);
  }
  EXPECT_EQ(Pdf2ImgClose(object_), 1);
  EXPECT_TRUE(ReadJpeg(Path("24.jpg")).IsNear(4, 68, kRed, 20));
}

}  // namespace
}  // namespace TarnixTools::engines::rasteriser
