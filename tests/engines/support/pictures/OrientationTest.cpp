#include <array>
#include <utility>

#include <gtest/gtest.h>

#include "engines/support/pictures/Orientation.h"

namespace TarnixTools::engines {

namespace {

using Point = std::pair<double, double>;

// Where a point of the stored picture, x to the right and y downwards, is seen.
Point Seen(int orientation, Point stored) {
  const pdf::Matrix m = OrientationMatrix(orientation);
  const double x = stored.first;
  const double y = 1 - stored.second;
  return {m.a * x + m.c * y + m.e, 1 - (m.b * x + m.d * y + m.f)};
}

TEST(Orientation, PutsTheStoredCornerWhereTheTagSays) {
  // Upper left corner and the end of the first row, as the tag's definition has them.
  const std::array<std::pair<Point, Point>, 8> expected = {{{{0, 0}, {1, 0}},
                                                            {{1, 0}, {0, 0}},
                                                            {{1, 1}, {0, 1}},
                                                            {{0, 1}, {1, 1}},
                                                            {{0, 0}, {0, 1}},
                                                            {{1, 0}, {1, 1}},
                                                            {{1, 1}, {1, 0}},
                                                            {{0, 1}, {0, 0}}}};
  for (int orientation = 1; orientation <= 8; ++orientation) {
    const auto& [corner, row_end] = expected[static_cast<std::size_t>(orientation - 1)];
    EXPECT_EQ(Seen(orientation, {0, 0}), corner) << orientation;
    EXPECT_EQ(Seen(orientation, {1, 0}), row_end) << orientation;
  }
}

TEST(Orientation, ComposesAsMatricesDo) {
  for (int inner = 1; inner <= 8; ++inner) {
    for (int outer = 1; outer <= 8; ++outer) {
      for (const Point& point : {Point{0, 0}, Point{1, 0}, Point{0.25, 0.75}}) {
        EXPECT_EQ(Seen(Compose(inner, outer), point), Seen(outer, Seen(inner, point)))
            << inner << " then " << outer;
      }
    }
  }
}

TEST(Orientation, TurnsAddUp) {
  EXPECT_EQ(Compose(6, 6), 3);
  EXPECT_EQ(Compose(6, 8), 1);
  EXPECT_EQ(Compose(3, 3), 1);
}

}  // namespace

}  // namespace TarnixTools::engines
