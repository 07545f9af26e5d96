// Samples of images as pixels: depths, colour spaces, decode arrays, data that is missing.
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/parser/ImagesFixture.h"
#include "pdf/filters/Filters.h"
#include "support/TestImages.h"

namespace TarnixTools::engines::parser {
namespace {

using ::testing::ElementsAre;

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

TEST_F(Images, TakeTheLastColorForIndicesBeyondThePalette) {
  EXPECT_TRUE(
      ExtractImage(HexImage(8, 8, "/ColorSpace[/Indexed/DeviceRGB 0 <FF0000>]/BitsPerComponent 8",
                            Repeat("07", 64)))
          .IsNear(4, 4, kRed));
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
      const std::size_t digit = static_cast<std::size_t>(y) * 6 + static_cast<std::size_t>(x) / 4;
      const int bits = std::stoi(hex.substr(digit, 1), nullptr, 16);
      const bool is_white = (bits >> (3 - x % 4) & 1) != 0;
      EXPECT_TRUE(image.IsNear(x, y, is_white ? kWhite : kBlack, 3)) << x << " " << y;
    }
  }
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

TEST_F(Images, AreDecodedWithAnIccProfile) {
  TestPdf file = Page(HexImage(16, 8, "/ColorSpace[/ICCBased {{profile}}]/BitsPerComponent 8",
                               Repeat("FF0000", 128)));
  file.Object("profile", Stream("/N 3", testing::TestRgbProfile(2.2, true)));
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kBlue, 12));
}

TEST_F(Images, TakeTheDefaultColorSpacesOfTheResources) {
  const std::string red =
      HexImage(16, 8, "/ColorSpace/DeviceRGB/BitsPerComponent 8", Repeat("FF0000", 128));
  const std::string indexed = HexImage(
      8, 8, "/ColorSpace[/Indexed/DeviceRGB 0<FF0000>]/BitsPerComponent 8", Repeat("00", 64));
  for (const std::string& image : {red, indexed}) {
    TestPdf file;
    file.Page()
        .Content("/I Do")
        .Object("image", image)
        .Object("profile", Stream("/N 3", testing::TestRgbProfile(2.2, true)))
        .PageEntry(
            "/Resources<</XObject<</I {{image}}>>/ColorSpace<</DefaultRGB[/ICCBased {{profile}}]"
            "/DefaultGray[/ICCBased {{profile}}]>>>>");
    EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kBlue, 12));
  }
}

TEST_F(Images, OverlookDefaultColorSpacesOfOtherComponents) {
  TestPdf file;
  file.Page()
      .Content("/I Do")
      .Object("image",
              HexImage(8, 8, "/ColorSpace/DeviceGray/BitsPerComponent 8", Repeat("00", 64)))
      .Object("profile", Stream("/N 3", testing::TestRgbProfile(2.2, true)))
      .PageEntry(
          "/Resources<</XObject<</I {{image}}>>/ColorSpace<</DefaultGray[/ICCBased "
          "{{profile}}]>>>>");
  const JpegImage image = ExtractOne(file);
  EXPECT_EQ(image.components, 1);
  EXPECT_TRUE(image.IsNear(3, 3, kBlack));
}

// More than is decoded at once.
TEST_F(Images, AreDecodedFromDeflatedDataRowByRow) {
  constexpr int kWidth = 24'000;
  constexpr int kHeight = 24'000;
  std::string rows;
  for (int y = 0; y < kHeight; ++y) {
    rows += '\0';
    rows += std::string(kWidth / 16, y < kHeight / 2 ? '\0' : '\xFF') +
            std::string(kWidth / 16, y < kHeight / 2 ? '\xFF' : '\0');
  }
  std::string deflated;
  pdf::DeflateTo(deflated, rows, 1);
  const std::string entries =
      "/Type/XObject/Subtype/Image/Filter/FlateDecode/ColorSpace/DeviceGray/BitsPerComponent 1"
      "/DecodeParms<</Predictor 15/Columns 24000/BitsPerComponent 1>>/Width 24000/Height 24000";
  const JpegImage image = ExtractImage(Stream(entries, deflated));
  ASSERT_EQ(image.height, kHeight);
  EXPECT_TRUE(image.IsNear(10, 10, kBlack));
  EXPECT_TRUE(image.IsNear(kWidth - 10, 10, kWhite));
  EXPECT_TRUE(image.IsNear(10, kHeight - 10, kWhite));
  EXPECT_TRUE(troubles_.empty());
}

}  // namespace
}  // namespace TarnixTools::engines::parser
