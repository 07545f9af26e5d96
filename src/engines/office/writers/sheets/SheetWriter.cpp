#include "engines/office/writers/sheets/SheetWriter.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <xlsxwriter.h>

#include "engines/office/Limits.h"
#include "engines/office/writers/sheets/CellValue.h"
#include "engines/office/writers/sheets/SheetTable.h"
#include "engines/office/writers/sheets/SheetText.h"
#include "engines/office/writers/sheets/Workbook.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::size_t kLongestText = 32767;  // characters of a cell
constexpr double kPixelsOfPoint = 96.0 / 72;
constexpr double kPixelsOfDigit = 7;  // in the font that column widths count in
constexpr double kPixelsOfMargin = 5;
constexpr double kNarrowest = 2;  // characters
constexpr double kWidest = 120;
constexpr double kLowest = 9;  // points
constexpr double kHighest = 400;
constexpr double kLineHeight = 1.25;  // of the font's size

CellFormat FormatOf(const SheetCell& cell, const std::optional<CellValue>& value) {
  CellFormat format;
  format.number = value ? value->format : "";
  format.fill = cell.fill;
  format.borders = cell.borders;
  format.vertical = cell.vertical;
  format.alignment = cell.alignment;
  format.is_aligned = cell.alignment == Alignment::kRight || cell.alignment == Alignment::kCenter;
  if (cell.look) {
    const TextLook& look = *cell.look;
    format.family = look.face != nullptr ? look.face->family : "";
    format.is_bold = look.face != nullptr && look.face->is_bold;
    format.is_italic = look.face != nullptr && look.face->is_italic;
    format.size = std::clamp(std::round(look.size * 2) / 2, 1.0, 409.0);
    format.color = look.color;
    format.is_underlined = look.is_underlined;
    format.is_struck = look.is_struck;
  }
  format.is_wrapped = cell.text.find('\n') != std::string::npos;
  return format;
}

class Writer {
 public:
  Writer(const OfficeDocument& document, const std::vector<SheetTable>& tables,
         const std::atomic<bool>& is_cancelled)
      : tables_(tables),
        is_cancelled_(is_cancelled),
        habits_(document.facts.language),
        book_(document.facts) {
    for (const SheetTable& table : tables) {
      for (const SheetCell& cell : table.cells) {
        habits_.Learn(cell.text);
      }
    }
  }

  void Write(bool is_single_table, pdf::ByteSink& sink);

 private:
  void AddTable(const SheetTable& table);
  void AddCell(const SheetTable& table, const SheetCell& cell);
  void SetWidths(lxw_worksheet* sheet) const;

  const std::vector<SheetTable>& tables_;
  const std::atomic<bool>& is_cancelled_;
  NumberHabits habits_;
  Workbook book_;
  lxw_worksheet* sheet_ = nullptr;
  std::uint32_t row_ = 0;       // of the sheet, where the next table begins
  std::vector<double> widths_;  // of the sheet's columns, in points
};

// A text that is wider than its cell goes on in more lines, as it did on the page.
bool NeedsLines(const SheetTable& table, const SheetCell& cell) {
  if (!cell.look) {
    return false;
  }
  double width = 0;
  for (std::uint32_t c = cell.column; c <= cell.last_column && c < table.widths.size(); ++c) {
    width += table.widths[c];
  }
  constexpr double kAverageWidth = 0.5;  // ems of a character
  return kAverageWidth * cell.look->size * static_cast<double>(cell.text.size()) > width;
}

void Writer::AddCell(const SheetTable& table, const SheetCell& cell) {
  const std::optional<CellValue> value = ReadCellValue(cell.text, habits_);
  CellFormat look = FormatOf(cell, value);
  look.is_wrapped = look.is_wrapped || (!value && NeedsLines(table, cell));
  lxw_format* format = book_.FormatFor(look);
  const lxw_row_t row = row_ + cell.row;
  const auto column = static_cast<lxw_col_t>(cell.column);
  if (cell.last_row > cell.row || cell.last_column > cell.column) {
    worksheet_merge_range(sheet_, row, column, row_ + cell.last_row,
                          static_cast<lxw_col_t>(cell.last_column), "", format);
  }
  if (value) {
    worksheet_write_number(sheet_, row, column, value->number, format);
  } else if (const std::string text = SheetText(cell.text, kLongestText); !text.empty()) {
    worksheet_write_string(sheet_, row, column, text.c_str(), format);
  } else {
    worksheet_write_blank(sheet_, row, column, format);
  }
}

void Writer::AddTable(const SheetTable& table) {
  std::vector<double> sizes(table.heights.size());
  for (const SheetCell& cell : table.cells) {
    AddCell(table, cell);
    sizes[cell.row] = std::max(sizes[cell.row], cell.look ? cell.look->size : 0);
  }
  for (std::size_t r = 0; r < table.heights.size(); ++r) {
    const double height =
        std::clamp(std::max(table.heights[r], kLineHeight * sizes[r]), kLowest, kHighest);
    worksheet_set_row(sheet_, row_ + static_cast<lxw_row_t>(r), height, nullptr);
  }
  widths_.resize(std::max(widths_.size(), table.widths.size()));
  for (std::size_t c = 0; c < table.widths.size(); ++c) {
    widths_[c] = std::max(widths_[c], table.widths[c]);
  }
  row_ += static_cast<std::uint32_t>(table.heights.size()) + 1;
}

void Writer::SetWidths(lxw_worksheet* sheet) const {
  for (std::size_t c = 0; c < widths_.size(); ++c) {
    const double pixels = widths_[c] * kPixelsOfPoint;
    const double width =
        std::clamp((pixels - kPixelsOfMargin) / kPixelsOfDigit, kNarrowest, kWidest);
    const auto column = static_cast<lxw_col_t>(c);
    worksheet_set_column(sheet, column, column, width, nullptr);
  }
}

void Writer::Write(bool is_single_table, pdf::ByteSink& sink) {
  std::size_t number = 0;
  for (const SheetTable& table : tables_) {
    StopIfCancelled(is_cancelled_);
    const bool is_full = row_ + table.heights.size() >= limits::kMaxSheetRows;
    const bool is_own = !is_single_table && number < limits::kMaxSheets;
    if (sheet_ == nullptr || is_own || is_full) {
      if (sheet_ != nullptr) {
        SetWidths(sheet_);
      }
      const char* name = is_single_table ? "Tables " : "Table ";
      sheet_ = book_.AddSheet(name + std::to_string(++number));
      row_ = 0;
      widths_.clear();
    }
    AddTable(table);
  }
  SetWidths(sheet_);
  StopIfCancelled(is_cancelled_);
  book_.WriteTo(sink);
}

}  // namespace

bool WriteSheets(const OfficeDocument& document, bool is_single_table,
                 const std::atomic<bool>& is_cancelled, pdf::ByteSink& sink) {
  const std::vector<SheetTable> tables = SheetTablesOf(document);
  if (tables.empty()) {
    return false;
  }
  Writer(document, tables, is_cancelled).Write(is_single_table, sink);
  return true;
}

}  // namespace TarnixTools::engines::office
