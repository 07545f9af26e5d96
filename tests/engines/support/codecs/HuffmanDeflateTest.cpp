#include <string>

#include <gtest/gtest.h>

#include "engines/support/codecs/HuffmanDeflate.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::engines {

namespace {

void ExpectComesBack(const std::string& data) {
  const HeldBytes packed =
      DeflateByHuffman(reinterpret_cast<const unsigned char*>(data.data()), data.size());
  const pdf::Decoded decoded =
      pdf::Decode({{pdf::FilterKind::kFlate, {}}}, packed.view(), std::size_t{1} << 28);
  EXPECT_TRUE(decoded.complete);
  EXPECT_EQ(decoded.data == data, true) << data.size();
}

TEST(HuffmanDeflate, ComesBack) {
  ExpectComesBack("a");
  ExpectComesBack("ab");
  ExpectComesBack(std::string(100'000, 'x'));
  std::string skewed;  // codes of more than 15 bits would be best
  for (int i = 0; i < 24; ++i) {
    skewed += std::string(std::size_t{1} << std::min(i, 20), static_cast<char>(i));
  }
  ExpectComesBack(skewed);
}

// Codes as rare as the numbers of Fibonacci are common would have one bit more each.
TEST(HuffmanDeflate, BoundsTheLengthOfCodes) {
  std::string data;
  std::size_t count = 1;
  std::size_t next = 1;
  for (int i = 0; i < 19; ++i) {
    data += std::string(count, static_cast<char>('a' + i));
    next += count;
    count = next - count;
  }
  ASSERT_LT(data.size(), std::size_t{16} << 10);
  ExpectComesBack(data);
}

TEST(HuffmanDeflate, StoresNoise) {
  std::string noise;
  std::uint32_t state = 7;
  for (int i = 0; i < 300'000; ++i) {
    state = state * 1664525 + 1013904223;
    noise += static_cast<char>(state >> 24);
  }
  ExpectComesBack(noise);
  const HeldBytes packed =
      DeflateByHuffman(reinterpret_cast<const unsigned char*>(noise.data()), noise.size());
  EXPECT_LT(packed.size, noise.size() + 200);
}

TEST(HuffmanDeflate, BlocksFollowTheData) {
  std::string data;
  std::uint32_t state = 7;
  for (int i = 0; i < 400'000; ++i) {
    state = state * 1664525 + 1013904223;
    data += static_cast<char>(i < 200'000 ? state >> 30 : 100 + (state >> 30));
  }
  ExpectComesBack(data);
  const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
  const HeldBytes packed = DeflateByHuffman(bytes, data.size());
  EXPECT_LT(packed.size, data.size() / 32 * 9 + 2000);      // hardly more than two bits for each
  EXPECT_GT(HuffmanSize(bytes, data.size()), packed.size);  // with one code for all of it: three
}

}  // namespace

}  // namespace TarnixTools::engines
