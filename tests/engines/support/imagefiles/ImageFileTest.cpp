#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/pictures/ImageError.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using testing::ExifJpegSegment;
using testing::ImageCodeOf;
using testing::JpegSegment;
using testing::OpenedImage;
using testing::TestJpeg;
using testing::TestProfile;

std::string Jfif(int unit, int dpi) {
  return JpegSegment(0xE0, std::string("JFIF\0\x01\x02", 7) + static_cast<char>(unit) +
                               testing::Big16(static_cast<std::uint32_t>(dpi)) +
                               testing::Big16(static_cast<std::uint32_t>(dpi)) +
                               std::string(2, '\0'));
}

std::string ProfileSegment(const std::string& profile, int number = 1) {
  return JpegSegment(
      0xE2, std::string("ICC_PROFILE\0", 12) + static_cast<char>(number) + "\x01" + profile);
}

TEST(ImageFile, RejectsWhatIsNoImage) {
  EXPECT_EQ(ImageCodeOf(""), ImageErrorCode::kUnknownFormat);
  EXPECT_EQ(ImageCodeOf("This is a text in a file named photo.jpg."),
            ImageErrorCode::kUnknownFormat);
  EXPECT_EQ(ImageCodeOf("%PDF-1.7\n"), ImageErrorCode::kUnknownFormat);
}

TEST(JpegFile, GoesIntoTheDocumentAsItIs) {
  const std::string jpeg = TestJpeg(3);
  OpenedImage image(jpeg);
  EXPECT_EQ(image.frame().width, 16U);
  EXPECT_EQ(image.frame().height, 8U);
  EXPECT_EQ(image.frame().dpi_x, 0);
  EXPECT_EQ(image.frame().orientation, 1);
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.filter, "DCTDecode");
  EXPECT_EQ(embedded.image.space, PictureSpace::kRgb);
  EXPECT_EQ(embedded.image.decode, "");
  EXPECT_FALSE(embedded.soft_mask);
  EXPECT_EQ(image.DataOf(embedded.image), jpeg);
}

TEST(JpegFile, TellsColorSpaceByComponents) {
  EXPECT_EQ(OpenedImage(TestJpeg(1)).Embed().image.space, PictureSpace::kGray);
  EXPECT_EQ(OpenedImage(TestJpeg(4)).Embed().image.space, PictureSpace::kCmyk);
}

TEST(JpegFile, InvertsCmykWithAdobeMarkerOnly) {
  const std::string adobe = JpegSegment(0xEE, std::string("Adobe\0\x64\0\0\0\0\x02", 12));
  EXPECT_EQ(OpenedImage(TestJpeg(4, adobe)).Embed().image.decode, "1 0 1 0 1 0 1 0");
  EXPECT_EQ(OpenedImage(TestJpeg(4)).Embed().image.decode, "");
  EXPECT_EQ(OpenedImage(TestJpeg(3, adobe)).Embed().image.decode, "");
}

TEST(JpegFile, ReadsResolution) {
  EXPECT_EQ(OpenedImage(TestJpeg(1, Jfif(1, 300))).frame().dpi_x, 300);
  EXPECT_NEAR(OpenedImage(TestJpeg(1, Jfif(2, 100))).frame().dpi_y, 254, 1e-9);
  EXPECT_EQ(OpenedImage(TestJpeg(1, Jfif(0, 1))).frame().dpi_x, 0);
  EXPECT_EQ(OpenedImage(TestJpeg(1, ExifJpegSegment(1, 240))).frame().dpi_y, 240);
  EXPECT_EQ(OpenedImage(TestJpeg(1, Jfif(1, 300) + ExifJpegSegment(1, 72))).frame().dpi_x, 300);
  EXPECT_EQ(OpenedImage(TestJpeg(1, Jfif(0, 1) + ExifJpegSegment(1, 72))).frame().dpi_x, 72);
}

TEST(JpegFile, ReadsOrientation) {
  for (int orientation = 1; orientation <= 8; ++orientation) {
    EXPECT_EQ(OpenedImage(TestJpeg(1, ExifJpegSegment(orientation))).frame().orientation,
              orientation);
  }
  EXPECT_EQ(OpenedImage(TestJpeg(1, ExifJpegSegment(0))).frame().orientation, 1);
  EXPECT_EQ(OpenedImage(TestJpeg(1, ExifJpegSegment(9))).frame().orientation, 1);
}

TEST(JpegFile, KeepsUsableProfiles) {
  const std::string rgb = TestProfile("RGB ");
  EXPECT_EQ(OpenedImage(TestJpeg(3, ProfileSegment(rgb))).Embed().image.profile, rgb);
  EXPECT_EQ(OpenedImage(TestJpeg(1, ProfileSegment(rgb))).Embed().image.profile, "");
  EXPECT_EQ(OpenedImage(TestJpeg(3, ProfileSegment("nonsense"))).Embed().image.profile, "");
  std::string broken = rgb;
  broken.replace(136, 4, testing::Big32(1'000'000));
  EXPECT_EQ(OpenedImage(TestJpeg(3, ProfileSegment(broken))).Embed().image.profile, "");
}

TEST(JpegFile, JoinsProfilesInTheOrderOfTheirNumbers) {
  const std::string rgb = TestProfile("RGB ");
  const std::string segments =
      ProfileSegment(rgb.substr(100), 2) + ProfileSegment(rgb.substr(0, 100), 1);
  EXPECT_EQ(OpenedImage(TestJpeg(3, segments)).Embed().image.profile, rgb);
}

TEST(JpegFile, EndsDataThatWasCut) {
  const std::string jpeg = TestJpeg(1);
  const std::string cut = jpeg.substr(0, jpeg.size() - 3);
  OpenedImage image(cut);
  EXPECT_EQ(image.DataOf(image.Embed().image), cut + "\xFF\xD9");
}

TEST(JpegFile, LeavesOutWhatFollowsThePicture) {
  const std::string jpeg = TestJpeg(1);
  OpenedImage film(jpeg + std::string("\0\0\0\x18"
                                      "ftypmp42",
                                      12));
  EXPECT_EQ(film.DataOf(film.Embed().image), jpeg);
  const std::string views = TestJpeg(1, JpegSegment(0xE2, std::string("MPF\0more", 8)));
  OpenedImage first(views + jpeg);
  EXPECT_EQ(first.DataOf(first.Embed().image), views);
}

TEST(JpegFile, RejectsHeadersWithoutPicture) {
  const std::string jpeg = TestJpeg(1);
  EXPECT_EQ(ImageCodeOf(jpeg.substr(0, 40)), ImageErrorCode::kDamaged);
  std::string empty = jpeg;
  empty.replace(jpeg.find("\xFF\xC0") + 5, 4, std::string(4, '\0'));
  EXPECT_EQ(ImageCodeOf(empty), ImageErrorCode::kDamaged);
  std::string lossless = jpeg;
  lossless[jpeg.find("\xFF\xC0") + 1] = '\xC3';
  EXPECT_EQ(ImageCodeOf(lossless), ImageErrorCode::kUnsupported);
}

}  // namespace

}  // namespace TarnixTools::engines
