#include "pdf/content/ContentReader.h"

#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {

namespace {

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsValueKeyword(std::string_view text) {
  return text == "true" || text == "false" || text == "null";
}

// Whether a string at the very end of the content has its closing delimiter.
bool IsClosed(const Token& token) {
  if (token.kind == Token::Kind::kHexString) {
    return token.text.back() == '>';
  }
  int depth = 0;
  for (std::size_t i = 0; i < token.text.size(); ++i) {
    const char c = token.text[i];
    if (c == '\\') {
      ++i;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')' && --depth == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::vector<Object> ParseOperands(std::string_view operands, Arena& arena) {
  Lexer lexer(operands, true);
  Parser parser(arena);
  std::vector<Object> values;
  Object value;
  while (parser.Parse(lexer, nullptr, value) == Parser::Status::kDone) {
    values.push_back(value);
  }
  return values;
}

bool ContentReader::Next(Operation& operation) {
  operation = {};
  open_.clear();
  lexer_.SkipSpace();
  const std::size_t start = lexer_.position();
  do {
    SkipNumbers(operation);
    const std::size_t position = lexer_.position();
    if (TakeOperator(operation)) {
      operation.operands = content_.substr(start, position - start);
      if (operation.code == OperatorCode("BI")) {
        ReadInlineImage(operation);
      }
      return true;
    }
  } while (lexer_.SkipSpace());
  is_damaged_ = is_damaged_ || !open_.empty();
  has_operands_left_ = has_operands_left_ || operation.operand_count > 0;
  return false;
}

// False for any other token, which is passed over.
bool ContentReader::TakeOperator(Operation& operation) {
  operation.name = ShortWord();
  if (!operation.name.empty()) {
    is_damaged_ = is_damaged_ || !open_.empty();
  } else {
    const Token token = lexer_.Next();
    if (token.kind == Token::Kind::kEnd || !TakeToken(token, operation)) {
      return false;
    }
    operation.name = token.text;
  }
  operation.code = OperatorCode(operation.name);
  return true;
}

// Most of a content stream is numbers, whose values do not matter here.
void ContentReader::SkipNumbers(Operation& operation) {
  const std::string_view rest = lexer_.rest();
  const char* at = rest.data();
  const char* const end = at + rest.size();
  const char* passed = nullptr;
  std::size_t count = 0;
  for (;; ++count) {
    while (at != end && IsSpace(*at)) {
      ++at;
    }
    passed = at;
    if (at != end && *at == '-') {
      ++at;
    }
    const char* const first = at;
    while (at != end && (IsDigit(*at) || *at == '.')) {
      ++at;
    }
    if (at == first || (at != end && IsRegular(*at))) {
      break;
    }
  }
  operation.operand_count += open_.empty() ? count : 0;
  lexer_.set_position(lexer_.position() + static_cast<std::size_t>(passed - rest.data()));
}

// Passes over a word of at most three letters, which cannot be but an operator. Empty for anything
// else.
std::string_view ContentReader::ShortWord() {
  const std::string_view rest = lexer_.rest();
  std::size_t size = 0;
  while (size < rest.size() && IsRegular(rest[size])) {
    if (!IsLetter(rest[size]) || size == 3) {
      return {};
    }
    ++size;
  }
  lexer_.set_position(lexer_.position() + size);
  return rest.substr(0, size);
}

// True for an operator.
bool ContentReader::TakeToken(const Token& token, Operation& operation) {
  switch (token.kind) {
    case Token::Kind::kArrayOpen:
      Open('[', operation);
      return false;
    case Token::Kind::kDictionaryOpen:
      Open('<', operation);
      return false;
    case Token::Kind::kArrayClose:
      Close('[');
      return false;
    case Token::Kind::kDictionaryClose:
      Close('<');
      return false;
    case Token::Kind::kString:
    case Token::Kind::kHexString:
      is_damaged_ = is_damaged_ || (lexer_.rest().empty() && !IsClosed(token));
      break;
    case Token::Kind::kKeyword:
      if (!IsRegular(token.text[0])) {  // a delimiter that opens nothing
        is_damaged_ = true;
        return false;
      }
      if (IsValueKeyword(token.text)) {
        break;
      }
      is_damaged_ = is_damaged_ || !open_.empty();
      return true;
    default:
      break;
  }
  CountOperand(operation);
  return false;
}

void ContentReader::CountOperand(Operation& operation) const {
  operation.operand_count += open_.empty() ? 1 : 0;
}

void ContentReader::Open(char kind, Operation& operation) {
  CountOperand(operation);
  if (open_.size() >= static_cast<std::size_t>(limits::kMaxNesting)) {
    is_damaged_ = true;
  } else {
    open_ += kind;
  }
}

void ContentReader::Close(char kind) {
  if (open_.empty() || open_.back() != kind) {
    is_damaged_ = true;
  } else {
    open_.pop_back();
  }
}

// After BI. An image without ID, or without an end, leaves an operation without data.
void ContentReader::ReadInlineImage(Operation& operation) {
  const std::size_t begin = lexer_.position();
  for (;;) {
    const std::size_t position = lexer_.position();
    const Token token = lexer_.Next();
    if (token.kind == Token::Kind::kEnd) {
      is_damaged_ = true;
      return;
    }
    if (token.kind != Token::Kind::kKeyword || IsValueKeyword(token.text)) {
      continue;
    }
    if (token.text != "ID") {
      is_damaged_ = true;
      lexer_.set_position(position);
      return;
    }
    operation.image_entries = content_.substr(begin, position - begin);
    break;
  }
  arena_.Reset();
  const auto extent =
      images_.Measure(ParseInlineEntries(operation.image_entries, arena_), lexer_.position());
  if (!extent) {
    is_damaged_ = true;
    lexer_.set_position(content_.size());
    return;
  }
  operation.image_data = content_.substr(extent->begin, extent->end - extent->begin);
  lexer_.set_position(extent->after);
}

}  // namespace TarnixTools::pdf
