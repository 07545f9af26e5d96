#include <array>
#include <cstdint>

#include "pdf/filters/FilterSteps.h"
#include "pdf/filters/LimitedOutput.h"

namespace TarnixTools::pdf {
namespace {

// Gathers base-85 digits and gives four bytes for every five of them.
class GroupDecoder {
 public:
  explicit GroupDecoder(filters::LimitedOutput& out) : out_(out) {}

  // False when the five digits stand for more than 32 bits.
  bool Add(unsigned digit) {
    value_ = value_ * 85 + digit;
    if (++digits_ < 5) {
      return true;
    }
    const bool fits = value_ <= 0xFFFFFFFF;
    if (fits) {
      Put(4);
    }
    value_ = 0;
    digits_ = 0;
    return fits;
  }

  // 'z': four zero bytes, only between groups.
  bool AddZeroGroup() {
    if (digits_ != 0) {
      return false;
    }
    out_.Append(4, '\0');
    return true;
  }

  // n digits at the end stand for n - 1 bytes. False for a single digit, which stands for nothing.
  bool Finish() {
    if (digits_ == 0) {
      return true;
    }
    const unsigned bytes = digits_ - 1;
    for (; digits_ < 5; ++digits_) {
      value_ = value_ * 85 + 84;
    }
    const bool fits = value_ <= 0xFFFFFFFF;
    if (fits) {
      Put(bytes);
    }
    return fits && bytes != 0;
  }

 private:
  void Put(unsigned bytes) {
    const std::array<char, 4> group = {static_cast<char>(value_ >> 24),
                                       static_cast<char>(value_ >> 16),
                                       static_cast<char>(value_ >> 8), static_cast<char>(value_)};
    out_.Append(std::string_view(group.data(), bytes));
  }

  filters::LimitedOutput& out_;
  std::uint64_t value_ = 0;
  unsigned digits_ = 0;
};

// The "<~" that some writers put in front, as other uses of the encoding do.
std::string_view WithoutOpening(std::string_view encoded) {
  std::size_t start = 0;
  while (start < encoded.size() && filters::IsWhiteSpace(encoded[start])) {
    ++start;
  }
  return encoded.substr(start).starts_with("<~") ? encoded.substr(start + 2) : encoded;
}

}  // namespace

Decoded filters::DecodeAscii85(std::string_view encoded, std::size_t limit) {
  LimitedOutput out(limit);
  GroupDecoder groups(out);
  bool ended = false;
  bool sound = true;
  for (const char c : WithoutOpening(encoded)) {
    if (c >= '!' && c <= 'u') {
      sound = groups.Add(static_cast<unsigned>(c - '!'));
    } else if (c == 'z') {
      sound = groups.AddZeroGroup();
    } else if (c == '~') {
      ended = true;
    } else {
      sound = IsWhiteSpace(c);
    }
    if (ended || !sound) {
      break;
    }
  }
  sound = groups.Finish() && sound;
  return {out.Take(), sound && ended};
}

}  // namespace TarnixTools::pdf
