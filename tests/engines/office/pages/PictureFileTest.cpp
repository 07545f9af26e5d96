// Images of documents as files of their own.
#include <string>

#include <gtest/gtest.h>

#include "engines/office/pages/PictureFile.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/images/WrittenImage.h"
#include "pdf/syntax/HexText.h"

namespace TarnixTools::engines::office {
namespace {

using testing::OpenedImage;

// Its colours, pixel by pixel, and behind a bar the samples of its alpha.
std::string SamplesOf(const OfficePicture& picture) {
  EXPECT_FALSE(picture.is_jpeg);
  OpenedImage image(picture.bytes);
  const EncodedImage embedded = image.Embed();
  const Pixels pixels = WrittenImage(embedded, picture.bytes).Read(false);
  EXPECT_EQ(pixels.width, picture.width);
  EXPECT_EQ(pixels.height, picture.height);
  std::string samples;
  for (std::uint32_t i = 0; i < pixels.width * pixels.height; ++i) {
    for (const int part : pixels.At(i % pixels.width, i / pixels.width)) {
      pdf::AppendHexByte(samples, static_cast<char>(part));
    }
    samples += i + 1 < pixels.width * pixels.height ? " " : "";
  }
  if (embedded.soft_mask) {
    samples += "|";
    for (const char sample : image.SamplesOf(*embedded.soft_mask)) {
      pdf::AppendHexByte(samples, sample);
    }
  }
  return samples;
}

OfficePicture FileOf(ImageInDocument& image, std::uint32_t most = 100) {
  return FileOfImage(image.Image(), most, most).value_or(OfficePicture());
}

constexpr const char* kGray = "/Width 2/Height 2/ColorSpace/DeviceGray/BitsPerComponent 8";
constexpr const char* kRgb = "/Width 2/Height 1/ColorSpace/DeviceRGB/BitsPerComponent 8";

TEST(PictureFile, HasThePixelsOfAPage) {
  PageBitmap bitmap;
  bitmap.width = 2;
  bitmap.height = 2;
  bitmap.pixels = {0x10, 0x20, 0x30, 0, 0x11, 0x21, 0x31, 0,
                   0x12, 0x22, 0x32, 0, 0x13, 0x23, 0x33, 0};
  EXPECT_EQ(SamplesOf(FileOfBitmap(bitmap)), "302010 312111 322212 332313");
}

TEST(PictureFile, HasThePixelsOfImages) {
  ImageInDocument gray(kGray, "\x01\x02\x03\x04");
  EXPECT_EQ(SamplesOf(FileOf(gray)), "010101 020202 030303 040404");
  ImageInDocument colors(kRgb, "\x01\x02\x03\x04\x05\x06");
  EXPECT_EQ(SamplesOf(FileOf(colors)), "010203 040506");
}

TEST(PictureFile, HasTheAlphaOfImages) {
  const std::string mask =
      "/Type/XObject/Subtype/Image/Width 2/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8";
  ImageInDocument colors(std::string(kRgb) + "/SMask 11 0 R", "\x01\x02\x03\x04\x05\x06",
                         testing::RawPdf().Stream(11, mask, "\x80\x40"));
  EXPECT_EQ(SamplesOf(FileOf(colors)), "010203 040506|8040");
  // A mask of another size: each pixel takes the nearest sample.
  ImageInDocument gray(std::string(kGray) + "/SMask 11 0 R", "\x01\x02\x03\x04",
                       testing::RawPdf().Stream(11, mask, "\x80\x40"));
  EXPECT_EQ(SamplesOf(FileOf(gray)), "010101 020202 030303 040404|80408040");
}

TEST(PictureFile, IsNoLargerThanItHasToBe) {
  ImageInDocument gray("/Width 8/Height 4/ColorSpace/DeviceGray/BitsPerComponent 8",
                       std::string(32, '\x55'));
  const OfficePicture picture = *FileOfImage(gray.Image(), 4, 3);
  EXPECT_EQ(picture.width, 4u);
  EXPECT_EQ(picture.height, 3u);
  EXPECT_EQ(SamplesOf(picture).substr(0, 13), "555555 555555");
}

TEST(PictureFile, IsAJpegWhereItHasManyColors) {
  const auto with_colors = [](std::size_t count) {
    std::string samples;
    for (std::size_t i = 0; i < 100 * 100; ++i) {
      const std::size_t color = i % count;
      samples += static_cast<char>(color & 0xFF);
      samples += static_cast<char>(color >> 8);
      samples += '\x07';
    }
    ImageInDocument image("/Width 100/Height 100/ColorSpace/DeviceRGB/BitsPerComponent 8", samples);
    return FileOf(image);
  };
  EXPECT_FALSE(with_colors(3000).is_jpeg);
  EXPECT_TRUE(with_colors(3001).is_jpeg);
  EXPECT_EQ(with_colors(3001).bytes.substr(0, 3), "\xFF\xD8\xFF");
}

TEST(PictureFile, IsNoneOfMasks) {
  ImageInDocument mask("/Width 8/Height 1/ImageMask true", "\x55");
  EXPECT_FALSE(FileOfImage(mask.Image(), 9, 9).has_value());
}

}  // namespace
}  // namespace TarnixTools::engines::office
