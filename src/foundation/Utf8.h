// Text in UTF-8, UTF-16 and UTF-32: the one place that decodes and encodes them.
//
// What is malformed becomes U+FFFD: one for each maximal part of a malformed sequence of UTF-8 (The
// Unicode Standard, 3.9), one for each surrogate without its other half. Wide strings are those of
// the engines' interfaces: UTF-16 units, one in each wchar_t, whatever wchar_t can hold.
//
// Paths are no text, for they may hold any bytes: platform::WidePath is their wide form.
#ifndef TARNIX_FOUNDATION_UTF8_H_
#define TARNIX_FOUNDATION_UTF8_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace TarnixTools {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// The character at the front of a text.
struct DecodedCharacter {
  char32_t character;   // U+FFFD when malformed
  std::size_t length;   // in bytes or units, at least 1; of what is malformed, the maximal part
  bool is_well_formed;  // tells U+FFFD that stands in the text from one that stands for damage
};

// The text is not empty.
DecodedCharacter DecodeUtf8(std::string_view text);

// The text is not empty. Units beyond 0xFFFF, as UTF-32 has them, are characters.
DecodedCharacter DecodeUtf16(std::wstring_view text);

// One unit, or two surrogates.
struct Utf16Units {
  std::array<char16_t, 2> units;
  std::size_t count;

  const char16_t* begin() const { return units.data(); }

  const char16_t* end() const { return units.data() + count; }
};

// Surrogates and values beyond U+10FFFF are encoded as U+FFFD.
Utf16Units EncodeUtf16(char32_t character);
void AppendUtf8(std::string& out, char32_t character);
void AppendWide(std::wstring& out, char32_t character);

// The text up to its first NUL, as the library's interface takes it.
std::wstring Utf8ToWide(std::string_view text);

std::string WideToUtf8(std::wstring_view text);
std::u32string Utf8ToUtf32(std::string_view text);
std::u32string WideToUtf32(std::wstring_view text);

// How many bytes of the text can be kept, at most `size`, so that no character is cut.
std::size_t Utf8LengthWithin(std::string_view text, std::size_t size);

}  // namespace TarnixTools

#endif  // TARNIX_FOUNDATION_UTF8_H_
