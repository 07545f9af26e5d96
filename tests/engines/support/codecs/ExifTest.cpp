#include <string>

#include <gtest/gtest.h>

#include "engines/support/codecs/Exif.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using testing::Little16;
using testing::Little32;
using testing::TestExif;

std::string Field(std::uint32_t tag, std::uint32_t type, std::uint32_t value) {
  return Little16(tag) + Little16(type) + Little32(1) + Little32(value);
}

// The lower byte first; `ratio` follows the fields.
std::string LittleExif(const std::string& fields, const std::string& ratio = "") {
  return std::string("II*\0", 4) + Little32(8) +
         Little16(static_cast<std::uint32_t>(fields.size() / 12)) + fields + Little32(0) + ratio;
}

TEST(Exif, TellsOrientationAndResolution) {
  const ExifFacts facts = ReadExif(TestExif(8, 240));
  EXPECT_EQ(facts.orientation, 8);
  EXPECT_EQ(facts.dpi_x, 240);
  EXPECT_EQ(facts.dpi_y, 240);
}

TEST(Exif, MayHaveItsNameBeforeIt) {
  EXPECT_EQ(ReadExif(std::string("Exif\0\0", 6) + TestExif(3)).orientation, 3);
}

TEST(Exif, MayHaveTheLowerByteFirst) {
  EXPECT_EQ(ReadExif(LittleExif(Field(0x112, 3, 6))).orientation, 6);
}

TEST(Exif, TellsResolutionPerInch) {
  const std::uint32_t ratio_at = 8 + 2 + 3 * 12 + 4;
  const auto with_unit = [&](std::uint32_t unit) {
    return ReadExif(
        LittleExif(Field(0x11A, 5, ratio_at) + Field(0x11B, 5, ratio_at) + Field(0x128, 3, unit),
                   Little32(300) + Little32(2)));
  };
  EXPECT_EQ(with_unit(2).dpi_x, 150);
  EXPECT_NEAR(with_unit(3).dpi_y, 381, 1e-9);
  EXPECT_EQ(with_unit(1).dpi_x, 0);
}

TEST(Exif, IsUprightWhereItSaysNothingOfUse) {
  for (const std::string& block :
       {std::string(), std::string("MM"), std::string("MM\0*\0\0\0\x08", 8), TestExif(0),
        TestExif(9), LittleExif(""), LittleExif(Field(0x112, 5, 6)),
        "XX" + TestExif(6).substr(2)}) {
    const ExifFacts facts = ReadExif(block);
    EXPECT_EQ(facts.orientation, 1);
    EXPECT_EQ(facts.dpi_x, 0);
  }
  const std::uint32_t ratio_at = 8 + 2 + 12 + 4;
  const std::string nothing = Little32(300) + Little32(0);
  EXPECT_EQ(ReadExif(LittleExif(Field(0x11A, 5, ratio_at), nothing)).dpi_x, 0);
}

TEST(Exif, IsReadAsFarAsItIsThere) {
  const std::string block = TestExif(6, 240);
  EXPECT_EQ(ReadExif(block.substr(0, 8 + 2 + 12)).orientation, 6);
  EXPECT_EQ(ReadExif(block.substr(0, 8 + 2 + 11)).orientation, 1);
}

}  // namespace

}  // namespace TarnixTools::engines
