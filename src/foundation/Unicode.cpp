#include "foundation/Unicode.h"

#include <cstddef>
#include <cstdint>

namespace TarnixTools {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Decoded {
  char32_t character;
  std::size_t length;  // bytes taken
};

// What may follow a lead byte: how many bytes, and the range of the first of them, which is what
// keeps out overlong forms, surrogates and values beyond U+10FFFF.
struct LeadByte {
  int continuation_count;
  std::uint8_t second_low;
  std::uint8_t second_high;
};

LeadByte ClassifyLead(std::uint8_t lead) {
  if (lead >= 0xC2 && lead <= 0xDF) {
    return {1, 0x80, 0xBF};
  }
  if (lead >= 0xE0 && lead <= 0xEF) {
    return {2, static_cast<std::uint8_t>(lead == 0xE0 ? 0xA0 : 0x80),
            static_cast<std::uint8_t>(lead == 0xED ? 0x9F : 0xBF)};
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    return {3, static_cast<std::uint8_t>(lead == 0xF0 ? 0x90 : 0x80),
            static_cast<std::uint8_t>(lead == 0xF4 ? 0x8F : 0xBF)};
  }
  return {0, 0, 0};
}

Decoded DecodeFirst(std::string_view text) {
  const auto lead = static_cast<std::uint8_t>(text[0]);
  if (lead < 0x80) {
    return {lead, 1};
  }
  const LeadByte kind = ClassifyLead(lead);
  if (kind.continuation_count == 0) {
    return {kReplacement, 1};
  }
  char32_t character = lead & (0x3FU >> kind.continuation_count);
  for (int i = 1; i <= kind.continuation_count; ++i) {
    const std::size_t at = static_cast<std::size_t>(i);
    const std::uint8_t low = i == 1 ? kind.second_low : 0x80;
    const std::uint8_t high = i == 1 ? kind.second_high : 0xBF;
    const auto byte = at < text.size() ? static_cast<std::uint8_t>(text[at]) : std::uint8_t{0};
    if (byte < low || byte > high) {
      return {kReplacement, at};
    }
    character = (character << 6U) | (byte & 0x3FU);
  }
  return {character, static_cast<std::size_t>(kind.continuation_count) + 1};
}

void AppendWide(std::wstring& out, char32_t character) {
  if (character < 0x10000) {
    out.push_back(static_cast<wchar_t>(character));
    return;
  }
  const char32_t offset = character - 0x10000;
  out.push_back(static_cast<wchar_t>(0xD800 + (offset >> 10U)));
  out.push_back(static_cast<wchar_t>(0xDC00 + (offset & 0x3FFU)));
}

}  // namespace

std::wstring Utf8ToWide(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  std::wstring wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const Decoded decoded = DecodeFirst(text);
    AppendWide(wide, decoded.character);
    text.remove_prefix(decoded.length);
  }
  return wide;
}

}  // namespace TarnixTools
