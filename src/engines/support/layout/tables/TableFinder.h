// Finds the tables of a page: ruled ones, those with horizontal rules only, and those that nothing
// but the alignment of their words shows.
//
//   for (const FoundTable& table : FindTables(page, text.upright).tables) ...
//
// Lengths are points on the page, y downwards.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEFINDER_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEFINDER_H_

#include <cstdint>
#include <vector>

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

struct FoundTable {
  Table table;  // whose cells have no blocks yet
  // Of each cell, counted through all words of all lines of the text, from 0; by line, then from the
  // left.
  std::vector<std::vector<std::uint32_t>> words;
  // Words within it that no cell has: rows of dots that lead to a number, rules made of characters.
  std::vector<std::uint32_t> fillers;
  std::vector<std::uint32_t> paths;  // in PageModel::paths: what belongs to the table
};

struct PageTables {
  std::vector<FoundTable> tables;  // from the top, and from the left
  // Text between rules that looks like a table, while the tags tell that it is none. What is level
  // in it is a line.
  std::vector<pdf::Box> ruled_text;
};

// Every word is in one table at most.
PageTables FindTables(const PageModel& page, const TurnedText& text);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEFINDER_H_
