#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/pictures/ImageError.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using testing::Big16;
using testing::Big32;
using testing::ImageCodeOf;
using testing::OpenedImage;
using testing::PngChunk;
using testing::TestPng;

// Rows without filters: each `row` behind a zero.
std::string Rows(std::initializer_list<std::string> rows) {
  std::string data;
  for (const std::string& row : rows) {
    data += '\0' + row;
  }
  return data;
}

TestPng Noise(int bits, int color_type, int channels) {
  TestPng png{.width = 37, .height = 29, .bits = bits, .color_type = color_type};
  const std::size_t row = (std::size_t{37} * static_cast<unsigned>(channels * bits) + 7) / 8;
  std::uint32_t state = 1;
  for (std::uint32_t y = 0; y < png.height; ++y) {
    png.rows += '\0';
    for (std::size_t i = 0; i < row; ++i) {
      state = state * 1664525 + 1013904223;
      png.rows += static_cast<char>(state >> 24);
    }
  }
  return png;
}

std::string WithoutFilterBytes(const TestPng& png) {
  const std::size_t stride = png.rows.size() / png.height;
  std::string samples;
  for (std::size_t y = 0; y < png.height; ++y) {
    samples += png.rows.substr(y * stride + 1, stride - 1);
  }
  return samples;
}

TEST(PngFile, DataGoesIntoTheDocumentAsItIs) {
  TestPng png = Noise(8, 2, 3);
  png.data_chunk = 100;
  OpenedImage image(png.Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.filter, "FlateDecode");
  EXPECT_EQ(embedded.image.parameters, "/Predictor 15/Colors 3/BitsPerComponent 8/Columns 37");
  EXPECT_GT(embedded.image.data.size(), 10U);
  EXPECT_EQ(embedded.image.data.front().held.data, nullptr);
  EXPECT_EQ(image.SamplesOf(embedded.image), WithoutFilterBytes(png));
}

TEST(PngFile, KeepsEveryOpaqueDepth) {
  for (const int bits : {1, 2, 4, 8, 16}) {
    const TestPng png = Noise(bits, 0, 1);
    OpenedImage image(png.Bytes());
    EXPECT_EQ(image.Embed().image.bits, bits);
    EXPECT_EQ(image.SamplesOf(image.Embed().image), WithoutFilterBytes(png));
  }
  const TestPng deep = Noise(16, 2, 3);
  OpenedImage image(deep.Bytes());
  EXPECT_EQ(image.SamplesOf(image.Embed().image), WithoutFilterBytes(deep));
}

TEST(PngFile, KeepsPalettes) {
  TestPng png{.width = 2, .height = 1, .bits = 1, .color_type = 3, .rows = Rows({"\x40"})};
  png.chunks = PngChunk("PLTE", "abcdef");
  const EncodedImage embedded = OpenedImage(png.Bytes()).Embed();
  EXPECT_EQ(embedded.image.space, PictureSpace::kIndexed);
  EXPECT_EQ(embedded.image.palette, "abcdef");
  EXPECT_EQ(embedded.image.bits, 1);
}

TEST(PngFile, ReadsResolution) {
  TestPng png = Noise(8, 0, 1);
  png.chunks = PngChunk("pHYs", Big32(11811) + Big32(5906) + "\x01");
  EXPECT_NEAR(OpenedImage(png.Bytes()).frame().dpi_x, 300, 0.01);
  EXPECT_NEAR(OpenedImage(png.Bytes()).frame().dpi_y, 150, 0.02);
  png.chunks = PngChunk("pHYs", Big32(2) + Big32(1) + std::string(1, '\0'));
  EXPECT_EQ(OpenedImage(png.Bytes()).frame().dpi_x, 0);
}

TEST(PngFile, ReadsOrientation) {
  TestPng png = Noise(8, 0, 1);
  png.chunks = PngChunk("eXIf", testing::TestExif(6));
  EXPECT_EQ(OpenedImage(png.Bytes()).frame().orientation, 6);
}

TEST(PngFile, OneTransparentColorIsAColorKey) {
  TestPng png = Noise(8, 2, 3);
  png.chunks = PngChunk("tRNS", Big16(1) + Big16(2) + Big16(255));
  EXPECT_EQ(OpenedImage(png.Bytes()).Embed().image.color_key, "1 1 2 2 255 255");
}

TEST(PngFile, ATransparentColorOfSixteenBitsIsASoftMask) {
  for (const bool interlaced : {false, true}) {
    TestPng png{.width = 2, .height = 1, .bits = 16, .color_type = 0, .interlaced = interlaced};
    png.rows =
        interlaced ? std::string("\0\x02\x03\0\x02\x04", 6) : std::string("\0\x02\x03\x02\x04", 5);
    png.chunks = PngChunk("tRNS", Big16(0x0203));
    OpenedImage image(png.Bytes());
    const EncodedImage embedded = image.Embed();
    EXPECT_EQ(embedded.image.color_key, "");
    EXPECT_EQ(image.SamplesOf(embedded.image), "\x02\x03\x02\x04");
    ASSERT_TRUE(embedded.soft_mask);
    EXPECT_EQ(embedded.soft_mask->bits, 1);
    EXPECT_EQ(embedded.soft_mask->filter, "CCITTFaxDecode");
    const std::string mask = image.DataOf(*embedded.soft_mask);
    CcittDecoder decoder(mask, {.k = -1, .columns = 2});
    std::vector<std::uint32_t> changes;
    ASSERT_TRUE(decoder.ReadChanges(changes));
    EXPECT_EQ(changes, (std::vector<std::uint32_t>{0, 1}));  // the first pixel is black, clear
    png.chunks = PngChunk("tRNS", Big16(0x0204 + 1));
    EXPECT_FALSE(OpenedImage(png.Bytes()).Embed().soft_mask);
  }
}

TEST(PngFile, TransparentPaletteEntriesAreAColorKeyOrAMask) {
  TestPng png{.width = 4, .height = 1, .bits = 2, .color_type = 3, .rows = Rows({"\x1B"})};
  const std::string palette = PngChunk("PLTE", "abcdefghijkl");
  png.chunks = palette + PngChunk("tRNS", std::string("\xFF\0\0\xFF", 4));
  EXPECT_EQ(OpenedImage(png.Bytes()).Embed().image.color_key, "1 2");
  png.chunks = palette + PngChunk("tRNS", std::string("\xFF\x80\0", 3));
  OpenedImage image(png.Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.color_key, "");
  EXPECT_EQ(embedded.image.data.front().held.data, nullptr);  // still as it is
  ASSERT_TRUE(embedded.soft_mask);
  EXPECT_EQ(image.SamplesOf(*embedded.soft_mask), std::string("\xFF\x80\0\xFF", 4));
}

TEST(PngFile, AlphaBecomesASoftMaskOfItsDepth) {
  const std::string pixels =
      std::string("\x01\x02\x03\x80", 4) + std::string("\x04\x05\x06\x81", 4);
  TestPng png{.width = 2, .height = 1, .bits = 8, .color_type = 6, .rows = Rows({pixels})};
  OpenedImage image(png.Bytes());
  const EncodedImage embedded = image.Embed();
  ASSERT_TRUE(embedded.soft_mask);
  EXPECT_EQ(embedded.soft_mask->space, PictureSpace::kGray);
  EXPECT_EQ(image.SamplesOf(*embedded.soft_mask), "\x80\x81");

  png = {.width = 1, .height = 1, .bits = 16, .color_type = 4, .rows = Rows({"abcd"})};
  OpenedImage deep(png.Bytes());
  const EncodedImage deep_image = deep.Embed();
  EXPECT_EQ(deep_image.image.bits, 16);
  EXPECT_EQ(deep.SamplesOf(deep_image.image), "ab");
  ASSERT_TRUE(deep_image.soft_mask);
  EXPECT_EQ(deep_image.soft_mask->bits, 16);
  EXPECT_EQ(deep.SamplesOf(*deep_image.soft_mask), "cd");
}

TEST(PngFile, OpaqueAlphaIsLeftOut) {
  TestPng png{.width = 1, .height = 1, .bits = 8, .color_type = 6, .rows = Rows({"abc\xFF"})};
  EXPECT_FALSE(OpenedImage(png.Bytes()).Embed().soft_mask);
}

TEST(PngFile, Deinterlaces) {
  // 3 x 3 gray: passes 1 (1 pixel), 4 (x 2), 5 (2 pixels, y 2), 6 (x 1, rows 0 and 2), 7 (row 1).
  TestPng png{.width = 3, .height = 3, .bits = 8, .color_type = 0, .interlaced = true};
  png.rows = Rows({"\x10", "\x12", "\x30\x32", "\x11", "\x31", "\x20\x21\x22"});
  OpenedImage image(png.Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.space, PictureSpace::kIndexed);  // nine grays
  EXPECT_EQ(image.SamplesOf(embedded.image), std::string("\x01\x20\x34\x50\x67\x80", 6));
  EXPECT_EQ(embedded.image.palette.substr(0, 9), "\x10\x10\x10\x11\x11\x11\x12\x12\x12");
}

TEST(PngFile, CutDataGivesWhatCanBeDecoded) {
  const TestPng png = Noise(8, 2, 3);
  const std::string bytes = png.Bytes();
  OpenedImage image(bytes.substr(0, bytes.size() / 2));
  const EncodedImage embedded = image.Embed();
  const std::string samples = image.SamplesOf(embedded.image);
  const std::string whole = WithoutFilterBytes(png);
  ASSERT_EQ(samples.size(), whole.size());
  EXPECT_EQ(samples.substr(0, 900), whole.substr(0, 900));
  EXPECT_EQ(samples.substr(samples.size() - 900), std::string(900, '\0'));
}

TEST(PngFile, RejectsHeadersWithoutPicture) {
  const std::string bytes = Noise(8, 2, 3).Bytes();
  EXPECT_EQ(ImageCodeOf(bytes.substr(0, 33)), ImageErrorCode::kDamaged);
  TestPng huge = Noise(8, 6, 4);
  huge.width = huge.height = 999'999;
  EXPECT_EQ(ImageCodeOf(huge.Bytes()), ImageErrorCode::kLimit);
  TestPng odd = Noise(8, 2, 3);
  odd.bits = 3;
  EXPECT_EQ(ImageCodeOf(odd.Bytes()), ImageErrorCode::kUnsupported);
  TestPng bare = Noise(8, 3, 1);
  EXPECT_EQ(ImageCodeOf(bare.Bytes()), ImageErrorCode::kDamaged);
}

TEST(PngFile, RejectsPicturesMuchLargerThanTheirData) {
  TestPng bomb{.width = 16'000, .height = 16'000, .bits = 8, .color_type = 6, .rows = "abc"};
  EXPECT_EQ(ImageCodeOf(bomb.Bytes()), ImageErrorCode::kDamaged);
}

}  // namespace

}  // namespace TarnixTools::engines
