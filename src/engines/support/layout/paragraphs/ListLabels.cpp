#include "engines/support/layout/paragraphs/ListLabels.h"

#include <algorithm>

#include "engines/support/layout/text/Characters.h"

namespace TarnixTools::engines {

namespace {

// With those that fonts of symbols have at places for private use.
constexpr std::u32string_view kBullets =
    U"\u2022\u2023\u25E6\u2043\u2219\u25AA\u25AB\u25CF\u25CB\u25A0\u25A1\u25B6\u25B8\u25BA\u25C6"
    U"\u25C7\u27A2\u27A4\u2713\u2714\u2756\u2794\u2666\u00B7\u2013\u2014\u2212\u002D\u002A\u25FC"
    U"\u25FB\u2610\u2611\u2612\uF0B7\uF0A7\uF0D8\uF076\uF0FC\uF0E0\uF06E\uF0A8\uF0B2\uF02D\uF0BE"
    U"\u00A7\u2605\u2606\u204C\u25D8";
constexpr std::size_t kMostDigits = 3;
constexpr std::size_t kMostParts = 6;
constexpr std::size_t kLongestRoman = 7;

std::int32_t RomanDigit(char32_t c) {
  switch (c) {
    case 'i':
    case 'I':
      return 1;
    case 'v':
    case 'V':
      return 5;
    case 'x':
    case 'X':
      return 10;
    case 'l':
    case 'L':
      return 50;
    case 'c':
    case 'C':
      return 100;
    default:
      return 0;
  }
}

// 0 for what is no Roman number.
std::int32_t RomanValue(std::u32string_view text) {
  std::int32_t value = 0;
  for (std::size_t i = 0; i < text.size() && text.size() <= kLongestRoman; ++i) {
    const std::int32_t digit = RomanDigit(text[i]);
    if (digit == 0) {
      return 0;
    }
    const std::int32_t next = i + 1 < text.size() ? RomanDigit(text[i + 1]) : 0;
    value += next > digit ? -digit : digit;
  }
  return std::max(value, 0);
}

std::optional<FoundLabel> ReadLetters(std::u32string_view text) {
  const bool is_lower =
      std::all_of(text.begin(), text.end(), [](char32_t c) { return c >= 'a' && c <= 'z'; });
  const bool is_upper =
      std::all_of(text.begin(), text.end(), [](char32_t c) { return c >= 'A' && c <= 'Z'; });
  if (text.empty() || (!is_lower && !is_upper)) {
    return std::nullopt;
  }
  const std::int32_t roman = RomanValue(text);
  if (text.size() == 1) {
    return FoundLabel{.kind = is_lower ? ListKind::kLowerLetter : ListKind::kUpperLetter,
                      .value = static_cast<std::int32_t>(text[0] - (is_lower ? 'a' : 'A')) + 1,
                      .may_be_roman = roman > 0,
                      .roman_value = roman};
  }
  if (roman == 0) {
    return std::nullopt;
  }
  return FoundLabel{.kind = is_lower ? ListKind::kLowerRoman : ListKind::kUpperRoman,
                    .value = roman,
                    .may_be_roman = true,
                    .roman_value = roman};
}

// "3", "2.1"; the last part is the number.
std::optional<FoundLabel> ReadNumbers(std::u32string_view text) {
  FoundLabel label{.kind = ListKind::kDecimal, .parts = 0};
  while (!text.empty()) {
    std::size_t digits = 0;
    label.value = 0;
    while (digits < text.size() && IsDigit(text[digits]) && digits <= kMostDigits) {
      label.value = label.value * 10 + static_cast<std::int32_t>(text[digits++] - '0');
    }
    if (digits == 0 || digits > kMostDigits || ++label.parts > kMostParts) {
      return std::nullopt;
    }
    text.remove_prefix(digits);
    if (!text.empty() && (text.front() != '.' || text.size() == 1)) {
      return std::nullopt;
    }
    text.remove_prefix(text.empty() ? 0 : 1);
  }
  return label.parts > 0 ? std::optional(label) : std::nullopt;
}

}  // namespace

std::optional<FoundLabel> ReadLabel(std::u32string_view word) {
  if (word.size() == 1 && kBullets.find(word[0]) != std::u32string_view::npos) {
    return FoundLabel{};
  }
  const bool opens = !word.empty() && (word.front() == '(' || word.front() == '[');
  if (opens) {
    word.remove_prefix(1);
  }
  const char32_t end = word.empty() ? 0 : word.back();
  const bool closes = end == ')' || end == ']' || (end == '.' && !opens);
  if (closes) {
    word.remove_suffix(1);
  }
  if (opens && !closes) {
    return std::nullopt;
  }
  const std::optional<FoundLabel> numbers = ReadNumbers(word);
  if (numbers && (closes || numbers->parts > 1)) {
    return numbers;
  }
  return closes ? ReadLetters(word) : std::nullopt;
}

}  // namespace TarnixTools::engines
