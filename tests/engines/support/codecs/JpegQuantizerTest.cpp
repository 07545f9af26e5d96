#include <array>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

#include "engines/support/codecs/jpeg/BlockTransform.h"
#include "engines/support/codecs/jpeg/Quantizer.h"

namespace TarnixTools::engines::jpeg {
namespace {

using Quantized = std::array<std::int16_t, 64>;

Quantized QuantizedBy(std::uint16_t step, const Block& block) {
  JpegSteps steps;
  steps.fill(step);
  Quantized quantized;
  Quantizer(steps).Quantize(block, quantized.data());
  return quantized;
}

// Coefficients that become smaller towards high frequencies.
Block RandomBlock(unsigned seed, double most) {
  Block block{};
  for (std::size_t i = 0; i < block.size(); ++i) {
    seed = seed * 1664525U + 1013904223U;
    block[i] = static_cast<float>((static_cast<double>(seed >> 8U) / (1U << 23U) - 1) * most /
                                  static_cast<double>(1 + i / 8 + i % 8));
  }
  return block;
}

TEST(JpegQuantizer, NeverGoesFurtherThanRounding) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const Block block = RandomBlock(seed, seed % 3 == 0 ? 200 : 3000);
    const Quantized quantized = QuantizedBy(10, block);
    if (std::abs(block[0]) < 1000) {
      EXPECT_EQ(quantized[0], std::lround(block[0] / 10));
    }
    for (std::size_t i = 1; i < block.size(); ++i) {
      const float rounded = std::abs(std::round(block[i] / 10));
      EXPECT_LE(std::abs(quantized[i]), rounded);
      EXPECT_TRUE(quantized[i] == 0 || std::abs(quantized[i]) >= rounded - 1);
      EXPECT_TRUE(quantized[i] == 0 || (quantized[i] < 0) == (block[i] < 0));
    }
  }
}

TEST(JpegQuantizer, LeavesOutWhatIsSmallAndFarFromOthers) {
  Block block{};
  block[1] = 30;
  block[63] = 7;
  Quantized expected{};
  expected[1] = 3;
  EXPECT_EQ(QuantizedBy(10, block), expected);
  block[63] = -60;
  expected[63] = -6;
  EXPECT_EQ(QuantizedBy(10, block), expected);
}

TEST(JpegQuantizer, KeepsBlocksOfZerosAndOfOneColor) {
  EXPECT_EQ(QuantizedBy(3, Block{}), Quantized{});
  Block block{};
  block[0] = -1024;
  Quantized expected{};
  expected[0] = -1024;
  EXPECT_EQ(QuantizedBy(1, block), expected);
}

// Decoders cut off what is beyond white and black.
TEST(JpegQuantizer, MakesNoGrayOfWhiteAndBlack) {
  Block block{};
  for (const std::uint16_t step : {3, 7, 10, 13, 100, 255}) {
    block[0] = 1016;
    EXPECT_GE(QuantizedBy(step, block)[0] * step, 1016) << step;
    block[0] = -1024;
    EXPECT_LE(QuantizedBy(step, block)[0] * step, -1024) << step;
    block[0] = -900;
    EXPECT_EQ(QuantizedBy(step, block)[0], std::lround(-900.0 / step)) << step;
  }
}

TEST(JpegQuantizer, StaysWithinWhatCanBeCoded) {
  Block block;
  block.fill(1100);
  const Quantized quantized = QuantizedBy(1, block);
  for (const std::int16_t coefficient : quantized) {
    EXPECT_LE(coefficient, 1023);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::jpeg
