#include "pdf/tree/WideText.h"

namespace TarnixTools::pdf {

void AppendUtf8(std::string& out, std::uint32_t code_point) {
  if ((code_point >= 0xD800 && code_point < 0xE000) || code_point > 0x10FFFF) {
    code_point = 0xFFFD;
  }
  const auto put = [&](std::uint32_t byte) { out += static_cast<char>(byte); };
  if (code_point < 0x80) {
    put(code_point);
  } else if (code_point < 0x800) {
    put(0xC0 | (code_point >> 6));
    put(0x80 | (code_point & 0x3F));
  } else if (code_point < 0x10000) {
    put(0xE0 | (code_point >> 12));
    put(0x80 | ((code_point >> 6) & 0x3F));
    put(0x80 | (code_point & 0x3F));
  } else {
    put(0xF0 | (code_point >> 18));
    put(0x80 | ((code_point >> 12) & 0x3F));
    put(0x80 | ((code_point >> 6) & 0x3F));
    put(0x80 | (code_point & 0x3F));
  }
}

std::string Utf8OfWide(std::wstring_view wide) {
  std::string out;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    char32_t unit = static_cast<char32_t>(wide[i]);
    if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < wide.size()) {
      const char32_t low = static_cast<char32_t>(wide[i + 1]);
      if (low >= 0xDC00 && low < 0xE000) {
        unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        ++i;
      }
    }
    AppendUtf8(out, unit);
  }
  return out;
}

}  // namespace TarnixTools::pdf
