// What rows of words between rules have in common, wherever tables without vertical rules are
// looked for.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_OPENROWS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_OPENROWS_H_

#include <span>
#include <vector>

#include "engines/support/layout/tables/Ink.h"
#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

inline constexpr double kSameEnd = 6;        // points between the ends of rules of one table
inline constexpr double kShortestRule = 60;  // points: of one that may bound a table
inline constexpr double kFarRuledRow = 4.5;  // of the font's size, to the next baseline over a rule

// Those whose middle is in the box.
std::vector<Ink> InksIn(std::span<const Ink> inks, const pdf::Box& box);

// Whether rows between two rules have columns, and are not a text.
bool IsTabular(const std::vector<InkRow>& rows, double width);

// The horizontal rules within the box of an area become its own.
void AddRulesIn(const Rules& rules, TableArea& area);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_OPENROWS_H_
