#include "engines/support/fonts/CMapFile.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "pdf/syntax/Lexer.h"

namespace TarnixTools::engines::fonts {

using pdf::Token;

namespace {

constexpr std::size_t kMaxTexts = 200'000;
constexpr std::size_t kMaxOperands = 200'000;
constexpr std::size_t kMaxCodeBytes = 4;
constexpr std::size_t kMaxTextBytes = 512;

std::uint32_t NumberOf(std::string_view bytes) {
  std::uint32_t number = 0;
  for (const char byte : bytes.substr(0, kMaxCodeBytes)) {
    number = number << 8 | static_cast<unsigned char>(byte);
  }
  return number;
}

// A lone byte counts as a unit of its own.
std::u16string TextOfBytes(std::string_view bytes) {
  std::u16string text;
  if (bytes.size() == 1) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[0]));
  }
  for (std::size_t i = 0; i + 1 < std::min(bytes.size(), kMaxTextBytes); i += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                  static_cast<unsigned char>(bytes[i + 1]));
  }
  return text;
}

}  // namespace

// Operands are kept until the operator comes that takes them.
class CMapFile::Reader {
 public:
  explicit Reader(CMapFile& map) : map_(&map) {}

  void Read(std::string_view cmap) {
    pdf::Lexer lexer(cmap, true);
    for (Token token = lexer.Next(); token.kind != Token::Kind::kEnd; token = lexer.Next()) {
      if (token.kind == Token::Kind::kKeyword) {
        Run(token.text);
        operands_.clear();
      } else if (operands_.size() < kMaxOperands) {
        operands_.push_back(token);
      }
    }
    Sort();
  }

 private:
  static bool IsString(const Token& token) {
    return token.kind == Token::Kind::kString || token.kind == Token::Kind::kHexString;
  }

  static std::string BytesOf(const Token& token) {
    std::string bytes;
    if (IsString(token)) {
      pdf::DecodeString(token, bytes);
    } else if (token.kind == Token::Kind::kName) {
      pdf::DecodeName(token.text, bytes);
    }
    return bytes;
  }

  void Run(std::string_view keyword) {
    if (keyword == "def") {
      Define();
    } else if (keyword == "usecmap" && !operands_.empty()) {
      map_->used_map_ = BytesOf(operands_.back());
    } else if (keyword == "endcidrange") {
      NoteIdentifiers(3);
    } else if (keyword == "endcidchar") {
      NoteIdentifiers(2);
    } else if (keyword == "beginbfchar" || keyword == "beginbfrange") {
      stated_count_.reset();
      if (!operands_.empty() && operands_.back().kind == Token::Kind::kInteger) {
        stated_count_ = operands_.back().integer;
      }
    } else if (keyword == "endbfchar") {
      AddCharacters();
    } else if (keyword == "endbfrange") {
      AddRanges();
    }
  }

  // /WMode 1 def, and the entries of a /CIDSystemInfo, one by one or all in a dictionary.
  void Define() {
    for (std::size_t i = 0; i + 1 < operands_.size(); ++i) {
      const Token& key = operands_[i];
      const Token& value = operands_[i + 1];
      if (key.text == "/WMode") {
        map_->write_mode_ = value.integer;
      } else if (key.text == "/Supplement" && value.kind == Token::Kind::kInteger) {
        map_->collection_.supplement = value.integer;
      } else if (key.text == "/Registry" && IsString(value)) {
        map_->collection_.registry = BytesOf(value);
      } else if (key.text == "/Ordering" && IsString(value)) {
        map_->collection_.ordering = BytesOf(value);
      }
    }
  }

  // Of three operands each: first code, last code, identifier; of two: code, identifier.
  void NoteIdentifiers(std::size_t step) {
    for (std::size_t i = 0; i + step <= operands_.size(); i += step) {
      const std::uint32_t first = NumberOf(BytesOf(operands_[i]));
      const std::uint32_t last = NumberOf(BytesOf(operands_[i + step - 2]));
      const std::int64_t cid = operands_[i + step - 1].integer;
      if (cid >= 0 && first <= last) {
        map_->highest_cid_ =
            std::max(map_->highest_cid_, static_cast<std::uint64_t>(cid) + (last - first));
      }
    }
  }

  void AddCharacters() {
    for (std::size_t i = 0; i + 1 < operands_.size(); i += 2) {
      const std::uint32_t code = NumberOf(BytesOf(operands_[i]));
      Add(code, code, operands_[i + 1]);
    }
    CompareCount(operands_.size() / 2);
  }

  void CompareCount(std::size_t count) {
    map_->has_right_counts_ &= !stated_count_ || *stated_count_ == static_cast<std::int64_t>(count);
  }

  // The texts of a range are one that counts up, or an array.
  void AddRanges() {
    std::size_t count = 0;
    for (std::size_t i = 0; i + 2 < operands_.size(); ++i) {
      ++count;
      const std::uint32_t first = NumberOf(BytesOf(operands_[i]));
      const std::uint32_t last = NumberOf(BytesOf(operands_[i + 1]));
      i += 2;
      if (operands_[i].kind != Token::Kind::kArrayOpen) {
        Add(first, last, operands_[i]);
        continue;
      }
      std::uint32_t code = first;
      for (++i; i < operands_.size() && operands_[i].kind != Token::Kind::kArrayClose; ++i) {
        Add(code, code, operands_[i]);
        ++code;
      }
    }
    CompareCount(count);
  }

  void Add(std::uint32_t first, std::uint32_t last, const Token& text) {
    if (first <= last && IsString(text) && map_->texts_.size() < kMaxTexts) {
      map_->texts_.push_back({first, last, TextOfBytes(BytesOf(text))});
    }
  }

  void Sort() {
    std::stable_sort(map_->texts_.begin(), map_->texts_.end(),
                     [](const TextRange& a, const TextRange& b) { return a.first < b.first; });
  }

  CMapFile* map_;
  std::vector<Token> operands_;
  std::optional<std::int64_t> stated_count_;  // of the block of texts that began last
};

CMapFile CMapFile::Read(std::string_view cmap) {
  CMapFile map;
  Reader(map).Read(cmap);
  return map;
}

std::optional<std::u16string> CMapFile::TextOf(std::uint32_t code) const {
  const auto after = std::upper_bound(
      texts_.begin(), texts_.end(), code,
      [](std::uint32_t value, const TextRange& range) { return value < range.first; });
  if (after == texts_.begin() || code > std::prev(after)->last) {
    return std::nullopt;
  }
  const TextRange& range = *std::prev(after);
  std::u16string text = range.text;
  if (!text.empty()) {
    text.back() = static_cast<char16_t>(text.back() + (code - range.first));
  }
  return text;
}

}  // namespace TarnixTools::engines::fonts
