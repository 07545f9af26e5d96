#include "engines/office/writers/sheets/CellValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <vector>

#include "engines/office/writers/sheets/CellDate.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::size_t kLongestNumber = 40;  // bytes
constexpr std::size_t kSureDigits = 15;     // that a double keeps
constexpr std::size_t kOpenCommas = 3;      // that tell together what none tells alone

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Spaces of any width are one sign, dashes another, so that one byte stands for each.
std::string Simplified(std::string_view text) {
  struct Sign {
    std::string_view bytes;
    char plain;
  };

  static constexpr std::array<Sign, 9> kSigns = {{{"\xC2\xA0", ' '},
                                                  {"\xE2\x80\x89", ' '},
                                                  {"\xE2\x80\xAF", ' '},
                                                  {"\xE2\x80\x87", ' '},
                                                  {"\xE2\x88\x92", '-'},
                                                  {"\xE2\x80\x93", '-'},
                                                  {"\xE2\x80\x90", '-'},
                                                  {"\xE2\x80\x91", '-'},
                                                  {"\xE2\x80\x99", '\''}}};
  std::string plain;
  while (!text.empty()) {
    const auto* const sign = std::find_if(kSigns.begin(), kSigns.end(), [text](const Sign& other) {
      return text.substr(0, other.bytes.size()) == other.bytes;
    });
    plain += sign == kSigns.end() ? text[0] : sign->plain;
    text.remove_prefix(sign == kSigns.end() ? 1 : sign->bytes.size());
  }
  return plain;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') {
    text.remove_prefix(1);
  }
  while (!text.empty() && text.back() == ' ') {
    text.remove_suffix(1);
  }
  return text;
}

// A number cut into what stands around its digits and the digits.
struct Parts {
  bool is_negative = false;
  bool is_bracketed = false;  // a negative number in brackets
  bool has_plus = false;
  bool is_percent = false;
  bool has_gap = false;  // before the sign of percent
  std::string prefix;    // a currency, with the space behind it
  std::string suffix;
  std::string_view digits;  // with their separators
};

// What ends with another one comes before it.
constexpr std::array<std::string_view, 10> kCurrencies = {"US$", "$",   "€",   "£",   "¥",
                                                          "EUR", "USD", "GBP", "CHF", "JPY"};

bool TakePrefix(std::string_view& text, std::string& prefix) {
  for (const std::string_view currency : kCurrencies) {
    if (text.substr(0, currency.size()) == currency) {
      const std::string_view rest = text.substr(currency.size());
      prefix = std::string(currency) + (Trimmed(rest).size() < rest.size() ? " " : "");
      text = Trimmed(rest);
      return true;
    }
  }
  return false;
}

bool TakeSuffix(std::string_view& text, std::string& suffix) {
  for (const std::string_view currency : kCurrencies) {
    if (text.size() > currency.size() && text.substr(text.size() - currency.size()) == currency) {
      const std::string_view rest = text.substr(0, text.size() - currency.size());
      suffix = (Trimmed(rest).size() < rest.size() ? " " : "") + std::string(currency);
      text = Trimmed(rest);
      return true;
    }
  }
  return false;
}

void TakeSign(std::string_view& text, Parts& parts) {
  if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
    parts.is_negative = parts.is_bracketed = true;
    text = Trimmed(text.substr(1, text.size() - 2));
  } else if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    parts.is_negative = text.front() == '-';
    parts.has_plus = text.front() == '+';
    text.remove_prefix(1);
  }
}

// text: simplified. Nothing where more than digits and their separators is left.
std::optional<Parts> Cut(std::string_view text) {
  if (text.empty() || text.size() > kLongestNumber) {
    return std::nullopt;
  }
  Parts parts;
  TakeSign(text, parts);
  const bool has_prefix = TakePrefix(text, parts.prefix);
  if (has_prefix && !parts.is_negative && !parts.has_plus) {
    TakeSign(text, parts);
    if (parts.is_negative || parts.has_plus) {
      return std::nullopt;  // "$-5": no format shows the sign there in every program
    }
  }
  if (!has_prefix && !text.empty() && text.back() == '%') {
    parts.is_percent = true;
    text.remove_suffix(1);
    parts.has_gap = !text.empty() && text.back() == ' ';
    text = Trimmed(text);
  } else if (!has_prefix) {
    TakeSuffix(text, parts.suffix);
  }
  const bool is_plain = std::all_of(text.begin(), text.end(), [](char c) {
    return IsDigit(c) || c == '.' || c == ',' || c == ' ' || c == '\'';
  });
  if (!is_plain || text.empty() || !IsDigit(text.back()) || (!IsDigit(text[0]) && text[0] != '.')) {
    return std::nullopt;
  }
  parts.digits = text;
  return parts;
}

// Whether the digits come in groups of three behind the first group.
bool AreGroups(std::string_view digits, char separator) {
  const std::size_t first = digits.find(separator);
  if (first == std::string_view::npos || first == 0 || first > 3 || digits[0] == '0') {
    return false;
  }
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const bool is_place = i >= first && (i - first) % 4 == 0;
    if (is_place != (digits[i] == separator) || (!is_place && !IsDigit(digits[i]))) {
      return false;
    }
  }
  return (digits.size() - first) % 4 == 0;
}

struct Reading {
  std::string whole;     // digits only
  std::string decimals;  // digits only
  bool has_groups = false;
};

bool AreDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsDigit);
}

// decimal: '.' or ','.
std::optional<Reading> Read(std::string_view digits, char decimal) {
  Reading reading;
  const std::size_t point = digits.find(decimal);
  std::string_view whole = digits.substr(0, point);
  if (point != std::string_view::npos) {
    reading.decimals = digits.substr(point + 1);
    if (reading.decimals.empty() || !AreDigits(reading.decimals)) {
      return std::nullopt;
    }
  }
  if (!AreDigits(whole)) {
    const char other = decimal == '.' ? ',' : '.';
    const std::array<char, 3> separators = {other, ' ', '\''};
    if (std::none_of(separators.begin(), separators.end(),
                     [whole](char c) { return AreGroups(whole, c); })) {
      return std::nullopt;
    }
    reading.has_groups = true;
  }
  std::copy_if(whole.begin(), whole.end(), std::back_inserter(reading.whole), IsDigit);
  return reading;
}

// A comma or a point before just three digits, which may be decimals or a group.
bool IsOpen(std::string_view digits) {
  const auto is_sign = [](char c) { return c == '.' || c == ','; };
  return std::count_if(digits.begin(), digits.end(), is_sign) == 1 && digits.size() > 4 &&
         is_sign(digits[digits.size() - 4]) && digits[0] != '0' && digits.size() <= 7;
}

// What the digits tell of themselves; 0 where they do not.
char ClearDecimalSign(std::string_view digits) {
  const bool has_sign = digits.find_first_of(".,") != std::string_view::npos;
  if (!has_sign || IsOpen(digits)) {
    return 0;
  }
  const bool with_point = Read(digits, '.').has_value();
  const bool with_comma = Read(digits, ',').has_value();
  return with_point == with_comma ? 0 : (with_point ? '.' : ',');
}

std::string Quoted(const std::string& text) {
  return text.empty() ? text : "\"" + text + "\"";
}

std::string FormatOf(const Parts& parts, const Reading& reading) {
  std::string number = reading.has_groups ? "#,##0" : (reading.whole.empty() ? "#" : "0");
  if (!reading.decimals.empty()) {
    number += "." + std::string(reading.decimals.size(), '0');
  }
  if (parts.is_percent) {
    number += parts.has_gap ? " %" : "%";
  }
  number = Quoted(parts.prefix) + number + Quoted(parts.suffix);
  if (parts.is_bracketed) {
    return number + ";(" + number + ")";
  }
  return parts.has_plus ? "+" + number + ";-" + number : number;
}

// Whether a program that shows the number shows these digits.
bool IsKept(const Reading& reading, double value) {
  std::array<char, 2 * kLongestNumber> shown;
  const int length = std::snprintf(shown.data(), shown.size(), "%.*f",
                                   static_cast<int>(reading.decimals.size()), std::abs(value));
  const std::string whole = reading.whole.empty() ? "0" : reading.whole;
  const std::string wanted = reading.decimals.empty() ? whole : whole + "." + reading.decimals;
  return length > 0 && std::string_view(shown.data(), static_cast<std::size_t>(length)) == wanted;
}

std::optional<CellValue> ValueOf(const Parts& parts, const Reading& reading) {
  // "(1)" may be the mark of a note, or the number of a column.
  const bool is_mark = parts.is_bracketed && reading.whole.size() + reading.decimals.size() == 1 &&
                       parts.prefix.empty() && !parts.is_percent;
  if (is_mark || reading.whole.size() + reading.decimals.size() > kSureDigits ||
      (reading.whole.size() > 1 && reading.whole[0] == '0')) {
    return std::nullopt;
  }
  const std::string text = reading.whole + "." + reading.decimals;
  double number = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) {
    return std::nullopt;
  }
  const double value = parts.is_percent ? number / 100 : number;
  if (!IsKept(reading, parts.is_percent ? value * 100 : value) ||
      (parts.is_negative && value == 0)) {
    return std::nullopt;
  }
  return CellValue{parts.is_negative ? -value : value, FormatOf(parts, reading)};
}

}  // namespace

NumberHabits::NumberHabits(std::string_view language)
    : is_english_(language.substr(0, 2) == "en") {}

void NumberHabits::Learn(std::string_view text) {
  const std::string plain = Simplified(text);
  const std::optional<Parts> parts = Cut(Trimmed(plain));
  if (!parts) {
    return;
  }
  const char sign = ClearDecimalSign(parts->digits);
  points_ += sign == '.' ? 1 : 0;
  commas_ += sign == ',' ? 1 : 0;
  open_commas_ +=
      IsOpen(parts->digits) && parts->digits.find(',') != std::string_view::npos ? 1 : 0;
}

char NumberHabits::DecimalSign() const {
  if (points_ > 0 && commas_ > 0) {
    return 0;
  }
  if (points_ > 0 || commas_ > 0) {
    return points_ > 0 ? '.' : ',';
  }
  return is_english_ || open_commas_ >= kOpenCommas ? '.' : 0;
}

std::optional<CellValue> ReadCellValue(std::string_view text, const NumberHabits& habits) {
  const std::string plain = Simplified(text);
  if (std::optional<CellValue> date = ReadCellDate(Trimmed(plain))) {
    return date;
  }
  const std::optional<Parts> parts = Cut(Trimmed(plain));
  if (!parts) {
    return std::nullopt;
  }
  char decimal = ClearDecimalSign(parts->digits);
  if (decimal == 0 && parts->digits.find_first_of(".,") != std::string_view::npos) {
    decimal = habits.DecimalSign();
  } else if (decimal == 0) {
    decimal = '.';  // it has none
  }
  const std::optional<Reading> reading = decimal == 0 ? std::nullopt : Read(parts->digits, decimal);
  return reading ? ValueOf(*parts, *reading) : std::nullopt;
}

}  // namespace TarnixTools::engines::office
