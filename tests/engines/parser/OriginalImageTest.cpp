// Fax data as a TIFF file: it says the same picture as the document does.
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "engines/parser/OriginalImage.h"
#include "engines/support/codecs/TiffDirectory.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/images/ImageInDocument.h"
#include "engines/support/images/WrittenImage.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines::parser {
namespace {

std::string FromBits(const std::string& bits) {
  std::string bytes((bits.size() + 7) / 8, '\0');
  for (std::size_t i = 0; i < bits.size(); ++i) {
    if (bits[i] == '1') {
      bytes[i / 8] = static_cast<char>(static_cast<unsigned char>(bytes[i / 8]) | 0x80U >> i % 8);
    }
  }
  return bytes;
}

// Two white pixels, three black ones, three white ones; and a row that is like the one above.
const std::string kRow = "0111101000";
const std::string kSameRow = "111";
const std::string kEnd = "000000000001";
constexpr const char* kSeen = "FF FF 00 00 00 FF FF FF\nFF FF 00 00 00 FF FF FF\n";
constexpr const char* kInverse = "00 00 FF FF FF 00 00 00\n00 00 FF FF FF 00 00 00\n";

struct Fax {
  std::string parameters;
  std::string data;
  std::uint64_t compression;
  std::uint64_t options = 0;
  std::string entries;
  const char* rows = kSeen;
};

ImageInDocument ImageOf(const Fax& fax) {
  return {
      "/Width 8/Height 2/BitsPerComponent 1/ColorSpace/DeviceGray/Filter/CCITTFaxDecode"
      "/DecodeParms<</Columns 8" +
          fax.parameters + ">>" + fax.entries,
      fax.data};
}

std::string Written(ImageInDocument& image) {
  pdf::StringSink sink;
  EXPECT_TRUE(WriteOriginal(image.Image(), image.Facts(), sink));
  return sink.Take();
}

void ExpectTiff(const Fax& fax) {
  ImageInDocument image = ImageOf(fax);
  EXPECT_EQ(image.Rows(), fax.rows);
  ASSERT_EQ(OriginalFormatOf(image.Image(), image.Facts()), OriginalFormat::kTiff);
  const std::string file = Written(image);
  EXPECT_EQ(WrittenImage(testing::OpenedImage(file).Embed(), file).Rows(), fax.rows);
  pdf::MemorySource source(file);
  ByteReader reader(source);
  const auto directories = TiffStructure::Read(reader, 9);
  ASSERT_EQ(directories.size(), 1U);
  const auto number = [&](int tag) {
    return directories[0].Number(reader, static_cast<TiffTag>(tag), 999);
  };
  EXPECT_EQ(number(256), 8U);
  EXPECT_EQ(number(257), 2U);
  EXPECT_EQ(number(258), 1U);
  EXPECT_EQ(number(259), fax.compression);
  EXPECT_EQ(number(262), fax.rows == kSeen ? 0U : 1U);
  EXPECT_EQ(number(273), 8U);
  EXPECT_EQ(number(277), 1U);
  EXPECT_EQ(number(278), 2U);
  EXPECT_EQ(number(279), fax.data.size());
  EXPECT_EQ(number(fax.compression == 4 ? 293 : 292), fax.options);
  EXPECT_EQ(file.substr(8, fax.data.size()), fax.data);
}

const std::string kGroup4 = FromBits(
    "001"
    "0111"
    "10"
    "1" +
    kSameRow + kEnd + kEnd);

TEST(OriginalImage, OfGroup4IsATiffFile) {
  ExpectTiff({.parameters = "/K -1", .data = kGroup4, .compression = 4});
}

TEST(OriginalImage, TellsWhichColorIsWhite) {
  ExpectTiff(
      {.parameters = "/K -1/BlackIs1 true", .data = kGroup4, .compression = 4, .rows = kInverse});
  ExpectTiff({.parameters = "/K -1",
              .data = kGroup4,
              .compression = 4,
              .entries = "/Decode[1 0]",
              .rows = kInverse});
  ExpectTiff({.parameters = "/K -1/BlackIs1 true",
              .data = kGroup4,
              .compression = 4,
              .entries = "/Decode[1 0]"});
}

TEST(OriginalImage, OfGroup3IsATiffFileWhereItsRowsEndAsTheyDoThere) {
  ExpectTiff({.parameters = "/EndOfLine true",
              .data = FromBits(kEnd + kRow + kEnd + kRow + kEnd),
              .compression = 3});
  ExpectTiff({.parameters = "/K 2/EndOfLine true",
              .data = FromBits(kEnd + "1" + kRow + kEnd + "0" + kSameRow + kEnd + "1"),
              .compression = 3,
              .options = 1});
  ExpectTiff({.parameters = "/EncodedByteAlign true",
              .data = FromBits(kRow + "000000" + kRow),
              .compression = 2});
}

TEST(OriginalImage, IsAPngFileWhereATiffFileCannotSayIt) {
  const Fax kOthers[] = {
      {.parameters = "/K -1/EncodedByteAlign true", .data = kGroup4, .compression = 0},
      {.parameters = "", .data = FromBits(kRow + kRow), .compression = 0},
      {.parameters = "/EndOfLine true/EncodedByteAlign true",
       .data = FromBits("0000" + kEnd + kRow),
       .compression = 0},
      {.parameters = "/K 1/EncodedByteAlign true", .data = "x", .compression = 0},
  };
  for (const Fax& fax : kOthers) {
    ImageInDocument image = ImageOf(fax);
    EXPECT_EQ(OriginalFormatOf(image.Image(), image.Facts()), OriginalFormat::kPng)
        << fax.parameters;
  }
  // Of another width than the picture's, or in colour.
  ImageInDocument wide(
      "/Width 9/Height 2/BitsPerComponent 1/ColorSpace/DeviceGray/Filter/CCITTFaxDecode"
      "/DecodeParms<</K -1/Columns 8>>",
      kGroup4);
  EXPECT_EQ(OriginalFormatOf(wide.Image(), wide.Facts()), OriginalFormat::kPng);
  ImageInDocument indexed(
      "/Width 8/Height 2/BitsPerComponent 1/ColorSpace[/Indexed/DeviceGray 1<00FF>]"
      "/Filter/CCITTFaxDecode/DecodeParms<</K -1/Columns 8>>",
      kGroup4);
  EXPECT_EQ(OriginalFormatOf(indexed.Image(), indexed.Facts()), OriginalFormat::kPng);
}

TEST(OriginalImage, OfSamplesIsAPngFileThatEndsWell) {
  ImageInDocument image("/Width 2/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB", "abcdef");
  const std::string file = Written(image);
  EXPECT_EQ(WrittenImage(testing::OpenedImage(file).Embed(), file).Rows(), "616263 646566\n");
  EXPECT_EQ(file.substr(file.size() - 8, 4), "IEND");
  ImageInDocument cut("/Width 2/Height 2/BitsPerComponent 8/ColorSpace/DeviceGray", "abc");
  pdf::StringSink sink;
  EXPECT_FALSE(WriteOriginal(cut.Image(), cut.Facts(), sink));
}

}  // namespace
}  // namespace TarnixTools::engines::parser
