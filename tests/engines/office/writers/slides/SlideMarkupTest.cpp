// What presentations say of small pages, attribute by attribute: lengths are 12,700 to the point,
// those of text hundredths of a point.
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/writers/RichDocuments.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/PackageCheck.h"
#include "engines/office/writers/schema/XmlNode.h"
#include "engines/office/writers/text/ParagraphFit.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;

XmlNode PartOf(const OfficeDocument& document, const std::string& name) {
  const Parts parts = PartsOf(SlideBytesOf(document));
  EXPECT_EQ(PackageComplaints(parts), "");
  return ParsedXml(parts.at(name));
}

XmlNode SlideOf(const OfficePage& page) {
  return PartOf(DocumentOf({page}), "ppt/slides/slide1.xml");
}

// The properties of a paragraph with what they have, and its runs.
std::string Spaces(const std::string& before) {
  return "<a:lnSpc><a:spcPts val=\"1150\"/></a:lnSpc><a:spcBef><a:spcPts val=\"" + before +
         "\"/></a:spcBef><a:spcAft><a:spcPts val=\"0\"/></a:spcAft>";
}

std::string PlainRun(const std::string& text, const std::string& more = "") {
  return "<a:r><a:rPr sz=\"1000\" b=\"0\" i=\"0\"" + more +
         "><a:solidFill><a:srgbClr val=\"000000\"/></a:solidFill></a:rPr><a:t>" + text +
         "</a:t></a:r>";
}

std::string Form(const std::string& off, const std::string& ext, const std::string& kind = "rect",
                 const std::string& more = "") {
  return "<a:xfrm" + more + "><a:off " + off + "/><a:ext " + ext +
         "/></a:xfrm><a:prstGeom prst=\"" + kind + "\"><a:avLst/></a:prstGeom>";
}

TEST(SlideMarkup, PlacesTextInShapes) {
  Paragraph right = LineBetween(300, 400, 150, "Two");
  right.alignment = Alignment::kRight;
  const XmlNode slide =
      SlideOf(FacelessPage({Block{LineBetween(82, 400, 100, "One")}, Block{right}}));
  const std::string plain = "<a:buNone/></a:pPr>";
  EXPECT_EQ(ShownAll(slide, "p:sp"),
            "<p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"Text 2\"/><p:cNvSpPr txBox=\"1\"/><p:nvPr/>"
            "</p:nvSpPr><p:spPr>" +
                Form("x=\"914400\" y=\"1149350\"", "cx=\"5600700\" cy=\"781050\"") +
                "<a:noFill/></p:spPr><p:txBody><a:bodyPr lIns=\"0\" tIns=\"0\" rIns=\"0\" "
                "bIns=\"0\" wrap=\"square\" anchor=\"t\"><a:noAutofit/></a:bodyPr><a:lstStyle/>"
                "<a:p><a:pPr marL=\"127000\" marR=\"0\" indent=\"0\" algn=\"l\">" +
                Spaces("0") + plain + PlainRun("One") +
                "</a:p><a:p><a:pPr marL=\"0\" marR=\"1435100\" indent=\"0\" algn=\"r\">" +
                Spaces("3850") + plain + PlainRun("Two") + "</a:p></p:txBody></p:sp>\n");
  EXPECT_EQ(ShownAll(slide, "p:nvGrpSpPr"),
            "<p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>\n");
}

TEST(SlideMarkup, KeepsHowTextLooks) {
  const auto bold =
      std::make_shared<const Typeface>(Typeface{"Liberation Sans", true, true, false, false});
  std::vector<TextLook> looks(5);
  looks[0] = {nullptr, 10.5, Rgb{0x12, 0xAB, 0xFF}, Rgb{255, 255, 0}, true, true};
  looks[1] = {nullptr, 12, Rgb{}, std::nullopt, false, false, false, Raise::kSuperscript};
  looks[2] = {nullptr, 12, Rgb{}, std::nullopt, false, false, true, Raise::kSubscript};
  looks[3] = {nullptr, 9000, Rgb{}, std::nullopt};
  looks[4] = {bold, 10, Rgb{}, std::nullopt};
  OfficePage page = FacelessPage({});
  page.layout.looks = looks;
  page.layout.links = {{"http://example.org/a b", "", -1, 0}};
  for (std::uint32_t i = 0; i < looks.size(); ++i) {
    Paragraph line = LineBetween(72, 102, 100 + 20 * i, "Text");
    line.lines[0].pieces[0].look = i;
    line.lines[0].pieces[0].link = i == 1 ? 0 : -1;
    page.layout.bands[0].columns[0].blocks.push_back(Block{line});
  }
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({page})));
  const XmlNode slide = ParsedXml(parts.at("ppt/slides/slide1.xml"));
  const std::vector<const XmlNode*> runs = All(slide, "a:rPr");
  ASSERT_EQ(runs.size(), 5u);
  EXPECT_EQ(Shown(*runs[0]),
            "<a:rPr sz=\"1050\" b=\"0\" i=\"0\" u=\"sng\" strike=\"sngStrike\"><a:solidFill>"
            "<a:srgbClr val=\"12ABFF\"/></a:solidFill><a:highlight><a:srgbClr val=\"FFFF00\"/>"
            "</a:highlight></a:rPr>");
  EXPECT_EQ(Shown(*runs[1]),
            "<a:rPr sz=\"1200\" b=\"0\" i=\"0\" baseline=\"30000\"><a:solidFill>"
            "<a:srgbClr val=\"000000\"/></a:solidFill><a:hlinkClick r:id=\"rId2\"/></a:rPr>");
  EXPECT_EQ(Shown(*runs[2]),
            "<a:rPr sz=\"1200\" b=\"0\" i=\"0\" baseline=\"-25000\"><a:solidFill>"
            "<a:srgbClr val=\"000000\"><a:alpha val=\"1000\"/></a:srgbClr></a:solidFill></a:rPr>");
  EXPECT_EQ(*runs[3]->Attribute("sz"), "400000");
  EXPECT_EQ(*runs[4]->Attribute("b") + *runs[4]->Attribute("i"), "11");
  EXPECT_THAT(Values(*runs[4], "a:latin", "typeface"), ElementsAre("Liberation Sans"));
  EXPECT_THAT(Values(*runs[4], "a:ea", "typeface"), ElementsAre("Liberation Sans"));
  EXPECT_THAT(Values(*runs[4], "a:cs", "typeface"), ElementsAre("Liberation Sans"));
  EXPECT_EQ(
      Shown(ParsedXml(parts.at("ppt/slides/_rels/slide1.xml.rels")).children.at(1)),
      "<Relationship Id=\"rId2\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/"
      "relationships/hyperlink\" Target=\"http://example.org/a%20b\" "
      "TargetMode=\"External\"/>");
}

TEST(SlideMarkup, ShowsLabelsAndGaps) {
  Paragraph bullet = LineBetween(108, 400, 100, "Bullet");
  bullet.label = ListLabel{ListKind::kBullet, "\uF0A7", 0, 1, 90, 1};
  Paragraph number = LineBetween(108, 400, 130, "Number");
  number.label = ListLabel{ListKind::kDecimal, "1.", 1, 0, 90, 2};
  Paragraph tabbed = LineBetween(72, 172, 160, "before");
  TextPiece tab;
  tab.kind = PieceKind::kTab;
  TextPiece end = tabbed.lines[0].pieces[0];
  end.text = "12";
  end.x = 380;
  end.width = 20;
  tabbed.lines[0].pieces.insert(tabbed.lines[0].pieces.end(), {tab, end});
  OfficePage page = FacelessPage({Block{bullet}, Block{number}, Block{tabbed}});
  page.layout.looks.push_back({nullptr, 10, Rgb{255, 0, 0}, std::nullopt});
  const XmlNode slide = SlideOf(page);
  const std::vector<const XmlNode*> paragraphs = All(slide, "a:p");
  ASSERT_EQ(paragraphs.size(), 3u);
  EXPECT_EQ(Shown(*paragraphs[0]),
            "<a:p><a:pPr marL=\"457200\" marR=\"0\" indent=\"-228600\" algn=\"l\">" + Spaces("0") +
                "<a:buClr><a:srgbClr val=\"FF0000\"/></a:buClr><a:buChar char=\"▪\"/></a:pPr>" +
                PlainRun("Bullet") + "</a:p>");
  EXPECT_EQ(Shown(*paragraphs[1]),
            "<a:p><a:pPr marL=\"457200\" marR=\"0\" indent=\"-228600\" algn=\"l\">" +
                Spaces("1850") + "<a:buNone/></a:pPr>" + PlainRun("1.") +
                PlainRun(" ", " spc=\"1800\"") + PlainRun("Number") + "</a:p>");
  EXPECT_EQ(Shown(*paragraphs[2]), "<a:p><a:pPr marL=\"0\" marR=\"0\" indent=\"0\" algn=\"l\">" +
                                       Spaces("1850") + "<a:buNone/></a:pPr>" + PlainRun("before") +
                                       PlainRun(" ", " spc=\"20800\"") + PlainRun("12") + "</a:p>");
}

TEST(SlideMarkup, EndsLines) {
  Paragraph paragraph = LineBetween(72, 172, 100, "one");
  for (const LineJoint joint : {LineJoint::kNothing, LineJoint::kBreak, LineJoint::kSpace}) {
    const double y = paragraph.lines.back().baseline + 12;
    paragraph.lines.back().joint = joint;
    paragraph.lines.push_back(LineBetween(72, 172, y, "two").lines[0]);
  }
  const XmlNode slide = SlideOf(FacelessPage({Block{paragraph}}));
  std::string text;
  for (const XmlNode& child : All(slide, "a:p")[0]->children) {
    text += child.name == "a:br" ? "|" : TextWithin(child);
  }
  // A hyphen that is seen only at a line's end, a break, and a space.
  EXPECT_EQ(text, "one\u00ADtwo|two two");
  EXPECT_EQ(Shown(*All(slide, "a:lnSpc")[0]), "<a:lnSpc><a:spcPts val=\"1200\"/></a:lnSpc>");
}

TEST(SlideMarkup, WritesTables) {
  Table table = TableAt(72, 100, {"a", "b", "c", "d"});
  table.cells[0].borders = {Border{1, Rgb{1, 2, 3}}, Border{2, Rgb{4, 5, 6}}, Border{},
                            Border{4, Rgb{10, 11, 12}}};
  table.cells[0].fill = Rgb{200, 220, 240};
  table.cells[2].blocks.clear();
  const XmlNode slide = SlideOf(PageWith({Block{table}}));
  const XmlNode& frame = *All(slide, "p:graphicFrame")[0];
  EXPECT_EQ(Shown(frame.children[0]),
            "<p:nvGraphicFramePr><p:cNvPr id=\"2\" name=\"Table 2\"/><p:cNvGraphicFramePr/>"
            "<p:nvPr/></p:nvGraphicFramePr>");
  EXPECT_EQ(Shown(frame.children[1]),
            "<p:xfrm><a:off x=\"914400\" y=\"1270000\"/>"
            "<a:ext cx=\"2540000\" cy=\"508000\"/></p:xfrm>");
  EXPECT_EQ(ShownAll(slide, "a:tblPr"), "<a:tblPr firstRow=\"1\"/>\n");
  EXPECT_THAT(Values(slide, "a:gridCol", "w"), ElementsAre("1270000", "1270000"));
  EXPECT_THAT(Values(slide, "a:tr", "h"), ElementsAre("254000", "254000"));
  const auto line = [](const std::string& name, const std::string& width,
                       const std::string& color) {
    return "<a:" + name + " w=\"" + width + "\"><a:solidFill><a:srgbClr val=\"" + color +
           "\"/></a:solidFill></a:" + name + ">";
  };
  EXPECT_EQ(Shown(*All(slide, "a:tcPr")[0]),
            "<a:tcPr marL=\"0\" marR=\"0\" marT=\"57150\" marB=\"0\">" +
                line("lnL", "50800", "0A0B0C") + line("lnR", "25400", "040506") +
                line("lnT", "12700", "010203") +
                "<a:lnB w=\"0\"><a:noFill/></a:lnB>"
                "<a:solidFill><a:srgbClr val=\"C8DCF0\"/></a:solidFill></a:tcPr>");
  EXPECT_EQ(Shown(*All(slide, "a:tcPr")[1]),
            "<a:tcPr marL=\"0\" marR=\"0\" marT=\"57150\" marB=\"0\">" +
                line("lnL", "12700", "000000") + line("lnR", "12700", "000000") +
                line("lnT", "12700", "000000") + line("lnB", "12700", "000000") +
                "<a:noFill/></a:tcPr>");
  EXPECT_THAT(Values(*All(slide, "a:tc")[1], "a:pPr", "marL"), ElementsAre("50800"));
  EXPECT_EQ(Shown(All(slide, "a:tc")[2]->children[0]),
            "<a:txBody><a:bodyPr/><a:lstStyle/><a:p><a:endParaRPr sz=\"100\"/></a:p></a:txBody>");
  std::string text;
  for (const XmlNode* cell : All(slide, "a:tc")) {
    text += TextWithin(*cell) + "|";
  }
  EXPECT_EQ(text, "a|b||d|");
}

TEST(SlideMarkup, SaysOfEachPlaceHowItsCellSpans) {
  Table table = TableAt(72, 100, {"all", "", "", ""});
  table.cells[0].row_span = table.cells[0].column_span = 2;
  table.cells.resize(1);
  table.header_rows = 0;
  const XmlNode slide = SlideOf(PageWith({Block{table}}));
  EXPECT_EQ(ShownAll(slide, "a:tblPr"), "<a:tblPr/>\n");
  EXPECT_THAT(Values(slide, "a:tc", "rowSpan"), ElementsAre("2", "2", "-", "-"));
  EXPECT_THAT(Values(slide, "a:tc", "gridSpan"), ElementsAre("2", "-", "2", "-"));
  EXPECT_THAT(Values(slide, "a:tc", "hMerge"), ElementsAre("-", "1", "-", "1"));
  EXPECT_THAT(Values(slide, "a:tc", "vMerge"), ElementsAre("-", "-", "1", "1"));
}

// The attributes of all places of the table, row by row.
std::string SpansOf(const Table& table) {
  const XmlNode slide = SlideOf(FacelessPage({Block{table}}));
  std::string text;
  for (const XmlNode* row : All(slide, "a:tr")) {
    text += text.empty() ? "" : ";";
    for (const XmlNode* place : All(*row, "a:tc")) {
      text += "[";
      for (const auto& [name, value] : place->attributes) {
        text += name + value;
      }
      text += "]";
    }
  }
  return text;
}

TEST(SlideMarkup, HasPlacesThatNoCellHas) {
  Table table = TableAt(72, 100, {"a", "b", "c", "d"});
  table.cells.erase(table.cells.begin() + 2);
  table.cells.erase(table.cells.begin());
  EXPECT_EQ(SpansOf(table), "[][];[][]");
  table.cells.resize(1);
  EXPECT_EQ(SpansOf(table), "[][];[][]");
  table.cells[0].row_span = 2;
  EXPECT_EQ(SpansOf(table), "[][rowSpan2];[][vMerge1]");
  table.cells[0].column = 0;
  table.cells[0].row_span = 1;
  table.cells[0].column_span = 2;
  EXPECT_EQ(SpansOf(table), "[gridSpan2][hMerge1];[][]");
}

TEST(SlideMarkup, BringsLinesOfACellThatIsTooLowCloser) {
  Paragraph lines = LineBetween(76, 170, 110, "one");
  for (int i = 1; i < 4; ++i) {
    lines.lines.push_back(LineBetween(76, 170, 110 + 12 * i, "more").lines[0]);
  }
  Table table = TableAt(72, 100, {"", "", "", ""});
  table.cells[0].blocks = {Block{lines}};
  const XmlNode slide = SlideOf(FacelessPage({Block{table}}));
  // Four lines of 12 points in a row of 20: 5 points each, and 48 points are brought to 20.
  EXPECT_EQ(Shown(*All(slide, "a:lnSpc")[0]), "<a:lnSpc><a:spcPts val=\"500\"/></a:lnSpc>");
}

TEST(SlideMarkup, DrawsShapesAndPictures) {
  Picture picture;
  picture.box = {72, 100, 172, 200};
  picture.description = "a <picture>";
  Drawing shapes;
  shapes.box = {72, 220, 300, 300};
  shapes.paths = {0, 1, 2};
  shapes.is_simple = true;
  Drawing chart;
  chart.box = {72, 320, 300, 400};
  OfficePage page = PageWith({Block{picture}, Block{shapes}, Block{chart}});
  page.model.paths = {
      {PathShape::Kind::kRectangle, {72, 220, 172, 240}, Rgb{1, 2, 3}, Rgb{4, 5, 6}, 0.01},
      {PathShape::Kind::kLine, {72, 250, 172, 270}, std::nullopt, Rgb{4, 5, 6}, 2, 0, true},
      {PathShape::Kind::kRectangle, {72, 280, 72, 290}, Rgb{7, 8, 9}, std::nullopt}};
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({page})));
  const XmlNode slide = ParsedXml(parts.at("ppt/slides/slide1.xml"));
  const auto fill = [](const std::string& color) {
    return "<a:solidFill><a:srgbClr val=\"" + color + "\"/></a:solidFill>";
  };
  const auto shape = [](int id, const std::string& content) {
    const std::string number = std::to_string(id);
    return "<p:sp><p:nvSpPr><p:cNvPr id=\"" + number + "\" name=\"Shape " + number +
           "\"/><p:cNvSpPr/><p:nvPr/></p:nvSpPr><p:spPr>" + content + "</p:spPr></p:sp>\n";
  };
  EXPECT_EQ(ShownAll(slide, "p:sp"),
            shape(3, Form("x=\"914400\" y=\"2794000\"", "cx=\"1270000\" cy=\"254000\"") +
                         fill("010203") + "<a:ln w=\"1270\">" + fill("040506") + "</a:ln>") +
                shape(4, Form("x=\"914400\" y=\"3175000\"", "cx=\"1270000\" cy=\"254000\"", "line",
                              " flipV=\"1\"") +
                             "<a:noFill/><a:ln w=\"25400\">" + fill("040506") + "</a:ln>") +
                // What has no width would not be seen.
                shape(5, Form("x=\"914400\" y=\"3556000\"", "cx=\"127\" cy=\"127000\"") +
                             fill("070809") + "<a:ln><a:noFill/></a:ln>"));
  const auto shown = [](const std::string& name, const std::string& id, const std::string& form) {
    return "<p:pic><p:nvPicPr><p:cNvPr " + name +
           "/><p:cNvPicPr/><p:nvPr/></p:nvPicPr>"
           "<p:blipFill><a:blip r:embed=\"" +
           id +
           "\"/><a:stretch><a:fillRect/></a:stretch>"
           "</p:blipFill><p:spPr>" +
           form + "</p:spPr></p:pic>\n";
  };
  EXPECT_EQ(ShownAll(slide, "p:pic"),
            shown("id=\"2\" name=\"Picture 2\" descr=\"a <picture>\"", "rId2",
                  Form("x=\"914400\" y=\"1270000\"", "cx=\"1270000\" cy=\"1270000\"")) +
                shown("id=\"6\" name=\"Picture 6\"", "rId3",
                      Form("x=\"914400\" y=\"4064000\"", "cx=\"2895600\" cy=\"1016000\"")));
  EXPECT_EQ(parts.at("ppt/media/image1.png"), "picture of 0");
  EXPECT_EQ(parts.at("ppt/media/image2.png"), "drawing of 0");
}

TEST(SlideMarkup, HasASlideForEachPageInOrder) {
  OfficePage tinted = PageWith({Block{TextAt(72, 100, {"Second"})}});
  tinted.layout.background = Rgb{1, 2, 3};
  OfficePage linked = PageWith({Block{TextAt(72, 100, {"First"})}});
  std::get<Paragraph>(linked.layout.bands[0].columns[0].blocks[0].content).lines[0].pieces[0].link =
      0;
  linked.layout.links = {{"", "", 1, 0}};
  const OfficeDocument document = DocumentOf({linked, tinted});
  const XmlNode presentation = PartOf(document, "ppt/presentation.xml");
  EXPECT_THAT(Values(presentation, "p:sldId", "id"), ElementsAre("256", "257"));
  EXPECT_EQ(ShownAll(presentation, "p:sldSz"), "<p:sldSz cx=\"7556500\" cy=\"10693400\"/>\n");
  EXPECT_EQ(ShownAll(presentation, "p:notesSz"), "<p:notesSz cx=\"6858000\" cy=\"9144000\"/>\n");
  const Parts parts = PartsOf(SlideBytesOf(document));
  std::vector<std::string> targets;
  for (const XmlNode& relation : ParsedXml(parts.at("ppt/_rels/presentation.xml.rels")).children) {
    targets.push_back(*relation.Attribute("Id") + " " + *relation.Attribute("Target"));
  }
  EXPECT_THAT(targets, ElementsAre("rId1 slideMasters/slideMaster1.xml", "rId2 theme/theme1.xml",
                                   "rId3 slides/slide1.xml", "rId4 slides/slide2.xml"));
  EXPECT_THAT(Values(presentation, "p:sldId", "r:id"), ElementsAre("rId3", "rId4"));
  EXPECT_EQ(TextWithin(ParsedXml(parts.at("ppt/slides/slide2.xml"))), "Second");
  EXPECT_EQ(ShownAll(ParsedXml(parts.at("ppt/slides/slide2.xml")), "p:bg"),
            "<p:bg><p:bgPr><a:solidFill><a:srgbClr val=\"010203\"/></a:solidFill><a:effectLst/>"
            "</p:bgPr></p:bg>\n");
  EXPECT_EQ(ShownAll(ParsedXml(parts.at("ppt/slideMasters/slideMaster1.xml")), "p:bg"),
            "<p:bg><p:bgPr><a:solidFill><a:srgbClr val=\"FFFFFF\"/></a:solidFill><a:effectLst/>"
            "</p:bgPr></p:bg>\n");
  EXPECT_EQ(ShownAll(ParsedXml(parts.at("ppt/slides/slide1.xml")), "a:hlinkClick"),
            "<a:hlinkClick r:id=\"rId2\" action=\"ppaction://hlinksldjump\"/>\n");
}

TEST(SlideMarkup, KeepsColoursOfTheThemeApart) {
  const XmlNode theme = PartOf(DocumentOf({PageWith({})}), "ppt/theme/theme1.xml");
  EXPECT_EQ(ShownAll(theme, "a:dk1"), "<a:dk1><a:srgbClr val=\"000000\"/></a:dk1>\n");
  EXPECT_EQ(ShownAll(theme, "a:lt1"), "<a:lt1><a:srgbClr val=\"FFFFFF\"/></a:lt1>\n");
  const std::vector<std::string> colors = Values(theme, "a:srgbClr", "val");
  EXPECT_EQ(std::set<std::string>(colors.begin(), colors.end()).size(), 12u);
  EXPECT_THAT(Values(theme, "a:latin", "typeface"), ElementsAre("Arial", "Arial"));
  EXPECT_THAT(Values(theme, "a:ln", "w"), ElementsAre("6350", "6350", "6350"));
}

// What is written of the blocks of each place of a page, in their order.
TEST(SlideMarkup, WritesWhatAllPlacesOfAPageHave) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"flow"})}});
  const auto picture = [](double x) {
    Picture made;
    made.box = {x, 10, x + 5, 15};
    return Block{made};
  };
  page.layout.header = {Block{TextAt(72, 40, {"header"})}, picture(20)};
  page.layout.footer = {Block{TextAt(72, 800, {"footer"})}, picture(30)};
  page.layout.notes = {{"1", {Block{TextAt(72, 700, {"note"})}}}};
  page.layout.bands[0].columns[0].blocks.push_back(picture(40));
  Floating behind;
  behind.is_behind = true;
  behind.box = {300, 300, 400, 320};
  behind.blocks = {Block{TextAt(300, 310, {"behind"})}, picture(10)};
  Floating over = behind;
  over.is_behind = false;
  over.blocks = {Block{TextAt(300, 310, {"over"})}, picture(50)};
  page.layout.floats = {over, behind};
  const XmlNode slide = SlideOf(page);
  std::vector<std::string> texts;
  for (const XmlNode* shape : All(slide, "p:sp")) {
    texts.push_back(TextWithin(*shape));
  }
  EXPECT_THAT(texts, ElementsAre("header", "flow", "1 note", "footer", "over", "behind"));
  std::vector<std::string> places;
  for (const XmlNode* shown : All(slide, "p:pic")) {
    places.push_back(Values(*shown, "a:off", "x").at(0));
  }
  EXPECT_THAT(places, ElementsAre("127000", "254000", "381000", "508000", "635000"));
}

TEST(SlideMarkup, GivesMarginsToCellsOfTextFromTheRight) {
  Table table = TableAt(72, 100, {"", "", "", ""});
  Paragraph text = LineBetween(92, 152, 114, "עברית");
  text.is_right_to_left = true;
  text.alignment = Alignment::kRight;
  table.cells[0].blocks = {Block{text}};
  const XmlNode slide = SlideOf(FacelessPage({Block{table}}));
  // From 72 to 172: the text's own margins are none, and the room on its left is free.
  EXPECT_EQ(Values(slide, "a:tcPr", "marL").at(0), "0");
  EXPECT_EQ(Values(slide, "a:tcPr", "marR").at(0), "254000");
  EXPECT_EQ(Shown(All(slide, "a:tc").at(0)->children[0].children[2].children[0]),
            "<a:pPr marL=\"0\" marR=\"0\" indent=\"0\" algn=\"r\" rtl=\"1\">" + Spaces("0") +
                "<a:buNone/></a:pPr>");
}

}  // namespace
}  // namespace TarnixTools::engines::office
