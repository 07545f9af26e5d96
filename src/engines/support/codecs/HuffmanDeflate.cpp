#include "engines/support/codecs/HuffmanDeflate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <libdeflate.h>

namespace TarnixTools::engines {

namespace {

// Data is looked at in pieces of this size, and neighbours that are alike share a block.
constexpr std::size_t kPiece = std::size_t{16} << 10;
// What the tables of a block need, about.
constexpr float kTableBits = 600;
constexpr std::size_t kMaxStored = 65535;
constexpr std::size_t kLiterals = 257;  // and the end of the block
constexpr std::size_t kEndOfBlock = 256;
constexpr unsigned kMaxCodeBits = 15;
constexpr std::size_t kLengthSymbols = 19;
constexpr unsigned kMaxLengthCodeBits = 7;
// The order in which the lengths of the codes for lengths are stored (3.2.7).
constexpr std::array<std::uint8_t, kLengthSymbols> kLengthOrder = {
    16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

using Histogram = std::array<std::uint32_t, kLiterals>;

// Four tables, so that equal bytes in a row do not wait for each other.
Histogram Count(const unsigned char* data, std::size_t size) {
  std::array<std::array<std::uint32_t, 256>, 4> counts{};
  std::size_t i = 0;
  for (; i + 4 <= size; i += 4) {
    ++counts[0][data[i]];
    ++counts[1][data[i + 1]];
    ++counts[2][data[i + 2]];
    ++counts[3][data[i + 3]];
  }
  for (; i < size; ++i) {
    ++counts[0][data[i]];
  }
  Histogram sum{};
  for (std::size_t value = 0; value < 256; ++value) {
    sum[value] = counts[0][value] + counts[1][value] + counts[2][value] + counts[3][value];
  }
  return sum;
}

// How many codes of an optimal prefix code have each length, those beyond max_bits counted there.
//   weights - of the symbols, ascending, two of them at least
std::vector<std::size_t> CountLengths(std::vector<std::uint64_t> weights, unsigned max_bits) {
  const std::size_t used = weights.size();
  // Leaves and inner nodes are both found in ascending order of their weights.
  weights.resize(2 * used - 1);
  std::vector<std::size_t> parents(2 * used - 1);
  std::size_t leaf = 0;
  std::size_t inner = used;
  for (std::size_t node = used; node < 2 * used - 1; ++node) {
    for (int child = 0; child < 2; ++child) {
      const bool takes_leaf = leaf < used && (inner >= node || weights[leaf] <= weights[inner]);
      const std::size_t taken = takes_leaf ? leaf++ : inner++;
      weights[node] += weights[taken];
      parents[taken] = node;
    }
  }
  std::vector<unsigned> depths(2 * used - 1, 0);
  std::vector<std::size_t> with_length(max_bits + 1, 0);
  for (std::size_t node = 2 * used - 2; node-- > 0;) {
    depths[node] = depths[parents[node]] + 1;
    if (node < used) {
      ++with_length[std::min(depths[node], max_bits)];
    }
  }
  return with_length;
}

// Where codes were cut to max_bits there are too many: one moves down for each two that this makes
// room for.
void MakeRoom(std::vector<std::size_t>& with_length, unsigned max_bits) {
  std::size_t space = 0;
  for (unsigned bits = 1; bits <= max_bits; ++bits) {
    space += with_length[bits] << (max_bits - bits);
  }
  for (; space > std::size_t{1} << max_bits; --space) {
    unsigned bits = max_bits - 1;
    while (with_length[bits] == 0) {
      --bits;
    }
    --with_length[bits];
    with_length[bits + 1] += 2;
    --with_length[max_bits];
  }
}

// The symbols that occur, the rarest first.
template <std::size_t n>
std::vector<std::uint16_t> SymbolsByCount(const std::array<std::uint32_t, n>& counts) {
  std::vector<std::uint16_t> symbols;
  for (std::size_t i = 0; i < n; ++i) {
    if (counts[i] != 0) {
      symbols.push_back(static_cast<std::uint16_t>(i));
    }
  }
  std::stable_sort(symbols.begin(), symbols.end(),
                   [&](std::uint16_t a, std::uint16_t b) { return counts[a] < counts[b]; });
  return symbols;
}

// Lengths of the codes of an optimal prefix code, none longer than max_bits; 0 for what does not
// occur. One symbol alone gets a code of 1 bit.
template <std::size_t n>
std::array<std::uint8_t, n> CodeLengths(const std::array<std::uint32_t, n>& counts,
                                        unsigned max_bits) {
  std::array<std::uint8_t, n> lengths{};
  const std::vector<std::uint16_t> symbols = SymbolsByCount(counts);
  if (symbols.size() < 2) {
    for (const std::uint16_t symbol : symbols) {
      lengths[symbol] = 1;
    }
    return lengths;
  }
  std::vector<std::uint64_t> weights;
  weights.reserve(symbols.size());
  for (const std::uint16_t symbol : symbols) {
    weights.push_back(counts[symbol]);
  }
  std::vector<std::size_t> with_length = CountLengths(std::move(weights), max_bits);
  MakeRoom(with_length, max_bits);
  std::size_t next = 0;
  for (unsigned bits = max_bits; bits >= 1; --bits) {
    for (std::size_t i = 0; i < with_length[bits]; ++i) {
      lengths[symbols[next++]] = static_cast<std::uint8_t>(bits);
    }
  }
  return lengths;
}

// Canonical codes (3.2.2), their bits in the order in which they are written.
template <std::size_t n>
std::array<std::uint16_t, n> Codes(const std::array<std::uint8_t, n>& lengths) {
  std::array<std::uint32_t, kMaxCodeBits + 1> counts{};
  for (const std::uint8_t length : lengths) {
    ++counts[length];
  }
  counts[0] = 0;
  std::array<std::uint32_t, kMaxCodeBits + 1> next{};
  for (std::size_t bits = 1; bits <= kMaxCodeBits; ++bits) {
    next[bits] = (next[bits - 1] + counts[bits - 1]) << 1;
  }
  std::array<std::uint16_t, n> codes{};
  for (std::size_t i = 0; i < n; ++i) {
    std::uint32_t code = lengths[i] != 0 ? next[lengths[i]]++ : 0;
    for (unsigned bit = 0; bit < lengths[i]; ++bit, code >>= 1) {
      codes[i] = static_cast<std::uint16_t>(codes[i] << 1 | (code & 1));
    }
  }
  return codes;
}

// Puts bits, the lowest first, into memory that the caller has made large enough.
class BitWriter {
 public:
  explicit BitWriter(unsigned char* out) : out_(out) {}

  // Appends bits, at most 32 at a time.
  void Put(std::uint64_t bits, unsigned count) {
    bits_ |= bits << filled_;
    filled_ += count;
    if (filled_ >= 32) {
      Spill();
    }
  }

  // Goes on at the next whole byte.
  void Align() {
    while (filled_ > 0) {
      *out_++ = static_cast<unsigned char>(bits_);
      bits_ >>= 8;
      filled_ -= std::min(filled_, 8U);
    }
    bits_ = 0;
  }

  void PutBytes(const unsigned char* data, std::size_t size) {
    std::memcpy(out_, data, size);
    out_ += size;
  }

  unsigned char* end() const { return out_; }

 private:
  void Spill() {
    for (unsigned i = 0; i < 4; ++i) {
      out_[i] = static_cast<unsigned char>(bits_ >> 8 * i);
    }
    out_ += 4;
    bits_ >>= 32;
    filled_ -= 32;
  }

  unsigned char* out_;
  std::uint64_t bits_ = 0;
  unsigned filled_ = 0;
};

// The lengths of the literal codes and of the one distance code, which is none, in runs (3.2.7).
struct LengthRun {
  std::uint8_t symbol;
  std::uint8_t extra;
};

std::vector<LengthRun> RunsOf(const std::array<std::uint8_t, kLiterals>& lengths) {
  std::vector<std::uint8_t> all(lengths.begin(), lengths.end());
  all.push_back(0);
  std::vector<LengthRun> runs;
  for (std::size_t i = 0; i < all.size();) {
    std::size_t count = 1;
    while (i + count < all.size() && all[i + count] == all[i]) {
      ++count;
    }
    std::size_t left = count;
    if (all[i] != 0) {
      runs.push_back({all[i], 0});
      --left;
    }
    while (left >= 3) {
      const std::size_t longest = all[i] != 0 ? 6 : left > 10 ? 138 : 10;
      const std::size_t taken = std::min(left, longest);
      const std::size_t base = taken > 10 ? 11 : 3;
      runs.push_back({static_cast<std::uint8_t>(all[i] != 0  ? 16
                                                : taken > 10 ? 18
                                                             : 17),
                      static_cast<std::uint8_t>(taken - base)});
      left -= taken;
    }
    for (; left > 0; --left) {
      runs.push_back({all[i], 0});
    }
    i += count;
  }
  return runs;
}

void PutTables(BitWriter& out, const std::array<std::uint8_t, kLiterals>& lengths) {
  const std::vector<LengthRun> runs = RunsOf(lengths);
  std::array<std::uint32_t, kLengthSymbols> counts{};
  for (const LengthRun& run : runs) {
    ++counts[run.symbol];
  }
  const auto code_lengths = CodeLengths(counts, kMaxLengthCodeBits);
  const auto codes = Codes(code_lengths);
  std::size_t stored = kLengthSymbols;
  while (stored > 4 && code_lengths[kLengthOrder[stored - 1]] == 0) {
    --stored;
  }
  out.Put(0, 5);  // 257 literal codes
  out.Put(0, 5);  // 1 distance code
  out.Put(stored - 4, 4);
  for (std::size_t i = 0; i < stored; ++i) {
    out.Put(code_lengths[kLengthOrder[i]], 3);
  }
  for (const LengthRun& run : runs) {
    out.Put(codes[run.symbol], code_lengths[run.symbol]);
    if (run.symbol >= 16) {
      out.Put(run.extra, run.symbol == 16 ? 2 : run.symbol == 17 ? 3 : 7);
    }
  }
}

void PutStored(BitWriter& out, const unsigned char* data, std::size_t size, bool is_last) {
  for (std::size_t done = 0; done < size;) {
    const std::size_t count = std::min(size - done, kMaxStored);
    out.Put(is_last && done + count == size ? 1 : 0, 3);
    out.Align();
    out.Put(count, 16);
    out.Put(count ^ 0xFFFF, 16);
    out.Align();
    out.PutBytes(data + done, count);
    done += count;
  }
}

// The bits that an ideal code needs, at least one for each byte.
float IdealBits(const Histogram& counts, std::size_t size) {
  float bits = 0;
  const float all = std::log2(static_cast<float>(size));
  for (const std::uint32_t count : counts) {
    if (count != 0) {
      const auto weight = static_cast<float>(count);
      bits += weight * std::max(1.0F, all - std::log2(weight));
    }
  }
  return bits;
}

void PutBlock(BitWriter& out, const unsigned char* data, std::size_t size, Histogram counts,
              bool is_last) {
  counts[kEndOfBlock] = 1;
  const auto lengths = CodeLengths(counts, kMaxCodeBits);
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < kLiterals; ++i) {
    bits += std::uint64_t{counts[i]} * lengths[i];
  }
  if (bits / 8 >= size) {
    PutStored(out, data, size, is_last);
    return;
  }
  out.Put(is_last ? 1 : 0, 1);
  out.Put(2, 2);
  PutTables(out, lengths);
  const auto codes = Codes(lengths);
  // Code and length side by side: one look-up for each byte.
  std::array<std::uint32_t, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i] = static_cast<std::uint32_t>(codes[i]) << 8 | lengths[i];
  }
  std::size_t i = 0;
  for (; i + 2 <= size; i += 2) {
    const std::uint32_t first = table[data[i]];
    const std::uint32_t second = table[data[i + 1]];
    const unsigned first_bits = first & 0xFF;
    out.Put(first >> 8 | std::uint64_t{second >> 8} << first_bits, first_bits + (second & 0xFF));
  }
  if (i < size) {
    out.Put(table[data[i]] >> 8, table[data[i]] & 0xFF);
  }
  out.Put(codes[kEndOfBlock], lengths[kEndOfBlock]);
}

// A block at the start of the data: pieces that one code suits about as well as each its own.
struct Block {
  std::size_t size = 0;
  Histogram counts{};
};

Block FirstBlock(const unsigned char* data, std::size_t size) {
  Block block;
  block.size = std::min(kPiece, size);
  block.counts = Count(data, block.size);
  float bits = IdealBits(block.counts, block.size);
  while (block.size < size) {
    const std::size_t next = std::min(kPiece, size - block.size);
    const Histogram more = Count(data + block.size, next);
    Histogram both;
    std::transform(block.counts.begin(), block.counts.end(), more.begin(), both.begin(),
                   std::plus<>());
    const float together = IdealBits(both, block.size + next);
    if (together > bits + IdealBits(more, next) + kTableBits) {
      break;
    }
    block = {block.size + next, both};
    bits = together;
  }
  return block;
}

}  // namespace

HeldBytes DeflateByHuffman(const unsigned char* data, std::size_t size) {
  // A block is at most as large as it would be stored, but for what its tables need.
  const std::size_t pieces = size / kPiece + 1;
  HeldBytes packed;
  packed.data = std::make_unique_for_overwrite<char[]>(size + pieces * 400 + 16);
  auto* const start = reinterpret_cast<unsigned char*>(packed.data.get());
  start[0] = 0x78;
  start[1] = 0x9C;
  BitWriter out(start + 2);
  for (std::size_t done = 0; done < size;) {
    const Block block = FirstBlock(data + done, size - done);
    PutBlock(out, data + done, block.size, block.counts, done + block.size == size);
    done += block.size;
  }
  out.Align();
  const std::uint32_t checksum = libdeflate_adler32(1, data, size);
  const std::array<unsigned char, 4> trailer = {
      static_cast<unsigned char>(checksum >> 24), static_cast<unsigned char>(checksum >> 16),
      static_cast<unsigned char>(checksum >> 8), static_cast<unsigned char>(checksum)};
  out.PutBytes(trailer.data(), trailer.size());
  packed.size = static_cast<std::size_t>(out.end() - start);
  return packed;
}

std::size_t HuffmanSize(const unsigned char* data, std::size_t size) {
  return static_cast<std::size_t>(IdealBits(Count(data, size), size) / 8);
}

}  // namespace TarnixTools::engines
