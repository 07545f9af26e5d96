// Decoded pictures as documents store them: in which way, with how many bits and colours, and that the
// pixels stay what they are.
#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/images/RasterEncoder.h"
#include "engines/support/images/WrittenImage.h"
#include "engines/support/pictures/ColorCount.h"
#include "pdf/filters/Filters.h"
#include "support/ByteText.h"
#include "support/Expected.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::IsAsExpected;
using testing::NoiseBytes;
using testing::ShortBytes;

// Bytes of a row one after the other; the same ones each time.
using ByteAt = std::function<unsigned(unsigned x, unsigned y)>;

Plane MakePlane(std::uint32_t width, std::uint32_t height, int channels, int bits,
                const ByteAt& byte_at) {
  Plane plane(width, height, channels, bits);
  plane.Fill(0);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::size_t i = 0; i < plane.row_bytes(); ++i) {
      plane.row(y)[i] = static_cast<unsigned char>(byte_at(static_cast<unsigned>(i), y));
    }
  }
  return plane;
}

ByteAt Noise(unsigned bound, unsigned factor = 1) {
  return [=](unsigned x, unsigned y) {
    return static_cast<unsigned char>(NoiseBytes(1, bound, x * 77 + y * 999 + 1)[0]) * factor;
  };
}

unsigned Slope(unsigned x, unsigned y) {
  return x * 3 + y * 5;
}

unsigned Curve(unsigned x, unsigned y) {
  return (x * x / 40 + y * y / 30 + x * y / 60) % 256;
}

std::string PlaneText(const Plane& plane) {
  std::string samples;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    samples.append(reinterpret_cast<const char*>(plane.row(y)), plane.row_bytes());
  }
  return std::to_string(plane.width()) + " x " + std::to_string(plane.height()) + " x " +
         std::to_string(plane.channels()) + " x " + std::to_string(plane.bits()) + " " +
         ShortBytes(samples, 24);
}

std::string RasterText(const Raster& raster) {
  return std::to_string(static_cast<int>(raster.space)) + " " + PlaneText(raster.color) +
         " palette " + ShortBytes(raster.palette, 48) + (raster.is_inverted ? " inverted" : "") +
         " key " + raster.color_key;
}

// The decoded rows of Flate data. How many bytes it has is told roughly: that depends on the library.
std::string StreamText(const ImageStream& stream) {
  std::string text = std::to_string(stream.width) + " x " + std::to_string(stream.height) + " x " +
                     std::to_string(stream.bits) + " " +
                     std::to_string(static_cast<int>(stream.space)) + " " + stream.filter +
                     stream.parameters + " palette " + ShortBytes(stream.palette, 24) + " decode " +
                     stream.decode + " key " + stream.color_key + " " + stream.entries;
  std::string data;
  for (const DataPiece& piece : stream.data) {
    data += std::string(piece.held.view());
  }
  if (stream.filter == "FlateDecode") {
    const pdf::Decoded rows = pdf::Decode({{pdf::FilterKind::kFlate, {}}}, data, 1 << 26);
    return text + " size " + std::to_string(std::bit_width(data.size())) + " filtered " +
           ShortBytes(rows.data, 30);
  }
  return text + " = " + ShortBytes(data, 40);
}

std::string EncodedText(const EncodedImage& image) {
  Pixels pixels = WrittenImage(image).Read();
  return StreamText(image.image) +
         (image.soft_mask ? "\n    mask " + StreamText(*image.soft_mask) : "") + "\n    pixels " +
         std::to_string(BytesPerPixel(pixels.layout)) + " " + ShortBytes(pixels.bytes) + "\n";
}

struct Content {
  const char* name;
  ByteAt byte_at;
};

std::vector<Content> Contents() {
  return {{"flat", [](unsigned, unsigned) { return 7U; }},
          {"white", [](unsigned, unsigned) { return 255U; }},
          {"black and white", Noise(2, 255)},
          {"four levels", Noise(4, 85)},
          {"sixteen levels", Noise(16, 17)},
          {"two of them", Noise(2, 85)},
          {"fifteen grays", Noise(15)},
          {"sixteen values", Noise(16)},
          {"seventeen values", Noise(17)},
          {"noise", Noise(256)},
          {"slope", Slope},
          {"curve", Curve},
          {"columns", [](unsigned x, unsigned) { return x * 37; }},
          {"rows", [](unsigned, unsigned y) { return y * 37; }},
          {"stripes", [](unsigned x, unsigned y) { return (x / 3 + y) % 2 == 0 ? 255U : 0U; }}};
}

TEST(StoredRasters, TakeTheSmallestWay) {
  std::string text;
  for (const auto& [name, byte_at] : Contents()) {
    for (const auto& [space, channels, bits] : {std::tuple(PictureSpace::kGray, 1, 8),
                                                {PictureSpace::kGray, 1, 1},
                                                {PictureSpace::kGray, 1, 4},
                                                {PictureSpace::kGray, 1, 16},
                                                {PictureSpace::kRgb, 3, 8},
                                                {PictureSpace::kCmyk, 4, 8},
                                                {PictureSpace::kRgb, 3, 16}}) {
      for (const Packing packing : {Packing::kQuick, Packing::kDense}) {
        Raster raster;
        raster.space = space;
        raster.color = MakePlane(41, 23, channels, bits, byte_at);
        raster.is_inverted = bits != 16 && packing == Packing::kQuick && channels != 3;
        text += std::string(name) + (packing == Packing::kDense ? " dense: " : ": ") +
                EncodedText(EncodeRaster(std::move(raster), packing));
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("images/stored.txt", text));
}

TEST(StoredRasters, HaveMasks) {
  std::string text;
  for (const PictureSpace space : {PictureSpace::kGray, PictureSpace::kRgb, PictureSpace::kCmyk}) {
    const int channels = space == PictureSpace::kGray ? 1 : space == PictureSpace::kRgb ? 3 : 4;
    for (const int bits : {8, 16}) {
      for (const auto& [name, byte_at] : Contents()) {
        for (const bool is_premultiplied : {false, true}) {
          Raster raster;
          raster.space = space;
          raster.color = MakePlane(9, 4, channels, bits, Slope);
          raster.alpha = MakePlane(9, 4, 1, bits, byte_at);
          raster.is_premultiplied = is_premultiplied;
          const EncodedImage image = EncodeRaster(std::move(raster));
          text += std::string(name) + ": " + std::to_string(image.image.bits) + " " +
                  std::to_string(static_cast<int>(image.image.space)) +
                  (image.soft_mask ? " mask " + StreamText(*image.soft_mask) : " none") + "\n";
        }
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("images/stored_masks.txt", text));
}

TEST(StoredRasters, KeepProfilesAndKeysAndPlanes) {
  std::string text;
  Raster with_profile;
  with_profile.space = PictureSpace::kRgb;
  with_profile.profile = testing::TestRgbProfile(2.2);
  with_profile.color = MakePlane(5, 3, 3, 8, [](unsigned, unsigned y) { return y * 50; });
  text += EncodedText(EncodeRaster(std::move(with_profile)));
  Raster with_key;
  with_key.color = MakePlane(5, 3, 1, 8, Noise(2, 255));
  with_key.color_key = "0 0";
  text += EncodedText(EncodeRaster(std::move(with_key)));
  for (const Packing packing : {Packing::kQuick, Packing::kDense}) {
    text += StreamText(EncodePlane(MakePlane(30, 20, 3, 8, Curve), PictureSpace::kLab, packing));
    text +=
        "\n" +
        StreamText(EncodePlane(MakePlane(700, 160, 1, 8, Curve), PictureSpace::kGray, packing)) +
        "\n";
  }
  text += StreamText(EncodePlane(MakePlane(60, 40, 1, 8, Curve), PictureSpace::kIndexed,
                                 Packing::kQuick)) +
          "\n";
  for (const std::uint64_t bytes : {9U, 10U, 11U, 12U, 13U}) {
    text += IsBestAsFax(bytes, 80, 10) ? "fax " : "no ";
    text += IsBestAsFax(bytes, 81, 10) ? "fax " : "no ";
    text += IsBestAsFax(bytes, 73, 11) ? "fax\n" : "no\n";
  }
  EXPECT_TRUE(IsAsExpected("images/stored_others.txt", text));
}

// Pictures of ever more colours, on both sides of every number that counts.
TEST(StoredRasters, HaveAsManyColorsAsTheyNeed) {
  std::string text;
  for (const unsigned colors : {1U, 2U, 3U, 4U, 5U, 15U, 16U, 17U, 255U, 256U, 257U, 300U}) {
    Raster rgb;
    rgb.space = PictureSpace::kRgb;
    rgb.color = MakePlane(19 * 3, 17, 1, 8, [&](unsigned x, unsigned y) {
      const unsigned color = (x / 3 + 19 * y) % colors;
      return x % 3 == 0 ? color * 7 : x % 3 == 1 ? color / 256 * 90 : color * 13 + 1;
    });
    Plane color(19, 17, 3, 8);
    for (std::uint32_t y = 0; y < 17; ++y) {
      std::copy_n(rgb.color.row(y), color.row_bytes(), color.row(y));
    }
    rgb.color = std::move(color);
    ReduceColors(rgb);
    text += std::to_string(colors) + " rgb " + RasterText(rgb) + "\n";
    for (const bool is_inverted : {false, true}) {
      Raster gray;
      gray.is_inverted = is_inverted;
      gray.color = MakePlane(19, 17, 1, 8,
                             [&](unsigned x, unsigned y) { return (x + 19 * y) % colors * 11; });
      ReduceColors(gray);
      text += "  gray " + RasterText(gray) + "\n";
    }
  }
  for (const auto& [name, byte_at] : Contents()) {
    Raster gray;
    gray.color = MakePlane(5, 2, 1, 8, byte_at);
    ReduceGray(gray);
    text += std::string(name) + " " + RasterText(gray) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("images/colors.txt", text));
}

// Palettes of so many grays and colours, with indices of one byte or packed.
TEST(StoredRasters, HavePalettesOnlyWhereTheyNeedThem) {
  std::string text;
  for (const std::size_t colors : {0U, 1U, 2U, 3U, 4U, 5U, 16U, 17U, 255U, 256U, 257U}) {
    std::array<std::string, 5> palettes;
    for (std::size_t i = 0; i < colors; ++i) {
      const auto steps = static_cast<char>(colors > 1 ? i * 255 / (colors - 1) : 0);
      palettes[0] += std::string(3, steps);
      palettes[1] += std::string(3, static_cast<char>(255 - static_cast<unsigned char>(steps)));
      palettes[2] += std::string(3, static_cast<char>(i * 3));
      palettes[3] += std::string{steps, steps, static_cast<char>(i == 1 ? 9 : steps)};
      palettes[4] += std::string{static_cast<char>(i == colors - 1 ? 3 : steps), steps, steps};
    }
    for (const std::string& palette : palettes) {
      for (const int transparent : {-1, 0, 1}) {
        Raster raster;
        ApplyPalette(raster,
                     MakePlane(5, 2, 1, 8,
                               Noise(std::max(
                                   1U, static_cast<unsigned>(std::min<std::size_t>(colors, 256))))),
                     palette, transparent);
        text += std::to_string(colors) + " " + RasterText(raster) + "\n";
      }
    }
  }
  for (const int bits : {1, 2, 4}) {
    Raster raster;
    ApplyPalette(raster, MakePlane(9, 2, 1, bits, Noise(256)),
                 std::string("\0\0\0\xFF\xFF\xFF", 6));
    text += std::to_string(bits) + " bits " + RasterText(raster) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("images/palettes.txt", text));
}

// The objects of a document with images of every kind, but for compressed data and the places of objects.
TEST(StoredRasters, AreWrittenWithTheirEntries) {
  std::vector<EncodedImage> images;
  for (const PictureSpace space :
       {PictureSpace::kNone, PictureSpace::kGray, PictureSpace::kRgb, PictureSpace::kCmyk,
        PictureSpace::kLab, PictureSpace::kIndexed}) {
    EncodedImage image;
    image.image.width = 3;
    image.image.height = 2;
    image.image.bits = space == PictureSpace::kNone ? 0 : 8;
    image.image.space = space;
    image.image.palette = space == PictureSpace::kIndexed ? "abcdef" : "";
    image.image.data.push_back({2, 3, {}});
    image.image.data.push_back(Hold("held"));
    image.image.data.push_back({0, 1, {}});
    images.push_back(std::move(image));
  }
  images[1].image.filter = "CCITTFaxDecode";
  images[1].image.parameters = "/K -1/Columns 3";
  images[1].image.decode = "1 0";
  images[1].image.color_key = "0 1";
  images[1].image.entries = "/Intent/Perceptual";
  images[2].soft_mask = ImageStream{};
  images[2].soft_mask->width = 1;
  images[2].soft_mask->height = 4;
  std::vector<const EncodedImage*> pointers;
  for (const EncodedImage& image : images) {
    pointers.push_back(&image);
  }
  const std::string document = DocumentOf(pointers, "file of the image");
  const std::string objects = document.substr(0, document.find("/ObjStm"));
  const std::string text = objects.substr(objects.find("5 0 obj"));
  EXPECT_TRUE(IsAsExpected("images/written.txt", text.substr(0, text.rfind("endobj"))));
  EXPECT_EQ(WrittenImage(images[5], "file of the image").Entry("ColorSpace"),
            "[/Indexed/DeviceRGB 1(abcdef)]");
}

TEST(StoredRasters, ShareTheirProfile) {
  std::vector<EncodedImage> images(3);
  for (std::size_t i = 0; i < images.size(); ++i) {
    images[i].image.width = images[i].image.height = 1;
    images[i].image.space = i == 2 ? PictureSpace::kIndexed : PictureSpace::kRgb;
    images[i].image.palette = i == 2 ? "abc" : "";
    images[i].image.profile = testing::TestRgbProfile(2.2);
    images[i].image.data.push_back(Hold("abc"));
  }
  const std::string document = DocumentOf({images.data(), &images[1], &images[2]});
  std::string text;
  for (std::size_t at = 0; (at = document.find("<<", at)) != std::string::npos; ++at) {
    const std::size_t end = std::min(document.find("stream", at), document.find("endobj", at));
    const std::string dictionary = document.substr(at, end - at);
    const bool has_profile = dictionary.find("/N ") != std::string::npos;
    text += (has_profile ? dictionary.substr(0, dictionary.find("/Length")) : dictionary) + "\n";
    at = end;
  }
  EXPECT_TRUE(IsAsExpected("images/shared_profile.txt", text.substr(0, text.find("/XRef"))));
}

}  // namespace
}  // namespace TarnixTools::engines
