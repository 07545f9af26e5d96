#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/checks/PaintedPage.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines::pdfa {
namespace {

// What is broken where a page paints the image; data: in hexadecimal.
std::string BrokenBy(const std::string& data, const std::string& entries = "") {
  testing::PaintedPage page("/Image Do");
  page.Output("RGB ").Resources("/XObject<</Image 20 0 R>>");
  page.pdf().Stream(20,
                    "/Subtype/Image/Width 16/Height 8/Filter[/ASCIIHexDecode/JPXDecode]" + entries,
                    data + ">");
  return page.BrokenRules(Level::k2b);
}

// The file of three channels with some of its digits replaced.
std::string With(const std::string& old_digits, const std::string& new_digits,
                 std::string data = testing::kRedBlueJpx) {
  return data.replace(data.find(old_digits), old_digits.size(), new_digits);
}

const std::string kColor = "0000000F636F6C7201000000000010";  // a box that tells the colour space

// With another such box after the one that is there.
std::string WithTwoColors(const std::string& other) {
  return With(kColor, kColor + other, With("0000002D6A703268", "0000003C6A703268"));
}

TEST(PaintedObjectCheck, WantsJpegOf1Or3Or4Channels) {
  EXPECT_EQ(BrokenBy(testing::kRedBlueJpx), "");
  EXPECT_EQ(BrokenBy(testing::kGrayAlphaJpx), "6.2.8.3-1");
  EXPECT_EQ(BrokenBy("00", "/ColorSpace/DeviceRGB"), "6.2.8.3-1 6.2.8.3-5");
}

TEST(PaintedObjectCheck, WantsOneColorSpaceOfJpegToBeExact) {
  const std::string exact = With("7201000000000010", "7201000100000010", kColor);
  EXPECT_EQ(BrokenBy(WithTwoColors(exact)), "");
  EXPECT_EQ(BrokenBy(WithTwoColors(kColor)), "6.2.8.3-2 6.2.8.3-3");
  EXPECT_EQ(BrokenBy(WithTwoColors(kColor), "/ColorSpace/DeviceRGB"), "");
  const auto of_three = [](const std::string& first, const std::string& second,
                           const std::string& third) {
    return BrokenBy(
        With(kColor, first + second + third, With("0000002D6A703268", "0000004B6A703268")));
  };
  EXPECT_EQ(of_three(exact, kColor, kColor), "");
  EXPECT_EQ(of_three(kColor, kColor, exact), "");
  EXPECT_EQ(of_three(exact, exact, kColor), "6.2.8.3-2 6.2.8.3-3");
  const std::string unknown = With("7201000000000010", "7204000000000010", kColor);
  EXPECT_EQ(of_three(unknown, exact, unknown), "") << "the exact one counts";
  EXPECT_EQ(of_three(kColor, With("7201000000000010", "7204000100000010", kColor), kColor),
            "6.2.8.3-3");
}

TEST(PaintedObjectCheck, WantsColorSpacesOfJpegThatAreAllowed) {
  EXPECT_EQ(BrokenBy(With("7201000000000010", "7204000000000010")), "6.2.8.3-3");
  EXPECT_EQ(BrokenBy(With("7201000000000010", "7201000000000013")), "6.2.8.3-4");
  EXPECT_EQ(BrokenBy(With("7201000000000010", "7201000000000013"), "/ColorSpace/DeviceRGB"), "");
}

TEST(PaintedObjectCheck, WantsChannelsOfJpegToHaveEqualDepths) {
  EXPECT_EQ(BrokenBy(With("03070101070101070101", "030701010F0101070101")), "6.2.8.3-5");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
