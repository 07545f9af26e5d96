#include "engines/support/images/FaxJoiner.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "engines/support/pixels/CcittCodes.h"
#include "engines/support/pixels/CcittDecoder.h"

namespace TarnixTools::engines::images {

namespace {

constexpr std::string_view kPass = "0001";
constexpr std::string_view kHorizontal = "001";
constexpr std::string_view kEndOfLine = "000000000001";
// From three columns to the left of the change above to three to the right.
constexpr std::array<std::string_view, 7> kVertical = {"0000010", "000010", "010",    "1",
                                                       "011",     "000011", "0000011"};
constexpr std::int64_t kMaxShift = 3;
constexpr std::int64_t kLongestRun = 2560;

// A change of a row; its end when there is none of that index.
std::int64_t At(const std::vector<std::int64_t>& changes, std::size_t index, std::int64_t columns) {
  return index < changes.size() ? std::min(changes[index], columns) : columns;
}

// Changes at the same place cancel each other out.
std::vector<std::int64_t> Tidy(const std::vector<std::int64_t>& changes, std::int64_t columns) {
  std::vector<std::int64_t> tidy;
  for (const std::int64_t change : changes) {
    if (change >= columns) {
      break;
    }
    if (!tidy.empty() && tidy.back() == change) {
      tidy.pop_back();
    } else {
      tidy.push_back(change);
    }
  }
  return tidy;
}

}  // namespace

FaxJoiner::FaxJoiner(std::uint32_t columns) : columns_(columns) {}

bool FaxJoiner::Add(std::string_view strip, std::uint32_t rows) {
  CcittDecoder decoder(strip, {.k = -1, .columns = columns_});
  std::size_t kept_from = 0;
  for (std::uint32_t row = 0; row < rows; ++row) {
    if (!decoder.PassRow() || decoder.is_broken()) {
      return false;
    }
    if (row == 0 && !last_row_.empty()) {
      PutRow(Tidy(decoder.changes(), columns_), last_row_);
      kept_from = decoder.position();
    }
  }
  if (decoder.position() > strip.size() * 8) {
    return false;
  }
  PutBits(strip, kept_from, decoder.position());
  last_row_ = Tidy(decoder.changes(), columns_);
  return true;
}

std::string FaxJoiner::Take() {
  PutCode(kEndOfLine);
  PutCode(kEndOfLine);
  return std::move(data_);
}

void FaxJoiner::PutBit(bool bit) {
  if (free_bits_ == 0) {
    data_ += '\0';
    free_bits_ = 8;
  }
  --free_bits_;
  if (bit) {
    data_.back() = static_cast<char>(static_cast<unsigned char>(data_.back()) | 1U << free_bits_);
  }
}

void FaxJoiner::PutCode(std::string_view code) {
  for (const char bit : code) {
    PutBit(bit == '1');
  }
}

void FaxJoiner::PutBits(std::string_view data, std::size_t from, std::size_t to) {
  const auto bit_at = [&](std::size_t at) {
    return (static_cast<unsigned char>(data[at / 8]) >> (7 - at % 8) & 1U) != 0;
  };
  for (; from < to && from % 8 != 0; ++from) {
    PutBit(bit_at(from));
  }
  for (; to - from >= 8; from += 8) {
    const unsigned byte = static_cast<unsigned char>(data[from / 8]);
    if (free_bits_ == 0) {
      data_ += static_cast<char>(byte);
      continue;
    }
    data_.back() =
        static_cast<char>(static_cast<unsigned char>(data_.back()) | byte >> (8 - free_bits_));
    data_ += static_cast<char>(byte << free_bits_);
  }
  for (; from < to; ++from) {
    PutBit(bit_at(from));
  }
}

void FaxJoiner::PutRun(std::int64_t columns, bool is_black) {
  const auto& codes = is_black ? kBlackRunCodes : kWhiteRunCodes;
  for (; columns > kLongestRun; columns -= kLongestRun) {
    PutCode(kLongRunCodes.back());
  }
  if (columns >= 1792) {
    PutCode(kLongRunCodes[static_cast<std::size_t>((columns - 1792) / 64)]);
    columns %= 64;
  } else if (columns >= 64) {
    PutCode(codes[static_cast<std::size_t>(63 + columns / 64)]);
    columns %= 64;
  }
  PutCode(codes[static_cast<std::size_t>(columns)]);
}

// T.4, 4.2.1.3: both rows as the columns of their changes, white first.
void FaxJoiner::PutRow(const std::vector<std::int64_t>& row,
                       const std::vector<std::int64_t>& above) {
  const std::int64_t columns = columns_;
  std::int64_t position = 0;
  bool is_at_start = true;
  bool is_black = false;
  std::size_t next = 0;
  std::size_t over = 0;
  while (position < columns) {
    while (next < row.size() && (row[next] < position || (row[next] == position && !is_at_start))) {
      ++next;
    }
    while (over < above.size() &&
           (above[over] < position || (above[over] == position && !is_at_start))) {
      ++over;
    }
    // The first change above to the colour that is not the present one.
    const std::size_t opposite = over + ((over % 2 == 1) != is_black ? 1 : 0);
    const std::int64_t change = At(row, next, columns);
    const std::int64_t change_above = At(above, opposite, columns);
    const std::int64_t end_above = At(above, opposite + 1, columns);
    if (end_above < change) {
      PutCode(kPass);
      position = end_above;
    } else if (std::abs(change - change_above) <= kMaxShift) {
      PutCode(kVertical[static_cast<std::size_t>(change - change_above + kMaxShift)]);
      position = change;
      is_black = !is_black;
    } else {
      const std::int64_t after = At(row, next + 1, columns);
      PutCode(kHorizontal);
      PutRun(change - position, is_black);
      PutRun(after - change, !is_black);
      position = after;
    }
    is_at_start = false;
  }
}

}  // namespace TarnixTools::engines::images
