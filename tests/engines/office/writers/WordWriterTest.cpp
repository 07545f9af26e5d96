#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/OfficeSchema.h"
#include "engines/office/writers/schema/PackageCheck.h"
#include "engines/office/writers/word/WordWriter.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string BodyOf(const OfficeDocument& document) {
  return PartsOf(WordBytesOf(document)).at("word/document.xml");
}

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

// A page of everything.
OfficePage FullPage() {
  Paragraph heading = TextAt(72, 90, {"Heading"});
  heading.role = ParagraphRole::kHeading;
  heading.level = 1;
  heading.bookmark = "here";
  Paragraph item = TextAt(90, 120, {"An item"});
  item.role = ParagraphRole::kListItem;
  item.label = ListLabel{ListKind::kDecimal, "1.", 1, 0, 72, 1};
  Paragraph linked = TextAt(72, 140, {"A link"});
  linked.lines[0].pieces[0].link = 0;
  Picture picture;
  picture.box = {72, 150, 172, 250};
  picture.images = {0};
  picture.description = "a <picture>";
  Drawing line;
  line.box = {72, 255, 300, 255};
  line.paths = {0};
  line.is_simple = true;
  OfficePage page = PageWith({Block{heading}, Block{item}, Block{linked}, Block{picture},
                              Block{line}, Block{TableAt(72, 260, {"a", "b", "c", "d"})}});
  AddBand(page, {{Block{TextAt(72, 330, {"left"})}}, {Block{TextAt(300, 330, {"right"})}}});
  page.model.images = {{5, {}, picture.box, 0}};
  page.model.paths = {{PathShape::Kind::kLine, line.box, std::nullopt, Rgb{255, 0, 0}, 1, 0}};
  page.layout.links = {{"http://example.org/", "", -1, 0}};
  Floating floating;
  floating.box = {400, 500, 420, 600};
  floating.angle = 90;
  floating.blocks = {Block{TextAt(400, 510, {"Turned"})}};
  page.layout.floats = {floating};
  page.layout.header = {Block{TextAt(72, 40, {"Header"})}};
  Paragraph number = TextAt(290, 810, {"1"});
  number.lines[0].pieces[0].kind = PieceKind::kPageNumber;
  page.layout.footer = {Block{number}};
  page.layout.background = Rgb{250, 250, 240};
  return page;
}

TEST(WordWriter, WritesASoundPackage) {
  EXPECT_EQ(PackageComplaints(PartsOf(WordBytesOf(DocumentOf({FullPage(), PageWith({})})))), "");
}

TEST(WordWriter, WritesTheSameBytesForTheSameDocument) {
  EXPECT_EQ(WordBytesOf(DocumentOf({FullPage()})), WordBytesOf(DocumentOf({FullPage()})));
}

TEST(WordWriter, WritesPartsThatAreReferredTo) {
  const Parts parts = PartsOf(WordBytesOf(DocumentOf({FullPage()})));
  for (const char* name :
       {"_rels/.rels", "[Content_Types].xml", "docProps/core.xml", "word/styles.xml",
        "word/numbering.xml", "word/settings.xml", "word/fontTable.xml", "word/header1.xml"}) {
    EXPECT_TRUE(parts.contains(name)) << name;
  }
  const std::string& relationships = parts.at("word/_rels/document.xml.rels");
  EXPECT_THAT(relationships, HasSubstr("http://example.org/"));
  EXPECT_THAT(relationships, HasSubstr("media/image1.png"));
}

TEST(WordWriter, BeginsEachPageWhereItBegan) {
  const std::string body = BodyOf(DocumentOf({PageWith({Block{TextAt(72, 100, {"First"})}}),
                                              PageWith({Block{TextAt(72, 100, {"Next"})}}),
                                              PageWith({Block{TextAt(72, 100, {"Last"})}})}));
  EXPECT_EQ(Count(body, "<w:pageBreakBefore/>"), 2u);
  EXPECT_EQ(Count(body, "<w:sectPr>"), 1u);
}

TEST(WordWriter, KeepsHiddenTextFromBeingWhollyTransparent) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Recognised"})}});
  page.layout.looks[0].is_hidden = true;
  EXPECT_THAT(BodyOf(DocumentOf({page})), HasSubstr("<w14:alpha w14:val=\"99000\"/>"));
}

TEST(WordWriter, JoinsLinesThatFlow) {
  const std::string body = BodyOf(DocumentOf(
      {PageWith({Block{TextAt(72, 100,
                              {"Lines that are long enough to be a paragraph that flows",
                               "over two lines, the second of which goes on as far."})}})}));
  EXPECT_THAT(body, HasSubstr("flows over two"));
  EXPECT_THAT(body, Not(HasSubstr("<w:br/>")));
}

TEST(WordWriter, BreaksALineThatTheNextWordWouldFitIn) {
  const std::string body = BodyOf(DocumentOf({PageWith(
      {Block{TextAt(72, 100, {"Short", "but then a line that is very much longer than that"})}})}));
  EXPECT_THAT(body, HasSubstr("<w:br/>"));
}

TEST(WordWriter, KeepsAWordThatWasHyphenatedWhole) {
  Paragraph paragraph =
      TextAt(72, 100,
             {"A line of text whose last word is hyphe", "nated where the line ends on the page"});
  paragraph.lines[0].joint = LineJoint::kNothing;
  const std::string body = BodyOf(DocumentOf({PageWith({Block{paragraph}})}));
  EXPECT_THAT(body, HasSubstr("hyphe</w:t><w:softHyphen/><w:t xml:space=\"preserve\">nated"));
}

TEST(WordWriter, KeepsAtItsPlaceWhatWouldPushTextDown) {
  const std::string body = BodyOf(DocumentOf(
      {PageWith({Block{TextAt(72, 500, {"A line far down on the page"})},
                 Block{TextAt(300, 100, {"Beside"})}, Block{TextAt(72, 520, {"The next one"})}})}));
  EXPECT_GT(body.find("Beside"), body.find("<wps:txbx>"));
  EXPECT_LT(body.find("Beside"), body.find("</wps:txbx>"));
  EXPECT_EQ(Count(body, "<wps:txbx>"), 1u);
}

// A paragraph with an initial beside its first two lines.
Paragraph ParagraphWithInitial() {
  Paragraph paragraph = TextAt(72, 100,
                               {"he lines of the paragraph run beside the letter that it",
                                "begins with, as long as the letter is as high as they are,",
                                "and then begin below it, where all of the others do, too."});
  for (std::size_t i = 0; i < 2; ++i) {
    paragraph.lines[i].inset = 20;
    paragraph.lines[i].box.left += 20;
    paragraph.lines[i].pieces[0].x += 20;
  }
  paragraph.initial = Initial{TextAt(72, 112, {"T"}).lines[0], 2};
  return paragraph;
}

TEST(WordWriter, WritesLargeInitialsAsDropCaps) {
  const std::string body = BodyOf(
      DocumentOf({PageWith({Block{TextAt(72, 80, {"Above"})}, Block{ParagraphWithInitial()}})}));
  EXPECT_THAT(body, HasSubstr("<w:framePr w:dropCap=\"drop\" w:lines=\"2\""));
  EXPECT_EQ(Count(body, "<w:framePr "), 1u);
  EXPECT_LT(body.find(">T<"), body.find("he lines"));
  EXPECT_THAT(body, HasSubstr("that it begins"));
  EXPECT_THAT(body, Not(HasSubstr("<w:br/>")));
  EXPECT_EQ(SchemaComplaints(body), "");
}

TEST(WordWriter, BeginsColumnsBeforeTheFrameOfAnInitial) {
  OfficePage page = PageWith({Block{TextAt(72, 60, {"Over both"})}});
  AddBand(page, {{Block{TextAt(72, 100, {"left"})}}, {Block{ParagraphWithInitial()}}});
  const std::string body = BodyOf(DocumentOf({page}));
  EXPECT_LT(body.find("w:type=\"column\""), body.find("<w:framePr "));
}

// Frames have no place in text boxes.
TEST(WordWriter, WritesInitialsOfTextBoxesAsParagraphs) {
  OfficePage page = PageWith({Block{TextAt(72, 400, {"Flow"})}});
  Floating floating;
  floating.box = {72, 90, 400, 130};
  floating.blocks = {Block{ParagraphWithInitial()}};
  page.layout.floats = {floating};
  const std::string body = BodyOf(DocumentOf({page}));
  EXPECT_EQ(Count(body, "<w:framePr "), 0u);
  EXPECT_LT(body.find(">T<"), body.find("he lines"));
}

// Two lines of vertical writing, the first of them to the right, in a box that is as high as they are
// long.
Floating VerticalText(double right, double top) {
  Paragraph paragraph = TextAt(0, 0, {"縦書きの一行目がここに", "続いている二行目"});
  const pdf::Box seen = QuarterTurned(paragraph.box);
  const double dx = right - seen.right;
  const double dy = top - seen.bottom;
  Floating floating;
  MoveBy(paragraph, dx, dy);
  floating.box = paragraph.box;
  floating.angle = 90;
  floating.is_vertical = true;
  floating.blocks = {Block{paragraph}};
  return floating;
}

TEST(WordWriter, WritesPagesOfVerticalWritingAsSections) {
  OfficePage page = PageWith({});
  page.layout.bands.clear();
  page.layout.floats = {VerticalText(523, 90), VerticalText(480, 90)};
  const std::string body = BodyOf(DocumentOf({PageWith({Block{TextAt(72, 100, {"a"})}}), page}));
  EXPECT_EQ(Count(body, "<w:textDirection w:val=\"tbRl\"/>"), 1u);
  EXPECT_EQ(Count(body, "<w:sectPr>"), 2u);
  EXPECT_THAT(body, Not(HasSubstr("<wps:txbx>")));
  EXPECT_THAT(body, HasSubstr("<w:pgMar w:top=\"1800\" w:right=\"1428\""));
  EXPECT_EQ(SchemaComplaints(body), "");
}

TEST(WordWriter, WritesVerticalWritingBesideOtherTextInBoxes) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Flow"})}});
  page.layout.floats = {VerticalText(523, 200), VerticalText(480, 190)};
  std::get<Paragraph>(page.layout.floats[0].blocks[0].content).lines[0].pieces[0].text = "先";
  std::get<Paragraph>(page.layout.floats[1].blocks[0].content).lines[0].pieces[0].text = "後";
  const std::string body = BodyOf(DocumentOf({page}));
  EXPECT_EQ(Count(body, "vert=\"eaVert\""), 2u);
  EXPECT_THAT(body, Not(HasSubstr("w:textDirection")));
  EXPECT_LT(body.find("先"), body.find("後"));
}

TEST(WordWriter, AnchorsFloatingTextWhereItIsRead) {
  OfficePage page =
      PageWith({Block{TextAt(72, 100, {"Above"})}, Block{TextAt(72, 300, {"Below"})}});
  Floating floating;
  floating.box = {300, 190, 400, 202};
  floating.blocks = {Block{TextAt(300, 200, {"Between"})}};
  page.layout.floats = {floating};
  const std::string body = BodyOf(DocumentOf({page}));
  EXPECT_LT(body.find("Above"), body.find("Between"));
  EXPECT_LT(body.find("Between"), body.find("Below"));
}

TEST(WordWriter, GivesRowsAtTheFootOfAPageTheirExactHeight) {
  const std::string high =
      BodyOf(DocumentOf({PageWith({Block{TableAt(72, 100, {"a", "b", "c", "d"})}})}));
  const std::string low =
      BodyOf(DocumentOf({PageWith({Block{TableAt(72, kTestHeight - 40, {"a", "b", "c", "d"})}})}));
  EXPECT_THAT(high, HasSubstr("w:hRule=\"atLeast\""));
  EXPECT_THAT(low, HasSubstr("w:hRule=\"exact\""));
}

TEST(WordWriter, BreaksALineOfIdeographsThatHasRoomForMore) {
  const std::string body = BodyOf(DocumentOf(
      {PageWith({Block{TextAt(72, 100, {"短い", "とても長い二番目の行がここにあります"})}})}));
  EXPECT_THAT(body, HasSubstr("<w:br/>"));
}

TEST(WordWriter, WritesColumnsAsASection) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Over both"})}});
  AddBand(page, {{Block{TextAt(72, 200, {"left"})}}, {Block{TextAt(300, 200, {"right"})}}});
  const std::string body = BodyOf(DocumentOf({page}));
  EXPECT_THAT(body, HasSubstr("<w:br w:type=\"column\"/>"));
  EXPECT_THAT(body, HasSubstr("<w:cols w:num=\"2\""));
  EXPECT_THAT(body, HasSubstr("<w:type w:val=\"continuous\"/>"));
}

TEST(WordWriter, WritesTablesSideBySideInNoColumns) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Over both"})}});
  const std::vector<std::string> texts = {"a", "b", "c", "d"};
  AddBand(page, {{Block{TableAt(72, 200, texts)}}, {Block{TableAt(300, 200, texts)}}});
  const std::string body = BodyOf(DocumentOf({page}));
  EXPECT_EQ(body.find("<w:cols w:num=\"2\""), std::string::npos);
  EXPECT_EQ(Count(body, "<wps:txbx>"), 1u);
  EXPECT_EQ(body.find("w:type=\"column\""), std::string::npos);
}

TEST(WordWriter, GivesColumnsWithinOthersAWidth) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Over both"})}});
  AddBand(page, {{Block{TextAt(72, 200, {"wide"})}}, {Block{TextAt(100, 200, {"within"})}}});
  page.layout.bands[1].columns[0].box = {72, 72, 500, 700};
  page.layout.bands[1].columns[1].box = {100, 72, 150, 700};
  const std::string body = BodyOf(DocumentOf({page}));
  EXPECT_EQ(body.find("<w:col w:w=\"-"), std::string::npos);
  EXPECT_THAT(body, HasSubstr("<w:col w:w=\"20\""));
}

TEST(WordWriter, PutsHeadersBesideEachOtherWhereTheyStand) {
  OfficePage page = PageWith({Block{TextAt(72, 200, {"Body"})}});
  page.layout.header = {Block{TextAt(72, 40, {"Flowing", "Lines"})},
                        Block{TextAt(400, 46, {"Beside", "them"})},
                        Block{TextAt(72, 80, {"Below"})}};
  const Parts parts = PartsOf(WordBytesOf(DocumentOf({page})));
  const std::string& header = parts.at("word/header1.xml");
  EXPECT_EQ(Count(header, "<wps:txbx>"), 1u);
  const std::size_t box = header.find("<wps:txbx>");
  const std::size_t end = header.find("</wps:txbx>");
  EXPECT_LT(box, header.find("Beside"));
  EXPECT_LT(header.find("them"), end);
  EXPECT_TRUE(header.find("Flowing") < box || header.find("Flowing") > end);
  EXPECT_TRUE(header.find("Below") < box || header.find("Below") > end);
}

TEST(WordWriter, CountsPagesInHeadersAndFooters) {
  const Parts parts = PartsOf(WordBytesOf(DocumentOf({FullPage(), FullPage()})));
  bool has_field = false;
  for (const auto& [name, part] : parts) {
    has_field = has_field || (name.starts_with("word/footer") &&
                              part.find("<w:fldSimple w:instr=\" PAGE \">") != std::string::npos);
  }
  EXPECT_TRUE(has_field);
}

TEST(WordWriter, TurnsTheTextOfCells) {
  Table table = TableAt(72, 100, {"up", "down", "c", "d"});
  table.cells[0].angle = 270;
  table.cells[1].angle = 90;
  const std::string body = BodyOf(DocumentOf({PageWith({Block{table}})}));
  EXPECT_THAT(body, HasSubstr("<w:textDirection w:val=\"btLr\"/>"));
  EXPECT_THAT(body, HasSubstr("<w:textDirection w:val=\"tbRl\"/>"));
  EXPECT_EQ(SchemaComplaints(body), "");
}

TEST(WordWriter, WritesTablesWithRowsAndSpans) {
  Table table = TableAt(72, 100, {"wide", "", "c", "d"});
  table.cells[0].column_span = 2;
  table.cells.erase(table.cells.begin() + 1);
  const std::string body = BodyOf(DocumentOf({PageWith({Block{table}})}));
  EXPECT_EQ(Count(body, "<w:tr>"), 2u);
  EXPECT_EQ(Count(body, "<w:tc>"), 3u);
  EXPECT_THAT(body, HasSubstr("<w:gridSpan w:val=\"2\"/>"));
  EXPECT_EQ(Count(body, "<w:tblHeader/>"), 1u);
}

TEST(WordWriter, JoinsColumnsThatAreTooMany) {
  constexpr std::uint32_t kColumns = 70;
  Table table = TableAt(0, 100, {"", "", "", ""});
  const TableCell model = table.cells[0];
  table.columns.assign(1, 0);
  table.cells.clear();
  for (std::uint32_t column = 0; column < kColumns; ++column) {
    table.columns.push_back(8.0 * (column + 1));
  }
  for (std::uint32_t i = 0; i < 2 * kColumns; ++i) {
    TableCell cell = model;
    cell.row = i / kColumns;
    cell.column = i % kColumns;
    cell.blocks = {
        Block{TextAt(8.0 * cell.column, 114 + 20.0 * cell.row, {"c" + std::to_string(i)})}};
    table.cells.push_back(cell);
  }
  const std::string body = BodyOf(DocumentOf({PageWith({Block{table}})}));
  EXPECT_EQ(Count(body, "<w:gridCol "), 63u);
  EXPECT_EQ(Count(body, "<w:tc>"), 2u * 63);
  for (std::uint32_t i = 0; i < 2 * kColumns; ++i) {
    EXPECT_EQ(Count(body, ">c" + std::to_string(i) + "<"), 1u) << i;
  }
}

TEST(WordWriter, RefersToNotes) {
  Paragraph paragraph = TextAt(72, 100, {"Text", "1"});
  paragraph.lines[1].pieces[0].kind = PieceKind::kNoteMark;
  OfficePage page = PageWith({Block{paragraph}});
  page.layout.notes = {{"1", {Block{TextAt(72, 700, {"A note"})}}},
                       {"2", {Block{TextAt(72, 720, {"A stray one"})}}}};
  const Parts parts = PartsOf(WordBytesOf(DocumentOf({page})));
  EXPECT_THAT(parts.at("word/document.xml"), HasSubstr("<w:footnoteReference w:id=\"1\"/>"));
  EXPECT_THAT(parts.at("word/document.xml"), HasSubstr("A stray one"));
  EXPECT_THAT(parts.at("word/footnotes.xml"), HasSubstr("A note"));
  EXPECT_EQ(SchemaComplaints(parts.at("word/footnotes.xml")), "");
}

TEST(WordWriter, CountsNotesWhoseMarksCountThem) {
  Paragraph paragraph = TextAt(72, 100, {"Text", "1 ", "7 "});
  paragraph.lines[1].pieces[0].kind = paragraph.lines[2].pieces[0].kind = PieceKind::kNoteMark;
  paragraph.lines[2].pieces[0].number = 1;
  OfficePage page = PageWith({Block{paragraph}});
  page.layout.notes = {{"1", {Block{TextAt(300, 700, {"One"})}}},
                       {"7", {Block{TextAt(300, 720, {"Seven"})}}}};
  const Parts parts = PartsOf(WordBytesOf(DocumentOf({page})));
  EXPECT_THAT(parts.at("word/document.xml"), HasSubstr("<w:footnoteReference w:id=\"1\"/></w:r>"));
  EXPECT_THAT(parts.at("word/document.xml"),
              HasSubstr("<w:footnoteReference w:id=\"2\" w:customMarkFollows=\"1\"/>"
                        "<w:t xml:space=\"preserve\">7</w:t></w:r>"));
  EXPECT_EQ(Count(parts.at("word/footnotes.xml"), "<w:footnoteRef/>"), 1U);
  // The text ends near the edge of its room.
  EXPECT_THAT(parts.at("word/footnotes.xml"), HasSubstr("w:right=\"-60\""));
}

TEST(WordWriter, StaysWithinWhatWordOpens) {
  OfficePage wide =
      PageWith({Block{TextAt(72, 100, {"Large"})}, Block{TextAt(9000, 9000, {"Far"})}});
  wide.layout.looks[0].size = 5000;
  wide.layout.width = wide.layout.height = 20'000;
  OfficePage tiny = PageWith({});
  tiny.layout.width = tiny.layout.height = 3;
  const Parts parts = PartsOf(WordBytesOf(DocumentOf({wide, tiny})));
  EXPECT_EQ(PackageComplaints(parts), "");
  const std::string& body = parts.at("word/document.xml");
  EXPECT_THAT(body, HasSubstr("<w:pgSz w:w=\"31680\" w:h=\"31680\""));
  EXPECT_THAT(body, HasSubstr("<w:pgSz w:w=\"144\" w:h=\"144\""));
  EXPECT_THAT(body, HasSubstr("<w:sz w:val=\"3276\"/>"));
  EXPECT_THAT(body, HasSubstr("<w:ind w:left=\"31680\""));
}

TEST(WordWriter, StopsBeforeWhatIsAnchoredWhenCancelled) {
  Floating floating;
  Picture picture;
  picture.box = floating.box = {72, 150, 172, 250};
  floating.blocks = {Block{picture}};
  OfficePage page = PageWith({});
  page.layout.floats = {floating};
  EXPECT_THROW(WordBytesOf(DocumentOf({page}), true), Cancelled);
}

TEST(WordWriter, WritesADocumentWithoutContent) {
  const OfficeDocument document = DocumentOf({PageWith({}), OfficePage(), PageWith({})});
  EXPECT_EQ(PackageComplaints(PartsOf(WordBytesOf(document))), "");
}

TEST(WordWriter, FillsRulesThatArePaintedAsAreas) {
  const PathShape rule{PathShape::Kind::kLine, {72, 255, 300, 256}, Rgb{0, 0, 255}, std::nullopt};
  const std::string xml = BodyOf(DocumentOf({PageWithPath(rule)}));
  EXPECT_THAT(xml, HasSubstr("prst=\"rect\""));
  EXPECT_THAT(xml, HasSubstr("0000FF"));
}

TEST(WordWriter, DrawsSlantedLinesTheWayTheyLead) {
  PathShape line{PathShape::Kind::kLine, {72, 200, 300, 256}, std::nullopt, Rgb{0, 0, 255}, 1};
  for (const bool rises : {false, true}) {
    line.rises = rises;
    const std::string xml = BodyOf(DocumentOf({PageWithPath(line)}));
    EXPECT_THAT(xml, HasSubstr("prst=\"line\""));
    EXPECT_EQ(xml.find("flipV=\"1\"") != std::string::npos, rises);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::office
