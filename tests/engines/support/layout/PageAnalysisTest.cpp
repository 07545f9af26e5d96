#include <algorithm>

#include <gmock/gmock.h>

#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

constexpr std::u32string_view kFull = U"A line of text that reaches the right margin of its page";

std::vector<std::string> TextsOf(PageLayout& page) {
  std::vector<std::string> texts;
  for (const Paragraph* paragraph : FlowParagraphs(page)) {
    texts.push_back(TextOf(*paragraph));
  }
  return texts;
}

TEST(PageAnalysis, JoinsLinesThatAreFull) {
  PageLayout page = AnalyzePage(
      MadePage().Text(72, 100, kFull).Text(72, 112, kFull).Text(72, 124, U"end.").Take());
  ASSERT_THAT(TextsOf(page), SizeIs(1));
  const Paragraph& paragraph = *FlowParagraphs(page)[0];
  EXPECT_THAT(paragraph.lines, SizeIs(3));
  EXPECT_DOUBLE_EQ(paragraph.line_pitch, 12);
}

TEST(PageAnalysis, BeginsParagraphsAtIndentsAndAfterShortLines) {
  PageLayout page = AnalyzePage(MadePage()
                                    .Text(72, 100, kFull)
                                    .Text(72, 112, kFull)
                                    .Text(87, 124, kFull.substr(3))
                                    .Text(72, 136, U"short.")
                                    .Text(72, 148, kFull)
                                    .Text(72, 160, kFull)
                                    .Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(page);
  ASSERT_THAT(paragraphs, SizeIs(3));
  EXPECT_EQ(paragraphs[0]->first_indent, 0);
  EXPECT_NEAR(paragraphs[1]->first_indent, 15, 1e-6);
  EXPECT_EQ(paragraphs[2]->first_indent, 0);
}

TEST(PageAnalysis, BeginsParagraphsAtWiderPitchAndOtherSizes) {
  PageLayout page = AnalyzePage(MadePage()
                                    .Text(72, 80, U"A title", {.size = 16})
                                    .Text(72, 100, kFull)
                                    .Text(72, 112, kFull)
                                    .Text(72, 130, kFull)
                                    .Text(72, 142, kFull)
                                    .Take());
  EXPECT_THAT(FlowParagraphs(page), SizeIs(3));
}

TEST(PageAnalysis, JoinsPartedWords) {
  PageLayout page =
      AnalyzePage(MadePage()
                      .Text(72, 100, U"The end of this line parts one word in its mid-")
                      .Text(72, 112, U"dle and goes on with the rest of that word here")
                      .Take());
  ASSERT_THAT(TextsOf(page), SizeIs(1));
  EXPECT_THAT(TextsOf(page)[0], HasSubstr("in its middle and"));
}

// Two columns above each other, the upper one of which is read first, each from right to left.
TEST(PageAnalysis, ReadsColumnsOfVerticalWritingFromTheTop) {
  const MadeStyle down{.advance = 1, .is_vertical = true};
  const std::u32string_view line = U"縦に書く行がここに続いている";
  MadePage made;
  for (int i = 0; i < 4; ++i) {
    made.Text(500 - 18 * i, 400, line, down);
    made.Text(500 - 18 * i, 100, line, down);
  }
  made.Text(518, 100, U"上", down).Text(518, 400, U"下", down);
  const PageLayout page = AnalyzePage(made.Take());
  ASSERT_THAT(page.floats, SizeIs(2));
  for (const Floating& floating : page.floats) {
    EXPECT_TRUE(floating.is_vertical);
    EXPECT_DOUBLE_EQ(floating.angle, 90);
  }
  const pdf::Box upper = QuarterTurned(page.floats[0].box);
  EXPECT_NEAR(upper.bottom, 100, 0.01);
  EXPECT_NEAR(upper.right, 523, 0.01);
  const auto& first = std::get<Paragraph>(page.floats[0].blocks.at(0).content);
  EXPECT_EQ(first.lines.at(0).pieces.at(0).text, "上");
}

TEST(PageAnalysis, PartsVerticalWritingThatIsFarApart) {
  const MadeStyle down{.advance = 1, .is_vertical = true};
  const PageLayout page = AnalyzePage(
      MadePage().Text(500, 100, U"右の文字", down).Text(100, 100, U"左の文字", down).Take());
  EXPECT_THAT(page.floats, SizeIs(2));
}

TEST(PageAnalysis, TellsAlignments) {
  const std::u32string_view wide = U"A line over all of the width of the column, up to its end.";
  PageLayout page = AnalyzePage(MadePage()
                                    .Text(72, 100, wide)  // to 362
                                    .Text(164.5, 140, U"A title in the middle")
                                    .Text(312, 180, U"10-02-2020")
                                    .Text(72, 220, wide)
                                    .Text(72, 232, wide)
                                    .Text(72, 244, wide)
                                    .Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(page);
  ASSERT_THAT(paragraphs, SizeIs(4));
  EXPECT_EQ(paragraphs[0]->alignment, Alignment::kLeft);
  EXPECT_EQ(paragraphs[1]->alignment, Alignment::kCenter);
  EXPECT_EQ(paragraphs[2]->alignment, Alignment::kRight);
  EXPECT_EQ(paragraphs[3]->alignment, Alignment::kJustified);
}

TEST(PageAnalysis, PutsATabBetweenTextsOfALine) {
  PageLayout page = AnalyzePage(MadePage().Text(72, 100, U"Name").Text(300, 100, U"Value").Take());
  const Paragraph& paragraph = *FlowParagraphs(page).at(0);
  ASSERT_THAT(paragraph.lines[0].pieces, SizeIs(3));
  EXPECT_EQ(paragraph.lines[0].pieces[1].kind, PieceKind::kTab);
  EXPECT_DOUBLE_EQ(paragraph.lines[0].pieces[2].x, 300);
}

// Labels and numbers between rules, which would be columns of their own without them, and a table
// if the tags did not tell otherwise.
TEST(PageAnalysis, KeepsLinesBetweenRulesWhole) {
  MadePage made;
  for (int i = 0; i < 5; ++i) {
    const double y = 100 + 16 * i;
    made.Line({72, y - 12, 500, y - 12}).Line({72, y + 4, 500, y + 4});
    made.Text(76, y, U"Length of the arm").Text(420, y, U"1,234.5 (12.3)");
  }
  PageModel page = made.Take();
  page.roles = {{.path = {"P"}}};
  page.tree_has_tables = true;
  for (Glyph& glyph : page.glyphs) {
    glyph.mark = 0;
  }
  PageLayout layout = AnalyzePage(page);
  EXPECT_THAT(TextsOf(layout), AllOf(SizeIs(5), Each("Length of the arm\t1,234.5 (12.3)")));
}

TEST(PageAnalysis, FloatsTurnedTextAboutItsMiddle) {
  const PageLayout page = AnalyzePage(
      MadePage().Text(300, 500, U"upwards", {.direction_x = 0, .direction_y = -1}).Take());
  ASSERT_THAT(page.floats, SizeIs(1));
  EXPECT_EQ(page.floats[0].angle, 270);
  // On the page it is 35 high, from 500 upwards, and stands left of 300 mostly.
  EXPECT_NEAR((page.floats[0].box.left + page.floats[0].box.right) / 2, 297, 0.01);
  EXPECT_NEAR((page.floats[0].box.bottom + page.floats[0].box.top) / 2, 482.5, 0.01);
  EXPECT_NEAR(page.floats[0].box.width(), 35, 0.01);
}

TEST(PageAnalysis, FloatsLabelsOfACurvedDrawing) {
  const PageLayout page =
      AnalyzePage(MadePage().Curve({100, 100, 400, 300}).Text(150, 200, U"label").Take());
  ASSERT_THAT(page.bands, SizeIs(1));
  EXPECT_TRUE(std::holds_alternative<Drawing>(page.bands[0].columns[0].blocks[0].content));
  ASSERT_THAT(page.floats, SizeIs(1));
  EXPECT_FALSE(page.floats[0].is_behind);
}

// Its line is four points thick, so a picture of it is two points larger all around.
TEST(PageAnalysis, LeavesTheLinesOfADrawingWhole) {
  PageModel model = MadePage().Curve({100, 100, 400, 300}).Take();
  model.paths[0].stroke = Rgb{};
  model.paths[0].line_width = 4;
  const PageLayout page = AnalyzePage(std::move(model));
  ASSERT_THAT(page.bands, SizeIs(1));
  const auto* drawing = std::get_if<Drawing>(&page.bands[0].columns[0].blocks[0].content);
  ASSERT_NE(drawing, nullptr);
  EXPECT_EQ(drawing->box, (pdf::Box{98, 98, 402, 302}));
}

TEST(PageAnalysis, LetsTextRunOverAField) {
  PageLayout page = AnalyzePage(MadePage().Field({60, 80, 400, 130}).Text(72, 100, kFull).Take());
  EXPECT_THAT(FlowParagraphs(page), SizeIs(1));
  ASSERT_THAT(page.floats, SizeIs(1));
  EXPECT_TRUE(page.floats[0].is_behind);
}

// A table of two columns, and a field behind one line of its first cell.
TEST(PageAnalysis, LetsATableLieOverAField) {
  MadePage made;
  made.Field({100, 100, 200, 112});
  for (const double x : {100, 200, 300}) {
    made.Line({x, 100, x, 160});
  }
  for (const double y : {100, 140, 160}) {
    made.Line({100, y, 300, y});
  }
  made.Text(105, 110, U"A heading").Text(105, 130, U"Its text").Text(205, 120, U"12");
  made.Text(105, 154, U"Short").Text(205, 154, U"7");
  const PageLayout page = AnalyzePage(made.Take());
  ASSERT_THAT(page.bands, SizeIs(1));
  ASSERT_THAT(page.bands[0].columns[0].blocks, SizeIs(1));
  EXPECT_TRUE(std::holds_alternative<Table>(page.bands[0].columns[0].blocks[0].content));
  ASSERT_THAT(page.floats, SizeIs(1));
  EXPECT_TRUE(page.floats[0].is_behind);
  EXPECT_EQ(page.floats[0].box, (pdf::Box{100, 100, 200, 112}));
}

// The same with a curve around the table, and cells that are filled in white and in red.
TEST(PageAnalysis, SeesADrawingThroughWhiteCells) {
  MadePage made;
  made.Curve({90, 90, 310, 170}).Field({100, 100, 200, 140}).Field({100, 140, 200, 160});
  for (const double x : {100, 200, 300}) {
    made.Line({x, 100, x, 160});
  }
  for (const double y : {100, 140, 160}) {
    made.Line({100, y, 300, y});
  }
  made.Text(105, 110, U"A heading").Text(105, 130, U"Its text").Text(205, 120, U"12");
  made.Text(105, 154, U"Short").Text(205, 154, U"7");
  PageModel model = made.Take();
  model.paths[1].fill = Rgb{255, 255, 255};
  const PageLayout page = AnalyzePage(std::move(model));
  ASSERT_THAT(page.bands, SizeIs(1));
  const auto* table = std::get_if<Table>(&page.bands[0].columns[0].blocks[0].content);
  ASSERT_NE(table, nullptr);
  ASSERT_THAT(table->cells, SizeIs(4));
  EXPECT_EQ(table->cells[0].fill, std::nullopt);
  EXPECT_EQ(table->cells[2].fill, (Rgb{200, 30, 30}));
}

TEST(PageAnalysis, TellsTheColourOfThePaper) {
  const PageLayout page = AnalyzePage(MadePage().Field({0, 0, 600, 800}).Take());
  EXPECT_EQ(page.background, (Rgb{200, 30, 30}));
  EXPECT_THAT(page.floats, SizeIs(0));
}

TEST(PageAnalysis, KeepsAScanAsThePicture) {
  const PageLayout page = AnalyzePage(MadePage().Image({0, 0, 600, 800}).Take());
  ASSERT_THAT(page.bands, SizeIs(1));
  EXPECT_TRUE(std::holds_alternative<Picture>(page.bands[0].columns[0].blocks[0].content));
}

TEST(PageAnalysis, PutsThePictureOfAReadScanBehindItsText) {
  PageLayout page =
      AnalyzePage(MadePage().Image({0, 0, 600, 800}).Text(72, 100, U"read text").Take());
  EXPECT_THAT(TextsOf(page), ElementsAre("read text"));
  ASSERT_THAT(page.floats, SizeIs(1));
  EXPECT_TRUE(page.floats[0].is_behind);
}

TEST(PageAnalysis, JoinsTilesOfAPicture) {
  const PageLayout page =
      AnalyzePage(MadePage().Image({100, 100, 200, 150}).Image({100, 150, 200, 200}).Take());
  ASSERT_THAT(page.bands, SizeIs(1));
  EXPECT_THAT(std::get<Picture>(page.bands[0].columns[0].blocks[0].content).images,
              ElementsAre(0, 1));
}

TEST(PageAnalysis, PutsASmallBulletBesideItsText) {
  PageLayout page = AnalyzePage(MadePage()
                                    .Text(72, 96, U"\u25CF", {.size = 9})
                                    .Text(84, 100, U"An item", {.size = 20})
                                    .Take());
  EXPECT_THAT(TextsOf(page), SizeIs(1));
}

TEST(PageAnalysis, PutsAPictureIntoTheCellThatHoldsIt) {
  MadePage made;
  for (const double y : {100.0, 150.0, 200.0, 250.0}) {
    made.Line({100, y, 300, y});
  }
  for (const double x : {100.0, 200.0, 300.0}) {
    made.Line({x, 100, x, 250});
  }
  made.Text(105, 120, U"Name").Text(205, 120, U"Look").Text(105, 180, U"Flag");
  made.Text(105, 230, U"Sign").Text(205, 230, U"Round");
  const PageLayout page = AnalyzePage(made.Image({220, 160, 260, 190}).Take());
  const Table& table = std::get<Table>(page.bands.at(0).columns.at(0).blocks.at(0).content);
  const auto cell = std::find_if(table.cells.begin(), table.cells.end(), [](const TableCell& own) {
    return own.row == 1 && own.column == 1;
  });
  ASSERT_NE(cell, table.cells.end());
  ASSERT_EQ(cell->blocks.size(), 1U);
  EXPECT_TRUE(std::holds_alternative<Picture>(cell->blocks[0].content));
}

TEST(PageAnalysis, TellsTwoLinesAtTheRightFromJustifiedOnes) {
  PageLayout layout = AnalyzePage(MadePage()
                                      .Text(72, 60, kFull)
                                      .Text(297, 100, U"shorter one")
                                      .Text(247, 112, U"the longer of the two")
                                      .Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(layout);
  ASSERT_THAT(paragraphs, SizeIs(2));
  ASSERT_THAT(paragraphs[1]->lines, SizeIs(2));
  EXPECT_EQ(paragraphs[1]->alignment, Alignment::kRight);
}

// The first of them could be a line of text that is indented, were both not far from the left.
TEST(PageAnalysis, TellsTwoLinesThatBeginFarFromTheLeft) {
  PageLayout layout = AnalyzePage(MadePage()
                                      .Text(72, 60, kFull)
                                      .Text(272, 100, U"not quite so far")
                                      .Text(247, 112, U"the longer of the two")
                                      .Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(layout);
  ASSERT_THAT(paragraphs, SizeIs(2));
  EXPECT_EQ(paragraphs[1]->alignment, Alignment::kRight);
}

TEST(PageAnalysis, TellsTheLinksOfOneWordApart) {
  PageModel page = MadePage().Text(72, 100, U"name[23]").Take();
  page.links.push_back({.box = {72, 92, 92, 102}, .uri = "http://example.org/name"});
  page.links.push_back({.box = {92, 92, 112, 102}, .uri = "http://example.org/note"});
  PageLayout layout = AnalyzePage(page);
  const TextLine& line = FlowParagraphs(layout)[0]->lines[0];
  ASSERT_THAT(line.pieces, SizeIs(2));
  EXPECT_EQ(line.pieces[0].text, "name");
  EXPECT_EQ(line.pieces[0].link, 0);
  EXPECT_EQ(line.pieces[1].link, 1);
}

// Three rows of two cells with words in all but the second one.
MadePage SmallTable() {
  MadePage page;
  for (const double x : {100.0, 200.0, 300.0}) {
    page.Line({x - 0.25, 100, x + 0.25, 220});
  }
  for (const double y : {100.0, 180.0, 200.0, 220.0}) {
    page.Line({100, y - 0.25, 300, y + 0.25});
  }
  page.Text(110, 130, U"Name").Text(110, 194, U"one").Text(210, 194, U"1");
  page.Text(110, 214, U"two").Text(210, 214, U"2");
  return page;
}

const Table& OnlyTable(const PageLayout& page) {
  return std::get<Table>(page.bands.at(0).columns.at(0).blocks.at(0).content);
}

TEST(PageAnalysis, KeepsDrawingsInTheirCells) {
  MadePage page = SmallTable();
  page.Curve({220, 110, 280, 170}).Curve({230, 120, 270, 160});
  const PageLayout layout = AnalyzePage(page.Take());
  const Table& table = OnlyTable(layout);
  ASSERT_THAT(table.cells[1].blocks, SizeIs(1));
  EXPECT_TRUE(std::holds_alternative<Drawing>(table.cells[1].blocks[0].content));
}

// Near the left edge of its cell.
TEST(PageAnalysis, KeepsTurnedTextInItsCell) {
  MadePage page = SmallTable();
  page.Text(218, 170, U"upwards", {.direction_x = 0, .direction_y = -1});
  const PageLayout layout = AnalyzePage(page.Take());
  EXPECT_THAT(layout.floats, SizeIs(0));
  const TableCell& cell = OnlyTable(layout).cells[1];
  EXPECT_EQ(cell.angle, 270);
  ASSERT_THAT(cell.blocks, SizeIs(1));
  const auto& paragraph = std::get<Paragraph>(cell.blocks[0].content);
  EXPECT_EQ(TextOf(paragraph), "upwards");
  // 10 points from the lower edge, its baseline 18 points from the left one.
  EXPECT_NEAR(paragraph.box.left - cell.TextBox().left, 10, 0.6);
  EXPECT_NEAR(paragraph.lines[0].baseline - cell.TextBox().bottom, 18, 0.6);
}

TEST(PageAnalysis, KeepsTheOrderOfTextAndPictures) {
  const PageLayout page = AnalyzePage(
      MadePage().Text(72, 100, kFull).Image({72, 130, 300, 300}).Text(72, 330, kFull).Take());
  std::string kinds;
  for (const Block& block : page.bands.at(0).columns.at(0).blocks) {
    kinds += std::to_string(block.content.index());
  }
  EXPECT_EQ(kinds, "020");
}

TEST(PageAnalysis, HasWhatLiesBehindTheText) {
  const PageLayout page =
      AnalyzePage(MadePage().Field({60, 80, 400, 130}).Text(72, 100, kFull).Take());
  ASSERT_THAT(page.floats, SizeIs(1));
  ASSERT_THAT(page.floats[0].blocks, SizeIs(1));
  EXPECT_THAT(std::get<Drawing>(page.floats[0].blocks[0].content).paths, ElementsAre(0));
}

TEST(PageAnalysis, TellsAlignmentsOfTwoLines) {
  PageLayout page =
      AnalyzePage(MadePage()
                      .Text(72, 60, kFull)  // to 352
                      .Text(79.5, 100, U"A title that stands in the middle of the page, on two")
                      .Text(179.5, 112, U"lines of text")
                      .Text(72, 200, kFull)
                      .Text(72, 212, U"and its end")
                      .Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(page);
  ASSERT_THAT(paragraphs, SizeIs(3));
  EXPECT_EQ(paragraphs[1]->alignment, Alignment::kCenter);
  EXPECT_EQ(paragraphs[1]->first_indent, 0);
  EXPECT_NE(paragraphs[2]->alignment, Alignment::kRight);
  EXPECT_EQ(paragraphs[2]->line_pitch, 12);
}

// Where the text of a cell stands between its edges, which are 60 points apart.
TEST(PageAnalysis, TellsWhereTextStandsInItsCell) {
  MadePage made;
  for (const double y : {100.0, 160.0, 220.0}) {
    made.Line({100, y - 0.25, 400, y + 0.25});
  }
  for (const double x : {100.0, 200.0, 300.0, 400.0}) {
    made.Line({x - 0.25, 100, x + 0.25, 220});
  }
  made.Text(105, 110, U"upper").Text(205, 133, U"middle").Text(305, 157, U"lower");
  made.Text(105, 170, U"upper").Text(205, 194, U"middle").Text(305, 217, U"lower");
  const PageLayout page = AnalyzePage(made.Take());
  const Table& table = OnlyTable(page);
  ASSERT_THAT(table.cells, SizeIs(6));
  EXPECT_EQ(table.cells[0].alignment, VerticalAlignment::kTop);
  EXPECT_EQ(table.cells[1].alignment, VerticalAlignment::kMiddle);
  EXPECT_EQ(table.cells[2].alignment, VerticalAlignment::kBottom);
  EXPECT_EQ(table.cells[4].alignment, VerticalAlignment::kMiddle);  // a point below its middle
}

}  // namespace
}  // namespace TarnixTools::engines
