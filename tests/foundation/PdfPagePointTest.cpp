#include <limits>

#include <gtest/gtest.h>

#include "PdfPagePoint.h"
#include "support/Failures.h"

namespace TarnixTools {
namespace {

using testing::Failure;
using testing::FailureOf;

TEST(PdfPagePoint, IsTheOriginByDefault) {
  const PdfPagePoint point;
  EXPECT_EQ(point.GetX(), 0);
  EXPECT_EQ(point.GetY(), 0);
}

TEST(PdfPagePoint, HoldsItsCoordinatesAsTheyAre) {
  const PdfPagePoint point(3.25, 1e9);
  EXPECT_EQ(point.GetX(), 3.25);
  EXPECT_EQ(point.GetY(), 1e9);
}

TEST(PdfPagePoint, AcceptsZero) {
  EXPECT_EQ(FailureOf([] { PdfPagePoint(0, 0); }), Failure());
  EXPECT_EQ(FailureOf([] { PdfPagePoint(0, 1); }), Failure());
  EXPECT_EQ(FailureOf([] { PdfPagePoint(1, -0.0); }), Failure());
}

TEST(PdfPagePoint, AcceptsWhatIsNoNumber) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(FailureOf([&] { PdfPagePoint(none, none); }), Failure());
}

TEST(PdfPagePoint, RejectsNegativeCoordinates) {
  EXPECT_EQ(FailureOf([] { PdfPagePoint(-0.5, 3); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid PDF page point coordinates [-0.500000, 3.000000], expected double "
                    "positive values"));
  EXPECT_EQ(FailureOf([] { PdfPagePoint(1, -2); }).message,
            "Invalid PDF page point coordinates [1.000000, -2.000000], expected double positive "
            "values");
  EXPECT_EQ(FailureOf([] { PdfPagePoint(-1e-9, 0); }).message,
            "Invalid PDF page point coordinates [-0.000000, 0.000000], expected double positive "
            "values");
}

TEST(PdfPagePoint, MayBeMovedToNegativeCoordinates) {
  PdfPagePoint point(1, 1);
  point.SetX(-1);
  point.SetY(-2.5);
  EXPECT_EQ(point.GetX(), -1);
  EXPECT_EQ(point.GetY(), -2.5);
  PdfPagePoint other(7, 8);
  other = point;
  EXPECT_EQ(other.GetX(), -1);
  EXPECT_EQ(other.GetY(), -2.5);
}

}  // namespace
}  // namespace TarnixTools
