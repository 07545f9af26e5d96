// UTF-8 and the wide strings of the engines' interfaces: UTF-16 units, one in each wchar_t,
// whatever wchar_t can hold.
#ifndef TARNIX_FOUNDATION_UTF8_H_
#define TARNIX_FOUNDATION_UTF8_H_

#include <string>
#include <string_view>

namespace TarnixTools {

// The text up to its first NUL. Characters above U+FFFF become surrogate pairs; each maximal part
// of a malformed sequence becomes one U+FFFD.
std::wstring Utf8ToWide(std::string_view text);

// The same for paths, losslessly: each byte of a malformed sequence becomes a low surrogate of its
// own, U+DC00 plus the byte, which no well-formed text has.
std::wstring PathToWide(std::string_view path);

// What PathToWide has taken.
std::string WideToPath(std::wstring_view path);

}  // namespace TarnixTools

#endif  // TARNIX_FOUNDATION_UTF8_H_
