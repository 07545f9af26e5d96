// What image files may do otherwise: interlaced rows of any depth, codes that grow, palettes of a
// picture's own, channels that are no colour, colours that are none of a document's. Each holds the
// pixels that it was made of.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/images/WrittenImage.h"
#include "support/JpegImage.h"
#include "support/TestImage.h"
#include "support/TestImages.h"
#include "support/TestTiff.h"

namespace TarnixTools::engines {
namespace {

using testing::ImageCodeOf;
using testing::Little16;
using testing::OpenedImage;
using testing::PngChunk;
using testing::TestPng;
using testing::TestTiff;

using ValueAt = std::function<unsigned(std::uint32_t, std::uint32_t)>;

std::string RowsOf(const std::string& file) {
  return WrittenImage(OpenedImage(file).Embed(), file).Rows();
}

// The pass that a pixel belongs to, as a square of eight by eight pixels has it.
constexpr const char* kAdam7[] = {"16462646", "77777777", "56565656", "77777777",
                                  "36463646", "77777777", "56565656", "77777777"};

// The rows of those pixels that belong to a pass, or of all.
std::string PngRows(std::uint32_t width, std::uint32_t height, int bits, const ValueAt& value,
                    char pass) {
  std::string rows;
  for (std::uint32_t y = 0; y < height; ++y) {
    std::string row;
    int filled = 8;
    for (std::uint32_t x = 0; x < width; ++x) {
      if (pass != 0 && kAdam7[y % 8][x % 8] != pass) {
        continue;
      }
      if (filled == 8) {
        row += '\0';
        filled = 0;
      }
      filled += bits;
      row.back() =
          static_cast<char>(static_cast<unsigned char>(row.back()) | value(x, y) << (8 - filled));
    }
    if (!row.empty()) {
      rows += '\0' + row;
    }
  }
  return rows;
}

TEST(PngFile, DeinterlacesPixelsOfAnyDepthAndNumber) {
  for (const int bits : {1, 2, 4, 8}) {
    const ValueAt value = [&](std::uint32_t x, std::uint32_t y) {
      return (x * x + 3 * y + x * y) % (1U << bits);
    };
    for (const auto& [width, height] :
         {std::pair{1U, 1U}, {2U, 3U}, {4U, 5U}, {5U, 9U}, {8U, 8U}, {9U, 4U}, {19U, 17U}}) {
      TestPng png{.width = width, .height = height, .bits = bits, .color_type = 0};
      png.rows = PngRows(width, height, bits, value, 0);
      TestPng interlaced = png;
      interlaced.interlaced = true;
      interlaced.rows.clear();
      for (char pass = '1'; pass <= '7'; ++pass) {
        interlaced.rows += PngRows(width, height, bits, value, pass);
      }
      EXPECT_EQ(RowsOf(interlaced.Bytes()), RowsOf(png.Bytes()))
          << bits << " " << width << " " << height;
    }
  }
}

TEST(PngFile, InterlacedPalettesMayBeTransparent) {
  const ValueAt value = [](std::uint32_t x, std::uint32_t y) { return (x + y) % 4; };
  TestPng png{.width = 5, .height = 3, .bits = 2, .color_type = 3, .interlaced = true};
  for (char pass = '1'; pass <= '7'; ++pass) {
    png.rows += PngRows(5, 3, 2, value, pass);
  }
  png.chunks = PngChunk("PLTE", "abcdefghijkl") + PngChunk("tRNS", std::string("\x10\x80\0", 3));
  OpenedImage image(png.Bytes());
  const EncodedImage embedded = image.Embed();
  ASSERT_TRUE(embedded.soft_mask);
  EXPECT_EQ(image.SamplesOf(*embedded.soft_mask),
            std::string("\x10\x80\0\xFF\x10\x80\0\xFF\x10\x80\0\xFF\x10\x80\0", 15));
}

TEST(PngFile, KeepsAProfileThatFits) {
  const std::string profile = testing::TestRgbProfile(2.2);
  TestPng png{.width = 1, .height = 1, .bits = 8, .color_type = 2, .rows = std::string("\0abc", 4)};
  const std::string chunk = std::string("name\0\0", 6) + testing::Deflated(profile);
  const auto profile_of = [&](const std::string& bytes) {
    png.chunks = PngChunk("iCCP", bytes);
    return OpenedImage(png.Bytes()).Embed().image.profile;
  };
  EXPECT_EQ(profile_of(chunk), profile);
  EXPECT_EQ(profile_of(chunk.substr(0, 4)), "");
  EXPECT_EQ(profile_of(chunk.substr(0, 5)), "");
  EXPECT_EQ(profile_of(chunk.substr(0, 60)), "");
  png.color_type = 0;
  png.rows = std::string("\0a", 2);
  EXPECT_EQ(profile_of(chunk), "");
}

TEST(PngFile, TellsATransparentColorOfFewerBits) {
  TestPng png{
      .width = 4, .height = 1, .bits = 2, .color_type = 0, .rows = std::string("\0\x1B", 2)};
  png.chunks = PngChunk("tRNS", std::string("\xFF\xFE", 2));  // the lowest bits count
  EXPECT_EQ(OpenedImage(png.Bytes()).Embed().image.color_key, "2 2");
  png.chunks = PngChunk("tRNS", "x");
  EXPECT_EQ(OpenedImage(png.Bytes()).Embed().image.color_key, "");
}

// Codes as GIF 89a has them: a table that grows up to 4096 strings, cleared when it is full.
//   cleared - whether that is done; otherwise the full table serves to the end
class GifCoder {
 public:
  GifCoder(unsigned root_bits, bool cleared) : root_bits_(root_bits), cleared_(cleared) {}

  std::string Code(const std::string& values) {
    Clear();
    std::string known;
    for (const char value : values) {
      if (table_.contains(known + value)) {
        known += value;
        continue;
      }
      Put(table_.at(known));
      if (table_.size() + 2 < 4096) {
        const auto next = static_cast<unsigned>(table_.size()) + 2;
        table_[known + value] = next;
        bits_ += next == 1U << bits_ ? 1 : 0;
      } else if (cleared_) {
        Clear();
      }
      known = value;
    }
    Put(table_.at(known));
    // The reader makes an entry of what was put last, too.
    bits_ += table_.size() + 2 == 1U << bits_ && bits_ < 12 ? 1 : 0;
    Put((1U << root_bits_) + 1);
    if (filled_ > 0) {
      data_ += static_cast<char>(pending_);
    }
    std::string blocks(1, static_cast<char>(root_bits_));
    for (std::size_t i = 0; i < data_.size(); i += 255) {
      const std::string block = data_.substr(i, 255);
      blocks += static_cast<char>(block.size()) + block;
    }
    return blocks + '\0';
  }

 private:
  void Clear() {
    if (bits_ > 0) {
      Put(1U << root_bits_);
    } else {
      bits_ = root_bits_ + 1;
      Put(1U << root_bits_);
    }
    table_.clear();
    for (unsigned i = 0; i < 1U << root_bits_; ++i) {
      table_[std::string(1, static_cast<char>(i))] = i;
    }
    bits_ = root_bits_ + 1;
  }

  void Put(unsigned code) {
    pending_ |= code << filled_;
    filled_ += bits_;
    for (; filled_ >= 8; filled_ -= 8, pending_ >>= 8) {
      data_ += static_cast<char>(pending_);
    }
  }

  unsigned root_bits_;
  bool cleared_;
  unsigned bits_ = 0;
  std::map<std::string, unsigned> table_;
  unsigned pending_ = 0;
  unsigned filled_ = 0;
  std::string data_;
};

// A picture with a palette of grays of its own.
std::string Gif(std::uint32_t width, std::uint32_t height, unsigned root_bits,
                const std::string& values, bool cleared = true) {
  std::string palette;
  for (unsigned i = 0; i < 1U << root_bits; ++i) {
    palette += std::string(3, static_cast<char>(i * 255 / ((1U << root_bits) - 1)));
  }
  return "GIF87a" + Little16(width) + Little16(height) + std::string("\x80\0\0", 3) + "xxxyyy," +
         Little16(0) + Little16(0) + Little16(width) + Little16(height) +
         static_cast<char>(0x80 | (root_bits - 1)) + palette +
         GifCoder(root_bits, cleared).Code(values);
}

std::string Spread(std::size_t count, unsigned values) {
  std::string spread;
  std::uint32_t state = 7;
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 1664525 + 1013904223;
    spread += static_cast<char>((state >> 24) % (i % 50 < 20 ? 2 : values));
  }
  return spread;
}

TEST(GifFile, DecodesCodesThatGrow) {
  for (const unsigned root_bits : {2U, 4U, 8U}) {
    for (const bool cleared : {true, false}) {
      const std::string values = Spread(std::size_t{120} * 100, 1U << root_bits);
      std::string expected;
      for (std::size_t i = 0; i < values.size(); ++i) {
        char text[16];
        const unsigned value = static_cast<unsigned char>(values[i]);
        std::snprintf(text, sizeof text, "%02X%c", value * 255 / ((1U << root_bits) - 1),
                      i % 120 == 119 ? '\n' : ' ');
        expected += text;
      }
      EXPECT_EQ(RowsOf(Gif(120, 100, root_bits, values, cleared)), expected) << root_bits;
    }
  }
}

TEST(GifFile, DecodesRunsWhoseCodesAreBeingMade) {
  EXPECT_EQ(RowsOf(Gif(10, 1, 2, std::string(10, '\1'))), "55 55 55 55 55 55 55 55 55 55\n");
}

TestTiff Rgb(int photometric, int samples, const std::string& data) {
  TestTiff tiff;
  return tiff.Sides(2, 1)
      .Set(258, std::vector<std::uint32_t>(static_cast<std::size_t>(samples), 8))
      .Set(259, {1})
      .Set(262, {static_cast<std::uint32_t>(photometric)})
      .Set(277, {static_cast<std::uint32_t>(samples)})
      .Data({data});
}

TEST(TiffFile, DropsChannelsThatAreNeitherColorNorAlpha) {
  EXPECT_EQ(RowsOf(Rgb(2, 5, "abcXYdefZW").Set(338, {0, 0}).Bytes()), "616263 646566\n");
  EXPECT_EQ(RowsOf(Rgb(1, 2, "aXbY").Set(338, {0}).Bytes()), "61 62\n");
  TestTiff deep = Rgb(1, 2, "axXYbyZW").Set(258, {16, 16}).Set(338, {0});
  OpenedImage image(deep.Bytes());
  EXPECT_EQ(image.SamplesOf(image.Embed().image), "xayb");  // high byte first
}

TEST(TiffFile, HoldsFourInks) {
  OpenedImage image(Rgb(5, 4, "abcdefgh").Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.space, PictureSpace::kCmyk);
  EXPECT_EQ(image.SamplesOf(embedded.image), "abcdefgh");
}

TEST(TiffFile, TurnsOtherColorsIntoRgb) {
  // Brightness and two differences, without loss: gray, and pure red as nearly as bytes tell it.
  const std::string gray = RowsOf(Rgb(6, 3, "\x40\x80\x80\xC8\x80\x80").Set(530, {1, 1}).Bytes());
  EXPECT_EQ(gray, "40 C8\n");
  const std::string red = RowsOf(Rgb(6, 3, "\x4C\x55\xFF\x4C\x55\xFF").Set(530, {1, 1}).Bytes());
  EXPECT_TRUE(red.starts_with("FE0000") || red.starts_with("FF0000") || red.starts_with("FE0100"))
      << red;
}

TEST(TiffFile, DecodesJpegDataOfSeveralStrips) {
  const std::string red = testing::MakeJpeg(16, 8, {255, 0, 0}, {255, 0, 0});
  const std::string blue = testing::MakeJpeg(16, 8, {0, 0, 255}, {0, 0, 255});
  TestTiff tiff;
  tiff.Sides(16, 16).Set(258, {8, 8, 8}).Set(259, {7}).Set(262, {6}).Set(277, {3}).Set(278, {8});
  tiff.Set(530, {2, 2}).Data({red, blue});
  const std::string file = tiff.Bytes();
  const Pixels pixels = WrittenImage(OpenedImage(file).Embed(), file).Read();
  const std::string rows = pixels.Text();
  EXPECT_EQ(rows.substr(0, 2), "FE");
  EXPECT_EQ(rows.substr(rows.size() - 3, 2), "FE");
}

TEST(TiffFile, RejectsAPaletteThatIsNotThere) {
  EXPECT_EQ(ImageCodeOf(Rgb(3, 1, "ab").Bytes()), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Rgb(3, 1, "ab").Set(320, std::vector<std::uint32_t>(767, 1)).Bytes()),
            ImageErrorCode::kDamaged);
}

TEST(TiffFile, TakesPalettesOfEightBitsForWhatTheyAre) {
  std::vector<std::uint32_t> map(768);
  map[5] = 10;
  map[256 + 5] = 20;
  map[512 + 5] = 30;
  EXPECT_EQ(RowsOf(Rgb(3, 1, "\x05\x05").Set(320, map).Bytes()), "0A141E 0A141E\n");
  map[5] = 0x1000;
  map[256 + 5] = 0x20FF;
  map[512 + 5] = 0xFF00;
  EXPECT_EQ(RowsOf(Rgb(3, 1, "\x05\x05").Set(320, map).Bytes()), "1020FF 1020FF\n");
}

// A JPEG without markers of programs, whose components have these names.
std::string JpegNamed(const std::string& names) {
  std::string jpeg = testing::TestJpeg(3);
  const std::size_t frame = jpeg.find("\xFF\xC0");
  const std::size_t scan = jpeg.find("\xFF\xDA");
  for (std::size_t i = 0; i < 3; ++i) {
    jpeg[frame + 10 + 3 * i] = names[i];
    jpeg[scan + 5 + 2 * i] = names[i];
  }
  return jpeg;
}

TEST(JpegFile, ComponentsNamedRgbAreNotTransformed) {
  EXPECT_EQ(OpenedImage(JpegNamed("RGB")).Embed().image.parameters, "/ColorTransform 0");
  for (const char* names : {"XGB", "RXB", "RGX", "\1\2\3"}) {
    EXPECT_EQ(OpenedImage(JpegNamed(names)).Embed().image.parameters, "") << names;
  }
}

}  // namespace
}  // namespace TarnixTools::engines
