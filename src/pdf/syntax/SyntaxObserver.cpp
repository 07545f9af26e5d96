#include "pdf/syntax/SyntaxObserver.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

// Follows the tokens of a value through its dictionaries and arrays.
class TokenTeller {
 public:
  TokenTeller(std::uint64_t offset, SyntaxObserver& observer)
      : offset_(offset), observer_(&observer) {}

  void Tell(const Token& token, std::size_t end) {
    const std::uint64_t offset = offset_ + end - token.text.size();
    const bool is_key = token.kind == Token::Kind::kName && AwaitsKey();
    observer_->OnToken({offset, token, is_key});
    switch (token.kind) {
      case Token::Kind::kDictionaryOpen:
      case Token::Kind::kArrayOpen:
        Open(token.kind == Token::Kind::kDictionaryOpen);
        break;
      case Token::Kind::kDictionaryClose:
      case Token::Kind::kArrayClose:
        Close(token.kind == Token::Kind::kDictionaryClose);
        break;
      default:
        if (is_key) {
          TakeKey(token, offset);
        } else {
          TakeValue();
        }
        break;
    }
  }

 private:
  struct Container {
    bool is_dictionary = false;
    bool has_key = false;  // whose value is yet to come
    std::unordered_set<std::string> keys;
  };

  void Open(bool is_dictionary) {
    TakeValue();
    if (containers_.size() >= static_cast<std::size_t>(limits::kMaxNesting)) {
      ++skipped_depth_;
      return;
    }
    containers_.emplace_back();
    containers_.back().is_dictionary = is_dictionary;
  }

  // As the parser takes it: ">>" ends an array that was left open inside a dictionary, and a stray
  // "]" is passed over.
  void Close(bool is_dictionary) {
    if (skipped_depth_ > 0) {
      --skipped_depth_;
      return;
    }
    if (is_dictionary && containers_.size() > 1 && !containers_.back().is_dictionary &&
        containers_[containers_.size() - 2].is_dictionary) {
      containers_.pop_back();
    }
    if (!containers_.empty() && containers_.back().is_dictionary == is_dictionary) {
      containers_.pop_back();
    }
  }

  bool AwaitsKey() const {
    return skipped_depth_ == 0 && !containers_.empty() && containers_.back().is_dictionary &&
           !containers_.back().has_key;
  }

  void TakeKey(const Token& token, std::uint64_t offset) {
    std::string name;
    DecodeName(token.text, name);
    Container& dictionary = containers_.back();
    dictionary.has_key = true;
    const auto [place, is_new] = dictionary.keys.insert(std::move(name));
    if (!is_new) {
      observer_->OnRepeatedKey({offset, *place});
    }
  }

  // The second number of a reference, and its R, come when a key is awaited; they change nothing.
  void TakeValue() {
    if (!containers_.empty()) {
      containers_.back().has_key = false;
    }
  }

  std::uint64_t offset_;
  SyntaxObserver* observer_;
  std::vector<Container> containers_;
  std::size_t skipped_depth_ = 0;  // containers opened beyond the nesting limit
};

}  // namespace

void ObserveTokens(std::string_view text, std::uint64_t offset, SyntaxObserver& observer) {
  TokenTeller teller(offset, observer);
  Lexer lexer(text, true);
  for (Token token = lexer.Next(); token.kind != Token::Kind::kEnd; token = lexer.Next()) {
    teller.Tell(token, lexer.position());
  }
}

HexSyntax HexSyntaxOf(const Token& token) {
  HexSyntax syntax;
  std::string_view text = token.text.substr(1);
  if (text.ends_with('>')) {
    text.remove_suffix(1);
  }
  for (const char c : text) {
    if (HexValue(c) >= 0) {
      ++syntax.digits;
    } else if (!IsSpace(c)) {
      ++syntax.others;
    }
  }
  return syntax;
}

bool IsLineEnd(std::string_view spacing) {
  return spacing == "\r\n" || spacing == "\n" || spacing == "\r";
}

bool StartsWithLineEnd(std::string_view spacing) {
  return spacing.starts_with('\n') || spacing.starts_with('\r');
}

bool EndsWithLineEnd(std::string_view spacing) {
  return spacing.ends_with('\n') || spacing.ends_with('\r');
}

}  // namespace TarnixTools::pdf
