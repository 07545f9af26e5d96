#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/BilevelJpegWriter.h"
#include "engines/support/codecs/JpegReader.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines {
namespace {

using Bytes = std::vector<std::uint8_t>;

bool IsWhite(const Bytes& row, std::size_t x) {
  return (row[x / 8] >> (7 - x % 8) & 1U) != 0;
}

// How many pixels another decoder sees in another colour, or not in a pure one.
std::size_t CountWrong(std::uint32_t width, const std::vector<Bytes>& rows) {
  pdf::StringSink sink;
  BilevelJpegWriter writer(sink, width, static_cast<std::uint32_t>(rows.size()));
  for (const Bytes& row : rows) {
    writer.WriteRow(row.data());
  }
  writer.Finish();
  const std::string file = sink.bytes();
  const auto reader = JpegReader::Open(file, -1);
  if (reader == nullptr || reader->width() != width || reader->height() != rows.size() ||
      reader->components() != 1) {
    return ~std::size_t{0};
  }
  std::size_t wrong = 0;
  Bytes pixels(width);
  for (const Bytes& row : rows) {
    wrong += reader->ReadRow(pixels.data()) ? 0 : width;
    for (std::size_t x = 0; x < width; ++x) {
      wrong += std::abs(pixels[x] - (IsWhite(row, x) ? 255 : 0)) > 2 ? 1 : 0;
    }
  }
  return wrong;
}

// Bytes that look like nothing, some of them all white or all black.
std::vector<Bytes> Noise(std::uint32_t width, std::uint32_t height) {
  std::vector<Bytes> rows(height, Bytes((width + 7) / 8));
  std::uint32_t state = 1;
  for (Bytes& row : rows) {
    for (std::uint8_t& byte : row) {
      state = state * 1664525 + 1013904223;
      const std::uint32_t kind = state >> 30;
      byte = kind == 0 ? std::uint8_t{0xFF} : kind == 1 ? std::uint8_t{0} : state >> 20 & 0xFFU;
    }
  }
  return rows;
}

TEST(BilevelJpegWriter, WritesWhatAnotherDecoderReads) {
  for (const std::uint32_t width : {1U, 7U, 8U, 9U, 64U, 333U}) {
    for (const std::uint32_t height : {1U, 8U, 19U}) {
      EXPECT_EQ(CountWrong(width, Noise(width, height)), 0U) << width << " x " << height;
    }
  }
}

// More than is held before it is written, with all the bytes of ones that come in so much.
TEST(BilevelJpegWriter, WritesLargePictures) {
  EXPECT_EQ(CountWrong(1500, Noise(1500, 800)), 0U);
}

TEST(BilevelJpegWriter, WritesEmptyPictures) {
  EXPECT_EQ(CountWrong(100, std::vector<Bytes>(50, Bytes(13, 0xFF))), 0U);
  EXPECT_EQ(CountWrong(100, std::vector<Bytes>(50, Bytes(13, 0))), 0U);
}

}  // namespace
}  // namespace TarnixTools::engines
