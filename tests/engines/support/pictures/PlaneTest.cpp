#include <gtest/gtest.h>

#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/Plane.h"
#include "engines/support/pictures/PlaneBytes.h"

namespace TarnixTools::engines {
namespace {

TEST(Plane, IsBounded) {
  EXPECT_TRUE(Plane().empty());
  try {
    Plane(1'000'000, 1'000'000, 4, 16);
    ADD_FAILURE() << "it was made";
  } catch (const ImageError& error) {
    EXPECT_EQ(error.code(), ImageErrorCode::kLimit);
  }
}

TEST(Plane, HasAByteBeforeEachRow) {
  Plane plane(9, 3, 1, 1);
  EXPECT_EQ(plane.row_bytes(), 2U);
  EXPECT_EQ(plane.stride(), 3U);
  EXPECT_EQ(plane.size(), 9U);
  plane.Fill(7);
  plane.Fill(5, 2);
  plane.Fill(1, 3);
  EXPECT_EQ(RowOf(plane, 1), (Bytes{7, 7}));
  EXPECT_EQ(RowOf(plane, 2), (Bytes{5, 5}));
  EXPECT_EQ(plane.row(2), plane.data() + 7);
}

}  // namespace
}  // namespace TarnixTools::engines
