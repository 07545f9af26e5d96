#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/filters/PngRows.h"

namespace TarnixTools::pdf {
namespace {

using Bytes = std::vector<unsigned char>;

Bytes RandomBytes(std::size_t count, unsigned seed) {
  Bytes bytes(count);
  for (unsigned char& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<unsigned char>(seed >> 24);
  }
  return bytes;
}

// Word for word what the standard says (9.2 to 9.4).
int Predicted(int type, int a, int b, int c) {
  const int p = a + b - c;
  const int pa = std::abs(p - a);
  const int pb = std::abs(p - b);
  const int pc = std::abs(p - c);
  switch (type) {
    case 1:
      return a;
    case 2:
      return b;
    case 3:
      return (a + b) / 2;
    case 4:
      return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
    default:
      return 0;
  }
}

Bytes Filtered(int type, const Bytes& row, const Bytes& above, std::size_t pixel_bytes) {
  Bytes filtered(row.size());
  for (std::size_t i = 0; i < row.size(); ++i) {
    const int left = i < pixel_bytes ? 0 : row[i - pixel_bytes];
    const int corner = i < pixel_bytes ? 0 : above[i - pixel_bytes];
    filtered[i] = static_cast<unsigned char>(row[i] - Predicted(type, left, above[i], corner));
  }
  return filtered;
}

TEST(PngRows, ComeBackFromEveryFilter) {
  for (int type = 0; type <= 4; ++type) {
    for (const std::size_t pixel_bytes : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 32U}) {
      for (const std::size_t size : {1U, 5U, 24U, 100U, 997U}) {
        const Bytes row = RandomBytes(size, 1);
        const Bytes above = RandomBytes(size, 2);
        Bytes bytes = Filtered(type, row, above, pixel_bytes);
        EXPECT_TRUE(UnfilterPngRow(static_cast<unsigned char>(type), bytes.data(), above.data(),
                                   size, pixel_bytes));
        EXPECT_EQ(bytes, row) << type << " " << pixel_bytes << " " << size;
      }
    }
  }
}

TEST(PngRows, StayAsTheyAreForAFilterThatThereIsNot) {
  Bytes bytes = RandomBytes(40, 3);
  const Bytes before = bytes;
  const Bytes above = RandomBytes(40, 4);
  for (const unsigned char type : {5, 10, 255}) {
    EXPECT_FALSE(UnfilterPngRow(type, bytes.data(), above.data(), bytes.size(), 3));
    EXPECT_EQ(bytes, before);
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
