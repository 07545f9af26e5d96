#include "engines/support/layout/tables/TableRows.h"

#include <algorithm>
#include <cmath>

#include "engines/support/layout/tables/TableColumns.h"

namespace TarnixTools::engines {

namespace {

constexpr double kTightPitch = 1.45;  // of the font's size: between lines of one cell
constexpr double kWideGap = 0.9;  // of the font's size, of white between lines: a paragraph's end

double Middle(const InkRow& line) {
  return line.baseline - 0.3 * line.size;
}

class RowFinder {
 public:
  RowFinder(std::span<const LineCells> lines, std::span<const double> rules, AreaKind kind)
      : lines_(lines), rules_(rules), kind_(kind) {}

  std::vector<std::size_t> Find();

 private:
  bool HasRuleAfter(std::size_t i) const;
  bool HasSharedNumber(std::size_t i, std::size_t j) const;
  bool IsList(std::size_t from, std::size_t to) const;
  bool IsFullList(std::size_t from, std::size_t to) const;
  bool IsStripBreak(std::size_t from, std::size_t i) const;
  bool IsHeaderBreak(std::size_t i) const;
  bool IsBodyBreak(std::size_t i) const;
  bool IsTextBreak(std::size_t i) const;
  std::size_t EndOfHeader() const;

  double Pitch(std::size_t i) const {
    return lines_[i + 1].line->baseline - lines_[i].line->baseline;
  }

  double SizeAt(std::size_t i) const {
    return std::max(lines_[i].line->size, lines_[i + 1].line->size);
  }

  bool IsTight(std::size_t i) const { return Pitch(i) <= kTightPitch * SizeAt(i); }

  static bool StartsSmall(const LineCells& line);

  std::span<const LineCells> lines_;
  std::span<const double> rules_;
  AreaKind kind_;
};

bool RowFinder::HasRuleAfter(std::size_t i) const {
  const double from = Middle(*lines_[i].line);
  const double to = Middle(*lines_[i + 1].line);
  return std::any_of(rules_.begin(), rules_.end(),
                     [from, to](double y) { return y > from && y < to; });
}

bool RowFinder::HasSharedNumber(std::size_t i, std::size_t j) const {
  const LineCells& a = lines_[i];
  const LineCells& b = lines_[j];
  for (std::size_t c = 0; c < a.kinds.size(); ++c) {
    if (a.is_filled[c] && b.is_filled[c] && a.kinds[c] != InkKind::kText &&
        b.kinds[c] != InkKind::kText) {
      return true;
    }
  }
  return false;
}

// Whether every line fills the same columns, two at least.
bool RowFinder::IsFullList(std::size_t from, std::size_t to) const {
  if (to - from < 3 || lines_[from].filled < 2) {
    return false;
  }
  for (std::size_t i = from; i < to; ++i) {
    if (lines_[i].has_span || lines_[i].is_filled != lines_[from].is_filled) {
      return false;
    }
  }
  return true;
}

// Whether the lines between two rules are rows of their own.
bool RowFinder::IsList(std::size_t from, std::size_t to) const {
  std::size_t last = to;
  for (std::size_t i = from; i < to; ++i) {
    if (!lines_[i].has_number || lines_[i].filled < 2) {
      continue;
    }
    if (last != to && HasSharedNumber(last, i)) {
      return true;
    }
    last = i;
  }
  return IsFullList(from, to);
}

// White over the whole width, and labels in the first column above and below it.
bool RowFinder::IsStripBreak(std::size_t from, std::size_t i) const {
  const double gap = lines_[i + 1].line->upper - lines_[i].line->lower;
  if (gap <= kWideGap * SizeAt(i) || !lines_[i + 1].is_filled[0] || lines_[i + 1].filled < 2) {
    return false;
  }
  return std::any_of(lines_.begin() + static_cast<std::ptrdiff_t>(from),
                     lines_.begin() + static_cast<std::ptrdiff_t>(i + 1),
                     [](const LineCells& line) { return line.is_filled[0]; });
}

bool RowFinder::StartsSmall(const LineCells& line) {
  const InkRow& row = *line.line;
  return std::all_of(row.chunks.begin(), row.chunks.end(),
                     [&row](const Chunk& chunk) { return row.inks[chunk.first].starts_small; });
}

bool RowFinder::IsTextBreak(std::size_t i) const {
  const LineCells& next = lines_[i + 1];
  if (!IsTight(i)) {
    return true;
  }
  return next.is_filled[0] && !StartsSmall(next);
}

bool RowFinder::IsBodyBreak(std::size_t i) const {
  const LineCells& line = lines_[i];
  const LineCells& next = lines_[i + 1];
  if (line.has_number && next.has_number) {
    return HasSharedNumber(i, i + 1) || next.filled > 1 || !IsTight(i);
  }
  if (!line.has_number && !next.has_number) {
    return IsTextBreak(i);
  }
  if (next.has_number) {
    const bool is_label = line.filled == 1 && line.is_filled[0];
    const bool goes_on = next.line->inks.front().starts_small || !next.is_filled[0];
    return !(is_label && goes_on && IsTight(i));
  }
  const bool is_label = next.filled == 1 && next.is_filled[0];
  if (is_label) {
    return !(IsTight(i) && next.line->inks.front().starts_small);
  }
  return !IsTight(i) || next.is_filled[0];
}

bool RowFinder::IsHeaderBreak(std::size_t i) const {
  const LineCells& line = lines_[i];
  const LineCells& next = lines_[i + 1];
  if (line.has_span != next.has_span) {
    return true;
  }
  const bool is_label = next.filled == 1 && next.is_filled[0];
  return Pitch(i) > 1.9 * SizeAt(i) || (is_label && line.is_filled[0] && line.filled > 1);
}

// The first line with numbers; 0 where there is none.
std::size_t RowFinder::EndOfHeader() const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (lines_[i].has_number && lines_[i].filled >= 2) {
      return i;
    }
  }
  return 0;
}

std::vector<std::size_t> RowFinder::Find() {
  std::vector<std::size_t> starts = {0};
  const std::size_t header = EndOfHeader();
  for (std::size_t from = 0; from < lines_.size();) {
    std::size_t to = from + 1;
    while (to < lines_.size() && !HasRuleAfter(to - 1)) {
      ++to;
    }
    const bool is_list = kind_ != AreaKind::kGrid || IsList(from, to);
    for (std::size_t i = from; i + 1 < to; ++i) {
      const bool is_break = !is_list         ? IsStripBreak(from, i)
                            : i + 1 < header ? IsHeaderBreak(i)
                                             : i + 1 == header || IsBodyBreak(i);
      if (is_break) {
        starts.push_back(i + 1);
      }
    }
    if (to < lines_.size()) {
      starts.push_back(to);
    }
    from = to;
  }
  return starts;
}

}  // namespace

std::vector<LineCells> CellsOfLines(std::span<const InkRow> lines, std::span<const double> edges) {
  const std::size_t count = edges.size() < 2 ? 1 : edges.size() - 1;
  std::vector<LineCells> result;
  for (const InkRow& line : lines) {
    LineCells cells{.line = &line,
                    .kinds = std::vector<InkKind>(count, InkKind::kBlank),
                    .is_filled = std::vector<bool>(count)};
    for (const Chunk& chunk : line.chunks) {
      const auto [first, last] = ColumnsOf(chunk, edges);
      for (std::size_t c = first; c <= last; ++c) {
        cells.is_filled[c] = true;
        if (!chunk.is_numeric || last > first) {
          cells.kinds[c] = InkKind::kText;
        }
      }
      cells.has_span = cells.has_span || last > first;
      cells.has_number = cells.has_number || (chunk.is_numeric && last == first);
    }
    cells.filled =
        static_cast<std::size_t>(std::count(cells.is_filled.begin(), cells.is_filled.end(), true));
    result.push_back(std::move(cells));
  }
  return result;
}

std::vector<std::size_t> FindRowStarts(std::span<const LineCells> lines,
                                       std::span<const double> rules, AreaKind kind) {
  return lines.empty() ? std::vector<std::size_t>{} : RowFinder(lines, rules, kind).Find();
}

}  // namespace TarnixTools::engines
