// Wide strings as UTF-8.
#ifndef TARNIX_PDF_TREE_WIDETEXT_H_
#define TARNIX_PDF_TREE_WIDETEXT_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace TarnixTools::pdf {

// Appends a code point; surrogates and values beyond U+10FFFF become U+FFFD.
void AppendUtf8(std::string& out, std::uint32_t code_point);

// Accepts UTF-16 in any width of wchar_t (surrogate pairs are joined) and UTF-32.
std::string Utf8OfWide(std::wstring_view wide);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_WIDETEXT_H_
