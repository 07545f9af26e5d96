#include "engines/optimizer/fonts/Type1Code.h"

#include <cstddef>
#include <utility>

namespace TarnixTools::engines::optimizer {

namespace {

constexpr unsigned char kFirstNumber = 32;
constexpr unsigned char kCallSubroutine = 10;
constexpr unsigned char kEscape = 12;
constexpr unsigned char kCombine = 6;     // after an escape: seac
constexpr unsigned char kCallOther = 16;  // after an escape
constexpr std::size_t kMaxNumbers = 64;   // before a command

std::uint16_t NextKey(std::uint16_t key, unsigned char cipher) {
  return static_cast<std::uint16_t>((cipher + key) * 52845U + 22719U);
}

class CodeReader {
 public:
  explicit CodeReader(std::string_view code) : code_(code) {}

  Type1Calls Read() {
    while (at_ < code_.size()) {
      const auto byte = static_cast<unsigned char>(ByteAt(at_));
      if (byte >= kFirstNumber) {
        TakeNumber();
      } else {
        ++at_;
        Run(byte);
      }
    }
    return std::move(calls_);
  }

 private:
  std::int64_t ByteAt(std::size_t place) const {
    return place < code_.size() ? static_cast<unsigned char>(code_[place]) : 0;
  }

  void TakeNumber() {
    const std::int64_t first = ByteAt(at_);
    std::int64_t number = first - 139;
    std::size_t size = 1;
    if (first >= 247 && first <= 250) {
      number = (first - 247) * 256 + ByteAt(at_ + 1) + 108;
      size = 2;
    } else if (first >= 251 && first <= 254) {
      number = -(first - 251) * 256 - ByteAt(at_ + 1) - 108;
      size = 2;
    } else if (first == 255) {
      number =
          ByteAt(at_ + 1) << 24 | ByteAt(at_ + 2) << 16 | ByteAt(at_ + 3) << 8 | ByteAt(at_ + 4);
      size = 5;
    }
    at_ += size;
    if (numbers_.size() == kMaxNumbers) {
      numbers_.erase(numbers_.begin());
    }
    numbers_.push_back(number);
  }

  // Numbers stay for the next command: which of them a command takes does not matter here.
  void Run(unsigned char command) {
    const std::int64_t second = command == kEscape ? ByteAt(at_++) : 0;
    if (command == kCallSubroutine || (command == kEscape && second == kCallOther)) {
      calls_.subroutines.insert(calls_.subroutines.end(), numbers_.begin(), numbers_.end());
      numbers_.clear();
    } else if (command == kEscape && second == kCombine && numbers_.size() >= 2) {
      for (const std::int64_t part : {numbers_[numbers_.size() - 2], numbers_.back()}) {
        if (part >= 0 && part <= 0xFF) {
          calls_.parts.push_back(static_cast<std::uint8_t>(part));
        }
      }
    }
  }

  std::string_view code_;
  std::size_t at_ = 0;
  std::vector<std::int64_t> numbers_;
  Type1Calls calls_;
};

}  // namespace

std::string DecryptType1(std::string_view cipher, std::uint16_t key) {
  std::string plain;
  plain.reserve(cipher.size());
  for (const char c : cipher) {
    const auto byte = static_cast<unsigned char>(c);
    plain += static_cast<char>(byte ^ (key >> 8));
    key = NextKey(key, byte);
  }
  return plain;
}

std::string EncryptType1(std::string_view plain, std::uint16_t key) {
  std::string cipher;
  cipher.reserve(plain.size());
  for (const char c : plain) {
    const auto byte = static_cast<unsigned char>(static_cast<unsigned char>(c) ^ (key >> 8));
    cipher += static_cast<char>(byte);
    key = NextKey(key, byte);
  }
  return cipher;
}

Type1Calls ReadType1Calls(std::string_view code) {
  return CodeReader(code).Read();
}

}  // namespace TarnixTools::engines::optimizer
