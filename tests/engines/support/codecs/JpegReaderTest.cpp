#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <jpeglib.h>

#include "engines/support/codecs/JpegReader.h"
#include "engines/support/codecs/JpegSamples.h"
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

// The first pixel of a picture; empty for one that cannot be read.
std::vector<int> FirstPixel(const std::string& jpeg, int color_transform) {
  const auto reader = JpegReader::Open(jpeg, color_transform);
  if (reader == nullptr) {
    return {};
  }
  const auto components = static_cast<std::size_t>(reader->components());
  std::vector<std::uint8_t> row(reader->width() * components);
  EXPECT_TRUE(reader->ReadRow(row.data()));
  return {row.begin(), row.begin() + static_cast<std::ptrdiff_t>(components)};
}

void ExpectNear(const std::vector<int>& found, const std::vector<int>& wanted) {
  ASSERT_EQ(found.size(), wanted.size());
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    EXPECT_NEAR(found[i], wanted[i], 3) << i;
  }
}

// The file without the marker segments that tell of its colours.
std::string WithoutMarkers(std::string jpeg) {
  for (const char* marker : {"\xFF\xE0", "\xFF\xEE"}) {
    const std::size_t at = jpeg.find(marker);
    if (at != std::string::npos) {
      const auto length = static_cast<std::size_t>(static_cast<unsigned char>(jpeg[at + 2]) << 8 |
                                                   static_cast<unsigned char>(jpeg[at + 3]));
      jpeg.erase(at, 2 + length);
    }
  }
  return jpeg;
}

TEST(JpegReader, ReadsAnyNumberOfComponents) {
  ExpectNear(FirstPixel(testing::MakeJpeg(16, 8, {90}), -1), {90});
  ExpectNear(FirstPixel(testing::MakeJpeg(16, 8, {200, 40, 90}), -1), {200, 40, 90});
  // Inks as they are stored.
  ExpectNear(FirstPixel(testing::MakeJpeg(16, 8, {200, 40, 90, 7}), -1), {200, 40, 90, 7});
}

// Where no marker of the data tells, the dictionary does.
TEST(JpegReader, ConvertsColorsAsItIsTold) {
  const std::string gray = WithoutMarkers(testing::MakeJpeg(16, 8, {90, 90, 90}));
  ExpectNear(FirstPixel(gray, 1), {90, 90, 90});
  ExpectNear(FirstPixel(gray, 0), {90, 128, 128});
  const std::string inks = WithoutMarkers(testing::MakeJpeg(16, 8, {90, 128, 128, 7}));
  ExpectNear(FirstPixel(inks, 0), {90, 128, 128, 7});
  ExpectNear(FirstPixel(inks, 1), {165, 165, 165, 7});
  // A marker goes before that.
  ExpectNear(FirstPixel(testing::MakeJpeg(16, 8, {200, 40, 90, 7}), 1), {200, 40, 90, 7});
}

TEST(JpegReader, ReadsLightnessAloneWhereThatIsStored) {
  const auto open = [](const std::string& jpeg, int color_transform) {
    return JpegReader::Open(jpeg, color_transform, kWholePicture, JpegColors::kLightness);
  };
  const std::string red = testing::MakeJpeg(16, 8, {255, 0, 0});
  const auto reader = open(red, -1);
  ASSERT_EQ(reader->components(), 1);
  std::vector<std::uint8_t> row(reader->width());
  EXPECT_TRUE(reader->ReadRow(row.data()));
  EXPECT_NEAR(row[0], 0.299 * 255, 3);
  EXPECT_EQ(open(WithoutMarkers(red), 0)->components(), 3);  // red, green and blue are stored
  EXPECT_EQ(open(testing::MakeJpeg(16, 8, {200, 40, 90, 7}), -1)->components(), 4);
  EXPECT_EQ(open(testing::MakeJpeg(16, 8, {90}), -1)->components(), 1);
}

// A gray picture of 40 x 30 pixels in several scans.
std::string Progressive() {
  return testing::Encoded({.space = JCS_GRAYSCALE, .coding = testing::Coding::kProgressive});
}

TEST(JpegReader, HoldsPicturesOfSeveralScans) {
  const std::string jpeg = Progressive();
  EXPECT_EQ(JpegReader::Open(jpeg, -1)->held_bytes(), std::uint64_t{40} * 32 * 2);  // whole blocks
  ExpectNear(FirstPixel(jpeg, -1), {0});
  EXPECT_EQ(JpegReader::Open(testing::MakeJpeg(64, 40, {77}), -1)->held_bytes(), 0U);
}

// A scan again and again, which would be decoded for hours.
TEST(JpegReader, RefusesScansWithoutEnd) {
  const std::string jpeg = Progressive();
  const std::size_t last = jpeg.rfind("\xFF\xDA");
  const std::string scan = jpeg.substr(last, jpeg.size() - 2 - last);
  std::string many = jpeg.substr(0, last);
  for (int i = 0; i < 2'000; ++i) {
    many += scan;
  }
  EXPECT_EQ(JpegReader::Open(many + "\xFF\xD9", -1), nullptr);
}

// The frame header says how large all is.
TEST(JpegReader, RefusesMoreCoefficientsThanItMayHold) {
  std::string jpeg = Progressive();
  const std::size_t frame = jpeg.find("\xFF\xC2");
  jpeg.replace(frame + 5, 4, "\xFF\x00\xFF\x00", 4);
  EXPECT_EQ(JpegReader::Open(jpeg, -1), nullptr);
}

TEST(JpegReader, RefusesWhatIsNoPicture) {
  const std::string jpeg = testing::MakeJpeg(16, 8, {90});
  EXPECT_EQ(JpegReader::Open("", -1), nullptr);
  EXPECT_EQ(JpegReader::Open("no picture", -1), nullptr);
  EXPECT_EQ(JpegReader::Open(jpeg.substr(0, 30), -1), nullptr);
  // Two components.
  std::string two = testing::MakeJpeg(16, 8, {90, 90, 90});
  const std::size_t frame = two.find("\xFF\xC0");
  two[frame + 9] = 2;
  two.erase(frame + 16, 3);
  two[frame + 3] = static_cast<char>(two[frame + 3] - 3);
  EXPECT_EQ(JpegReader::Open(two, -1), nullptr);
}

}  // namespace
}  // namespace TarnixTools::engines
