#include <gtest/gtest.h>

#include "engines/support/pictures/PlaneBytes.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {
namespace {

TEST(Raster, TakesAlphaApart) {
  Raster raster;
  SplitAlpha(PlaneOf(2, 4, 8, {{1, 2, 3, 90, 4, 5, 6, 91}}), raster);
  EXPECT_EQ(RowOf(raster.color), (Bytes{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(RowOf(raster.alpha), (Bytes{90, 91}));
  SplitAlpha(PlaneOf(2, 2, 16, {{1, 2, 90, 91, 3, 4, 92, 93}}), raster);
  EXPECT_EQ(RowOf(raster.color), (Bytes{1, 2, 3, 4}));
  EXPECT_EQ(RowOf(raster.alpha), (Bytes{90, 91, 92, 93}));
}

}  // namespace
}  // namespace TarnixTools::engines
