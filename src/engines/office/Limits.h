// Bounds on what a document may make a conversion do.
#ifndef TARNIX_ENGINES_OFFICE_LIMITS_H_
#define TARNIX_ENGINES_OFFICE_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::office::limits {

// Characters of a page.
inline constexpr std::size_t kMaxTextOfPage = 4'000'000;
// Bytes of a text that a document gives in place of what is shown, or beside it: /ActualText, /Alt,
// an address, a title.
inline constexpr std::size_t kMaxEntryText = 8192;
// Bytes that the pages of a document may take while its layout is made.
inline constexpr std::size_t kMaxBytesOfPages = std::size_t{2} << 30;
// Bytes of a font's program that is read for its characters.
inline constexpr std::size_t kMaxFontProgramBytes = std::size_t{64} << 20;
// Of one page; what is beyond them is left out, and the page counts as partial.
inline constexpr std::size_t kMaxGlyphsOfPage = 500'000;
inline constexpr std::size_t kMaxPathsOfPage = 200'000;
inline constexpr std::size_t kMaxImagesOfPage = 20'000;
inline constexpr std::size_t kMaxLinksOfPage = 20'000;
inline constexpr std::size_t kMaxMarksOfPage = 100'000;
inline constexpr std::size_t kMaxOutlineItems = 100'000;
// Elements and marked content of a structure tree that are looked at.
inline constexpr std::size_t kMaxStructureItems = 2'000'000;
// How deep in each other elements of a structure tree may be.
inline constexpr std::size_t kMaxStructureDepth = 100;
// Pixels of a picture's longer side.
inline constexpr std::uint32_t kMaxPictureSide = 4000;
// Bytes of an image that goes into the output as it is.
inline constexpr std::size_t kMaxPictureBytes = std::size_t{64} << 20;
// Bytes of the samples that tell how tints of an ink look.
inline constexpr std::size_t kMaxTintBytes = std::size_t{1} << 20;
// Bytes of the programs of fonts that are kept.
inline constexpr std::size_t kMaxBytesOfPrograms = std::size_t{256} << 20;
// Colour spaces of a document that are kept.
inline constexpr std::size_t kMaxColorSpaces = 1'000;
// Fonts of a document that are kept.
inline constexpr std::size_t kMaxFonts = 20'000;
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
// Rows of a sheet, which programs for workbooks allow (ECMA-376, part 1, 18.3.1.73).
inline constexpr std::size_t kMaxSheetRows = 1'048'576;
// Sheets of a workbook; further tables stand below each other on the last one.
inline constexpr std::size_t kMaxSheets = 2'000;
// Points of a font's size, and of a glyph's advance.
inline constexpr double kMaxFontSize = 100'000;
// Columns side by side; what stands further to the right is part of the last one.
inline constexpr std::size_t kMaxColumnsOfBand = 64;
// Filled boxes of one page that may lie behind the cells of tables; more are not looked at.
inline constexpr std::size_t kMaxFillsOfPage = 20'000;
// Words among which tables of one page are looked for, counted once for each place where a table may
// be; what is left then is in none.
inline constexpr std::size_t kMaxWordsLookedAt = 2'000'000;
inline constexpr std::size_t kMaxTablesOfPage = 500;

}  // namespace TarnixTools::engines::office::limits

#endif  // TARNIX_ENGINES_OFFICE_LIMITS_H_
