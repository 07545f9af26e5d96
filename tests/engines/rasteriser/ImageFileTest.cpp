// The files that drawn pages become: pixels, resolution and form, exactly.
#include <cerrno>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "engines/rasteriser/ImageFile.h"
#include "engines/rasteriser/Pdf2ImgFailure.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/images/WrittenImage.h"
#include "support/ByteText.h"
#include "support/JpegImage.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::rasteriser {
namespace {

using testing::ReadBytes;

// Three pixels a row: blue, green, red and a byte that says nothing; then two bytes of no pixel.
constexpr std::size_t kStride = 14;
const std::string kRows = FromHex(
    "0000FF7700FF0078FF0000790A0B"
    "FFFFFF7700000078F0000079AAAA"
    "0A141E77C896647800C800790000");

class ImageFileTest : public ::testing::Test {
 protected:
  // The rows as a file, in two pieces.
  std::string Written(ImageFileSettings settings) const {
    settings.width = 3;
    settings.height = 3;
    std::remove(Path().c_str());
    const auto* rows = reinterpret_cast<const std::uint8_t*>(kRows.data());
    ImageFile file{platform::WidePath(Path())};
    EXPECT_FALSE(file.is_started());
    file.Start(settings);
    EXPECT_TRUE(file.is_started());
    file.WriteRows(rows, kStride, 2);
    file.WriteRows(rows + 2 * kStride, kStride, 1);
    EXPECT_FALSE(testing::Exists(Path()));
    file.Finish();
    EXPECT_FALSE(file.is_started());
    return ReadBytes(Path());
  }

  std::string Path() const { return directory_.Path("image"); }

  static std::string RowsOf(const std::string& png) {
    return WrittenImage(testing::OpenedImage(png).Embed(), png).Rows();
  }

  testing::TempDir directory_;
};

TEST_F(ImageFileTest, OfColoursIsAPngFileOfThem) {
  EXPECT_EQ(RowsOf(Written({.is_png = true})),
            "FF0000 00FF00 0000FF\n"
            "FFFFFF 000000 0000F0\n"
            "1E140A 6496C8 00C800\n");
}

// Red counts 0.299, green 0.587, blue 0.114, as in JPEG (JFIF 1.02); what comes of it is rounded.
TEST_F(ImageFileTest, OfGrayIsAPngFileOfTheBrightness) {
  EXPECT_EQ(RowsOf(Written({.is_png = true, .is_gray = true})),
            "4C 96 1D\n"
            "FF 00 1B\n"
            "16 8D 75\n");
}

TEST_F(ImageFileTest, TellsTheResolution) {
  // 5906 pixels a metre are 150 an inch.
  EXPECT_NE(Written({.is_png = true, .dpi = 150}).find(FromHex("70485973000017120000171201")),
            std::string::npos);
  EXPECT_EQ(Written({.is_png = true}).find("pHYs"), std::string::npos);
  for (const bool is_gray : {false, true}) {
    const testing::JpegImage image = testing::DecodeJpeg(Written({.is_gray = is_gray, .dpi = 150}));
    EXPECT_EQ(image.density_x, 150);
    EXPECT_EQ(image.density_unit, 1);
  }
}

TEST_F(ImageFileTest, IsAJpegFileOfItsQuality) {
  const testing::JpegImage colored = testing::DecodeJpeg(Written({}));
  EXPECT_EQ(colored.components, 3);
  EXPECT_EQ(colored.width, 3);
  EXPECT_EQ(colored.height, 3);
  EXPECT_FALSE(colored.is_subsampled);
  EXPECT_TRUE(colored.IsNear(0, 0, {255, 0, 0}));
  EXPECT_TRUE(colored.IsNear(2, 0, {0, 0, 255}));
  EXPECT_TRUE(colored.IsNear(1, 2, {100, 150, 200}));
  const testing::JpegImage gray = testing::DecodeJpeg(Written({.is_gray = true}));
  EXPECT_EQ(gray.components, 1);
  EXPECT_TRUE(gray.IsNear(0, 0, {76, 76, 76}, 2));
  EXPECT_TRUE(gray.IsNear(1, 0, {150, 150, 150}, 2));
  EXPECT_TRUE(gray.IsNear(2, 0, {29, 29, 29}, 2));
  EXPECT_TRUE(gray.IsNear(1, 2, {141, 141, 141}, 2));
  EXPECT_TRUE(testing::DecodeJpeg(Written({.quality = 60})).is_subsampled);
  EXPECT_LT(Written({.is_gray = true, .quality = 10}).size(), Written({.is_gray = true}).size());
}

TEST_F(ImageFileTest, LeavesWhatWasThereUntilItIsComplete) {
  testing::WriteBytes(Path(), "old");
  {
    ImageFile file{platform::WidePath(Path())};
    file.Start({.width = 1, .height = 1, .is_png = true});
    EXPECT_EQ(ReadBytes(Path()), "old");
  }
  EXPECT_EQ(ReadBytes(Path()), "old");
  try {
    const ImageFile none{platform::WidePath(directory_.Path("missing/image"))};
    FAIL();
  } catch (const Pdf2ImgFailure& failure) {
    EXPECT_EQ(failure.code(), kPdf2ImgCreateError);
    EXPECT_EQ(failure.system_error(), ENOENT);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::rasteriser
