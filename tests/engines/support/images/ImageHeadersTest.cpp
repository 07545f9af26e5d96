#include <string>

#include <gtest/gtest.h>

#include "engines/support/images/ImageHeaders.h"
#include "pdf/crypt/Security.h"
#include "pdf/write/RewriteFixture.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using testing::JpegSegment;
using testing::TestJpeg;

// An image of nothing but its data.
DocumentImage ImageOf(const std::string& data) {
  return {.document = nullptr, .number = 0, .dictionary = {}, .data = data, .color_spaces = {}};
}

TEST(ImageHeaders, AreReadFromTheStartOfTheData) {
  EXPECT_EQ(JpegHeaderOf(ImageOf(TestJpeg(3)))->components, 3);
  EXPECT_FALSE(JpegHeaderOf(ImageOf("")));
  EXPECT_FALSE(JpegHeaderOf(ImageOf(std::string(100'000, 'x'))));
}

TEST(ImageHeaders, MayStandBehindMuchElse) {
  const std::string photo = JpegSegment(0xE1, std::string(60'000, 'x'));
  EXPECT_TRUE(JpegHeaderOf(ImageOf(TestJpeg(1, photo + photo))));
}

TEST(ImageHeaders, AreThoseOfJpeg2000Too) {
  const std::string size = testing::Big16(41) + testing::Big16(0) + testing::Big32(7) +
                           testing::Big32(5) + std::string(24, '\0') + testing::Big16(1);
  const std::string stream = "\xFF\x4F\xFF\x51" + size + std::string("\7\1\1");
  EXPECT_EQ(JpxHeaderOf(ImageOf(stream))->width, 7U);
  const std::string profile = testing::Big32(50'008) + "free" + std::string(50'000, 'x');
  const std::string box = testing::Big32(static_cast<std::uint32_t>(stream.size() + 8)) + "jp2c";
  EXPECT_EQ(JpxHeaderOf(ImageOf(profile + box + stream))->height, 5U);
  EXPECT_FALSE(JpxHeaderOf(ImageOf("")));
}

// Of encrypted data less comes out than goes in, from the first piece on.
TEST(ImageHeaders, MayStandDeepInEncryptedData) {
  const std::string photo = JpegSegment(0xE1, std::string(60'000, 'x'));
  const pdf::Security security = pdf::Security::Create("", "owner", -4);
  testing::RewriteCase file(testing::RawPdf()
                                .Object(1, "<</Type/Catalog/Pages 2 0 R/Own 3 0 R>>")
                                .Object(2, "<</Type/Pages/Kids[]/Count 0>>")
                                .Stream(3, "/Filter/DCTDecode", TestJpeg(1, photo)));
  pdf::Document& written = file.Write({.security = &security});
  pdf::Arena arena;
  const std::uint32_t number = written.Catalog(arena).Get("Own").AsReference().number;
  EXPECT_TRUE(JpegHeaderOf(ImageObjectOf(written, number, arena)));
}

// What follows the frame header tells of the colours too.
TEST(ImageHeaders, AreReadUpToTheScan) {
  const std::string adobe = JpegSegment(0xEE, std::string("Adobe\0\x64\0\0\0\0\0", 12));
  std::string jpeg = TestJpeg(3, JpegSegment(0xFE, std::string(4000, 'x')));
  const std::size_t tables = jpeg.find("\xFF\xC4");
  jpeg.insert(tables, JpegSegment(0xFE, std::string(4000, 'x')) + adobe);
  EXPECT_EQ(JpegHeaderOf(ImageOf(jpeg))->adobe_transform, 0);
}

}  // namespace

}  // namespace TarnixTools::engines
