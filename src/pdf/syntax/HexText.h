// Hexadecimal digits, written.
#ifndef TARNIX_PDF_SYNTAX_HEXTEXT_H_
#define TARNIX_PDF_SYNTAX_HEXTEXT_H_

#include <cstdint>
#include <string>

#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

// Appends the last digits of a number, the highest first.
inline void AppendHex(std::string& out, std::uint32_t value, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    out += kHexDigits[value >> shift & 0xFU];
  }
}

// Two digits.
inline void AppendHexByte(std::string& out, char byte) {
  AppendHex(out, static_cast<unsigned char>(byte), 2);
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_HEXTEXT_H_
