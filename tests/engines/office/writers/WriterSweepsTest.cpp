// What is written of things that are moved over a page: where they still are in the flow, what room
// they have, and when they become something else.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/XmlNode.h"
#include "engines/office/writers/slides/TableRoom.h"
#include "engines/support/layout/LayoutDump.h"
#include "engines/support/layout/LayoutSketch.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

using TarnixTools::testing::IsAsExpected;

void AddElements(const XmlNode& node, const std::vector<std::string>& names, std::string& text) {
  if (std::ranges::find(names, node.name) != names.end()) {
    text += (text.empty() ? "" : " ") + node.name.substr(node.name.find(':') + 1);
    for (const auto& [name, value] : node.attributes) {
      text += (&name == &node.attributes.front().first ? " " : ",") + value;
    }
    text += node.text.empty() ? "" : " " + node.text;
  }
  for (const XmlNode& child : node.children) {
    AddElements(child, names, text);
  }
}

// The elements of these names with their values, as they follow each other.
std::string InDocument(const OfficeDocument& document, const std::vector<std::string>& names) {
  std::string text;
  AddElements(ParsedXml(PartsOf(WordBytesOf(document)).at("word/document.xml")), names, text);
  return text;
}

std::string InSlide(const OfficeDocument& document, const std::vector<std::string>& names) {
  std::string text;
  AddElements(ParsedXml(PartsOf(SlideBytesOf(document)).at("ppt/slides/slide1.xml")), names, text);
  return text;
}

Block Line(double left, double right, double baseline, const std::string& text = "a line") {
  return Block{LineBetween(left, right, baseline, text)};
}

Floating Beside(double left, double top, double width, double height, Block block) {
  Floating floating;
  floating.box = {left, top, left + width, top + height};
  floating.blocks = {std::move(block)};
  return floating;
}

// A table of one row and two cells, the first of which has these blocks.
Block CellWith(std::vector<Block> blocks, double height) {
  Table table = TableAt(72, 100, {"a", "b", "c", "d"});
  table.rows = {100, 100 + height};
  table.box.top = 100 + height;
  table.cells.resize(2);
  for (TableCell& cell : table.cells) {
    cell.box.top = 100 + height;
  }
  table.cells[0].blocks = std::move(blocks);
  return Block{table};
}

const std::vector<std::string> kPlaces = {"w:spacing",  "w:anchor",         "wp:posOffset",
                                          "w:trHeight", "w:pgMar",          "w:t",
                                          "w:br",       "w:pageBreakBefore"};

std::string Flow() {
  std::string text;
  text += Sweep("the baseline of a line below one at 100", 88, 140, 2, [](double y) {
    return InDocument(DocumentOf({FacelessPage({Line(72, 200, 100), Line(72, 200, y, "next")})}),
                      kPlaces);
  });
  text += Sweep("where a table below a line begins", 90, 130, 2, [](double y) {
    return InDocument(
        DocumentOf({FacelessPage({Line(72, 200, 100), Block{TableAt(72, y, {"a", "b", "c", "d"})},
                                  Line(72, 200, 180, "next")})}),
        kPlaces);
  });
  text += Sweep("where a line below a table is", 130, 180, 4, [](double y) {
    return InDocument(DocumentOf({FacelessPage({Block{TableAt(72, 100, {"a", "b", "c", "d"})},
                                                Line(72, 200, y, "next")})}),
                      kPlaces);
  });
  text += Sweep("where the last line of a page is", 700, 840, 7, [](double y) {
    return InDocument(DocumentOf({FacelessPage({Line(72, 200, 100), Line(72, 200, y)}),
                                  FacelessPage({Line(72, 200, 100)})}),
                      kPlaces);
  });
  text += Sweep("where the first line of a page is", 8, 120, 7, [](double y) {
    return InDocument(DocumentOf({FacelessPage({Line(72, 200, y), Line(72, 200, 200)})}), kPlaces);
  });
  text += Sweep("where lines begin and end", 10, 250, 20, [](double x) {
    return InDocument(DocumentOf({FacelessPage({Line(x, 595 - x, 100), Line(x + 5, 300, 200)})}),
                      {"w:pgMar", "w:ind", "w:spacing"});
  });
  text += Sweep("how large text is", 1, 60, 4, [](double size) {
    OfficePage page = FacelessPage({Line(72, 200, 100), Line(72, 200, 160)});
    page.layout.looks[0].size = size;
    return InDocument(DocumentOf({page}), {"w:spacing", "w:sz"});
  });
  text += Sweep("from line to line of a paragraph", 1, 40, 3, [](double pitch) {
    Paragraph paragraph = LineBetween(72, 200, 100, "one");
    paragraph.lines.push_back(LineBetween(72, 190, 100 + pitch, "two").lines[0]);
    paragraph.box.top += pitch;
    return InDocument(DocumentOf({FacelessPage({Block{paragraph}, Line(72, 200, 200)})}), kPlaces);
  });
  text += Sweep("where a box beside the flow is", 50, 750, 50, [](double y) {
    OfficePage page = FacelessPage({Line(72, 200, 100), Line(72, 200, 300), Line(72, 200, 500)});
    page.layout.floats = {Beside(300, y, 100, 20, Line(300, 400, y + 14, "beside"))};
    return InDocument(DocumentOf({page}), {"w:spacing", "wp:posOffset", "wp:extent", "w:t"});
  });
  text += Sweep("how far a box is turned", -90, 360, 15, [](double angle) {
    OfficePage page = FacelessPage({Line(72, 200, 100)});
    page.layout.floats = {Beside(300, 300, 100, 20, Line(300, 400, 314, "beside"))};
    page.layout.floats[0].angle = angle;
    return InDocument(DocumentOf({page}), {"wp:posOffset", "wp:extent", "a:xfrm", "wps:bodyPr"});
  });
  text += Sweep("where a picture in the flow is", 60, 140, 8, [](double y) {
    Picture picture;
    picture.box = {72, y, 172, y + 50};
    return InDocument(
        DocumentOf({FacelessPage({Line(72, 200, 100), Block{picture}, Line(72, 200, 220)})}),
        kPlaces);
  });
  return text;
}

TEST(WriterSweeps, PutThingsInTheFlowOfDocuments) {
  EXPECT_TRUE(IsAsExpected("office/sweep.flow.txt", Flow()));
}

std::string Cells() {
  std::string text;
  text += Sweep("how high the row of a line is", 2, 40, 2, [](double height) {
    return InDocument(DocumentOf({FacelessPage({CellWith({Line(76, 170, 112)}, height)})}),
                      {"w:trHeight", "w:spacing"});
  });
  text += Sweep("how high the row of two lines is", 10, 60, 5, [](double height) {
    return InDocument(
        DocumentOf({FacelessPage({CellWith({Line(76, 170, 112), Line(76, 170, 126)}, height)})}),
        {"w:trHeight", "w:spacing"});
  });
  text += Sweep("where the line in a row of 40 is", 96, 146, 2, [](double y) {
    return InDocument(DocumentOf({FacelessPage({CellWith({Line(76, 170, y)}, 40)})}),
                      {"w:trHeight", "w:spacing"});
  });
  text += Sweep("where the line in a cell ends", 100, 190, 10, [](double right) {
    return InDocument(DocumentOf({FacelessPage({CellWith({Line(76, right, 112)}, 20)})}),
                      {"w:tcW", "w:ind"});
  });
  text += Sweep("how wide a border is", 0, 14, 0.5, [](double width) {
    Block block = CellWith({Line(76, 170, 112)}, 20);
    std::get<Table>(block.content).cells[0].borders[0].width = width;
    return InDocument(DocumentOf({FacelessPage({block})}), {"w:top"});
  });
  text += Sweep("where a table is", 20, 800, 60, [](double y) {
    return InDocument(DocumentOf({FacelessPage({Block{TableAt(72, y, {"a", "b", "c", "d"})}})}),
                      {"w:trHeight", "w:tblHeader", "w:pgMar", "w:tblInd"});
  });
  text += Sweep("where a table with a header ends on a page of 800", 550, 570, 1, [](double y) {
    OfficePage page = FacelessPage({Block{TableAt(72, y - 40, {"a", "b", "c", "d"})}});
    page.layout.height = page.model.height = 800;
    return InDocument(DocumentOf({page}), {"w:tblHeader", "w:pgSz"});
  });
  text += Sweep("how high the row of a line on a slide is", 2, 40, 2, [](double height) {
    return InSlide(DocumentOf({FacelessPage({CellWith({Line(76, 170, 112)}, height)})}),
                   {"a:tr", "a:tcPr", "a:spcPts"});
  });
  text += Sweep("how high the row of two lines on a slide is", 10, 60, 5, [](double height) {
    return InSlide(
        DocumentOf({FacelessPage({CellWith({Line(76, 170, 112), Line(76, 170, 126)}, height)})}),
        {"a:tr", "a:tcPr", "a:spcPts"});
  });
  text += Sweep("where the line in a cell of a slide is", 90, 150, 4, [](double y) {
    return InSlide(DocumentOf({FacelessPage({CellWith({Line(76, 170, y)}, 40)})}),
                   {"a:tcPr", "a:pPr", "a:spcPts"});
  });
  text += Sweep("where text from right to left in a cell of a slide ends", 60, 200, 10,
                [](double right) {
                  Paragraph paragraph = LineBetween(right - 60, right, 112, "עברית");
                  paragraph.is_right_to_left = true;
                  paragraph.alignment = Alignment::kRight;
                  return InSlide(DocumentOf({FacelessPage({CellWith({Block{paragraph}}, 20)})}),
                                 {"a:tcPr", "a:pPr"});
                });
  return text;
}

TEST(WriterSweeps, GiveCellsTheirRoom) {
  EXPECT_TRUE(IsAsExpected("office/sweep.cells.txt", Cells()));
}

std::string Sections() {
  std::string text;
  const auto columns = [](double gutter, double shift) {
    OfficePage page = FacelessPage({Line(72, 500, 100)});
    AddBand(page, {{Line(72, 200, 200)}, {Line(300, 400, 200)}});
    Band& band = page.layout.bands.back();
    band.columns[0].box = {72 + shift, 150, 280, 300};
    band.columns[1].box = {280 + gutter, 150, 523, 300};
    return page;
  };
  text += Sweep("the gutter between two columns", -30, 60, 10, [&](double gutter) {
    return InDocument(DocumentOf({columns(gutter, 0)}), {"w:cols", "w:col", "w:type", "w:pgMar"});
  });
  text += Sweep("how far the columns of the next page are off", -14, 14, 2, [&](double shift) {
    return InDocument(DocumentOf({columns(20, 0), columns(20, shift)}),
                      {"w:cols", "w:col", "w:type"});
  });
  text += Sweep("how much larger the next page is", -4, 4, 0.5, [](double larger) {
    OfficePage next = FacelessPage({Line(72, 200, 100)});
    next.layout.width += larger;
    return InDocument(DocumentOf({FacelessPage({Line(72, 200, 100)}), next}),
                      {"w:pgSz", "w:type", "w:pageBreakBefore"});
  });
  text += Sweep("where the header ends", 20, 130, 10, [](double y) {
    OfficePage page = FacelessPage({Line(72, 200, 100)});
    page.layout.header = {Line(72, 200, y, "header")};
    return InDocument(DocumentOf({page, page}), {"w:pgMar", "w:spacing"});
  });
  text += Sweep("where the footer begins", 700, 836, 8, [](double y) {
    OfficePage page = FacelessPage({Line(72, 200, 100), Line(72, 200, 720)});
    page.layout.footer = {Line(72, 200, y, "footer")};
    return InDocument(DocumentOf({page, page}), {"w:pgMar", "w:spacing"});
  });
  for (const std::string number : {"3", "iii", "III"}) {
    OfficePage page = FacelessPage({Line(72, 200, 100)});
    Paragraph shown = LineBetween(290, 300, 810, number);
    shown.lines[0].pieces[0].kind = PieceKind::kPageNumber;
    page.layout.footer = {Block{shown}};
    text += number + ": " + InDocument(DocumentOf({page}), {"w:pgNumType"}) + "\n";
  }
  text += Sweep("the number that pages begin with", -1, 4, 1, [](double number) {
    OfficePage first = FacelessPage({Line(72, 200, 100)});
    OfficePage second = first;
    for (OfficePage* page : {&first, &second}) {
      Paragraph shown =
          LineBetween(290, 300, 810, std::to_string(static_cast<int>(number) + (page == &second)));
      shown.lines[0].pieces[0].kind = PieceKind::kPageNumber;
      page->layout.footer = {Block{shown}};
    }
    return InDocument(DocumentOf({first, second}), {"w:pgNumType"});
  });
  return text;
}

TEST(WriterSweeps, MakeSections) {
  EXPECT_TRUE(IsAsExpected("office/sweep.sections.txt", Sections()));
}

std::string Shapes() {
  const std::vector<std::string> names = {"a:off", "a:ext", "a:pPr", "a:spcPts", "a:t"};
  std::string text;
  text += Sweep("how far a line is below the one before it", 84, 124, 2, [&](double y) {
    return InSlide(DocumentOf({FacelessPage({Line(72, 200, 100), Line(80, 190, y, "next")})}),
                   names);
  });
  text +=
      Sweep("where the second of two texts from right to left begins", 60, 84, 2, [&](double left) {
        Paragraph one = LineBetween(72, 200, 100, "עברית");
        Paragraph other = LineBetween(left, 200, 114, "ועוד");
        one.is_right_to_left = other.is_right_to_left = true;
        one.alignment = other.alignment = Alignment::kRight;
        return InSlide(DocumentOf({FacelessPage({Block{one}, Block{other}})}), names);
      });
  text += Sweep("where the second of two texts from right to left ends", 190, 210, 2,
                [&](double right) {
                  Paragraph one = LineBetween(72, 200, 100, "עברית");
                  Paragraph other = LineBetween(72, right, 114, "ועוד");
                  one.is_right_to_left = other.is_right_to_left = true;
                  one.alignment = other.alignment = Alignment::kRight;
                  return InSlide(DocumentOf({FacelessPage({Block{one}, Block{other}})}), names);
                });
  text += Sweep("where the label of an item is", 40, 80, 8, [&](double x) {
    Paragraph item = LineBetween(90, 200, 100, "an item");
    item.label = ListLabel{ListKind::kDecimal, "1.", 1, 0, x, 1};
    Paragraph bullet = LineBetween(90, 200, 114, "an item");
    bullet.label = ListLabel{ListKind::kBullet, "•", 0, 0, x, 2};
    OfficePage page = PageWith({Block{item}, Block{bullet}});
    return InSlide(DocumentOf({page}), {"a:off", "a:ext", "a:pPr", "a:rPr", "a:t", "a:buChar"});
  });
  for (const ParagraphRole role : {ParagraphRole::kBody, ParagraphRole::kContents}) {
    text += Sweep(role == ParagraphRole::kBody ? "a gap in a line" : "a leader in a line", 1, 61, 5,
                  [&](double gap) {
                    Paragraph paragraph = TextAt(72, 100, {"before"});
                    paragraph.role = role;
                    std::vector<TextPiece>& pieces = paragraph.lines[0].pieces;
                    TextPiece tab;
                    tab.kind = PieceKind::kTab;
                    TextPiece number = pieces[0];
                    number.text = "12";
                    number.x = pieces[0].x + pieces[0].width + gap;
                    pieces.push_back(tab);
                    pieces.push_back(number);
                    return InSlide(DocumentOf({PageWith({Block{paragraph}})}), {"a:rPr", "a:t"});
                  });
  }
  text += Sweep("how far a box is turned", -90, 360, 30, [](double angle) {
    OfficePage page = FacelessPage({});
    page.layout.floats = {Beside(300, 300, 100, 20, Line(300, 400, 314, "beside"))};
    page.layout.floats[0].angle = angle;
    return InSlide(DocumentOf({page}), {"a:xfrm", "a:off", "a:ext", "a:bodyPr"});
  });
  text += Sweep("how wide the stroke of a shape is", 0, 3, 0.25, [](double width) {
    const OfficeDocument document = DocumentOf({PageWithPath(
        {PathShape::Kind::kRectangle, {72, 100, 172, 150}, Rgb{1, 2, 3}, Rgb{4, 5, 6}, width})});
    return InSlide(document, {"a:off", "a:ext", "a:ln"}) + " / " +
           InDocument(document, {"wp:posOffset", "wp:extent", "a:ln"});
  });
  text += Sweep("how high a line is drawn", -3, 3, 0.5, [](double height) {
    const OfficeDocument document = DocumentOf({PageWithPath(
        {PathShape::Kind::kLine, {72, 100, 172, 100 + height}, std::nullopt, Rgb{4, 5, 6}, 1})});
    return InSlide(document, {"a:xfrm", "a:off", "a:ext"}) + " / " +
           InDocument(document, {"a:xfrm", "wp:posOffset", "wp:extent"});
  });
  return text;
}

TEST(WriterSweeps, PutShapesOnSlides) {
  EXPECT_TRUE(IsAsExpected("office/sweep.shapes.txt", Shapes()));
}

// The edges of a table with room for its text, and the places of its cells.
std::string RoomOf(const Table& table) {
  const Table shown = WithRoomForText(table);
  std::string text;
  for (const double edge : shown.columns) {
    text += ShownNumber(edge) + " ";
  }
  for (const TableCell& cell : shown.cells) {
    text += "| " + std::to_string(cell.row) + "," + std::to_string(cell.column) + " x " +
            std::to_string(cell.column_span) + " ";
  }
  return text;
}

// Three rows of four cells without borders, with a short text each.
Table Wide() {
  Table table;
  table.columns = {0, 100, 200, 300, 400};
  table.rows = {0, 20, 40, 60};
  table.box = {0, 0, 400, 60};
  for (std::uint32_t i = 0; i < 12; ++i) {
    TableCell cell;
    cell.row = i / 4;
    cell.column = i % 4;
    const double x = 100.0 * cell.column;
    const double y = 20.0 * cell.row;
    cell.box = {x, y, x + 100, y + 20};
    cell.blocks = {Line(x + 60, x + 90, y + 14)};
    table.cells.push_back(cell);
  }
  return table;
}

std::string Rooms() {
  std::string text;
  const auto first_ends = [](double right, auto change) {
    Table table = Wide();
    table.cells[4].blocks = {Line(5, right, 34)};
    change(table);
    return RoomOf(table);
  };
  text += Sweep("where the first text of a row ends", 90, 380, 5,
                [&](double x) { return first_ends(x, [](Table&) {}); });
  text += Sweep("where it ends beside an empty cell", 90, 380, 5, [&](double x) {
    return first_ends(x, [](Table& table) { table.cells[5].blocks.clear(); });
  });
  text += Sweep("where it ends beside empty cells", 90, 420, 5, [&](double x) {
    return first_ends(x, [](Table& table) {
      for (const std::size_t i : {5u, 6u, 7u}) {
        table.cells[i].blocks.clear();
      }
    });
  });
  text += Sweep("where it ends beside a border", 90, 200, 10, [&](double x) {
    return first_ends(x, [](Table& table) { table.cells[5].borders[3].width = 1; });
  });
  text += Sweep("where it ends beside a cell of two rows", 90, 200, 10, [&](double x) {
    return first_ends(x, [](Table& table) {
      table.cells[1].row_span = 2;
      table.cells.erase(table.cells.begin() + 5);
    });
  });
  text += Sweep("where the last text of a row begins", -20, 360, 10, [&](double x) {
    Table table = Wide();
    table.cells[7].blocks = {Line(x, 395, 34)};
    table.cells[6].blocks.clear();
    return RoomOf(table);
  });
  text += Sweep("where all first texts end", 90, 170, 5, [&](double x) {
    Table table = Wide();
    for (const std::size_t i : {0u, 4u, 8u}) {
      table.cells[i].blocks = {
          Line(5, x - static_cast<double>(i), 14 + 5 * static_cast<double>(i))};
    }
    return RoomOf(table);
  });
  return text;
}

TEST(WriterSweeps, MakeRoomForTextOfTables) {
  EXPECT_TRUE(IsAsExpected("office/sweep.rooms.txt", Rooms()));
}

}  // namespace
}  // namespace TarnixTools::engines::office
