#include "pdf/tree/TextString.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "foundation/Utf8.h"
#include "pdf/syntax/PdfDocEncoding.h"

namespace TarnixTools::pdf {

namespace {

constexpr char16_t kEscape = 0x1B;  // before and after a language code

bool IsUtf16(TextEncoding encoding) {
  return encoding == TextEncoding::kUtf16BigEndian || encoding == TextEncoding::kUtf16LittleEndian;
}

void AppendUnit(std::string& out, TextEncoding encoding, char16_t unit) {
  const auto high = static_cast<char>(unit >> 8U);
  const auto low = static_cast<char>(unit & 0xFFU);
  out += encoding == TextEncoding::kUtf16BigEndian ? high : low;
  out += encoding == TextEncoding::kUtf16BigEndian ? low : high;
}

// Half a unit at the end is left out.
std::wstring UnitsOf(std::string_view bytes, TextEncoding encoding) {
  const std::size_t high = encoding == TextEncoding::kUtf16BigEndian ? 0 : 1;
  std::wstring units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i + high]) * 256U +
                                  static_cast<unsigned char>(bytes[i + 1 - high]));
  }
  return units;
}

// An escape that does not end takes the rest along.
std::wstring WithoutLanguages(const std::wstring& units) {
  std::wstring text;
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (units[i] == kEscape) {
      i = std::min(units.find(kEscape, i + 1), units.size() - 1);
    } else {
      text += units[i];
    }
  }
  return text;
}

std::string FromPdfDoc(std::string_view bytes) {
  std::string out;
  for (const char byte : bytes) {
    AppendUtf8(out, PdfDocCharacter(byte));
  }
  return out;
}

std::string FromUtf8(std::string_view bytes) {
  std::string out;
  for (const char32_t character : Utf8ToUtf32(bytes)) {
    AppendUtf8(out, character);
  }
  return out;
}

// Nothing when a character is missing in PDFDocEncoding, or the bytes would be taken for another
// encoding.
std::optional<std::string> ToPdfDoc(std::u32string_view text) {
  std::string bytes;
  for (const char32_t character : text) {
    const std::optional<char> byte = PdfDocByte(character);
    if (!byte) {
      return std::nullopt;
    }
    bytes += *byte;
  }
  return EncodingOf(bytes) == TextEncoding::kPdfDoc ? std::optional(bytes) : std::nullopt;
}

std::string ToUtf16(std::u32string_view text) {
  std::string bytes(MarkOf(TextEncoding::kUtf16BigEndian));
  for (const char32_t character : text) {
    for (const char16_t unit : EncodeUtf16(character)) {
      AppendUnit(bytes, TextEncoding::kUtf16BigEndian, unit);
    }
  }
  return bytes;
}

}  // namespace

std::string TextStringToUtf8(std::string_view bytes) {
  const TextEncoding encoding = EncodingOf(bytes);
  bytes.remove_prefix(MarkOf(encoding).size());
  if (IsUtf16(encoding)) {
    return WideToUtf8(WithoutLanguages(UnitsOf(bytes, encoding)));
  }
  return encoding == TextEncoding::kUtf8 ? FromUtf8(bytes) : FromPdfDoc(bytes);
}

std::string Utf8ToTextString(std::string_view utf8) {
  std::u32string text = Utf8ToUtf32(utf8);
  std::replace(text.begin(), text.end(), char32_t{kEscape}, kReplacementCharacter);
  std::optional<std::string> bytes = ToPdfDoc(text);
  return bytes ? *std::move(bytes) : ToUtf16(text);
}

TextEncoding EncodingOf(std::string_view text_string) {
  for (const TextEncoding encoding :
       {TextEncoding::kUtf16BigEndian, TextEncoding::kUtf16LittleEndian, TextEncoding::kUtf8}) {
    if (text_string.starts_with(MarkOf(encoding))) {
      return encoding;
    }
  }
  return TextEncoding::kPdfDoc;
}

std::string_view MarkOf(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::kUtf16BigEndian:
      return "\xFE\xFF";
    case TextEncoding::kUtf16LittleEndian:
      return "\xFF\xFE";
    case TextEncoding::kUtf8:
      return "\xEF\xBB\xBF";
    case TextEncoding::kPdfDoc:
      break;
  }
  return "";
}

std::string AsciiIn(TextEncoding encoding, std::string_view ascii) {
  if (!IsUtf16(encoding)) {
    return std::string(ascii);
  }
  std::string bytes;
  for (const char character : ascii) {
    AppendUnit(bytes, encoding, static_cast<unsigned char>(character));
  }
  return bytes;
}

std::string TextStringWith(std::string_view text_string, std::string_view ascii) {
  const TextEncoding encoding = EncodingOf(text_string);
  const std::size_t half = IsUtf16(encoding) ? text_string.size() % 2 : 0;
  std::string result(text_string.substr(0, text_string.size() - half));
  return result += AsciiIn(encoding, ascii);
}

}  // namespace TarnixTools::pdf
