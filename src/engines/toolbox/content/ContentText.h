// Writes content streams (ISO 32000-2, 7.8.2), in few bytes.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTTEXT_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTTEXT_H_

#include <string>
#include <string_view>

#include "pdf/Matrix.h"

namespace TarnixTools::engines::toolbox {

// Stands in names of resources for a beginning that the page's own names do not have; it becomes
// known when the page is written.
inline constexpr char kNamePrefix = '\x01';

// Appends "a b c d e f cm".
void AppendTransform(std::string& out, const pdf::Matrix& matrix);

// UTF-16BE in hexadecimal digits.
void AppendUtf16Hex(std::string& out, std::u32string_view text);

// A four-digit code.
void AppendCode(std::string& out, unsigned code);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTTEXT_H_
