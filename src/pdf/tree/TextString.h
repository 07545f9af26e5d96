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

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_TEXTSTRING_H_
