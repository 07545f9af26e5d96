// Where a table may be on a page, and the rules that part it.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEAREA_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEAREA_H_

#include <cstdint>
#include <span>
#include <vector>

#include "engines/support/layout/tables/Ink.h"
#include "engines/support/layout/tables/Rules.h"
#include "pdf/Box.h"

namespace TarnixTools::engines {

enum class AreaKind : std::uint8_t {
  kGrid,     // rules in both directions
  kStripes,  // horizontal rules only
  kText,     // no rules
  kTagged,   // its cells are those that tags tell of
};

struct TableArea {
  AreaKind kind = AreaKind::kText;
  pdf::Box box;
  std::vector<double> columns;  // places of vertical rules, the outer edges included
  std::vector<double> rows;     // places of horizontal rules, likewise
  std::vector<Rule> horizontal;
  std::vector<Rule> vertical;
};

// Groups of rules that cross each other, with two rows or columns at least.
std::vector<TableArea> FindGrids(const Rules& rules);

// What horizontal rules of one length bound.
std::vector<TableArea> FindStripes(const Rules& rules, std::span<const Ink> inks);

struct Panels {
  std::vector<TableArea> areas;
  std::vector<std::uint32_t> headings;  // words over them (Ink::word)
};

// Tables that stand side by side, each under a heading with a rule below it.
Panels FindPanels(const Rules& rules, std::span<const Ink> inks);

// What stands in columns without rules.
std::vector<TableArea> FindTextAreas(const Rules& rules, std::span<const Ink> inks);

// What is known to be a table, with the rules that are in it.
TableArea AreaAround(std::span<const Ink> inks, const Rules& rules);

// Places between which those that were given are near enough to be one; sorted.
std::vector<double> Snap(std::vector<double> places);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_TABLEAREA_H_
