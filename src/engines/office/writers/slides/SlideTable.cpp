#include <algorithm>
#include <array>

#include "engines/office/writers/slides/SlideMaster.h"
#include "engines/office/writers/slides/SlideShapes.h"
#include "engines/office/writers/slides/TableRoom.h"
#include "engines/office/writers/text/DrawnShapes.h"
#include "engines/office/writers/text/TableGrid.h"
#include "engines/office/writers/text/Units.h"
#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kTableUri = "http://schemas.openxmlformats.org/drawingml/2006/table";

// Of an image within a table, and of a cell below it.
constexpr double kMostly = 0.9;
constexpr double kHalf = 0.5;
constexpr double kTightest = 0.4;  // of a line's pitch, that is left of it

// Points between the sides of a cell and its text.
struct CellMargins {
  double left = 0;
  double right = 0;
  double top = 0;
};

class Writer {
 public:
  Writer(SlidePart& slide, const Table& table)
      : slide_(slide), table_(table), grid_(table), xml_(slide.xml) {
    for (const Block* image : ImagesOf(slide.page.layout)) {
      if (CoveredShare(BoxOf(*image), table.box) >= kMostly) {
        images_.push_back(BoxOf(*image));
      }
    }
  }

  void Write() {
    xml_.Open("a:tbl");
    xml_.Open("a:tblPr");
    if (table_.header_rows > 0) {
      xml_.Attribute({"firstRow", 1});
    }
    xml_.Close();
    xml_.Open("a:tblGrid");
    for (std::size_t column = 0; column < grid_.columns(); ++column) {
      xml_.Leaf("a:gridCol", {{"w", Side(table_.columns[column + 1] - table_.columns[column])}});
    }
    xml_.Close();
    for (std::size_t row = 0; row < grid_.rows(); ++row) {
      xml_.Open("a:tr", {{"h", Side(table_.rows[row + 1] - table_.rows[row])}});
      for (std::size_t column = 0; column < grid_.columns(); ++column) {
        WriteCell(row, column);
      }
      xml_.Close();
    }
    xml_.Close();
  }

 private:
  static std::int64_t Side(double points) { return std::max<std::int64_t>(Emu(points), 1); }

  void WriteCell(std::size_t row, std::size_t column) {
    const TableCell* cell = grid_.At(row, column);
    const bool is_first_row = cell == nullptr || row == 0 || grid_.At(row - 1, column) != cell;
    const bool is_first_column =
        cell == nullptr || column == 0 || grid_.At(row, column - 1) != cell;
    xml_.Open("a:tc");
    // As PowerPoint has it: all places along the upper edge say how high the cell is, and those along
    // the left one how wide.
    WriteSpans(is_first_column ? grid_.SpanAt(row, column) : 1,
               is_first_row ? grid_.HeightAt(row, column) : 1);
    if (!is_first_column) {
      xml_.Attribute({"hMerge", 1});
    }
    if (!is_first_row) {
      xml_.Attribute({"vMerge", 1});
    }
    const bool is_first = cell != nullptr && is_first_row && is_first_column;
    WriteText(is_first ? *cell : TableCell(), row, column);
    xml_.Close();
  }

  void WriteSpans(std::size_t columns, std::size_t rows) {
    if (rows > 1) {
      xml_.Attribute({"rowSpan", rows});
    }
    if (columns > 1) {
      xml_.Attribute({"gridSpan", columns});
    }
  }

  void WriteText(const TableCell& cell, std::size_t row, std::size_t column) {
    const double left = table_.columns[column];
    const double right = table_.columns[column + grid_.SpanAt(row, column)];
    // Turned text lies over its cell, in a box of its own: readers make rows higher for it.
    const std::vector<Block> none;
    TextGroup all;
    for (TextGroup& group : GroupText(slide_, cell.angle == 0 ? cell.blocks : none, left, right)) {
      all.box = all.paragraphs.empty() ? group.box : Around(all.box, group.box);
      for (PlacedParagraph& placed : group.paragraphs) {
        all.paragraphs.push_back(std::move(placed));
      }
    }
    const double room = table_.rows[row + grid_.HeightAt(row, column)] - table_.rows[row];
    const double above = KeepWithin(all, table_.rows[row], room);
    xml_.Open("a:txBody");
    xml_.Leaf("a:bodyPr");
    xml_.Leaf("a:lstStyle");
    const CellMargins margins = MarginsOf(all, above, left, right);
    WriteParagraphs(slide_, all, left + margins.left, right - margins.right);
    if (all.paragraphs.empty()) {
      xml_.Open("a:p");
      xml_.Leaf("a:endParaRPr", {{"sz", 100}});
      xml_.Close();
    }
    xml_.Close();
    WriteProperties(cell, margins);
  }

  // Text from right to left has no margins of its own: the cell has them.
  static CellMargins MarginsOf(const TextGroup& text, double above, double left, double right) {
    const bool is_right_to_left = std::ranges::any_of(
        text.paragraphs,
        [](const PlacedParagraph& placed) { return placed.paragraph->is_right_to_left; });
    CellMargins margins{.top = above};
    if (is_right_to_left) {
      margins.left = std::clamp(text.box.left - left, 0.0, right - left);
      margins.right = std::clamp(right - text.box.right, 0.0, right - left - margins.left);
    }
    return margins;
  }

  // Text that is higher than its row would make it higher, and move all rows below: its lines come
  // closer to each other. Returns what is free above it.
  static double KeepWithin(TextGroup& text, double top, double room) {
    if (text.paragraphs.empty()) {
      return 0;
    }
    const double first = text.paragraphs.front().top;
    const double height = text.paragraphs.back().bottom - first;
    const double share = height > room && height > 0 ? std::max(room / height, kTightest) : 1;
    for (PlacedParagraph& placed : text.paragraphs) {
      placed.pitch *= share;
      placed.top = first + (placed.top - first) * share;
      placed.bottom = first + (placed.bottom - first) * share;
    }
    return std::clamp(first - top, 0.0, std::max(room - height * share, 0.0));
  }

  void WriteProperties(const TableCell& cell, const CellMargins& margins) {
    xml_.Open("a:tcPr", {{"marL", Emu(margins.left)},
                         {"marR", Emu(margins.right)},
                         {"marT", Emu(margins.top)},
                         {"marB", 0}});
    constexpr std::array<std::pair<std::string_view, std::size_t>, 4> kSides = {
        {{"a:lnL", 3}, {"a:lnR", 1}, {"a:lnT", 0}, {"a:lnB", 2}}};
    for (const auto& [name, side] : kSides) {
      const Border& border = cell.borders[side];
      xml_.Open(name, {{"w", LineEmu(border.width)}});
      WriteFill(xml_, border.width > 0 ? std::optional<Rgb>(border.color) : std::nullopt);
      xml_.Close();
    }
    WriteFill(xml_, IsUnderImage(cell) ? std::nullopt : cell.fill);
    xml_.Close();
  }

  // Images of the page lie below its tables, and a fill would hide those that are over it. What
  // reaches out of the table is behind it on the page, too.
  bool IsUnderImage(const TableCell& cell) const {
    return cell.fill && std::ranges::any_of(images_, [&cell](const pdf::Box& image) {
             return CoveredShare(cell.box, image) >= kHalf;
           });
  }

  SlidePart& slide_;
  const Table& table_;
  TableGrid grid_;
  std::vector<pdf::Box> images_;  // of the page, that lie within the table
  XmlWriter& xml_;
};

}  // namespace

void WriteTableShape(SlidePart& slide, const Table& shown) {
  if (shown.columns.size() < 2 || shown.rows.size() < 2) {
    return;
  }
  const Table table = WithRoomForText(shown);
  XmlWriter& xml = slide.xml;
  const std::uint32_t id = ++slide.shape_count;
  const double width = table.columns.back() - table.columns.front();
  const double height = table.rows.back() - table.rows.front();
  xml.Open("p:graphicFrame");
  xml.Open("p:nvGraphicFramePr");
  xml.Leaf("p:cNvPr", {{"id", id}, {"name", "Table " + std::to_string(id)}});
  xml.Leaf("p:cNvGraphicFramePr");
  xml.Leaf("p:nvPr");
  xml.Close();
  xml.Open("p:xfrm");
  xml.Leaf("a:off", {{"x", Emu(table.columns.front())}, {"y", Emu(table.rows.front())}});
  xml.Leaf("a:ext", {{"cx", std::max<std::int64_t>(Emu(width), 1)},
                     {"cy", std::max<std::int64_t>(Emu(height), 1)}});
  xml.Close();
  xml.Open("a:graphic");
  xml.Open("a:graphicData", {{"uri", kTableUri}});
  Writer(slide, table).Write();
  xml.Close();
  xml.Close();
  xml.Close();
}

}  // namespace TarnixTools::engines::office
