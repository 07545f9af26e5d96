// What encoders make of pictures and data, byte by byte: each way that they have to code something is
// taken by one of these, and what is coded is decoded.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/BilevelJpegWriter.h"
#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/HuffmanDeflate.h"
#include "engines/support/codecs/Jbig2Decoder.h"
#include "engines/support/codecs/Jbig2Encoder.h"
#include "engines/support/codecs/JpegEncoder.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/codecs/JpegSamples.h"
#include "engines/support/codecs/JpegTables.h"
#include "engines/support/codecs/JpegTranscoder.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/codecs/PngRowWriter.h"
#include "engines/support/codecs/PngWriter.h"
#include "engines/support/codecs/jbig2/AdaptivePixel.h"
#include "pdf/file/ByteSink.h"
#include "pdf/filters/Filters.h"
#include "support/ByteText.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using testing::IsAsExpected;
using testing::NoiseBytes;
using testing::PixelsOf;
using testing::ShortBytes;
using testing::ShortBytesOf;

const std::uint8_t* BytesOf(const std::string& bytes) {
  return reinterpret_cast<const std::uint8_t*>(bytes.data());
}

// Every value once, more of some: those at `step` from each other.
std::string Values(unsigned first, unsigned last, unsigned step) {
  std::string values;
  for (unsigned value = first; value <= last; ++value) {
    values += std::string(value % step == 0 ? 9 : 1, static_cast<char>(value));
  }
  return values;
}

std::vector<std::string> DataToDeflate() {
  std::vector<std::string> all = {"",
                                  "a",
                                  "ab",
                                  "aab",
                                  std::string(5, '\0'),
                                  std::string(5, '\xFF'),
                                  std::string("\0\xFF\0\0\xFF", 5),
                                  std::string(16384, 'x'),
                                  std::string(16385, 'x'),
                                  NoiseBytes(1000),
                                  NoiseBytes(16384, 4) + NoiseBytes(16384, 200),
                                  NoiseBytes(16384, 4) + NoiseBytes(16384, 5) + NoiseBytes(100, 9),
                                  NoiseBytes(65535),
                                  NoiseBytes(65536),
                                  NoiseBytes(140'000)};
  // Lengths of codes in runs of every kind: of none, and of some.
  for (const unsigned gap : {1U, 2U, 3U, 4U, 9U, 10U, 11U, 12U, 137U, 138U, 139U, 140U, 200U}) {
    all.push_back(std::string(20, '\0') + std::string(9, static_cast<char>(gap + 1)));
  }
  for (const unsigned count : {2U, 3U, 4U, 6U, 7U, 8U, 13U, 14U, 20U}) {
    all.push_back(Values(10, 9 + count, 99) + std::string(50, '\xF0'));
  }
  for (const unsigned step : {3U, 7U, 50U}) {
    all.push_back(Values(0, 255, step));
  }
  return all;
}

TEST(CodedBytes, OfDataByHuffman) {
  std::string text;
  for (const std::string& data : DataToDeflate()) {
    const HeldBytes packed = DeflateByHuffman(BytesOf(data), data.size());
    text += ShortBytes(data, 4) + " -> " + std::to_string(HuffmanSize(BytesOf(data), data.size())) +
            " " + ShortBytes(packed.view(), 60) + "\n";
    const pdf::Decoded decoded =
        pdf::Decode({{pdf::FilterKind::kFlate, {}}}, packed.view(), std::size_t{1} << 20);
    EXPECT_EQ(decoded.data, data);
  }
  EXPECT_TRUE(IsAsExpected("codecs/huffman.txt", text));
}

// Rows of bits: all white, all black, stripes of so many pixels, noise.
std::vector<std::string> BitRows(std::uint32_t width, std::uint32_t height, unsigned kind) {
  const std::string noise = NoiseBytes(std::size_t{width} * height + 8, 256, kind);
  std::vector<std::string> rows;
  for (std::uint32_t y = 0; y < height; ++y) {
    std::string row((width + 7) / 8, '\0');
    for (std::uint32_t x = 0; x < width; ++x) {
      const bool is_white = kind == 0   ? true
                            : kind == 1 ? false
                            : kind < 70 ? (x + y) / kind % 2 == 0
                                        : static_cast<unsigned char>(noise[y * width + x]) < kind;
      row[x / 8] = static_cast<char>(row[x / 8] | (is_white ? 0x80 >> x % 8 : 0));
    }
    rows.push_back(row);
  }
  return rows;
}

struct BitSize {
  std::uint32_t width, height;
  unsigned kind;
};

const std::vector<BitSize> kBitSizes = {{1, 1, 0},     {1, 1, 1},    {1, 9, 2},       {8, 8, 1},
                                        {8, 8, 3},     {7, 5, 2},    {9, 3, 70},      {33, 17, 3},
                                        {63, 9, 64},   {64, 4, 63},  {65, 6, 130},    {129, 5, 200},
                                        {200, 3, 250}, {700, 2, 65}, {520, 600, 254}, {520, 9, 2},
                                        {2600, 2, 69}, {3000, 3, 1}, {6000, 1, 254},  {31, 40, 5}};

std::string NameOf(const BitSize& size) {
  return std::to_string(size.width) + " x " + std::to_string(size.height) + " of " +
         std::to_string(size.kind);
}

TEST(CodedBytes, OfFax) {
  std::string text;
  for (const BitSize& size : kBitSizes) {
    const std::vector<std::string> rows = BitRows(size.width, size.height, size.kind);
    CcittEncoder encoder(size.width);
    for (const std::string& row : rows) {
      encoder.AddRow(BytesOf(row), 0);
    }
    encoder.Finish();
    text += NameOf(size) + " -> " + ShortBytes(encoder.data(), 120) + "\n";
    CcittDecoder decoder(encoder.data(), {.k = -1, .columns = size.width});
    for (const std::string& row : rows) {
      std::string decoded(row.size(), '\0');
      EXPECT_TRUE(decoder.ReadRow(reinterpret_cast<std::uint8_t*>(decoded.data())));
      const std::uint8_t unused = static_cast<std::uint8_t>(0xFF >> (size.width + 7) % 8 >> 1);
      decoded.back() = static_cast<char>(decoded.back() & ~unused);
      EXPECT_EQ(decoded, row) << NameOf(size);
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/fax.txt", text));
}

TEST(CodedBytes, OfJbig2) {
  std::string text;
  for (const BitSize& size : kBitSizes) {
    std::string rows;
    for (const std::string& row : BitRows(size.width, size.height, size.kind)) {
      rows += row;
    }
    const auto coded = EncodeJbig2({.rows = BytesOf(rows),
                                    .stride = rows.size() / size.height,
                                    .width = size.width,
                                    .height = size.height,
                                    .black = 0});
    ASSERT_TRUE(coded);
    const auto decoded = DecodeJbig2("", *coded, size.width, size.height);
    ASSERT_TRUE(decoded);
    text += NameOf(size) + " -> " + ShortBytes(*coded, 120) + " = " + ShortBytes(decoded->rows) +
            (decoded->is_complete ? "" : " cut") + (NeedsOwnJbig2("", *coded) ? " own" : "") + "\n";
  }
  EXPECT_TRUE(IsAsExpected("codecs/jbig2.txt", text));
}

// Screens of dots that repeat at some distance, stripes, and noise, of several sizes: at which distance
// the encoder looks for what repeats.
TEST(CodedBytes, OfJbig2LookWhereScreensRepeat) {
  std::string text;
  for (const auto& [width, height] :
       {std::pair(127U, 40U), {128U, 64U}, {160U, 65U}, {300U, 300U}, {257U, 520U}}) {
    for (const auto& [step_x, step_y] :
         {std::pair(5U, 4U), {7U, 7U}, {8U, 3U}, {12U, 5U}, {24U, 1U}, {25U, 25U}, {3U, 24U}}) {
      std::string rows;
      for (std::uint32_t y = 0; y < height; ++y) {
        std::string row((width + 7) / 8, '\0');
        for (std::uint32_t x = 0; x < width; ++x) {
          const std::uint32_t cell = (x + y / step_y * 3) % step_x + y % step_y * 2;
          const bool is_dot = y * 4 < height ? cell < 2 : cell < 2 + (x + y) / 90;
          row[x / 8] = static_cast<char>(row[x / 8] | (is_dot ? 0x80 >> x % 8 : 0));
        }
        rows += row;
      }
      const BitPicture picture{.rows = BytesOf(rows),
                               .stride = (width + 7) / 8,
                               .width = width,
                               .height = height,
                               .black = 1};
      const auto place = jbig2::ChooseAdaptivePixel(picture);
      text += std::to_string(width) + " x " + std::to_string(height) + " of " +
              std::to_string(step_x) + " " + std::to_string(step_y) + ": " +
              std::to_string(place.x) + " " + std::to_string(place.y) + " " +
              ShortBytes(*EncodeJbig2(picture)) + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/jbig2_screens.txt", text));
}

TEST(CodedBytes, OfJpegInBlackAndWhite) {
  std::string text;
  for (const BitSize& size : kBitSizes) {
    pdf::StringSink sink;
    BilevelJpegWriter writer(sink, size.width, size.height);
    for (const std::string& row : BitRows(size.width, size.height, size.kind)) {
      writer.WriteRow(BytesOf(row));
    }
    writer.Finish();
    const std::string jpeg = sink.Take();
    text += NameOf(size) + " -> " + ShortBytes(jpeg, 300) + " = " +
            ShortBytesOf(PixelsOf(jpeg), 16) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("codecs/bilevel_jpeg.txt", text));
}

// A slope with a little noise, steps and flat places, other ones for each component.
std::string Samples(std::uint32_t width, std::uint32_t height, int components) {
  const std::string noise = NoiseBytes(std::size_t{width} * height * 4, 24, 5);
  std::string samples;
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      for (int i = 0; i < components; ++i) {
        const unsigned slope = x * 5 + y * (3 + static_cast<unsigned>(i)) +
                               (x / 9 + y / 5) % 3 * 60 * static_cast<unsigned>(i + 1);
        const unsigned grain = static_cast<unsigned char>(noise[samples.size()]);
        samples += static_cast<char>(y < 3    ? 255
                                     : x == 4 ? 0
                                              : (slope + (x % 16 < 8 ? grain : 0)) % 256);
      }
    }
  }
  return samples;
}

std::string JpegText(const std::string& jpeg) {
  return ShortBytes(jpeg) + " = " + ShortBytesOf(PixelsOf(jpeg));
}

TEST(CodedBytes, OfJpegAsSmallAsItGets) {
  std::string text;
  for (const int components : {1, 3, 4}) {
    for (const auto& [width, height] :
         {std::pair(1U, 1U), {8U, 8U}, {9U, 17U}, {40U, 33U}, {150U, 70U}}) {
      const std::string samples = Samples(width, height, components);
      for (const int quality : {1, 30, 75, 92, 100}) {
        for (int flags = 0; flags < (components == 1 ? 2 : 4); ++flags) {
          JpegEncoder encoder({.width = width,
                               .height = height,
                               .components = components,
                               .quality = quality,
                               .is_subsampled = (flags & 2) != 0,
                               .is_progressive = (flags & 1) != 0});
          const std::size_t row_bytes = samples.size() / height;
          for (std::size_t at = 0; at < samples.size(); at += row_bytes) {
            encoder.AddRow(BytesOf(samples) + at);
          }
          text += std::to_string(width) + " x " + std::to_string(height) + " x " +
                  std::to_string(components) + " at " + std::to_string(quality) + " as " +
                  std::to_string(flags) + " -> " + JpegText(encoder.Finish()) + "\n";
        }
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/jpeg_encoder.txt", text));
}

TEST(CodedBytes, OfJpegWrittenRowByRow) {
  std::string text;
  for (const PixelLayout layout : {PixelLayout::kGray, PixelLayout::kRgb, PixelLayout::kBgrx}) {
    const int bytes = static_cast<int>(BytesPerPixel(layout));
    const std::string samples = Samples(37, 21, bytes);
    for (const auto& [quality, dpi] :
         {std::pair(1, 0), {50, 72}, {89, 300}, {90, 65535}, {91, 1}, {100, 0}}) {
      pdf::StringSink sink;
      JpegWriter writer(
          sink, {.width = 37, .height = 21, .layout = layout, .quality = quality, .dpi = dpi});
      writer.WriteRows(BytesOf(samples), samples.size() / 21, 20);
      writer.WriteRows(BytesOf(samples) + samples.size() / 21 * 20, samples.size() / 21, 5);
      writer.Finish();
      const std::string jpeg = sink.Take();
      text += std::to_string(bytes) + " at " + std::to_string(quality) + " " + std::to_string(dpi) +
              " -> " + testing::HexOf(jpeg.substr(0, 20)) + " " + JpegText(jpeg) + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/jpeg_writer.txt", text));
}

TEST(CodedBytes, OfJpegCodedAnew) {
  using testing::Coding;
  std::string text;
  for (const J_COLOR_SPACE space : {JCS_GRAYSCALE, JCS_RGB, JCS_CMYK}) {
    for (const Coding coding : {Coding::kHuffman, Coding::kProgressive, Coding::kArithmetic,
                                Coding::kProgressiveArithmetic}) {
      for (int flags = 0; flags < 8; ++flags) {
        const std::string jpeg =
            testing::Encoded({.space = space,
                              .coded = (flags & 1) != 0 ? space : JCS_UNKNOWN,
                              .coding = coding,
                              .quality = (flags & 2) != 0 ? 97 : 60,
                              .is_subsampled = (flags & 4) == 0,
                              .has_jfif = (flags & 4) == 0,
                              .profile = (flags & 2) != 0 ? std::string(200, 'p') : std::string()});
        const auto huffman = CodeByHuffman(jpeg);
        const auto optimized = OptimizeJpeg(jpeg);
        text += std::to_string(space) + " " + std::to_string(static_cast<int>(coding)) + " " +
                std::to_string(flags) + " " + JpegText(jpeg) + " -> " +
                JpegText(huffman ? huffman->data : "") + ", " + JpegText(optimized.value_or("")) +
                "\n";
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/jpeg_transcoder.txt", text));
}

// A picture at every size that it may come out at, and its lightness alone.
TEST(CodedBytes, OfJpegAreReadAtSeveralSizes) {
  std::string text;
  for (const J_COLOR_SPACE space : {JCS_GRAYSCALE, JCS_RGB, JCS_CMYK}) {
    for (const int color_transform : {-1, 0, 1}) {
      const std::string jpeg = testing::Encoded({.space = space, .has_jfif = false});
      for (const std::uint32_t least : {1U, 4U, 5U, 6U, 9U, 10U, 11U, 19U, 20U, 21U, 40U, 99U}) {
        for (const JpegColors colors : {JpegColors::kAll, JpegColors::kLightness}) {
          const auto reader = JpegReader::Open(jpeg, color_transform, {least, least / 2}, colors);
          ASSERT_TRUE(reader);
          std::string rows(std::size_t{reader->width()} *
                               static_cast<std::size_t>(reader->components()) * reader->height(),
                           '\0');
          auto* to = reinterpret_cast<std::uint8_t*>(rows.data());
          int count = 0;
          for (; reader->ReadRow(to); to += rows.size() / reader->height()) {
            ++count;
          }
          text += std::to_string(space) + " " + std::to_string(color_transform) + " " +
                  std::to_string(least) + " -> " + std::to_string(reader->width()) + " x " +
                  std::to_string(reader->height()) + " x " + std::to_string(reader->components()) +
                  " " + std::to_string(count) + " rows " + std::to_string(reader->held_bytes()) +
                  " held " + ShortBytes(rows) + "\n";
        }
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/jpeg_reader.txt", text));
}

std::string StepsText(const JpegSteps& steps) {
  std::string text;
  for (const std::uint16_t step : steps) {
    text += " " + std::to_string(step);
  }
  return text;
}

// The steps of all qualities, and what qualities steps are taken for.
TEST(CodedBytes, OfJpegHaveStepsThatTellTheirQuality) {
  std::string text;
  for (int quality = 1; quality <= 100; quality += quality % 10 == 1 ? 8 : 1) {
    for (const JpegPlane plane : {JpegPlane::kLuminance, JpegPlane::kChrominance}) {
      JpegHeader header;
      header.components = 3;
      header.component[1].table = 1;
      header.steps[0] = EncoderSteps(plane, quality);
      header.steps[1] = LibjpegSteps(plane, quality);
      text += std::to_string(quality) + ":" + StepsText(header.steps[0]) + "\n";
      const auto found = EstimateQuality(header);
      ASSERT_TRUE(found);
      text += std::to_string(found->luminance) + " " + std::to_string(found->chrominance);
      // Somewhat coarser and finer ones, and from which quality on they are as coarse.
      for (const int change : {-7, -1, 1, 5}) {
        for (std::uint16_t& step : header.steps[0]) {
          step = static_cast<std::uint16_t>(std::max(1, step + change));
        }
        int coarse = 0;
        for (int other = 1; other <= 100; ++other) {
          coarse += AreStepsAsCoarse(header, other) ? 1 : 0;
        }
        text += ", " + std::to_string(EstimateQuality(header)->luminance) + " " +
                std::to_string(coarse);
      }
      text += "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/jpeg_steps.txt", text));
}

// The chunks of a PNG file: their types and lengths, short ones with their bytes, and the rows as they
// are filtered.
std::string PngText(const std::string& file) {
  std::string text = testing::HexOf(file.substr(0, 8));
  std::string packed;
  for (std::size_t at = 8; at + 12 <= file.size();) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      length = length << 8U | static_cast<unsigned char>(file[at + i]);
    }
    const std::string type = file.substr(at + 4, 4);
    text += " " + type;
    if (type == "IDAT") {
      packed += file.substr(at + 8, length);
    } else {
      text += ":" + testing::HexOf(file.substr(at + 8, length + 4));
    }
    at += length + 12;
  }
  const pdf::Decoded rows = pdf::Decode({{pdf::FilterKind::kFlate, {}}}, packed, 1 << 24);
  return text + (rows.complete ? " = " : " cut ") + ShortBytes(rows.data, 40);
}

TEST(CodedBytes, OfPngFiles) {
  std::string text;
  for (const auto& [width, height] :
       {std::pair(1U, 1U), {2U, 3U}, {37U, 21U}, {300U, 2U}, {900U, 300U}}) {
    for (const bool is_gray : {true, false}) {
      pdf::StringSink sink;
      PngRowWriter writer(sink, {.width = width,
                                 .height = height,
                                 .is_gray = is_gray,
                                 .dpi = static_cast<int>(width) - 1});
      const std::string samples = Samples(width, height, is_gray ? 1 : 3);
      for (std::size_t at = 0; at < samples.size(); at += samples.size() / height) {
        writer.WriteRow(BytesOf(samples) + at);
      }
      writer.Finish();
      text += PngText(sink.Take()) + "\n";
    }
    for (const int channels : {1, 2, 3, 4}) {
      const std::string samples = Samples(width, height, channels);
      Plane plane(width, height, channels, 8);
      for (std::uint32_t y = 0; y < height; ++y) {
        samples.copy(reinterpret_cast<char*>(plane.row(y)), plane.row_bytes(),
                     y * plane.row_bytes());
      }
      text += PngText(EncodePng(std::move(plane))) + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("codecs/png.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
