#include "pdf/write/TokenCopier.h"

#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

Token TokenCopier::Fetch(Lexer& lexer) {
  if (ahead_count_ == 0) {
    return lexer.Next();
  }
  const Token token = ahead_[0];
  ahead_[0] = ahead_[1];
  --ahead_count_;
  return token;
}

TokenCopier::Status TokenCopier::Copy(Lexer& lexer, StringTransform* strings, std::string& out) {
  frames_.clear();
  ahead_count_ = 0;
  length_ = Object();
  has_filter_ = is_dictionary_ = next_is_type_ = false;
  type_.clear();
  for (;;) {
    const Token token = Fetch(lexer);
    if (token.kind == Token::Kind::kMore) {
      return Status::kMore;
    }
    const bool opens =
        token.kind == Token::Kind::kArrayOpen || token.kind == Token::Kind::kDictionaryOpen;
    if (frames_.empty() && !opens) {
      return Status::kIrregular;
    }
    if (!frames_.empty() && frames_.back().wants_key &&
        token.kind != Token::Kind::kDictionaryClose) {
      // A signature's contents are not encrypted: which of its strings they are, the parser knows.
      if (!TakeKey(token, out) || (strings != nullptr && token.text == "/ByteRange")) {
        return Status::kIrregular;
      }
      Status status = Status::kDone;
      if (frames_.size() == 1 && token.text == "/Length") {
        status = CopyLength(lexer);
      } else if (frames_.size() == 1 && ChangesKey(token.text.substr(1))) {
        status = CopyStructureKey(lexer, token.text, out);
      }
      if (status != Status::kDone) {
        return status;
      }
      continue;
    }
    switch (token.kind) {
      case Token::Kind::kArrayOpen:
      case Token::Kind::kDictionaryOpen:
        if (frames_.size() >= static_cast<std::size_t>(limits::kMaxNesting)) {
          return Status::kIrregular;
        }
        out += token.text;
        next_is_type_ = false;
        is_dictionary_ =
            is_dictionary_ || (frames_.empty() && token.kind == Token::Kind::kDictionaryOpen);
        frames_.push_back({token.kind == Token::Kind::kDictionaryOpen,
                           token.kind == Token::Kind::kDictionaryOpen});
        continue;
      case Token::Kind::kArrayClose:
      case Token::Kind::kDictionaryClose: {
        const bool closes_dictionary = token.kind == Token::Kind::kDictionaryClose;
        if (frames_.back().is_dictionary != closes_dictionary ||
            (closes_dictionary && !frames_.back().wants_key)) {
          return Status::kIrregular;
        }
        out += token.text;
        frames_.pop_back();
        if (frames_.empty()) {
          return Status::kDone;
        }
        break;
      }
      case Token::Kind::kInteger: {
        const Status status = CopyInteger(lexer, token, out);
        if (status != Status::kDone) {
          return status;
        }
        break;
      }
      case Token::Kind::kReal:
        AppendToken(out, token.text);
        break;
      case Token::Kind::kName:
        if (next_is_type_) {
          type_ = token.text.substr(1);
          if (leaves_resources_ && IsPageType(type_)) {
            return Status::kIrregular;
          }
        }
        out += token.text;
        break;
      case Token::Kind::kString:
      case Token::Kind::kHexString:
        CopyString(token, strings, out);
        break;
      case Token::Kind::kKeyword:
        if (token.text != "null" && token.text != "true" && token.text != "false") {
          return Status::kIrregular;
        }
        AppendToken(out, token.text);
        break;
      default:
        return Status::kIrregular;
    }
    next_is_type_ = false;
    if (frames_.back().is_dictionary) {
      frames_.back().wants_key = true;
    }
  }
}

bool TokenCopier::TakeKey(const Token& token, std::string& out) {
  if (token.kind != Token::Kind::kName) {
    return false;
  }
  const bool is_outermost = frames_.size() == 1;
  if (is_outermost && (token.text == "/Length" || ChangesKey(token.text.substr(1)))) {
    return true;  // CopyLength or CopyStructureKey goes on
  }
  // Names with escapes are rare, and may be anything.
  if (leaves_resources_ && is_outermost &&
      (token.text == "/Resources" || token.text.find('#') != std::string_view::npos)) {
    return false;
  }
  has_filter_ = has_filter_ || (is_outermost && token.text == "/Filter");
  next_is_type_ = is_outermost && token.text == "/Type";
  frames_.back().entry_start = out.size();
  out += token.text;
  frames_.back().wants_key = false;
  return true;
}

// Reads the value of an outermost /Length without copying it.
TokenCopier::Status TokenCopier::CopyLength(Lexer& lexer) {
  const Token first = Fetch(lexer);
  if (first.kind == Token::Kind::kMore) {
    return Status::kMore;
  }
  if (first.kind != Token::Kind::kInteger) {
    return Status::kIrregular;
  }
  length_ = Object::Integer(first.integer);
  const Token second = lexer.Next();
  if (second.kind != Token::Kind::kInteger) {
    ahead_[0] = second;
    ahead_count_ = 1;
    return second.kind == Token::Kind::kMore ? Status::kMore : Status::kDone;
  }
  const Token third = lexer.Next();
  if (third.kind == Token::Kind::kMore) {
    return Status::kMore;
  }
  const bool is_reference = third.kind == Token::Kind::kKeyword && third.text == "R" &&
                            first.integer >= 1 && first.integer <= limits::kMaxObjectNumber;
  if (!is_reference) {
    return Status::kIrregular;
  }
  length_ = Object::Ref({static_cast<std::uint32_t>(first.integer), 0});
  return Status::kDone;
}

TokenCopier::Status TokenCopier::CopyStructureKey(Lexer& lexer, std::string_view key,
                                                  std::string& out) {
  const Token value = Fetch(lexer);
  if (value.kind != Token::Kind::kInteger) {
    return value.kind == Token::Kind::kMore ? Status::kMore : Status::kIrregular;
  }
  const Token next = lexer.Next();
  if (next.kind == Token::Kind::kMore || next.kind == Token::Kind::kInteger) {
    return next.kind == Token::Kind::kMore ? Status::kMore : Status::kIrregular;
  }
  ahead_[0] = next;
  ahead_count_ = 1;
  AppendStructureKey(out, key.substr(1), value.integer);
  return Status::kDone;
}

void TokenCopier::AppendStructureKey(std::string& out, std::string_view name, std::int64_t key) {
  if (key >= 0 && key < structure_key_count_) {
    AppendName(out, name);
    AppendInteger(out, key + structure_key_shift_);
    structure_key_ = {key, name == "StructParents"};
  }
}

// An integer, or the start of a reference.
TokenCopier::Status TokenCopier::CopyInteger(Lexer& lexer, const Token& token, std::string& out) {
  while (ahead_count_ < 2) {
    if (ahead_count_ == 1 && ahead_[0].kind != Token::Kind::kInteger) {
      break;
    }
    const Token next = lexer.Next();
    if (next.kind == Token::Kind::kMore) {
      return Status::kMore;
    }
    ahead_[ahead_count_++] = next;
  }
  const bool is_reference = ahead_count_ == 2 && ahead_[0].kind == Token::Kind::kInteger &&
                            ahead_[1].kind == Token::Kind::kKeyword && ahead_[1].text == "R";
  if (!is_reference) {
    AppendToken(out, token.text);
    return Status::kDone;
  }
  const std::int64_t generation = ahead_[0].integer;
  ahead_count_ = 0;
  if (token.integer < 1 || token.integer > limits::kMaxObjectNumber || generation < 0 ||
      generation > 65535) {
    return Status::kIrregular;
  }
  const std::uint32_t mapped = references_->Map(static_cast<std::uint32_t>(token.integer));
  if (mapped == ReferenceMap::kLeftOut) {
    if (frames_.back().is_dictionary) {
      out.resize(frames_.back().entry_start);
    }
  } else if (mapped == 0) {
    AppendToken(out, "null");
  } else {
    AppendReference(out, mapped);
  }
  return Status::kDone;
}

void TokenCopier::CopyString(const Token& token, StringTransform* strings, std::string& out) {
  if (strings == nullptr) {
    out += token.text;
    return;
  }
  text_.clear();
  DecodeString(token, text_);
  strings->Apply(text_);
  AppendString(out, text_, token.kind == Token::Kind::kHexString);
}

}  // namespace TarnixTools::pdf
