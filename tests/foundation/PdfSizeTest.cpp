#include <gtest/gtest.h>

#include "PdfSize.h"

namespace TarnixTools {
namespace {

TEST(PdfSize, IsZeroByDefault) {
  const PdfSize size;
  EXPECT_EQ(size.GetWidth(), 0);
  EXPECT_EQ(size.GetHeight(), 0);
}

TEST(PdfSize, AcceptsNegativeValues) {
  const PdfSize size(-1, 2);
  EXPECT_EQ(size.GetWidth(), -1);
  EXPECT_EQ(size.GetHeight(), 2);
}

TEST(PdfSize, IsAssignedAsAValue) {
  PdfSize size;
  size = PdfSize(3, 4);
  EXPECT_EQ(size.GetWidth(), 3);
  EXPECT_EQ(size.GetHeight(), 4);
}

}  // namespace
}  // namespace TarnixTools
