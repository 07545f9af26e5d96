#include "pdf/tree/TextString.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "pdf/tree/WideText.h"

namespace TarnixTools::pdf {

namespace {

// Code points of PDFDocEncoding where it differs from Latin-1 (annex D.3): 0x18 to 0x1F, and 0x80
// to 0xA0.
constexpr std::array<std::uint16_t, 8> kAccents = {0x02D8, 0x02C7, 0x02C6, 0x02D9,
                                                   0x02DD, 0x02DB, 0x02DA, 0x02DC};
constexpr std::array<std::uint16_t, 33> kUpper = {
    0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x0192, 0x2044, 0x2039, 0x203A, 0x2212,
    0x2030, 0x201E, 0x201C, 0x201D, 0x2018, 0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x0141,
    0x0152, 0x0160, 0x0178, 0x017D, 0x0131, 0x0142, 0x0153, 0x0161, 0x017E, 0xFFFD, 0x20AC};

std::uint32_t PdfDocCodePoint(unsigned char byte) {
  if (byte >= 0x18 && byte < 0x20) {
    return kAccents[byte - 0x18U];
  }
  if (byte >= 0x80 && byte <= 0xA0) {
    return kUpper[byte - 0x80U];
  }
  return byte;
}

std::string FromUtf16(std::string_view bytes, bool is_big_endian) {
  std::wstring units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    const unsigned unit = is_big_endian ? first * 256U + second : second * 256U + first;
    if (unit == 0x1B) {  // a language code between two escapes
      std::size_t end = i + 2;
      while (end + 1 < bytes.size() &&
             static_cast<unsigned char>(bytes[end + (is_big_endian ? 1 : 0)]) != 0x1B) {
        end += 2;
      }
      i = end;
      continue;
    }
    units += static_cast<wchar_t>(unit);
  }
  return Utf8OfWide(units);
}

// Takes the next code point off the front: of a valid sequence, or U+FFFD for one byte that starts
// none.
std::uint32_t TakeCodePoint(std::string_view& bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const std::size_t size = lead < 0x80                   ? 1
                           : lead >= 0xC2 && lead < 0xE0 ? 2
                           : lead >= 0xE0 && lead < 0xF0 ? 3
                           : lead >= 0xF0 && lead < 0xF5 ? 4
                                                         : 0;
  std::uint32_t code_point = size == 1 ? lead : size == 0 ? 0xFFFD : lead & (0x7FU >> size);
  bool is_valid = size > 0 && size <= bytes.size();
  for (std::size_t k = 1; is_valid && k < size; ++k) {
    const auto next = static_cast<unsigned char>(bytes[k]);
    is_valid = (next & 0xC0U) == 0x80U;
    code_point = (code_point << 6) | (next & 0x3FU);
  }
  is_valid = is_valid && !(size == 3 && code_point < 0x800) && !(size == 4 && code_point < 0x10000);
  bytes.remove_prefix(is_valid ? size : 1);
  return is_valid ? code_point : 0xFFFD;
}

std::string FromUtf8(std::string_view bytes) {
  std::string out;
  while (!bytes.empty()) {
    AppendUtf8(out, TakeCodePoint(bytes));
  }
  return out;
}

// The code points that a text string can hold, for each of the UTF-8 text.
std::u32string StorableCodePoints(std::string_view utf8) {
  std::u32string code_points;
  while (!utf8.empty()) {
    const std::uint32_t code_point = TakeCodePoint(utf8);
    const bool is_storable = code_point != 0x1B && code_point <= 0x10FFFF &&
                             (code_point < 0xD800 || code_point > 0xDFFF);
    code_points += static_cast<char32_t>(is_storable ? code_point : 0xFFFD);
  }
  return code_points;
}

// Whether PDFDocEncoding (annex D.3) defines the byte as its own code point.
bool IsSameInPdfDoc(char32_t code_point) {
  return code_point == '\t' || code_point == '\n' || code_point == '\r' ||
         (code_point >= 0x20 && code_point < 0x7F) ||
         (code_point > 0xA0 && code_point <= 0xFF && code_point != 0xAD);
}

std::optional<char> PdfDocByte(char32_t code_point) {
  if (IsSameInPdfDoc(code_point)) {
    return static_cast<char>(code_point);
  }
  const auto place_in = [code_point](const auto& table, unsigned first) -> std::optional<char> {
    const auto found = std::find(table.begin(), table.end(), code_point);
    if (found == table.end() || code_point == 0xFFFD) {
      return std::nullopt;
    }
    return static_cast<char>(first + static_cast<unsigned>(found - table.begin()));
  };
  const auto accent = place_in(kAccents, 0x18);
  return accent ? accent : place_in(kUpper, 0x80);
}

bool HasByteOrderMark(std::string_view bytes) {
  return bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE") ||
         bytes.starts_with("\xEF\xBB\xBF");
}

// Nothing when a character is missing in PDFDocEncoding, or the bytes would be taken for another
// encoding.
std::optional<std::string> ToPdfDoc(std::u32string_view text) {
  std::string bytes;
  for (const char32_t code_point : text) {
    const std::optional<char> byte = PdfDocByte(code_point);
    if (!byte) {
      return std::nullopt;
    }
    bytes += *byte;
  }
  return HasByteOrderMark(bytes) ? std::nullopt : std::optional(bytes);
}

void AppendUnit(std::string& out, std::uint32_t unit) {
  out += static_cast<char>(unit >> 8);
  out += static_cast<char>(unit & 0xFFU);
}

std::string ToUtf16(std::u32string_view text) {
  std::string bytes = "\xFE\xFF";
  for (const char32_t code_point : text) {
    if (code_point < 0x10000) {
      AppendUnit(bytes, code_point);
    } else {
      AppendUnit(bytes, 0xD800 + ((code_point - 0x10000) >> 10));
      AppendUnit(bytes, 0xDC00 + ((code_point - 0x10000) & 0x3FFU));
    }
  }
  return bytes;
}

}  // namespace

std::string TextStringToUtf8(std::string_view bytes) {
  if (bytes.starts_with("\xFE\xFF")) {
    return FromUtf16(bytes.substr(2), true);
  }
  if (bytes.starts_with("\xFF\xFE")) {
    return FromUtf16(bytes.substr(2), false);
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) {
    return FromUtf8(bytes.substr(3));
  }
  std::string out;
  for (const char c : bytes) {
    AppendUtf8(out, PdfDocCodePoint(static_cast<unsigned char>(c)));
  }
  return out;
}

std::string Utf8ToTextString(std::string_view utf8) {
  const std::u32string code_points = StorableCodePoints(utf8);
  std::optional<std::string> bytes = ToPdfDoc(code_points);
  return bytes ? *std::move(bytes) : ToUtf16(code_points);
}

}  // namespace TarnixTools::pdf
