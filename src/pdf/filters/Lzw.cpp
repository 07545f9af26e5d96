#include <array>
#include <cstdint>

#include "pdf/filters/FilterSteps.h"
#include "pdf/filters/LimitedOutput.h"

namespace TarnixTools::pdf {
namespace {

constexpr unsigned kClearTable = 256;
constexpr unsigned kEndOfData = 257;
constexpr unsigned kFirstFreeCode = 258;
constexpr unsigned kTableSize = 4096;
constexpr unsigned kFirstCodeBits = 9;
constexpr unsigned kMostCodeBits = 12;

// Codes of a changing number of bits, most significant bit first.
class CodeReader {
 public:
  explicit CodeReader(std::string_view data) : data_(data) {}

  // False when fewer than `bits` bits are left.
  bool Read(unsigned bits, unsigned& code) {
    while (held_bits_ < bits) {
      if (next_ == data_.size()) {
        return false;
      }
      held_ = (held_ << 8) | static_cast<unsigned char>(data_[next_++]);
      held_bits_ += 8;
    }
    held_bits_ -= bits;
    code = (held_ >> held_bits_) & ((1U << bits) - 1);
    return true;
  }

 private:
  std::string_view data_;
  std::size_t next_ = 0;
  std::uint32_t held_ = 0;  // only the low held_bits_ bits count
  unsigned held_bits_ = 0;
};

// Every table entry is the string of the code before it and the first byte of the one after: bytes
// that follow each other in the output. So an entry is a place in the output and a length.
class LzwDecoder {
 public:
  LzwDecoder(std::string_view encoded, int early_change, std::size_t limit)
      : codes_(encoded), early_change_(static_cast<unsigned>(early_change)), out_(limit) {}

  Decoded Run() {
    unsigned code = 0;
    while (codes_.Read(code_bits_, code)) {
      if (code == kEndOfData) {
        return {out_.Take(), true};
      }
      if (code == kClearTable) {
        Clear();
      } else if (!Emit(code)) {
        break;
      }
    }
    return {out_.Take(), false};
  }

 private:
  struct Entry {
    std::size_t start = 0;
    std::size_t length = 0;
  };

  void Clear() {
    next_code_ = kFirstFreeCode;
    code_bits_ = kFirstCodeBits;
    last_.length = 0;
  }

  // Puts the code's string out and gives the table its next entry. False for a code that nothing
  // defines.
  bool Emit(unsigned code) {
    const std::size_t start = out_.size();
    if (code < kClearTable) {
      out_.Append(static_cast<char>(code));
    } else if (code < next_code_) {
      const Entry& entry = table_[code];
      out_.Repeat(entry.start, entry.length);
    } else if (code == next_code_ && last_.length != 0 && next_code_ < kTableSize) {
      out_.Repeat(last_.start, last_.length);
      out_.Append(out_[last_.start]);
    } else {
      return false;
    }
    Remember();
    last_ = {start, out_.size() - start};
    return true;
  }

  void Remember() {
    if (last_.length == 0 || next_code_ == kTableSize) {
      return;
    }
    table_[next_code_++] = {last_.start, last_.length + 1};
    if (next_code_ + early_change_ >= (1U << code_bits_) && code_bits_ < kMostCodeBits) {
      ++code_bits_;
    }
  }

  CodeReader codes_;
  unsigned early_change_;
  filters::LimitedOutput out_;
  unsigned next_code_ = kFirstFreeCode;
  unsigned code_bits_ = kFirstCodeBits;
  Entry last_;  // the string of the code before; none (length 0) after a cleared table
  std::array<Entry, kTableSize> table_;
};

}  // namespace

Decoded filters::DecodeLzw(std::string_view encoded, int early_change, std::size_t limit) {
  return LzwDecoder(encoded, early_change, limit).Run();
}

}  // namespace TarnixTools::pdf
