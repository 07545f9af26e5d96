#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/images/ImagesInDocument.h"
#include "engines/support/images/Picture.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;

const std::string kRgb = "/Width 2/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB";
const std::string kGray = "/Width 2/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray";

TEST(Picture, ShowsPaperThroughASoftMask) {
  ImagesInDocument images;
  images.Add(5, kRgb + "/SMask 6 0 R", "0A0B0C 000000").Add(6, kGray, "FF80");
  EXPECT_THAT(RowsOf(*images.Picture(5)), ElementsAre(Bytes{10, 11, 12, 127, 127, 127}));
}

// Mixed with gray before: of black, half seen, 128 * (255 - 64) / 255 remains to be added.
TEST(Picture, TakesTheMatteOutOfItsColors) {
  ImagesInDocument images;
  images.Add(5, kGray + "/SMask 6 0 R", "8060").Add(6, kGray + "/Matte[.50196]", "0040");
  EXPECT_THAT(RowsOf(*images.Picture(5)), ElementsAre(Bytes{255, 0x60 + 95}));
}

TEST(Picture, ShowsPaperWhereAColorIsKeyed) {
  ImagesInDocument images;
  images.Add(5, kRgb + "/Mask[10 10 11 11 12 12]", "0A0B0C 000000")
      .Add(6, "/Width 8/Height 1/BitsPerComponent 1/ColorSpace/DeviceGray/Mask[0 0]", "55");
  EXPECT_THAT(RowsOf(*images.Picture(5)), ElementsAre(Bytes{255, 255, 255, 0, 0, 0}));
  EXPECT_FALSE(images.Picture(6)->is_bilevel());
  EXPECT_THAT(RowsOf(*images.Picture(6)), ElementsAre(Bytes(8, 255)));
}

TEST(Picture, ShowsPaperAroundAStencil) {
  ImagesInDocument images;
  images.Add(5, kRgb + "/Mask 6 0 R", "0A0B0C 010203")
      .Add(6, "/Width 4/Height 1/BitsPerComponent 1/ImageMask true", "30");
  EXPECT_THAT(RowsOf(*images.Picture(5)), ElementsAre(Bytes{10, 11, 12, 255, 255, 255}));
}

TEST(Picture, ShowsPaperThroughTheAlphaOfJpeg2000Data) {
  ImagesInDocument images;
  images.Add(5, "/Width 16/Height 8/SMaskInData 1", testing::kGrayAlphaJpx, "JPXDecode");
  const std::vector<Bytes> rows = RowsOf(*images.Picture(5));
  EXPECT_EQ(rows[0][0], 0);
  EXPECT_NEAR(rows[0][15], (80 + 255) / 2, 2);
}

TEST(Picture, IsBlackWhereAnImageMaskPaints) {
  ImagesInDocument images;
  images.Add(5, "/Width 8/Height 1/BitsPerComponent 1/ImageMask true", "0F");
  const RowSourcePtr picture = images.Picture(5);
  EXPECT_TRUE(picture->is_bilevel());
  EXPECT_THAT(RowsOf(*picture), ElementsAre(Bytes{0, 0, 0, 0, 255, 255, 255, 255}));
}

TEST(Picture, IsNoneOfWhatCannotBeRead) {
  ImagesInDocument images;
  images.AddStream(5, kGray + "/Filter/DCTDecode", "no JPEG file")
      .AddStream(6, "/Width 0/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "0")
      .AddStream(7, kGray + "/Filter/SomethingElse", "0");
  EXPECT_EQ(images.Picture(5), nullptr);
  EXPECT_EQ(images.Picture(6), nullptr);
  EXPECT_EQ(images.Picture(7), nullptr);
}

}  // namespace
}  // namespace TarnixTools::engines
