#include "engines/support/codecs/CcittDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "engines/support/codecs/CcittCodes.h"

namespace TarnixTools::engines {
namespace {

constexpr unsigned kMaxCodeBits = 13;
constexpr std::int64_t kNoRun = -1;

struct RunCode {
  std::int16_t run = kNoRun;
  std::uint8_t bits = 0;
};

// The run that the data goes on with, by its next 13 bits.
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
  for (std::size_t i = 0; i < kLongRunCodes.size(); ++i) {
    AddCode(table, kLongRunCodes[i], 1792 + 64 * i);
  }
  return table;
}

const RunTable& TableOf(bool is_black) {
  static const RunTable white = MakeTable(kWhiteRunCodes);
  static const RunTable black = MakeTable(kBlackRunCodes);
  return is_black ? black : white;
}

// What a code of vertical mode says (T.4, table 4): how far the change is from that above, and how
// many bits the code has.
struct VerticalCode {
  std::uint32_t code;
  unsigned bits;
  int shift;
};

constexpr std::array<VerticalCode, 7> kVerticalCodes = {{{0b1, 1, 0},
                                                         {0b011, 3, 1},
                                                         {0b010, 3, -1},
                                                         {0b000011, 6, 2},
                                                         {0b000010, 6, -2},
                                                         {0b0000011, 7, 3},
                                                         {0b0000010, 7, -3}}};

// The code that seven bits begin with; null for none.
const VerticalCode* FindVerticalCode(std::uint32_t bits) {
  const auto* const found = std::find_if(
      kVerticalCodes.begin(), kVerticalCodes.end(),
      [&](const VerticalCode& vertical) { return bits >> (7 - vertical.bits) == vertical.code; });
  return found != kVerticalCodes.end() ? found : nullptr;
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
  if (!PassRow()) {
    return false;
  }
  Paint(row);
  return true;
}

bool CcittDecoder::ReadChanges(std::vector<std::uint32_t>& changes) {
  if (!PassRow() || !is_exact_) {
    return false;
  }
  changes.clear();
  for (const std::int64_t position : reference_) {
    if (position == parameters_.columns) {
      break;
    }
    if (!changes.empty() && changes.back() == position) {
      return false;
    }
    changes.push_back(static_cast<std::uint32_t>(position));
  }
  return true;
}

// Reads the next row: what is in `reference_` then.
bool CcittDecoder::PassRow() {
  if (is_broken_) {
    return false;
  }
  if (parameters_.is_byte_aligned && !IsBeforeEndOfLine()) {
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
  is_exact_ &= is_whole && bit_ <= data_.size() * 8;
  Add(parameters_.columns);
  std::swap(reference_, current_);
  return true;
}

// Zeros may have been put in front of an end of line, so that it ends with a byte: then it is not
// the row that starts with one.
bool CcittDecoder::IsBeforeEndOfLine() {
  if (parameters_.k < 0) {
    return false;
  }
  const std::size_t start = bit_;
  const bool is_before = parameters_.has_ends_of_line ? SkipEndOfLine() : Peek(12) == 1;
  bit_ = start;
  return is_before;
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

bool CcittDecoder::AddRun(std::int64_t& position) {
  const std::int64_t run = ReadRun(current_.size() % 2 == 1);
  if (run == kNoRun) {
    return false;
  }
  position += run;
  Add(position);
  return true;
}

bool CcittDecoder::ReadOneDimensional() {
  std::int64_t position = 0;
  bool is_sound = true;
  while (is_sound && position < parameters_.columns) {
    is_sound = AddRun(position);
  }
  return is_sound;
}

bool CcittDecoder::ReadHorizontal(std::int64_t& position) {
  return AddRun(position) && AddRun(position);
}

// T.4, 4.2: positions are told relative to where the row above changes.
bool CcittDecoder::ReadTwoDimensional() {
  std::int64_t position = 0;
  bool is_at_start = true;
  std::size_t above = 0;
  while (position < parameters_.columns) {
    above = ChangeAbove(above, position, is_at_start);
    const std::uint32_t next = Peek(7);
    if (next >> 4U == 0b001) {  // horizontal
      Skip(3);
      if (!ReadHorizontal(position)) {
        return false;
      }
    } else if (next >> 3U == 0b0001) {  // pass
      Skip(4);
      position = ReferenceAt(above + 1);
    } else if (!ReadVertical(next, ReferenceAt(above), position)) {
      return false;
    }
    is_at_start = false;
    if (IsAtEnd() && position < parameters_.columns) {
      return false;
    }
  }
  return true;
}

// The first change above, to the right of the position, to the other colour. `above` is the one
// that was found last.
std::size_t CcittDecoder::ChangeAbove(std::size_t above, std::int64_t position,
                                      bool is_at_start) const {
  const bool is_black = current_.size() % 2 == 1;
  above = above > 1 ? above - 2 : 0;
  while (above < reference_.size() &&
         (reference_[above] < position || (reference_[above] == position && !is_at_start) ||
          (above % 2 == 1) != is_black)) {
    ++above;
  }
  return above;
}

// bits: the next seven; reference: where the row above changes.
bool CcittDecoder::ReadVertical(std::uint32_t bits, std::int64_t reference,
                                std::int64_t& position) {
  const VerticalCode* const code = FindVerticalCode(bits);
  if (code == nullptr) {
    return false;
  }
  Skip(code->bits);
  const std::int64_t target = reference + code->shift;
  if (target < position) {
    return false;
  }
  position = target;
  Add(position);
  return true;
}

void CcittDecoder::Paint(std::uint8_t* row) const {
  std::memset(row, 0, row_bytes());
  std::int64_t start = 0;
  bool is_black = false;
  for (const std::int64_t position : reference_) {
    if (is_black == parameters_.black_is_1 && position > start) {
      SetBits(row, static_cast<std::size_t>(start), static_cast<std::size_t>(position));
    }
    start = std::max(start, position);
    is_black = !is_black;
  }
}

}  // namespace TarnixTools::engines
