#include <algorithm>
#include <functional>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/FaxJoiner.h"
#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines {
namespace {

using Paint = std::function<bool(std::uint32_t x, std::uint32_t y)>;

// Black where the function says so.
Plane Painted(std::uint32_t width, std::uint32_t height, const Paint& is_black) {
  Plane plane(width, height, 1, 1);
  plane.Fill(0xFF);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      if (is_black(x, y)) {
        plane.row(y)[x / 8] &= static_cast<unsigned char>(~(0x80U >> (x % 8)));
      }
    }
  }
  return plane;
}

// black: the value of bits that are coded as black.
std::string Encoded(const Plane& plane, std::uint32_t first, std::uint32_t rows, int black = 0) {
  CcittEncoder encoder(plane.width());
  for (std::uint32_t y = 0; y < rows; ++y) {
    encoder.AddRow(plane.row(first + y), black);
  }
  encoder.Finish();
  return std::string(encoder.data());
}

CcittParameters Group4(std::uint32_t columns) {
  return {.k = -1, .columns = columns};
}

// The picture's strips joined must be the picture coded in one piece, bit by bit.
void ExpectJoins(std::uint32_t width, std::uint32_t height, std::uint32_t rows_per_strip,
                 const Paint& is_black) {
  const Plane plane = Painted(width, height, is_black);
  for (const bool is_inverted : {false, true}) {
    FaxJoiner joiner(Group4(width), is_inverted);
    for (std::uint32_t y = 0; y < height; y += rows_per_strip) {
      const std::uint32_t rows = std::min(rows_per_strip, height - y);
      ASSERT_TRUE(joiner.Add(Encoded(plane, y, rows, is_inverted ? 1 : 0), rows));
    }
    EXPECT_EQ(joiner.Finish().view(), Encoded(plane, 0, height)) << width << " x " << height;
  }
}

TEST(FaxJoiner, JoinsShapes) {
  const auto disc = [](std::uint32_t x, std::uint32_t y) {
    return (x - 100.0) * (x - 100.0) + (y - 40.0) * (y - 40.0) < 900;
  };
  for (const std::uint32_t rows : {1U, 7U, 33U, 80U}) {
    ExpectJoins(200, 80, rows, disc);
  }
}

TEST(FaxJoiner, JoinsNoiseOfAnyWidth) {
  std::mt19937 random(1);
  for (const std::uint32_t width : {1U, 2U, 7U, 8U, 31U, 64U, 500U}) {
    for (const unsigned share : {2U, 10U, 50U, 98U}) {
      ExpectJoins(width, 37, 5,
                  [&](std::uint32_t, std::uint32_t) { return random() % 100 < share; });
    }
  }
}

TEST(FaxJoiner, JoinsLongRunsAndRowsOfOneColor) {
  ExpectJoins(9000, 12, 3, [](std::uint32_t x, std::uint32_t y) {
    return y % 4 == 0 || (y % 4 == 1 && x > 6000) || (y % 4 == 2 && x > 3 && x < 5200);
  });
  ExpectJoins(2561, 6, 2, [](std::uint32_t, std::uint32_t y) { return y % 2 == 1; });
  ExpectJoins(100, 6, 1, [](std::uint32_t, std::uint32_t) { return false; });
}

TEST(FaxJoiner, JoinsRowsThatMoveALittle) {
  for (const std::uint32_t step : {1U, 2U, 3U, 4U, 9U}) {
    ExpectJoins(300, 40, 1, [step](std::uint32_t x, std::uint32_t y) {
      return (x + y * step) % 60 < 20 || (x + 300 - y * step % 300) % 90 < 7;
    });
  }
}

TEST(FaxJoiner, RefusesStripsThatAreDamagedOrTooShort) {
  const Plane plane = Painted(64, 8, [](std::uint32_t x, std::uint32_t y) { return x > y; });
  const std::string strip = Encoded(plane, 0, 8);
  EXPECT_TRUE(FaxJoiner(Group4(64), false).Add(strip, 8));
  EXPECT_FALSE(FaxJoiner(Group4(64), false).Add(strip, 9));
  EXPECT_FALSE(FaxJoiner(Group4(64), false).Add(strip.substr(0, 4), 8));
  EXPECT_FALSE(FaxJoiner(Group4(64), false).Add("", 1));
  EXPECT_FALSE(FaxJoiner(Group4(64), false).Add(std::string(20, '\0'), 8));
}

}  // namespace
}  // namespace TarnixTools::engines
