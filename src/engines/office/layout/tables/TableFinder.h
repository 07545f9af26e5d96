// Finds the tables of a page: ruled ones, those with horizontal rules only, and those that nothing
// but the alignment of their words shows.
//
//   for (const FoundTable& table : FindTables(page, text.upright)) ...
//
// Lengths are points on the page, y downwards.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_TABLEFINDER_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_TABLEFINDER_H_

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "engines/office/layout/PageLayout.h"
#include "engines/office/layout/text/PageText.h"
#include "engines/office/pages/PageModel.h"

namespace TarnixTools::engines::office {

struct FoundCell {
  std::uint32_t row = 0;
  std::uint32_t column = 0;
  std::uint32_t row_span = 1;
  std::uint32_t column_span = 1;
  pdf::Box box;
  std::array<Border, 4> borders;  // top, right, bottom, left
  std::optional<Rgb> fill;
  // Counted through all words of all lines of the text, from 0; by line, then from the left.
  std::vector<std::uint32_t> words;
};

struct FoundTable {
  pdf::Box box;
  std::vector<double> columns;   // the edges, from the left: one more than there are columns
  std::vector<double> rows;      // the edges, from the top
  std::vector<FoundCell> cells;  // by row, then by column; every place is in one of them
  std::uint32_t header_rows = 0;
  bool is_ruled = false;
  // Words within it that no cell has: rows of dots that lead to a number, rules made of characters.
  std::vector<std::uint32_t> fillers;
  std::vector<std::uint32_t> paths;  // in PageModel::paths: what belongs to the table
};

// From the top. Every word is in one table at most.
std::vector<FoundTable> FindTables(const PageModel& page, const TurnedText& text);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_TABLES_TABLEFINDER_H_
