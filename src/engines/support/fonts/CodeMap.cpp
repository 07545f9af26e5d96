#include "engines/support/fonts/CodeMap.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "pdf/syntax/Lexer.h"

namespace TarnixTools::engines::fonts {

using pdf::Token;

namespace {

constexpr std::size_t kMaxCodeBytes = 4;
constexpr std::size_t kMaxRanges = 100'000;
constexpr std::size_t kMaxSpaces = 100;
constexpr std::size_t kMaxOperands = 3 * kMaxRanges;
constexpr std::uint32_t kMaxCid = 0xFFFF;

std::uint32_t NumberOf(std::string_view bytes) {
  std::uint32_t number = 0;
  for (const char byte : bytes) {
    number = number << 8 | static_cast<unsigned char>(byte);
  }
  return number;
}

}  // namespace

// Operands are kept until the operator comes that takes them.
class CodeMap::Reader {
 public:
  std::optional<CodeMap> Read(std::string_view cmap) {
    pdf::Lexer lexer(cmap, true);
    for (Token token = lexer.Next(); token.kind != Token::Kind::kEnd && is_sure_;
         token = lexer.Next()) {
      Take(token);
    }
    is_sure_ = is_sure_ && !map_.spaces_.empty() && map_.SortRanges();
    return is_sure_ ? std::optional(std::move(map_)) : std::nullopt;
  }

 private:
  struct Operand {
    bool is_code = false;
    std::uint32_t value = 0;
  };

  void Take(const Token& token) {
    if (token.kind == Token::Kind::kHexString || token.kind == Token::Kind::kString) {
      TakeCode(token);
    } else if (token.kind == Token::Kind::kInteger) {
      const bool is_cid = token.integer >= 0 && token.integer <= std::int64_t{kMaxCid};
      Keep({false, is_cid ? static_cast<std::uint32_t>(token.integer) : 0});
    } else if (token.kind == Token::Kind::kKeyword) {
      Run(token.text);
    }
  }

  void TakeCode(const Token& token) {
    std::string bytes;
    pdf::DecodeString(token, bytes);
    sizes_.push_back(bytes.size());
    Keep({true, bytes.size() <= kMaxCodeBytes ? NumberOf(bytes) : 0});
  }

  void Keep(Operand operand) {
    operands_.push_back(operand);
    is_sure_ = operands_.size() <= kMaxOperands;
  }

  void Run(std::string_view keyword) {
    if (keyword == "endcodespacerange") {
      AddSpaces();
    } else if (keyword == "endcidrange") {
      AddRanges(3);
    } else if (keyword == "endcidchar") {
      AddRanges(2);
    } else if (keyword == "usecmap") {
      is_sure_ = false;
    }
    operands_.clear();
    sizes_.clear();
  }

  void AddSpaces() {
    const std::size_t size = sizes_.empty() ? 0 : sizes_.front();
    const bool is_first = map_.spaces_.empty();
    is_sure_ = size >= 1 && size <= kMaxCodeBytes && operands_.size() % 2 == 0 &&
               sizes_.size() == operands_.size() &&
               std::count(sizes_.begin(), sizes_.end(), size) ==
                   static_cast<std::ptrdiff_t>(sizes_.size()) &&
               (is_first || map_.code_bytes_ == static_cast<int>(size)) &&
               map_.spaces_.size() + operands_.size() / 2 <= kMaxSpaces;
    for (std::size_t i = 0; is_sure_ && i + 1 < operands_.size(); i += 2) {
      map_.code_bytes_ = static_cast<int>(size);
      map_.spaces_.push_back({operands_[i].value, operands_[i + 1].value, 0});
    }
  }

  // Of three operands each: first code, last code, identifier; of two: code, identifier.
  void AddRanges(std::size_t step) {
    is_sure_ = operands_.size() % step == 0 &&
               map_.ranges_.size() + operands_.size() / step <= kMaxRanges &&
               std::all_of(sizes_.begin(), sizes_.end(), [this](std::size_t size) {
                 return size == static_cast<std::size_t>(map_.code_bytes_);
               });
    for (std::size_t i = 0; is_sure_ && i < operands_.size(); i += step) {
      const Operand& first = operands_[i];
      const Operand& last = operands_[i + step - 2];
      const Operand& cid = operands_[i + step - 1];
      is_sure_ = first.is_code && last.is_code && !cid.is_code && first.value <= last.value;
      map_.ranges_.push_back({first.value, last.value, cid.value});
    }
  }

  CodeMap map_ = MakeEmpty();
  std::vector<Operand> operands_;
  std::vector<std::size_t> sizes_;  // in bytes, of those that are codes
  bool is_sure_ = true;

  static CodeMap MakeEmpty() {
    CodeMap map(0);
    map.is_identity_ = false;
    return map;
  }
};

std::optional<CodeMap> CodeMap::Read(std::string_view cmap) {
  return Reader().Read(cmap);
}

bool CodeMap::SortRanges() {
  std::sort(ranges_.begin(), ranges_.end(),
            [](const Range& a, const Range& b) { return a.first < b.first; });
  const auto overlap =
      std::adjacent_find(ranges_.begin(), ranges_.end(),
                         [](const Range& a, const Range& b) { return b.first <= a.last; });
  return overlap == ranges_.end();
}

// Each byte has to be within its own bounds.
bool CodeMap::HasCode(std::uint32_t code) const {
  return spaces_.empty() || std::any_of(spaces_.begin(), spaces_.end(), [&](const Range& space) {
           for (int shift = 8 * (code_bytes_ - 1); shift >= 0; shift -= 8) {
             const std::uint32_t byte = code >> shift & 0xFFU;
             if (byte < (space.first >> shift & 0xFFU) || byte > (space.last >> shift & 0xFFU)) {
               return false;
             }
           }
           return true;
         });
}

bool CodeMap::Split(std::string_view bytes, std::vector<std::uint32_t>& codes) const {
  const auto size = static_cast<std::size_t>(code_bytes_);
  if (bytes.size() % size != 0) {
    return false;
  }
  for (std::size_t i = 0; i < bytes.size(); i += size) {
    const std::uint32_t code = NumberOf(bytes.substr(i, size));
    if (!HasCode(code)) {
      return false;
    }
    codes.push_back(code);
  }
  return true;
}

std::uint32_t CodeMap::CidOf(std::uint32_t code) const {
  if (is_identity_) {
    return code;
  }
  const auto after =
      std::upper_bound(ranges_.begin(), ranges_.end(), code,
                       [](std::uint32_t value, const Range& range) { return value < range.first; });
  if (after == ranges_.begin() || code > std::prev(after)->last) {
    return 0;
  }
  const Range& range = *std::prev(after);
  return std::min(range.cid + (code - range.first), kMaxCid);
}

}  // namespace TarnixTools::engines::fonts
