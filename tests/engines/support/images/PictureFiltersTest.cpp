// Images behind the filters of images: fax, JPEG, JPEG 2000 and JBIG2 data.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/Jbig2Coder.h"
#include "engines/support/images/ImageInDocument.h"
#include "engines/support/images/Jbig2Image.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using testing::MakeJpeg;
using testing::RawPdf;
using testing::Rgb;

std::string Fax(int width, int height, const std::string& parameters) {
  return "/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/CCITTFaxDecode/Width " +
         std::to_string(width) + "/Height " + std::to_string(height) + "/DecodeParms<<" +
         parameters + ">>";
}

// A white row, one with four columns of each colour, another of that kind, the end of the block.
const std::string kGroup4 = FromHex("9B78008008");

TEST(FaxPicture, IsDecoded) {
  const std::string parameters = "/K -1/Columns 8";
  const std::string half = "FF FF FF FF 00 00 00 00\n";
  const std::string white = "FF FF FF FF FF FF FF FF\n";
  EXPECT_EQ(ImageInDocument(Fax(8, 3, parameters), kGroup4).Rows(), white + half + half);
  EXPECT_EQ(ImageInDocument(Fax(8, 1, parameters + "/BlackIs1 true"), kGroup4).Rows(),
            "00 00 00 00 00 00 00 00\n");
  EXPECT_EQ(ImageInDocument(Fax(8, 1, "/Columns 8"), FromHex("B6")).Rows(), half);
  EXPECT_EQ(ImageInDocument(Fax(8, 1, "/Columns 8/EncodedByteAlign true/EndOfLine true"),
                            FromHex("0001B60001"))
                .Rows(),
            half);
}

TEST(FaxPicture, IsWhiteWhereItsDataEnds) {
  ImageInDocument image(Fax(8, 64, "/K -1/Columns 8"), kGroup4);
  const Pixels pixels = image.Read();
  EXPECT_EQ(pixels.height, 64U);
  EXPECT_EQ(pixels.rows_with_data, 3U);
  EXPECT_EQ(pixels.At(7, 63), (Rgb{255, 255, 255}));
  EXPECT_EQ(image.Open()->held_bytes(), kGroup4.size());
  ExpectBitsLikeBytes(image);
}

TEST(FaxPicture, IsNoHigherThanItsDataCanBe) {
  ImageInDocument image(Fax(1'000'000, 1'000'000, "/K -1/Columns 1000000"), kGroup4);
  EXPECT_LT(image.Open()->height(), 100U);
}

TEST(FaxPicture, IsNotDecodedHereWithoutColumns) {
  for (const char* parameters : {"/K -1/Columns 0", "/Columns -8", "/Columns 2000000"}) {
    ImageInDocument image(Fax(8, 3, parameters), kGroup4);
    const RowSource* picture = image.Open();
    EXPECT_FALSE(picture != nullptr && picture->is_bilevel()) << parameters;
  }
}

TEST(FaxPicture, IsWhatPopplerSees) {
  TARNIX_NEED_PROGRAM("pdfimages");
  CcittEncoder encoder(100);
  unsigned state = 5;
  for (int y = 0; y < 40; ++y) {
    std::vector<unsigned char> row(13);
    for (unsigned char& byte : row) {
      state = state * 1664525 + 1013904223;
      byte = (state >> 28) < 5 ? static_cast<unsigned char>(state >> 16) : 0xFF;
    }
    encoder.AddRow(row.data(), 0);
  }
  encoder.Finish();
  ImageInDocument image(Fax(100, 40, "/K -1/Columns 100"), std::string(encoder.data()));
  const Pixels ours = image.Read();
  const testing::PnmImage theirs = image.ReadByPoppler();
  ASSERT_EQ(theirs.height, 40);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 100; ++x) {
      ASSERT_EQ(ours.At(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)),
                theirs.At(x, y))
          << x << " " << y;
    }
  }
}

std::string Jpeg(const std::string& entries) {
  return "/Width 16/Height 8/BitsPerComponent 8/Filter/DCTDecode" + entries;
}

TEST(JpegPicture, IsDecoded) {
  const std::string jpeg = MakeJpeg(16, 8, {250, 10, 10}, {10, 10, 250});
  ImageInDocument image(Jpeg("/ColorSpace/DeviceRGB"), jpeg);
  const Pixels pixels = image.Read();
  EXPECT_EQ(pixels.width, 16U);
  EXPECT_NEAR(pixels.At(3, 3)[0], 250, 4);
  EXPECT_NEAR(pixels.At(12, 3)[2], 250, 4);
  EXPECT_GE(image.Open()->held_bytes(), jpeg.size());
  const Pixels gray = ImageInDocument(Jpeg("/ColorSpace/DeviceGray"), MakeJpeg(16, 8, {90})).Read();
  EXPECT_EQ(gray.layout, PixelLayout::kGray);
  EXPECT_NEAR(gray.At(5, 5)[0], 90, 2);
}

TEST(JpegPicture, HasTheColorsOfItsDataWhereTheSpaceDoesNotFit) {
  const std::string jpeg = MakeJpeg(16, 8, {250, 10, 10});
  for (const char* space : {"/ColorSpace/DeviceGray", "/ColorSpace/DeviceCMYK", ""}) {
    EXPECT_NEAR(ImageInDocument(Jpeg(space), jpeg).Read().At(3, 3)[0], 250, 4) << space;
  }
}

TEST(JpegPicture, IsDecodedWithItsDecodeArrayAndPalette) {
  const std::string jpeg = MakeJpeg(16, 8, {250, 10, 10});
  EXPECT_NEAR(
      ImageInDocument(Jpeg("/ColorSpace/DeviceRGB/Decode[1 0 1 0 1 0]"), jpeg).Read().At(3, 3)[0],
      5, 4);
  EXPECT_EQ(ImageInDocument(Jpeg("/ColorSpace[/Indexed/DeviceRGB 0<00FF00>]"), MakeJpeg(16, 8, {0}))
                .Read()
                .At(3, 3),
            (Rgb{0, 255, 0}));
}

TEST(JpegPicture, MayComeOutSmaller) {
  ImageInDocument image(
      "/Width 64/Height 64/BitsPerComponent 8/Filter/DCTDecode/ColorSpace/DeviceGray",
      MakeJpeg(64, 64, {90}));
  const Pixels pixels = image.Read({.width = 16, .height = 16});
  EXPECT_EQ(pixels.width, 16U);
  EXPECT_NEAR(pixels.At(15, 15)[0], 90, 2);
}

TEST(JpegPicture, IsWhiteWhereItsDataIsCut) {
  const std::string jpeg = MakeJpeg(64, 640, {10}, {200});
  ImageInDocument image(
      "/Width 64/Height 640/BitsPerComponent 8/Filter/DCTDecode/ColorSpace/DeviceGray",
      jpeg.substr(0, jpeg.size() / 2));
  const Pixels pixels = image.Read();
  EXPECT_EQ(pixels.height, 640U);
  EXPECT_NEAR(pixels.At(3, 3)[0], 10, 4);
}

TEST(JpegPicture, IsNoneWithoutAHeader) {
  EXPECT_EQ(ImageInDocument(Jpeg("/ColorSpace/DeviceRGB"), "no JPEG").Open(), nullptr);
}

std::string Jpx(const std::string& entries) {
  return "/Width 16/Height 8/Filter/JPXDecode" + entries;
}

TEST(JpxPicture, HasTheColorsOfItsData) {
  for (const char* space : {"", "/ColorSpace/DeviceRGB", "/ColorSpace/DeviceGray"}) {
    ImageInDocument image(Jpx(space), FromHex(testing::kRedBlueJpx));
    const Pixels pixels = image.Read();
    EXPECT_EQ(pixels.width, 16U) << space;
    EXPECT_EQ(pixels.rows_with_data, 8U) << space;
    EXPECT_EQ(pixels.At(3, 3), (Rgb{255, 0, 0})) << space;
    EXPECT_EQ(pixels.At(12, 7), (Rgb{0, 0, 255})) << space;
    EXPECT_EQ(image.Open()->held_bytes(), 16U * 8 * 3) << space;
  }
}

TEST(JpxPicture, UsesItsAlphaWhereItIsToldTo) {
  const std::string data = FromHex(testing::kGrayAlphaJpx);
  const Pixels plain = ImageInDocument(Jpx("/ColorSpace/DeviceGray/Decode[1 0]"), data).Read();
  EXPECT_EQ(plain.At(3, 3), (Rgb{0, 0, 0}));
  EXPECT_EQ(plain.At(12, 3), (Rgb{80, 80, 80}));
  const Pixels seen = ImageInDocument(Jpx("/SMaskInData 1"), data).Read();
  EXPECT_EQ(seen.At(3, 3), (Rgb{0, 0, 0}));
  EXPECT_NEAR(seen.At(12, 3)[0], 167, 1);
}

TEST(JpxPicture, MayBeIndicesOrAMask) {
  const std::string data = FromHex(testing::kGrayAlphaJpx);
  const Pixels indexed =
      ImageInDocument(Jpx("/ColorSpace[/Indexed/DeviceRGB 80<" + Repeat("00FF00", 80) + "0000FF>]"),
                      data)
          .Read();
  EXPECT_EQ(indexed.At(3, 3), (Rgb{0, 255, 0}));
  EXPECT_EQ(indexed.At(12, 3), (Rgb{0, 0, 255}));
  const Pixels mask = ImageInDocument(Jpx("/ImageMask true/Decode[1 0]"), data).Read();
  EXPECT_EQ(mask.At(3, 3), (Rgb{255, 255, 255}));
}

TEST(JpxPicture, IsWhatPopplerSees) {
  TARNIX_NEED_PROGRAM("pdfimages");
  const testing::PnmImage theirs =
      ImageInDocument(Jpx(""), FromHex(testing::kRedBlueJpx)).ReadByPoppler();
  ASSERT_EQ(theirs.width, 16);
  EXPECT_EQ(theirs.At(3, 3), (Rgb{255, 0, 0}));
  EXPECT_EQ(theirs.At(12, 7), (Rgb{0, 0, 255}));
}

std::string Jbig2(const std::string& entries = "") {
  return "/Width 120/Height 12/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/JBIG2Decode" +
         entries;
}

TEST(Jbig2Picture, IsDecodedHereWhereSymbolsAreRefined) {
  ImageInDocument image(Jbig2(), FromHex(testing::kRefinedJbig2));
  EXPECT_TRUE(IsOwnJbig2(image.Image(), image.Facts()));
  const Pixels pixels = image.Read();
  EXPECT_EQ(pixels.rows_with_data, 12U);
  EXPECT_EQ(pixels.At(3, 4), (Rgb{0, 0, 0}));
  EXPECT_EQ(pixels.At(0, 0), (Rgb{255, 255, 255}));
}

TEST(Jbig2Picture, IsWhatPopplerSees) {
  TARNIX_NEED_PROGRAM("pdfimages");
  ImageInDocument image(Jbig2(), FromHex(testing::kRefinedJbig2));
  const Pixels ours = image.Read();
  const testing::PnmImage theirs = image.ReadByPoppler();
  ASSERT_EQ(theirs.height, 12);
  for (std::uint32_t y = 0; y < 12; ++y) {
    for (std::uint32_t x = 0; x < 120; ++x) {
      ASSERT_EQ(ours.At(x, y), theirs.At(static_cast<int>(x), static_cast<int>(y)))
          << x << " " << y;
    }
  }
}

TEST(Jbig2Picture, TakesItsGlobals) {
  const std::string data = FromHex(testing::kRefinedJbig2);
  constexpr std::size_t kPageEnd = 30;
  constexpr std::size_t kSymbolsEnd = 97;
  const std::string symbols = data.substr(kPageEnd, kSymbolsEnd - kPageEnd);
  const std::string rest = data.substr(0, kPageEnd) + data.substr(kSymbolsEnd);
  ImageInDocument image(Jbig2("/DecodeParms<</JBIG2Globals 11 0 R>>"), rest,
                        RawPdf().Stream(11, "", symbols));
  EXPECT_EQ(image.Read().bytes, ImageInDocument(Jbig2(), data).Read().bytes);
}

TEST(Jbig2Picture, IsNotDecodedHereWhenItsGlobalsAreLost) {
  ImageInDocument image(Jbig2("/DecodeParms<</JBIG2Globals 11 0 R>>"),
                        FromHex(testing::kRefinedJbig2),
                        RawPdf().Stream(11, "/Filter/NoFilter", "x"));
  EXPECT_FALSE(DecodeJbig2Image(image.Image(), image.Facts()));
}

class PdfiumJbig2 : public NeedsPdfium {};

TEST_F(PdfiumJbig2, IsDecodedByPdfiumWhereNothingIsOdd) {
  using namespace testing::jbig2;
  Coder coder;
  coder.PutGeneric(Painted(16, 8, [](int x, int) { return x < 8; }));
  ImageInDocument image(
      "/Width 16/Height 8/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/JBIG2Decode",
      Page(16, 8) +
          Segment(1, 38, RegionInformation(16, 8) + kTemplate3 + kAdaptive + coder.Finish()));
  EXPECT_FALSE(IsOwnJbig2(image.Image(), image.Facts()));
  const Pixels pixels = image.Read();
  EXPECT_EQ(pixels.layout, PixelLayout::kGray);
  EXPECT_EQ(pixels.At(3, 3), (Rgb{0, 0, 0}));
  EXPECT_EQ(pixels.At(12, 7), (Rgb{255, 255, 255}));
}

TEST(UnknownFilter, MakesNoPicture) {
  EXPECT_EQ(ImageInDocument("/Width 1/Height 1/Filter/NoSuchDecode", "x").Open(), nullptr);
  EXPECT_EQ(ImageInDocument("/Width 1/Height 1/Filter[/DCTDecode/ASCIIHexDecode]", "x").Open(),
            nullptr);
}

}  // namespace
}  // namespace TarnixTools::engines
