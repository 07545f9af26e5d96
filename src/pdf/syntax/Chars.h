// Character classes of PDF syntax (ISO 32000-2, 7.2.3).
#ifndef TARNIX_PDF_SYNTAX_CHARS_H_
#define TARNIX_PDF_SYNTAX_CHARS_H_

#include <array>
#include <cstdint>

namespace TarnixTools::pdf {

namespace chars_internal {
enum : std::uint8_t { kRegularClass = 0, kSpaceClass = 1, kDelimiterClass = 2, kDigitClass = 4 };

constexpr std::array<std::uint8_t, 256> MakeTable() {
  std::array<std::uint8_t, 256> table{};
  for (unsigned char c : {'\0', '\t', '\n', '\f', '\r', ' '}) {
    table[c] = kSpaceClass;
  }
  for (unsigned char c : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'}) {
    table[c] = kDelimiterClass;
  }
  for (unsigned char c = '0'; c <= '9'; ++c) {
    table[c] = kDigitClass;
  }
  return table;
}

inline constexpr std::array<std::uint8_t, 256> kTable = MakeTable();

constexpr std::uint8_t ClassOf(char c) {
  return kTable[static_cast<unsigned char>(c)];
}
}  // namespace chars_internal

constexpr bool IsSpace(char c) {
  return chars_internal::ClassOf(c) == chars_internal::kSpaceClass;
}

constexpr bool IsDelimiter(char c) {
  return chars_internal::ClassOf(c) == chars_internal::kDelimiterClass;
}

constexpr bool IsDigit(char c) {
  return chars_internal::ClassOf(c) == chars_internal::kDigitClass;
}

// Neither white space nor a delimiter: what names, numbers and keywords are made of.
constexpr bool IsRegular(char c) {
  return (chars_internal::ClassOf(c) &
          (chars_internal::kSpaceClass | chars_internal::kDelimiterClass)) == 0;
}

// Value of a hexadecimal digit, or -1.
constexpr int HexValue(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  if (c >= 'a' && c <= 'f') {
    return c - 'a' + 10;
  }
  if (c >= 'A' && c <= 'F') {
    return c - 'A' + 10;
  }
  return -1;
}

inline constexpr char kHexDigits[] = "0123456789ABCDEF";

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_CHARS_H_
