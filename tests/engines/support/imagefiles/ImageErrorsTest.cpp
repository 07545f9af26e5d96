// In which words image files are refused.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/imagefiles/OpenedImage.h"
#include "support/TestImages.h"
#include "support/TestTiff.h"

namespace TarnixTools::engines {
namespace {

using testing::Big16;
using testing::Big32;
using testing::Little16;
using testing::Little32;
using testing::OpenedImage;
using testing::PngChunk;
using testing::TestPng;
using testing::TestTiff;

std::string MessageOf(const std::string& bytes) {
  try {
    OpenedImage(bytes).Embed();
  } catch (const ImageError& error) {
    return error.what();
  }
  return "";
}

std::string Bmp(int bits, std::uint32_t compression, const std::string& pixels) {
  return "BM" + Little32(0) + Little32(0) + Little32(54) + Little32(40) + Little32(1) +
         Little32(1) + Little16(1) + Little16(static_cast<std::uint32_t>(bits)) +
         Little32(compression) + std::string(20, '\0') + pixels;
}

TEST(ImageErrors, TellWhatIsWrongWithAnUnknownFile) {
  EXPECT_EQ(MessageOf("no image"), "the file is no image of a known kind");
  EXPECT_EQ(MessageOf(""), "the file is no image of a known kind");
}

TEST(ImageErrors, TellWhatIsWrongWithABitmap) {
  EXPECT_EQ(MessageOf(Bmp(24, 4, "abc")), "a kind of bitmap that cannot be read");
  EXPECT_EQ(MessageOf(Bmp(24, 0, "")), "the bitmap ends before the picture starts");
  EXPECT_EQ(MessageOf(Bmp(16, 3, Little32(5) + Little32(1) + Little32(2) + "abcd")),
            "a bitmap with odd colour masks");
}

TEST(ImageErrors, TellWhatIsWrongWithGifAndWebpAndMaps) {
  EXPECT_EQ(MessageOf("GIF87a" + std::string(7, '\0') + ";"),
            "the GIF data ends before a picture starts");
  EXPECT_EQ(MessageOf("RIFF" + Little32(4) + "WEBP"),
            "the WebP data ends before the picture starts");
  const std::string lossless = "\x2F" + Little32(0x00000000) + "xxxxx";
  EXPECT_EQ(MessageOf("RIFF" + Little32(12 + lossless.size()) + "WEBPVP8L" +
                      Little32(static_cast<std::uint32_t>(lossless.size())) + lossless),
            "the WebP picture cannot be decoded");
  EXPECT_EQ(MessageOf("P6 x"), "the header of the portable map is damaged");
  EXPECT_EQ(MessageOf("P5 0 1 255\nabc"), "the picture has no pixels");
  EXPECT_EQ(MessageOf("P5 99999999 99999999 255\nabc"), "the picture is too large");
}

TEST(ImageErrors, TellWhatIsWrongWithAJpeg) {
  const std::string jpeg = testing::TestJpeg(3);
  EXPECT_EQ(MessageOf(jpeg.substr(0, 30)), "the JPEG data ends before the picture starts");
  std::string deep = jpeg;
  deep[deep.find("\xFF\xC0") + 4] = 12;
  EXPECT_EQ(MessageOf(deep), "a kind of JPEG that PDF does not have");
  std::string arithmetic = jpeg;  // of codes that are none
  arithmetic[arithmetic.find("\xFF\xC0") + 1] = '\xC9';
  arithmetic[arithmetic.find("\xFF\xDA") + 4] = 9;
  EXPECT_EQ(MessageOf(arithmetic), "a kind of JPEG that PDF does not have");
  EXPECT_EQ(MessageOf("\xFF\x4F\xFF\x51" + Big16(40)),
            "the JPEG 2000 data ends before the picture starts");
}

TEST(ImageErrors, TellWhatIsWrongWithAPng) {
  TestPng png{.width = 1, .height = 1, .bits = 8, .color_type = 2, .rows = std::string("\0abc", 4)};
  EXPECT_EQ(MessageOf(png.Bytes().substr(0, 33)), "the PNG data ends before the picture starts");
  png.bits = 3;
  EXPECT_EQ(MessageOf(png.Bytes()), "the PNG header says what PNG does not have");
  TestPng bomb{.width = 16'000, .height = 16'000, .bits = 8, .color_type = 6, .rows = "abc"};
  EXPECT_EQ(MessageOf(bomb.Bytes()), "most of the picture is missing");
}

TEST(ImageErrors, TellWhatIsWrongWithATiff) {
  EXPECT_EQ(MessageOf(std::string("II*\0", 4) + Little32(8)), "the TIFF file has no picture");
  TestTiff gray;
  gray.Sides(2, 1).Set(258, {8}).Set(259, {1}).Set(262, {1}).Set(277, {1}).Data({"ab"});
  EXPECT_EQ(MessageOf(gray.Bytes()), "");
  EXPECT_EQ(MessageOf(TestTiff(gray).Set(277, {99}).Bytes()),
            "a TIFF picture of too many samples per pixel");
  EXPECT_EQ(MessageOf(TestTiff(gray).Set(259, {12345}).Bytes()),
            "a compression of TIFF that cannot be decoded");
  EXPECT_EQ(MessageOf(TestTiff(gray).Set(259, {8}).Bytes()),
            "nothing of the TIFF picture can be decoded");
  TestTiff tiles;
  tiles.Sides(2, 1).Set(258, {8}).Set(259, {8}).Set(262, {1}).Set(277, {1});
  tiles.Set(322, {16}).Set(323, {16}).Data({"no tile"}, true);
  EXPECT_EQ(MessageOf(tiles.Bytes()), "nothing of the TIFF picture can be decoded");
  EXPECT_EQ(MessageOf(TestTiff(gray).Set(262, {3}).Bytes()), "the palette is missing");
  EXPECT_EQ(MessageOf(TestTiff(gray).Set(262, {32844}).Bytes()),
            "the TIFF picture cannot be decoded");
}

}  // namespace
}  // namespace TarnixTools::engines
