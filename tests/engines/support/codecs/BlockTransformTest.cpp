#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "engines/support/codecs/jpeg/BlockTransform.h"

namespace TarnixTools::engines::jpeg {
namespace {

TEST(BlockTransform, KeepsTheSumOfSquaresAndTellsTheMean) {
  std::array<float, 64> samples{};
  double squares = 0;
  double sum = 0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] = static_cast<float>(static_cast<int>(i * i * 7 % 255) - 128);
    squares += samples[i] * samples[i];
    sum += samples[i];
  }
  Block block;
  Transform(samples.data(), 8, block);
  EXPECT_NEAR(block[0], sum / 8, 0.01);
  double found = 0;
  for (const float coefficient : block) {
    found += coefficient * coefficient;
  }
  EXPECT_NEAR(found / squares, 1, 1e-5);
}

TEST(BlockTransform, FindsTheWaveThatThereIs) {
  std::array<float, 80> samples{};  // rows of ten
  for (std::size_t y = 0; y < 8; ++y) {
    for (std::size_t x = 0; x < 8; ++x) {
      samples[10 * y + x] = static_cast<float>(
          std::cos((2 * static_cast<double>(x) + 1) * 3 * std::acos(-1.0) / 16) * 100);
    }
  }
  Block block;
  Transform(samples.data(), 10, block);
  for (std::size_t i = 0; i < block.size(); ++i) {
    EXPECT_NEAR(block[i], i == 3 ? 565.69 : 0, 0.01) << i;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::jpeg
