// Images behind the filters of images: fax and JPEG data.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/parser/ImagesFixture.h"
#include "support/Readers.h"
#include "support/TestImages.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines::parser {
namespace {

using testing::MakeJpeg;
using testing::ReadBytes;

// A fax image of eight columns, in hexadecimal.
std::string FaxImage(int height, const std::string& parameters, const std::string& hex) {
  return Stream(
      "/Type/XObject/Subtype/Image/ColorSpace/DeviceGray/BitsPerComponent 1/Width 8/Height " +
          std::to_string(height) + "/Filter[/ASCIIHexDecode/CCITTFaxDecode]/DecodeParms[null<<" +
          "/Columns 8" + parameters + ">>]",
      hex + ">");
}

TEST_F(Images, AreDecodedFromTwoDimensionalFaxData) {
  // A white row, one with four columns of each colour, another of that kind, the end of the block.
  const JpegImage image = ExtractImage(FaxImage(3, "/K -1", "9B78008008"));
  EXPECT_EQ(image.components, 1);
  for (int x = 0; x < 8; ++x) {
    EXPECT_TRUE(image.IsNear(x, 0, kWhite));
    EXPECT_TRUE(image.IsNear(x, 1, x < 4 ? kWhite : kBlack));
    EXPECT_TRUE(image.IsNear(x, 2, x < 4 ? kWhite : kBlack));
  }
  EXPECT_TRUE(troubles_.empty());
  EXPECT_TRUE(ExtractImage(FaxImage(3, "/K -1/BlackIs1 true", "9B78008008")).IsNear(1, 1, kBlack));
}

TEST_F(Images, AreDecodedFromOneDimensionalFaxData) {
  const JpegImage image = ExtractImage(FaxImage(8, "", "B76EDDBB76EDDB"));
  for (int y = 0; y < 8; ++y) {
    EXPECT_TRUE(image.IsNear(3, y, kWhite));
    EXPECT_TRUE(image.IsNear(4, y, kBlack));
  }
}

// Each row ends with zeros and an end of line, which ends with a byte.
TEST_F(Images, AreDecodedFromFaxDataWithAlignedEndsOfLine) {
  for (const char* parameters :
       {"/EncodedByteAlign true/EndOfLine true", "/EndOfLine true", "/EncodedByteAlign false"}) {
    const JpegImage image = ExtractImage(FaxImage(8, parameters, "0001" + Repeat("B60001", 8)));
    for (int y = 0; y < 8; ++y) {
      EXPECT_TRUE(image.IsNear(3, y, kWhite)) << parameters;
      EXPECT_TRUE(image.IsNear(4, y, kBlack)) << parameters;
    }
  }
  EXPECT_TRUE(troubles_.empty());
}

TEST_F(Images, StayWhiteWhereFaxDataIsCutOrDamaged) {
  for (const std::string hex : {"9B", "", "00", "FF000000", "9B78008008"}) {
    const JpegImage image = ExtractImage(FaxImage(64, "/K -1", hex));
    EXPECT_EQ(image.height, 64);
    EXPECT_TRUE(image.IsNear(7, 63, kWhite)) << hex;
  }
  EXPECT_EQ(troubles_.size(), 5U);
}

TEST_F(Images, StayAsTheyAreWhenTheyAreJpegFilesAlready) {
  for (const auto& [color, space] : {std::pair(std::vector<int>{200, 10, 10}, "/DeviceRGB"),
                                     std::pair(std::vector<int>{90}, "/DeviceGray"),
                                     std::pair(std::vector<int>{90}, "/CalGray")}) {
    const std::string jpeg = MakeJpeg(16, 8, color);
    ASSERT_TRUE(Open(Page(JpegImageObject(jpeg, std::string("/ColorSpace") + space),
                          "q 50 0 0 50 9 9 cm /I Do Q")));
    const auto files = Extract();
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(ReadBytes(files[0]), jpeg);
  }
}

TEST_F(Images, StayAsTheyAreInAnEncryptedDocument) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string jpeg = MakeJpeg(16, 8, {200, 10, 10});
  Page(JpegImageObject(jpeg, "/ColorSpace/DeviceRGB")).Write(Path("plain.pdf"));
  testing::EncryptWithQpdf(Path("plain.pdf"), Path("secret.pdf"), "pw", "owner");
  EXPECT_EQ(ExpaDocOpenW(document_, WidePath(Path("secret.pdf")), L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaPasswordError);
  ASSERT_EQ(ExpaDocOpenW(document_, WidePath(Path("secret.pdf")), L"pw"), 1);
  const auto files = Extract();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(ReadBytes(files[0]), jpeg);
}

TEST_F(Images, AreDecodedFromJpegDataThatIsNotAPictureByItself) {
  const std::string jpeg = MakeJpeg(16, 8, {255, 0, 0}, {0, 0, 255});
  EXPECT_TRUE(ExtractImage(JpegImageObject(jpeg, "/ColorSpace/DeviceRGB/Decode[1 0 1 0 1 0]"))
                  .IsNear(3, 3, {0, 255, 255}));
  EXPECT_TRUE(ExtractImage(JpegImageObject(MakeJpeg(16, 8, {0}),
                                           "/ColorSpace[/Indexed/DeviceRGB 0<00FF00>]"))
                  .IsNear(3, 3, kGreen));
  TestPdf masked = Page(JpegImageObject(jpeg, "/ColorSpace/DeviceRGB/SMask {{mask}}"));
  masked.Object("mask", HexImage(1, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8", "00"));
  EXPECT_TRUE(ExtractOne(masked).IsNear(3, 3, kWhite));
}

TEST_F(Images, AreDecodedFromCmykJpegDataAsItIsStored) {
  const std::string jpeg = MakeJpeg(16, 8, {255, 0, 0, 0});
  EXPECT_TRUE(
      ExtractImage(JpegImageObject(jpeg, "/ColorSpace/DeviceCMYK")).IsNear(3, 3, {0, 174, 239}));
  EXPECT_TRUE(ExtractImage(JpegImageObject(jpeg, "/ColorSpace/DeviceCMYK/Decode[1 0 1 0 1 0 1 0]"))
                  .IsNear(3, 3, {0, 0, 0}, 40));
}

TEST_F(Images, StayWhiteWhereJpegDataIsCut) {
  const std::string jpeg = MakeJpeg(64, 640, {10, 10, 10}, {200, 200, 200});
  const JpegImage image = ExtractImage(
      JpegImageObject(jpeg.substr(0, jpeg.size() / 2),
                      "/ColorSpace/DeviceGray/Decode[0 1]/SMask 999 0 R", "/Width 64/Height 640"));
  EXPECT_EQ(image.height, 640);
}

TEST_F(Images, ThatAreJpegFilesInTheColorsOfAProfileAreCopied) {
  const std::string jpeg = MakeJpeg(16, 8, {200, 10, 10});
  TestPdf file = Page(JpegImageObject(jpeg, "/ColorSpace[/ICCBased {{profile}}]"));
  file.Object("profile", Stream("/N 3", testing::TestRgbProfile(2.2)));
  ASSERT_TRUE(Open(file));
  const auto files = Extract();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(ReadBytes(files[0]), jpeg);
}

TEST_F(Images, AreReadInlineAfterTwoBytesOfLineEnd) {
  const std::string jpeg = MakeJpeg(16, 8, {255, 0, 0});
  const JpegImage image =
      ExtractOne(Page(RedBlue(), "BI /W 16 /H 8 /BPC 8 /CS /RGB /F /DCT ID\r\n" + jpeg + "\nEI"));
  EXPECT_TRUE(image.IsNear(3, 3, kRed));
}

// A JPEG 2000 image, in hexadecimal.
std::string JpxImage(const std::string& hex, const std::string& entries = "") {
  return Stream(
      "/Type/XObject/Subtype/Image/Width 16/Height 8/Filter[/ASCIIHexDecode/JPXDecode]" + entries,
      hex + ">");
}

TEST_F(Images, AreDecodedFromJpeg2000Data) {
  for (const char* space : {"", "/ColorSpace/DeviceRGB", "/ColorSpace/DeviceGray"}) {
    const JpegImage image = ExtractImage(JpxImage(testing::kRedBlueJpx, space));
    EXPECT_EQ(image.width, 16) << space;
    EXPECT_TRUE(image.IsNear(3, 3, kRed)) << space;
    EXPECT_TRUE(image.IsNear(12, 3, kBlue)) << space;
  }
}

TEST_F(Images, UseTheAlphaOfJpeg2000DataWhereTheyAreToldTo) {
  const JpegImage plain =
      ExtractImage(JpxImage(testing::kGrayAlphaJpx, "/ColorSpace/DeviceGray/Decode[1 0]"));
  EXPECT_EQ(plain.components, 1);
  EXPECT_TRUE(plain.IsNear(3, 3, kBlack));
  EXPECT_TRUE(plain.IsNear(12, 3, {80, 80, 80}));
  const JpegImage seen = ExtractImage(JpxImage(testing::kGrayAlphaJpx, "/SMaskInData 1"));
  EXPECT_TRUE(seen.IsNear(3, 3, kBlack));
  EXPECT_TRUE(seen.IsNear(12, 3, {167, 167, 167}));
}

TEST_F(Images, TakeJpeg2000SamplesAsIndices) {
  const JpegImage image =
      ExtractImage(JpxImage(testing::kGrayAlphaJpx, "/ColorSpace[/Indexed/DeviceRGB 80<" +
                                                        Repeat("00FF00", 80) + "0000FF>]"));
  EXPECT_TRUE(image.IsNear(3, 3, kGreen));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, ArePassedOverWhereJpeg2000DataIsNone) {
  const std::string hex = testing::kRedBlueJpx;
  for (const std::string& data : {std::string("00"), hex.substr(0, 100), hex.substr(0, 220)}) {
    ASSERT_TRUE(Open(Page(JpxImage(data))));
    for (const std::string& file : Extract()) {
      EXPECT_EQ(ReadJpeg(file).width, 16);  // white: what can be had of it is nothing
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines::parser
