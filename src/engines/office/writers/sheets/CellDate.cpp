#include "engines/office/writers/sheets/CellDate.h"

#include <array>
#include <chrono>
#include <string>

namespace TarnixTools::engines::office {

namespace {

struct Form {
  std::string_view pattern;  // y, m and d stand for digits
  std::string_view format;
};

constexpr std::array<Form, 5> kForms = {{{"yyyy-mm-dd", "yyyy\\-mm\\-dd"},
                                         {"dd.mm.yyyy", "dd\\.mm\\.yyyy"},
                                         {"d.m.yyyy", "d\\.m\\.yyyy"},
                                         {"dd.m.yyyy", "d\\.m\\.yyyy"},
                                         {"d.mm.yyyy", "d\\.m\\.yyyy"}}};

struct Date {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
};

std::optional<Date> Match(std::string_view text, std::string_view pattern) {
  if (text.size() != pattern.size()) {
    return std::nullopt;
  }
  Date date;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_digit = text[i] >= '0' && text[i] <= '9';
    const unsigned digit = is_digit ? static_cast<unsigned>(text[i] - '0') : 0;
    if (is_digit && pattern[i] == 'y') {
      date.year = 10 * date.year + static_cast<int>(digit);
    } else if (is_digit && pattern[i] == 'm') {
      date.month = 10 * date.month + digit;
    } else if (is_digit && pattern[i] == 'd') {
      date.day = 10 * date.day + digit;
    } else if (text[i] != pattern[i]) {
      return std::nullopt;
    }
  }
  return date;
}

// Whether the form shows the date with the digits that it has: a single d shows no leading zero.
bool IsShownAlike(std::string_view text, const Form& form) {
  return form.format[0] != 'd' || form.format[1] == 'd' || (text[0] != '0' && [text] {
           const std::size_t point = text.find('.');
           return text[point + 1] != '0';
         }());
}

}  // namespace

std::optional<CellValue> ReadCellDate(std::string_view text) {
  using std::chrono::day;
  using std::chrono::month;
  using std::chrono::sys_days;
  using std::chrono::year;
  constexpr sys_days kZero = year{1899} / 12 / 30;  // of the day numbers of spreadsheets
  constexpr sys_days kFirst = year{1900} / 3 / 1;   // they take 1900 for a leap year
  for (const Form& form : kForms) {
    const std::optional<Date> date = Match(text, form.pattern);
    if (!date || !IsShownAlike(text, form)) {
      continue;
    }
    const std::chrono::year_month_day parts =
        year{date->year} / month{date->month} / day{date->day};
    if (parts.ok() && sys_days{parts} >= kFirst) {
      return CellValue{static_cast<double>((sys_days{parts} - kZero).count()),
                       std::string(form.format)};
    }
  }
  return std::nullopt;
}

}  // namespace TarnixTools::engines::office
