#include <limits>

#include <gtest/gtest.h>

#include "PdfPageRange.h"
#include "support/Failures.h"

namespace TarnixTools {
namespace {

using testing::Failure;
using testing::FailureOf;

Failure FailureOfRange(int start, int end) {
  return FailureOf([&] { PdfPageRange(start, end); });
}

TEST(PdfPageRange, MayBeOnePage) {
  const PdfPageRange range(3, 3);
  EXPECT_EQ(range.GetStartPageNum(), 3);
  EXPECT_EQ(range.GetEndPageNum(), 3);
  EXPECT_EQ(range.GetPagesNum(), 1);
}

TEST(PdfPageRange, MayBeTheFirstPage) {
  const PdfPageRange range(1, 1);
  EXPECT_EQ(range.GetStartPageNum(), 1);
  EXPECT_EQ(range.GetEndPageNum(), 1);
}

TEST(PdfPageRange, SwapsItsEndsIntoOrder) {
  const PdfPageRange range(7, 2);
  EXPECT_EQ(range.GetStartPageNum(), 2);
  EXPECT_EQ(range.GetEndPageNum(), 7);
  EXPECT_EQ(range.GetPagesNum(), 6);
}

TEST(PdfPageRange, HoldsTheLargestNumbers) {
  EXPECT_EQ(PdfPageRange(1, std::numeric_limits<int>::max()).GetPagesNum(),
            std::numeric_limits<int>::max());
}

TEST(PdfPageRange, RejectsAStartBelowOne) {
  EXPECT_EQ(FailureOfRange(0, 4),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid PDF page range start value [0], expected positive integer"));
  EXPECT_EQ(FailureOfRange(-3, 4).message,
            "Invalid PDF page range start value [-3], expected positive integer");
}

TEST(PdfPageRange, RejectsAnEndBelowOne) {
  EXPECT_EQ(FailureOfRange(4, 0),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid PDF page range end value [0], expected positive integer"));
  EXPECT_EQ(FailureOfRange(1, -7).message,
            "Invalid PDF page range end value [-7], expected positive integer");
}

TEST(PdfPageRange, ReportsTheStartFirst) {
  EXPECT_EQ(FailureOfRange(0, 0).message,
            "Invalid PDF page range start value [0], expected positive integer");
  EXPECT_EQ(FailureOfRange(-1, -2).message,
            "Invalid PDF page range start value [-1], expected positive integer");
}

TEST(PdfPageRange, IsAssignedAsAValue) {
  PdfPageRange range(1, 2);
  range = PdfPageRange(5, 9);
  EXPECT_EQ(range.GetStartPageNum(), 5);
  EXPECT_EQ(range.GetEndPageNum(), 9);
}

}  // namespace
}  // namespace TarnixTools
