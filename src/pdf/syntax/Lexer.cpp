#include "pdf/syntax/Lexer.h"

#include <cstring>

#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

// Digits of an integer that fits 63 bits whatever they are, and of the longest real number.
constexpr std::size_t kMaxIntegerDigits = 18;
constexpr std::size_t kMaxRealDigits = 60;

Token::Kind ClassifyNumber(std::string_view text, std::int64_t& integer) {
  std::size_t i = 0;
  const bool is_negative = text[0] == '-';
  if (text[0] == '-' || text[0] == '+') {
    ++i;
  }
  std::int64_t value = 0;
  std::size_t digits = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i, ++digits) {
    value = digits < kMaxIntegerDigits ? value * 10 + (text[i] - '0') : value;
  }
  if (i == text.size() && digits > 0 && digits <= kMaxIntegerDigits) {
    integer = is_negative ? -value : value;
    return Token::Kind::kInteger;
  }
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && IsDigit(text[i]); ++i) {
      ++digits;
    }
    if (i == text.size() && digits > 0 && digits <= kMaxRealDigits) {
      return Token::Kind::kReal;
    }
  }
  return Token::Kind::kOddNumber;
}

// Digits, signs and points only, and at least one digit or a lone point or sign (which stands for
// zero).
bool LooksLikeNumber(std::string_view text) {
  bool has_digit = false;
  for (char c : text) {
    if (IsDigit(c)) {
      has_digit = true;
    } else if (c != '-' && c != '+' && c != '.') {
      return false;
    }
  }
  return has_digit || text == "." || text == "-" || text == "-." || text == "+";
}

// How much of "17endobj" or "0R" is the number, where white space is missing between the two; 0 for
// any other text.
std::size_t NumberBeforeKeyword(std::string_view text) {
  const std::size_t end = text.find_first_not_of("0123456789+-.");
  if (end == std::string_view::npos) {
    return 0;
  }
  const std::string_view keyword = text.substr(end);
  const bool is_known = keyword == "R" || keyword == "obj" || keyword == "endobj" ||
                        keyword == "stream" || keyword == "endstream";
  return is_known && LooksLikeNumber(text.substr(0, end)) ? end : 0;
}

}  // namespace

bool Lexer::SkipSpace() {
  for (;;) {
    while (at_ != end_ && IsSpace(*at_)) {
      ++at_;
    }
    if (at_ == end_) {
      return false;
    }
    if (*at_ != '%') {
      return true;
    }
    while (at_ != end_ && *at_ != '\n' && *at_ != '\r') {
      ++at_;
    }
  }
}

Token Lexer::Next() {
  if ((at_ == end_ || IsSpace(*at_) || *at_ == '%') && !SkipSpace()) {
    return Ended();
  }
  const char* start = at_++;
  switch (*start) {
    case '/':
      return NextName(start);
    case '(':
      return NextString(start);
    case '[':
      return Make(Token::Kind::kArrayOpen, start);
    case ']':
      return Make(Token::Kind::kArrayClose, start);
    case '<':
    case '>':
      if (at_ == end_ && !is_whole_) {
        at_ = start;
        return Ended();
      }
      if (at_ != end_ && *at_ == *start) {
        ++at_;
        return Make(*start == '<' ? Token::Kind::kDictionaryOpen : Token::Kind::kDictionaryClose,
                    start);
      }
      return *start == '<' ? NextHexString(start) : Make(Token::Kind::kKeyword, start);
    case ')':
    case '{':
    case '}':
      return Make(Token::Kind::kKeyword, start);
    default:
      return NextRegular(start);
  }
}

// The numbers that make up most of a file, in one go: regular ones, with some digits before a point,
// that end within the window. False for all else.
bool Lexer::TakeNumber(const char* start, Token& token) {
  const char* at = start + (*start == '-' || *start == '+' ? 1 : 0);
  const char* const digits = at;
  const char* const last =
      end_ - at > static_cast<std::ptrdiff_t>(kMaxIntegerDigits) ? at + kMaxIntegerDigits : end_;
  std::int64_t value = 0;
  for (; at != last && IsDigit(*at); ++at) {
    value = value * 10 + (*at - '0');
  }
  if (at == end_ || at == digits) {
    return false;
  }
  token.kind = Token::Kind::kInteger;
  if (*at == '.') {
    token.kind = Token::Kind::kReal;
    do {
      ++at;
    } while (at != end_ && IsDigit(*at));
    if (at == end_ || at - digits > static_cast<std::ptrdiff_t>(kMaxRealDigits)) {
      return false;
    }
  }
  if (IsRegular(*at)) {
    return false;
  }
  at_ = at;
  token.text = {start, static_cast<std::size_t>(at - start)};
  token.integer = token.kind != Token::Kind::kInteger ? 0 : *start == '-' ? -value : value;
  return true;
}

Token Lexer::NextRegular(const char* start) {
  const char first = *start;
  const bool may_be_number = IsDigit(first) || first == '-' || first == '+' || first == '.';
  Token token;
  if (may_be_number && TakeNumber(start, token)) {
    return token;
  }
  while (at_ != end_ && IsRegular(*at_)) {
    ++at_;
  }
  if (at_ == end_ && !is_whole_) {
    at_ = start;
    return Ended();
  }
  token = Make(Token::Kind::kKeyword, start);
  if (may_be_number) {
    if (LooksLikeNumber(token.text)) {
      token.kind = ClassifyNumber(token.text, token.integer);
    } else if (const std::size_t size = NumberBeforeKeyword(token.text); size != 0) {
      at_ = start + size;
      token = Make(Token::Kind::kKeyword, start);
      token.kind = ClassifyNumber(token.text, token.integer);
    }
  }
  return token;
}

Token Lexer::NextName(const char* start) {
  while (at_ != end_ && IsRegular(*at_)) {
    ++at_;
  }
  if (at_ == end_ && !is_whole_) {
    at_ = start;
    return Ended();
  }
  return Make(Token::Kind::kName, start);
}

Token Lexer::NextString(const char* start) {
  int depth = 1;
  while (at_ != end_) {
    const char c = *at_++;
    if (c == '\\') {
      if (at_ != end_) {
        ++at_;
      }
    } else if (c == '(') {
      ++depth;
    } else if (c == ')' && --depth == 0) {
      return Make(Token::Kind::kString, start);
    }
  }
  if (!is_whole_) {
    at_ = start;
    return Ended();
  }
  return Make(Token::Kind::kString, start);
}

Token Lexer::NextHexString(const char* start) {
  const void* close = std::memchr(at_, '>', static_cast<std::size_t>(end_ - at_));
  if (close != nullptr) {
    at_ = static_cast<const char*>(close) + 1;
    return Make(Token::Kind::kHexString, start);
  }
  if (!is_whole_) {
    at_ = start;
    return Ended();
  }
  at_ = end_;
  return Make(Token::Kind::kHexString, start);
}

namespace {

// Resolves one escape whose backslash is at text[i]; returns the index after it.
std::size_t DecodeEscape(std::string_view text, std::size_t i, std::string& out) {
  if (++i >= text.size()) {
    return i;
  }
  const char c = text[i];
  switch (c) {
    case 'n':
      out += '\n';
      return i + 1;
    case 'r':
      out += '\r';
      return i + 1;
    case 't':
      out += '\t';
      return i + 1;
    case 'b':
      out += '\b';
      return i + 1;
    case 'f':
      out += '\f';
      return i + 1;
    case '\n':
      return i + 1;
    case '\r':
      return i + 1 < text.size() && text[i + 1] == '\n' ? i + 2 : i + 1;
    default:
      break;
  }
  if (c < '0' || c > '7') {
    out += c;
    return i + 1;
  }
  int value = 0;
  for (int digits = 0; digits < 3 && i < text.size() && text[i] >= '0' && text[i] <= '7';
       ++digits, ++i) {
    value = value * 8 + (text[i] - '0');
  }
  out += static_cast<char>(value);
  return i;
}

void DecodeLiteral(std::string_view text, std::string& out) {
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == '\\') {
      i = DecodeEscape(text, i, out);
    } else if (text[i] == '\r') {  // any end of line inside a string stands for one line feed
      out += '\n';
      i += i + 1 < text.size() && text[i + 1] == '\n' ? 2 : 1;
    } else {
      std::size_t end = i + 1;
      while (end < text.size() && text[end] != '\\' && text[end] != '\r') {
        ++end;
      }
      out.append(text, i, end - i);
      i = end;
    }
  }
}

void DecodeHex(std::string_view text, std::string& out) {
  int high = -1;
  for (char c : text) {
    const int value = HexValue(c);
    if (value < 0) {
      continue;
    }
    if (high < 0) {
      high = value;
    } else {
      out += static_cast<char>(high * 16 + value);
      high = -1;
    }
  }
  if (high >= 0) {
    out += static_cast<char>(high * 16);
  }
}

}  // namespace

void DecodeString(const Token& token, std::string& out) {
  std::string_view text = token.text.substr(1);
  const char close = token.kind == Token::Kind::kString ? ')' : '>';
  if (!text.empty() && text.back() == close) {
    text.remove_suffix(1);
  }
  if (token.kind == Token::Kind::kString) {
    DecodeLiteral(text, out);
  } else {
    DecodeHex(text, out);
  }
}

void DecodeName(std::string_view text, std::string& out) {
  text.remove_prefix(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '#' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 &&
        HexValue(text[i + 2]) >= 0) {
      out += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
      i += 2;
    } else {
      out += text[i];
    }
  }
}

std::string NormalizedNumber(std::string_view text) {
  std::string digits;
  bool is_negative = false;
  bool has_point = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '-' || c == '+') {
      if (!digits.empty()) {
        break;  // "12-34" is 12
      }
      is_negative = is_negative || c == '-';
    } else if (c == '.') {
      if (has_point) {
        break;
      }
      has_point = true;
      digits += c;
    } else {
      digits += c;
    }
  }
  const std::size_t point = digits.find('.');
  std::string whole = digits.substr(0, point);
  std::string fraction = point == std::string::npos ? "" : digits.substr(point + 1, 20);
  whole.erase(0, whole.find_first_not_of('0'));
  if (whole.size() > 18) {
    whole = "999999999999999999";
    fraction.clear();
  }
  std::string result = (is_negative ? "-" : "") + (whole.empty() ? std::string("0") : whole);
  return fraction.empty() ? result : result + "." + fraction;
}

}  // namespace TarnixTools::pdf
