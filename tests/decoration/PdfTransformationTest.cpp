#include <cmath>
#include <limits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfText.h"
#include "PdfTransformation.h"
#include "decoration/FontForTest.h"
#include "engines/toolbox/Toolbox.h"
#include "support/Failures.h"

namespace TarnixTools {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using Horizontal = PdfTransformHorizontalPos;
using Vertical = PdfTransformVerticalPos;

// What all types but PDF/A have alike.
void ExpectSharedDefaults(PdfTransformation& settings) {
  EXPECT_EQ(settings.GetTargetPagesNum(), 0);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Center);
  EXPECT_EQ(settings.GetBaseHorizontalPosition(), Horizontal::Center);
  EXPECT_EQ(settings.GetLayerPosition(), PdfTransformLayerPos::Over);
  EXPECT_EQ(settings.GetVerticalAdjustment(), 0);
  EXPECT_EQ(settings.GetHorizontalAdjustment(), 0);
  EXPECT_EQ(settings.GetBaseHorizontalAdjustment(), 0);
  EXPECT_EQ(settings.GetPageNumberTextTemplate(), "{n}");
  EXPECT_EQ(settings.GetStartingPageNum(), 1);
  EXPECT_EQ(settings.GetFontName(), "Arial");
  EXPECT_EQ(settings.GetFontStyle(), "");
  EXPECT_EQ(settings.GetFontSize(), 24.0);
  EXPECT_EQ(settings.GetFontColor(), "#000000");
  EXPECT_THAT(settings.GetColors(), ElementsAre(0, 0, 0));
  EXPECT_FALSE(settings.GetFirstCoverPage());
  EXPECT_FALSE(settings.GetDoFacingPages());
  EXPECT_EQ(settings.GetInputImage(), "");
  EXPECT_EQ(settings.GetInputText(), "");
  EXPECT_EQ(settings.GetRotation(), 0);
  EXPECT_FALSE(settings.GetMosaic());
  EXPECT_EQ(settings.GetImageWidth(), 0);
  EXPECT_EQ(settings.GetImageWidthUnit(), PdfTransformWidthUnit::Points);
  EXPECT_EQ(settings.GetOpacity(), 100);
  EXPECT_FALSE(settings.GetApplyOpacity());
  EXPECT_EQ(settings.GetTextOpacity(), 100);
  EXPECT_EQ(settings.GetAbsolutePositionX(), 0);
  EXPECT_EQ(settings.GetAbsolutePositionY(), 0);
}

TEST(PdfTransformation, DrawsPageNumbersAtTheBottomByDefault) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  EXPECT_EQ(settings.GetType(), PdfTransformType::AddPageNumber);
  ExpectSharedDefaults(settings);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Bottom);
  EXPECT_EQ(settings.GetTextAlignment(), PdfTransformTextAlignment::Center);
  EXPECT_EQ(settings.GetMarginX(), 0);
  EXPECT_EQ(settings.GetMarginY(), 0);
  EXPECT_EQ(settings.GetPixelsPerPoint(), 0);
}

TEST(PdfTransformation, DrawsStampsInTheMiddleByDefault) {
  for (const auto type : {PdfTransformType::StampText, PdfTransformType::StampImage}) {
    PdfTransformation settings(type);
    EXPECT_EQ(settings.GetType(), type);
    ExpectSharedDefaults(settings);
    EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Middle);
    EXPECT_EQ(settings.GetTextAlignment(), PdfTransformTextAlignment::Left);
    EXPECT_EQ(settings.GetMarginX(), 15);
    EXPECT_EQ(settings.GetMarginY(), 15);
    EXPECT_EQ(settings.GetPixelsPerPoint(), 1.33);
  }
}

TEST(PdfTransformation, AsksForNoLevelOfPdfAByDefault) {
  PdfTransformation settings(PdfTransformType::PdfA);
  EXPECT_EQ(settings.GetCompliance(), PdfCompliance::None);
  EXPECT_FALSE(settings.GetPdfaDowngrade());
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Top);  // 0
  EXPECT_EQ(settings.GetFontSize(), 0);
  EXPECT_EQ(settings.GetFontName(), "");
  EXPECT_EQ(settings.GetOpacity(), 0);
  settings.SetCompliance(PdfCompliance::PdfA2B);
  settings.SetPdfaDowngrade(true);
  settings.SetFontName("Courier");
  EXPECT_EQ(static_cast<int>(settings.GetCompliance()), 0x1701);
  settings.SetDefaults();
  EXPECT_EQ(settings.GetCompliance(), PdfCompliance::None);
  EXPECT_FALSE(settings.GetPdfaDowngrade());
  EXPECT_EQ(settings.GetFontName(), "Courier");
}

TEST(PdfTransformation, KnowsNoOtherType) {
  for (const int type : {-1, 4, 1000}) {
    EXPECT_EQ(FailureOf([&] { PdfTransformation settings(static_cast<PdfTransformType>(type)); }),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid transformation type [" + std::to_string(type) + "]"));
  }
}

TEST(PdfTransformation, GoesBackToDefaults) {
  PdfTransformation settings(PdfTransformType::StampText);
  settings.SetInputText("kept");
  settings.SetAbsolutePosition(PdfPagePoint(3, 4));
  settings.SetFontColor("#FF0000");
  settings.SetOpacity(5);
  settings.SetMarginX(1);
  settings.AddTargetPage(3);
  settings.SetDefaults();
  EXPECT_EQ(settings.GetInputText(), "kept");
  EXPECT_EQ(settings.GetAbsolutePositionY(), 4);
  settings.SetInputText("");
  settings.SetAddPageNumberDefaults();
  ExpectSharedDefaults(settings);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Bottom);
}

// Every setting has another value than any default.
PdfTransformation Changed(PdfTransformType type) {
  PdfTransformation settings(type);
  settings.AddTargetPattern("2-3,7");
  settings.SetHorizontalPosition(Horizontal::Left);
  settings.SetVerticalPosition(Vertical::Top);
  settings.SetLayerPosition(PdfTransformLayerPos::Under);
  settings.SetTextAlignment(PdfTransformTextAlignment::Right);
  settings.SetVerticalAdjustment(8);
  settings.SetHorizontalAdjustment(-9);
  settings.SetPageNumberTextTemplate("p. {n}");
  settings.GetPageNumberText(1, 2);
  settings.SetStartingPageNum(-7);
  settings.SetFontName("Courier");
  settings.SetFontStyle("Bold");
  settings.SetFontSize(3.5);
  settings.SetFontColor("#FF8001");
  settings.SetFirstCoverPage(true);
  settings.SetDoFacingPages(true);
  settings.SetMarginX(-4);
  settings.SetMarginY(5);
  settings.SetInputImage("x.png");
  settings.SetInputText("a\nb");
  settings.SetRotation(720.5);
  settings.SetPixelsPerPoint(-1);
  settings.SetMosaic(true);
  settings.SetImageWidth(30, PdfTransformWidthUnit::PercentOfPage);
  settings.SetOpacity(5);
  settings.SetApplyOpacity(true);
  settings.SetTextOpacity(6);
  settings.SetCompliance(PdfCompliance::PdfA2B);
  settings.SetPdfaDowngrade(true);
  settings.GetAbsolutePosition() = PdfPagePoint(3, 4);
  return settings;
}

// Those that Changed has changed and that defaults leave alone.
void ExpectUntouched(PdfTransformation& settings) {
  EXPECT_EQ(settings.GetInputText(), "a\nb");
  EXPECT_EQ(settings.GetCompliance(), PdfCompliance::PdfA2B);
  EXPECT_TRUE(settings.GetPdfaDowngrade());
  settings.SetInputText("");  // for ExpectSharedDefaults
}

TEST(PdfTransformation, GoesBackToTheDefaultsOfPageNumbersInEverySetting) {
  PdfTransformation by_type = Changed(PdfTransformType::AddPageNumber);
  by_type.SetDefaults();
  PdfTransformation by_name = Changed(PdfTransformType::StampText);
  by_name.SetAddPageNumberDefaults();
  for (PdfTransformation* settings : {&by_type, &by_name}) {
    ExpectUntouched(*settings);
    ExpectSharedDefaults(*settings);
    EXPECT_EQ(settings->GetVerticalPosition(), Vertical::Bottom);
    EXPECT_EQ(settings->GetTextAlignment(), PdfTransformTextAlignment::Center);
    EXPECT_EQ(settings->GetMarginX(), 0);
    EXPECT_EQ(settings->GetMarginY(), 0);
    EXPECT_EQ(settings->GetPixelsPerPoint(), 0);
  }
}

TEST(PdfTransformation, GoesBackToTheDefaultsOfStampsInEverySetting) {
  PdfTransformation of_text = Changed(PdfTransformType::StampText);
  of_text.SetDefaults();
  PdfTransformation of_image = Changed(PdfTransformType::StampImage);
  of_image.SetDefaults();
  PdfTransformation text_by_name = Changed(PdfTransformType::AddPageNumber);
  text_by_name.SetStampTextDefaults();
  PdfTransformation image_by_name = Changed(PdfTransformType::AddPageNumber);
  image_by_name.SetStampImageDefaults();
  for (PdfTransformation* settings : {&of_text, &of_image, &text_by_name, &image_by_name}) {
    EXPECT_EQ(settings->GetAbsolutePositionX(), 3);
    EXPECT_EQ(settings->GetAbsolutePositionY(), 4);
    settings->GetAbsolutePosition() = PdfPagePoint();
    ExpectUntouched(*settings);
    ExpectSharedDefaults(*settings);
    EXPECT_EQ(settings->GetVerticalPosition(), Vertical::Middle);
    EXPECT_EQ(settings->GetTextAlignment(), PdfTransformTextAlignment::Left);
    EXPECT_EQ(settings->GetMarginX(), 15);
    EXPECT_EQ(settings->GetMarginY(), 15);
    EXPECT_EQ(settings->GetPixelsPerPoint(), 1.33);
  }
}

// What is copied, moved and assigned is all of it.
void ExpectChanged(PdfTransformation& settings) {
  EXPECT_EQ(settings.GetType(), PdfTransformType::StampImage);
  EXPECT_THAT(settings.GetTargetPages(), ElementsAre(2, 3, 7));
  EXPECT_TRUE(settings.IsTargetPage(3));
  EXPECT_FALSE(settings.IsTargetPage(4));
  EXPECT_EQ(settings.GetTargetRanges().size(), 2U);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Left);
  EXPECT_EQ(settings.GetBaseHorizontalPosition(), Horizontal::Left);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Top);
  EXPECT_EQ(settings.GetLayerPosition(), PdfTransformLayerPos::Under);
  EXPECT_EQ(settings.GetTextAlignment(), PdfTransformTextAlignment::Right);
  EXPECT_EQ(settings.GetVerticalAdjustment(), 8);
  EXPECT_EQ(settings.GetHorizontalAdjustment(), -9);
  EXPECT_EQ(settings.GetBaseHorizontalAdjustment(), -9);
  EXPECT_EQ(settings.GetPageNumberTextTemplate(), "p. {n}");
  EXPECT_EQ(settings.GetStartingPageNum(), -7);
  EXPECT_EQ(settings.GetFontName(), "Courier");
  EXPECT_EQ(settings.GetFontStyle(), "Bold");
  EXPECT_EQ(settings.GetFontSize(), 3.5);
  EXPECT_EQ(settings.GetFontColor(), "#FF8001");
  EXPECT_THAT(settings.GetColors(), ElementsAre(1.0, DoubleEq(128.0 / 255), DoubleEq(1.0 / 255)));
  EXPECT_TRUE(settings.GetFirstCoverPage());
  EXPECT_TRUE(settings.GetDoFacingPages());
  EXPECT_EQ(settings.GetMarginX(), -4);
  EXPECT_EQ(settings.GetMarginY(), 5);
  EXPECT_EQ(settings.GetInputImage(), "x.png");
  EXPECT_EQ(settings.GetInputText(), "a\nb");
  EXPECT_EQ(settings.GetRotation(), 720.5);
  EXPECT_EQ(settings.GetPixelsPerPoint(), -1);
  EXPECT_TRUE(settings.GetMosaic());
  EXPECT_EQ(settings.GetImageWidth(), 30);
  EXPECT_EQ(settings.GetImageWidthUnit(), PdfTransformWidthUnit::PercentOfPage);
  EXPECT_EQ(settings.GetOpacity(), 5);
  EXPECT_TRUE(settings.GetApplyOpacity());
  EXPECT_EQ(settings.GetTextOpacity(), 6);
  EXPECT_EQ(settings.GetCompliance(), PdfCompliance::PdfA2B);
  EXPECT_TRUE(settings.GetPdfaDowngrade());
  EXPECT_EQ(settings.GetAbsolutePositionX(), 3);
  EXPECT_EQ(settings.GetAbsolutePositionY(), 4);
}

TEST(PdfTransformation, IsCopiedMovedAndAssignedWithAllItHolds) {
  PdfTransformation settings = Changed(PdfTransformType::StampImage);
  ExpectChanged(settings);
  PdfTransformation copy(settings);
  PdfTransformation assigned(PdfTransformType::PdfA);
  assigned = settings;
  PdfTransformation moved(std::move(settings));
  PdfTransformation move_assigned(PdfTransformType::AddPageNumber);
  move_assigned = PdfTransformation(copy);
  for (PdfTransformation* same : {&copy, &assigned, &moved, &move_assigned}) {
    ExpectChanged(*same);
  }
  copy.AddTargetPage(9);
  EXPECT_FALSE(assigned.IsTargetPage(9));
}

// The conversion's own settings are all that its defaults write.
TEST(PdfTransformation, GoesBackToTheDefaultsOfConversionsInTheirSettingsOnly) {
  PdfTransformation settings = Changed(PdfTransformType::StampImage);
  settings.SetPdfADefaults();
  EXPECT_EQ(settings.GetCompliance(), PdfCompliance::None);
  EXPECT_FALSE(settings.GetPdfaDowngrade());
  settings.SetCompliance(PdfCompliance::PdfA2B);
  settings.SetPdfaDowngrade(true);
  ExpectChanged(settings);
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

TEST(PdfTransformation, BecomesAbsoluteWithAnAbsolutePosition) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  settings.SetAbsolutePositionX(10);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Absolute);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Absolute);
  EXPECT_EQ(settings.GetBaseHorizontalPosition(), Horizontal::Center);
  settings.SetHorizontalPosition(Horizontal::Left);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Left);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Absolute);
  settings.SetVerticalPosition(Vertical::Top);
  settings.SetAbsolutePositionY(-20);
  EXPECT_EQ(settings.GetAbsolutePositionX(), 10);
  EXPECT_EQ(settings.GetAbsolutePositionY(), -20);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Absolute);
  settings.SetAbsolutePosition(PdfPagePoint(1, 2));
  EXPECT_EQ(settings.GetAbsolutePosition().GetX(), 1);
  EXPECT_EQ(settings.GetAbsolutePosition().GetY(), 2);
}

struct FacingCase {
  bool has_cover;
  Horizontal base;
  int page;
  Horizontal effective;
  int adjustment;
};

TEST(PdfTransformation, MirrorsFacingPages) {
  const FacingCase cases[] = {
      {false, Horizontal::Left, 2, Horizontal::Left, 10},
      {false, Horizontal::Left, 3, Horizontal::Right, -10},
      {false, Horizontal::Right, 2, Horizontal::Right, 10},
      {false, Horizontal::Right, 3, Horizontal::Left, -10},
      {true, Horizontal::Left, 2, Horizontal::Right, 10},
      {true, Horizontal::Left, 3, Horizontal::Left, -10},
      {true, Horizontal::Right, 2, Horizontal::Left, 10},
      {true, Horizontal::Right, 3, Horizontal::Right, -10},
      {false, Horizontal::Center, 3, Horizontal::Center, 10},
      {true, Horizontal::Absolute, 3, Horizontal::Absolute, 10},
  };
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  settings.SetDoFacingPages(true);
  settings.SetHorizontalAdjustment(10);
  for (const FacingCase& facing : cases) {
    settings.SetFirstCoverPage(facing.has_cover);
    settings.SetHorizontalPosition(facing.base);
    settings.SetHorizontalAdjustment(10);
    settings.ApplyFacingPages(facing.page);
    EXPECT_EQ(settings.GetHorizontalPosition(), facing.effective) << facing.page;
    EXPECT_EQ(settings.GetHorizontalAdjustment(), facing.adjustment) << facing.page;
    EXPECT_EQ(settings.GetBaseHorizontalPosition(), facing.base);
    EXPECT_EQ(settings.GetBaseHorizontalAdjustment(), 10);
  }
  settings.SetDoFacingPages(false);
  settings.SetHorizontalPosition(Horizontal::Left);
  settings.ApplyFacingPages(3);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Left);
}

// What is centred or at an absolute position stays as the last page, or the host, has left it.
TEST(PdfTransformation, LeavesThePlacesThatAreNotMirroredAsTheyAre) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  settings.SetDoFacingPages(true);
  settings.SetHorizontalPosition(Horizontal::Left);
  settings.SetHorizontalAdjustment(10);
  settings.ApplyFacingPages(3);
  for (const Horizontal position : {Horizontal::Center, Horizontal::Absolute}) {
    settings.SetHorizontalPosition(position);
    for (const int page : {3, 4}) {
      settings.ApplyFacingPages(page);
      EXPECT_EQ(settings.GetHorizontalPosition(), position);
      EXPECT_EQ(settings.GetHorizontalAdjustment(), -10);
    }
  }
  settings.SetHorizontalPosition(Horizontal::Right);
  settings.ApplyFacingPages(3);
  settings.SetDoFacingPages(false);
  settings.ApplyFacingPages(2);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Left);
  EXPECT_EQ(settings.GetHorizontalAdjustment(), -10);
}

TEST(PdfTransformation, StaysAbsoluteOnFacingPagesThatAreCentred) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  settings.SetAbsolutePosition(PdfPagePoint(1, 2));
  for (const bool faces : {false, true}) {
    settings.SetDoFacingPages(faces);
    settings.ApplyFacingPages(1);
    EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Absolute);
    EXPECT_EQ(settings.GetBaseHorizontalPosition(), Horizontal::Center);
  }
}

TEST(PdfTransformation, MirrorsABasePositionAlsoWhenTheEffectiveOneIsAbsolute) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  settings.SetDoFacingPages(true);
  settings.SetHorizontalPosition(Horizontal::Left);
  settings.SetAbsolutePosition(PdfPagePoint(1, 2));
  settings.ApplyFacingPages(4);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Left);
  settings.ApplyFacingPages(5);
  EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Right);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Absolute);
}

// A page of 600 by 800 points and a block of 120 by 50, margins 7 and 11, adjustments 3 and -2, the
// absolute position (40, 30). Vertical coordinates are those of a font without ascent.
class TextPositionTest : public ::testing::Test {
 protected:
  TextPositionTest() {
    settings_.SetMarginX(7);
    settings_.SetMarginY(11);
    settings_.SetHorizontalAdjustment(3);
    settings_.SetVerticalAdjustment(-2);
    settings_.SetAbsolutePosition(PdfPagePoint(40, 30));
  }

  engines::TPdfPoint Position(Vertical vertical, Horizontal horizontal, int page = 1) {
    settings_.SetVerticalPosition(vertical);
    settings_.SetHorizontalPosition(horizontal);
    return settings_.GetTextPosition(page, {600, 800}, {120, 50}, text_);
  }

  testing::FontForTest font_;
  PdfText text_{"x", font_.Get(), 20};
  PdfTransformation settings_{PdfTransformType::StampText};
};

TEST_F(TextPositionTest, IsThatOfTheTable) {
  const std::pair<Vertical, double> verticals[] = {{Vertical::Top, 800 - 11 - 2},
                                                   {Vertical::Bottom, 50 + 11 - 2},
                                                   {Vertical::Middle, 400 - 25 - 2},
                                                   {Vertical::Absolute, 30 + 11 + 50 - 2},
                                                   {static_cast<Vertical>(4), 400 - 25 - 2}};
  const std::pair<Horizontal, double> horizontals[] = {{Horizontal::Left, 7 + 3},
                                                       {Horizontal::Center, 300 - 60 + 3},
                                                       {Horizontal::Right, 600 - 120 - 7 + 3},
                                                       {Horizontal::Absolute, 40 + 7 + 3},
                                                       {static_cast<Horizontal>(-1), 240 + 3}};
  ASSERT_GT(text_.GetAscent(), 10);
  for (const auto& [vertical, y] : verticals) {
    for (const auto& [horizontal, x] : horizontals) {
      const engines::TPdfPoint point = Position(vertical, horizontal);
      EXPECT_DOUBLE_EQ(point.x, x) << static_cast<int>(horizontal);
      EXPECT_DOUBLE_EQ(point.y, y - text_.GetAscent()) << static_cast<int>(vertical);
    }
  }
}

TEST_F(TextPositionTest, IsThatOfAnAbsolutePositionWhateverTheBaseIs) {
  settings_.SetHorizontalPosition(Horizontal::Right);
  settings_.SetVerticalPosition(Vertical::Top);
  settings_.SetAbsolutePositionY(35);
  const engines::TPdfPoint point = settings_.GetTextPosition(1, {600, 800}, {120, 50}, text_);
  EXPECT_DOUBLE_EQ(point.x, 40 + 7 + 3);
  EXPECT_DOUBLE_EQ(point.y, 35 + 11 + 50 - 2 - text_.GetAscent());
}

TEST_F(TextPositionTest, FollowsFacingPages) {
  settings_.SetDoFacingPages(true);
  EXPECT_DOUBLE_EQ(Position(Vertical::Top, Horizontal::Right, 2).x, 600 - 120 - 7 + 3);
  EXPECT_DOUBLE_EQ(Position(Vertical::Top, Horizontal::Right, 3).x, 7 - 3);
}

}  // namespace
}  // namespace TarnixTools
