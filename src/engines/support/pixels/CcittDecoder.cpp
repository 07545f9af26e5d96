#include "engines/support/pixels/CcittDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace TarnixTools::engines {
namespace {

// Codes of runs (T.4, tables 2 and 3): of 0 to 63 columns, then of 64 to 1728 in steps of 64.
constexpr std::array<std::string_view, 91> kWhite = {
    "00110101",  "000111",    "0111",      "1000",      "1011",      "1100",      "1110",
    "1111",      "10011",     "10100",     "00111",     "01000",     "001000",    "000011",
    "110100",    "110101",    "101010",    "101011",    "0100111",   "0001100",   "0001000",
    "0010111",   "0000011",   "0000100",   "0101000",   "0101011",   "0010011",   "0100100",
    "0011000",   "00000010",  "00000011",  "00011010",  "00011011",  "00010010",  "00010011",
    "00010100",  "00010101",  "00010110",  "00010111",  "00101000",  "00101001",  "00101010",
    "00101011",  "00101100",  "00101101",  "00000100",  "00000101",  "00001010",  "00001011",
    "01010010",  "01010011",  "01010100",  "01010101",  "00100100",  "00100101",  "01011000",
    "01011001",  "01011010",  "01011011",  "01001010",  "01001011",  "00110010",  "00110011",
    "00110100",  "11011",     "10010",     "010111",    "0110111",   "00110110",  "00110111",
    "01100100",  "01100101",  "01101000",  "01100111",  "011001100", "011001101", "011010010",
    "011010011", "011010100", "011010101", "011010110", "011010111", "011011000", "011011001",
    "011011010", "011011011", "010011000", "010011001", "010011010", "011000",    "010011011"};

constexpr std::array<std::string_view, 91> kBlack = {"0000110111",
                                                     "010",
                                                     "11",
                                                     "10",
                                                     "011",
                                                     "0011",
                                                     "0010",
                                                     "00011",
                                                     "000101",
                                                     "000100",
                                                     "0000100",
                                                     "0000101",
                                                     "0000111",
                                                     "00000100",
                                                     "00000111",
                                                     "000011000",
                                                     "0000010111",
                                                     "0000011000",
                                                     "0000001000",
                                                     "00001100111",
                                                     "00001101000",
                                                     "00001101100",
                                                     "00000110111",
                                                     "00000101000",
                                                     "00000010111",
                                                     "00000011000",
                                                     "000011001010",
                                                     "000011001011",
                                                     "000011001100",
                                                     "000011001101",
                                                     "000001101000",
                                                     "000001101001",
                                                     "000001101010",
                                                     "000001101011",
                                                     "000011010010",
                                                     "000011010011",
                                                     "000011010100",
                                                     "000011010101",
                                                     "000011010110",
                                                     "000011010111",
                                                     "000001101100",
                                                     "000001101101",
                                                     "000011011010",
                                                     "000011011011",
                                                     "000001010100",
                                                     "000001010101",
                                                     "000001010110",
                                                     "000001010111",
                                                     "000001100100",
                                                     "000001100101",
                                                     "000001010010",
                                                     "000001010011",
                                                     "000000100100",
                                                     "000000110111",
                                                     "000000111000",
                                                     "000000100111",
                                                     "000000101000",
                                                     "000001011000",
                                                     "000001011001",
                                                     "000000101011",
                                                     "000000101100",
                                                     "000001011010",
                                                     "000001100110",
                                                     "000001100111",
                                                     "0000001111",
                                                     "000011001000",
                                                     "000011001001",
                                                     "000001011011",
                                                     "000000110011",
                                                     "000000110100",
                                                     "000000110101",
                                                     "0000001101100",
                                                     "0000001101101",
                                                     "0000001001010",
                                                     "0000001001011",
                                                     "0000001001100",
                                                     "0000001001101",
                                                     "0000001110010",
                                                     "0000001110011",
                                                     "0000001110100",
                                                     "0000001110101",
                                                     "0000001110110",
                                                     "0000001110111",
                                                     "0000001010010",
                                                     "0000001010011",
                                                     "0000001010100",
                                                     "0000001010101",
                                                     "0000001011010",
                                                     "0000001011011",
                                                     "0000001100100",
                                                     "0000001100101"};

constexpr std::array<std::string_view, 13> kLong = {
    "00000001000",  "00000001100",  "00000001101",  "000000010010", "000000010011",
    "000000010100", "000000010101", "000000010110", "000000010111", "000000011100",
    "000000011101", "000000011110", "000000011111"};

constexpr unsigned kMaxCodeBits = 13;
constexpr std::int64_t kNoRun = -1;

struct RunCode {
  std::int16_t run = kNoRun;
  std::uint8_t bits = 0;
};

// By the next 13 bits of the data.
using RunTable = std::array<RunCode, 1U << kMaxCodeBits>;

void AddCode(RunTable& table, std::string_view code, std::size_t run) {
  std::size_t first = 0;
  for (const char bit : code) {
    first = first << 1U | (bit == '1' ? 1U : 0U);
  }
  const std::size_t free_bits = kMaxCodeBits - code.size();
  first <<= free_bits;
  for (std::size_t i = 0; i < std::size_t{1} << free_bits; ++i) {
    table[first + i] = {static_cast<std::int16_t>(run), static_cast<std::uint8_t>(code.size())};
  }
}

template <std::size_t kCount>
RunTable MakeTable(const std::array<std::string_view, kCount>& codes) {
  RunTable table{};
  for (std::size_t i = 0; i < codes.size(); ++i) {
    AddCode(table, codes[i], i < 64 ? i : (i - 63) * 64);
  }
  for (std::size_t i = 0; i < kLong.size(); ++i) {
    AddCode(table, kLong[i], 1792 + 64 * i);
  }
  return table;
}

const RunTable& TableOf(bool is_black) {
  static const RunTable white = MakeTable(kWhite);
  static const RunTable black = MakeTable(kBlack);
  return is_black ? black : white;
}

// Sets the bits [from, to) of a row.
void SetBits(std::uint8_t* row, std::size_t from, std::size_t to) {
  if (from >= to) {
    return;
  }
  const std::size_t first = from / 8;
  const std::size_t last = (to - 1) / 8;
  const auto first_mask = static_cast<std::uint8_t>(0xFFU >> (from % 8));
  const auto last_mask = static_cast<std::uint8_t>(0xFFU << (7 - (to - 1) % 8));
  if (first == last) {
    row[first] |= first_mask & last_mask;
    return;
  }
  row[first] |= first_mask;
  std::memset(row + first + 1, 0xFF, last - first - 1);
  row[last] |= last_mask;
}

}  // namespace

CcittDecoder::CcittDecoder(std::string_view data, const CcittParameters& parameters)
    : data_(data), parameters_(parameters), is_two_dimensional_(parameters.k < 0) {
  reference_ = {parameters_.columns};
}

// Up to 24 bits from the present one on; zeros beyond the end.
std::uint32_t CcittDecoder::Peek(unsigned count) const {
  const std::size_t byte = bit_ / 8;
  std::uint32_t word = 0;
  if (byte + 4 <= data_.size()) {
    const auto* at = reinterpret_cast<const unsigned char*>(data_.data()) + byte;
    word = static_cast<std::uint32_t>(at[0]) << 24U | static_cast<std::uint32_t>(at[1]) << 16U |
           static_cast<std::uint32_t>(at[2]) << 8U | at[3];
  } else {
    for (std::size_t i = 0; i < 4; ++i) {
      const std::uint32_t next =
          byte + i < data_.size() ? static_cast<unsigned char>(data_[byte + i]) : 0U;
      word = word << 8U | next;
    }
  }
  return word << (bit_ % 8) >> (32 - count);
}

bool CcittDecoder::ReadRow(std::uint8_t* row) {
  if (is_broken_) {
    return false;
  }
  if (parameters_.is_byte_aligned) {
    bit_ = (bit_ + 7) / 8 * 8;
  }
  if (!ReadTagOfRow() || IsAtEnd()) {
    is_broken_ = true;
    return false;
  }
  current_.clear();
  const bool is_whole = is_two_dimensional_ ? ReadTwoDimensional() : ReadOneDimensional();
  if (!is_whole && (parameters_.k < 0 || current_.empty())) {
    // Of group 4 data nothing that follows makes sense; of others the next row may be found.
    is_broken_ = true;
    if (current_.empty()) {
      return false;
    }
  }
  Add(parameters_.columns);
  Paint(row);
  std::swap(reference_, current_);
  return true;
}

// Skips an end of line with the zeros in front of it.
bool CcittDecoder::SkipEndOfLine() {
  const std::size_t start = bit_;
  while (!IsAtEnd() && Peek(12) == 0) {
    Skip(1);
  }
  if (!IsAtEnd() && Peek(12) == 1) {
    Skip(12);
    return true;
  }
  bit_ = start;
  return false;
}

// What stands before a row. False at the end of the block: several ends of line.
bool CcittDecoder::ReadTagOfRow() {
  if (parameters_.k < 0) {
    return Peek(24) != 0x001001;
  }
  int count = 0;
  while (count < 6 && SkipEndOfLine()) {
    ++count;
    if (parameters_.k > 0) {
      is_two_dimensional_ = Peek(1) == 0;
      Skip(1);
    }
  }
  return count < 2;
}

// A run with its make-up codes; kNoRun where there is none.
std::int64_t CcittDecoder::ReadRun(bool is_black) {
  const RunTable& table = TableOf(is_black);
  std::int64_t run = 0;
  while (true) {
    const RunCode code = table[Peek(kMaxCodeBits)];
    if (code.bits == 0 || run > parameters_.columns) {
      return kNoRun;
    }
    Skip(code.bits);
    run += code.run;
    if (code.run < 64) {
      return run;
    }
  }
}

void CcittDecoder::Add(std::int64_t position) {
  current_.push_back(std::min<std::int64_t>(position, parameters_.columns));
}

bool CcittDecoder::ReadOneDimensional() {
  std::int64_t position = 0;
  while (position < parameters_.columns) {
    const std::int64_t run = ReadRun(current_.size() % 2 == 1);
    if (run == kNoRun) {
      return false;
    }
    position += run;
    Add(position);
  }
  return true;
}

bool CcittDecoder::ReadHorizontal(std::int64_t& position) {
  for (int i = 0; i < 2; ++i) {
    const std::int64_t run = ReadRun(current_.size() % 2 == 1);
    if (run == kNoRun) {
      return false;
    }
    position += run;
    Add(position);
  }
  return true;
}

// T.4, 4.2: positions are told relative to where the row above changes.
bool CcittDecoder::ReadTwoDimensional() {
  // By the next seven bits: how far the change is from that above, and the bits of the code.
  struct Vertical {
    std::uint32_t code;
    unsigned bits;
    int shift;
  };

  constexpr std::array<Vertical, 7> kVertical = {{{0b1, 1, 0},
                                                  {0b011, 3, 1},
                                                  {0b010, 3, -1},
                                                  {0b000011, 6, 2},
                                                  {0b000010, 6, -2},
                                                  {0b0000011, 7, 3},
                                                  {0b0000010, 7, -3}}};
  std::int64_t position = 0;
  bool is_at_start = true;
  std::size_t above = 0;  // the first change above, to the right, to the other colour
  while (position < parameters_.columns) {
    const bool is_black = current_.size() % 2 == 1;
    above = above > 1 ? above - 2 : 0;
    while (above < reference_.size() &&
           (reference_[above] < position || (reference_[above] == position && !is_at_start) ||
            (above % 2 == 1) != is_black)) {
      ++above;
    }
    const auto change = [&](std::size_t index) {
      return index < reference_.size() ? reference_[index]
                                       : static_cast<std::int64_t>(parameters_.columns);
    };
    const std::uint32_t next = Peek(7);
    if (next >> 4U == 0b001) {  // horizontal
      Skip(3);
      if (!ReadHorizontal(position)) {
        return false;
      }
    } else if (next >> 3U == 0b0001) {  // pass
      Skip(4);
      position = change(above + 1);
    } else {
      const auto* const found = std::find_if(
          kVertical.begin(), kVertical.end(),
          [&](const Vertical& vertical) { return next >> (7 - vertical.bits) == vertical.code; });
      if (found == kVertical.end()) {
        return false;
      }
      Skip(found->bits);
      const std::int64_t target = change(above) + found->shift;
      if (target < position) {
        return false;
      }
      position = target;
      Add(position);
    }
    is_at_start = false;
    if (IsAtEnd() && position < parameters_.columns) {
      return false;
    }
  }
  return true;
}

void CcittDecoder::Paint(std::uint8_t* row) const {
  std::memset(row, 0, row_bytes());
  std::int64_t start = 0;
  bool is_black = false;
  for (const std::int64_t position : current_) {
    if (is_black == parameters_.black_is_1 && position > start) {
      SetBits(row, static_cast<std::size_t>(start), static_cast<std::size_t>(position));
    }
    start = std::max(start, position);
    is_black = !is_black;
  }
}

}  // namespace TarnixTools::engines
