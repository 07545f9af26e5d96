// Cuts PDF syntax into tokens (ISO 32000-2, 7.2). Works on a window of bytes that may end before
// the file does: a token that touches the end of such a window is reported as kMore, and the caller
// comes back with a larger one.
#ifndef TARNIX_PDF_SYNTAX_LEXER_H_
#define TARNIX_PDF_SYNTAX_LEXER_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace TarnixTools::pdf {

struct Token {
  enum class Kind : std::uint8_t {
    kMore,       // the window ended first
    kEnd,        // end of all input
    kInteger,    // regular integer that fits 63 bits
    kReal,       // regular number with a decimal point
    kOddNumber,  // looks like a number to a tolerant reader: "--5", "1.2.3", 400 digits
    kString,     // literal string, delimiters included
    kHexString,  // hexadecimal string, delimiters included
    kName,       // with its slash, escapes as written
    kArrayOpen,
    kArrayClose,
    kDictionaryOpen,
    kDictionaryClose,
    kKeyword,  // any other run of regular characters, or a lone delimiter that opens nothing
  };

  Kind kind = Kind::kEnd;
  std::string_view text;     // the token's bytes in the window
  std::int64_t integer = 0;  // kInteger only
};

class Lexer {
 public:
  // is_whole: the window ends where the input ends.
  Lexer(std::string_view window, bool is_whole)
      : begin_(window.data()), at_(begin_), end_(begin_ + window.size()), is_whole_(is_whole) {}

  Token Next();
  // Skips white space and comments; false when the window ended.
  bool SkipSpace();

  std::size_t position() const { return static_cast<std::size_t>(at_ - begin_); }

  void set_position(std::size_t position) { at_ = begin_ + position; }

  std::string_view rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }

  bool is_whole() const { return is_whole_; }

 private:
  Token Ended() const { return {is_whole_ ? Token::Kind::kEnd : Token::Kind::kMore, {}, 0}; }

  Token Make(Token::Kind kind, const char* start) const {
    return {kind, {start, static_cast<std::size_t>(at_ - start)}, 0};
  }

  Token NextString(const char* start);
  Token NextHexString(const char* start);
  Token NextName(const char* start);
  bool TakeNumber(const char* start, Token& token);
  Token NextRegular(const char* start);

  const char* begin_;
  const char* at_;
  const char* end_;
  bool is_whole_;
};

// Bytes of a kString or kHexString token, escapes resolved, appended to `out`.
void DecodeString(const Token& token, std::string& out);
// Name of a kName token, without its slash and with #xx resolved, appended to `out`.
void DecodeName(std::string_view text, std::string& out);
// A kOddNumber as a reader that means well would take it, in regular PDF syntax ("0" when nothing
// sensible is left).
std::string NormalizedNumber(std::string_view text);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_LEXER_H_
