#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zip.h>

#include "engines/office/writers/sheets/SheetWriter.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// Cells by rows; "<" is taken by the cell on its left.
using Rows = std::vector<std::vector<std::string>>;

Block ParagraphOf(const std::string& text) {
  TextPiece piece;
  piece.text = text;
  TextLine line;
  line.pieces = {piece};
  Paragraph paragraph;
  paragraph.lines = {line};
  return {paragraph};
}

Table TableOf(const Rows& rows) {
  Table table;
  for (std::size_t r = 0; r <= rows.size(); ++r) {
    table.rows.push_back(100 + 20 * static_cast<double>(r));
  }
  for (std::size_t c = 0; c <= rows[0].size(); ++c) {
    table.columns.push_back(100 + 80 * static_cast<double>(c));
  }
  for (std::uint32_t r = 0; r < rows.size(); ++r) {
    for (std::uint32_t c = 0; c < rows[r].size(); ++c) {
      if (rows[r][c] == "<") {
        ++table.cells.back().column_span;
        continue;
      }
      TableCell& cell = table.cells.emplace_back();
      cell.row = r;
      cell.column = c;
      if (!rows[r][c].empty()) {
        cell.blocks.push_back(ParagraphOf(rows[r][c]));
      }
    }
  }
  return table;
}

// A document with a page for each of the lists of blocks.
OfficeDocument DocumentOf(std::vector<std::vector<Block>> pages) {
  OfficeDocument document;
  document.facts.language = "en";
  for (std::vector<Block>& blocks : pages) {
    OfficePage& page = document.pages.emplace_back();
    TextLook look;
    look.face = std::make_shared<const Typeface>(Typeface{"Arial", true});
    look.size = 9;
    page.layout.looks = {look};
    Column column;
    column.blocks = std::move(blocks);
    Band band;
    band.columns = {column};
    page.layout.bands = {band};
  }
  return document;
}

std::string Write(const OfficeDocument& document, bool is_single_table = false) {
  const std::atomic<bool> is_cancelled = false;
  pdf::StringSink sink;
  WriteSheets(document, is_single_table, is_cancelled, sink);
  return sink.Take();
}

// A part of a workbook; empty where it has none of that name.
std::string Part(const std::string& workbook, const char* name) {
  zip_source_t* source = zip_source_buffer_create(workbook.data(), workbook.size(), 0, nullptr);
  zip_t* archive = zip_open_from_source(source, ZIP_RDONLY, nullptr);
  if (archive == nullptr) {
    zip_source_free(source);
    return {};
  }
  std::string part;
  if (zip_file_t* file = zip_fopen(archive, name, 0)) {
    std::vector<char> block(4096);
    for (zip_int64_t count = 0; (count = zip_fread(file, block.data(), block.size())) > 0;) {
      part.append(block.data(), static_cast<std::size_t>(count));
    }
    zip_fclose(file);
  }
  zip_discard(archive);
  return part;
}

std::string Sheet(const std::string& workbook, int number) {
  return Part(workbook, ("xl/worksheets/sheet" + std::to_string(number) + ".xml").c_str());
}

TEST(SheetWriter, WritesNothingWithoutTables) {
  const std::atomic<bool> is_cancelled = false;
  pdf::StringSink sink;
  EXPECT_FALSE(WriteSheets(DocumentOf({{ParagraphOf("text")}}), false, is_cancelled, sink));
  EXPECT_EQ(sink.bytes(), "");
}

TEST(SheetWriter, GivesEachTableASheet) {
  const std::string book = Write(
      DocumentOf({{{TableOf({{"A", "B"}, {"C", "1"}})}}, {{TableOf({{"D", "E"}, {"F", "2"}})}}}));
  EXPECT_THAT(Part(book, "xl/workbook.xml"), HasSubstr("name=\"Table 2\""));
  EXPECT_THAT(Sheet(book, 1), HasSubstr("<v>1</v>"));
  EXPECT_THAT(Sheet(book, 2), HasSubstr("<v>2</v>"));
}

TEST(SheetWriter, PutsAllTablesOnOneSheetWithABlankRowBetween) {
  const std::string book = Write(
      DocumentOf({{{TableOf({{"A", "B"}, {"C", "1"}})}, {TableOf({{"D", "E"}, {"F", "27"}})}}}),
      true);
  const std::string sheet = Sheet(book, 1);
  EXPECT_THAT(sheet, HasSubstr("<c r=\"B5\" s="));
  EXPECT_THAT(sheet, HasSubstr("<v>27</v>"));
  EXPECT_THAT(sheet, Not(HasSubstr("r=\"A3\"")));
  EXPECT_EQ(Sheet(book, 2), "");
}

TEST(SheetWriter, MergesCellsThatSpan) {
  const std::string book = Write(DocumentOf({{{TableOf({{"A", "<"}, {"B", "C"}})}}}));
  EXPECT_THAT(Sheet(book, 1), HasSubstr("<mergeCell ref=\"A1:B1\"/>"));
}

TEST(SheetWriter, LeavesOutRowsAndColumnsWithoutAnything) {
  const std::string book =
      Write(DocumentOf({{{TableOf({{"A", "", "1"}, {"", "", ""}, {"B", "", "2"}})}}}));
  EXPECT_THAT(Sheet(book, 1), HasSubstr("<dimension ref=\"A1:B2\"/>"));
}

TEST(SheetWriter, JoinsTablesThatGoOnAndTheirHeadersOnce) {
  Table next = TableOf({{"Name", "No."}, {"C", "3"}});
  next.goes_on = true;
  next.header_rows = 1;
  const std::string book = Write(
      DocumentOf({{{TableOf({{"Name", "No."}, {"A", "1"}, {"B", "2"}})}}, {{std::move(next)}}}));
  EXPECT_THAT(Sheet(book, 1), HasSubstr("<dimension ref=\"A1:B4\"/>"));
  EXPECT_EQ(Sheet(book, 2), "");
}

TEST(SheetWriter, KeepsFontsFormatsFillsAndBorders) {
  Table table = TableOf({{"A", "B"}, {"C", "12.50%"}});
  table.cells[0].fill = Rgb{255, 238, 0};
  table.cells[0].borders[2] = {2, Rgb{0, 0, 255}};
  const std::string styles = Part(Write(DocumentOf({{{std::move(table)}}})), "xl/styles.xml");
  EXPECT_THAT(styles, HasSubstr("<name val=\"Arial\"/>"));
  EXPECT_THAT(styles, HasSubstr("<sz val=\"9\"/>"));
  EXPECT_THAT(styles, HasSubstr("<b/>"));
  EXPECT_THAT(styles, HasSubstr("FFFFEE00"));
  EXPECT_THAT(styles, HasSubstr("<bottom style=\"medium\"><color rgb=\"FF0000FF\"/>"));
  EXPECT_THAT(styles, HasSubstr("formatCode=\"0.00%\""));
}

TEST(SheetWriter, SetsWidthsAndHeights) {
  const std::string sheet = Sheet(Write(DocumentOf({{{TableOf({{"A", "B"}, {"C", "D"}})}}})), 1);
  EXPECT_THAT(sheet, HasSubstr("<cols><col min=\"1\""));
  EXPECT_THAT(sheet, HasSubstr("ht=\"20\" customHeight=\"1\""));
}

TEST(SheetWriter, LeavesOutCharactersThatXmlForbids) {
  const std::string book = Write(DocumentOf({{{TableOf({{"A\x01"
                                                         "B\xEF\xBF\xBF<&",
                                                         "x"},
                                                        {"C", "D"}})}}}));
  EXPECT_THAT(Part(book, "xl/sharedStrings.xml"), HasSubstr("<t>AB&lt;&amp;</t>"));
}

TEST(SheetWriter, WritesNamesOfFontsAndTitlesAsText) {
  OfficeDocument document = DocumentOf({{{TableOf({{"A", "B"}, {"C", "D"}})}}});
  document.facts.title = "T\x02\xFFitle";
  document.pages[0].layout.looks[0].face = std::make_shared<const Typeface>(
      Typeface{"\xCB\xCE\x01 a name that is longer than most", true});
  const std::string book = Write(document);
  EXPECT_THAT(Part(book, "xl/styles.xml"),
              HasSubstr("<name val=\"\uFFFD\uFFFD a name that is longer than m\"/>"));
  EXPECT_THAT(Part(book, "docProps/core.xml"), HasSubstr("<dc:title>T\uFFFDitle</dc:title>"));
}

TEST(SheetWriter, WritesTheSameBytesAgain) {
  const OfficeDocument document = DocumentOf({{{TableOf({{"A", "B"}, {"C", "1.5"}})}}});
  const std::string first = Write(document);
  EXPECT_FALSE(first.empty());
  EXPECT_EQ(first, Write(document));
  EXPECT_THAT(Part(first, "docProps/core.xml"), HasSubstr("1980-01-01T00:00:00Z"));
}

TEST(SheetWriter, StopsWhenItIsCancelled) {
  const std::atomic<bool> is_cancelled = true;
  pdf::StringSink sink;
  EXPECT_THROW(
      WriteSheets(DocumentOf({{{TableOf({{"A", "B"}, {"C", "D"}})}}}), false, is_cancelled, sink),
      Cancelled);
}

// The number that follows the text, for the first place where it stands behind the other one.
double NumberBehind(const std::string& xml, const std::string& first, const std::string& text) {
  const std::size_t at = xml.find(text, xml.find(first));
  return at == std::string::npos ? -1 : std::stod(xml.substr(at + text.size()));
}

TEST(SheetWriter, MakesColumnsAndRowsAsLargeAsTheyWere) {
  Table table = TableOf({{"A", "B", "C"}, {"D", "E", "F"}, {"G", "H", "I"}});
  table.columns = {100, 180, 185, 2000};
  table.rows = {100, 120, 125, 900};
  const std::string sheet = Sheet(Write(DocumentOf({{{std::move(table)}}})), 1);
  const auto pixels = [&sheet](const std::string& column) {
    return 7 * NumberBehind(sheet, "<col min=\"" + column + "\"", "width=\"");
  };
  EXPECT_NEAR(pixels("1"), 107, 0.1);          // 80 points
  EXPECT_NEAR(pixels("2"), 2 * 7 + 5, 0.1);    // two characters at least
  EXPECT_NEAR(pixels("3"), 120 * 7 + 5, 0.1);  // and 120 at most
  const auto height = [&sheet](const std::string& row) {
    return NumberBehind(sheet, "<row r=\"" + row + "\"", "ht=\"");
  };
  EXPECT_EQ(height("1"), 20);
  EXPECT_EQ(height("2"), 11.25);  // of 9 points text, with room for it
  EXPECT_EQ(height("3"), 400);
}

TEST(SheetWriter, WrapsTextThatIsWiderThanItsCell) {
  const auto is_wrapped = [](const std::string& text) {
    const std::string styles =
        Part(Write(DocumentOf({{{TableOf({{text, "B"}, {"C", "D"}})}}})), "xl/styles.xml");
    return styles.find("wrapText=\"1\"") != std::string::npos;
  };
  EXPECT_FALSE(is_wrapped(std::string(17, 'x')));  // of 4.5 points each, in 80
  EXPECT_TRUE(is_wrapped(std::string(18, 'x')));
  EXPECT_TRUE(is_wrapped("two\nlines"));
  EXPECT_FALSE(is_wrapped("123456789012345"));
}

// The styles of a sheet whose first cell has this look, and is aligned so.
std::string StylesOf(const TextLook& look, Alignment alignment = Alignment::kLeft,
                     VerticalAlignment vertical = VerticalAlignment::kBottom) {
  Table table = TableOf({{"A", "B"}, {"C", "D"}});
  std::get<Paragraph>(table.cells[0].blocks[0].content).alignment = alignment;
  table.cells[0].alignment = vertical;
  OfficeDocument document = DocumentOf({{{std::move(table)}}});
  document.pages[0].layout.looks = {look};
  return Part(Write(document), "xl/styles.xml");
}

TEST(SheetWriter, KeepsHowTextLooks) {
  TextLook look;
  look.size = 10.3;
  EXPECT_THAT(StylesOf(look), HasSubstr("<sz val=\"10.5\"/>"));
  EXPECT_THAT(StylesOf(look), Not(HasSubstr("<i/>")));
  EXPECT_THAT(StylesOf(look), Not(HasSubstr("<u/>")));
  EXPECT_THAT(StylesOf(look), Not(HasSubstr("<strike/>")));
  look.size = 900;
  EXPECT_THAT(StylesOf(look), HasSubstr("<sz val=\"409\"/>"));
  look.size = 0.1;
  look.face = std::make_shared<const Typeface>(Typeface{"Other", false, true});
  look.color = Rgb{1, 2, 3};
  look.is_underlined = look.is_struck = true;
  const std::string styles = StylesOf(look);
  EXPECT_THAT(styles, HasSubstr("<i/><strike/><u/><sz val=\"1\"/><color rgb=\"FF010203\"/>"
                                "<name val=\"Other\"/>"));
  EXPECT_THAT(styles, Not(HasSubstr("<b/>")));
}

TEST(SheetWriter, KeepsHowTextIsAligned) {
  TextLook look;
  look.size = 9;
  EXPECT_THAT(StylesOf(look, Alignment::kRight), HasSubstr("horizontal=\"right\""));
  EXPECT_THAT(StylesOf(look, Alignment::kCenter), HasSubstr("horizontal=\"center\""));
  // Programs align text to the left and numbers to the right by themselves.
  EXPECT_THAT(StylesOf(look, Alignment::kLeft), Not(HasSubstr("horizontal")));
  EXPECT_THAT(StylesOf(look, Alignment::kJustified), Not(HasSubstr("horizontal")));
  EXPECT_THAT(StylesOf(look, Alignment::kLeft, VerticalAlignment::kMiddle),
              HasSubstr("vertical=\"center\""));
  EXPECT_THAT(StylesOf(look, Alignment::kLeft, VerticalAlignment::kTop),
              HasSubstr("vertical=\"top\""));
}

TEST(SheetWriter, DrawsBordersAsWideAsTheyWere) {
  Table table = TableOf({{"A", "B"}, {"C", "D"}});
  table.cells[0].borders = {Border{1.2, Rgb{1, 0, 0}}, Border{2.2, Rgb{2, 0, 0}},
                            Border{2.3, Rgb{3, 0, 0}}, Border{1.3, Rgb{4, 0, 0}}};
  const std::string styles = Part(Write(DocumentOf({{{std::move(table)}}})), "xl/styles.xml");
  EXPECT_THAT(styles, HasSubstr("<left style=\"medium\"><color rgb=\"FF040000\"/></left>"
                                "<right style=\"medium\"><color rgb=\"FF020000\"/></right>"
                                "<top style=\"thin\"><color rgb=\"FF010000\"/></top>"
                                "<bottom style=\"thick\"><color rgb=\"FF030000\"/></bottom>"));
}

TEST(SheetWriter, KeepsTheTextOfListsAndOfTablesWithin) {
  Table inner = TableOf({{"1", "2"}, {"3", "4"}});
  Block item = ParagraphOf("item");
  std::get<Paragraph>(item.content).label = ListLabel{ListKind::kDecimal, "a)"};
  Table table = TableOf({{"", "B"}, {"C", "D"}});
  table.cells[0].blocks = {ParagraphOf("first"), item, Block{inner}, ParagraphOf("last")};
  const std::string book = Write(DocumentOf({{{std::move(table)}}}));
  EXPECT_THAT(Part(book, "xl/sharedStrings.xml"), HasSubstr("first\na) item\n1\n2\n3\n4\nlast"));
}

}  // namespace
}  // namespace TarnixTools::engines::office
