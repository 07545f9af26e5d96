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

}  // namespace
}  // namespace TarnixTools::engines::office
