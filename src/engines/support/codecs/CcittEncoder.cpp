#include "engines/support/codecs/CcittEncoder.h"

#include <algorithm>
#include <array>
#include <bit>

#include "engines/support/codecs/BitRows.h"
#include "engines/support/codecs/CcittCodes.h"

namespace TarnixTools::engines {

namespace {

struct Code {
  std::uint16_t bits = 0;
  std::uint8_t count = 0;
};

constexpr Code Read(std::string_view text) {
  Code code;
  for (const char bit : text) {
    code.bits = static_cast<std::uint16_t>((code.bits << 1) | (bit == '1' ? 1 : 0));
  }
  code.count = static_cast<std::uint8_t>(text.size());
  return code;
}

constexpr std::uint32_t kLongestRun = 2560;

// The codes of runs: by the run below 64, then by 63 and the number of times that 64 fits.
using Codes = std::array<Code, 64 + kLongestRun / 64>;

constexpr Codes Collect(const std::array<std::string_view, 91>& short_codes) {
  Codes codes{};
  for (std::size_t i = 0; i < short_codes.size(); ++i) {
    codes[i] = Read(short_codes[i]);
  }
  for (std::size_t i = 0; i < kLongRunCodes.size(); ++i) {
    codes[short_codes.size() + i] = Read(kLongRunCodes[i]);
  }
  return codes;
}

constexpr Codes kWhiteRuns = Collect(kWhiteRunCodes);
constexpr Codes kBlackRuns = Collect(kBlackRunCodes);

constexpr Code kPass = Read("0001");
constexpr Code kHorizontal = Read("001");
constexpr Code kEndOfLine = Read("000000000001");
// The codes of vertical mode, by how far to the right of the change above the change is, from -3
// on.
constexpr int kFarthest = 3;
constexpr std::array<Code, 7> kVertical = {Read("0000010"), Read("000010"), Read("010"),
                                           Read("1"),       Read("011"),    Read("000011"),
                                           Read("0000011")};

// Copies of the number of columns behind the changes of a row: one looks two changes ahead of one
// that may itself be a step behind the last.
constexpr std::size_t kLookAhead = 4;

}  // namespace

CcittEncoder::CcittEncoder(std::uint32_t columns)
    : columns_(columns), reference_(kLookAhead, columns) {}

void CcittEncoder::AddRow(std::span<const std::uint32_t> changes) {
  current_.assign(changes.begin(), changes.end());
  CodeCurrent();
}

void CcittEncoder::AddRow(const std::uint8_t* bits, int black) {
  current_.clear();
  const std::size_t bytes = (std::size_t{columns_} + 7) / 8;
  const std::uint64_t inverse = black == 0 ? ~std::uint64_t{0} : 0;
  std::uint64_t before = 0;  // the bit to the left, white
  for (std::size_t at = 0; at < bytes; at += 8) {
    const std::uint64_t word = LoadBig(bits + at, bytes - at) ^ inverse;
    std::uint64_t changes = word ^ (word >> 1U | before << 63U);
    before = word & 1U;
    while (changes != 0) {
      const int place = std::countl_zero(changes);
      current_.push_back(static_cast<std::uint32_t>(8 * at) + static_cast<std::uint32_t>(place));
      changes ^= std::uint64_t{1} << (63 - place);
    }
  }
  // What is beyond the last column is no part of the row.
  while (!current_.empty() && current_.back() >= columns_) {
    current_.pop_back();
  }
  CodeCurrent();
}

// No row takes more than is reserved here: the longest code for a change has seven bits, and pairs
// of runs have six for each column and a few more at the row's ends.
void CcittEncoder::Reserve() {
  const std::size_t needed = size_ + std::size_t{columns_} * 2 + 64;
  if (data_.size() < needed) {
    data_.resize(std::max(needed, data_.size() * 2));
  }
}

void CcittEncoder::CodeCurrent() {
  Reserve();
  current_.insert(current_.end(), kLookAhead, columns_);
  const std::uint32_t* next = current_.data();  // the next change, to black or to white
  bool is_black = false;
  // The first change above that is to the right and of the same kind as `next`.
  const std::uint32_t* above = reference_.data();
  std::uint32_t position = 0;
  while (position < columns_) {
    if (above[1] < *next) {
      Put(kPass.bits, kPass.count);
      position = above[1];
      above += 2;
      continue;
    }
    const std::int64_t shift = std::int64_t{*next} - std::int64_t{*above};
    if (shift >= -kFarthest && shift <= kFarthest) {
      const Code code = kVertical[static_cast<std::size_t>(shift + kFarthest)];
      Put(code.bits, code.count);
      position = *next++;
      is_black = !is_black;
      above += above == reference_.data() ? 1 : -1;
    } else {
      Put(kHorizontal.bits, kHorizontal.count);
      PutRun(is_black, next[0] - position);
      PutRun(!is_black, next[1] - next[0]);
      position = next[1];
      next += 2;
    }
    while (*above <= position && *above < columns_) {
      above += 2;
    }
  }
  std::swap(reference_, current_);
}

void CcittEncoder::Put(std::uint32_t code, unsigned count) {
  pending_ = pending_ << count | code;
  pending_count_ += count;
  if (pending_count_ >= 32) {
    pending_count_ -= 32;
    const auto word = static_cast<std::uint32_t>(pending_ >> pending_count_);
    data_[size_] = static_cast<std::uint8_t>(word >> 24U);
    data_[size_ + 1] = static_cast<std::uint8_t>(word >> 16U);
    data_[size_ + 2] = static_cast<std::uint8_t>(word >> 8U);
    data_[size_ + 3] = static_cast<std::uint8_t>(word);
    size_ += 4;
  }
}

void CcittEncoder::PutRun(bool is_black, std::uint32_t run) {
  const Codes& codes = is_black ? kBlackRuns : kWhiteRuns;
  while (run >= kLongestRun + 64) {
    Put(codes[63 + kLongestRun / 64].bits, codes[63 + kLongestRun / 64].count);
    run -= kLongestRun;
  }
  if (run >= 64) {
    Put(codes[63 + run / 64].bits, codes[63 + run / 64].count);
    run %= 64;
  }
  Put(codes[run].bits, codes[run].count);
}

void CcittEncoder::Finish() {
  Reserve();
  Put(kEndOfLine.bits, kEndOfLine.count);
  Put(kEndOfLine.bits, kEndOfLine.count);
  pending_ <<= 32U - pending_count_;
  for (; pending_count_ > 0; pending_count_ -= std::min(pending_count_, 8U)) {
    data_[size_++] = static_cast<std::uint8_t>(pending_ >> 24U);
    pending_ <<= 8U;
  }
}

}  // namespace TarnixTools::engines
