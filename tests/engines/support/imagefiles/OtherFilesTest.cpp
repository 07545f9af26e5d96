// GIF, BMP, PNM, JPEG 2000 and WebP files: what tests/scripts/check_images, which compares pixels
// of whole pictures, does not look at.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/pictures/ImageError.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using testing::Big16;
using testing::Big32;
using testing::ImageCodeOf;
using testing::Little16;
using testing::Little32;
using testing::OpenedImage;

// Codes of 3 bits for two colours, each behind a clear code, which needs no table.
std::string GifData(const std::string& indices) {
  std::string bits;
  const auto put = [&](int code) {
    for (int i = 0; i < 3; ++i) {
      bits += (code >> i & 1) != 0 ? '1' : '0';
    }
  };
  for (const char index : indices) {
    put(4);
    put(index - '0');
  }
  put(5);
  std::string data;
  for (std::size_t i = 0; i < bits.size(); i += 8) {
    int byte = 0;
    for (std::size_t k = 0; k < 8 && i + k < bits.size(); ++k) {
      byte |= (bits[i + k] - '0') << k;
    }
    data += static_cast<char>(byte);
  }
  return std::string("\x02") + static_cast<char>(data.size()) + data + '\0';
}

// Four colours, "abc" to "jkl".
std::string Gif(std::uint32_t screen_width, std::uint32_t screen_height, const std::string& rest) {
  return "GIF89a" + Little16(screen_width) + Little16(screen_height) + std::string("\xF1\0\0", 3) +
         "abcdefghijkl" + rest;
}

std::string GifPicture(std::uint32_t left, std::uint32_t top, std::uint32_t width,
                       std::uint32_t height, const std::string& indices, char flags = 0) {
  return "," + Little16(left) + Little16(top) + Little16(width) + Little16(height) + flags +
         GifData(indices);
}

TEST(GifFile, IsIndexed) {
  OpenedImage image(Gif(4, 1, GifPicture(0, 0, 4, 1, "0123") + ";"));
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.space, PictureSpace::kIndexed);
  EXPECT_EQ(embedded.image.bits, 2);
  EXPECT_EQ(embedded.image.palette, "abcdefghijkl");
  EXPECT_EQ(image.SamplesOf(embedded.image), "\x1B");
}

TEST(GifFile, TransparentColorIsAColorKey) {
  const std::string control("!\xF9\x04\x01\0\0\x02\0", 8);
  OpenedImage image(Gif(4, 1, control + GifPicture(0, 0, 4, 1, "0123")));
  EXPECT_EQ(image.Embed().image.color_key, "2 2");
}

TEST(GifFile, PictureStandsOnItsScreen) {
  OpenedImage image(Gif(4, 2, GifPicture(1, 1, 2, 1, "31")));
  EXPECT_EQ(image.frame().width, 4U);
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.color_key, "4 4");  // a colour of its own for what is not painted
  EXPECT_EQ(image.SamplesOf(embedded.image), "\x44\x44\x43\x14");
}

TEST(GifFile, RowsMayBeInterlaced) {
  OpenedImage image(Gif(1, 5, GifPicture(0, 0, 1, 5, "01230", '\x40')));
  // Stored: rows 0, 4, 2, 1, 3.
  EXPECT_EQ(image.SamplesOf(image.Embed().image), std::string("\x00\xC0\x80\x00\x40", 5));
}

TEST(GifFile, CutDataGivesWhatIsThere) {
  const std::string gif = Gif(1, 5, GifPicture(0, 0, 1, 5, "12312"));
  OpenedImage image(gif.substr(0, gif.size() - 4));
  const std::string samples = image.SamplesOf(image.Embed().image);
  EXPECT_EQ(samples.size(), 5U);
  EXPECT_EQ(samples[0], '\x40');
  EXPECT_EQ(ImageCodeOf(gif.substr(0, 20)), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Gif(1, 5, ";")), ImageErrorCode::kDamaged);
}

std::string Bmp(std::int32_t width, std::int32_t height, int bits, std::uint32_t compression,
                const std::string& palette, const std::string& pixels) {
  const auto start = static_cast<std::uint32_t>(54 + palette.size());
  return "BM" + Little32(0) + Little32(0) + Little32(start) + Little32(40) +
         Little32(static_cast<std::uint32_t>(width)) +
         Little32(static_cast<std::uint32_t>(height)) + Little16(1) +
         Little16(static_cast<std::uint32_t>(bits)) + Little32(compression) + Little32(0) +
         Little32(2835) + Little32(2835) + Little32(0) + Little32(0) + palette + pixels;
}

TEST(BmpFile, RowsAreStoredFromTheBottomUp) {
  const std::string pixels("cba\0fed\0", 8);  // blue first, rows of whole fours
  OpenedImage up(Bmp(1, 2, 24, 0, "", pixels));
  EXPECT_EQ(up.Embed().image.palette, "defabc");
  EXPECT_NEAR(up.frame().dpi_x, 72, 0.01);
  OpenedImage down(Bmp(1, -2, 24, 0, "", pixels));
  EXPECT_EQ(down.Embed().image.palette, "abcdef");
}

TEST(BmpFile, DecodesRuns) {
  const std::string palette("a\0\0\0b\0\0\0c\0\0\0", 12);
  const std::string runs("\x03\x01\0\0\0\x03\x02\x01\0\0\0\x01", 12);
  OpenedImage image(Bmp(3, 2, 8, 1, palette, runs));
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(image.SamplesOf(embedded.image), std::string("\x02\x01\0\x01\x01\x01", 6));
  const std::string pairs("\x03\x12\0\x01", 4);
  OpenedImage four(Bmp(3, 1, 4, 2, palette, pairs));
  EXPECT_EQ(four.SamplesOf(four.Embed().image), "\x12\x10");
  // A step beyond the picture.
  EXPECT_EQ(ImageCodeOf(Bmp(3, 2, 8, 1, palette, std::string("\0\x02\xFF\xFF\x05\x01", 6))),
            std::nullopt);
}

TEST(BmpFile, MasksTakeColorsOutOfPixels) {
  const std::string masks = Little32(0xF800) + Little32(0x7E0) + Little32(0x1F);
  OpenedImage image(Bmp(1, 1, 16, 3, masks, Little16(0xFFE0) + Little16(0)));
  EXPECT_EQ(image.Embed().image.palette, std::string("\xFF\xFF\0", 3));
  EXPECT_EQ(ImageCodeOf(Bmp(1, 1, 16, 3, Little32(0xF0F0) + Little32(1) + Little32(2), "abcd")),
            ImageErrorCode::kUnsupported);
}

TEST(BmpFile, RejectsWhatHasNoPicture) {
  EXPECT_EQ(ImageCodeOf(Bmp(1, 1, 24, 0, "", "")), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Bmp(1, 1, 24, 4, "", "abcd")), ImageErrorCode::kUnsupported);
  EXPECT_EQ(ImageCodeOf(Bmp(0, 1, 24, 0, "", "abcd")), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Bmp(-5, 1, 24, 0, "", "abcd")), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Bmp(1 << 30, 1 << 30, 24, 0, "", "abcd")), ImageErrorCode::kLimit);
}

TEST(PnmFile, ReadsAllKinds) {
  OpenedImage bits("P1 # comment\n3 1\n1 0 1");
  EXPECT_EQ(bits.Embed().image.space, PictureSpace::kGray);
  OpenedImage gray("P2\n2 1\n10\n0 5");
  EXPECT_EQ(gray.Embed().image.palette, std::string("\0\0\0\x80\x80\x80", 6));
  OpenedImage color("P6 1 1 255\nabc");
  EXPECT_EQ(color.Embed().image.palette, "abc");
  OpenedImage map(
      "P7\nWIDTH 1\nHEIGHT 1\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\nabc\x80");
  EXPECT_TRUE(map.Embed().soft_mask);
}

TEST(PnmFile, SpreadsValues) {
  std::string file = "P5 3 1 1000\n" + Big16(0) + Big16(500) + Big16(1000);
  OpenedImage image(file);
  EXPECT_EQ(image.Embed().image.bits, 16);
  EXPECT_EQ(image.SamplesOf(image.Embed().image), Big16(0) + Big16(32768) + Big16(65535));
}

TEST(PnmFile, RejectsBadHeaders) {
  for (const char* header : {"P6 1", "P6 x 1 255\n", "P6 1 1 0\n", "P5 1 1 99999\nab",
                             "P7\nWIDTH 1\nDEPTH 9\nENDHDR\n", "P5 99999999999 1 255\n"}) {
    EXPECT_EQ(ImageCodeOf(header), ImageErrorCode::kDamaged) << header;
  }
}

std::string CodeStream(std::uint32_t width, std::uint32_t height, std::uint32_t components) {
  std::string stream = "\xFF\x4F\xFF\x51" + Big16(38 + 3 * components) + Big16(0) + Big32(width) +
                       Big32(height) + std::string(24, '\0') + Big16(components);
  return stream + std::string(3 * components, '\x07');
}

std::string Box(const std::string& type, const std::string& content) {
  return Big32(static_cast<std::uint32_t>(content.size() + 8)) + type + content;
}

std::string Jp2(const std::string& header_boxes) {
  return Box("jP  ", "\r\n\x87\n") + Box("ftyp", "jp2 ") + Box("jp2h", header_boxes) +
         Box("jp2c", CodeStream(7, 5, 3));
}

TEST(Jpeg2000File, GoesIntoTheDocumentAsItIs) {
  const std::string file = Jp2("");
  OpenedImage image(file);
  EXPECT_EQ(image.frame().width, 7U);
  EXPECT_EQ(image.frame().height, 5U);
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.filter, "JPXDecode");
  EXPECT_EQ(embedded.image.space, PictureSpace::kNone);
  EXPECT_EQ(image.DataOf(embedded.image), file);
  EXPECT_EQ(OpenedImage(CodeStream(7, 5, 1)).Embed().image.space, PictureSpace::kGray);
}

TEST(Jpeg2000File, ReadsAlphaAndResolution) {
  const std::string channels =
      Box("cdef", Big16(2) + Big16(0) + Big16(0) + Big16(1) + Big16(1) + Big16(1) + Big16(0));
  EXPECT_EQ(OpenedImage(Jp2(channels)).Embed().image.entries, "/SMaskInData 1");
  const std::string resolution = Box(
      "res ", Box("resd", Big16(5906) + Big16(1) + Big16(11811) + Big16(1) + std::string(2, '\0')));
  OpenedImage image(Jp2(resolution));
  EXPECT_NEAR(image.frame().dpi_x, 300, 0.01);
  EXPECT_NEAR(image.frame().dpi_y, 150, 0.02);
}

TEST(Jpeg2000File, RejectsWhatHasNoPicture) {
  EXPECT_EQ(ImageCodeOf(Box("jP  ", "\r\n\x87\n")), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(CodeStream(0, 5, 3)), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(CodeStream(7, 5, 3).substr(0, 20)), ImageErrorCode::kDamaged);
}

TEST(WebpFile, RejectsWhatHasNoPicture) {
  EXPECT_EQ(ImageCodeOf("RIFF" + Little32(4) + "WEBP"), ImageErrorCode::kDamaged);
  const std::string header("\0\0\0\x9D\x01\x2A\x10\0\x10\0", 10);
  EXPECT_EQ(ImageCodeOf("RIFF" + Little32(22) + "WEBPVP8 " + Little32(10) + header),
            ImageErrorCode::kDamaged);
}

}  // namespace

}  // namespace TarnixTools::engines
