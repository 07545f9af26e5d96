// Images through masks, on white, and pictures turned upright.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/images/ImageInDocument.h"
#include "pdf/Error.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using testing::RawPdf;

// Two pixels: red, then blue.
ImageInDocument RedBlue(const std::string& entries, RawPdf others = RawPdf()) {
  return {"/Width 2/Height 1/ColorSpace/DeviceRGB/BitsPerComponent 8" + entries,
          FromHex("FF00000000FF"), std::move(others)};
}

// Object 11: a mask of this size.
RawPdf Mask(const std::string& entries, const std::string& hex) {
  return RawPdf().Stream(11, "/Type/XObject/Subtype/Image" + entries, FromHex(hex));
}

constexpr const char* kTwoGray = "/Width 2/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8";

TEST(PictureMasks, LetPicturesThroughInPart) {
  EXPECT_EQ(RedBlue("/SMask 11 0 R", Mask(kTwoGray, "80FF")).Rows(), "FF7F7F 0000FF\n");
  EXPECT_EQ(RedBlue("/SMask 11 0 R", Mask(kTwoGray, "00FF")).Rows(), "FFFFFF 0000FF\n");
  EXPECT_EQ(RedBlue("/Mask 11 0 R", Mask("/ImageMask true/Width 2/Height 1", "40")).Rows(),
            "FF0000 FFFFFF\n");
  EXPECT_EQ(
      RedBlue("/Mask 11 0 R", Mask("/ImageMask true/Width 2/Height 1/Decode[1 0]", "40")).Rows(),
      "FFFFFF 0000FF\n");
}

TEST(PictureMasks, MayHaveASizeOfTheirOwn) {
  const std::string fine = "/Width 4/Height 3/ColorSpace/DeviceGray/BitsPerComponent 8";
  EXPECT_EQ(RedBlue("/SMask 11 0 R", Mask(fine, "010203FF00FF00FFFFFFFFFF")).Rows(),
            "FF0000 0000FF\n");
  ImageInDocument coarse(
      "/Width 2/Height 4/ColorSpace/DeviceGray/BitsPerComponent 8/SMask 11 0 R",
      std::string(8, '\0'),
      Mask("/Width 1/Height 2/ColorSpace/DeviceGray/BitsPerComponent 8", "FF00"));
  EXPECT_EQ(coarse.Rows(), "00 00\n00 00\nFF FF\nFF FF\n");
  EXPECT_EQ(coarse.Open()->held_bytes(), 10U);
}

TEST(PictureMasks, AreTakenOutOfTheirMatte) {
  const std::string red = "/Width 2/Height 1/ColorSpace/DeviceRGB/BitsPerComponent 8/SMask 11 0 R";
  ImageInDocument image(red, FromHex("8000000000FF"),
                        Mask(std::string(kTwoGray) + "/Matte[0 0 0]", "80FF"));
  EXPECT_EQ(image.Rows(), "FF7F7F 0000FF\n");
}

TEST(PictureMasks, OverlookAMatteThatFitsNoColor) {
  for (const char* matte : {"/Matte[0]", "/Matte[0 0 0 0]", "/Matte 7"}) {
    EXPECT_EQ(RedBlue("/SMask 11 0 R", Mask(std::string(kTwoGray) + matte, "80FF")).Rows(),
              "FF7F7F 0000FF\n")
        << matte;
  }
  ImageInDocument lab("/Width 1/Height 1/ColorSpace[/Lab<<>>]/BitsPerComponent 8/SMask 11 0 R",
                      FromHex("FF8080"), Mask(std::string(kTwoGray) + "/Matte[0 0 0]", "FFFF"));
  EXPECT_GT(lab.Read().At(0, 0)[0], 250);
}

TEST(PictureMasks, ThatCannotBeReadHideNothing) {
  for (const char* entries :
       {"/Width 0/Height 1", "/Width 2/Height 1/Filter/DCTDecode",
        "/Width 1000000/Height 1000000/ColorSpace/DeviceCMYK/BitsPerComponent "
        "16/Filter/NoFilter"}) {
    EXPECT_EQ(RedBlue("/SMask 11 0 R", Mask(entries, "00")).Rows(), "FF0000 0000FF\n") << entries;
  }
  EXPECT_EQ(RedBlue("/SMask 10 0 R").Rows(), "FF0000 0000FF\n");  // itself
  EXPECT_EQ(RedBlue("/SMask 99 0 R").Rows(), "FF0000 0000FF\n");
}

TEST(PictureMasks, HaveNoMasksThemselves) {
  EXPECT_EQ(
      RedBlue("/SMask 11 0 R", Mask(std::string(kTwoGray) + "/SMask 12 0 R/Mask[0 255]", "00FF")
                                   .Stream(12, kTwoGray, FromHex("0000")))
          .Rows(),
      "FFFFFF 0000FF\n");
}

TEST(PictureMasks, ReplaceTheAlphaOfJpeg2000Data) {
  ImageInDocument image("/Width 16/Height 8/Filter/JPXDecode/SMaskInData 1/SMask 11 0 R",
                        FromHex(testing::kGrayAlphaJpx),
                        Mask("/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "FF"));
  EXPECT_EQ(image.Read().At(12, 3), (testing::Rgb{80, 80, 80}));
}

TEST(EmptyPicture, IsNone) {
  EXPECT_EQ(ImageInDocument("/Width 0/Height 4", "x").Open(), nullptr);
  EXPECT_EQ(ImageInDocument("/Width 4", "x").Open(), nullptr);
  EXPECT_EQ(ImageInDocument("/Width 4/Height 2000000", "x").Open(), nullptr);
}

}  // namespace
}  // namespace TarnixTools::engines
