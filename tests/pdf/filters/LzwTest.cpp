#include <cstdint>
#include <map>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::pdf {
namespace {

Decoded DecodeLzw(std::string_view encoded, std::int64_t early_change = 1,
                  std::size_t max_bytes = 1 << 26) {
  return Decode({{FilterKind::kLzw, {.early_change = early_change}}}, encoded, max_bytes);
}

class CodeWriter {
 public:
  void Put(unsigned code, unsigned bits) {
    for (unsigned bit = bits; bit-- > 0;) {
      held_ = (held_ << 1) | ((code >> bit) & 1);
      if (++count_ % 8 == 0) {
        bytes_.push_back(static_cast<char>(held_));
        held_ = 0;
      }
    }
  }

  std::string Take() {
    while (count_ % 8 != 0) {
      Put(0, 1);
    }
    return bytes_;
  }

 private:
  std::string bytes_;
  unsigned held_ = 0;
  unsigned count_ = 0;
};

// A plain encoder. It clears its table after the entry 4093 like the usual ones, or never with
// clear_when_full = false.
std::string EncodeLzw(std::string_view data, unsigned early_change, bool clear_when_full = true) {
  CodeWriter out;
  std::map<std::string, unsigned, std::less<>> table;
  unsigned next = 0;
  unsigned bits = 0;
  const auto clear = [&] {
    table.clear();
    for (unsigned i = 0; i < 256; ++i) {
      table[std::string(1, static_cast<char>(i))] = i;
    }
    next = 258;
    bits = 9;
  };
  clear();
  out.Put(256, bits);
  std::string current;
  const auto put_current = [&] { out.Put(table.at(current), bits); };
  for (const char c : data) {
    if (table.contains(current + c)) {
      current += c;
      continue;
    }
    put_current();
    if (next < 4096) {
      table[current + c] = next++;
      // The decoder is one entry behind.
      if (next - 1 + early_change >= (1U << bits) && bits < 12) {
        ++bits;
      }
    }
    if (clear_when_full && next == 4094) {
      out.Put(256, bits);
      clear();
    }
    current = c;
  }
  if (!current.empty()) {
    put_current();
    if (next < 4096 && next + early_change >= (1U << bits) && bits < 12) {
      ++bits;
    }
  }
  out.Put(257, bits);
  return out.Take();
}

std::string SomeData(std::size_t size, unsigned values) {
  std::mt19937 random(11);
  std::string data;
  for (std::size_t i = 0; i < size; ++i) {
    data.push_back(static_cast<char>(random() % values));
  }
  return data;
}

TEST(Lzw, DecodesTheExampleOfTheStandard) {
  // ISO 32000-2, 7.4.4.2.
  const Decoded decoded = DecodeLzw(std::string_view("\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01", 9));
  EXPECT_EQ(decoded.data, "-----A---B");
  EXPECT_TRUE(decoded.complete);
}

TEST(Lzw, DecodesThroughEveryCodeWidth) {
  for (const unsigned early_change : {0U, 1U}) {
    for (const unsigned values : {1U, 2U, 5U, 256U}) {
      const std::string data = SomeData(60'000, values);
      const Decoded decoded = DecodeLzw(EncodeLzw(data, early_change), early_change);
      EXPECT_TRUE(decoded.complete) << early_change << " " << values;
      EXPECT_TRUE(decoded.data == data) << early_change << " " << values;
    }
  }
}

TEST(Lzw, DecodesWithATableThatStaysFull) {
  const std::string data = SomeData(60'000, 7);
  const Decoded decoded = DecodeLzw(EncodeLzw(data, 1, false));
  EXPECT_TRUE(decoded.complete);
  EXPECT_TRUE(decoded.data == data);
}

TEST(Lzw, StartsWithoutAClearCode) {
  CodeWriter codes;
  codes.Put('a', 9);
  codes.Put('b', 9);
  codes.Put(258, 9);
  codes.Put(257, 9);
  const Decoded decoded = DecodeLzw(codes.Take());
  EXPECT_EQ(decoded.data, "abab");
  EXPECT_TRUE(decoded.complete);
}

TEST(Lzw, StopsAtACodeThatNothingDefines) {
  CodeWriter codes;
  codes.Put(256, 9);
  codes.Put('a', 9);
  codes.Put(300, 9);
  codes.Put('b', 9);
  const Decoded decoded = DecodeLzw(codes.Take());
  EXPECT_EQ(decoded.data, "a");
  EXPECT_FALSE(decoded.complete);
}

TEST(Lzw, StopsAtATableCodeRightAfterClearing) {
  CodeWriter codes;
  codes.Put(256, 9);
  codes.Put(258, 9);
  const Decoded decoded = DecodeLzw(codes.Take());
  EXPECT_EQ(decoded.data, "");
  EXPECT_FALSE(decoded.complete);
}

TEST(Lzw, KeepsWhatComesBeforeACut) {
  const std::string data = SomeData(20'000, 3);
  const std::string encoded = EncodeLzw(data, 1);
  for (std::size_t size = 1; size + 2 < encoded.size(); size += 97) {
    const Decoded decoded = DecodeLzw(encoded.substr(0, size));
    EXPECT_FALSE(decoded.complete);
    EXPECT_TRUE(data.starts_with(decoded.data));
  }
}

TEST(Lzw, StopsAtTheLimit) {
  const std::string encoded = EncodeLzw(std::string(100'000, 'a'), 1);
  EXPECT_EQ(DecodeLzw(encoded, 1, 100'000).data.size(), 100'000U);
  EXPECT_THROW(DecodeLzw(encoded, 1, 99'999), Error);
}

TEST(Lzw, RefusesOtherEarlyChanges) {
  EXPECT_THROW(DecodeLzw("x", 2), Error);
  EXPECT_THROW(DecodeLzw("x", -1), Error);
}

}  // namespace
}  // namespace TarnixTools::pdf
