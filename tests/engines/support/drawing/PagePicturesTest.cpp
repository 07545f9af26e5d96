// Images that are fitted before a page is drawn: which are, and that they look the same.
#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/rasteriser/Rasteriser.h"
#include "engines/support/drawing/PagePictures.h"
#include "engines/support/pdfium/PdfiumFile.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "foundation/Platform.h"
#include "pdf/file/ByteSource.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/HexText.h"
#include "support/JpegImage.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;
using ::testing::ElementsAre;
using testing::JpegImage;
using testing::Rgb;
using testing::TestPdf;

constexpr Rgb kRed = {255, 0, 0};
constexpr Rgb kGreen = {0, 255, 0};
constexpr Rgb kBlue = {0, 0, 255};
constexpr Rgb kBlack = {0, 0, 0};
constexpr Rgb kWhite = {255, 255, 255};

constexpr int kSide = 400;

std::string Stream(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

std::string ImageObject(const std::string& entries, const std::string& data) {
  return Stream("/Type/XObject/Subtype/Image/Width " + std::to_string(kSide) + "/Height " +
                    std::to_string(kSide) + entries,
                data);
}

// A quarter of each colour: red, green, and below them blue, black.
std::string Quarters() {
  std::string pixels;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const bool is_left = x < kSide / 2;
      const Rgb& color = y < kSide / 2 ? (is_left ? kRed : kGreen) : (is_left ? kBlue : kBlack);
      for (const int component : color) {
        pixels += static_cast<char>(component);
      }
    }
  }
  return pixels;
}

const std::string kRgb8 = "/ColorSpace/DeviceRGB/BitsPerComponent 8";

std::string QuartersObject(const std::string& entries = "") {
  std::string encoded;
  pdf::DeflateTo(encoded, Quarters(), 1);
  return ImageObject(kRgb8 + "/Filter/FlateDecode" + entries, encoded);
}

// A page of 100 by 100 points that can draw the quarters as I.
TestPdf Page(const std::string& content, const std::string& object = QuartersObject(),
             const std::string& resources = "") {
  TestPdf file;
  file.Page()
      .Size(100, 100)
      .Content(content)
      .PageEntry("/Resources<</XObject<</I {{I}}>>" + resources + ">>")
      .Object("I", object);
  return file;
}

class PagePicturesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const PdfiumLock pdfium;
    if (!pdfium.is_available() || !pdfium->has_object_functions) {
      GTEST_SKIP() << "needs PDFium with functions for page objects";
    }
  }

  // How many images of the first page are fitted at 72 dpi.
  static std::size_t CountFitted(const TestPdf& file, int side = 100) {
    const std::string bytes = file.Bytes();
    const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
    const pdf::PageTree pages(*document);
    pdf::Arena arena;
    const pdf::Object resources =
        document->Resolve(pages.Load(pages.pages()[0], arena).Get("Resources"), arena);
    PagePictures pictures;
    PdfiumLock pdfium;
    bool needs_password = false;
    const auto drawing =
        PdfiumFile::Open(pdfium, std::make_unique<pdf::MemorySource>(bytes), "", needs_password);
    pdfium::Page* page = drawing->LoadPage(0);
    pictures.Choose(*document, pages, 0, resources, ObjectsOf(pdfium, page, {0, 0, side, side}));
    drawing->ClosePage(page);
    return pictures.objects().size();
  }

  JpegImage Render(const TestPdf& file, int page = 1, float dpi = 72) const {
    TPdf2Img* object = Pdf2ImgCreateObject();
    EXPECT_EQ(Pdf2ImgOpenW(object, WidePath(file.Write(directory_.Path("in.pdf"))), L""), 1);
    Pdf2ImgSetDPI(object, dpi);
    for (int i = 1; i <= page; ++i) {  // the pages before may have left something
      Pdf2ImgCreateImageW(object, WidePath(directory_.Path("page.jpg")));
      EXPECT_EQ(Pdf2ImgRenderPage(object, i), 1);
      Pdf2ImgCloseImage(object);
    }
    EXPECT_EQ(Pdf2ImgClose(object), 1);
    Pdf2ImgDestroyObject(object);
    return testing::ReadJpeg(directory_.Path("page.jpg"));
  }

  // The colours in the middle of the quarters of a box: upper left, upper right, and below.
  static std::vector<Rgb> QuartersOf(const JpegImage& image, int left, int top, int right,
                                     int bottom) {
    std::vector<Rgb> colors;
    for (const int y : {(3 * top + bottom) / 4, (top + 3 * bottom) / 4}) {
      for (const int x : {(3 * left + right) / 4, (left + 3 * right) / 4}) {
        colors.push_back(Nearest(image, x, y));
      }
    }
    return colors;
  }

  // The colour of those above, or what it is when it is none of them.
  static Rgb Nearest(const JpegImage& image, int x, int y) {
    const Rgb found = image.At(x, y);
    for (const Rgb& color : {kRed, kGreen, kBlue, kBlack, kWhite}) {
      const bool is_near = std::equal(color.begin(), color.end(), found.begin(),
                                      [](int a, int b) { return std::abs(a - b) <= 6; });
      if (is_near) {
        return color;
      }
    }
    return found;
  }

  std::vector<Rgb> QuartersOfPage(const TestPdf& file) const {
    return QuartersOf(Render(file), 0, 0, 100, 100);
  }

  testing::TempDir directory_;
};

TEST_F(PagePicturesTest, ReducesAnImage) {
  const TestPdf file = Page("q 80 0 0 60 10 20 cm /I Do Q");
  EXPECT_EQ(CountFitted(file), 1U);
  const JpegImage image = Render(file);
  EXPECT_THAT(image.Ink(), ElementsAre(10, 20, 90, 80));
  EXPECT_THAT(QuartersOf(image, 10, 20, 90, 80), ElementsAre(kRed, kGreen, kBlue, kBlack));
}

TEST_F(PagePicturesTest, EnlargesAnImage) {
  const TestPdf file = Page("q 80 0 0 60 10 20 cm /I Do Q");
  EXPECT_EQ(CountFitted(file, 700), 1U);
  const JpegImage image = Render(file, 1, 504);
  EXPECT_THAT(image.Ink(), ElementsAre(70, 140, 630, 560));
  EXPECT_THAT(QuartersOf(image, 70, 140, 630, 560), ElementsAre(kRed, kGreen, kBlue, kBlack));
}

TEST_F(PagePicturesTest, EnlargesAsPdfiumDoes) {
  std::string pixels;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      for (const int sample : {(x * 7 + y * 3) % 256, x * 255 / kSide, (x ^ y) & 8 ? 240 : 20}) {
        pdf::AppendHex(pixels, static_cast<std::uint32_t>(sample), 2);
      }
    }
  }
  const std::string object = ImageObject(kRgb8 + "/Filter/ASCIIHexDecode", pixels);
  const TestPdf ours = Page("q 100 0 0 100 0 0 cm /I Do Q", object);
  const TestPdf pdfiums =
      Page("q /G gs 100 0 0 100 0 0 cm /I Do Q", object, "/ExtGState<</G<</TR/Identity>>>>");
  ASSERT_EQ(CountFitted(ours, 450), 1U);
  ASSERT_EQ(CountFitted(pdfiums, 450), 0U);
  const JpegImage fitted = Render(ours, 1, 324);
  const JpegImage drawn = Render(pdfiums, 1, 324);
  ASSERT_EQ(fitted.width, 450);
  ASSERT_EQ(fitted.pixels.size(), drawn.pixels.size());
  double difference = 0;
  for (std::size_t i = 0; i < drawn.pixels.size(); ++i) {
    difference += std::abs(fitted.pixels[i] - drawn.pixels[i]);
  }
  EXPECT_LE(difference / static_cast<double>(drawn.pixels.size()), 3);  // PDFium rounds down
}

TEST_F(PagePicturesTest, LeavesMuchLargerImagesToPdfium) {
  EXPECT_EQ(CountFitted(Page("100 0 0 100 0 0 cm /I Do"), 400), 1U);
  EXPECT_EQ(CountFitted(Page("100 0 0 100 0 0 cm /I Do"), 401), 1U);
  EXPECT_EQ(CountFitted(Page("100 0 0 100 0 0 cm /I Do"), 800), 1U);
  EXPECT_EQ(CountFitted(Page("100 0 0 100 0 0 cm /I Do"), 801), 0U);
}

TEST_F(PagePicturesTest, LeavesStretchedImagesToPdfium) {
  EXPECT_EQ(CountFitted(Page("100 0 0 50 0 0 cm /I Do"), 600), 0U);
}

TEST_F(PagePicturesTest, TurnsAndMirrors) {
  const std::vector<std::pair<std::string, std::vector<Rgb>>> cases = {
      {"100 0 0 100 0 0", {kRed, kGreen, kBlue, kBlack}},
      {"-100 0 0 100 100 0", {kGreen, kRed, kBlack, kBlue}},
      {"100 0 0 -100 0 100", {kBlue, kBlack, kRed, kGreen}},
      {"-100 0 0 -100 100 100", {kBlack, kBlue, kGreen, kRed}},
      {"0 100 -100 0 100 0", {kGreen, kBlack, kRed, kBlue}},
      {"0 -100 100 0 0 100", {kBlue, kRed, kBlack, kGreen}},
      {"0 100 100 0 0 0", {kBlack, kGreen, kBlue, kRed}},
      {"0 -100 -100 0 100 100", {kRed, kBlue, kGreen, kBlack}}};
  for (const auto& [matrix, colors] : cases) {
    const TestPdf file = Page("q " + matrix + " cm /I Do Q");
    EXPECT_EQ(CountFitted(file), 1U) << matrix;
    EXPECT_EQ(QuartersOfPage(file), colors) << matrix;
  }
}

TEST_F(PagePicturesTest, TurnsWithThePage) {
  const std::vector<std::vector<Rgb>> turned = {{kRed, kGreen, kBlue, kBlack},
                                                {kBlue, kRed, kBlack, kGreen},
                                                {kBlack, kBlue, kGreen, kRed},
                                                {kGreen, kBlack, kRed, kBlue}};
  for (std::size_t turns = 0; turns < 4; ++turns) {
    TestPdf file = Page("q 100 0 0 100 0 0 cm /I Do Q");
    file.Rotate(90 * static_cast<int>(turns));
    EXPECT_EQ(CountFitted(file), 1U) << turns;
    EXPECT_EQ(QuartersOfPage(file), turned[turns]) << turns;
  }
}

TEST_F(PagePicturesTest, LeavesSlantedImagesToPdfium) {
  EXPECT_EQ(CountFitted(Page("90 5 -5 90 5 0 cm /I Do")), 0U);
  EXPECT_EQ(CountFitted(Page("90 0 20 90 0 0 cm /I Do")), 0U);
}

TEST_F(PagePicturesTest, StaysWithinARectangularClip) {
  const TestPdf file = Page("q 20 30 40 50 re W n 100 0 0 100 0 0 cm /I Do Q");
  EXPECT_EQ(CountFitted(file), 1U);
  const JpegImage image = Render(file);
  EXPECT_THAT(image.Ink(), ElementsAre(20, 20, 60, 70));
  EXPECT_TRUE(image.IsNear(30, 30, kRed));
  EXPECT_TRUE(image.IsNear(55, 65, kBlack));
}

TEST_F(PagePicturesTest, LeavesOtherClipsToPdfium) {
  EXPECT_EQ(CountFitted(Page("q 50 0 m 100 100 l 0 100 l h W n 100 0 0 100 0 0 cm /I Do Q")), 0U);
  EXPECT_EQ(CountFitted(Page("BT /F 40 Tf 7 Tr 10 30 Td (HH) Tj ET 100 0 0 100 0 0 cm /I Do",
                             QuartersObject(),
                             "/Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>")),
            0U);
}

TEST_F(PagePicturesTest, StaysWithinTheCropBox) {
  TestPdf file = Page("q 100 0 0 100 0 0 cm /I Do Q");
  file.PageEntry("/CropBox[50 50 100 100]/UserUnit 2");
  const JpegImage image = Render(file);
  EXPECT_EQ(image.width, 100);
  EXPECT_THAT(QuartersOf(image, 0, 0, 100, 100), ElementsAre(kGreen, kGreen, kGreen, kGreen));
}

TEST_F(PagePicturesTest, IsDrawnOverByWhatComesLater) {
  const TestPdf file = Page("q 100 0 0 100 0 0 cm /I Do Q 0 0 1 rg 0 50 50 50 re f");
  EXPECT_EQ(CountFitted(file), 1U);
  EXPECT_THAT(QuartersOfPage(file), ElementsAre(kBlue, kGreen, kBlue, kBlack));
}

TEST_F(PagePicturesTest, IsNotPaintedUnderWhatCameBefore) {
  const TestPdf file = Page("0 0 1 rg 0 0 100 100 re f q 100 0 0 100 0 0 cm /I Do Q");
  EXPECT_EQ(CountFitted(file), 0U);
  EXPECT_THAT(QuartersOfPage(file), ElementsAre(kRed, kGreen, kBlue, kBlack));
  // Elsewhere on the page it does not matter.
  const TestPdf beside = Page("0 0 1 rg 0 0 20 100 re f q 70 0 0 100 30 0 cm /I Do Q");
  EXPECT_EQ(CountFitted(beside), 1U);
  EXPECT_TRUE(Render(beside).IsNear(10, 50, kBlue));
}

TEST_F(PagePicturesTest, KeepsTheOrderOfImages) {
  const TestPdf file =
      Page("q 100 0 0 100 0 0 cm /I Do Q q 50 0 0 50 0 50 cm /I Do Q q 20 0 0 20 80 0 cm /I Do Q");
  EXPECT_EQ(CountFitted(file), 3U);
  const JpegImage image = Render(file);
  EXPECT_THAT(QuartersOf(image, 0, 0, 50, 50), ElementsAre(kRed, kGreen, kBlue, kBlack));
  EXPECT_THAT(QuartersOf(image, 80, 80, 100, 100), ElementsAre(kRed, kGreen, kBlue, kBlack));
  EXPECT_TRUE(image.IsNear(75, 25, kGreen));
  // One that PDFium draws is not painted over.
  const TestPdf mixed =
      Page("q 90 5 -5 90 5 0 cm /I Do Q q 50 0 0 50 0 50 cm /I Do Q q 9 0 0 9 91 91 cm /I Do Q");
  EXPECT_EQ(CountFitted(mixed), 0U);
}

TEST_F(PagePicturesTest, LeavesImagesThatAreDrawnOftenToPdfium) {
  const auto drawn = [](int times) {
    std::string content;
    for (int i = 0; i < times; ++i) {
      content += "q 19 0 0 19 " + std::to_string(20 * i) + " 50 cm /I Do Q ";
    }
    return Page(content);
  };
  EXPECT_EQ(CountFitted(drawn(4)), 4U);
  EXPECT_EQ(CountFitted(drawn(5)), 0U);
}

TEST_F(PagePicturesTest, ShowsAnImageOfSeveralPagesOnEach) {
  TestPdf file = Page("q 100 0 0 100 0 0 cm /I Do Q");
  file.Page()
      .Size(100, 100)
      .Content("q 40 0 0 40 30 30 cm /I Do Q")
      .PageEntry("/Resources<</XObject<</I {{I}}>>>>");
  file.Page()
      .Size(600, 600)
      .Content("q 600 0 0 600 0 0 cm /I Do Q")
      .PageEntry("/Resources<</XObject<</I {{I}}>>>>");
  EXPECT_THAT(QuartersOf(Render(file, 2), 30, 30, 70, 70),
              ElementsAre(kRed, kGreen, kBlue, kBlack));
  const JpegImage large = Render(file, 3);
  EXPECT_THAT(QuartersOf(large, 0, 0, 600, 600), ElementsAre(kRed, kGreen, kBlue, kBlack));
  EXPECT_TRUE(large.IsNear(296, 100, kRed)) << "the edge is as sharp as in the image";
  EXPECT_TRUE(large.IsNear(304, 100, kGreen));
}

TEST_F(PagePicturesTest, GoesOnFromBandToBand) {
  std::string rows;
  for (int y = 0; y < 4000; ++y) {
    rows.append(2000, static_cast<char>(y / 16));
  }
  std::string encoded;
  pdf::DeflateTo(encoded, rows, 1);
  TestPdf file = Page("q 2000 0 0 4000 0 0 cm /I Do Q",
                      Stream("/Type/XObject/Subtype/Image/Width 2000/Height 4000/ColorSpace"
                             "/DeviceGray/BitsPerComponent 8/Filter/FlateDecode",
                             encoded));
  file.Size(2000, 4000);
  EXPECT_EQ(CountFitted(file, 1000), 1U);
  const JpegImage image = Render(file);
  ASSERT_EQ(image.height, 4000);
  for (int y = 8; y < 4000; y += 16) {
    const int gray = y / 16;
    EXPECT_TRUE(image.IsNear(1000, y, {gray, gray, gray})) << y;
  }
}

TEST_F(PagePicturesTest, LeavesTransparencyToPdfium) {
  const std::string draw = "q /G gs 100 0 0 100 0 0 cm /I Do Q";
  const auto with_state = [&](const std::string& state) {
    return Page(draw, QuartersObject(), "/ExtGState<</G<<" + state + ">>>>");
  };
  EXPECT_EQ(CountFitted(with_state("/ca 1")), 1U);
  EXPECT_EQ(CountFitted(with_state("/ca .5")), 0U);
  EXPECT_EQ(CountFitted(with_state("/BM/Multiply")), 0U);
  EXPECT_EQ(CountFitted(with_state("/TR/Identity")), 0U);
  TestPdf masked = Page("q 100 0 0 100 0 0 cm /I Do Q", QuartersObject("/SMask {{M}}"));
  masked.Object("M", ImageObject("/ColorSpace/DeviceGray/BitsPerComponent 8",
                                 std::string(std::size_t{kSide} * kSide, '\x80')));
  EXPECT_EQ(CountFitted(masked), 0U);
  EXPECT_EQ(CountFitted(Page("q 100 0 0 100 0 0 cm /I Do Q", QuartersObject("/Mask[0 0 0 0 0 0]"))),
            0U);
}

TEST_F(PagePicturesTest, LeavesLayersToPdfium) {
  TestPdf file = Page("/OC /L BDC q 100 0 0 100 0 0 cm /I Do Q EMC", QuartersObject(),
                      "/Properties<</L {{L}}>>");
  file.Object("L", "<</Type/OCG/Name(off)>>")
      .CatalogEntry("/OCProperties<</OCGs[{{L}}]/D<</OFF[{{L}}]>>>>");
  EXPECT_EQ(CountFitted(file), 0U);
  EXPECT_THAT(QuartersOfPage(file), ElementsAre(kWhite, kWhite, kWhite, kWhite));
  EXPECT_EQ(CountFitted(Page("/P <</MCID 0>> BDC q 100 0 0 100 0 0 cm /I Do Q EMC")), 1U);
}

TEST_F(PagePicturesTest, LeavesColorsToPdfiumThatItComputesItself) {
  const std::string draw = "q 100 0 0 100 0 0 cm /I Do Q";
  const std::string bytes(std::size_t{kSide} * kSide * 4, '\x40');
  const auto count = [&](const std::string& space) {
    return CountFitted(Page(draw, ImageObject(space + "/BitsPerComponent 8", bytes)));
  };
  EXPECT_EQ(count("/ColorSpace/DeviceGray"), 1U);
  EXPECT_EQ(count("/ColorSpace[/CalRGB<</WhitePoint[.95 1 1.09]>>]"), 1U);
  EXPECT_EQ(count("/ColorSpace[/Indexed/DeviceRGB 255<" + std::string(1536, 'a') + ">]"), 1U);
  EXPECT_EQ(count("/ColorSpace/DeviceCMYK"), 0U);
  EXPECT_EQ(count("/ColorSpace[/Indexed/DeviceCMYK 255<" + std::string(2048, 'a') + ">]"), 0U);
  EXPECT_EQ(count("/ColorSpace[/Lab<</WhitePoint[.95 1 1.09]>>]"), 0U);
  EXPECT_EQ(CountFitted(Page(draw, QuartersObject(),
                             "/ColorSpace<</DefaultRGB[/CalRGB<</WhitePoint[.95 1 1.09]>>]>>")),
            0U);
}

TEST_F(PagePicturesTest, ReducesJpegThatIsWhatTheDictionarySays) {
  const std::string draw = "q 100 0 0 100 0 0 cm /I Do Q";
  const std::string jpeg = testing::MakeJpeg(kSide, kSide, {255, 0, 0}, {0, 0, 255});
  const TestPdf file = Page(draw, ImageObject(kRgb8 + "/Filter/DCTDecode", jpeg));
  EXPECT_EQ(CountFitted(file), 1U);
  EXPECT_THAT(QuartersOfPage(file), ElementsAre(kRed, kBlue, kRed, kBlue));
  const std::string other = testing::MakeJpeg(kSide, kSide / 2, {255, 0, 0});
  EXPECT_EQ(CountFitted(Page(draw, ImageObject(kRgb8 + "/Filter/DCTDecode", other))), 0U);
  const std::string gray = testing::MakeJpeg(kSide, kSide, {100});
  EXPECT_EQ(CountFitted(Page(draw, ImageObject(kRgb8 + "/Filter/DCTDecode", gray))), 0U);
}

TEST_F(PagePicturesTest, ShowsWhatThereIsOfADamagedImage) {
  const std::string pixels = Quarters();
  const TestPdf file = Page("q 100 0 0 100 0 0 cm /I Do Q",
                            ImageObject(kRgb8, pixels.substr(0, pixels.size() * 3 / 5)));
  EXPECT_EQ(CountFitted(file), 1U);
  const JpegImage image = Render(file);
  EXPECT_TRUE(image.IsNear(25, 25, kRed));
  EXPECT_TRUE(image.IsNear(25, 55, kBlue));
  EXPECT_TRUE(image.IsNear(25, 75, kWhite));
}

TEST_F(PagePicturesTest, LeavesImagesThatLieAboutTheirSizeToPdfium) {
  const TestPdf file =
      Page("q 100 0 0 100 0 0 cm /I Do Q",
           Stream("/Type/XObject/Subtype/Image/Width 60000/Height 60000" + kRgb8, Quarters()));
  EXPECT_EQ(CountFitted(file), 0U);
}

TEST_F(PagePicturesTest, LeavesInlineImagesAndFormsToPdfium) {
  TestPdf file = Page("q 100 0 0 100 0 0 cm /I Do Q",
                      Stream("/Type/XObject/Subtype/Form/BBox[0 0 1 1]/Resources<</XObject<</J "
                             "{{J}}>>>>",
                             "/J Do"));
  file.Object("J", QuartersObject());
  EXPECT_EQ(CountFitted(file), 0U);
  EXPECT_THAT(QuartersOfPage(file), ElementsAre(kRed, kGreen, kBlue, kBlack));
}

}  // namespace
}  // namespace TarnixTools::engines
