#include <cstring>

#include <gtest/gtest.h>

#include "engines/support/codecs/PngWriter.h"
#include "engines/support/imagefiles/PngFile.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines {
namespace {

Plane Gradient(int channels) {
  Plane plane(5, 3, channels, 8);
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    for (std::size_t i = 0; i < plane.row_bytes(); ++i) {
      plane.row(y)[i] = static_cast<unsigned char>(40 * y + 3 * i);
    }
  }
  return plane;
}

TEST(PngWriter, WritesWhatReadersTake) {
  for (const int channels : {1, 2, 3, 4}) {
    const std::string file = EncodePng(Gradient(channels));
    EXPECT_EQ(file.substr(0, 4), "\x89PNG");
    EXPECT_EQ(file.substr(file.size() - 8, 4), "IEND");
    pdf::MemorySource source(file);
    PngFile png(source);
    const EncodedImage image = png.Embed(0);
    EXPECT_EQ(image.image.width, 5U) << channels;
    EXPECT_EQ(image.image.height, 3U);
    EXPECT_EQ(image.soft_mask.has_value(), channels % 2 == 0);
  }
}

}  // namespace
}  // namespace TarnixTools::engines
