#include <cmath>

#include <gtest/gtest.h>

#include "engines/office/writers/text/TextMeasure.h"

namespace TarnixTools::engines::office {
namespace {

const Typeface kFace{"Liberation Serif", false, false, true, false};

TEST(TextMeasure, BringsNeighboursTogetherWhereKerningIsAskedFor) {
  TextMeasure plain;
  TextMeasure kerned(MeasureSettings{.has_kerning = true});
  EXPECT_LT(kerned.WidthOf(kFace, "AVAV", 10), plain.WidthOf(kFace, "AVAV", 10) - 1);
  EXPECT_DOUBLE_EQ(kerned.WidthOf(kFace, "nn", 10), plain.WidthOf(kFace, "nn", 10));
}

TEST(TextMeasure, KeepsToTheDotsOfAGrid) {
  constexpr double kDot = 72.0 / 600;
  TextMeasure plain;
  TextMeasure gridded(MeasureSettings{.grid = 600});
  for (const double size : {5.0, 7.5, 10.5, 13.0}) {
    const double dots = gridded.WidthOf(kFace, "nnnn", size) / kDot;
    EXPECT_NEAR(dots, std::round(dots), 1e-9) << size;
    EXPECT_NEAR(dots, plain.WidthOf(kFace, "nnnn", size) / kDot, 4) << size;
  }
  // 63 dots high, and half of that is 32.
  EXPECT_NEAR(gridded.WidthOf(kFace, "nn", 7.5), 64 * kDot, 1e-9);
}

}  // namespace
}  // namespace TarnixTools::engines::office
