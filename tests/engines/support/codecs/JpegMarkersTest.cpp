#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/codecs/JpegMarkers.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using ::testing::ElementsAre;
using testing::ExifJpegSegment;
using testing::JpegSegment;
using testing::TestJpeg;

// A frame header of so many components, which have the numbers 'a', 'b', ...
std::string Frame(std::uint8_t marker, int components, int bits = 8) {
  std::string frame(1, static_cast<char>(bits));
  frame += testing::Big16(300) + testing::Big16(200) + static_cast<char>(components);
  for (int i = 0; i < components; ++i) {
    frame += static_cast<char>('a' + i);
    frame += std::string("\x11\0", 2);
  }
  return JpegSegment(marker, frame);
}

std::string Jpeg(const std::string& segments) {
  return std::string(kJpegStart) + segments + JpegSegment(0xDA, "scan") + "data" +
         std::string(kJpegEnd);
}

std::string Adobe(char transform) {
  return JpegSegment(0xEE, std::string("Adobe\0\x64\0\0\0\0", 11) + transform);
}

std::string Jfif(char unit, std::uint32_t x, std::uint32_t y) {
  return JpegSegment(0xE0, std::string("JFIF\0\x01\x02", 7) + unit + testing::Big16(x) +
                               testing::Big16(y) + std::string(2, '\0'));
}

std::vector<int> IdsOf(const JpegHeader& header) {
  std::vector<int> ids;
  for (const JpegComponent& component : header.component) {
    ids.push_back(component.id);
  }
  return ids;
}

TEST(JpegMarkers, TellWhatTheFrameHeaderSays) {
  const auto header = ReadJpegHeader(Jpeg(Frame(0xC2, 3, 12)));
  ASSERT_TRUE(header);
  EXPECT_EQ(header->width, 200U);
  EXPECT_EQ(header->height, 300U);
  EXPECT_EQ(header->components, 3);
  EXPECT_THAT(IdsOf(*header), ElementsAre('a', 'b', 'c', 0));
  EXPECT_EQ(header->component[2].across, 1);
  EXPECT_EQ(header->component[2].down, 1);
  EXPECT_EQ(header->component[2].table, 0);
  EXPECT_FALSE(header->IsSubsampled());
  EXPECT_EQ(header->bits, 12);
  EXPECT_FALSE(header->has_jfif);
  EXPECT_EQ(header->adobe_transform, -1);
  EXPECT_EQ(header->exif.orientation, 1);
  EXPECT_EQ(header->scan_start, 2 + Frame(0xC2, 3).size());
}

TEST(JpegMarkers, TellHowThePictureIsCoded) {
  for (const std::uint8_t code : {0xC0, 0xC1, 0xC2}) {
    EXPECT_EQ(ReadJpegHeader(Jpeg(Frame(code, 1)))->coding, JpegCoding::kHuffman);
  }
  for (const std::uint8_t code : {0xC9, 0xCA}) {
    EXPECT_EQ(ReadJpegHeader(Jpeg(Frame(code, 1)))->coding, JpegCoding::kArithmetic);
  }
  for (const std::uint8_t code : {0xC3, 0xC5, 0xC6, 0xC7, 0xCB, 0xCD, 0xCE, 0xCF}) {
    EXPECT_EQ(ReadJpegHeader(Jpeg(Frame(code, 1)))->coding, JpegCoding::kOther);
  }
}

TEST(JpegMarkers, TellWhetherThereAreSeveralScans) {
  for (const std::uint8_t code : {0xC2, 0xCA}) {
    EXPECT_TRUE(ReadJpegHeader(Jpeg(Frame(code, 1)))->is_progressive);
  }
  for (const std::uint8_t code : {0xC0, 0xC1, 0xC3, 0xC9}) {
    EXPECT_FALSE(ReadJpegHeader(Jpeg(Frame(code, 1)))->is_progressive);
  }
}

TEST(JpegMarkers, TellWhetherColorsAreSubsampled) {
  const auto is_subsampled = [](char first, char second) {
    std::string frame = Frame(0xC0, 3);
    frame[11] = first;
    frame[14] = second;
    return ReadJpegHeader(Jpeg(frame))->IsSubsampled();
  };
  EXPECT_TRUE(is_subsampled('\x22', '\x11'));
  EXPECT_TRUE(is_subsampled('\x21', '\x11'));
  EXPECT_FALSE(is_subsampled('\x22', '\x22'));
  std::string gray = Frame(0xC0, 1);
  gray[11] = '\x22';
  EXPECT_FALSE(ReadJpegHeader(Jpeg(gray))->IsSubsampled());
}

// A table of steps, the first one first in the zigzag order and the others each one more.
std::string Steps(char kind, int first) {
  std::string table(1, kind);
  for (int i = 0; i < 64; ++i) {
    table += kind < 16 ? std::string(1, static_cast<char>(first + i))
                       : testing::Big16(static_cast<std::uint32_t>(first + i));
  }
  return table;
}

TEST(JpegMarkers, TellTheStepsOfCoefficients) {
  const auto header = ReadJpegHeader(Jpeg(JpegSegment(0xDB, Steps(0, 1) + Steps(0x13, 1000)) +
                                          JpegSegment(0xDB, Steps(1, 70)) + Frame(0xC0, 3)));
  ASSERT_TRUE(header);
  EXPECT_EQ(header->steps[0][0], 1);
  EXPECT_EQ(header->steps[0][1], 2);
  EXPECT_EQ(header->steps[0][8], 3);
  EXPECT_EQ(header->steps[0][63], 64);
  EXPECT_EQ(header->steps[1][16], 73);
  EXPECT_EQ(header->steps[2][0], 0);
  EXPECT_EQ(header->steps[3][62], 1062);
  const auto cut = ReadJpegHeader(Jpeg(JpegSegment(0xDB, Steps(0, 1).substr(0, 64)) +
                                       JpegSegment(0xDB, Steps(9, 1)) + Frame(0xC0, 3)));
  EXPECT_EQ(cut->steps[0][0], 0);
}

TEST(JpegMarkers, TakeNoTableForAFrameHeader) {
  for (const std::uint8_t code : {0xC4, 0xC8, 0xCC}) {
    EXPECT_FALSE(ReadJpegHeader(Jpeg(Frame(code, 1))));
  }
}

TEST(JpegMarkers, TellOfTheFirstFrame) {
  EXPECT_EQ(ReadJpegHeader(Jpeg(Frame(0xC0, 1) + Frame(0xC0, 3)))->components, 1);
}

TEST(JpegMarkers, TellOfMoreComponentsThanTheyName) {
  const auto header = ReadJpegHeader(Jpeg(Frame(0xC0, 9)));
  EXPECT_EQ(header->components, 9);
  EXPECT_THAT(IdsOf(*header), ElementsAre('a', 'b', 'c', 'd'));
}

TEST(JpegMarkers, TellTheColorTransformWhereverItStands) {
  EXPECT_EQ(ReadJpegHeader(Jpeg(Adobe('\0') + Frame(0xC0, 4)))->adobe_transform, 0);
  EXPECT_EQ(ReadJpegHeader(Jpeg(Frame(0xC0, 4) + Adobe('\2')))->adobe_transform, 2);
  EXPECT_EQ(ReadJpegHeader(Jpeg(JpegSegment(0xEE, "Adobe") + Frame(0xC0, 4)))->adobe_transform, -1);
}

TEST(JpegMarkers, TellTheDensityPerInch) {
  const auto inches = ReadJpegHeader(Jpeg(Jfif(1, 300, 150) + Frame(0xC0, 1)));
  EXPECT_TRUE(inches->has_jfif);
  EXPECT_EQ(inches->jfif_dpi_x, 300);
  EXPECT_EQ(inches->jfif_dpi_y, 150);
  EXPECT_NEAR(ReadJpegHeader(Jpeg(Jfif(2, 100, 50) + Frame(0xC0, 1)))->jfif_dpi_y, 127, 1e-9);
  const auto ratio = ReadJpegHeader(Jpeg(Jfif(0, 4, 3) + Frame(0xC0, 1)));
  EXPECT_TRUE(ratio->has_jfif);
  EXPECT_EQ(ratio->jfif_dpi_x, 0);
}

TEST(JpegMarkers, TellWhatExifSays) {
  const auto header = ReadJpegHeader(Jpeg(ExifJpegSegment(6, 240) + Frame(0xC0, 1)));
  EXPECT_EQ(header->exif.orientation, 6);
  EXPECT_EQ(header->exif.dpi_x, 240);
}

TEST(JpegMarkers, TellThePartsOfAProfile) {
  const std::string part("ICC_PROFILE\0\x02\x02profile", 21);
  const auto header =
      ReadJpegHeader(Jpeg(JpegSegment(0xE2, part) + JpegSegment(0xE2, part.substr(0, 14)) +
                          JpegSegment(0xE2, "ICC") + Frame(0xC0, 3)));
  ASSERT_EQ(header->profile_parts.size(), 1U);
  EXPECT_EQ(header->profile_parts[0].offset, 2U + 4 + 14);
  EXPECT_EQ(header->profile_parts[0].length, 7U);
  EXPECT_EQ(header->profile_parts[0].number, 2U);
}

TEST(JpegMarkers, TellOfPicturesBehindThePicture) {
  EXPECT_FALSE(ReadJpegHeader(Jpeg(Frame(0xC0, 1)))->has_more_pictures);
  const std::string index = JpegSegment(0xE2, std::string("MPF\0more", 8));
  EXPECT_TRUE(ReadJpegHeader(Jpeg(index + Frame(0xC0, 1)))->has_more_pictures);
}

TEST(JpegMarkers, AreFoundBehindWhatDoesNotBelongThere) {
  const std::string odd("\xFF\xFF\xFF\x01 text \xFF\xD0\xFF\0\xFF\xD8", 17);
  EXPECT_TRUE(ReadJpegHeader(Jpeg(odd + Frame(0xC0, 1))));
  EXPECT_TRUE(ReadJpegHeader(Jpeg(std::string(100'000, 'x') + Frame(0xC0, 1))));
  EXPECT_FALSE(ReadJpegHeader(Jpeg(std::string(std::size_t{5} << 20, 'x') + Frame(0xC0, 1))));
}

TEST(JpegMarkers, AreNothingWithoutASoundFrameHeader) {
  EXPECT_FALSE(ReadJpegHeader(""));
  EXPECT_FALSE(ReadJpegHeader("\xFF\xD8"));
  EXPECT_FALSE(ReadJpegHeader("\xFF\xD8\xFF"));
  EXPECT_FALSE(ReadJpegHeader("GIF89a" + Jpeg(Frame(0xC0, 1))));
  EXPECT_FALSE(ReadJpegHeader(Jpeg("")));
  EXPECT_FALSE(ReadJpegHeader(Jpeg(std::string(kJpegEnd) + Frame(0xC0, 1))));
  EXPECT_FALSE(ReadJpegHeader(Jpeg(std::string("\xFF\xE0\0\1", 4) + Frame(0xC0, 1))));
  std::string three = Frame(0xC0, 2);
  three[9] = '\3';
  EXPECT_FALSE(ReadJpegHeader(Jpeg(three)));
}

TEST(JpegMarkers, AreReadAsFarAsTheyAreThere) {
  const std::string jpeg = Jpeg(Adobe('\1') + Frame(0xC0, 3) + JpegSegment(0xDB, "table"));
  const std::size_t frame_end = 2 + Adobe('\1').size() + Frame(0xC0, 3).size();
  EXPECT_FALSE(ReadJpegHeader(jpeg.substr(0, frame_end - 1)));
  const auto header = ReadJpegHeader(jpeg.substr(0, frame_end + 3));
  ASSERT_TRUE(header);
  EXPECT_EQ(header->adobe_transform, 1);
  EXPECT_EQ(header->scan_start, 0U);
}

std::uint64_t EndOf(const std::string& jpeg) {
  pdf::MemorySource source(jpeg);
  ByteReader reader(source);
  return FindJpegEnd(reader, ReadJpegHeader(jpeg)->scan_start);
}

TEST(JpegMarkers, TellWhereThePictureEnds) {
  const std::string jpeg = TestJpeg(3);
  EXPECT_EQ(EndOf(jpeg), jpeg.size());
  EXPECT_EQ(EndOf(jpeg + jpeg), jpeg.size());
  EXPECT_EQ(EndOf(jpeg.substr(0, jpeg.size() - 1)), 0U);
}

TEST(JpegMarkers, TakeNoEndWithinASegmentForThatOfThePicture) {
  const std::string head = std::string(kJpegStart) + Frame(0xC0, 1) + JpegSegment(0xDA, "scan");
  const std::string second = "\xFF" + JpegSegment(0xDA, std::string(kJpegEnd));
  const std::string data("a\xFF\0b\xFF\xD3", 6);
  const std::string jpeg = head + data + second + std::string(40'000, 'x') + std::string(kJpegEnd);
  EXPECT_EQ(EndOf(jpeg), jpeg.size());
}

}  // namespace

}  // namespace TarnixTools::engines
