// Text strings (ISO 32000-2, 7.9.2.2): PDFDocEncoding, UTF-16 with a byte order mark, or UTF-8 with
// one.
#ifndef TARNIX_PDF_TREE_TEXTSTRING_H_
#define TARNIX_PDF_TREE_TEXTSTRING_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace TarnixTools::pdf {

// A text string's bytes as UTF-8. What cannot be decoded becomes U+FFFD (foundation/Utf8.h tells
// how often); language escapes are left out.
std::string TextStringToUtf8(std::string_view bytes);

// UTF-8 as a text string: in PDFDocEncoding when that has all of its characters, else in UTF-16BE.
// What is malformed becomes U+FFFD; so does U+001B, which would start a language escape.
std::string Utf8ToTextString(std::string_view utf8);

enum class TextEncoding : std::uint8_t { kPdfDoc, kUtf8, kUtf16BigEndian, kUtf16LittleEndian };

// How a text string is encoded: its first bytes tell.
TextEncoding EncodingOf(std::string_view text_string);

// These bytes, which stand before the text. None for PDFDocEncoding.
std::string_view MarkOf(TextEncoding encoding);

// ASCII characters as they stand within a text string.
std::string AsciiIn(TextEncoding encoding, std::string_view ascii);

// A text string with ASCII characters added, in its own encoding. Half a unit at its end is left
// out.
std::string TextStringWith(std::string_view text_string, std::string_view ascii);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_TEXTSTRING_H_
