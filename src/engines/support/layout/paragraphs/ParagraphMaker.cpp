#include "engines/support/layout/paragraphs/ParagraphMaker.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/paragraphs/ParagraphBreaks.h"
#include "engines/support/layout/paragraphs/PieceMaker.h"
#include "engines/support/layout/paragraphs/StructureTags.h"
#include "engines/support/layout/paragraphs/TextRows.h"
#include "engines/support/layout/text/Initials.h"

namespace TarnixTools::engines {

namespace {

constexpr double kAlike = 0.3;          // ems: edges that count as one
constexpr double kJustified = 0.12;     // ems: ends of lines that are made even
constexpr double kCenterIndent = 0.06;  // of the column's width, on both sides of a centred line
constexpr double kCenterSlack = 0.012;
constexpr double kRightIndent = 0.3;
constexpr double kIndent = 1;      // ems, of the first line of a paragraph
constexpr double kWideIndent = 4;  // that no first line of two has

// How far values lie apart.
template <typename Value>
double Spread(std::span<const TextRow> rows, Value value) {
  double least = value(rows.front());
  double most = least;
  for (const TextRow& row : rows) {
    least = std::min(least, value(row));
    most = std::max(most, value(row));
  }
  return most - least;
}

double Left(const TextRow& row) {
  return row.box.left;
}

double Right(const TextRow& row) {
  return row.box.right;
}

Alignment AlignmentOfOne(const TextRow& row, const pdf::Box& column) {
  const double before = row.box.left - column.left;
  const double behind = column.right - row.box.right;
  const double slack = std::max(kCenterSlack * column.width(), kAlike * row.size);
  if (before > kCenterIndent * column.width() && std::abs(before - behind) <= 2 * slack) {
    return Alignment::kCenter;
  }
  if (!row.is_right_to_left && before > kRightIndent * column.width() && behind < slack) {
    return Alignment::kRight;
  }
  return row.is_right_to_left ? Alignment::kRight : Alignment::kLeft;
}

// Two lines that end alike are no paragraph with an indented first line where that would be indented
// far, or the paragraph would.
bool AreTwoToTheRight(std::span<const TextRow> rows, const pdf::Box& column) {
  if (rows.size() != 2 || rows.front().is_right_to_left) {
    return false;
  }
  const double em = rows.front().size;
  const double indent = Left(rows.front()) - Left(rows.back());
  const bool is_far = Left(rows.back()) - column.left > kRightIndent * column.width();
  return Spread(rows, Right) < kAlike * em && indent > (is_far ? kIndent : kWideIndent) * em;
}

// The last line is short as a rule, the first one may be indented.
Alignment AlignmentOf(std::span<const TextRow> rows, const pdf::Box& column) {
  if (rows.size() == 1) {
    return AlignmentOfOne(rows.front(), column);
  }
  const double em = rows.front().size;
  const bool is_to_left = rows.front().is_right_to_left;
  const auto full = rows.first(rows.size() - 1);
  const double lefts = Spread(is_to_left ? full : rows.subspan(1), Left);
  const double rights = Spread(is_to_left ? rows.subspan(1) : full, Right);
  const double middles = Spread(rows, [](const TextRow& row) { return MiddleX(row.box); });
  const double all_lefts = Spread(rows, Left);
  const double all_rights = Spread(rows, Right);
  if (middles < kAlike * em && all_lefts > kAlike * em) {
    return Alignment::kCenter;
  }
  const bool has_room = std::abs(rows.back().box.width() - rows.front().box.width()) > kAlike * em;
  const bool is_even = rights < kJustified * em && lefts < kAlike * em;
  if (AreTwoToTheRight(rows, column)) {
    return Alignment::kRight;
  }
  if (is_even && (rows.size() > 2 || has_room || all_rights < kJustified * em)) {
    const double behind = column.right - full.front().box.right;
    const bool is_sure = rows.size() > 2 || behind < em;
    return is_sure ? Alignment::kJustified : (is_to_left ? Alignment::kRight : Alignment::kLeft);
  }
  if (is_to_left) {
    return Alignment::kRight;
  }
  return all_rights < kAlike * em && all_lefts > 2 * em && lefts > em ? Alignment::kRight
                                                                      : Alignment::kLeft;
}

double FirstIndent(std::span<const TextRow> rows, Alignment alignment) {
  if (rows.size() < 2 || alignment == Alignment::kCenter) {
    return 0;
  }
  const bool is_to_left = rows.front().is_right_to_left;
  double start = is_to_left ? -rows[1].box.right : rows[1].box.left;
  for (const TextRow& row : rows.subspan(1)) {
    start = std::min(start, is_to_left ? -row.box.right : row.box.left);
  }
  const double first = is_to_left ? -rows.front().box.right : rows.front().box.left;
  return std::abs(first - start) > kAlike * rows.front().size ? first - start : 0;
}

double PitchOf(std::span<const TextRow> rows) {
  return rows.size() < 2 ? 0
                         : (rows.back().baseline - rows.front().baseline) /
                               static_cast<double>(rows.size() - 1);
}

// A line with places for its parts, which are counted from the left.
bool IsLineOfParts(const Paragraph& paragraph) {
  const std::vector<TextPiece>& pieces = paragraph.lines.front().pieces;
  return paragraph.lines.size() == 1 && !paragraph.is_right_to_left &&
         std::any_of(pieces.begin(), pieces.end(),
                     [](const TextPiece& piece) { return piece.kind == PieceKind::kTab; });
}

Paragraph ParagraphOf(const PageModel& page, std::span<const TextRow> rows, const pdf::Box& column,
                      PieceMaker& pieces) {
  Paragraph paragraph;
  paragraph.is_right_to_left = rows.front().is_right_to_left;
  paragraph.alignment = AlignmentOf(rows, column);
  paragraph.first_indent = FirstIndent(rows, paragraph.alignment);
  paragraph.line_pitch = PitchOf(rows);
  paragraph.box = rows.front().box;
  for (const TextRow& row : rows) {
    paragraph.box = Around(paragraph.box, row.box);
    paragraph.lines.push_back(pieces.LineOf(row));
  }
  if (IsLineOfParts(paragraph)) {
    paragraph.alignment = Alignment::kLeft;
  }
  if (const LargeInitial* initial = rows.front().first().initial.get()) {
    paragraph.initial =
        Initial{pieces.LineOf(JoinIntoRows(page, {&initial->line}).front()), initial->lines_beside};
  }
  for (std::size_t i = 0; i + 1 < paragraph.lines.size(); ++i) {
    JoinLines(paragraph.lines[i], paragraph.lines[i + 1]);
  }
  return paragraph;
}

}  // namespace

std::vector<Paragraph> ParagraphMaker::Make(const std::vector<const WordLine*>& lines,
                                            const pdf::Box& column) {
  const std::vector<TextRow> rows = JoinIntoRows(*page_, lines);
  const std::vector<std::size_t> starts = FindParagraphStarts(*page_, rows);
  PieceMaker pieces(*page_, *looks_);
  std::vector<Paragraph> paragraphs;
  for (std::size_t i = 0; i < starts.size(); ++i) {
    const std::size_t end = i + 1 < starts.size() ? starts[i + 1] : rows.size();
    const auto own = std::span(rows).subspan(starts[i], end - starts[i]);
    paragraphs.push_back(ParagraphOf(*page_, own, column, pieces));
    ReadTag(*page_, own.front(), paragraphs.back());
  }
  return paragraphs;
}

}  // namespace TarnixTools::engines
