#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/images/WrittenImage.h"
#include "pdf/Error.h"
#include "pdf/crypt/Security.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

// A gray picture of two pixels, stored in hexadecimal.
ImageStream TwoGray(const std::string& hex) {
  ImageStream stream;
  stream.width = 2;
  stream.height = 1;
  stream.filter = "ASCIIHexDecode";
  stream.data.push_back(Hold(hex + ">"));
  return stream;
}

EncodedImage Only(ImageStream stream) {
  return {.image = std::move(stream), .soft_mask = {}};
}

TEST(ImageWriter, WritesWhatTheStreamSays) {
  ImageStream stream = TwoGray("40C0");
  stream.decode = "1 0";
  stream.color_key = "9 10";
  stream.entries = "/Interpolate true";
  stream.parameters = "/Own 7";
  WrittenImage image(Only(std::move(stream)));
  EXPECT_EQ(image.Entry("Width"), "2");
  EXPECT_EQ(image.Entry("Height"), "1");
  EXPECT_EQ(image.Entry("BitsPerComponent"), "8");
  EXPECT_EQ(image.Entry("ColorSpace"), "/DeviceGray");
  EXPECT_EQ(image.Entry("Decode"), "[1 0]");
  EXPECT_EQ(image.Entry("Mask"), "[9 10]");
  EXPECT_EQ(image.Entry("Interpolate"), "true");
  EXPECT_EQ(image.Entry("DecodeParms"), "<</Own 7>>");
  EXPECT_EQ(image.Rows(), "BF 3F\n");
}

TEST(ImageWriter, LeavesOutWhatTheDataTells) {
  ImageStream stream = TwoGray("40C0");
  stream.bits = 0;
  stream.space = PictureSpace::kNone;
  WrittenImage image(Only(std::move(stream)));
  EXPECT_EQ(image.Entry("BitsPerComponent"), "null");
  EXPECT_EQ(image.Entry("ColorSpace"), "null");
  EXPECT_EQ(image.Entry("Decode"), "null");
}

TEST(ImageWriter, WritesColorSpaces) {
  const auto space_of = [](PictureSpace space, const std::string& palette = "") {
    ImageStream stream = TwoGray("0001");
    stream.space = space;
    stream.palette = palette;
    return WrittenImage(Only(std::move(stream))).Entry("ColorSpace");
  };
  EXPECT_EQ(space_of(PictureSpace::kRgb), "/DeviceRGB");
  EXPECT_EQ(space_of(PictureSpace::kCmyk), "/DeviceCMYK");
  EXPECT_EQ(space_of(PictureSpace::kLab),
            "[/Lab<</WhitePoint[.9642 1 .8249]/Range[-128 127 -128 127]>>]");
  EXPECT_EQ(space_of(PictureSpace::kIndexed, "abcdef"), "[/Indexed/DeviceRGB 1(abcdef)]");
}

TEST(ImageWriter, WritesEachProfileOnce) {
  const std::string profile = testing::TestRgbProfile(2.2);
  EncodedImage first = Only(TwoGray("0001"));
  first.image.space = PictureSpace::kIndexed;
  first.image.palette = "abcdef";
  first.image.profile = profile;
  EncodedImage second = Only(TwoGray("000000000000"));
  second.image.space = PictureSpace::kRgb;
  second.image.profile = profile;
  const std::string bytes = DocumentOf({&first, &second});
  const auto document = testing::OpenBytes(bytes);
  pdf::Arena arena;
  int profiles = 0;
  for (std::uint32_t number = 1; number < document->object_limit(); ++number) {
    const pdf::Object object = document->Load({.number = number, .generation = 0}, arena);
    if (object.Get("N").IntegerOr(0) == 3) {
      ++profiles;
      EXPECT_EQ(document->TryDecodeStream(number)->data, profile);
    }
  }
  EXPECT_EQ(profiles, 1);
}

TEST(ImageWriter, WritesSoftMasks) {
  EncodedImage image = Only(TwoGray("0000"));
  image.soft_mask = TwoGray("FF00");
  EXPECT_EQ(WrittenImage(image).Rows(), "00 FF\n");
}

// Data that lies in the image file, in pieces.
TEST(ImageWriter, CopiesWhatLiesInTheFile) {
  std::string file;
  for (int i = 0; i < 700'000; ++i) {
    file += static_cast<char>(i * 31 % 253);
  }
  ImageStream stream;
  stream.width = 1000;
  stream.height = 600;
  stream.filter = "DCTDecode";
  stream.data.push_back({.offset = 5, .length = 100'000, .held = {}});
  stream.data.push_back({.offset = 100'005, .length = 400'000, .held = {}});
  stream.data.push_back({.offset = 600'000, .length = 99'990, .held = {}});
  stream.data.push_back(Hold("0123456789"));
  const std::string wanted = file.substr(5, 500'000) + file.substr(600'000, 99'990) + "0123456789";
  const EncodedImage image = Only(std::move(stream));
  WrittenImage written(image, file);
  const auto found =
      written.document().ReadStreamData(*written.document().StreamOf(written.number()), 1'000'000);
  EXPECT_TRUE(found == wanted);

  const pdf::Security security = pdf::Security::Create("u", "o", -1);
  const std::string encrypted = DocumentOf({&image}, file, &security);
  const auto document = testing::OpenBytes(encrypted, "u");
  bool is_there = false;
  for (std::uint32_t number = 1; number < document->object_limit(); ++number) {
    const auto data = document->StreamOf(number);
    is_there = is_there || (data && document->ReadStreamData(*data, 1'000'000) == wanted);
  }
  EXPECT_TRUE(is_there);
}

TEST(ImageWriter, NoticesAFileThatHasBecomeShorter) {
  for (const std::uint64_t length : {100U, 400'000U}) {
    ImageStream stream = TwoGray("");
    stream.data.push_back({.offset = 50, .length = length, .held = {}});
    try {
      WrittenImage(Only(std::move(stream)), std::string(80, 'x'));
      ADD_FAILURE() << length;
    } catch (const pdf::Error& error) {
      EXPECT_EQ(error.code(), pdf::ErrorCode::kSourceChanged);
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines
