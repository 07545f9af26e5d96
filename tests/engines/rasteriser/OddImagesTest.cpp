// Images that PDFium draws nothing of, wherever a page has them.
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "engines/rasteriser/Rasteriser.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "foundation/Platform.h"
#include "support/JpegImage.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::rasteriser {
namespace {

using testing::JpegImage;
using testing::Rgb;
using testing::TestPdf;

constexpr Rgb kBlack = {0, 0, 0};
constexpr Rgb kWhite = {255, 255, 255};

// Of the page, in points, and of everything on it.
const std::string kBox = "[0 0 864 86.4]";
const std::string kDrawing = "q 864 0 0 86.4 0 0 cm /I Do Q";
const std::string kResources = "/Resources<</XObject<</I {{image}}>>>>";

std::string Stream(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

std::string BytesOf(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// Puts the object `image` on a page.
using Placing = std::function<void(TestPdf&)>;

void OnThePage(TestPdf& file) {
  file.Content(kDrawing).PageEntry(kResources);
}

void InAForm(TestPdf& file) {
  file.Content("/F Do")
      .PageEntry("/Resources<</XObject<</F {{form}}>>>>")
      .Object("form", Stream("/Subtype/Form/BBox" + kBox + kResources, kDrawing));
}

void InAnAppearance(TestPdf& file) {
  file.Content("")
      .Annotation("/Subtype/Stamp/F 4/Rect" + kBox + "/AP<</N {{form}}>>")
      .Object("form", Stream("/Type/XObject/Subtype/Form/BBox" + kBox + kResources, kDrawing));
}

void InAPattern(TestPdf& file) {
  file.Content("/Pattern cs /P scn 0 0 864 86.4 re f")
      .PageEntry("/Resources<</Pattern<</P {{cell}}>>>>")
      .Object("cell", Stream("/Type/Pattern/PatternType 1/PaintType 1/TilingType 1/XStep 864/YStep "
                             "86.4/BBox" +
                                 kBox + kResources,
                             kDrawing));
}

void InAGlyph(TestPdf& file) {
  file.Content("BT /T 1 Tf (a) Tj ET")
      .PageEntry("/Resources<</Font<</T {{font}}>>>>")
      .Object("font", "<</Type/Font/Subtype/Type3/FontMatrix[1 0 0 1 0 0]/FontBBox" + kBox +
                          "/FirstChar 97/LastChar 97/Widths[864]/Encoding<</Type/Encoding"
                          "/Differences[97/a]>>/CharProcs<</a {{glyph}}>>" +
                          kResources + ">>")
      .Object("glyph", Stream("", "864 0 d0 " + kDrawing));
}

// The page is black where the image is not: a white rectangle over it, as far as the mask lets it.
void InASoftMask(TestPdf& file) {
  file.Content("0 g 0 0 864 86.4 re f /G gs 1 g 0 0 864 86.4 re f")
      .PageEntry("/Resources<</ExtGState<</G<</SMask<</S/Luminosity/G {{group}}>>>>>>>>")
      .Object("group", Stream("/Type/XObject/Subtype/Form/Group<</S/Transparency/CS/DeviceGray>>"
                              "/BBox" +
                                  kBox + kResources,
                              kDrawing));
}

class OddImages : public ::testing::TestWithParam<Placing> {
 protected:
  void SetUp() override {
    const PdfiumLock pdfium;
    if (!pdfium.is_available()) {
      GTEST_SKIP() << "needs PDFium";
    }
  }

  // The page with the image, 1200 by 120 pixels.
  JpegImage Draw(const std::string& image) {
    file_.Page().Size(864, 86.4).Object("image", image);
    GetParam()(file_);
    return DrawFile(file_.Write(directory_.Path("in.pdf")));
  }

  JpegImage DrawFile(const std::string& path) {
    TPdf2Img* const object = Pdf2ImgCreateObject();
    const std::string drawn = directory_.Path("page.jpg");
    EXPECT_EQ(Pdf2ImgOpenW(object, platform::WidePath(path), L""), 1);
    EXPECT_EQ(Pdf2ImgCreateImageW(object, platform::WidePath(drawn)), 1);
    EXPECT_EQ(Pdf2ImgRenderPage(object, 1), 1);
    EXPECT_EQ(Pdf2ImgCloseImage(object), 1);
    Pdf2ImgClose(object);
    Pdf2ImgDestroyObject(object);
    return testing::ReadJpeg(drawn);
  }

  TestPdf file_;
  testing::TempDir directory_;
};

// A gray image with a profile of RGB, as some programs write it.
TEST_P(OddImages, WithAProfileOfOtherColors) {
  const std::string profile = testing::TestRgbProfile(2.2, true);
  file_.Object("profile", Stream("/N 1", profile));
  const JpegImage image =
      Draw(Stream("/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace[/ICCBased "
                  "{{profile}}]/Filter/ASCIIHexDecode",
                  "80>"));
  EXPECT_TRUE(image.IsNear(600, 60, {128, 128, 128}));
}

TEST_P(OddImages, OfJpeg2000WithAlpha) {
  const JpegImage image =
      Draw(Stream("/Subtype/Image/Width 16/Height 8/BitsPerComponent 8/ColorSpace/DeviceGray/Filter"
                  "/JPXDecode",
                  BytesOf(testing::kGrayAlphaJpx)));
  EXPECT_TRUE(image.IsNear(100, 60, kBlack));
  EXPECT_TRUE(image.IsNear(1100, 60, {80, 80, 80}));
}

// Ten pixels of the page for each of the image's: its second cross is at (90, 20).
TEST_P(OddImages, OfJbig2WithRefinedSymbols) {
  const JpegImage image =
      Draw(Stream("/Subtype/Image/Width 120/Height 12/BitsPerComponent 1/ColorSpace/DeviceGray"
                  "/Filter[/ASCIIHexDecode/JBIG2Decode]",
                  std::string(testing::kRefinedJbig2) + ">"));
  EXPECT_TRUE(image.IsNear(115, 45, kBlack));
  EXPECT_TRUE(image.IsNear(92, 22, kWhite));
}

INSTANTIATE_TEST_SUITE_P(Everywhere, OddImages,
                         ::testing::Values(OnThePage, InAForm, InAnAppearance, InAPattern, InAGlyph,
                                           InASoftMask));

using OddImagesOfTheCorpus = OddImages;

// The appearance of a stamp has the image that the page of the other document has.
TEST_P(OddImagesOfTheCorpus, LookTheSameInAnAppearance) {
  TARNIX_NEED_CORPUS("cases/icc_annot.pdf");
  const JpegImage on_page = DrawFile(testing::CorpusDir() + "/cases/icc_page.pdf");
  const JpegImage in_stamp = DrawFile(testing::CorpusDir() + "/cases/icc_annot.pdf");
  EXPECT_EQ(on_page.Ink(), in_stamp.Ink());
}

INSTANTIATE_TEST_SUITE_P(Once, OddImagesOfTheCorpus, ::testing::Values(OnThePage));

}  // namespace
}  // namespace TarnixTools::engines::rasteriser
