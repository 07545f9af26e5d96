// What settings are at first, what going back to that leaves alone, and that copies have all of it.
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfTransformation.h"

namespace TarnixTools {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
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

TEST(TransformationDefaults, DrawsPageNumbersAtTheBottomByDefault) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  EXPECT_EQ(settings.GetType(), PdfTransformType::AddPageNumber);
  ExpectSharedDefaults(settings);
  EXPECT_EQ(settings.GetVerticalPosition(), Vertical::Bottom);
  EXPECT_EQ(settings.GetTextAlignment(), PdfTransformTextAlignment::Center);
  EXPECT_EQ(settings.GetMarginX(), 0);
  EXPECT_EQ(settings.GetMarginY(), 0);
  EXPECT_EQ(settings.GetPixelsPerPoint(), 0);
}

TEST(TransformationDefaults, DrawsStampsInTheMiddleByDefault) {
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

TEST(TransformationDefaults, AsksForNoLevelOfPdfAByDefault) {
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

TEST(TransformationDefaults, GoesBackToDefaults) {
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

TEST(TransformationDefaults, GoesBackToTheDefaultsOfPageNumbersInEverySetting) {
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

TEST(TransformationDefaults, GoesBackToTheDefaultsOfStampsInEverySetting) {
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

TEST(TransformationDefaults, IsCopiedMovedAndAssignedWithAllItHolds) {
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
TEST(TransformationDefaults, GoesBackToTheDefaultsOfConversionsInTheirSettingsOnly) {
  PdfTransformation settings = Changed(PdfTransformType::StampImage);
  settings.SetPdfADefaults();
  EXPECT_EQ(settings.GetCompliance(), PdfCompliance::None);
  EXPECT_FALSE(settings.GetPdfaDowngrade());
  settings.SetCompliance(PdfCompliance::PdfA2B);
  settings.SetPdfaDowngrade(true);
  ExpectChanged(settings);
}

}  // namespace
}  // namespace TarnixTools
