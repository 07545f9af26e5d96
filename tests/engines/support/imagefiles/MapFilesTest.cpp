// BMP and PNM files in all their kinds, sample by sample.
#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/images/WrittenImage.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::Big16;
using testing::ImageCodeOf;
using testing::Little16;
using testing::Little32;
using testing::OpenedImage;

struct BmpHeader {
  int bits = 8;
  std::uint32_t compression = 0;
  std::uint32_t header_size = 40;
  std::uint32_t colors = 0;
  std::string masks;  // behind the forty bytes
};

// A picture stored from the top down.
std::string Bmp(std::int32_t width, std::int32_t height, const BmpHeader& header,
                const std::string& palette, const std::string& pixels) {
  std::string info = Little32(header.header_size) + Little32(static_cast<std::uint32_t>(width)) +
                     Little32(static_cast<std::uint32_t>(-height)) + Little16(1) +
                     Little16(static_cast<std::uint32_t>(header.bits)) +
                     Little32(header.compression) + Little32(0) + Little32(2835) + Little32(2835) +
                     Little32(header.colors) + Little32(0) + header.masks;
  info.resize(std::max<std::size_t>(info.size(), header.header_size));
  const auto start = static_cast<std::uint32_t>(14 + info.size() + palette.size());
  return "BM" + Little32(0) + Little32(0) + Little32(start) + info + palette + pixels;
}

std::string GrayPalette(int count, int step) {
  std::string palette;
  for (int i = 0; i < count; ++i) {
    palette += std::string(3, static_cast<char>(i * step)) + '\0';
  }
  return palette;
}

// The pixels of a picture as a document shows it, in hexadecimal: its rows in lines.
std::string RowsOf(const std::string& file) {
  return WrittenImage(OpenedImage(file).Embed(), file).Rows();
}

// The alpha of a picture.
std::string AlphaOf(const std::string& file) {
  OpenedImage image(file);
  const EncodedImage embedded = image.Embed();
  return embedded.soft_mask ? image.SamplesOf(*embedded.soft_mask) : "";
}

TEST(BmpFile, HoldsIndicesOfAnyDepth) {
  EXPECT_EQ(RowsOf(Bmp(4, 1, {.bits = 2}, GrayPalette(4, 85), std::string("\x1B\0\0\0", 4))),
            "00 55 AA FF\n");
  EXPECT_EQ(RowsOf(Bmp(2, 1, {.bits = 4}, GrayPalette(16, 17), std::string("\x5F\0\0\0", 4))),
            "55 FF\n");
  EXPECT_EQ(RowsOf(Bmp(2, 2, {.bits = 8, .colors = 2}, std::string("abc\0def\0", 8),
                       std::string("\0\1\0\0\1\0\0\0", 8))),
            "636261 666564\n666564 636261\n");
}

TEST(BmpFile, MayHaveTheHeaderOfItsFirstVersion) {
  const std::string file = "BM" + Little32(0) + Little32(0) + Little32(32) + Little32(12) +
                           Little16(3) + Little16(1) + Little16(1) + Little16(1) + "abcdef" +
                           std::string("\xA0\0\0\0", 4);
  EXPECT_EQ(RowsOf(file), "666564 636261 666564\n");
}

TEST(BmpFile, HoldsColorsInSixteenBits) {
  EXPECT_EQ(RowsOf(Bmp(2, 1, {.bits = 16}, "", Little16(0x7C00) + Little16(0x03FF))),
            "FF0000 00FFFF\n");
}

TEST(BmpFile, HoldsColorsInThirtyTwoBits) {
  const std::string file = Bmp(1, 2, {.bits = 32}, "", "abcXdefY");
  EXPECT_EQ(RowsOf(file), "636261\n666564\n");
  EXPECT_EQ(AlphaOf(file), "");
}

TEST(BmpFile, HasAlphaWhereAMaskTellsOfIt) {
  const std::string masks =
      Little32(0xFF0000) + Little32(0xFF00) + Little32(0xFF) + Little32(0xFF000000);
  for (const std::uint32_t compression : {3U, 6U}) {
    const BmpHeader header = {
        .bits = 32, .compression = compression, .header_size = 56, .masks = masks};
    EXPECT_EQ(AlphaOf(Bmp(2, 1, header, "",
                          "abc\x10"
                          "def\xF0")),
              "\x10\xF0")
        << compression;
  }
}

TEST(BmpFile, MayHaveMasksOfNoBits) {
  const BmpHeader header = {
      .bits = 16, .compression = 3, .masks = Little32(0) + Little32(0xFF) + Little32(0)};
  EXPECT_EQ(RowsOf(Bmp(2, 1, header, "", Little16(0x12) + Little16(0xFF34))), "001200 003400\n");
}

TEST(BmpFile, DecodesValuesAmongRuns) {
  // Three values as they are, filled up to an even number; a run; a step to the right and down; a
  // run of one.
  const std::string runs("\0\x03\x01\x02\x03\0\x02\x05\0\x02\x01\x01\x01\x07\0\x01", 16);
  EXPECT_EQ(RowsOf(Bmp(8, 2, {.bits = 8, .compression = 1}, GrayPalette(256, 1), runs)),
            "01 02 03 05 05 00 00 00\n00 00 00 00 00 00 07 00\n");
  // Two values to a byte.
  const std::string pairs("\0\x03\x12\x30\x05\x9A\0\0\0\x01", 10);
  EXPECT_EQ(RowsOf(Bmp(8, 1, {.bits = 4, .compression = 2}, GrayPalette(16, 17), pairs)),
            "11 22 33 99 AA 99 AA 99\n");
}

TEST(BmpFile, GivesWhatIsThereOfDataThatIsCut) {
  EXPECT_EQ(RowsOf(Bmp(4, 3, {.bits = 8}, GrayPalette(256, 1), "abcdefgh")),
            "61 62 63 64\n65 66 67 68\n00 00 00 00\n");
  EXPECT_EQ(RowsOf(Bmp(1, 2, {.bits = 24}, "", std::string("abc\0", 4))), "636261\n000000\n");
}

TEST(BmpFile, RejectsKindsThatItDoesNotKnow) {
  for (const auto& [bits, compression] : {std::pair(3, 0U), std::pair(4, 1U), std::pair(8, 2U),
                                          std::pair(8, 3U), std::pair(24, 6U), std::pair(8, 5U)}) {
    EXPECT_EQ(ImageCodeOf(Bmp(1, 1, {.bits = bits, .compression = compression}, "", "abcd")),
              ImageErrorCode::kUnsupported)
        << bits << " " << compression;
  }
}

TEST(PnmFile, MayBeText) {
  EXPECT_EQ(RowsOf("P1 4 2\n01 0\n1 1 # comment\n100"), "FF 00 FF 00\n00 00 FF FF\n");
  EXPECT_EQ(RowsOf("P2\n# one\n3 1\n#two\n255\n1 # more\n200 30\n"), "01 C8 1E\n");
  EXPECT_EQ(RowsOf("P3 2 1 255\n1 2 3\n250 251 999"), "010203 FAFBFF\n");
}

TEST(PnmFile, MayBeBinary) {
  EXPECT_EQ(RowsOf(std::string("P4 9 2\n\x80\x80\x7F\0", 11)),
            "00 FF FF FF FF FF FF FF 00\nFF 00 00 00 00 00 00 00 FF\n");
  EXPECT_EQ(RowsOf("P5 3 1 255\nabc"), "61 62 63\n");
  EXPECT_EQ(RowsOf("P6 1 1 65535\n" + Big16(0x1234) + Big16(0x5678) + Big16(0x9ABC)), "12569A\n");
}

TEST(PnmFile, MayHaveAlphaWithGray) {
  EXPECT_EQ(AlphaOf("P7\nWIDTH 2\nHEIGHT 1\nDEPTH 2\nMAXVAL 255\nTUPLTYPE GRAYSCALE_ALPHA\nENDHDR\n"
                    "\x10\x20\x30\x41"),
            "\x20\x41");
}

TEST(PnmFile, GivesWhatIsThereOfDataThatIsCut) {
  EXPECT_EQ(RowsOf("P1 4 2\n0000"), "FF FF FF FF\n00 00 00 00\n");
  EXPECT_EQ(RowsOf("P2 3 1 100\n100 50"), "FF 80 00\n");
  EXPECT_EQ(RowsOf("P5 3 2 100\n\x64\x32"), "FF 80 00\n00 00 00\n");
}

}  // namespace
}  // namespace TarnixTools::engines
