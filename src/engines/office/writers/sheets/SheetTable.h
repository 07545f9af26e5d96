// The tables of a document as sheets take them: what goes on over pages is one, and rows and columns
// without anything in them are left out.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETTABLE_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETTABLE_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

struct SheetCell {
  std::uint32_t row = 0;
  std::uint32_t column = 0;
  std::uint32_t last_row = 0;
  std::uint32_t last_column = 0;
  std::string text;              // UTF-8; paragraphs end with a line feed, but for the last
  std::optional<TextLook> look;  // of its first text
  Alignment alignment = Alignment::kLeft;
  VerticalAlignment vertical = VerticalAlignment::kTop;
  std::array<Border, 4> borders;  // top, right, bottom, left
  std::optional<Rgb> fill;
};

struct SheetTable {
  std::vector<double> widths;    // of columns, in points
  std::vector<double> heights;   // of rows, in points
  std::vector<SheetCell> cells;  // by row, then by column
};

// In the order of the document, those in cells of other tables left out.
std::vector<SheetTable> SheetTablesOf(const OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_SHEETTABLE_H_
