// Samples of images as pixels: depths, colour spaces, decode arrays, data that is missing.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/images/ImageInDocument.h"
#include "engines/support/images/ImageLimits.h"
#include "pdf/Error.h"
#include "pdf/filters/Filters.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::RawPdf;
using testing::Rgb;

std::string Size(int width, int height) {
  return "/Width " + std::to_string(width) + "/Height " + std::to_string(height);
}

std::string Gray(int bits, const std::string& more = "") {
  return "/ColorSpace/DeviceGray/BitsPerComponent " + std::to_string(bits) + more;
}

// The rows of an image of this size; the data in hexadecimal.
std::string RowsOf(int width, int height, const std::string& entries, const std::string& hex) {
  return ImageInDocument(Size(width, height) + entries, FromHex(hex)).Rows();
}

TEST(PictureSamples, AreGrayOfAnyDepth) {
  const std::vector<std::pair<int, std::string>> cases = {
      {1, "50"}, {2, "1B"}, {4, "05AF"}, {8, "0055AAFF"}, {16, "00005500AAFFFFFF"}};
  for (const auto& [bits, hex] : cases) {
    EXPECT_EQ(RowsOf(4, 1, Gray(bits), hex), bits == 1 ? "00 FF 00 FF\n" : "00 55 AA FF\n") << bits;
  }
}

TEST(PictureSamples, AreOfSeveralComponents) {
  EXPECT_EQ(RowsOf(2, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 8", "010203FFFEFD"),
            "010203 FFFEFD\n");
  EXPECT_EQ(RowsOf(2, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 4", "0F80F8"), "00FF88 00FF88\n");
  EXPECT_EQ(RowsOf(1, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 16", "1234567890AB"), "125690\n");
  EXPECT_EQ(RowsOf(3, 1, "/ColorSpace/DeviceCMYK/BitsPerComponent 8", "00000000FFFFFFFFFFFFFFFF"),
            "FFFFFF 000000 000000\n");
}

TEST(PictureSamples, StandForOtherValuesByTheirDecodeArray) {
  EXPECT_EQ(RowsOf(4, 1, Gray(1, "/Decode[1 0]"), "50"), "FF 00 FF 00\n");
  EXPECT_EQ(RowsOf(4, 1, Gray(2, "/Decode[0 .5]"), "1B"), "00 2B 55 80\n");
  EXPECT_EQ(RowsOf(1, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 8/Decode[1 0 0 1 0 1]", "102030"),
            "EF2030\n");
  EXPECT_EQ(RowsOf(4, 1, Gray(1, "/Decode[-5 9]"), "50"), "00 FF 00 FF\n");
  // One that is too short counts as none.
  EXPECT_EQ(RowsOf(1, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 8/Decode[1 0 1]", "102030"),
            "102030\n");
}

TEST(PictureSamples, AreIndicesOfPalettes) {
  const std::string palette = "/ColorSpace[/Indexed/DeviceRGB 2<FF000000FF000000FF>]";
  EXPECT_EQ(RowsOf(4, 1, palette + "/BitsPerComponent 2", "1B"), "FF0000 00FF00 0000FF 0000FF\n");
  EXPECT_EQ(RowsOf(2, 1, palette + "/BitsPerComponent 2/Decode[2 5]", "10"), "0000FF 0000FF\n");
  EXPECT_EQ(RowsOf(2, 1, "/ColorSpace[/Indexed/DeviceGray 1<40C0>]/BitsPerComponent 1", "40"),
            "40 C0\n");
}

TEST(PictureSamples, OfAMaskAreTheBlackPictureThatItPaints) {
  EXPECT_EQ(RowsOf(4, 1, "/ImageMask true", "50"), "00 FF 00 FF\n");
  EXPECT_EQ(RowsOf(4, 1, "/ImageMask true/Decode[1 0]/BitsPerComponent 8", "50"), "FF 00 FF 00\n");
}

TEST(PictureSamples, WithinTheColorKeyAreWhite) {
  EXPECT_EQ(RowsOf(4, 1, Gray(8, "/Mask[85 170]"), "0055AAFF"), "00 FF FF FF\n");
  EXPECT_EQ(
      RowsOf(2, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 8/Mask[1 1 2 2 3 3]", "010203010204"),
      "FFFFFF 010204\n");
  EXPECT_EQ(RowsOf(2, 1, Gray(16, "/Mask[4660 4660]"), "12341300"), "FF 13\n");
  EXPECT_EQ(
      RowsOf(2, 1, "/ColorSpace[/Indexed/DeviceRGB 1<FF000000FF00>]/BitsPerComponent 1/Mask[0 0]",
             "40"),
      "FFFFFF 00FF00\n");
  // A key that is too short counts as none.
  EXPECT_EQ(RowsOf(1, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 8/Mask[1 1]", "010203"),
            "010203\n");
}

TEST(PictureSamples, AreWhiteWhereTheyAreMissing) {
  ImageInDocument image(Size(4, 3) + Gray(8), FromHex("010203040506"));
  const Pixels pixels = image.Read();
  EXPECT_EQ(pixels.Text(), "01 02 03 04\n05 06 FF FF\nFF FF FF FF\n");
  EXPECT_EQ(pixels.rows_with_data, 1U);
  // A pixel of which a component is missing is missing too.
  EXPECT_EQ(RowsOf(2, 1, "/ColorSpace/DeviceRGB/BitsPerComponent 8", "0102030405"),
            "010203 FFFFFF\n");
}

TEST(PictureSamples, AreBitsOfPicturesInBlackAndWhite) {
  for (const char* entries :
       {"/ImageMask true", "/ImageMask true/Decode[1 0]",
        "/ColorSpace/DeviceGray/BitsPerComponent 1",
        "/ColorSpace[/Indexed/DeviceRGB 1<FFFFFF000000>]/BitsPerComponent 1"}) {
    ImageInDocument image(Size(11, 3) + entries, FromHex("A5C03C20"));
    ExpectBitsLikeBytes(image);
  }
  ImageInDocument gray(Size(8, 1) + "/ColorSpace[/Indexed/DeviceGray 1<40C0>]/BitsPerComponent 1",
                       "x");
  EXPECT_FALSE(gray.Open()->is_bilevel());
}

TEST(PictureSamples, AreThoseThatPopplerSees) {
  TARNIX_NEED_PROGRAM("pdfimages");
  std::string samples;
  for (int i = 0; i < 600; ++i) {
    samples += static_cast<char>(i * 37 % 251);
  }
  for (const char* entries :
       {"/ColorSpace/DeviceRGB/BitsPerComponent 8", "/ColorSpace/DeviceRGB/BitsPerComponent 2",
        "/ColorSpace/DeviceGray/BitsPerComponent 8", "/ColorSpace/DeviceGray/BitsPerComponent 1",
        "/ColorSpace/DeviceRGB/BitsPerComponent 8/Decode[1 0 0 1 .2 .8]",
        "/ColorSpace[/Indexed/DeviceRGB 15(abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuv)]"
        "/BitsPerComponent 4"}) {
    ImageInDocument image(Size(14, 14) + entries, samples);
    const Pixels ours = image.Read();
    const testing::PnmImage theirs = image.ReadByPoppler();
    ASSERT_EQ(theirs.width, 14) << entries;
    for (int y = 0; y < 14; ++y) {
      for (int x = 0; x < 14; ++x) {
        const Rgb found = ours.At(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y));
        for (std::size_t i = 0; i < 3; ++i) {
          EXPECT_NEAR(found[i], theirs.At(x, y)[i], 1) << entries << " " << x << " " << y;
        }
      }
    }
  }
}

TEST(PictureSamples, AreCutWhereTheSizeIsFarFromTheData) {
  ImageInDocument image(Size(1'000'000, 1'000'000) + Gray(1), "x");
  RowSource* picture = image.Open();
  EXPECT_EQ(picture->width(), 1'000'000U);
  EXPECT_LT(picture->height(), 100U);
}

// An image of 2,000 by 1,100 pixels, more than is decoded at once where less is wanted.
class DeflatedRows : public ::testing::Test {
 protected:
  static std::string Deflated(int row_bytes, int rows, const std::string& start = "") {
    std::string samples;
    for (int y = 0; y < rows; ++y) {
      samples += start + std::string(static_cast<std::size_t>(row_bytes), static_cast<char>(y));
    }
    std::string deflated;
    pdf::DeflateTo(deflated, samples, 1);
    return deflated;
  }

  static std::string Entries(int bits) {
    return Size(2'000, 1'100) + Gray(bits) + "/Filter/FlateDecode";
  }
};

TEST_F(DeflatedRows, AreDecodedOneByOneWhereLessIsWanted) {
  ImageInDocument image(Entries(8), Deflated(2'000, 1'100));
  RowSource* picture = image.Open({.width = 10, .height = 10});
  ASSERT_EQ(picture->height(), 1'100U);
  EXPECT_LT(picture->held_bytes(), 100'000U);
  const Pixels pixels = ReadAll(*picture);
  EXPECT_EQ(pixels.rows_with_data, 1'100U);
  EXPECT_EQ(pixels.At(5, 77)[0], 77);
  EXPECT_EQ(pixels.At(1'999, 1'099)[0], 1'099 % 256);
  EXPECT_EQ(image.Read().bytes, pixels.bytes);
}

TEST_F(DeflatedRows, AreWhiteBehindTheEndOfTheData) {
  ImageInDocument image(Entries(8), Deflated(2'000, 20));
  const Pixels pixels = image.Read({.width = 10, .height = 10});
  EXPECT_EQ(pixels.rows_with_data, 20U);
  EXPECT_EQ(pixels.At(0, 19)[0], 19);
  EXPECT_EQ(pixels.At(0, 20)[0], 255);
}

TEST_F(DeflatedRows, AreBitsToo) {
  const std::string size = "/Width 16000/Height 1100/Filter/FlateDecode";
  ImageInDocument image(size + Gray(1), Deflated(2'000, 1'000));
  RowSource* picture = image.Open({.width = 10, .height = 10});
  ASSERT_TRUE(picture->is_bilevel());
  std::vector<std::uint8_t> bits(2'000);
  for (int y = 0; y < 1'000; ++y) {
    ASSERT_TRUE(picture->ReadBits(bits.data()));
    EXPECT_EQ(bits[1'999], y % 256);
  }
  EXPECT_FALSE(picture->ReadBits(bits.data()));
  EXPECT_EQ(bits[0], 255);
}

TEST_F(DeflatedRows, MayBePredicted) {
  const std::string predictor = "/DecodeParms<</Predictor 15/Columns 2000>>";
  // Each row adds up from the one above (PNG's filter Up).
  ImageInDocument image(Entries(8) + predictor, Deflated(2'000, 1'100, "\2"));
  const Pixels pixels = image.Read({.width = 10, .height = 10});
  EXPECT_EQ(pixels.At(3, 2)[0], 3);
  EXPECT_EQ(pixels.At(3, 100)[0], 100 * 101 / 2 % 256);
}

TEST_F(DeflatedRows, AreRefusedWhereTheyWouldNeverEnd) {
  ImageInDocument image(
      "/Width 1000000/Height 1000000/ColorSpace/DeviceGray/BitsPerComponent 8/Filter/FlateDecode",
      Deflated(10, 1) + std::string(5'000'000, 'x'));
  try {
    image.Open({.width = 10, .height = 10});
    ADD_FAILURE() << "it opened";
  } catch (const pdf::Error& error) {
    EXPECT_EQ(error.code(), pdf::ErrorCode::kLimitExceeded);
  }
}

class SpotColors : public NeedsPdfium {};

TEST_F(SpotColors, AreDecodedByPdfium) {
  const std::string separation =
      "/BitsPerComponent 8/ColorSpace[/Separation/Spot/DeviceRGB<</FunctionType 2/Domain[0 1]/N 1"
      "/C0[1 1 1]/C1[0 1 0]>>]";
  ImageInDocument image(Size(4, 2) + separation, FromHex("0000FFFF0000FFFF"));
  const Pixels pixels = image.Read();
  EXPECT_EQ(pixels.layout, PixelLayout::kRgb);
  EXPECT_EQ(pixels.At(0, 1), (Rgb{255, 255, 255}));
  EXPECT_EQ(pixels.At(3, 1), (Rgb{0, 255, 0}));
  EXPECT_GT(image.Open()->held_bytes(), 100U);
}

TEST_F(SpotColors, AreDecodedByPdfiumInline) {
  testing::RawPdf file;
  ImageInDocument document("", "", file);
  pdf::Arena arena;
  const std::string space =
      "[/Separation/Spot/DeviceGray<</FunctionType 2/Domain[0 1]/N 1/C0[1]/C1[0]>>]";
  const std::string bytes =
      RawPdf()
          .Object(
              1,
              "<</Type/Catalog/Pages<</Kids[]>>/I<</Width 2/Height 1/Length 2/BitsPerComponent 8"
              "/ColorSpace" +
                  space + ">>>>")
          .Table();
  const auto inline_document = testing::OpenBytes(bytes);
  const DocumentImage image{
      .document = inline_document.get(),
      .number = 0,
      .dictionary = inline_document->Resolve(inline_document->Catalog(arena).Get("I"), arena),
      .data = std::string_view("\0\xFF", 2),
      .color_spaces = {}};
  const RowSourcePtr picture = OpenPicture(image, FactsOf(image, arena));
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(ReadAll(*picture).At(0, 0), (Rgb{255, 255, 255}));
}

TEST_F(SpotColors, AreNotDecodedWhereTheyAreTooMany) {
  ImageInDocument image(Size(60'000, 60'000) + "/BitsPerComponent 8/ColorSpace[/Separation]", "x");
  EXPECT_EQ(image.Open(), nullptr);
}

}  // namespace
}  // namespace TarnixTools::engines
