#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "engines/img2pdf/PageLayout.h"

namespace TarnixTools::engines::img2pdf {

namespace {

struct Box {
  double left, bottom, right, top;
};

// Where the unit square of the image goes.
Box BoxOf(const pdf::Matrix& m) {
  const std::array<double, 4> xs = {m.e, m.e + m.a, m.e + m.c, m.e + m.a + m.c};
  const std::array<double, 4> ys = {m.f, m.f + m.b, m.f + m.d, m.f + m.b + m.d};
  return {*std::min_element(xs.begin(), xs.end()), *std::min_element(ys.begin(), ys.end()),
          *std::max_element(xs.begin(), xs.end()), *std::max_element(ys.begin(), ys.end())};
}

void ExpectBox(const PageLayout& layout, Box expected) {
  const Box box = BoxOf(layout.matrix);
  EXPECT_NEAR(box.left, expected.left, 1e-9);
  EXPECT_NEAR(box.bottom, expected.bottom, 1e-9);
  EXPECT_NEAR(box.right, expected.right, 1e-9);
  EXPECT_NEAR(box.top, expected.top, 1e-9);
}

constexpr ImageFrame kFrame = {.width = 300, .height = 150, .dpi_x = 72, .dpi_y = 72};
constexpr PageSettings kAdjusted = {.is_adjusted = true};
constexpr PageSettings kFitted = {
    .width = 600, .height = 800, .is_centered = true, .is_fitted = true};

TEST(PageLayout, PageTakesTheSizeOfThePicture) {
  const auto layout = LayOut(kFrame, kAdjusted);
  ASSERT_TRUE(layout);
  EXPECT_EQ(layout->width, 300);
  EXPECT_EQ(layout->height, 150);
  EXPECT_EQ(layout->user_unit, 1);
  ExpectBox(*layout, {0, 0, 300, 150});
}

TEST(PageLayout, MayBeSmallerThanAPointButNotWithoutSpace) {
  const ImageFrame dot = {.width = 1, .height = 1, .dpi_x = 288, .dpi_y = 144};
  const auto layout = LayOut(dot, kAdjusted);
  ASSERT_TRUE(layout);
  EXPECT_EQ(layout->width, 0.25);
  EXPECT_EQ(layout->height, 0.5);
  ExpectBox(*layout, {0, 0, 0.25, 0.5});
  const auto with_border = [&](double border, double width, double height) {
    return LayOut(kFrame, {.width = width, .height = height, .border = border}).has_value();
  };
  EXPECT_TRUE(with_border(10, 20.5, 20.5));
  EXPECT_FALSE(with_border(10, 20, 30));
  EXPECT_FALSE(with_border(10, 30, 20));
  EXPECT_FALSE(with_border(-10, 0, 30));
  EXPECT_FALSE(with_border(-10, 30, 0));
}

TEST(PageLayout, ResolutionsCountAndAreKeptApart) {
  ImageFrame frame = kFrame;
  frame.dpi_x = 144;
  EXPECT_EQ(LayOut(frame, kAdjusted)->width, 150);
  EXPECT_EQ(LayOut(frame, kAdjusted)->height, 150);
  frame.dpi_x = frame.dpi_y = 0;  // 96
  EXPECT_EQ(LayOut(frame, kAdjusted)->width, 225);
  frame.orientation = 6;
  PageSettings upright = kAdjusted;
  upright.makes_upright = true;
  EXPECT_EQ(LayOut(frame, upright)->height, 225);
}

TEST(PageLayout, BorderSurroundsThePicture) {
  PageSettings settings = kAdjusted;
  settings.border = 10;
  const auto layout = LayOut(kFrame, settings);
  EXPECT_EQ(layout->width, 320);
  EXPECT_EQ(layout->height, 170);
  ExpectBox(*layout, {10, 10, 310, 160});
}

TEST(PageLayout, NegativeBorderCutsThePicture) {
  PageSettings settings = kAdjusted;
  settings.border = -25;
  const auto layout = LayOut(kFrame, settings);
  EXPECT_EQ(layout->width, 250);
  ExpectBox(*layout, {-25, -25, 275, 125});
  settings.border = -75;
  EXPECT_FALSE(LayOut(kFrame, settings));
}

TEST(PageLayout, PictureIsFittedAndCentered) {
  const auto layout = LayOut(kFrame, kFitted);
  EXPECT_EQ(layout->width, 600);
  EXPECT_EQ(layout->height, 800);
  ExpectBox(*layout, {0, 250, 600, 550});
  PageSettings settings = kFitted;
  settings.border = 100;
  ExpectBox(*LayOut(kFrame, settings), {100, 300, 500, 500});
  settings.border = 300;
  EXPECT_FALSE(LayOut(kFrame, settings));
}

TEST(PageLayout, LargePictureIsReduced) {
  ImageFrame frame = kFrame;
  frame.width = 3000;
  frame.height = 6000;
  ExpectBox(*LayOut(frame, kFitted), {100, 0, 500, 800});
}

TEST(PageLayout, WithoutFittingAndCenteringItIsAtTheUpperLeft) {
  PageSettings settings = {.width = 600, .height = 800, .border = 10};
  ExpectBox(*LayOut(kFrame, settings), {10, 640, 310, 790});
  settings.is_centered = true;
  ExpectBox(*LayOut(kFrame, settings), {150, 325, 450, 475});
}

TEST(PageLayout, PicturesAreTakenAsTheyAreStored) {
  ImageFrame frame = kFrame;
  frame.orientation = 6;
  const auto layout = LayOut(frame, kAdjusted);
  EXPECT_EQ(layout->width, 300);
  EXPECT_EQ(layout->matrix.a, 300);
}

TEST(PageLayout, TurnsAddToTheOrientationOfTheFile) {
  ImageFrame frame = kFrame;
  frame.orientation = 6;
  PageSettings settings = kAdjusted;
  settings.makes_upright = true;
  settings.orientation = 6;  // upside down together
  const auto layout = LayOut(frame, settings);
  EXPECT_EQ(layout->width, 300);
  EXPECT_EQ(layout->matrix.a, -300);
  EXPECT_EQ(layout->matrix.d, -150);
  ExpectBox(*layout, {0, 0, 300, 150});
  settings.orientation = 8;
  EXPECT_EQ(LayOut(frame, settings)->matrix.a, 300);
}

TEST(PageLayout, HugePagesHaveLargerUnits) {
  const ImageFrame frame = {.width = 60000, .height = 1, .dpi_x = 72, .dpi_y = 72};
  const auto layout = LayOut(frame, kAdjusted);
  EXPECT_EQ(layout->user_unit, 5);
  EXPECT_EQ(layout->width, 12000);
  EXPECT_EQ(layout->height, 0.2);
  ExpectBox(*layout, {0, 0, 12000, 0.2});
}

}  // namespace

}  // namespace TarnixTools::engines::img2pdf
