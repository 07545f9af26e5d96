#include "foundation/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace TarnixTools {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kHighSurrogates = 0xD800;
constexpr char32_t kLowSurrogates = 0xDC00;

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

bool IsSurrogate(char32_t unit, char32_t first) {
  return unit >= first && unit < first + 0x400;
}

// Surrogates and values beyond U+10FFFF become U+FFFD.
void AppendUtf8(std::string& out, char32_t character) {
  if (character > 0x10FFFF || (character >= kHighSurrogates && character < 0xE000)) {
    character = kReplacement;
  }
  const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
    return;
  }
  if (character < 0x800) {
    put(0xC0 | (character >> 6U));
  } else if (character < 0x10000) {
    put(0xE0 | (character >> 12U));
    put(0x80 | ((character >> 6U) & 0x3FU));
  } else {
    put(0xF0 | (character >> 18U));
    put(0x80 | ((character >> 12U) & 0x3FU));
    put(0x80 | ((character >> 6U) & 0x3FU));
  }
  put(0x80 | (character & 0x3FU));
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

std::wstring PathToWide(std::string_view path) {
  path = path.substr(0, path.find('\0'));
  std::wstring wide;
  wide.reserve(path.size());
  while (!path.empty()) {
    const Decoded decoded = DecodeFirst(path);
    const bool is_malformed =
        decoded.character == kReplacement && path.substr(0, 3) != "\xEF\xBF\xBD";
    for (std::size_t i = 0; is_malformed && i < decoded.length; ++i) {
      wide.push_back(static_cast<wchar_t>(kLowSurrogates + static_cast<std::uint8_t>(path[i])));
    }
    if (!is_malformed) {
      AppendWide(wide, decoded.character);
    }
    path.remove_prefix(decoded.length);
  }
  return wide;
}

std::string WideToPath(std::wstring_view path) {
  std::string text;
  text.reserve(path.size());
  for (std::size_t i = 0; i < path.size(); ++i) {
    const auto unit = static_cast<char32_t>(path[i]);
    const auto next = i + 1 < path.size() ? static_cast<char32_t>(path[i + 1]) : U'\0';
    if (IsSurrogate(unit, kHighSurrogates) && IsSurrogate(next, kLowSurrogates)) {
      AppendUtf8(text, 0x10000 + ((unit - kHighSurrogates) << 10U) + (next - kLowSurrogates));
      ++i;
    } else if (unit > kLowSurrogates && unit <= kLowSurrogates + 0xFF) {
      text += static_cast<char>(unit - kLowSurrogates);
    } else {
      AppendUtf8(text, unit);
    }
  }
  return text;
}

}  // namespace TarnixTools
