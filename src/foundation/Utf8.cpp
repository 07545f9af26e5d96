#include "foundation/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace TarnixTools {
namespace {

constexpr char32_t kHighSurrogates = 0xD800;
constexpr char32_t kLowSurrogates = 0xDC00;
constexpr char32_t kSurrogatesEnd = 0xE000;
constexpr char32_t kFirstOfTwoUnits = 0x10000;
constexpr char32_t kLastCharacter = 0x10FFFF;

// What may follow a lead byte: how many bytes, and the range of the first of them, which is what
// keeps out overlong forms, surrogates and values beyond U+10FFFF.
struct LeadByte {
  std::size_t continuation_count;
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

bool IsHighSurrogate(char32_t unit) {
  return unit >= kHighSurrogates && unit < kLowSurrogates;
}

bool IsLowSurrogate(char32_t unit) {
  return unit >= kLowSurrogates && unit < kSurrogatesEnd;
}

bool IsCharacter(char32_t value) {
  return value <= kLastCharacter && !(value >= kHighSurrogates && value < kSurrogatesEnd);
}

template <typename Decode, typename View>
std::u32string DecodeAll(Decode&& decode, View text) {
  std::u32string characters;
  characters.reserve(text.size());
  while (!text.empty()) {
    const DecodedCharacter decoded = decode(text);
    characters += decoded.character;
    text.remove_prefix(decoded.length);
  }
  return characters;
}

}  // namespace

DecodedCharacter DecodeUtf8(std::string_view text) {
  const auto lead = static_cast<std::uint8_t>(text[0]);
  if (lead < 0x80) {
    return {lead, 1, true};
  }
  const LeadByte kind = ClassifyLead(lead);
  if (kind.continuation_count == 0) {
    return {kReplacementCharacter, 1, false};
  }
  char32_t character = lead & (0x3FU >> kind.continuation_count);
  for (std::size_t i = 1; i <= kind.continuation_count; ++i) {
    const std::uint8_t low = i == 1 ? kind.second_low : 0x80;
    const std::uint8_t high = i == 1 ? kind.second_high : 0xBF;
    const auto byte = i < text.size() ? static_cast<std::uint8_t>(text[i]) : std::uint8_t{0};
    if (byte < low || byte > high) {
      return {kReplacementCharacter, i, false};
    }
    character = (character << 6U) | (byte & 0x3FU);
  }
  return {character, kind.continuation_count + 1, true};
}

DecodedCharacter DecodeUtf16(std::wstring_view text) {
  const auto unit = static_cast<char32_t>(text[0]);
  const auto next = text.size() > 1 ? static_cast<char32_t>(text[1]) : U'\0';
  if (IsHighSurrogate(unit) && IsLowSurrogate(next)) {
    const char32_t offset = ((unit - kHighSurrogates) << 10U) + (next - kLowSurrogates);
    return {kFirstOfTwoUnits + offset, 2, true};
  }
  return IsCharacter(unit) ? DecodedCharacter{unit, 1, true}
                           : DecodedCharacter{kReplacementCharacter, 1, false};
}

Utf16Units EncodeUtf16(char32_t character) {
  if (!IsCharacter(character)) {
    character = kReplacementCharacter;
  }
  if (character < kFirstOfTwoUnits) {
    return {{static_cast<char16_t>(character)}, 1};
  }
  const char32_t offset = character - kFirstOfTwoUnits;
  return {{static_cast<char16_t>(kHighSurrogates + (offset >> 10U)),
           static_cast<char16_t>(kLowSurrogates + (offset & 0x3FFU))},
          2};
}

void AppendUtf8(std::string& out, char32_t character) {
  if (!IsCharacter(character)) {
    character = kReplacementCharacter;
  }
  const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
    return;
  }
  if (character < 0x800) {
    put(0xC0 | (character >> 6U));
  } else if (character < kFirstOfTwoUnits) {
    put(0xE0 | (character >> 12U));
    put(0x80 | ((character >> 6U) & 0x3FU));
  } else {
    put(0xF0 | (character >> 18U));
    put(0x80 | ((character >> 12U) & 0x3FU));
    put(0x80 | ((character >> 6U) & 0x3FU));
  }
  put(0x80 | (character & 0x3FU));
}

void AppendWide(std::wstring& out, char32_t character) {
  for (const char16_t unit : EncodeUtf16(character)) {
    out += static_cast<wchar_t>(unit);
  }
}

std::wstring Utf8ToWide(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  std::wstring wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const DecodedCharacter decoded = DecodeUtf8(text);
    AppendWide(wide, decoded.character);
    text.remove_prefix(decoded.length);
  }
  return wide;
}

std::string WideToUtf8(std::wstring_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  while (!text.empty()) {
    const DecodedCharacter decoded = DecodeUtf16(text);
    AppendUtf8(utf8, decoded.character);
    text.remove_prefix(decoded.length);
  }
  return utf8;
}

std::u32string Utf8ToUtf32(std::string_view text) {
  return DecodeAll(DecodeUtf8, text);
}

std::u32string WideToUtf32(std::wstring_view text) {
  return DecodeAll(DecodeUtf16, text);
}

std::size_t Utf8LengthWithin(std::string_view text, std::size_t size) {
  std::size_t length = std::min(text.size(), size);
  while (length > 0 && length < text.size() &&
         (static_cast<std::uint8_t>(text[length]) & 0xC0U) == 0x80U) {
    --length;
  }
  return length;
}

}  // namespace TarnixTools
