#include "engines/support/layout/TableMaker.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/text/WordLines.h"

namespace TarnixTools::engines {

namespace {

constexpr double kEvenRoom = 3;          // points by which the room above and below text may differ
constexpr double kMuchRoom = 4;          // points above text that does not begin at the top
constexpr double kRoomBesideText = 1.5;  // points to the edges of its cell
constexpr double kLeastColumn = 1;       // points

VerticalAlignment AlignmentIn(const pdf::Box& cell, const pdf::Box& text) {
  const double above = UpperEdge(text) - UpperEdge(cell);
  const double below = LowerEdge(cell) - LowerEdge(text);
  if (above < kMuchRoom || above + kEvenRoom < below) {
    return VerticalAlignment::kTop;
  }
  return std::abs(above - below) <= kEvenRoom ? VerticalAlignment::kMiddle
                                              : VerticalAlignment::kBottom;
}

// How far text reaches on both sides of each edge between columns.
struct TextAtEdges {
  std::vector<double> ends;    // of the columns to its left
  std::vector<double> starts;  // of those to its right
};

TextAtEdges TextBesideEdges(const Table& table) {
  TextAtEdges text{
      .ends = std::vector<double>(table.columns.size(), -std::numeric_limits<double>::infinity()),
      .starts = std::vector<double>(table.columns.size(), std::numeric_limits<double>::infinity())};
  for (const TableCell& cell : table.cells) {
    for (const Block& block : cell.blocks) {
      double& end = text.ends[cell.column + cell.column_span];
      double& start = text.starts[cell.column];
      end = std::max(end, BoxOf(block).right);
      start = std::min(start, BoxOf(block).left);
    }
  }
  return text;
}

// Edges that text reaches over move into the gap beside it: cells would break its lines.
void MoveEdgesOffText(Table& table) {
  const TextAtEdges text = TextBesideEdges(table);
  std::vector<double>& edges = table.columns;
  for (std::size_t i = 1; i + 1 < edges.size(); ++i) {
    const double end = text.ends[i];
    const double start = text.starts[i];
    if (end >= start) {
      continue;
    }
    const double least = std::min(end + kRoomBesideText, (end + start) / 2);
    const double most = std::max(start - kRoomBesideText, (end + start) / 2);
    const double moved = std::max(std::min(edges[i], most), least);
    if (moved > edges[i - 1] + kLeastColumn && moved < edges[i + 1] - kLeastColumn) {
      edges[i] = moved;
    }
  }
  for (TableCell& cell : table.cells) {
    cell.box.left = edges[cell.column];
    cell.box.right = edges[cell.column + cell.column_span];
  }
}

}  // namespace

TableMaker::TableMaker(const std::vector<WordLine>& lines, ParagraphMaker& paragraphs)
    : lines_(&lines), paragraphs_(&paragraphs) {
  for (std::uint32_t line = 0; line < lines.size(); ++line) {
    for (std::uint32_t word = 0; word < lines[line].words.size(); ++word) {
      places_.push_back({line, word});
    }
  }
  is_taken_.assign(places_.size(), false);
}

void TableMaker::FillCell(std::vector<std::uint32_t> words, TableCell& cell) {
  std::sort(words.begin(), words.end());
  std::vector<WordLine> lines;
  std::uint32_t line = 0;
  for (const std::uint32_t word : words) {
    if (is_taken_[word]) {
      continue;
    }
    is_taken_[word] = true;
    const WordLine& source = (*lines_)[places_[word].line];
    if (lines.empty() || places_[word].line != line) {
      lines.emplace_back().is_right_to_left = source.is_right_to_left;
      line = places_[word].line;
    }
    lines.back().words.push_back(source.words[places_[word].word]);
  }
  std::vector<const WordLine*> all;
  for (WordLine& own : lines) {
    MeasureLine(own);
    all.push_back(&own);
  }
  for (Paragraph& paragraph : paragraphs_->Make(all, cell.box)) {
    cell.blocks.push_back(Block{std::move(paragraph)});
  }
}

Table TableMaker::Make(FoundTable found) {
  Table table = std::move(found.table);
  for (std::size_t i = 0; i < table.cells.size(); ++i) {
    TableCell& cell = table.cells[i];
    FillCell(std::move(found.words[i]), cell);
    if (!cell.blocks.empty()) {
      pdf::Box text = std::get<Paragraph>(cell.blocks.front().content).box;
      text = Around(text, std::get<Paragraph>(cell.blocks.back().content).box);
      cell.alignment = AlignmentIn(cell.box, text);
    }
  }
  for (const std::uint32_t word : found.fillers) {
    is_taken_[word] = true;
  }
  MoveEdgesOffText(table);
  return table;
}

std::vector<WordLine> TableMaker::LinesOutside() const {
  std::vector<WordLine> outside;
  std::size_t at = 0;
  for (const WordLine& line : *lines_) {
    WordLine rest;
    rest.is_right_to_left = line.is_right_to_left;
    for (const Word& word : line.words) {
      if (!is_taken_[at++]) {
        rest.words.push_back(word);
      }
    }
    if (!rest.words.empty()) {
      MeasureLine(rest);
      outside.push_back(std::move(rest));
    }
  }
  return outside;
}

}  // namespace TarnixTools::engines
