#include <string>

#include <gtest/gtest.h>

#include "engines/support/images/ImageInDocument.h"
#include "engines/support/images/ReadyJpeg.h"
#include "support/RawPdf.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::JpegSegment;
using testing::RawPdf;
using testing::TestJpeg;

bool IsReady(const std::string& entries, const std::string& jpeg, int orientation = 1) {
  ImageInDocument image("/Width 16/Height 8/BitsPerComponent 8" + entries, jpeg,
                        RawPdf()
                            .Stream(11, "/N 3", testing::TestRgbProfile(2.2))
                            .Stream(12, "/Width 1/Height 1/ImageMask true", "x"));
  pdf::Arena arena;
  const DocumentImage there = image.Image();
  return IsReadyJpeg(there, FactsOf(there, arena), orientation);
}

const std::string kDct = "/Filter/DCTDecode";
const std::string kRgb = kDct + "/ColorSpace/DeviceRGB";

TEST(ReadyJpeg, IsDataThatShowsTheSameByItself) {
  EXPECT_TRUE(IsReady(kRgb, TestJpeg(3)));
  EXPECT_TRUE(IsReady(kDct, TestJpeg(3)));
  EXPECT_TRUE(IsReady(kDct + "/ColorSpace/DeviceGray", TestJpeg(1)));
  EXPECT_TRUE(IsReady(kDct + "/ColorSpace[/ICCBased 11 0 R]", TestJpeg(3)));
  EXPECT_TRUE(IsReady(kDct + "/ColorSpace[/CalRGB<<>>]", TestJpeg(3)));
  EXPECT_TRUE(IsReady(kRgb + "/DecodeParms<</ColorTransform 1>>", TestJpeg(3)));
  EXPECT_TRUE(IsReady(kRgb + "/Decode[0 1 0 1 0 1]", TestJpeg(3)));
}

TEST(ReadyJpeg, IsNoneWhereTheDocumentShowsItOtherwise) {
  for (const int orientation : {0, 2, 6}) {
    EXPECT_FALSE(IsReady(kRgb, TestJpeg(3), orientation));
  }
  for (const char* entries :
       {"/SMask 12 0 R", "/Mask 12 0 R", "/Mask[0 1 0 1 0 1]", "/Decode[1 0 1 0 1 0]",
        "/ImageMask true", "/DecodeParms<</ColorTransform 0>>"}) {
    EXPECT_FALSE(IsReady(kRgb + entries, TestJpeg(3))) << entries;
  }
  EXPECT_FALSE(IsReady("/Filter[/FlateDecode/DCTDecode]/ColorSpace/DeviceRGB", TestJpeg(3)));
  EXPECT_FALSE(IsReady("/ColorSpace/DeviceRGB", TestJpeg(3)));
  EXPECT_FALSE(IsReady("/Filter/JPXDecode/ColorSpace/DeviceRGB", TestJpeg(3)));
}

TEST(ReadyJpeg, HasTheColorsOfTheDictionary) {
  for (const char* space : {"/DeviceGray", "/DeviceCMYK", "[/Lab<<>>]", "/Pattern",
                            "[/Indexed/DeviceRGB 0<000000>]", "[/DeviceN[/A/B/C]/DeviceRGB<<>>]"}) {
    EXPECT_FALSE(IsReady(kDct + "/ColorSpace" + space, TestJpeg(3))) << space;
  }
  EXPECT_FALSE(IsReady(kRgb, TestJpeg(1)));
  EXPECT_FALSE(IsReady(kDct + "/ColorSpace[/Indexed/DeviceRGB 0<000000>]", TestJpeg(1)));
  EXPECT_FALSE(IsReady(kDct + "/ColorSpace/DeviceCMYK", TestJpeg(4)));
  EXPECT_FALSE(IsReady(kDct, TestJpeg(4)));
}

// Adobe's marker goes before what the dictionary says, of one component there is nothing to transform.
TEST(ReadyJpeg, MayTellOfItsTransformItself) {
  const std::string adobe = JpegSegment(0xEE, std::string("Adobe\0\x64\0\0\0\0\1", 12));
  const std::string none = "/DecodeParms<</ColorTransform 0>>";
  EXPECT_TRUE(IsReady(kRgb + none, TestJpeg(3, adobe)));
  EXPECT_TRUE(IsReady(kDct + "/ColorSpace/DeviceGray" + none, TestJpeg(1)));
}

TEST(ReadyJpeg, IsWhatEveryViewerReads) {
  const std::string jpeg = TestJpeg(3);
  const std::size_t frame = jpeg.find("\xFF\xC0");
  const auto with = [&](std::size_t at, char byte) {
    std::string other = jpeg;
    other[frame + at] = byte;
    return other;
  };
  EXPECT_TRUE(IsReady(kRgb, with(1, '\xC1')));
  EXPECT_TRUE(IsReady(kRgb, with(1, '\xC2')));
  EXPECT_FALSE(IsReady(kRgb, with(1, '\xC9')));  // arithmetic codes
  EXPECT_FALSE(IsReady(kRgb, with(1, '\xC3')));  // without loss
  EXPECT_FALSE(IsReady(kRgb, with(4, 12)));      // bits
  EXPECT_FALSE(IsReady(kRgb, with(6, 0)));       // height
  EXPECT_FALSE(IsReady(kRgb, with(8, 0)));       // width
  EXPECT_FALSE(IsReady(kRgb, "no JPEG"));
  EXPECT_TRUE(IsReady(kRgb, TestJpeg(3, testing::ExifJpegSegment(1))));
  EXPECT_FALSE(IsReady(kRgb, TestJpeg(3, testing::ExifJpegSegment(6))));
}

}  // namespace
}  // namespace TarnixTools::engines
