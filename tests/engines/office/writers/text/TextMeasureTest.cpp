#include <cmath>
#include <string>
#include <utility>

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

// In thousandths of the size, as the metrics of Times and Helvetica are, which these fonts have.
TEST(TextMeasure, TakesTheFaceOfTheStyle) {
  const auto widths = [](const char* family, const char* text) {
    TextMeasure measure;
    std::string all;
    for (const auto& [is_bold, is_italic] : {std::pair(false, false), std::pair(true, false),
                                             std::pair(false, true), std::pair(true, true)}) {
      const Typeface face{family, is_bold, is_italic};
      all += std::to_string(std::lround(measure.WidthOf(face, text, 1000))) + " ";
    }
    return all;
  };
  EXPECT_EQ(widths("Liberation Serif", "w"), "722 722 667 667 ");
  EXPECT_EQ(widths("Liberation Serif", "a"), "444 500 500 500 ");
  EXPECT_EQ(widths("Liberation Serif", "K"), "722 778 667 667 ");
  EXPECT_EQ(widths("Liberation Serif", "?"), "444 500 500 500 ");
  EXPECT_EQ(widths("Liberation Serif", "m"), "778 833 722 778 ");
  EXPECT_EQ(widths("Liberation Sans", "b"), "556 611 556 611 ");
  EXPECT_EQ(widths("Liberation Mono", "mi"), "1200 1200 1200 1200 ");
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
