// Images through masks, and images that are masks.
#include <gtest/gtest.h>

#include "engines/parser/ImagesFixture.h"

namespace TarnixTools::engines::parser {
namespace {

TEST_F(Images, AreTheBlackPictureThatAMaskPaints) {
  const JpegImage image =
      ExtractOne(Page(HexImage(16, 8, "/ImageMask true", Repeat("00FF", 8)), "1 0 0 rg /I Do"));
  EXPECT_EQ(image.components, 1);
  EXPECT_TRUE(image.IsNear(3, 3, kBlack));
  EXPECT_TRUE(image.IsNear(12, 3, kWhite));
  EXPECT_TRUE(ExtractImage(HexImage(16, 8, "/ImageMask true/Decode[1 0]", Repeat("00FF", 8)))
                  .IsNear(3, 3, kWhite));
}

TEST_F(Images, AreOnWhiteBehindASoftMask) {
  TestPdf file = Page(RedBlue("/SMask {{mask}}"));
  file.Object("mask", HexImage(2, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8", "80FF"));
  const JpegImage image = ExtractOne(file);
  EXPECT_TRUE(image.IsNear(3, 3, {255, 127, 127}));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, AreWhiteWhereAMaskCoversThem) {
  TestPdf file = Page(RedBlue("/Mask {{mask}}"));
  file.Object("mask", HexImage(2, 1, "/ImageMask true", "40"));
  const JpegImage image = ExtractOne(file);
  EXPECT_TRUE(image.IsNear(3, 3, kRed));
  EXPECT_TRUE(image.IsNear(12, 3, kWhite));
}

TEST_F(Images, AreWhiteInTheColorsOfTheirKey) {
  const JpegImage image = ExtractImage(RedBlue("/Mask[250 255 0 5 0 5]"));
  EXPECT_TRUE(image.IsNear(3, 3, kWhite));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

// The picture has been mixed with black where the mask lets it through by half.
TEST_F(Images, AreTakenOutOfTheirMatte) {
  TestPdf file = Page(HexImage(16, 8, "/ColorSpace/DeviceRGB/BitsPerComponent 8/SMask {{mask}}",
                               Repeat(Repeat("800000", 8) + Repeat("0000FF", 8), 8)));
  file.Object("mask",
              HexImage(2, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8/Matte[0 0 0]", "80FF"));
  const JpegImage image = ExtractOne(file);
  EXPECT_TRUE(image.IsNear(3, 3, {255, 127, 127}));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, OverlookAMatteThatFitsNoColor) {
  TestPdf file = Page(RedBlue("/SMask {{mask}}"));
  file.Object("mask", HexImage(2, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8/Matte[0]", "80FF"));
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, {255, 127, 127}));
}

}  // namespace
}  // namespace TarnixTools::engines::parser
