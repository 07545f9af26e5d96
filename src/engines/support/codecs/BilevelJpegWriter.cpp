#include "engines/support/codecs/BilevelJpegWriter.h"

#include <array>
#include <bit>
#include <cstring>

#include "engines/support/codecs/JpegCodes.h"
#include "engines/support/codecs/jpeg/BlockTransform.h"

namespace TarnixTools::engines {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} << 10;

// More than a block can need: 64 coefficients of 27 bits, each byte followed by a zero. The header
// needs less than that after all, and both fit behind a full buffer.
constexpr std::size_t kMostAtOnce = 1024;

constexpr int kZeroRun = 0xF0;  // sixteen zeros

struct HuffmanCode {
  std::uint16_t code = 0;
  std::uint8_t length = 0;
};

using HuffmanTable = std::array<HuffmanCode, 256>;

template <typename Values>
HuffmanTable MakeTable(const std::array<std::uint8_t, 16>& counts, const Values& values) {
  HuffmanTable table{};
  std::uint16_t code = 0;
  std::size_t next = 0;
  for (std::size_t length = 1; length <= 16;
       ++length, code = static_cast<std::uint16_t>(code << 1U)) {
    for (std::size_t i = 0; i < counts[length - 1]; ++i) {
      table[values[next++]] = {code++, static_cast<std::uint8_t>(length)};
    }
  }
  return table;
}

// What the transform needs, computed once.
struct Tables {
  Tables()
      : direct(MakeTable(kDirectCodeCounts, kDirectCodeValues)),
        other(MakeTable(kOtherCodeCounts, kOtherCodeValues)) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      for (std::size_t u = 0; u < 8; ++u) {
        float sum = 0;
        for (std::size_t x = 0; x < 8; ++x) {
          sum += basis[u][x] * ((byte >> (7 - x) & 1U) != 0 ? 127.0F : -128.0F);
        }
        row[byte][u] = sum;
      }
    }
  }

  static const Tables& Get() {
    static const Tables tables;
    return tables;
  }

  HuffmanTable direct;
  HuffmanTable other;
  const jpeg::CosineBasis& basis = jpeg::TheCosineBasis();
  std::array<std::array<float, 8>, 256> row{};  // the transform of a row of eight pixels
};

// The 64 coefficients of a block, quantised by 1, in rows of equal vertical frequency.
void Transform(std::uint64_t block, std::array<int, 64>& coefficients) {
  const Tables& tables = Tables::Get();
  for (std::size_t v = 0; v < 8; ++v) {
    std::array<float, 8> sums{};
    for (std::size_t y = 0; y < 8; ++y) {
      const float factor = tables.basis[v][y];
      const auto& row = tables.row[block >> (56 - 8 * y) & 0xFFU];
      for (std::size_t u = 0; u < 8; ++u) {
        sums[u] += factor * row[u];
      }
    }
    for (std::size_t u = 0; u < 8; ++u) {
      const float sum = sums[u];
      coefficients[8 * v + u] = static_cast<int>(sum + (sum < 0 ? -0.5F : 0.5F));
    }
  }
}

unsigned BitsOf(int value) {
  return static_cast<unsigned>(std::bit_width(static_cast<unsigned>(value < 0 ? -value : value)));
}

// The bits that follow a size (T.81, F.1.2.1).
std::uint32_t MagnitudeBits(int value, unsigned size) {
  return static_cast<std::uint32_t>(value < 0 ? value - 1 : value) & ((1U << size) - 1);
}

}  // namespace

BilevelJpegWriter::BilevelJpegWriter(pdf::ByteSink& sink, std::uint32_t width, std::uint32_t height)
    : sink_(&sink),
      width_(width),
      blocks_in_row_((width + 7) / 8),
      rows_(8 * blocks_in_row_),
      buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize + kMostAtOnce)) {
  output_.end = buffer_.get();
  WriteHeader(height);
}

void BilevelJpegWriter::WriteHeader(std::uint32_t height) {
  const auto put = [this](std::initializer_list<unsigned> bytes) { output_.PutBytes(bytes); };
  const auto segment = [&](unsigned marker, std::size_t size) {
    const auto length = static_cast<unsigned>(size + 2);
    put({0xFF, marker, length >> 8U, length & 0xFFU});
  };
  put({0xFF, 0xD8});
  segment(0xE0, 14);
  put({'J', 'F', 'I', 'F', 0, 1, 1, 0, 0, 1, 0, 1, 0, 0});
  segment(0xDB, 65);
  put({0});
  for (int i = 0; i < 64; ++i) {
    put({1});
  }
  segment(0xC0, 9);
  put({8, height >> 8U, height & 0xFFU, width_ >> 8U, width_ & 0xFFU, 1, 1, 0x11, 0});
  const auto put_table = [&](unsigned kind, const auto& counts, const auto& values) {
    segment(0xC4, 1 + counts.size() + values.size());
    put({kind});
    for (const std::uint8_t count : counts) {
      put({count});
    }
    for (const std::uint8_t value : values) {
      put({value});
    }
  };
  put_table(0x00, kDirectCodeCounts, kDirectCodeValues);
  put_table(0x10, kOtherCodeCounts, kOtherCodeValues);
  segment(0xDA, 6);
  put({1, 1, 0, 0, 63, 0});
}

void BilevelJpegWriter::WriteRow(const std::uint8_t* bits) {
  std::uint8_t* row = rows_.data() + row_count_ * blocks_in_row_;
  std::memcpy(row, bits, blocks_in_row_);
  if (const unsigned used = width_ % 8; used != 0) {
    // The last pixel goes on to the edge of its block.
    const unsigned filling = 0xFFU >> used;
    const bool is_white = (row[blocks_in_row_ - 1] >> (8 - used) & 1U) != 0;
    row[blocks_in_row_ - 1] = static_cast<std::uint8_t>(
        is_white ? row[blocks_in_row_ - 1] | filling : row[blocks_in_row_ - 1] & ~filling);
  }
  if (++row_count_ == 8) {
    WriteBlocks();
  }
}

void BilevelJpegWriter::WriteBlocks() {
  for (std::size_t x = 0; x < blocks_in_row_; ++x) {
    std::uint64_t block = 0;
    for (std::size_t y = 0; y < 8; ++y) {
      block = block << 8U | rows_[y * blocks_in_row_ + x];
    }
    WriteBlock(block);
  }
  row_count_ = 0;
}

void BilevelJpegWriter::WriteBlock(std::uint64_t block) {
  if (block == 0 || block == ~std::uint64_t{0}) {
    PutDifference(output_, block == 0 ? -1024 : 1016);
    const HuffmanCode end = Tables::Get().other[0];
    output_.PutBits(end.code, end.length);
  } else {
    PutCoefficients(block);
  }
  if (output_.end - buffer_.get() >= static_cast<std::ptrdiff_t>(kBufferSize)) {
    Flush();
  }
}

void BilevelJpegWriter::PutDifference(Output& output, int direct) {
  const int difference = direct - last_direct_;
  last_direct_ = direct;
  const unsigned size = BitsOf(difference);
  const HuffmanCode code = Tables::Get().direct[size];
  output.PutBits(code.code, code.length);
  output.PutBits(MagnitudeBits(difference, size), size);
}

void BilevelJpegWriter::PutCoefficients(std::uint64_t block) {
  std::array<int, 64> coefficients;
  Transform(block, coefficients);
  Output output = output_;  // of its own, so that it can stay in registers
  PutDifference(output, coefficients[0]);
  const HuffmanTable& table = Tables::Get().other;
  unsigned zeros = 0;
  for (std::size_t i = 1; i < 64; ++i) {
    const int value = coefficients[kZigzag[i]];
    if (value == 0) {
      ++zeros;
      continue;
    }
    for (; zeros > 15; zeros -= 16) {
      output.PutBits(table[kZeroRun].code, table[kZeroRun].length);
    }
    const unsigned size = BitsOf(value);
    const HuffmanCode code = table[zeros << 4U | size];
    output.PutBits(static_cast<std::uint32_t>(code.code) << size | MagnitudeBits(value, size),
                   code.length + size);
    zeros = 0;
  }
  if (zeros > 0) {
    output.PutBits(table[0].code, table[0].length);
  }
  output_ = output;
}

void BilevelJpegWriter::Output::PutCodedBytes(unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    bit_count -= 8;
    const auto byte = static_cast<unsigned>(bits >> bit_count & 0xFFU);
    PutBytes({byte});
    if (byte == 0xFF) {
      PutBytes({0});
    }
  }
}

void BilevelJpegWriter::Output::PutBytes(std::initializer_list<unsigned> bytes) {
  for (const unsigned byte : bytes) {
    *end++ = static_cast<char>(byte);
  }
}

void BilevelJpegWriter::Flush() {
  sink_->Write({buffer_.get(), static_cast<std::size_t>(output_.end - buffer_.get())});
  output_.end = buffer_.get();
}

void BilevelJpegWriter::Finish() {
  if (row_count_ > 0) {
    // The last row goes on to the edge of its blocks.
    const std::vector<std::uint8_t> last(
        rows_.begin() + static_cast<std::ptrdiff_t>((row_count_ - 1) * blocks_in_row_),
        rows_.begin() + static_cast<std::ptrdiff_t>(row_count_ * blocks_in_row_));
    while (row_count_ > 0) {
      WriteRow(last.data());
    }
  }
  output_.PutBits(0x7F, 7);
  output_.PutCodedBytes(output_.bit_count / 8);
  output_.PutBytes({0xFF, 0xD9});
  Flush();
}

}  // namespace TarnixTools::engines
