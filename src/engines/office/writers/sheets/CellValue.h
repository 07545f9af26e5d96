// What the text of a cell stands for: a number with the format that shows it as it was, a date, or
// nothing but text. No digit is ever changed: where that is in doubt the cell stays text.
//
//   NumberHabits habits;
//   for (each cell) habits.Learn(text);
//   const CellValue value = ReadCellValue(text, habits);
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_CELLVALUE_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_CELLVALUE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::engines::office {

// Which signs part the decimals and the thousands in a document, as far as its numbers tell.
class NumberHabits {
 public:
  NumberHabits() = default;
  // language: "en-GB"; it counts where the numbers do not tell.
  explicit NumberHabits(std::string_view language);

  // text: UTF-8
  void Learn(std::string_view text);

  // '.' or ','; 0 where nothing tells.
  char DecimalSign() const;

 private:
  std::size_t points_ = 0;  // numbers that are clear, by their decimal sign
  std::size_t commas_ = 0;
  std::size_t open_commas_ = 0;  // a comma before three digits, which may be either
  bool is_english_ = false;
};

struct CellValue {
  double number = 0;
  std::string format;  // of numbers and dates, as spreadsheets write it: "#,##0.00"

  friend bool operator==(const CellValue&, const CellValue&) = default;
};

// text: UTF-8. Nothing for what is text.
std::optional<CellValue> ReadCellValue(std::string_view text, const NumberHabits& habits);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_CELLVALUE_H_
