#include <gtest/gtest.h>

#include "pdf/Box.h"

namespace TarnixTools::pdf {
namespace {

TEST(Box, PutsCornersInOrder) {
  const Box box{1, 2, 3, 4};
  EXPECT_EQ(Box::OfCorners(1, 2, 3, 4), box);
  EXPECT_EQ(Box::OfCorners(3, 4, 1, 2), box);
  EXPECT_EQ(Box::OfCorners(3, 2, 1, 4), box);
}

TEST(Box, IsEmptyWithoutArea) {
  EXPECT_FALSE((Box{0, 0, 1, 1}).IsEmpty());
  EXPECT_TRUE((Box{0, 0, 0, 1}).IsEmpty());
  EXPECT_TRUE((Box{0, 1, 1, 0}).IsEmpty());
}

TEST(Box, TakesWhatBothCover) {
  const Box box{0, 0, 10, 10};
  EXPECT_EQ(box.Within({5, -5, 20, 5}), (Box{5, 0, 10, 5}));
  EXPECT_TRUE(box.Within({10, 0, 20, 10}).IsEmpty());
  EXPECT_TRUE(box.Within({11, 11, 20, 20}).IsEmpty());
}

TEST(Box, LiesAroundWhatItBecomes) {
  const Box box{1, 2, 3, 6};
  EXPECT_EQ(box.Through(Matrix::Translation(10, 20)), (Box{11, 22, 13, 26}));
  EXPECT_EQ(box.Through(Matrix::Rotation(90)), (Box{-6, 1, -2, 3}));
  EXPECT_EQ(box.Through({-1, 0, 0, 2, 0, 0}), (Box{-3, 4, -1, 12}));
  EXPECT_EQ(box.Through({1, 1, 1, -1, 0, 0}), (Box{3, -5, 9, 1}));
}

}  // namespace
}  // namespace TarnixTools::pdf
