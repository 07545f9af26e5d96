#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/images/ImageAlpha.h"
#include "engines/support/images/ImagesInDocument.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kGray = "/Width 2/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray";
const std::string kStencil = "/Width 3/Height 2/BitsPerComponent 1/ImageMask true";

TEST(ImageAlpha, IsNoneOfAnOpaqueImage) {
  ImagesInDocument images;
  images.Add(5, kGray, "0000").Add(6, kStencil, "0000");
  EXPECT_EQ(AlphaKindOf(images.Facts(5)), AlphaKind::kNone);
  EXPECT_FALSE(images.Alpha(5));
  EXPECT_FALSE(images.Alpha(6));
}

TEST(ImageAlpha, OfASoftMaskHasTheSizeOfTheMask) {
  ImagesInDocument images;
  images.Add(5, kGray + "/SMask 6 0 R", "0000")
      .Add(6, "/Width 1/Height 3/BitsPerComponent 8/ColorSpace/DeviceGray/Matte[.5]", "0080FF");
  EXPECT_EQ(AlphaKindOf(images.Facts(5)), AlphaKind::kSoftMask);
  const auto alpha = images.Alpha(5);
  ASSERT_TRUE(alpha);
  EXPECT_THAT(alpha->matte, ElementsAre(.5));
  EXPECT_FALSE(alpha->is_premultiplied);
  EXPECT_EQ(alpha->rows->layout(), PixelLayout::kGray);
  EXPECT_THAT(RowsOf(*alpha->rows), ElementsAre(Bytes{0}, Bytes{128}, Bytes{255}));
}

TEST(ImageAlpha, OfASoftMaskThatEndsEarlyIsOpaqueThere) {
  ImagesInDocument images;
  images.Add(5, kGray + "/SMask 6 0 R", "0000")
      .Add(6, "/Width 2/Height 2/BitsPerComponent 8/ColorSpace/DeviceGray", "0000");
  EXPECT_THAT(RowsOf(*images.Alpha(5)->rows), ElementsAre(Bytes{0, 0}, Bytes{255, 255}));
}

// Masks in colour are against the standard; one component has to do.
TEST(ImageAlpha, OfAMaskInColorsIsTheFirstOfThem) {
  ImagesInDocument images;
  images.Add(5, kGray + "/SMask 6 0 R", "0000")
      .Add(6, "/Width 2/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB", "400000 8000FF");
  EXPECT_THAT(RowsOf(*images.Alpha(5)->rows), ElementsAre(Bytes{0x40, 0x80}));
}

TEST(ImageAlpha, OfAStencilMaskIsWhatItPaints) {
  ImagesInDocument images;
  images.Add(5, kGray + "/Mask 6 0 R", "0000")
      .Add(6, kStencil, "40A0")
      .Add(7, kGray + "/Mask 8 0 R", "0000")
      .Add(8, kStencil + "/Decode[1 0]", "40");
  EXPECT_EQ(AlphaKindOf(images.Facts(5)), AlphaKind::kStencilMask);
  EXPECT_THAT(RowsOf(*images.Alpha(5)->rows), ElementsAre(Bytes{255, 0, 255}, Bytes{0, 255, 0}));
  EXPECT_THAT(images.Alpha(5)->matte, IsEmpty());
  // What has no data is not painted.
  EXPECT_THAT(RowsOf(*images.Alpha(7)->rows), ElementsAre(Bytes{0, 255, 0}, Bytes{0, 0, 0}));
}

TEST(ImageAlpha, OfAColorKeyIsByTheSamples) {
  ImagesInDocument images;
  const std::string rgb = "/Width 3/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB";
  images.Add(5, rgb + "/Mask[1 2 0 255 0 0]", "010000 020100 020001")
      .Add(6, "/Width 3/Height 1/BitsPerComponent 2/ColorSpace/DeviceGray/Mask[1 2]/Decode[1 0]",
           "18")
      .Add(7, "/Width 2/Height 1/BitsPerComponent 16/ColorSpace/DeviceGray/Mask[256 511]",
           "01FF0200")
      .Add(8, rgb + "/Mask[1 2]", "010000 020100 020001");
  EXPECT_EQ(AlphaKindOf(images.Facts(5)), AlphaKind::kColorKey);
  EXPECT_THAT(RowsOf(*images.Alpha(5)->rows), ElementsAre(Bytes{0, 0, 255}));
  EXPECT_THAT(RowsOf(*images.Alpha(6)->rows), ElementsAre(Bytes{255, 0, 0}));
  EXPECT_THAT(RowsOf(*images.Alpha(7)->rows), ElementsAre(Bytes{0, 255}));
  EXPECT_FALSE(images.Alpha(8));  // it is too short
}

TEST(ImageAlpha, OfAColorKeyIsOpaqueWithoutData) {
  ImagesInDocument images;
  images.Add(5, "/Width 3/Height 2/BitsPerComponent 8/ColorSpace/DeviceGray/Mask[0 9]", "0000");
  EXPECT_THAT(RowsOf(*images.Alpha(5)->rows), ElementsAre(Bytes{0, 0, 255}, Bytes(3, 255)));
}

TEST(ImageAlpha, OfJpeg2000DataIsItsChannel) {
  ImagesInDocument images;
  const std::string size = "/Width 16/Height 8";
  images.Add(5, size + "/SMaskInData 1", testing::kGrayAlphaJpx, "JPXDecode")
      .Add(6, size + "/SMaskInData 1", testing::kRedBlueJpx, "JPXDecode");
  EXPECT_EQ(AlphaKindOf(images.Facts(5)), AlphaKind::kChannel);
  const auto alpha = images.Alpha(5);
  if (!alpha) {
    GTEST_SKIP() << "needs the library that decodes JPEG 2000";
  }
  const std::vector<Bytes> rows = RowsOf(*alpha->rows);
  ASSERT_EQ(rows.size(), 8U);
  EXPECT_EQ(rows[7][0], 255);
  EXPECT_NEAR(rows[7][15], 128, 1);
  EXPECT_FALSE(images.Alpha(6));
}

TEST(ImageAlpha, IsThatOfTheSoftMaskWhereThereAreSeveral) {
  ImagesInDocument images;
  images.Add(5, kGray + "/SMask 6 0 R/Mask[0 255]", "0000").Add(6, kGray, "4080");
  EXPECT_EQ(AlphaKindOf(images.Facts(5)), AlphaKind::kSoftMask);
  EXPECT_THAT(RowsOf(*images.Alpha(5)->rows), ElementsAre(Bytes{0x40, 0x80}));
}

TEST(ImageAlpha, IsNoneWhereTheMaskCannotBeRead) {
  ImagesInDocument images;
  images.Add(5, kGray + "/SMask 6 0 R", "0000")
      .Add(6, "/Width 0/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "00")
      .Add(7, kGray + "/SMask 8 0 R", "0000")
      .AddStream(8, kGray + "/Filter/DCTDecode", "no JPEG file");
  EXPECT_FALSE(images.Alpha(5));
  EXPECT_FALSE(images.Alpha(7));
}

}  // namespace
}  // namespace TarnixTools::engines
