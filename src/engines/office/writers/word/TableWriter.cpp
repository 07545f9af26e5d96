#include "engines/office/writers/word/TableWriter.h"

#include <algorithm>
#include <array>

#include "engines/office/writers/text/TableGrid.h"
#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/JoinedColumns.h"
#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr int kDeepest = 3;  // tables within tables
constexpr double kSmallestRow = 1;
// Of the page's height: tables that end below are not given rows that are repeated. LibreOffice
// breaks such a table long before the page ends.
constexpr double kRepeatsAbove = 0.7;
constexpr double kRoomToGrow = 12;  // points
constexpr double kEmptyLine = 10;   // points, of a cell without text

class Writer {
 public:
  Writer(Story& story, const OfficePage& page, const Table& table, const FlowRoom& room)
      : story_(story), page_(page), table_(table), room_(room), grid_(table), xml_(story.xml) {}

  double Write(double top) {
    xml_.Open("w:tbl");
    WriteProperties();
    xml_.Open("w:tblGrid");
    for (std::size_t column = 0; column < grid_.columns(); ++column) {
      xml_.Leaf("w:gridCol", {{"w:w", Width(column, 1)}});
    }
    xml_.Close();
    double y = top;
    for (std::size_t row = 0; row < grid_.rows(); ++row) {
      const double late = y - top - (table_.rows[row] - table_.rows.front());
      y += WriteRow(row, y, std::max(Height(row) - std::max(late, 0.0), kSmallestRow));
    }
    xml_.Close();
    return y - top + EdgeWidth();
  }

 private:
  std::int64_t Width(std::size_t column, std::size_t span) const {
    return std::max<std::int64_t>(Twips(table_.columns[column + span] - table_.columns.front()) -
                                      Twips(table_.columns[column] - table_.columns.front()),
                                  1);
  }

  double Height(std::size_t row) const {
    const std::int64_t twips = Twips(table_.rows[row + 1] - table_.rows.front()) -
                               Twips(table_.rows[row] - table_.rows.front());
    return std::max(static_cast<double>(twips) / 20, kSmallestRow);
  }

  // The upper border of the first row is outside of its height.
  double EdgeWidth() const {
    double width = 0;
    for (const TableCell& cell : table_.cells) {
      width = cell.row == 0 ? std::max(width, cell.borders[0].width) : width;
    }
    return width;
  }

  void WriteProperties() {
    xml_.Open("w:tblPr");
    // Columns from the left, in sections that run to the left, too.
    xml_.Leaf("w:bidiVisual", {{"w:val", 0}});
    xml_.Leaf("w:tblW", {{"w:w", Width(0, grid_.columns())}, {"w:type", "dxa"}});
    xml_.Leaf("w:tblInd", {{"w:w", Twips(table_.columns.front() - room_.left)}, {"w:type", "dxa"}});
    xml_.Leaf("w:tblLayout", {{"w:type", "fixed"}});
    xml_.Open("w:tblCellMar");
    for (const std::string_view side : {"w:top", "w:left", "w:bottom", "w:right"}) {
      xml_.Leaf(side, {{"w:w", 0}, {"w:type", "dxa"}});
    }
    xml_.Close();
    xml_.Close();
  }

  // Whether a row that grew would have no room on the page any more.
  bool EndsPage() const {
    return room_.page_bottom > 0 && LowerEdge(table_.box) + kRoomToGrow > room_.page_bottom;
  }

  // least: a row before it may have become higher than it was, and this one gives way.
  double WriteRow(std::size_t row, double top, double least) {
    xml_.Open("w:tr");
    xml_.Open("w:trPr");
    xml_.Leaf("w:cantSplit");
    xml_.Leaf("w:trHeight",
              {{"w:val", Twips(least)}, {"w:hRule", EndsPage() ? "exact" : "atLeast"}});
    if (row < table_.header_rows && LowerEdge(table_.box) < kRepeatsAbove * page_.layout.height) {
      xml_.Leaf("w:tblHeader");
    }
    xml_.Close();
    double height = least;
    for (std::size_t column = 0; column < grid_.columns();) {
      const std::size_t span = grid_.SpanAt(row, column);
      const double used = WriteCell(row, column, span, top);
      const bool is_high = grid_.HeightAt(row, column) > 1;
      height = is_high ? height : std::max(height, used);
      column += span;
    }
    xml_.Close();
    return height;
  }

  // Returns how high its content is.
  double WriteCell(std::size_t row, std::size_t column, std::size_t span, double top) {
    const TableCell* cell = grid_.At(row, column);
    const bool is_first = cell == nullptr || cell->row == row;
    xml_.Open("w:tc");
    xml_.Open("w:tcPr");
    xml_.Leaf("w:tcW", {{"w:w", Width(column, span)}, {"w:type", "dxa"}});
    if (span > 1) {
      xml_.Leaf("w:gridSpan", {{"w:val", span}});
    }
    if (cell != nullptr && cell->row_span > 1) {
      xml_.Leaf("w:vMerge", {{"w:val", is_first ? "restart" : "continue"}});
    }
    if (cell != nullptr) {
      WriteBorders(*cell, row);
    }
    const bool is_turned = cell != nullptr && cell->angle != 0;
    if (is_turned) {
      xml_.Leaf("w:textDirection", {{"w:val", cell->angle == 90 ? "tbRl" : "btLr"}});
    }
    xml_.Close();
    FlowRoom room = RoomFor(row, column, span, top);
    if (is_turned) {
      const pdf::Box box = cell->TextBox();
      room.left = box.left;
      room.right = box.right;
      room.top = UpperEdge(box);
      room.bottom = LowerEdge(box);
    }
    FlowWriter flow(story_, page_, room);
    const bool has_content = cell != nullptr && is_first && room.depth <= kDeepest;
    if (has_content) {
      flow.Write(cell->blocks);
    }
    const double used = is_turned ? 0 : flow.cursor() - top;
    if (!flow.ends_with_paragraph()) {
      flow.SkipTo(flow.cursor() + std::clamp(Height(row) - 2 - used, 1.0, kEmptyLine));
    }
    xml_.Close();
    return used;
  }

  FlowRoom RoomFor(std::size_t row, std::size_t column, std::size_t span, double top) const {
    const double height = table_.rows[row + grid_.HeightAt(row, column)] - table_.rows[row];
    return {.left = table_.columns[column],
            .right = table_.columns[column + span] - BorderRoom(grid_.At(row, column)),
            .top = top,
            .depth = room_.depth + 1,
            .bottom = top + height};
  }

  // What borders leave less of a cell's width.
  static double BorderRoom(const TableCell* cell) {
    return cell == nullptr ? 0 : (cell->borders[1].width + cell->borders[3].width) / 2;
  }

  void WriteBorders(const TableCell& cell, std::size_t row) {
    constexpr std::array<std::pair<std::string_view, std::size_t>, 4> kSides = {
        {{"w:top", 0}, {"w:left", 3}, {"w:bottom", 2}, {"w:right", 1}}};
    const bool is_top = cell.row == row;
    const bool is_bottom = cell.row + cell.row_span == row + 1;
    xml_.Open("w:tcBorders");
    for (const auto& [name, side] : kSides) {
      const bool is_seen = side == 0 ? is_top : side == 2 ? is_bottom : true;
      WriteBorder(name, is_seen ? cell.borders[side] : Border());
    }
    xml_.Close();
    if (cell.fill) {
      xml_.Leaf("w:shd", {{"w:val", "clear"}, {"w:color", "auto"}, {"w:fill", Hex(*cell.fill)}});
    }
  }

  void WriteBorder(std::string_view name, const Border& border) {
    if (border.width <= 0) {
      xml_.Leaf(name, {{"w:val", "nil"}});
      return;
    }
    const auto eighths = std::clamp<std::int64_t>(Rounded(border.width, 8), 2, 96);
    xml_.Leaf(
        name,
        {{"w:val", "single"}, {"w:sz", eighths}, {"w:space", 0}, {"w:color", Hex(border.color)}});
  }

  Story& story_;
  const OfficePage& page_;
  const Table& table_;
  const FlowRoom& room_;
  TableGrid grid_;
  XmlWriter& xml_;
};

}  // namespace

double WriteTable(Story& story, const OfficePage& page, const Table& table, const FlowRoom& room,
                  double top) {
  if (table.columns.size() < 2 || table.rows.size() < 2) {
    return 0;
  }
  if (table.columns.size() > kMostColumns + 1) {
    return Writer(story, page, WithJoinedColumns(table), room).Write(top);
  }
  return Writer(story, page, table, room).Write(top);
}

}  // namespace TarnixTools::engines::office
