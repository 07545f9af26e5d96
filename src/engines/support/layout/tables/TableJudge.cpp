#include "engines/support/layout/tables/TableJudge.h"

#include <algorithm>
#include <set>
#include <vector>

namespace TarnixTools::engines {

namespace {

constexpr double kWordsOfProse = 25;   // in a cell on the average
constexpr double kFilledOfGrid = 0.2;  // of the cells
constexpr double kFilledOfText = 0.45;
constexpr double kFilledOfWords = 0.7;  // where no column is of numbers
constexpr std::size_t kRowsOfWords = 4;
constexpr double kNumericColumn = 0.6;
constexpr double kWordsOfText = 4;
constexpr double kNearWords = 0.45;  // of the font's size: between words of a text
constexpr double kNearCells = 0.3;  // where a line is between: words of two cells are farther apart
constexpr std::size_t kFewestCuts = 4;  // by lines
constexpr double kInset = 0.15;  // of the font's size: how far in a rule is that crosses a word

struct ColumnFacts {
  std::size_t filled = 0;
  std::size_t numeric = 0;
};

struct Facts {
  std::size_t filled = 0;
  std::size_t words = 0;
  std::size_t rows = 0;  // with words
  std::size_t columns = 0;
  std::size_t full_rows = 0;  // with words in two columns at least
  std::size_t numeric_columns = 0;
  std::vector<ColumnFacts> by_column;
};

bool IsNumeric(const CellShape& cell) {
  return !cell.inks.empty() && std::all_of(cell.inks.begin(), cell.inks.end(),
                                           [](const Ink& ink) { return ink.IsNumeric(); });
}

Facts FactsOf(const TableShape& shape) {
  Facts facts;
  facts.by_column.resize(shape.columns.size() - 1);
  std::vector<std::size_t> in_row(shape.rows.size() - 1);
  std::vector<std::size_t> in_column(shape.columns.size() - 1);
  for (const CellShape& cell : shape.cells) {
    if (cell.inks.empty()) {
      continue;
    }
    ++facts.filled;
    facts.words += cell.inks.size();
    for (std::size_t row = cell.row; row < cell.row_end; ++row) {
      ++in_row[row];
    }
    for (std::size_t column = cell.column; column < cell.column_end; ++column) {
      ++in_column[column];
    }
    if (cell.column_end == cell.column + 1) {
      ++facts.by_column[cell.column].filled;
      facts.by_column[cell.column].numeric += IsNumeric(cell) ? 1 : 0;
    }
  }
  for (const std::size_t count : in_row) {
    facts.rows += count > 0 ? 1 : 0;
    facts.full_rows += count > 1 ? 1 : 0;
  }
  for (const std::size_t count : in_column) {
    facts.columns += count > 0 ? 1 : 0;
  }
  for (const ColumnFacts& column : facts.by_column) {
    const double share = static_cast<double>(column.numeric) /
                         static_cast<double>(std::max<std::size_t>(column.filled, 1));
    facts.numeric_columns += column.numeric >= 2 && share >= kNumericColumn ? 1 : 0;
  }
  return facts;
}

bool IsTextTable(const Facts& facts) {
  if (facts.full_rows < 3 || 2 * facts.full_rows < facts.rows) {
    return false;
  }
  const double cells = static_cast<double>(facts.rows * facts.columns);
  const double share = static_cast<double>(facts.filled) / cells;
  const double words = static_cast<double>(facts.words) / static_cast<double>(facts.filled);
  if (facts.numeric_columns > 0) {
    return share >= kFilledOfText && words <= 2 * kWordsOfText;
  }
  return facts.columns >= 3 && facts.full_rows >= kRowsOfWords && share >= kFilledOfWords &&
         words <= kWordsOfText;
}

// Whether the first column is but the labels of a list.
bool IsList(const TableShape& shape, const Facts& facts) {
  if (facts.columns != 2) {
    return false;
  }
  std::size_t labels = 0;
  for (const CellShape& cell : shape.cells) {
    labels += cell.column == 0 && cell.inks.size() == 1 && cell.inks[0].is_label ? 1 : 0;
  }
  return 2 * labels > facts.rows;
}

// Whether the last column counts pages, whole numbers that never become less, and the one before it
// has titles.
bool HasPageNumbers(const TableShape& shape, const Facts& facts) {
  const ColumnFacts& titles = facts.by_column[facts.by_column.size() - 2];
  if (titles.numeric > 0) {
    return false;
  }
  std::int32_t first = -1;
  std::int32_t last = -1;
  std::size_t count = 0;
  for (const CellShape& cell : shape.cells) {
    if (cell.column_end + 1 != shape.columns.size() || cell.inks.empty()) {
      continue;
    }
    const std::int32_t number = cell.inks.size() == 1 ? cell.inks[0].number : -1;
    if (number < last || number < 0) {
      return false;
    }
    first = first < 0 ? number : first;
    last = number;
    ++count;
  }
  return count >= 3 && last > first;
}

bool IsContents(const TableShape& shape, const Facts& facts, std::span<const Ink> leaders) {
  if (facts.columns > 3) {
    return false;
  }
  if (HasPageNumbers(shape, facts)) {
    return true;
  }
  const auto within = std::count_if(leaders.begin(), leaders.end(), [&shape](const Ink& ink) {
    const double y = (ink.upper + ink.lower) / 2;
    return y > shape.rows.front() && y < shape.rows.back() && ink.right > shape.columns.front() &&
           ink.left < shape.columns.back();
  });
  return 2 * static_cast<std::size_t>(within) >= facts.rows;
}

// Whether a line runs through the word, and not along its edge.
bool IsCrossed(const Ink& ink, std::span<const Rule> vertical) {
  const double y = (ink.upper + ink.lower) / 2;
  const double inset = kInset * ink.size;
  return std::any_of(vertical.begin(), vertical.end(), [&](const Rule& rule) {
    return !rule.is_edge && rule.at > ink.left + inset && rule.at < ink.right - inset &&
           rule.from < y && rule.to > y;
  });
}

// Null where there is none.
const Rule* RuleBetween(const Ink& a, const Ink& b, std::span<const Rule> vertical) {
  const double y = (a.upper + a.lower) / 2;
  const auto rule = std::find_if(vertical.begin(), vertical.end(), [&](const Rule& own) {
    return own.at > a.right - 1 && own.at < b.left + 1 && own.from < y && own.to > y;
  });
  return rule == vertical.end() ? nullptr : &*rule;
}

}  // namespace

bool CutsText(std::span<const Rule> vertical, std::span<const Ink> inks) {
  std::size_t parted = 0;
  std::size_t cut_by_fills = 0;
  std::size_t cut_by_lines = 0;
  for (const InkRow& row : RowsOf(inks)) {
    for (std::size_t i = 0; i < row.inks.size(); ++i) {
      const bool is_crossed = IsCrossed(row.inks[i], vertical);
      parted += is_crossed ? 1 : 0;
      cut_by_lines += is_crossed ? 1 : 0;
      const Rule* rule = i == 0 ? nullptr : RuleBetween(row.inks[i - 1], row.inks[i], vertical);
      if (rule == nullptr) {
        continue;
      }
      const double gap = row.inks[i].left - row.inks[i - 1].right;
      ++parted;
      cut_by_fills += rule->is_edge && gap < kNearWords * row.size ? 1 : 0;
      cut_by_lines += !rule->is_edge && gap < kNearCells * row.size ? 1 : 0;
    }
  }
  return 2 * (cut_by_fills + cut_by_lines) > parted &&
         (cut_by_fills > 0 || cut_by_lines >= kFewestCuts);
}

bool IsTable(const TableShape& shape, AreaKind kind, std::span<const Ink> leaders) {
  if (shape.rows.size() < 3 || shape.columns.size() < 3) {
    return false;
  }
  const Facts facts = FactsOf(shape);
  if (facts.rows < 2 || facts.columns < 2 || facts.filled < 4 || facts.full_rows < 2) {
    return false;
  }
  if (static_cast<double>(facts.words) > kWordsOfProse * static_cast<double>(facts.filled)) {
    return false;
  }
  if (kind == AreaKind::kText && IsContents(shape, facts, leaders)) {
    return false;
  }
  if (kind == AreaKind::kText) {
    return IsTextTable(facts) && !IsList(shape, facts);
  }
  return static_cast<double>(facts.filled) >=
         kFilledOfGrid * static_cast<double>(facts.rows * facts.columns);
}

}  // namespace TarnixTools::engines
