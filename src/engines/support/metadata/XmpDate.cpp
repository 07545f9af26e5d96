#include "engines/support/metadata/XmpDate.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace TarnixTools::engines {

namespace {

// Takes numbers and marks off the front of a text.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : text_(text) {}

  bool is_done() const { return text_.empty(); }

  bool Skip(char mark) {
    const bool is_there = text_.starts_with(mark);
    text_.remove_prefix(is_there ? 1 : 0);
    return is_there;
  }

  // False for anything but this many digits that say something from low to high.
  bool Take(std::size_t digits, int low, int high, int& value) {
    int number = 0;
    for (std::size_t i = 0; i < digits; ++i) {
      if (i >= text_.size() || text_[i] < '0' || text_[i] > '9') {
        return false;
      }
      number = number * 10 + (text_[i] - '0');
    }
    text_.remove_prefix(digits);
    value = number;
    return number >= low && number <= high;
  }

  void SkipDigits() {
    const std::size_t end = text_.find_first_not_of("0123456789");
    text_.remove_prefix(end == std::string_view::npos ? text_.size() : end);
  }

  bool AtDigit() const { return !text_.empty() && text_[0] >= '0' && text_[0] <= '9'; }

 private:
  std::string_view text_;
};

constexpr int kLastYear = 9999;

// What stands behind "Z" in some dates of the document information: no hours and minutes, which only
// come behind the mark.
bool TakeZero(DateReader& reader, char mark) {
  int zero = 0;
  return reader.Take(2, 0, 0, zero) &&
         (!reader.Skip(mark) || !reader.AtDigit() || reader.Take(2, 0, 0, zero));
}

// "Z", or a sign and hours and minutes with a mark between them.
bool TakeOffset(DateReader& reader, XmpDate& date, char mark, bool needs_minutes) {
  if (reader.Skip('Z')) {
    date.offset = 0;
    return needs_minutes || !reader.AtDigit() || TakeZero(reader, mark);
  }
  const bool is_east = reader.Skip('+');
  if (!is_east && !reader.Skip('-')) {
    return false;
  }
  int hours = 0;
  int minutes = 0;
  if (!reader.Take(2, 0, 23, hours)) {
    return false;
  }
  const bool has_minutes = reader.Skip(mark);
  if ((needs_minutes && !has_minutes) ||
      ((needs_minutes || (has_minutes && reader.AtDigit())) && !reader.Take(2, 0, 59, minutes))) {
    return false;
  }
  date.offset = (is_east ? 1 : -1) * (hours * 60 + minutes);
  return true;
}

bool TakeTime(DateReader& reader, XmpDate& date) {
  if (!reader.Take(2, 0, 23, date.hour) || !reader.Skip(':') ||
      !reader.Take(2, 0, 59, date.minute)) {
    return false;
  }
  if (reader.Skip(':')) {
    if (!reader.Take(2, 0, 59, date.second)) {
      return false;
    }
    if (reader.Skip('.')) {
      if (!reader.AtDigit()) {
        return false;
      }
      reader.SkipDigits();
    }
  }
  return reader.is_done() || TakeOffset(reader, date, ':', true);
}

// Days from the first of March of the year 0 (proleptic Gregorian calendar).
std::int64_t DayNumber(int year, int month, int day) {
  const std::int64_t shifted_year = year - (month <= 2 ? 1 : 0);
  const std::int64_t shifted_month = (month + 9) % 12;
  return 365 * shifted_year + shifted_year / 4 - shifted_year / 100 + shifted_year / 400 +
         (153 * shifted_month + 2) / 5 + day;
}

std::int64_t SecondOf(const XmpDate& date) {
  return ((DayNumber(date.year, date.month, date.day) * 24 + date.hour) * 60 + date.minute -
          date.offset.value_or(0)) *
             60 +
         date.second;
}

}  // namespace

bool XmpDate::IsSameMoment(const XmpDate& other) const {
  return SecondOf(*this) == SecondOf(other);
}

std::optional<XmpDate> ReadXmpDate(std::string_view text) {
  DateReader reader(text);
  XmpDate date;
  bool is_fine = reader.Take(4, 0, kLastYear, date.year);
  if (is_fine && reader.Skip('-')) {
    is_fine = reader.Take(2, 1, 12, date.month);
    if (is_fine && reader.Skip('-')) {
      is_fine = reader.Take(2, 1, 31, date.day) && (!reader.Skip('T') || TakeTime(reader, date));
    }
  }
  return is_fine && reader.is_done() ? std::optional<XmpDate>(date) : std::nullopt;
}

std::optional<XmpDate> ReadInfoDate(std::string_view text) {
  DateReader reader(text.substr(text.starts_with("D:") ? 2 : 0));
  XmpDate date;
  if (!reader.Take(4, 0, kLastYear, date.year)) {
    return std::nullopt;
  }
  const std::array<std::pair<int*, std::pair<int, int>>, 5> parts = {{{&date.month, {1, 12}},
                                                                      {&date.day, {1, 31}},
                                                                      {&date.hour, {0, 23}},
                                                                      {&date.minute, {0, 59}},
                                                                      {&date.second, {0, 59}}}};
  for (const auto& [value, range] : parts) {
    if (!reader.AtDigit()) {
      break;
    }
    if (!reader.Take(2, range.first, range.second, *value)) {
      return std::nullopt;
    }
  }
  if (reader.is_done()) {
    return date;
  }
  const bool has_offset = TakeOffset(reader, date, '\'', false);
  reader.Skip('\'');
  return has_offset && reader.is_done() ? std::optional<XmpDate>(date) : std::nullopt;
}

bool IsXmpDate(std::string_view text) {
  return ReadXmpDate(text).has_value();
}

std::string XmpDateText(const XmpDate& date) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", date.year, date.month,
                date.day, date.hour, date.minute, date.second);
  std::string out = text.data();
  if (!date.offset) {
    return out;
  }
  const int minutes = *date.offset < 0 ? -*date.offset : *date.offset;
  std::snprintf(text.data(), text.size(), "%c%02d:%02d", *date.offset < 0 ? '-' : '+', minutes / 60,
                minutes % 60);
  return out + (minutes == 0 ? "Z" : text.data());
}

}  // namespace TarnixTools::engines
