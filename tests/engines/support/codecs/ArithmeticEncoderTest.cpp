#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/jbig2/ArithmeticDecoder.h"
#include "engines/support/codecs/jbig2/ArithmeticEncoder.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// Decisions in contexts, many of them 0, as an odd number of one in 64 says.
struct Decision {
  std::size_t context = 0;
  int value = 0;
};

std::vector<Decision> RandomDecisions(unsigned seed, std::size_t count, unsigned ones_in_64) {
  std::mt19937 random(seed);
  std::vector<Decision> decisions(count);
  for (Decision& decision : decisions) {
    decision = {random() % 5, random() % 64 < ones_in_64 ? 1 : 0};
  }
  return decisions;
}

std::vector<int> Decoded(const std::string& data, const std::vector<Decision>& decisions) {
  Budget budget(0);
  ArithmeticDecoder decoder(data, budget);
  Contexts contexts(5);
  std::vector<int> values;
  for (const Decision& decision : decisions) {
    values.push_back(decoder.Decode(contexts[decision.context]));
  }
  return values;
}

std::vector<int> ValuesOf(const std::vector<Decision>& decisions) {
  std::vector<int> values;
  for (const Decision& decision : decisions) {
    values.push_back(decision.value);
  }
  return values;
}

// The example that the standard has for testing coders (ISO/IEC 14492, H.2).
TEST(ArithmeticEncoder, CodesTheExampleOfTheStandard) {
  const std::vector<std::uint8_t> input = {0x00, 0x02, 0x00, 0x51, 0x00, 0x00, 0x00, 0xC0,
                                           0x03, 0x52, 0x87, 0x2A, 0xAA, 0xAA, 0xAA, 0xAA,
                                           0x82, 0xC0, 0x20, 0x00, 0xFC, 0xD7, 0x9E, 0xF6,
                                           0xBF, 0x7F, 0xED, 0x90, 0x4F, 0x46, 0xA3, 0xBF};
  ArithmeticEncoder encoder;
  Context context;
  for (const std::uint8_t byte : input) {
    for (int bit = 7; bit >= 0; --bit) {
      encoder.Encode(context, byte >> bit & 1);
    }
  }
  EXPECT_EQ(encoder.Finish(),
            std::string("\x84\xC7\x3B\xFC\xE1\xA1\x43\x04\x02\x20\x00\x00\x41\x0D\xBB"
                        "\x86\xF4\x31\x7F\xFF\x88\xFF\x37\x47\x1A\xDB\x6A\xDF\xFF\xAC",
                        30));
}

TEST(ArithmeticEncoder, WhatItCodesIsDecoded) {
  unsigned seed = 0;
  for (const unsigned ones_in_64 : {0U, 1U, 5U, 32U, 63U, 64U}) {
    for (const std::size_t count : {0U, 1U, 9U, 1000U, 60'000U}) {
      const std::vector<Decision> decisions = RandomDecisions(++seed, count, ones_in_64);
      ArithmeticEncoder encoder;
      Contexts contexts(5);
      for (const Decision& decision : decisions) {
        encoder.Encode(contexts[decision.context], decision.value);
      }
      EXPECT_EQ(Decoded(encoder.Finish(), decisions), ValuesOf(decisions))
          << ones_in_64 << ' ' << count;
    }
  }
}

TEST(ArithmeticEncoder, CodesManyZerosAsItCodesEach) {
  std::mt19937 random(7);
  ArithmeticEncoder each;
  ArithmeticEncoder many;
  Context context_of_each;
  Context context_of_many;
  for (int run = 0; run < 500; ++run) {
    const std::size_t count = random() % (run % 50 == 0 ? 200'000 : 30);
    for (std::size_t i = 0; i < count; ++i) {
      each.Encode(context_of_each, 0);
    }
    many.EncodeZeros(context_of_many, count);
    for (int ones = run % 90 == 0 ? 12 : 1; ones > 0; --ones) {
      each.Encode(context_of_each, 1);
      many.Encode(context_of_many, 1);
    }
  }
  EXPECT_EQ(many.Finish(), each.Finish());
}

}  // namespace
}  // namespace TarnixTools::engines::jbig2
