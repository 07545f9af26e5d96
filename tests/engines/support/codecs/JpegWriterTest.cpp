#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/BilevelJpegWriter.h"
#include "engines/support/codecs/JpegWriter.h"
#include "pdf/Error.h"
#include "support/JpegImage.h"

namespace TarnixTools::engines {
namespace {

using testing::DecodeJpeg;
using testing::JpegImage;

std::string Written(const JpegSettings& settings, const std::vector<std::uint8_t>& pixels) {
  pdf::StringSink sink;
  JpegWriter writer(sink, settings);
  const std::size_t stride = settings.width * BytesPerPixel(settings.layout);
  writer.WriteRows(pixels.data(), stride, pixels.size() / stride);
  writer.Finish();
  return sink.Take();
}

// Left half of one colour, right half of another.
std::vector<std::uint8_t> Halves(const JpegSettings& settings, std::vector<std::uint8_t> left,
                                 std::vector<std::uint8_t> right) {
  std::vector<std::uint8_t> pixels;
  for (std::uint32_t i = 0; i < settings.width * settings.height; ++i) {
    const auto& color = i % settings.width < settings.width / 2 ? left : right;
    pixels.insert(pixels.end(), color.begin(), color.end());
  }
  return pixels;
}

TEST(JpegWriter, WritesWhatDecodersRead) {
  JpegSettings settings{.width = 40, .height = 30, .layout = PixelLayout::kRgb, .dpi = 150};
  const JpegImage rgb =
      DecodeJpeg(Written(settings, Halves(settings, {250, 10, 10}, {10, 10, 250})));
  EXPECT_EQ(rgb.width, 40);
  EXPECT_EQ(rgb.height, 30);
  EXPECT_EQ(rgb.components, 3);
  EXPECT_EQ(rgb.density_unit, 1);
  EXPECT_EQ(rgb.density_x, 150);
  EXPECT_FALSE(rgb.is_subsampled);
  EXPECT_TRUE(rgb.IsNear(5, 5, {250, 10, 10}));
  EXPECT_TRUE(rgb.IsNear(35, 29, {10, 10, 250}));
  settings.layout = PixelLayout::kBgrx;
  const JpegImage bgrx =
      DecodeJpeg(Written(settings, Halves(settings, {10, 10, 250, 0}, {250, 10, 10, 99})));
  EXPECT_TRUE(bgrx.IsNear(5, 5, {250, 10, 10}));
  settings.layout = PixelLayout::kGray;
  const JpegImage gray = DecodeJpeg(Written(settings, Halves(settings, {90}, {200})));
  EXPECT_EQ(gray.components, 1);
  EXPECT_TRUE(gray.IsNear(5, 5, {90, 90, 90}));
}

TEST(JpegWriter, SubsamplesColorWhereQualityIsLow) {
  JpegSettings settings{.width = 32, .height = 32, .quality = 60};
  const auto pixels = Halves(settings, {250, 10, 10}, {10, 10, 250});
  const std::string small = Written(settings, pixels);
  EXPECT_TRUE(DecodeJpeg(small).is_subsampled);
  settings.quality = 90;
  EXPECT_FALSE(DecodeJpeg(Written(settings, pixels)).is_subsampled);
  EXPECT_LT(small.size(), Written(settings, pixels).size());
}

TEST(JpegWriter, TakesRowsInPiecesAndNoMoreThanThereAre) {
  const JpegSettings settings{.width = 16, .height = 40, .layout = PixelLayout::kGray};
  const auto pixels = Halves(settings, {90}, {200});
  pdf::StringSink sink;
  JpegWriter writer(sink, settings);
  writer.WriteRows(pixels.data(), 16, 3);
  writer.WriteRows(pixels.data() + 48, 16, 37);
  writer.WriteRows(pixels.data(), 16, 5);
  writer.Finish();
  EXPECT_EQ(sink.bytes(), Written(settings, pixels));
}

TEST(JpegWriter, RefusesSidesOutOfRange) {
  pdf::StringSink sink;
  for (const auto& [width, height] :
       {std::pair(0U, 5U), std::pair(5U, 0U), std::pair(65'501U, 5U), std::pair(5U, 65'501U)}) {
    try {
      JpegWriter(sink, {.width = width, .height = height});
      ADD_FAILURE() << width << " " << height;
    } catch (const pdf::Error& error) {
      EXPECT_EQ(error.code(), pdf::ErrorCode::kLimitExceeded);
    }
  }
}

// Takes so many bytes and then fails.
class FullSink : public pdf::ByteSink {
 public:
  explicit FullSink(std::size_t room) : room_(room) {}

  void Write(std::string_view bytes) override {
    if (bytes.size() > room_) {
      throw pdf::Error(pdf::ErrorCode::kWriteFailed, "full");
    }
    room_ -= bytes.size();
  }

 private:
  std::size_t room_;
};

TEST(JpegWriter, ThrowsWhatTheSinkThrows) {
  const JpegSettings settings{.width = 600, .height = 600, .layout = PixelLayout::kGray};
  std::vector<std::uint8_t> noise(std::size_t{600} * 600);
  unsigned state = 1;
  for (std::uint8_t& pixel : noise) {
    state = state * 1664525 + 1013904223;
    pixel = static_cast<std::uint8_t>(state >> 24);
  }
  FullSink none(0);
  JpegWriter early(none, settings);
  EXPECT_THROW(early.WriteRows(noise.data(), 600, 600), pdf::Error);
  FullSink little(100);
  const JpegSettings small{.width = 8, .height = 8, .layout = PixelLayout::kGray};
  JpegWriter late(little, small);
  late.WriteRows(noise.data(), 8, 8);
  EXPECT_THROW(late.Finish(), pdf::Error);
}

// A bit for each pixel, 1 for white, as rows of the writer.
std::string WrittenBits(std::uint32_t width, std::uint32_t height,
                        const std::vector<std::uint8_t>& bits) {
  pdf::StringSink sink;
  BilevelJpegWriter writer(sink, width, height);
  const std::size_t row_bytes = (width + 7) / 8;
  for (std::uint32_t y = 0; y < height; ++y) {
    writer.WriteRow(bits.data() + y * row_bytes);
  }
  writer.Finish();
  return sink.Take();
}

std::vector<std::uint8_t> RandomBits(std::size_t count, unsigned one_in) {
  std::vector<std::uint8_t> bits(count);
  unsigned state = one_in;
  for (std::uint8_t& byte : bits) {
    state = state * 1664525 + 1013904223;
    byte = (state >> 24) % one_in == 0 ? static_cast<std::uint8_t>(state >> 16) : 0xFF;
  }
  return bits;
}

TEST(BilevelJpegWriter, WritesWhatDecodersRead) {
  for (const auto& [width, height] :
       {std::pair(8U, 8U), std::pair(21U, 13U), std::pair(64U, 64U), std::pair(1U, 1U)}) {
    for (const unsigned one_in : {1U, 3U}) {
      const std::size_t row_bytes = (width + 7) / 8;
      const auto bits = RandomBits(row_bytes * height, one_in);
      const JpegImage image = DecodeJpeg(WrittenBits(width, height, bits));
      ASSERT_EQ(image.width, static_cast<int>(width));
      ASSERT_EQ(image.height, static_cast<int>(height));
      EXPECT_EQ(image.components, 1);
      for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
          const bool is_white = (bits[y * row_bytes + x / 8] >> (7 - x % 8) & 1U) != 0;
          const int value = is_white ? 255 : 0;
          ASSERT_TRUE(
              image.IsNear(static_cast<int>(x), static_cast<int>(y), {value, value, value}, 3))
              << x << " " << y << " of " << width;
        }
      }
    }
  }
}

TEST(BilevelJpegWriter, WritesBlocksOfOneColorInFewBytes) {
  const std::size_t all = std::size_t{125} * 1000;
  const std::string white = WrittenBits(1000, 1000, std::vector<std::uint8_t>(all, 0xFF));
  EXPECT_LT(white.size(), 15'000U);
  EXPECT_TRUE(DecodeJpeg(white).IsNear(999, 999, {255, 255, 255}, 0));
  const std::string black = WrittenBits(1000, 1000, std::vector<std::uint8_t>(all, 0));
  EXPECT_TRUE(DecodeJpeg(black).IsNear(0, 500, {0, 0, 0}, 0));
}

TEST(BilevelJpegWriter, WritesMoreThanItsBufferHolds) {
  const auto bits = RandomBits(std::size_t{100} * 800, 1);
  const std::string jpeg = WrittenBits(800, 800, bits);
  EXPECT_GT(jpeg.size(), std::size_t{128} << 10);
  const JpegImage image = DecodeJpeg(jpeg);
  const int value = (bits[799 * 100 + 99] & 1U) != 0 ? 255 : 0;
  EXPECT_TRUE(image.IsNear(799, 799, {value, value, value}, 3));
}

}  // namespace
}  // namespace TarnixTools::engines
