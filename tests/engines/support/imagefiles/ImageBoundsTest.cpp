// Both sides of the bounds of image files, and parts that come again or do not fit.
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/imagefiles/ImageFileText.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "support/TestImage.h"
#include "support/TestImages.h"
#include "support/TestTiff.h"

namespace TarnixTools::engines {
namespace {

using testing::Big16;
using testing::Big32;
using testing::ImageCodeOf;
using testing::ImageFileText;
using testing::OpenedImage;
using testing::PngChunk;
using testing::TestPng;
using testing::TestTiff;

TEST(ImageBounds, SidesAreOneMillionAtMost) {
  EXPECT_EQ(ImageCodeOf("P4 1000000 1\n"), std::nullopt);
  EXPECT_EQ(ImageCodeOf("P4 1 1000000\n"), std::nullopt);
  EXPECT_EQ(ImageCodeOf("P4 1000001 1\n"), ImageErrorCode::kLimit);
  EXPECT_EQ(ImageCodeOf("P4 1 1000001\n"), ImageErrorCode::kLimit);
  EXPECT_EQ(ImageCodeOf("P4 0 1\n"), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf("P4 1 0\n"), ImageErrorCode::kDamaged);
}

TestPng Small(int color_type = 0) {
  return {.width = 2,
          .height = 1,
          .bits = 8,
          .color_type = color_type,
          .rows = color_type == 2 ? std::string("\0abcdef", 7) : std::string("\0\1\2", 3)};
}

// Without the place of the data, which depends on the chunks before it.
std::string TextWith(const std::string& chunks) {
  TestPng png = Small();
  png.chunks = chunks;
  const std::string text = ImageFileText(png.Bytes());
  return text.substr(0, text.find('@'));
}

std::string Density(std::uint32_t x, std::uint32_t y) {
  return PngChunk("pHYs", Big32(x) + Big32(y) + '\1');
}

// Pixels per inch from 1 to 100,000.
TEST(ImageBounds, ResolutionsAreThoseThatCanBeMeant) {
  const auto dpi_of = [](std::uint32_t x, std::uint32_t y) {
    TestPng png = Small();
    png.chunks = Density(x, y);
    const OpenedImage image(png.Bytes());
    return image.frame().dpi_x > 0 && image.frame().dpi_y > 0;
  };
  EXPECT_TRUE(dpi_of(40, 3'937'007));
  EXPECT_FALSE(dpi_of(39, 5000));
  EXPECT_FALSE(dpi_of(5000, 39));
  EXPECT_FALSE(dpi_of(3'937'008, 5000));
  EXPECT_FALSE(dpi_of(5000, 3'937'008));
}

TEST(ImageBounds, OfPngChunks) {
  const std::string plain = TextWith("");
  // What is short, of no unit or comes again does not count.
  EXPECT_EQ(TextWith(PngChunk("pHYs", Big32(5000) + Big32(5000))), plain);
  EXPECT_EQ(TextWith(PngChunk("pHYs", Big32(5000) + Big32(5000) + '\2')), plain);
  EXPECT_EQ(TextWith(PngChunk("IHDR", Big32(7) + Big32(7) + std::string("\2\3\0\0\0", 5))), plain);
  EXPECT_EQ(TextWith(PngChunk("tRNS", "\1")), plain);
  EXPECT_NE(TextWith(PngChunk("tRNS", std::string("\0\1", 2))), plain);
  EXPECT_EQ(TextWith(PngChunk("tRNS", std::string(65'537, '\0'))), plain);
  EXPECT_NE(TextWith(PngChunk("tRNS", std::string(65'536, '\0'))), plain);
  EXPECT_EQ(TextWith(PngChunk("PLTE", "abc")), plain);
  const std::string exif = testing::TestExif(6, 300);
  const std::string turned = TextWith(PngChunk("eXIf", exif));
  EXPECT_EQ(turned.substr(0, 29), "2 x 1 at 300 x 300 turned 6: ");
  EXPECT_EQ(TextWith(PngChunk("eXIf", exif + std::string(65'536 - exif.size(), 'x'))), turned);
  EXPECT_EQ(TextWith(PngChunk("eXIf", exif + std::string(65'537 - exif.size(), 'x'))), plain);
  // The resolution of PNG's own chunk goes before, whichever comes first.
  for (const std::string& chunks : {Density(5000, 5000) + PngChunk("eXIf", exif),
                                    PngChunk("eXIf", exif) + Density(5000, 5000)}) {
    EXPECT_EQ(TextWith(chunks).substr(0, 28), "2 x 1 at 127 x 127 turned 6:");
  }
}

TEST(ImageBounds, OfPngPalettes) {
  const auto palette_of = [](const std::string& chunks) {
    TestPng png = Small(3);
    png.chunks = chunks;
    return OpenedImage(png.Bytes()).Embed().image.palette;
  };
  const std::string colors = testing::NoiseBytes(900);
  EXPECT_EQ(palette_of(PngChunk("PLTE", colors)), colors.substr(0, 768));
  EXPECT_EQ(palette_of(PngChunk("PLTE", colors.substr(0, 768))), colors.substr(0, 768));
  EXPECT_EQ(palette_of(PngChunk("PLTE", colors.substr(0, 11))), colors.substr(0, 9));
  EXPECT_EQ(palette_of(PngChunk("PLTE", "abc")), "abc");
}

// Entries of the palette that are opaque, transparent and in between, at the ends and in the middle.
TEST(ImageBounds, OfTransparentEntries) {
  const auto key_of = [](const std::string& transparency) {
    TestPng png = Small(3);
    png.chunks = PngChunk("PLTE", "abcdefghijkl") + PngChunk("tRNS", transparency);
    const EncodedImage image = OpenedImage(png.Bytes()).Embed();
    return image.soft_mask ? "mask" : image.image.color_key;
  };
  EXPECT_EQ(key_of("\xFF\xFF\xFF\xFF"), "");
  EXPECT_EQ(key_of(std::string("\0", 1)), "0 0");
  EXPECT_EQ(key_of(std::string("\0\0\0\0", 4)), "0 3");
  EXPECT_EQ(key_of(std::string("\xFF\0\0\xFF", 4)), "1 2");
  EXPECT_EQ(key_of(std::string("\xFF\xFF\xFF\0", 4)), "3 3");
  EXPECT_EQ(key_of(std::string("\0\xFF\0", 3)), "mask");
  EXPECT_EQ(key_of("\x80"), "mask");
  EXPECT_EQ(key_of(std::string("\xFF\xFF\xFF\xFF\0\0", 6)), "");  // more than there are colours
}

// The profile of a picture stays with it, in whatever way its data goes into the document.
TEST(ImageBounds, TiffPicturesKeepTheirProfiles) {
  const std::string gray = testing::TestProfile("GRAY");
  const std::string rgb = testing::TestRgbProfile(2.2);
  const auto profile_of = [](TestTiff tiff, const std::string& profile) {
    return OpenedImage(tiff.SetBytes(34675, profile).Bytes()).Embed().image.profile;
  };
  TestTiff plain;
  plain.Sides(2, 1).Set(258, {8}).Set(259, {1}).Set(262, {1}).Set(277, {1}).Data({"ab"});
  EXPECT_EQ(profile_of(plain, gray), gray);
  EXPECT_EQ(profile_of(plain, rgb), "");
  TestTiff fax;
  fax.Sides(8, 2).Set(258, {1}).Set(259, {4}).Set(262, {0}).Set(277, {1}).Set(278, {2});
  fax.Data({"\x26\xA0\x01"});
  EXPECT_EQ(profile_of(fax, gray), gray);
  for (const int components : {1, 3}) {
    TestTiff jpeg;
    jpeg.Sides(16, 8)
        .Set(258, std::vector<std::uint32_t>(static_cast<std::size_t>(components), 8))
        .Set(259, {7})
        .Set(262, {components == 1 ? 1U : 6U})
        .Set(277, {static_cast<std::uint32_t>(components)})
        .Data({testing::TestJpeg(components)});
    EXPECT_EQ(profile_of(jpeg, components == 1 ? gray : rgb), components == 1 ? gray : rgb);
    EXPECT_EQ(profile_of(jpeg, components == 1 ? rgb : gray), "");
  }
}

// JPEG data of one strip goes into the document as it is, with the tables that the file has once.
TEST(ImageBounds, TiffPicturesOfJpegDataStayAsTheyAre) {
  const std::string data = testing::TestJpeg(3);
  const auto text_of = [&](std::uint32_t photometric, const std::string& strip,
                           const std::string& tables) {
    TestTiff tiff;
    tiff.Sides(16, 8).Set(258, {8, 8, 8}).Set(259, {7}).Set(262, {photometric}).Set(277, {3});
    if (!tables.empty()) {
      tiff.SetBytes(347, tables);
    }
    OpenedImage image(tiff.Data({strip}).Bytes());
    const EncodedImage embedded = image.Embed();
    return embedded.image.filter + embedded.image.parameters + " " +
           testing::ShortBytes(image.DataOf(embedded.image), 0);
  };
  const std::string whole = testing::ShortBytes(data, 0);
  EXPECT_EQ(text_of(6, data, ""), "DCTDecode/ColorTransform 1 " + whole);
  EXPECT_EQ(text_of(2, data, ""), "DCTDecode/ColorTransform 0 " + whole);
  const std::size_t frame = data.find("\xFF\xC0");
  const std::string tables = data.substr(0, frame) + "\xFF\xD9";
  EXPECT_EQ(text_of(6, "\xFF\xD8" + data.substr(frame), tables),
            "DCTDecode/ColorTransform 1 " + whole);
  EXPECT_EQ(text_of(6, data, "\xFF\xD8\xFF\xD9x"), "DCTDecode/ColorTransform 1 " + whole);
}

}  // namespace
}  // namespace TarnixTools::engines
