#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/PngFilters.h"

namespace TarnixTools::engines {
namespace {

// Rows in which every filter has its own result.
Plane Slopes(std::uint32_t width, std::uint32_t height, int channels, int bits) {
  Plane plane(width, height, channels, bits);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::size_t i = 0; i < plane.row_bytes(); ++i) {
      plane.row(y)[i] = static_cast<unsigned char>(i * i + 3 * y * i + 7 * y);
    }
  }
  return plane;
}

std::string Samples(const Plane& plane) {
  std::string samples;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    samples.append(plane.row(y), plane.row(y) + plane.row_bytes());
  }
  return samples;
}

// The filter types of all rows.
std::string Types(const Plane& plane) {
  std::string types;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    types += static_cast<char>('0' + plane.row(y)[-1]);
  }
  return types;
}

TEST(PngFilters, AreUndone) {
  for (const auto& [channels, bits] :
       {std::pair(1, 8), std::pair(3, 8), std::pair(4, 16), std::pair(1, 1), std::pair(2, 16)}) {
    for (int filter = 0; filter <= 5; ++filter) {
      Plane plane = Slopes(9, 7, channels, bits);
      const std::string samples = Samples(plane);
      Filter(plane, static_cast<RowFilter>(filter));
      if (filter < 5) {
        EXPECT_EQ(Types(plane), std::string(7, static_cast<char>('0' + filter)));
      }
      const std::size_t pixel =
          std::max<std::size_t>(1, static_cast<std::size_t>(channels * bits) / 8);
      Unfilter(plane.data(), 7, plane.stride(), pixel);
      EXPECT_EQ(Samples(plane), samples) << filter << " " << channels << " " << bits;
    }
  }
}

// PNG, 9.2, by the formulas there.
TEST(PngFilters, AreThoseOfTheStandard) {
  const Plane plane = Slopes(5, 3, 3, 8);
  const auto byte = [&](int x, int y) -> int {
    return x < 0 || y < 0 ? 0 : plane.row(static_cast<std::uint32_t>(y))[x];
  };
  const auto paeth = [](int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
  };
  std::vector<unsigned char> out(3 * plane.stride());
  for (int filter = 0; filter <= 4; ++filter) {
    FilterRows(plane, 0, 3, static_cast<RowFilter>(filter), out.data());
    for (int y = 0; y < 3; ++y) {
      for (int x = 0; x < 15; ++x) {
        const int a = byte(x - 3, y);
        const int b = byte(x, y - 1);
        const int c = x < 3 ? 0 : byte(x - 3, y - 1);
        const int predicted = filter == 1   ? a
                              : filter == 2 ? b
                              : filter == 3 ? (a + b) / 2
                              : filter == 4 ? paeth(a, b, c)
                                            : 0;
        const auto at =
            static_cast<std::size_t>(y) * plane.stride() + 1 + static_cast<std::size_t>(x);
        EXPECT_EQ(out[at], (byte(x, y) - predicted) & 0xFF) << filter << " " << x << " " << y;
      }
    }
  }
}

TEST(PngFilters, AreChosenRowByRow) {
  Plane plane(64, 3, 1, 8);
  for (std::uint32_t x = 0; x < 64; ++x) {
    plane.row(0)[x] = static_cast<unsigned char>(x < 2 ? 0 : 1);  // hardly anything: as it is
    plane.row(1)[x] = static_cast<unsigned char>(x * x);
    plane.row(2)[x] = static_cast<unsigned char>(x * x + 1);  // what is above
  }
  Filter(plane, RowFilter::kBest);
  EXPECT_NE(Types(plane)[2], '0');
  EXPECT_NE(Types(plane)[2], '1');
}

TEST(PngFilters, OfUnknownTypesAreNone) {
  unsigned char rows[] = {9, 1, 2, 3, 2, 1, 1, 1};
  Unfilter(rows, 2, 4, 1);
  EXPECT_EQ(rows[1], 1);
  EXPECT_EQ(rows[5], 2);
  EXPECT_EQ(rows[7], 4);
}

}  // namespace
}  // namespace TarnixTools::engines
