// Planes with given bytes.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_PICTURES_PLANEBYTES_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_PICTURES_PLANEBYTES_H_

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines {

using Bytes = std::vector<unsigned char>;

// A plane with these bytes in its rows.
inline Plane PlaneOf(std::uint32_t width, int channels, int bits, const std::vector<Bytes>& rows) {
  Plane plane(width, static_cast<std::uint32_t>(rows.size()), channels, bits);
  for (std::uint32_t y = 0; y < rows.size(); ++y) {
    EXPECT_EQ(rows[y].size(), plane.row_bytes());
    std::copy(rows[y].begin(), rows[y].end(), plane.row(y));
  }
  return plane;
}

inline Bytes RowOf(const Plane& plane, std::uint32_t y = 0) {
  return {plane.row(y), plane.row(y) + plane.row_bytes()};
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_PICTURES_PLANEBYTES_H_
