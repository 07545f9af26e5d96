#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "engines/support/pictures/DrawnOrientation.h"
#include "engines/support/pictures/Orientation.h"

namespace TarnixTools::engines {
namespace {

// The matrix, then turned counter-clockwise by the degrees.
pdf::Matrix TurnedBy(const pdf::Matrix& matrix, double degrees) {
  const double angle = degrees * 3.14159265358979 / 180;
  return matrix *
         pdf::Matrix{std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
}

TEST(DrawnOrientation, IsThatOfTheMatrix) {
  for (int orientation = 1; orientation <= 8; ++orientation) {
    const pdf::Matrix matrix = OrientationMatrix(orientation);
    EXPECT_EQ(OrientationOf(matrix), orientation);
    EXPECT_FALSE(IsSkewed(matrix)) << orientation;
    const pdf::Matrix scaled = matrix * pdf::Matrix{300, 0, 0, 0.5, -7, 9};
    EXPECT_EQ(OrientationOf(scaled), orientation);
    EXPECT_FALSE(IsSkewed(scaled)) << orientation;
  }
}

TEST(DrawnOrientation, IsTheNearest) {
  for (int orientation = 1; orientation <= 8; ++orientation) {
    for (const double degrees : {-40.0, -1.0, 10.0, 44.0}) {
      const pdf::Matrix turned = TurnedBy(OrientationMatrix(orientation), degrees);
      EXPECT_EQ(OrientationOf(turned), orientation) << degrees;
      EXPECT_TRUE(IsSkewed(turned)) << orientation << " " << degrees;
    }
  }
}

TEST(DrawnOrientation, IsUprightWhereNothingCanBeTold) {
  EXPECT_EQ(OrientationOf({0, 0, 0, 0, 0, 0}), 1);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(OrientationOf({nan, nan, nan, nan, 0, 0}), 1);
  EXPECT_EQ(OrientationOf({-5, 0, 0, 0, 0, 0}), 2);
  EXPECT_EQ(OrientationOf({0, 5, 0, 0, 0, 0}), 8);
}

}  // namespace
}  // namespace TarnixTools::engines
