// Text strings (ISO 32000-2, 7.9.2.2): PDFDocEncoding, UTF-16 with a byte order mark, or UTF-8 with
// one.
#ifndef TARNIX_PDF_TREE_TEXTSTRING_H_
#define TARNIX_PDF_TREE_TEXTSTRING_H_

#include <string>
#include <string_view>

namespace TarnixTools::pdf {

// A text string's bytes as UTF-8. What cannot be decoded becomes U+FFFD; language escapes are left
// out.
std::string TextStringToUtf8(std::string_view bytes);

// UTF-8 as a text string: in PDFDocEncoding when that has all of its characters, else in UTF-16BE.
// Each byte that belongs to no valid sequence becomes U+FFFD; so does U+001B, which would start a
// language escape.
std::string Utf8ToTextString(std::string_view utf8);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_TEXTSTRING_H_
