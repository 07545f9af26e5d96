#include <cmath>
#include <limits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfTransformation.h"
#include "support/Failures.h"

namespace TarnixTools {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

TEST(PdfTransformation, KnowsNoOtherType) {
  for (const int type : {-1, 4, 1000}) {
    EXPECT_EQ(FailureOf([&] { PdfTransformation settings(static_cast<PdfTransformType>(type)); }),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid transformation type [" + std::to_string(type) + "]"));
  }
}

TEST(PdfTransformation, FillsTheTemplateIn) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  const auto filled = [&](const std::string& text, int number = 3, int count = 10) {
    settings.SetPageNumberTextTemplate(text);
    return settings.GetPageNumberText(number, count);
  };
  EXPECT_EQ(filled("Page {n} of {p}"), "Page 3 of 10");
  EXPECT_EQ(filled("{n}{n}", 7), "77");
  EXPECT_EQ(filled("{p}/{n}"), "10/3");
  EXPECT_EQ(filled("{N} { n} {n {{n}}"), "{N} { n} {n {3}");
  EXPECT_EQ(filled("{n}", -12), "-12");
  EXPECT_EQ(filled("", 1), "");
  EXPECT_EQ(settings.GetPageNumberTextTemplate(), "");
  const std::string& text = settings.GetPageNumberText(1, 2);
  EXPECT_EQ(&text, &settings.GetPageNumberText(5, 6));
}

TEST(PdfTransformation, FillsLongTemplatesInAtOnce) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  std::string text;
  std::string expected;
  for (int i = 0; i < 500'000; ++i) {
    text += "{n}{p}";
    expected += "12345678";
  }
  settings.SetPageNumberTextTemplate(text);
  EXPECT_EQ(settings.GetPageNumberText(1234, 5678), expected);
}

TEST(PdfTransformation, DecodesColours) {
  PdfTransformation settings(PdfTransformType::StampText);
  for (const std::string color : {"#FF8000", "#ff8000", "#FF8000abc"}) {
    settings.SetFontColor(color);
    EXPECT_EQ(settings.GetFontColor(), color);
    EXPECT_THAT(settings.GetColors(), ElementsAre(1.0, DoubleEq(128.0 / 255), 0.0));
  }
  for (const std::string color : {"#012345", "#6789AB", "#CDEFab", "#cdefFF"}) {
    settings.SetFontColor(color);
    EXPECT_EQ(settings.GetFontColor(), color);
  }
  settings.SetFontColor("#09afAF");
  EXPECT_THAT(settings.GetColors(),
              ElementsAre(DoubleEq(9.0 / 255), DoubleEq(175.0 / 255), DoubleEq(175.0 / 255)));
}

TEST(PdfTransformation, RejectsWhatIsNoColour) {
  PdfTransformation settings(PdfTransformType::StampText);
  settings.SetFontColor("#123456");
  for (const std::string color :
       {"FF8000", "#FF#000", "", "##FF8000", "#GG0000", "red", "#FF80 0", "#FF800", "#"}) {
    EXPECT_EQ(FailureOf([&] { settings.SetFontColor(color); }),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid RGB font color pattern [" + color + "]"));
    EXPECT_EQ(settings.GetFontColor(), "#123456");
    EXPECT_THAT(settings.GetColors()[0], DoubleEq(18.0 / 255));
  }
}

TEST(PdfTransformation, ReadsHexadecimalDigits) {
  const PdfTransformation settings(PdfTransformType::StampText);
  EXPECT_EQ(settings.GetDoubleFromHexStr("00"), 0);
  EXPECT_EQ(settings.GetDoubleFromHexStr("fF"), 255);
  EXPECT_EQ(settings.GetDoubleFromHexStr("7B99"), 123);
  EXPECT_EQ(settings.GetDoubleFromHexStr("1"), 16);
  EXPECT_EQ(settings.GetDoubleFromHexStr(""), 0);
  for (int value = 0; value < 256; ++value) {
    const std::string upper = "0123456789ABCDEF";
    const std::string lower = "0123456789abcdef";
    const auto high = static_cast<std::size_t>(value) / 16;
    const auto low = static_cast<std::size_t>(value) % 16;
    EXPECT_EQ(settings.GetDoubleFromHexStr({upper[high], lower[low]}), value);
    EXPECT_EQ(settings.GetDoubleFromHexStr({lower[high], upper[low]}), value);
  }
}

// Any other character counts as far as it is from a 0, also beyond the digits' four bits.
TEST(PdfTransformation, ReadsWhatIsNoDigitByItsDistanceFromZero) {
  const PdfTransformation settings(PdfTransformType::StampText);
  EXPECT_EQ(settings.GetDoubleFromHexStr("G0"), 23 * 16);
  EXPECT_EQ(settings.GetDoubleFromHexStr("0g"), 23);
  EXPECT_EQ(settings.GetDoubleFromHexStr("1g"), 16 | 23);
  EXPECT_EQ(settings.GetDoubleFromHexStr("@z"), 16 * 16 | 42);
}

TEST(PdfTransformation, PaintsWithTheColoursThatAHostChanges) {
  PdfTransformation settings(PdfTransformType::StampText);
  settings.GetColors()[1] = 0.5;
  EXPECT_THAT(std::as_const(settings).GetColors(), ElementsAre(0, 0.5, 0));
  EXPECT_EQ(settings.GetFontColor(), "#000000");
}

TEST(PdfTransformation, ChecksOpacities) {
  PdfTransformation settings(PdfTransformType::StampImage);
  for (const int percent : {0, 101, -1, std::numeric_limits<int>::max()}) {
    const std::string rest =
        "opacity value [" + std::to_string(percent) + "] (expected [1-100] value)";
    EXPECT_EQ(FailureOf([&] { settings.SetOpacity(percent); }),
              Failure(PdfExceptionCode::InvalidParameter, "Invalid image " + rest));
    EXPECT_EQ(FailureOf([&] { settings.SetTextOpacity(percent); }),
              Failure(PdfExceptionCode::InvalidParameter, "Invalid text " + rest));
    EXPECT_EQ(settings.GetOpacity(), 100);
    EXPECT_EQ(settings.GetTextOpacity(), 100);
  }
  for (const int percent : {1, 100}) {
    settings.SetOpacity(percent);
    settings.SetTextOpacity(percent);
    EXPECT_EQ(settings.GetOpacity(), percent);
    EXPECT_EQ(settings.GetTextOpacity(), percent);
  }
}

TEST(PdfTransformation, ChecksTheWidthOfImages) {
  PdfTransformation settings(PdfTransformType::StampImage);
  EXPECT_EQ(settings.GetImageWidth(), 0);
  EXPECT_FALSE(settings.GetApplyOpacity());
  settings.SetImageWidth(30, PdfTransformWidthUnit::PercentOfPage);
  for (const auto& [width, text] : {std::pair<double, const char*>{-1.5, "-1.5"},
                                    {std::numeric_limits<double>::infinity(), "inf"},
                                    {std::nan(""), "nan"}}) {
    EXPECT_EQ(FailureOf([&, wanted = width] { settings.SetImageWidth(wanted); }),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid image width [" + std::string(text) + "]"));
  }
  EXPECT_EQ(settings.GetImageWidth(), 30);
  EXPECT_EQ(settings.GetImageWidthUnit(), PdfTransformWidthUnit::PercentOfPage);
  for (const double width : {0.0, 0.25}) {
    settings.SetImageWidth(width);
    EXPECT_EQ(settings.GetImageWidth(), width);
    EXPECT_EQ(settings.GetImageWidthUnit(), PdfTransformWidthUnit::Points);
  }
  settings.SetImageWidth(30, PdfTransformWidthUnit::PercentOfPage);
  settings.SetDefaults();
  EXPECT_EQ(settings.GetImageWidth(), 0);
  EXPECT_EQ(settings.GetImageWidthUnit(), PdfTransformWidthUnit::Points);
}

TEST(PdfTransformation, StoresWhatItIsGiven) {
  PdfTransformation settings(PdfTransformType::StampText);
  settings.SetFontName("Courier");
  settings.SetFontStyle("Bold");
  settings.SetFontSize(-3.5);
  settings.SetRotation(720.5);
  settings.SetMarginX(-4);
  settings.SetMarginY(5);
  settings.SetPixelsPerPoint(-1);
  settings.SetStartingPageNum(-7);
  settings.SetMosaic(true);
  settings.SetInputText("a\nb");
  settings.SetInputImage("x.png");
  settings.SetLayerPosition(PdfTransformLayerPos::Under);
  settings.SetVerticalAdjustment(8);
  settings.SetHorizontalAdjustment(-9);
  settings.SetTextAlignment(PdfTransformTextAlignment::Right);
  PdfTransformation copy(settings);
  const PdfTransformation moved(std::move(settings));
  PdfTransformation assigned(PdfTransformType::PdfA);
  assigned = copy;
  for (const PdfTransformation* same : {&moved, &std::as_const(copy), &std::as_const(assigned)}) {
    EXPECT_EQ(same->GetType(), PdfTransformType::StampText);
    EXPECT_EQ(same->GetFontName(), "Courier");
    EXPECT_EQ(same->GetFontStyle(), "Bold");
    EXPECT_EQ(same->GetFontSize(), -3.5);
    EXPECT_EQ(same->GetRotation(), 720.5);
    EXPECT_EQ(same->GetMarginX(), -4);
    EXPECT_EQ(same->GetMarginY(), 5);
    EXPECT_EQ(same->GetPixelsPerPoint(), -1);
    EXPECT_EQ(same->GetStartingPageNum(), -7);
    EXPECT_TRUE(same->GetMosaic());
    EXPECT_EQ(same->GetInputText(), "a\nb");
    EXPECT_EQ(same->GetInputImage(), "x.png");
    EXPECT_EQ(same->GetLayerPosition(), PdfTransformLayerPos::Under);
    EXPECT_EQ(same->GetVerticalAdjustment(), 8);
    EXPECT_EQ(same->GetHorizontalAdjustment(), -9);
    EXPECT_EQ(same->GetBaseHorizontalAdjustment(), -9);
    EXPECT_EQ(same->GetTextAlignment(), PdfTransformTextAlignment::Right);
  }
}

}  // namespace
}  // namespace TarnixTools
