#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/JpegReader.h"
#include "support/JpegImage.h"

namespace TarnixTools::engines {
namespace {

TEST(JpegReader, ReadsAtAFractionWhereThatIsEnough) {
  const std::string jpeg = testing::MakeJpeg(100, 60, {255, 0, 0});
  const auto width_for = [&](std::uint32_t width, std::uint32_t height) {
    return JpegReader::Open(jpeg, -1, {width, height})->width();
  };
  EXPECT_EQ(JpegReader::Open(jpeg, -1)->width(), 100U);
  EXPECT_EQ(width_for(100, 60), 100U);
  EXPECT_EQ(width_for(51, 10), 100U);
  EXPECT_EQ(width_for(50, 30), 50U);
  EXPECT_EQ(width_for(26, 15), 50U);
  EXPECT_EQ(width_for(25, 15), 25U);
  EXPECT_EQ(width_for(25, 16), 50U);
  EXPECT_EQ(width_for(1, 1), 13U);
}

TEST(JpegReader, ReadsTheSameColorsAtAFraction) {
  const std::string jpeg = testing::MakeJpeg(160, 80, {255, 0, 0}, {0, 0, 255});
  const auto reader = JpegReader::Open(jpeg, -1, {40, 20});
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(reader->height(), 20U);
  std::vector<std::uint8_t> row(static_cast<std::size_t>(reader->width()) * 3);
  int rows = 0;
  while (reader->ReadRow(row.data())) {
    ++rows;
    EXPECT_NEAR(row[0], 255, 6);
    EXPECT_NEAR(row[2], 0, 6);
    EXPECT_NEAR(row[117], 0, 6);
    EXPECT_NEAR(row[119], 255, 6);
  }
  EXPECT_EQ(rows, 20);
}

}  // namespace
}  // namespace TarnixTools::engines
