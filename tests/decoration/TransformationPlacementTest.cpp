// Where settings put a text: absolute positions, facing pages, and the place of a block.
#include <utility>

#include <gtest/gtest.h>

#include "PdfText.h"
#include "PdfTransformation.h"
#include "decoration/FontForTest.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {
namespace {

using Horizontal = PdfTransformHorizontalPos;
using Vertical = PdfTransformVerticalPos;

TEST(TransformationPlacement, BecomesAbsoluteWithAnAbsolutePosition) {
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

TEST(TransformationPlacement, MirrorsFacingPages) {
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
TEST(TransformationPlacement, LeavesThePlacesThatAreNotMirroredAsTheyAre) {
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

TEST(TransformationPlacement, StaysAbsoluteOnFacingPagesThatAreCentred) {
  PdfTransformation settings(PdfTransformType::AddPageNumber);
  settings.SetAbsolutePosition(PdfPagePoint(1, 2));
  for (const bool faces : {false, true}) {
    settings.SetDoFacingPages(faces);
    settings.ApplyFacingPages(1);
    EXPECT_EQ(settings.GetHorizontalPosition(), Horizontal::Absolute);
    EXPECT_EQ(settings.GetBaseHorizontalPosition(), Horizontal::Center);
  }
}

TEST(TransformationPlacement, MirrorsABasePositionAlsoWhenTheEffectiveOneIsAbsolute) {
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
