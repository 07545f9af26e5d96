#include "pdf/tree/TextString.h"

#include <array>
#include <cstdint>

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

// Valid sequences as they are, U+FFFD for each byte that belongs to none.
std::string FromUtf8(std::string_view bytes) {
  std::string out;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    const std::size_t size = lead < 0x80                   ? 1
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
    std::uint32_t code_point = size == 1 ? lead : size == 0 ? 0xFFFD : lead & (0x7FU >> size);
    bool is_valid = size > 0 && i + size <= bytes.size();
    for (std::size_t k = 1; is_valid && k < size; ++k) {
      const auto next = static_cast<unsigned char>(bytes[i + k]);
      is_valid = (next & 0xC0U) == 0x80U;
      code_point = (code_point << 6) | (next & 0x3FU);
    }
    is_valid =
        is_valid && !(size == 3 && code_point < 0x800) && !(size == 4 && code_point < 0x10000);
    AppendUtf8(out, is_valid ? code_point : 0xFFFD);
    i += is_valid ? size : 1;
  }
  return out;
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

}  // namespace TarnixTools::pdf
