// Images that pages draw, through the content parser's contract.
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/parser/ErrorCodes.h"
#include "engines/parser/Parser.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "foundation/Unicode.h"
#include "support/JpegImage.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using testing::JpegImage;
using testing::MakeJpeg;
using testing::ReadBytes;
using testing::ReadJpeg;
using testing::Rgb;
using testing::TestPdf;

constexpr Rgb kRed = {255, 0, 0};
constexpr Rgb kGreen = {0, 255, 0};
constexpr Rgb kBlue = {0, 0, 255};
constexpr Rgb kWhite = {255, 255, 255};
constexpr Rgb kBlack = {0, 0, 0};

// An object with stream data.
std::string Stream(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

// An image XObject; the data in hexadecimal.
std::string HexImage(int width, int height, const std::string& entries, const std::string& hex) {
  return Stream("/Type/XObject/Subtype/Image/Filter/ASCIIHexDecode/Width " + std::to_string(width) +
                    "/Height " + std::to_string(height) + entries,
                hex + ">");
}

std::string JpegImageObject(const std::string& jpeg, const std::string& entries,
                            const std::string& size = "/Width 16/Height 8") {
  return Stream("/Type/XObject/Subtype/Image/Filter/DCTDecode/BitsPerComponent 8" + size + entries,
                jpeg);
}

// One byte each, `count` times.
std::string Repeat(const std::string& hex, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += hex;
  }
  return all;
}

class Images : public ::testing::Test {
 protected:
  Images() : document_(ExpaDocCreateObject()) {
    ExpaDocSetReport(
        document_,
        [](void* handle, std::int32_t page, TExpaTrouble trouble) {
          static_cast<Images*>(handle)->troubles_.emplace_back(page, trouble);
        },
        this);
  }

  ~Images() override { ExpaDocDestroyObject(document_); }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  bool Open(const TestPdf& file, const std::wstring& password = L"") {
    return ExpaDocOpenW(document_, PathToWide(file.Write(Path("in.pdf"))), password) != 0;
  }

  // Stores all images of a page, upright; returns their files.
  std::vector<std::string> Extract(int page_number = 1, int with_forms = 1) {
    std::vector<std::string> files;
    EXPECT_EQ(ExpaDocSetPageNo(document_, page_number), 1);
    TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
    EXPECT_EQ(ExpaContentResetContent(content, with_forms), 1);
    orientations_.clear();
    while (ExpaContentGetNextImage(content) != 0) {
      TExpaImage* image = ExpaContentGetImage(content);
      const TExpaMatrix* matrix = ExpaGSGetCTM(ExpaContentGetGraphicsState(content));
      orientations_.push_back(matrix->orientation);
      ExpaImageChangeOrientation(image, matrix->orientation);
      files.push_back(Path(std::to_string(files.size()) + ".jpg"));
      EXPECT_EQ(ExpaImageStoreW(image, PathToWide(files.back()), kExpaJpeg), 1)
          << ExpaDocGetLastError(document_);
    }
    return files;
  }

  // The only image of a page that draws the object I this way.
  JpegImage ExtractOne(const TestPdf& file) {
    EXPECT_TRUE(Open(file));
    const std::vector<std::string> files = Extract();
    EXPECT_EQ(files.size(), 1U);
    return files.size() == 1 ? ReadJpeg(files[0]) : JpegImage();
  }

  static TestPdf Page(const std::string& image, const std::string& content = "/I Do") {
    TestPdf file;
    file.Page()
        .Size(100, 100)
        .Content(content)
        .Object("image", image)
        .PageEntry("/Resources <</XObject <</I {{image}}>>>>");
    return file;
  }

  JpegImage ExtractImage(const std::string& image) { return ExtractOne(Page(image)); }

  bool HasPdfium() const { return PdfiumLock().is_available(); }

  testing::TempDir directory_;
  TExpaDoc* document_;
  std::vector<int> orientations_;
  std::vector<std::pair<int, int>> troubles_;
};

// Two pixels: red, then blue; repeated so that each is a block of its own.
std::string RedBlue(const std::string& entries = "") {
  const std::string row = Repeat("FF0000", 8) + Repeat("0000FF", 8);
  return HexImage(16, 8, "/ColorSpace/DeviceRGB/BitsPerComponent 8" + entries, Repeat(row, 8));
}

TEST_F(Images, AreDecodedFromRgb) {
  const JpegImage image = ExtractImage(RedBlue());
  EXPECT_EQ(image.width, 16);
  EXPECT_EQ(image.height, 8);
  EXPECT_EQ(image.components, 3);
  EXPECT_FALSE(image.is_subsampled);
  EXPECT_TRUE(image.IsNear(3, 3, kRed));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, AreDecodedFromGrayOfAnyDepth) {
  const std::vector<std::pair<int, std::string>> cases = {{1, "F0"},
                                                          {2, "FF00"},
                                                          {4, "FFFF0000"},
                                                          {8, "FFFFFFFF00000000"},
                                                          {16, "FFFFFFFFFFFFFFFF0000000000000000"}};
  for (const auto& [bits, row] : cases) {
    const JpegImage image = ExtractImage(HexImage(
        8, 8, "/ColorSpace/DeviceGray/BitsPerComponent " + std::to_string(bits), Repeat(row, 8)));
    EXPECT_EQ(image.components, 1);
    EXPECT_TRUE(image.IsNear(1, 4, kWhite)) << bits;
    EXPECT_TRUE(image.IsNear(6, 4, kBlack)) << bits;
  }
}

TEST_F(Images, AreDecodedWithTheirDecodeArray) {
  EXPECT_TRUE(ExtractImage(RedBlue("/Decode[1 0 0 1 0 1]")).IsNear(12, 3, {255, 0, 255}));
  EXPECT_TRUE(ExtractImage(HexImage(8, 8, "/ColorSpace/DeviceGray/BitsPerComponent 1/Decode[1 0]",
                                    Repeat("F0", 8)))
                  .IsNear(1, 4, kBlack));
}

TEST_F(Images, AreDecodedFromIndexedColors) {
  for (const char* base : {"/DeviceRGB", "[/CalRGB <<>>]"}) {
    const std::string space = std::string("/ColorSpace[/Indexed ") + base + " 1 <00FF000000FF>]";
    const JpegImage image =
        ExtractImage(HexImage(16, 8, space + "/BitsPerComponent 1", Repeat("00FF", 8)));
    EXPECT_TRUE(image.IsNear(3, 3, kGreen));
    EXPECT_TRUE(image.IsNear(12, 3, kBlue));
  }
}

TEST_F(Images, AreGrayWithAGrayPalette) {
  const JpegImage image = ExtractImage(
      HexImage(8, 8, "/ColorSpace[/Indexed/DeviceRGB 1 <FFFFFF808080>]/BitsPerComponent 1",
               Repeat("0F", 8)));
  EXPECT_EQ(image.components, 1);
  EXPECT_TRUE(image.IsNear(6, 3, {128, 128, 128}));
}

TEST_F(Images, TakeIndicesBeyondThePaletteAsBlack) {
  EXPECT_TRUE(
      ExtractImage(HexImage(8, 8, "/ColorSpace[/Indexed/DeviceRGB 0 <FF0000>]/BitsPerComponent 8",
                            Repeat("07", 64)))
          .IsNear(4, 4, kBlack));
}

TEST_F(Images, AreDecodedFromCmyk) {
  const auto ink = [&](const std::string& cmyk) {
    return ExtractImage(
        HexImage(8, 8, "/ColorSpace/DeviceCMYK/BitsPerComponent 8", Repeat(cmyk, 64)));
  };
  EXPECT_TRUE(ink("00000000").IsNear(4, 4, kWhite));
  EXPECT_TRUE(ink("FF000000").IsNear(4, 4, {0, 174, 239}));
  EXPECT_TRUE(ink("00FFFF00").IsNear(4, 4, {237, 28, 36}));
  EXPECT_TRUE(ink("FFFFFFFF").IsNear(4, 4, kBlack));
  EXPECT_TRUE(ink("00000080").IsNear(4, 4, {145, 143, 143}, 12));
}

TEST_F(Images, AreDecodedFromLab) {
  const auto lab = [&](const std::string& hex) {
    return ExtractImage(HexImage(8, 8,
                                 "/BitsPerComponent 8/ColorSpace[/Lab<</WhitePoint[0.9505 1 1.089]"
                                 "/Range[-128 127 -128 127]>>]",
                                 Repeat(hex, 64)));
  };
  EXPECT_TRUE(lab("FF8080").IsNear(4, 4, kWhite));
  EXPECT_TRUE(lab("008080").IsNear(4, 4, kBlack));
  EXPECT_TRUE(lab("88D0C3").IsNear(4, 4, {255, 0, 0}, 12));  // 53, 80, 67
}

TEST_F(Images, AreDecodedFromSpotColors) {
  if (!HasPdfium()) {
    GTEST_SKIP() << "needs PDFium";
  }
  const JpegImage image = ExtractImage(HexImage(
      16, 8,
      "/BitsPerComponent 8/ColorSpace[/Separation/Spot/DeviceRGB<</FunctionType 2/Domain[0 1]/N 1"
      "/C0[1 1 1]/C1[0 1 0]>>]",
      Repeat(Repeat("00", 8) + Repeat("FF", 8), 8)));
  EXPECT_EQ(image.width, 16);
  EXPECT_TRUE(image.IsNear(3, 3, kWhite));
  EXPECT_TRUE(image.IsNear(12, 3, kGreen));
}

TEST_F(Images, AreTheBlackPictureThatAMaskPaints) {
  const JpegImage image =
      ExtractOne(Page(HexImage(16, 8, "/ImageMask true", Repeat("00FF", 8)), "1 0 0 rg /I Do"));
  EXPECT_EQ(image.components, 1);
  EXPECT_TRUE(image.IsNear(3, 3, kBlack));
  EXPECT_TRUE(image.IsNear(12, 3, kWhite));
  EXPECT_TRUE(ExtractImage(HexImage(16, 8, "/ImageMask true/Decode[1 0]", Repeat("00FF", 8)))
                  .IsNear(3, 3, kWhite));
}

// A fax image of eight columns, in hexadecimal.
std::string FaxImage(int height, const std::string& parameters, const std::string& hex) {
  return Stream(
      "/Type/XObject/Subtype/Image/ColorSpace/DeviceGray/BitsPerComponent 1/Width 8/Height " +
          std::to_string(height) + "/Filter[/ASCIIHexDecode/CCITTFaxDecode]/DecodeParms[null<<" +
          "/Columns 8" + parameters + ">>]",
      hex + ">");
}

TEST_F(Images, AreDecodedFromTwoDimensionalFaxData) {
  // A white row, one with four columns of each colour, the same again, the end of the block.
  const JpegImage image = ExtractImage(FaxImage(3, "/K -1", "9B78008008"));
  EXPECT_EQ(image.components, 1);
  for (int x = 0; x < 8; ++x) {
    EXPECT_TRUE(image.IsNear(x, 0, kWhite));
    EXPECT_TRUE(image.IsNear(x, 1, x < 4 ? kWhite : kBlack));
    EXPECT_TRUE(image.IsNear(x, 2, x < 4 ? kWhite : kBlack));
  }
  EXPECT_TRUE(troubles_.empty());
  EXPECT_TRUE(ExtractImage(FaxImage(3, "/K -1/BlackIs1 true", "9B78008008")).IsNear(1, 1, kBlack));
}

TEST_F(Images, AreDecodedFromOneDimensionalFaxData) {
  const JpegImage image = ExtractImage(FaxImage(8, "", "B76EDDBB76EDDB"));
  for (int y = 0; y < 8; ++y) {
    EXPECT_TRUE(image.IsNear(3, y, kWhite));
    EXPECT_TRUE(image.IsNear(4, y, kBlack));
  }
}

TEST_F(Images, StayWhiteWhereFaxDataIsCutOrDamaged) {
  for (const std::string hex : {"9B", "", "00", "FF000000", "9B78008008"}) {
    const JpegImage image = ExtractImage(FaxImage(64, "/K -1", hex));
    EXPECT_EQ(image.height, 64);
    EXPECT_TRUE(image.IsNear(7, 63, kWhite)) << hex;
  }
  EXPECT_EQ(troubles_.size(), 5U);
}

TEST_F(Images, AreExactInBlackAndWhite) {
  std::string hex;
  unsigned state = 7;
  for (int i = 0; i < 3 * 13; ++i) {
    state = state * 1664525 + 1013904223;
    hex += "0123456789ABCDEF"[state >> 28];
    hex += "0123456789ABCDEF"[state >> 24 & 15U];
  }
  const JpegImage image =
      ExtractImage(HexImage(21, 13, "/ColorSpace/DeviceGray/BitsPerComponent 1", hex));
  ASSERT_EQ(image.width, 21);
  for (int y = 0; y < 13; ++y) {
    for (int x = 0; x < 21; ++x) {
      const auto digit = static_cast<std::size_t>(y * 6 + x / 4);
      const int bits = std::stoi(hex.substr(digit, 1), nullptr, 16);
      const bool is_white = (bits >> (3 - x % 4) & 1) != 0;
      EXPECT_TRUE(image.IsNear(x, y, is_white ? kWhite : kBlack, 3)) << x << " " << y;
    }
  }
}

TEST_F(Images, AreOnWhiteBehindASoftMask) {
  TestPdf file = Page(RedBlue("/SMask {{mask}}"));
  file.Object("mask", HexImage(2, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8", "80FF"));
  const JpegImage image = ExtractOne(file);
  EXPECT_TRUE(image.IsNear(3, 3, {255, 127, 127}));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, AreWhiteWhereAMaskCoversThem) {
  TestPdf file = Page(RedBlue("/Mask {{mask}}"));
  file.Object("mask", HexImage(2, 1, "/ImageMask true", "40"));
  const JpegImage image = ExtractOne(file);
  EXPECT_TRUE(image.IsNear(3, 3, kRed));
  EXPECT_TRUE(image.IsNear(12, 3, kWhite));
}

TEST_F(Images, AreWhiteInTheColorsOfTheirKey) {
  const JpegImage image = ExtractImage(RedBlue("/Mask[250 255 0 5 0 5]"));
  EXPECT_TRUE(image.IsNear(3, 3, kWhite));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, StayAsTheyAreWhenTheyAreJpegFilesAlready) {
  for (const auto& [color, space] : {std::pair(std::vector<int>{200, 10, 10}, "/DeviceRGB"),
                                     std::pair(std::vector<int>{90}, "/DeviceGray"),
                                     std::pair(std::vector<int>{90}, "/CalGray")}) {
    const std::string jpeg = MakeJpeg(16, 8, color);
    ASSERT_TRUE(Open(Page(JpegImageObject(jpeg, std::string("/ColorSpace") + space),
                          "q 50 0 0 50 9 9 cm /I Do Q")));
    const auto files = Extract();
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(ReadBytes(files[0]), jpeg);
  }
}

TEST_F(Images, StayAsTheyAreInAnEncryptedDocument) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string jpeg = MakeJpeg(16, 8, {200, 10, 10});
  Page(JpegImageObject(jpeg, "/ColorSpace/DeviceRGB")).Write(Path("plain.pdf"));
  testing::EncryptWithQpdf(Path("plain.pdf"), Path("secret.pdf"), "pw", "owner");
  EXPECT_EQ(ExpaDocOpenW(document_, PathToWide(Path("secret.pdf")), L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaPasswordError);
  ASSERT_EQ(ExpaDocOpenW(document_, PathToWide(Path("secret.pdf")), L"pw"), 1);
  const auto files = Extract();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(ReadBytes(files[0]), jpeg);
}

TEST_F(Images, AreDecodedFromJpegDataThatIsNotAPictureByItself) {
  const std::string jpeg = MakeJpeg(16, 8, {255, 0, 0}, {0, 0, 255});
  EXPECT_TRUE(ExtractImage(JpegImageObject(jpeg, "/ColorSpace/DeviceRGB/Decode[1 0 1 0 1 0]"))
                  .IsNear(3, 3, {0, 255, 255}));
  EXPECT_TRUE(ExtractImage(JpegImageObject(MakeJpeg(16, 8, {0}),
                                           "/ColorSpace[/Indexed/DeviceRGB 0<00FF00>]"))
                  .IsNear(3, 3, kGreen));
  TestPdf masked = Page(JpegImageObject(jpeg, "/ColorSpace/DeviceRGB/SMask {{mask}}"));
  masked.Object("mask", HexImage(1, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8", "00"));
  EXPECT_TRUE(ExtractOne(masked).IsNear(3, 3, kWhite));
}

TEST_F(Images, AreDecodedFromCmykJpegDataAsItIsStored) {
  const std::string jpeg = MakeJpeg(16, 8, {255, 0, 0, 0});
  EXPECT_TRUE(
      ExtractImage(JpegImageObject(jpeg, "/ColorSpace/DeviceCMYK")).IsNear(3, 3, {0, 174, 239}));
  EXPECT_TRUE(ExtractImage(JpegImageObject(jpeg, "/ColorSpace/DeviceCMYK/Decode[1 0 1 0 1 0 1 0]"))
                  .IsNear(3, 3, {0, 0, 0}, 40));
}

TEST_F(Images, StayWhiteWhereJpegDataIsCut) {
  const std::string jpeg = MakeJpeg(64, 640, {10, 10, 10}, {200, 200, 200});
  const JpegImage image = ExtractImage(
      JpegImageObject(jpeg.substr(0, jpeg.size() / 2),
                      "/ColorSpace/DeviceGray/Decode[0 1]/SMask 999 0 R", "/Width 64/Height 640"));
  EXPECT_EQ(image.height, 640);
}

TEST_F(Images, StayWhiteWhereDataIsMissing) {
  const JpegImage image =
      ExtractImage(HexImage(8, 16, "/ColorSpace/DeviceGray/BitsPerComponent 8", Repeat("00", 60)));
  EXPECT_EQ(image.height, 16);
  EXPECT_TRUE(image.IsNear(1, 3, kBlack));
  EXPECT_TRUE(image.IsNear(1, 12, kWhite));
  EXPECT_THAT(troubles_, ElementsAre(std::pair(1, static_cast<int>(kExpaImagePartial))));
}

TEST_F(Images, AreCutWhenTheyClaimFarMoreThanTheyHave) {
  const JpegImage image = ExtractImage(
      HexImage(60000, 60000, "/ColorSpace/DeviceGray/BitsPerComponent 1", Repeat("00", 100)));
  EXPECT_EQ(image.width, 60000);
  EXPECT_LT(image.height, 2000);
}

TEST_F(Images, ThatCannotBeReadArePassedOver) {
  TestPdf file;
  file.Page()
      .Content("/A Do /B Do /C Do /D Do /E Do /I Do")
      .Object("a", HexImage(0, 8, "/ColorSpace/DeviceGray/BitsPerComponent 8", ""))
      .Object("b", HexImage(8, -1, "/ColorSpace/DeviceGray/BitsPerComponent 8", ""))
      .Object("c", Stream("/Subtype/Image/Width 8/Height 8/Filter/Unknown", "x"))
      .Object("d", JpegImageObject("no picture", "/ColorSpace/DeviceRGB"))
      .Object("e", HexImage(70000, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8", "00"))
      .Object("i", RedBlue())
      .PageEntry("/Resources <</XObject <</A {{a}}/B {{b}}/C {{c}}/D {{d}}/E {{e}}/I {{i}}>>>>");
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kRed));
  EXPECT_EQ(troubles_.size(), 5U);
}

TEST_F(Images, AreMadeUpright) {
  // Left half red, right half blue: where each must be after turning.
  struct Case {
    const char* matrix;
    int orientation;
    int width;
    int red_x;
    int red_y;
  };

  for (const Case& c : {Case{"9 0 0 9 0 0", 1, 16, 2, 3}, Case{"-9 0 0 9 0 0", 2, 16, 13, 3},
                        Case{"-9 0 0 -9 0 0", 3, 16, 13, 3}, Case{"9 0 0 -9 0 0", 4, 16, 2, 3},
                        Case{"0 -9 -9 0 0 0", 5, 8, 3, 2}, Case{"0 -9 9 0 0 0", 6, 8, 3, 2},
                        Case{"0 9 9 0 0 0", 7, 8, 3, 13}, Case{"0 9 -9 0 0 0", 8, 8, 3, 13},
                        Case{"9 1 -1 9 0 0", 1, 16, 2, 3}, Case{"0 0 0 0 0 0", 1, 16, 2, 3}}) {
    const JpegImage image = ExtractOne(Page(RedBlue(), std::string(c.matrix) + " cm /I Do"));
    EXPECT_THAT(orientations_, ElementsAre(c.orientation)) << c.matrix;
    EXPECT_EQ(image.width, c.width) << c.matrix;
    EXPECT_TRUE(image.IsNear(c.red_x, c.red_y, kRed)) << c.matrix;
  }
}

TEST_F(Images, AreUprightOnTurnedPages) {
  TestPdf file = Page(RedBlue(), "9 0 0 9 0 0 cm /I Do");
  file.Rotate(90);
  const JpegImage image = ExtractOne(file);
  EXPECT_THAT(orientations_, ElementsAre(6));
  EXPECT_TRUE(image.IsNear(3, 2, kRed));
  EXPECT_TRUE(image.IsNear(3, 13, kBlue));
}

TEST_F(Images, KeepTheirUpperEdgeWhenTurned) {
  const std::string image = HexImage(8, 16, "/ColorSpace/DeviceRGB/BitsPerComponent 8",
                                     Repeat("00FF00", 64) + Repeat("0000FF", 64));
  EXPECT_TRUE(ExtractOne(Page(image, "0 -9 9 0 0 0 cm /I Do")).IsNear(13, 3, kGreen));
  EXPECT_TRUE(ExtractOne(Page(image, "0 9 -9 0 0 0 cm /I Do")).IsNear(2, 3, kGreen));
  EXPECT_TRUE(ExtractOne(Page(image, "9 0 0 -9 0 0 cm /I Do")).IsNear(3, 13, kGreen));
}

TEST_F(Images, CountEachTimeTheyAreDrawn) {
  ASSERT_TRUE(Open(Page(RedBlue(), "/I Do q -1 0 0 1 0 0 cm /I Do Q /I Do")));
  const auto files = Extract();
  ASSERT_EQ(files.size(), 3U);
  EXPECT_THAT(orientations_, ElementsAre(1, 2, 1));
  EXPECT_EQ(ReadBytes(files[0]), ReadBytes(files[2]));
  EXPECT_TRUE(ReadJpeg(files[1]).IsNear(3, 3, kBlue));
}

TEST_F(Images, AreFoundInForms) {
  TestPdf file =
      Page(Stream("/Subtype/Form/BBox[0 0 9 9]/Matrix[-1 0 0 1 0 0]/Resources<</XObject"
                  "<</J {{inner}}>>>>",
                  "/J Do"));
  file.Object("inner", Stream("/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</K {{red}}>>>>",
                              "/K Do /K Do"));
  file.Object("red", RedBlue());
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
  EXPECT_THAT(orientations_, ElementsAre(2, 2));
  EXPECT_EQ(Extract(1, 0).size(), 0U);
}

TEST_F(Images, AreFoundInFormsThatTakeThePagesResources) {
  TestPdf file;
  file.Page()
      .Content("/F Do")
      .Object("form", Stream("/Subtype/Form/BBox[0 0 9 9]", "/I Do"))
      .Object("image", RedBlue())
      .PageEntry("/Resources <</XObject <</F {{form}}/I {{image}}>>>>");
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kRed));
}

TEST_F(Images, AreNotLookedForInFormsThatDrawThemselves) {
  TestPdf file =
      Page(Stream("/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</I {{image}}/J "
                  "{{red}}>>>>",
                  "/J Do /I Do /J Do"));
  file.Object("red", RedBlue());
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
}

TEST_F(Images, AreFoundInPatternsThatPaint) {
  TestPdf file;
  file.Page()
      .Content("/Pattern cs /P scn 0 0 9 9 re f 0 g 0 0 9 9 re f /Pattern cs /P scn")
      .Object("tile", Stream("/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9"
                             "/Resources<</XObject<</J {{red}}>>>>",
                             "/J Do"))
      .Object("red", RedBlue())
      .PageEntry("/Resources <</Pattern <</P {{tile}}>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 1U);
}

TEST_F(Images, AreFoundInlineWithAbbreviations) {
  const JpegImage image =
      ExtractOne(Page(RedBlue(), "BI /W 16 /H 8 /BPC 1 /CS [/I /RGB 1 <00FF000000FF>] /F /AHx ID " +
                                     Repeat("00FF", 8) + "> EI"));
  EXPECT_TRUE(image.IsNear(3, 3, kGreen));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, AreFoundInlineWithColorSpacesOfTheResources) {
  TestPdf file;
  file.Page()
      .Content("BI /W 8 /H 8 /BPC 8 /CS /X /F /AHx ID " + Repeat("00", 64) + "> EI")
      .PageEntry("/Resources <</ColorSpace <</X [/Indexed /DeviceRGB 0 <0000FF>]>>>>");
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kBlue));
}

TEST_F(Images, AreFoundInAnnotationsThatAreSeen) {
  TestPdf file;
  file.Page()
      .Content("")
      .Object("red", RedBlue())
      .Object("form", Stream("/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</J {{red}}>>>>",
                             "9 0 0 9 0 0 cm /J Do"))
      .Annotation("/Subtype/Stamp/Rect[0 0 9 9]/AP<</N {{form}}>>")
      .Annotation("/Subtype/Stamp/F 2/Rect[0 0 9 9]/AP<</N {{form}}>>")
      .Annotation("/Subtype/Widget/Rect[0 0 9 9]/AS/On/AP<</N<</On {{form}}/Off {{form}}>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
}

TEST_F(Images, AreNotFoundInLayersThatAreHidden) {
  TestPdf file = Page(RedBlue(), "/OC /L BDC /I Do EMC /OC /M BDC /I Do EMC /I Do");
  file.Object("hidden", "<</Type/OCG/Name(a)>>")
      .Object("seen", "<</Type/OCG/Name(b)>>")
      .PageEntry("/Resources <</XObject <</I {{image}}>>/Properties<</L {{hidden}}/M {{seen}}>>>>")
      .CatalogEntry("/OCProperties<</OCGs[{{hidden}} {{seen}}]/D<</OFF[{{hidden}}]>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
}

TEST_F(Images, GoOnInManyContentStreams) {
  TestPdf file;
  file.Page()
      .Object("one", Stream("", "q 9 0 0 9 0 0 cm"))
      .Object("two", Stream("", "/I Do Q"))
      .Object("image", RedBlue())
      .PageEntry("/Contents [{{one}} {{two}}] /Resources <</XObject <</I {{image}}>>>>");
  EXPECT_EQ(ExtractOne(file).width, 16);
}

TEST_F(Images, AreManyOnAPage) {
  std::string content;
  for (int i = 0; i < 10'000; ++i) {
    content += "/I Do ";
  }
  ASSERT_TRUE(Open(Page(RedBlue(), content)));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* all = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(all, 1);
  int count = 0;
  while (ExpaContentGetNextImage(all) != 0) {
    ++count;
  }
  EXPECT_EQ(count, 10'000);
}

TEST_F(Images, EndWhenFormsMultiply) {
  // Each form draws the next ten times: ten to the ninth images in the end, were there no bound.
  TestPdf file = Page(RedBlue(), "/F0 Do");
  std::string names;
  for (int i = 0; i < 9; ++i) {
    const std::string next = i < 8 ? "/F" + std::to_string(i + 1) : "/None";
    file.Object("f" + std::to_string(i),
                Stream("/Subtype/Form/BBox[0 0 9 9]", Repeat(next + " Do ", 10)));
    names += "/F" + std::to_string(i) + " {{f" + std::to_string(i) + "}}";
  }
  file.PageEntry("/Resources <</XObject <<" + names + "/I {{image}}>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 0U);
}

TEST_F(Images, TellTheirMatrix) {
  ASSERT_TRUE(Open(Page(RedBlue(), "q 2 0 0 3 10 20 cm 1 0 0 1 1 1 cm /I Do Q")));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  EXPECT_EQ(ExpaContentGetNextImage(content), 0);  // not reset yet
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaArgumentError);
  ExpaContentResetContent(content, 1);
  EXPECT_EQ(ExpaContentGetImage(content), nullptr);
  ASSERT_EQ(ExpaContentGetNextImage(content), 1);
  const TExpaMatrix* matrix = ExpaGSGetCTM(ExpaContentGetGraphicsState(content));
  EXPECT_EQ(matrix->a, 2);
  EXPECT_EQ(matrix->d, 3);
  EXPECT_EQ(matrix->e, 12);
  EXPECT_EQ(matrix->f, 23);
  EXPECT_EQ(matrix->is_skewed, 0);
  EXPECT_EQ(ExpaContentGetNextImage(content), 0);
  EXPECT_EQ(ExpaGSGetCTM(ExpaContentGetGraphicsState(content)), nullptr);
}

TEST_F(Images, TellWhyTheyCannotBeStored) {
  ASSERT_TRUE(Open(Page(RedBlue())));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(content, 1);
  ASSERT_EQ(ExpaContentGetNextImage(content), 1);
  TExpaImage* image = ExpaContentGetImage(content);
  EXPECT_EQ(ExpaImageStoreW(image, PathToWide(Path("missing/a.jpg")), kExpaJpeg), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaCreateError);
  EXPECT_EQ(ExpaImageStoreW(image, PathToWide(Path("a.png")), 12), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaArgumentError);
  EXPECT_EQ(ExpaImageChangeOrientation(image, 9), 0);
  if (testing::Exists("/dev/full")) {
    EXPECT_EQ(ExpaImageStoreW(image, PathToWide("/dev/full"), kExpaJpeg), 0);
    EXPECT_EQ(ExpaDocGetLastError(document_), kExpaWriteError);
  }
}

TEST_F(Images, NeedADocument) {
  EXPECT_EQ(ExpaDocOpenW(document_, PathToWide(Path("missing.pdf")), L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaFileError);
  testing::WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(ExpaDocOpenW(document_, PathToWide(Path("text.pdf")), L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaNotAPdfError);
  EXPECT_EQ(ExpaDocGetPageCount(document_), 0);
  EXPECT_EQ(ExpaDocSetPageNo(document_, 1), 0);
  EXPECT_EQ(ExpaDocGetPage(document_), nullptr);
  EXPECT_EQ(ExpaPageGetContent(nullptr), nullptr);
  EXPECT_EQ(ExpaDocOpenW(nullptr, L"", L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(nullptr), kExpaArgumentError);
}

}  // namespace
}  // namespace TarnixTools::engines
