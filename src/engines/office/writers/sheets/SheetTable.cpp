#include "engines/office/writers/sheets/SheetTable.h"

#include <algorithm>
#include <variant>

#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {

namespace {

using LookList = std::vector<TextLook>;

// The first look of a paragraph's text; nothing for one without text.
std::optional<TextLook> LookOf(const Paragraph& paragraph, const LookList& looks) {
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      if (piece.kind == PieceKind::kText && piece.look < looks.size()) {
        return looks[piece.look];
      }
    }
  }
  return std::nullopt;
}

void AddParagraph(const Paragraph& paragraph, const LookList& looks, SheetCell& cell) {
  const bool is_first = cell.text.empty();
  cell.text += is_first ? "" : "\n";
  if (paragraph.label) {
    cell.text += paragraph.label->text + " ";
  }
  cell.text += TextOf(paragraph);
  if (is_first) {
    cell.alignment = paragraph.alignment;
    cell.look = LookOf(paragraph, looks);
  }
}

// The text of the blocks, with that of tables among them.
void AddText(const std::vector<Block>& blocks, const LookList& looks, SheetCell& cell) {
  std::vector<const Block*> left;
  const auto push = [&left](const std::vector<Block>& more) {
    for (auto block = more.rbegin(); block != more.rend(); ++block) {
      left.push_back(&*block);
    }
  };
  push(blocks);
  while (!left.empty()) {
    const Block* block = left.back();
    left.pop_back();
    if (const auto* paragraph = std::get_if<Paragraph>(&block->content)) {
      AddParagraph(*paragraph, looks, cell);
    } else if (const auto* table = std::get_if<Table>(&block->content)) {
      for (auto inner = table->cells.rbegin(); inner != table->cells.rend(); ++inner) {
        push(inner->blocks);
      }
    }
  }
}

SheetCell CellOf(const TableCell& source, const LookList& looks) {
  SheetCell cell{.row = source.row,
                 .column = source.column,
                 .last_row = source.row + std::max(source.row_span, 1U) - 1,
                 .last_column = source.column + std::max(source.column_span, 1U) - 1,
                 .vertical = source.alignment,
                 .borders = source.borders,
                 .fill = source.fill};
  AddText(source.blocks, looks, cell);
  return cell;
}

// Where each row, or column, of a table comes to stand when empty ones are left out.
std::vector<std::uint32_t> PlacesWithout(const std::vector<bool>& is_filled) {
  std::vector<std::uint32_t> places;
  std::uint32_t next = 0;
  for (const bool filled : is_filled) {
    places.push_back(next);
    next += filled ? 1 : 0;
  }
  places.push_back(next);
  return places;
}

std::vector<double> SizesOf(const std::vector<double>& edges, const std::vector<bool>& is_filled) {
  std::vector<double> sizes;
  for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
    if (is_filled[i]) {
      sizes.push_back(edges[i + 1] - edges[i]);
    }
  }
  return sizes;
}

bool IsWithin(const TableCell& cell, const Table& table) {
  return cell.row + std::uint64_t{cell.row_span} < table.rows.size() &&
         cell.column + std::uint64_t{cell.column_span} < table.columns.size();
}

SheetTable TableOf(const Table& source, const LookList& looks) {
  SheetTable table;
  std::vector<bool> rows(source.rows.size() - 1);
  std::vector<bool> columns(source.columns.size() - 1);
  for (const TableCell& cell : source.cells) {
    if (!IsWithin(cell, source)) {
      continue;
    }
    table.cells.push_back(CellOf(cell, looks));
    if (!table.cells.back().text.empty()) {
      rows[cell.row] = true;
      columns[cell.column] = true;
    }
  }
  const std::vector<std::uint32_t> row_places = PlacesWithout(rows);
  const std::vector<std::uint32_t> column_places = PlacesWithout(columns);
  std::erase_if(table.cells, [&](const SheetCell& cell) {
    return row_places[cell.row] == row_places[cell.last_row + 1] ||
           column_places[cell.column] == column_places[cell.last_column + 1];
  });
  for (SheetCell& cell : table.cells) {
    cell.last_row = row_places[cell.last_row + 1] - 1;
    cell.row = row_places[cell.row];
    cell.last_column = column_places[cell.last_column + 1] - 1;
    cell.column = column_places[cell.column];
  }
  table.widths = SizesOf(source.columns, columns);
  table.heights = SizesOf(source.rows, rows);
  return table;
}

std::string RowText(const SheetTable& table, std::uint32_t row) {
  std::string text;
  for (const SheetCell& cell : table.cells) {
    if (cell.row > row) {
      break;
    }
    if (cell.row == row) {
      text += std::to_string(cell.column) + ":" + cell.text + "\t";
    }
  }
  return text;
}

// How many rows at the beginning of a table are those that another one begins with.
std::uint32_t RepeatedRows(const SheetTable& first, const SheetTable& next, std::uint32_t most) {
  std::uint32_t count = 0;
  while (count < most && count + 1 < next.heights.size() && count < first.heights.size() &&
         RowText(first, count) == RowText(next, count)) {
    ++count;
  }
  return count;
}

void Append(SheetTable next, std::uint32_t header_rows, SheetTable& table) {
  const std::uint32_t skipped = RepeatedRows(table, next, std::max(header_rows, 1U));
  const auto before = static_cast<std::uint32_t>(table.heights.size());
  for (SheetCell& cell : next.cells) {
    if (cell.row >= skipped) {
      cell.row += before - skipped;
      cell.last_row += before - skipped;
      table.cells.push_back(std::move(cell));
    }
  }
  table.heights.insert(table.heights.end(), next.heights.begin() + skipped, next.heights.end());
}

class Collector {
 public:
  explicit Collector(std::vector<SheetTable>& tables) : tables_(&tables) {}

  void Add(const std::vector<Block>& blocks, const LookList& looks) {
    for (const Block& block : blocks) {
      const auto* table = std::get_if<Table>(&block.content);
      if (table == nullptr || table->rows.size() < 2 || table->columns.size() < 2) {
        continue;
      }
      SheetTable made = TableOf(*table, looks);
      if (made.widths.empty()) {
        continue;
      }
      if (table->goes_on && !tables_->empty() &&
          tables_->back().widths.size() == made.widths.size()) {
        Append(std::move(made), table->header_rows, tables_->back());
      } else {
        tables_->push_back(std::move(made));
      }
    }
  }

 private:
  std::vector<SheetTable>* tables_;
};

}  // namespace

std::vector<SheetTable> SheetTablesOf(const OfficeDocument& document) {
  std::vector<SheetTable> tables;
  Collector collector(tables);
  for (const OfficePage& page : document.pages) {
    for (const Band& band : page.layout.bands) {
      for (const Column& column : band.columns) {
        collector.Add(column.blocks, page.layout.looks);
      }
    }
    for (const Floating& floating : page.layout.floats) {
      collector.Add(floating.blocks, page.layout.looks);
    }
  }
  return tables;
}

}  // namespace TarnixTools::engines::office
