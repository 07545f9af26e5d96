#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/HuffmanDeflate.h"
#include "pdf/filters/Filters.h"
#include "support/Expected.h"

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

// As many of each byte as Fibonacci's numbers say, in no order.
std::string Fibonacci(int values) {
  std::string data;
  std::size_t count = 1;
  std::size_t next = 1;
  for (int i = 0; i < values; ++i) {
    data += std::string(count, static_cast<char>('a' + i));
    next += count;
    count = next - count;
  }
  std::string mixed(data.size(), '\0');
  for (std::size_t i = 0; i < data.size(); ++i) {
    mixed[i * 7919 % data.size()] = data[i];
  }
  return mixed;
}

// Bytes from first on, one of each number, as often as the rest fills the size.
std::string Ramp(int first, int count, int step, std::size_t size) {
  std::string data;
  for (std::size_t i = 0; i < size; ++i) {
    data += static_cast<char>(first + static_cast<int>(i % static_cast<std::size_t>(count)) * step);
  }
  return data;
}

// The very bytes of each kind of block, which zlib's format allows others of. That they come back is
// what another library says of them.
TEST(HuffmanDeflate, MakesTheseBytes) {
  std::vector<std::pair<std::string, std::string>> rows = {
      {"a byte", "a"},
      {"two", "ab"},
      {"the first", std::string(1, '\0')},
      {"the last", "\xFF"},
      {"many of one", std::string(70'000, 'x')}};
  for (const int values : {2, 7, 8, 14, 15, 16, 17, 18, 19}) {
    rows.emplace_back("fibonacci " + std::to_string(values), Fibonacci(values));
  }
  for (const int step : {1, 2, 3, 4, 5, 9, 11, 12, 13, 100, 139, 140}) {
    const int count = std::min(60, 255 / step + 1);
    rows.emplace_back("ramp by " + std::to_string(step), Ramp(0, count, step, 3000));
    rows.emplace_back("from the end by " + std::to_string(step), Ramp(255, count, -step, 2999));
  }
  for (const std::size_t size : {16383U, 16384U, 16385U, 32768U, 32769U, 49153U}) {
    rows.emplace_back(std::to_string(size) + " of five", Ramp(10, 5, 7, size));
    rows.emplace_back(std::to_string(size) + " of all", Ramp(0, 256, 1, size));
    rows.emplace_back(std::to_string(size) + " of two kinds",
                      Ramp(10, 5, 7, size) + Ramp(100, 40, 3, size));
  }
  for (const std::size_t size : {65534U, 65535U, 65536U, 131071U}) {
    rows.emplace_back(std::to_string(size) + " stored", Ramp(0, 256, 1, size));
  }
  std::string text;
  for (const auto& [name, data] : rows) {
    ExpectComesBack(data);
    const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
    const HeldBytes packed = DeflateByHuffman(bytes, data.size());
    text += name + ": " + testing::DataText(std::string(packed.view())) + ", guessed " +
            std::to_string(HuffmanSize(bytes, data.size())) + "\n";
  }
  EXPECT_TRUE(testing::IsAsExpected("codecs/huffman_deflate.txt", text));
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
