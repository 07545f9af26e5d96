#include "pdf/content/NameScan.h"

#include <array>
#include <cstdint>

#include "pdf/content/Operators.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kLongestOperator = 3;

// Where to look closer: what begins a name, a string, a comment, or perhaps an inline image.
constexpr std::array<bool, 256> MakeStops() {
  std::array<bool, 256> stops{};
  for (const unsigned char c : {'/', '(', '<', '%', 'B'}) {
    stops[c] = true;
  }
  return stops;
}

constexpr std::array<bool, 256> kStops = MakeStops();

class Scanner {
 public:
  Scanner(std::string_view content, std::vector<ScannedName>& names)
      : at_(content.data()), end_(at_ + content.size()), names_(&names) {}

  bool Scan() {
    for (;;) {
      while (at_ != end_ && !kStops[static_cast<unsigned char>(*at_)]) {
        ++at_;
      }
      if (at_ == end_) {
        return true;
      }
      if (!PassStop()) {
        return false;
      }
    }
  }

 private:
  bool PassStop() {
    switch (*at_++) {
      case '/':
        return TakeName();
      case '(':
        return PassString();
      case '<':
        return PassHexString();
      case 'B':
        return at_ == end_ || *at_ != 'I';
      default:
        return false;
    }
  }

  // After the opening parenthesis.
  bool PassString() {
    for (int depth = 1; depth > 0; ++at_) {
      if (at_ == end_) {
        return false;
      }
      if (*at_ == '\\') {
        if (++at_ == end_) {
          return false;
        }
      } else if (*at_ == '(') {
        ++depth;
      } else if (*at_ == ')') {
        --depth;
      }
    }
    return true;
  }

  // After the opening bracket; that of a dictionary is passed over alone.
  bool PassHexString() {
    if (at_ != end_ && *at_ == '<') {
      ++at_;
      return true;
    }
    const std::string_view rest(at_, static_cast<std::size_t>(end_ - at_));
    const std::size_t close = rest.find('>');
    at_ += close == std::string_view::npos ? rest.size() : close + 1;
    return close != std::string_view::npos;
  }

  // `at_` is behind the slash.
  std::string_view PassName() {
    const std::size_t size = PassRegular().size() + 1;
    return {at_ - size, size};
  }

  std::string_view PassRegular() {
    const char* const begin = at_;
    while (at_ != end_ && IsRegular(*at_)) {
      ++at_;
    }
    return {begin, static_cast<std::size_t>(at_ - begin)};
  }

  void PassSpace() {
    while (at_ != end_ && IsSpace(*at_)) {
      ++at_;
    }
  }

  bool PassDictionary() {
    int depth = 0;
    while (at_ != end_) {
      const char c = *at_++;
      const bool is_twice = at_ != end_ && *at_ == c;
      switch (c) {
        case '<':
          depth += is_twice ? 1 : 0;
          if (!PassHexString()) {
            return false;
          }
          break;
        case '>':
          if (!is_twice) {
            return false;
          }
          ++at_;
          if (--depth == 0) {
            return true;
          }
          break;
        case '(':
          if (!PassString()) {
            return false;
          }
          break;
        case '%':
          return false;
        default:
          break;
      }
    }
    return false;
  }

  bool IsAtDictionary() const { return end_ - at_ >= 2 && at_[0] == '<' && at_[1] == '<'; }

  static bool IsNumber(std::string_view word) {
    return IsDigit(word[0]) || word[0] == '-' || word[0] == '.' || word[0] == '+';
  }

  // After the slash.
  bool TakeName() {
    const std::string_view name = PassName();
    PassSpace();
    std::string_view second;
    bool has_properties = false;
    if (IsAtDictionary()) {
      has_properties = true;
      if (!PassDictionary()) {
        return false;
      }
    } else if (at_ != end_ && *at_ == '/') {
      has_properties = true;
      ++at_;
      second = PassName();
    }
    PassSpace();
    std::string_view word = PassRegular();
    while (!word.empty() && !has_properties && IsNumber(word)) {
      PassSpace();
      word = PassRegular();
    }
    return TakeOperator(word, name, second, has_properties);
  }

  bool TakeOperator(std::string_view word, std::string_view name, std::string_view second,
                    bool has_properties) {
    const std::uint32_t code = word.size() <= kLongestOperator ? OperatorCode(word) : 0;
    if (code == OperatorCode("BMC") || code == OperatorCode("MP") || code == OperatorCode("ri")) {
      return !has_properties;
    }
    const auto category = CategoryOf(code);
    if (!category || has_properties != (*category == ResourceCategory::kProperties)) {
      return false;
    }
    names_->emplace_back(*category, name);
    if (!second.empty()) {
      names_->emplace_back(*category, second);
    }
    return true;
  }

  const char* at_;
  const char* end_;
  std::vector<ScannedName>* names_;
};

}  // namespace

std::optional<ResourceCategory> CategoryOf(std::uint32_t operator_code) {
  switch (operator_code) {
    case OperatorCode("Tf"):
      return ResourceCategory::kFont;
    case OperatorCode("Do"):
      return ResourceCategory::kXObject;
    case OperatorCode("gs"):
      return ResourceCategory::kExtGState;
    case OperatorCode("cs"):
    case OperatorCode("CS"):
      return ResourceCategory::kColorSpace;
    case OperatorCode("scn"):
    case OperatorCode("SCN"):
    case OperatorCode("sc"):
    case OperatorCode("SC"):
      return ResourceCategory::kPattern;
    case OperatorCode("sh"):
      return ResourceCategory::kShading;
    case OperatorCode("BDC"):
    case OperatorCode("DP"):
      return ResourceCategory::kProperties;
    default:
      return std::nullopt;
  }
}

bool ScanNames(std::string_view content, std::vector<ScannedName>& names) {
  return Scanner(content, names).Scan();
}

}  // namespace TarnixTools::pdf
