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

// Whether each byte is within its own bounds.
bool IsWithin(std::uint32_t code, std::uint32_t first, std::uint32_t last, int bytes) {
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
    const std::uint32_t byte = code >> shift & 0xFFU;
    if (byte < (first >> shift & 0xFFU) || byte > (last >> shift & 0xFFU)) {
      return false;
    }
  }
  return true;
}

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
  // find: for the map that this one builds on; null where codes of one length are wanted, by no other map.
  explicit Reader(const MapFinder* find) : find_(find) {}

  std::optional<CodeMap> Read(std::string_view cmap) {
    pdf::Lexer lexer(cmap, true);
    for (Token token = lexer.Next(); token.kind != Token::Kind::kEnd && is_sure_;
         token = lexer.Next()) {
      Take(token);
    }
    is_sure_ = is_sure_ && !map_.spaces().empty() && map_.SortRanges();
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
    } else if (token.kind == Token::Kind::kName) {
      last_name_.clear();
      pdf::DecodeName(token.text, last_name_);
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
      BuildOn();
    }
    operands_.clear();
    sizes_.clear();
  }

  void BuildOn() {
    map_.base_ = find_ != nullptr && map_.base_ == nullptr ? (*find_)(last_name_) : nullptr;
    is_sure_ = map_.base_ != nullptr;
    map_.code_bytes_ = is_sure_ ? std::max(map_.code_bytes_, map_.base_->code_bytes_) : 0;
  }

  // Two of one size each.
  void AddSpaces() {
    is_sure_ = !operands_.empty() && operands_.size() % 2 == 0 &&
               sizes_.size() == operands_.size() &&
               map_.spaces_.size() + operands_.size() / 2 <= kMaxSpaces;
    for (std::size_t i = 0; is_sure_ && i + 1 < operands_.size(); i += 2) {
      const auto size = static_cast<int>(std::min(sizes_[i], kMaxCodeBytes + 1));
      const bool is_first = map_.spaces_.empty();
      is_sure_ = sizes_[i] == sizes_[i + 1] && size >= 1 &&
                 size <= static_cast<int>(kMaxCodeBytes) &&
                 (find_ != nullptr || is_first || map_.code_bytes_ == size);
      map_.code_bytes_ = std::max(map_.code_bytes_, size);
      map_.spaces_.push_back({operands_[i].value, operands_[i + 1].value, 0, size});
    }
  }

  bool HasRightSize(std::size_t size) const {
    return find_ != nullptr ? size >= 1 && size <= kMaxCodeBytes
                            : size == static_cast<std::size_t>(map_.code_bytes_);
  }

  // Of three operands each: first code, last code, identifier; of two: code, identifier.
  void AddRanges(std::size_t step) {
    is_sure_ = operands_.size() % step == 0 &&
               map_.ranges_.size() + operands_.size() / step <= kMaxRanges &&
               std::all_of(sizes_.begin(), sizes_.end(),
                           [this](std::size_t size) { return HasRightSize(size); });
    for (std::size_t i = 0; is_sure_ && i < operands_.size(); i += step) {
      const Operand& first = operands_[i];
      const Operand& last = operands_[i + step - 2];
      const Operand& cid = operands_[i + step - 1];
      is_sure_ = first.is_code && last.is_code && !cid.is_code && first.value <= last.value;
      if (is_sure_) {
        map_.ranges_.push_back({first.value, last.value, cid.value, 0});
      }
    }
  }

  const MapFinder* find_;
  CodeMap map_ = MakeEmpty();
  std::string last_name_;
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
  return Reader(nullptr).Read(cmap);
}

std::optional<CodeMap> CodeMap::ReadAny(std::string_view cmap, const MapFinder& find) {
  return Reader(&find).Read(cmap);
}

CodeMap CodeMap::SameAs(std::shared_ptr<const CodeMap> map) {
  CodeMap same(map->code_bytes_);
  same.is_identity_ = false;
  same.base_ = std::move(map);
  return same;
}

bool CodeMap::SortRanges() {
  std::sort(ranges_.begin(), ranges_.end(),
            [](const Range& a, const Range& b) { return a.first < b.first; });
  const auto overlap =
      std::adjacent_find(ranges_.begin(), ranges_.end(),
                         [](const Range& a, const Range& b) { return b.first <= a.last; });
  return overlap == ranges_.end();
}

// Those of the map that this one builds on, where it has none. A base has all of its own.
const std::vector<CodeMap::Range>& CodeMap::spaces() const {
  const CodeMap* map = this;
  while (map->spaces_.empty() && map->base_ != nullptr) {
    map = map->base_.get();
  }
  return map->spaces_;
}

bool CodeMap::HasCode(std::uint32_t code, int bytes) const {
  return std::any_of(spaces().begin(), spaces().end(), [&](const Range& space) {
    return space.bytes == bytes && IsWithin(code, space.first, space.last, bytes);
  });
}

// Of the first code; 0 where there is none.
int CodeMap::CodeSizeAt(std::string_view bytes) const {
  if (spaces().empty()) {
    return static_cast<int>(bytes.size()) >= code_bytes_ ? code_bytes_ : 0;
  }
  for (int size = 1; size <= code_bytes_ && static_cast<std::size_t>(size) <= bytes.size();
       ++size) {
    if (HasCode(NumberOf(bytes.substr(0, static_cast<std::size_t>(size))), size)) {
      return size;
    }
  }
  return 0;
}

bool CodeMap::Split(std::string_view bytes, std::vector<std::uint32_t>& codes) const {
  while (!bytes.empty()) {
    const auto size = static_cast<std::size_t>(CodeSizeAt(bytes));
    if (size == 0) {
      return false;
    }
    codes.push_back(NumberOf(bytes.substr(0, size)));
    bytes.remove_prefix(size);
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
    return base_ != nullptr ? base_->CidOf(code) : 0;
  }
  const Range& range = *std::prev(after);
  return std::min(range.cid + (code - range.first), kMaxCid);
}

}  // namespace TarnixTools::engines::fonts
