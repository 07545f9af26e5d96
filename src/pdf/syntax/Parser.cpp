#include "pdf/syntax/Parser.h"

#include <algorithm>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

bool EndsObject(std::string_view keyword) {
  return keyword == "endobj" || keyword == "stream" || keyword == "endstream" || keyword == "obj" ||
         keyword == "xref" || keyword == "trailer" || keyword == "startxref";
}

Parser::Status Parser::Parse(Lexer& lexer, StringTransform* transform, Object& value) {
  frames_.clear();
  values_.clear();
  untransformed_.clear();
  transform_ = transform;
  skipped_depth_ = 0;
  is_regular_ = true;
  value = Object();
  for (;;) {
    const std::size_t before = lexer.position();
    const Token token = lexer.Next();
    if (token.kind == Token::Kind::kMore) {
      return Status::kMore;
    }
    if (token.kind == Token::Kind::kEnd ||
        (token.kind == Token::Kind::kKeyword && EndsObject(token.text))) {
      lexer.set_position(before);
      if (frames_.empty() && values_.empty()) {
        return Status::kNothing;
      }
      is_regular_ = is_regular_ && frames_.empty();
      while (!frames_.empty()) {
        CloseTop();
      }
      break;
    }
    if (frames_.empty() && token.kind == Token::Kind::kInteger && values_.empty()) {
      // A lone integer may be the start of a reference; only two more tokens tell.
      Token::Kind kinds[2];
      std::string_view texts[2];
      std::int64_t generation = 0;
      const std::size_t after = lexer.position();
      for (int i = 0; i < 2; ++i) {
        const Token next = lexer.Next();
        kinds[i] = next.kind;
        texts[i] = next.text;
        generation = i == 0 ? next.integer : generation;
        if (next.kind == Token::Kind::kMore) {
          return Status::kMore;
        }
        if (next.kind != (i == 0 ? Token::Kind::kInteger : Token::Kind::kKeyword)) {
          break;
        }
      }
      value = Object::Integer(token.integer);
      if (kinds[0] == Token::Kind::kInteger && kinds[1] == Token::Kind::kKeyword &&
          texts[1] == "R") {
        values_ = {value, Object::Integer(generation)};
        MakeReference();
        value = values_.back();
      } else {
        lexer.set_position(after);
      }
      return Status::kDone;
    }
    if (HandleToken(token, transform)) {
      break;
    }
  }
  value = values_.empty() ? Object() : values_.back();
  return Status::kDone;
}

// True when the outermost value is complete.
bool Parser::HandleToken(const Token& token, StringTransform* transform) {
  switch (token.kind) {
    case Token::Kind::kArrayOpen:
      Open(false);
      return false;
    case Token::Kind::kDictionaryOpen:
      Open(true);
      return false;
    case Token::Kind::kArrayClose:
      Close(false);
      break;
    case Token::Kind::kDictionaryClose:
      Close(true);
      break;
    case Token::Kind::kInteger:
      Add(Object::Integer(token.integer));
      break;
    case Token::Kind::kReal:
      Add(Object::Real(arena_->CopyText(token.text)));
      break;
    case Token::Kind::kOddNumber: {
      is_regular_ = false;
      const std::string number = NormalizedNumber(token.text);
      Add(number.find('.') == std::string::npos ? Object::Integer(std::stoll(number))
                                                : Object::Real(arena_->CopyText(number)));
      break;
    }
    case Token::Kind::kString:
    case Token::Kind::kHexString:
      AddString(token, transform);
      break;
    case Token::Kind::kName:
      AddName(token.text);
      break;
    default:
      AddKeyword(token);
      break;
  }
  return frames_.empty() && skipped_depth_ == 0 && !values_.empty();
}

void Parser::Add(const Object& value) {
  if (skipped_depth_ > 0) {
    return;
  }
  if (values_.size() >= limits::kMaxObjectValues) {
    throw Error(ErrorCode::kLimitExceeded, "an object holds too many values");
  }
  values_.push_back(value);
}

void Parser::AddString(const Token& token, StringTransform* transform) {
  const bool is_hex = token.kind == Token::Kind::kHexString;
  text_.clear();
  DecodeString(token, text_);
  if (transform != nullptr) {
    if (IsContentsOfDictionary()) {
      untransformed_.push_back(values_.size());
    } else {
      transform->Apply(text_);
    }
  }
  Add(Object::String(arena_->CopyText(text_), is_hex));
}

bool Parser::IsContentsOfDictionary() const {
  return skipped_depth_ == 0 && !frames_.empty() && frames_.back().is_dictionary &&
         values_.size() > frames_.back().first && values_.back().IsName("Contents");
}

// Now that the dictionary whose values begin at `first` is whole, it shows whether it is that of a
// signature.
void Parser::TransformContents(std::size_t first) {
  const auto values = std::span<const Object>(values_).subspan(first);
  const bool is_signature = std::any_of(values.begin(), values.end(),
                                        [](const Object& v) { return v.IsName("ByteRange"); });
  for (; !untransformed_.empty() && untransformed_.back() >= first; untransformed_.pop_back()) {
    Object& contents = values_[untransformed_.back()];
    if (!is_signature) {
      text_ = contents.Text();
      transform_->Apply(text_);
      contents = Object::String(arena_->CopyText(text_), contents.is_hex());
    }
  }
}

void Parser::AddName(std::string_view text) {
  if (text.find('#') == std::string_view::npos) {
    Add(Object::Name(arena_->CopyText(text.substr(1))));
    return;
  }
  text_.clear();
  DecodeName(text, text_);
  Add(Object::Name(arena_->CopyText(text_)));
}

void Parser::AddKeyword(const Token& token) {
  if (token.text == "R" && skipped_depth_ == 0) {
    MakeReference();
  } else if (token.text == "true" || token.text == "false") {
    Add(Object::Boolean(token.text == "true"));
  } else {
    is_regular_ = is_regular_ && token.text == "null";
    Add(Object());
  }
}

// The two integers before an R become one value.
void Parser::MakeReference() {
  const std::size_t first = frames_.empty() ? 0 : frames_.back().first;
  if (values_.size() < first + 2 || !values_.back().IsInteger() ||
      !values_[values_.size() - 2].IsInteger()) {
    is_regular_ = false;
    Add(Object());
    return;
  }
  const std::int64_t generation = values_.back().IntegerOr(0);
  values_.pop_back();
  const std::int64_t number = values_.back().IntegerOr(0);
  const bool is_usable =
      number >= 1 && number <= max_reference_ && generation >= 0 && generation <= 65535;
  values_.back() = is_usable ? Object::Ref({static_cast<std::uint32_t>(number),
                                            static_cast<std::uint16_t>(generation)})
                             : Object();
  is_regular_ = is_regular_ && is_usable;
}

void Parser::Open(bool is_dictionary) {
  if (skipped_depth_ > 0 || frames_.size() >= static_cast<std::size_t>(limits::kMaxNesting)) {
    is_regular_ = false;
    if (skipped_depth_ == 0) {
      Add(Object());
    }
    ++skipped_depth_;
    return;
  }
  frames_.push_back({is_dictionary, values_.size()});
}

void Parser::Close(bool is_dictionary) {
  if (skipped_depth_ > 0) {
    --skipped_depth_;
    return;
  }
  if (frames_.empty()) {
    is_regular_ = false;
    Add(Object());
    return;
  }
  if (frames_.back().is_dictionary == is_dictionary) {
    CloseTop();
    return;
  }
  is_regular_ = false;
  // ">>" ends an array that was left open inside a dictionary; a stray "]" is passed over.
  const bool closes_outer =
      is_dictionary && frames_.size() > 1 && frames_[frames_.size() - 2].is_dictionary;
  if (closes_outer || (is_dictionary && frames_.size() == 1)) {
    CloseTop();
    if (closes_outer) {
      CloseTop();
    }
  }
}

void Parser::CloseTop() {
  const Frame frame = frames_.back();
  frames_.pop_back();
  if (frame.is_dictionary && !untransformed_.empty()) {
    TransformContents(frame.first);
  }
  const auto items = std::span<const Object>(values_).subspan(frame.first);
  const Object closed =
      frame.is_dictionary ? BuildDictionary(frame.first) : Object::Array(arena_->CopyItems(items));
  values_.resize(frame.first);
  values_.push_back(closed);
}

Object Parser::BuildDictionary(std::size_t first) {
  entries_.clear();
  for (std::size_t i = first; i < values_.size();) {
    if (!values_[i].IsName()) {
      is_regular_ = false;
      ++i;
      continue;
    }
    const bool has_value = i + 1 < values_.size();
    is_regular_ = is_regular_ && has_value;
    entries_.push_back({values_[i], has_value ? values_[i + 1] : Object()});
    i += 2;
  }
  return Object::Dictionary(arena_->CopyItems(std::span<const DictionaryEntry>(entries_)));
}

}  // namespace TarnixTools::pdf
