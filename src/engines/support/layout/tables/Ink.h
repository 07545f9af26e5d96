// The words of a page as the search for tables sees them: boxes of ink, in rows.
//
// Lengths are points, y downwards.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_INK_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_INK_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "engines/support/layout/tables/Rules.h"

namespace TarnixTools::engines {

enum class InkKind : std::uint8_t {
  kText,
  kNumber,  // digits with what belongs to a number: "1,234", "(5)", "12%", "$3"
  kBlank,   // what stands for a number that there is not: "-", "n.a.", "NA"
};

struct Ink {
  double left = 0;
  double right = 0;
  double upper = 0;
  double lower = 0;
  double baseline = 0;
  double size = 0;  // of its font
  InkKind kind = InkKind::kText;
  bool is_bold = false;
  bool is_spaced = false;         // its font has wide spaces, as those of a typewriter
  bool is_group = false;          // three digits, which may go on a number
  bool is_lead = false;           // one to three digits, which such a group may go on
  bool is_sign = false;           // of a currency, by itself
  bool is_unit = false;           // a currency's or that of percent, by itself
  bool starts_small = false;      // with a small letter or a bracket
  bool is_mark = false;           // of a note: a digit or a letter in brackets, asterisks
  bool is_label = false;          // of an item of a list: "1.", "(a)", a bullet
  bool is_leader = false;         // dots that lead to the next column
  std::int32_t number = -1;       // of a few digits and nothing else
  std::uint32_t table = 0;        // that tags say it is in (StructureRole::table)
  std::uint32_t tagged_row = 0;   // likewise
  std::uint32_t tagged_cell = 0;  // likewise
  std::uint32_t word = 0;         // which it is, for the caller
  std::uint32_t row = 0;          // of RowsOf, which sets it

  bool IsNumeric() const { return kind != InkKind::kText; }
};

// What a word is, by its characters.
InkKind KindOfWord(std::u32string_view text);

// Sets what the characters tell: the kind and the flags, but for those of the font.
void Classify(std::u32string_view text, Ink& ink);

// Words that stand together in a row: no wide gap is between them.
struct Chunk {
  std::size_t first = 0;  // in InkRow::inks
  std::size_t last = 0;   // the last one itself
  double left = 0;
  double right = 0;
  bool is_numeric = false;  // all of it
};

// Words on one baseline, from the left.
struct InkRow {
  std::vector<Ink> inks;
  std::vector<Chunk> chunks;
  double upper = 0;
  double lower = 0;
  double baseline = 0;
  double size = 0;  // of the largest font

  bool HasNumber() const;
};

// Rows from the top. What a vertical rule parts is never one chunk.
std::vector<InkRow> RowsOf(std::span<const Ink> inks, std::span<const Rule> vertical = {});

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_INK_H_
