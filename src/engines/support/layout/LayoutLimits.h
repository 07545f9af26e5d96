// Bounds on what a page may make the analysis of its layout do.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_LAYOUTLIMITS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_LAYOUTLIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::limits {

// Links of a page that text is given.
inline constexpr std::size_t kMaxLinksOfText = 2'000;
// Comparisons of boxes that the search for what belongs together may make on one page; what is left
// then counts as one thing.
inline constexpr std::size_t kMaxBoxComparisons = 20'000'000;
// Columns within columns.
inline constexpr std::size_t kMaxColumnDepth = 6;
// Lines of one page that may belong to tables; more are not looked at.
inline constexpr std::size_t kMaxRulesOfPage = 3'000;
// Words of one page among which tables are looked for.
inline constexpr std::size_t kMaxWordsOfTables = 50'000;
// Columns, rows and places of one table.
inline constexpr std::size_t kMaxTableColumns = 200;
inline constexpr std::size_t kMaxTableRows = 2'000;
inline constexpr std::size_t kMaxTablePlaces = 20'000;
// Points of a font's size, and of a glyph's advance.
inline constexpr double kMaxFontSize = 100'000;
// Columns side by side, as many as Word opens; what stands further to the right is part of the last
// one.
inline constexpr std::size_t kMaxColumnsOfBand = 45;
// Filled boxes of one page that may lie behind the cells of tables; more are not looked at.
inline constexpr std::size_t kMaxFillsOfPage = 20'000;
// Words among which tables of one page are looked for, counted once for each place where a table may
// be; what is left then is in none.
inline constexpr std::size_t kMaxWordsLookedAt = 2'000'000;
inline constexpr std::size_t kMaxTablesOfPage = 500;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_LAYOUTLIMITS_H_
