// What Word documents say of small pages, attribute by attribute: lengths are twentieths of a point
// (eighths for borders, halves for sizes), those of drawings 12,700 to the point.
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
#include "engines/office/writers/text/TextMeasure.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

XmlNode PartOf(const OfficeDocument& document, const std::string& name) {
  const Parts parts = PartsOf(WordBytesOf(document));
  EXPECT_EQ(PackageComplaints(parts), "");
  return ParsedXml(parts.at(name));
}

XmlNode BodyOf(const OfficePage& page) {
  return PartOf(DocumentOf({page}), "word/document.xml");
}

// Of the paragraphs, one after the other.
std::string PropertiesOf(const XmlNode& body, std::string_view name) {
  std::string shown;
  for (const XmlNode* properties : All(body, "w:pPr")) {
    for (const XmlNode& child : properties->children) {
      shown += child.name == name ? Shown(child) + "\n" : "";
    }
  }
  return shown;
}

TEST(WordMarkup, PlacesParagraphsByTheirBaselines) {
  Paragraph centred = LineBetween(100, 300, 150, "Centred");
  centred.alignment = Alignment::kCenter;
  Paragraph right = LineBetween(300, 400, 200, "Right");
  right.alignment = Alignment::kRight;
  Paragraph justified = LineBetween(92, 400, 250, "Justified text of");
  justified.lines.push_back(LineBetween(72, 400, 262, "two lines").lines[0]);
  justified.alignment = Alignment::kJustified;
  justified.box = {72, 241, 400, 264};
  const XmlNode body = BodyOf(FacelessPage(
      {Block{LineBetween(72, 400, 100, "One")}, Block{centred}, Block{right}, Block{justified}}));
  EXPECT_EQ(PropertiesOf(body, "w:spacing"),
            "<w:spacing w:before=\"0\" w:after=\"0\" w:line=\"230\" w:lineRule=\"exact\"/>\n"
            "<w:spacing w:before=\"770\" w:after=\"0\" w:line=\"230\" w:lineRule=\"exact\"/>\n"
            "<w:spacing w:before=\"770\" w:after=\"0\" w:line=\"230\" w:lineRule=\"exact\"/>\n"
            "<w:spacing w:before=\"762\" w:after=\"0\" w:line=\"240\" w:lineRule=\"exact\"/>\n");
  EXPECT_EQ(PropertiesOf(body, "w:ind"),
            "<w:ind w:left=\"0\" w:right=\"-60\" w:firstLine=\"0\"/>\n"
            "<w:ind w:left=\"0\" w:right=\"1440\" w:firstLine=\"0\"/>\n"
            "<w:ind w:left=\"0\" w:right=\"0\" w:firstLine=\"0\"/>\n"
            "<w:ind w:left=\"0\" w:right=\"0\" w:firstLine=\"400\"/>\n");
  EXPECT_THAT(Values(body, "w:jc", "w:val"), ElementsAre("left", "center", "right", "both"));
  EXPECT_EQ(ShownAll(body, "w:sectPr"),
            "<w:sectPr><w:type w:val=\"nextPage\"/><w:pgSz w:w=\"11900\" w:h=\"16840\"/>"
            "<w:pgMar w:top=\"1816\" w:right=\"3900\" w:bottom=\"9760\" w:left=\"1440\" "
            "w:header=\"720\" w:footer=\"720\" w:gutter=\"0\"/><w:cols w:space=\"720\"/>"
            "</w:sectPr>\n");
  EXPECT_EQ(TextWithin(body), "OneCentredRightJustified text of two lines");
}

TEST(WordMarkup, PlacesColumns) {
  OfficePage page = FacelessPage({Block{LineBetween(72, 520, 100, "Over both")}});
  AddBand(page, {{Block{LineBetween(72, 280, 200, "left")}},
                 {Block{LineBetween(300, 520, 210, "right")}}});
  page.layout.bands[1].columns[0].box = {72, 191, 280, 212};
  page.layout.bands[1].columns[1].box = {300, 191, 520, 212};
  const XmlNode body = BodyOf(page);
  EXPECT_EQ(ShownAll(body, "w:sectPr"),
            "<w:sectPr><w:type w:val=\"nextPage\"/><w:pgSz w:w=\"11900\" w:h=\"16840\"/>"
            "<w:pgMar w:top=\"1816\" w:right=\"1500\" w:bottom=\"10800\" w:left=\"1440\" "
            "w:header=\"720\" w:footer=\"720\" w:gutter=\"0\"/><w:cols w:space=\"720\"/>"
            "</w:sectPr>\n"
            "<w:sectPr><w:type w:val=\"continuous\"/><w:pgSz w:w=\"11900\" w:h=\"16840\"/>"
            "<w:pgMar w:top=\"1816\" w:right=\"1500\" w:bottom=\"12120\" w:left=\"1440\" "
            "w:header=\"720\" w:footer=\"720\" w:gutter=\"0\"/>"
            "<w:cols w:num=\"2\" w:equalWidth=\"0\"><w:col w:w=\"4160\" w:space=\"400\"/>"
            "<w:col w:w=\"4400\" w:space=\"0\"/></w:cols></w:sectPr>\n");
  // The second one is the space above the columns.
  EXPECT_EQ(PropertiesOf(body, "w:spacing"),
            "<w:spacing w:before=\"0\" w:after=\"0\" w:line=\"230\" w:lineRule=\"exact\"/>\n"
            "<w:spacing w:before=\"0\" w:after=\"0\" w:line=\"1770\" w:lineRule=\"exact\"/>\n"
            "<w:spacing w:before=\"0\" w:after=\"0\" w:line=\"230\" w:lineRule=\"exact\"/>\n"
            "<w:spacing w:before=\"1970\" w:after=\"0\" w:line=\"230\" w:lineRule=\"exact\"/>\n");
  EXPECT_THAT(Values(body, "w:br", "w:type"), ElementsAre("column"));
}

TEST(WordMarkup, SetsTextFromRightToLeft) {
  std::vector<Block> blocks;
  for (const Alignment alignment :
       {Alignment::kRight, Alignment::kLeft, Alignment::kCenter, Alignment::kJustified}) {
    Paragraph paragraph =
        LineBetween(200, 400, 100 + 20 * static_cast<double>(blocks.size()), "עברית");
    paragraph.is_right_to_left = true;
    paragraph.alignment = alignment;
    blocks.push_back(Block{paragraph});
  }
  const XmlNode body = BodyOf(FacelessPage(blocks));
  // "left" is where lines begin, which is on the right.
  EXPECT_THAT(Values(body, "w:jc", "w:val"), ElementsAre("left", "right", "center", "both"));
  EXPECT_EQ(PropertiesOf(body, "w:bidi"), "<w:bidi/>\n<w:bidi/>\n<w:bidi/>\n<w:bidi/>\n");
  EXPECT_EQ(All(body, "w:rtl").size(), 4u);
  EXPECT_EQ(Shown(*All(body, "w:ind")[0]),
            "<w:ind w:left=\"0\" w:right=\"-60\" w:firstLine=\"0\"/>");
}

TEST(WordMarkup, LeadsToPlacesByTabulators) {
  Paragraph plain = LineBetween(72, 172, 100, "before");
  TextPiece tab;
  tab.kind = PieceKind::kTab;
  TextPiece end = plain.lines[0].pieces[0];
  end.text = "12";
  end.x = 380;
  end.width = 20;
  plain.lines[0].pieces.insert(plain.lines[0].pieces.end(), {tab, end});
  plain.box.right = plain.lines[0].box.right = 400;
  Paragraph entry = plain;
  entry.role = ParagraphRole::kContents;
  entry.level = 1;
  Paragraph item = LineBetween(108, 400, 150, "An item");
  item.box.left = 72;
  item.role = ParagraphRole::kListItem;
  item.label = ListLabel{ListKind::kLowerLetter, "(c)", 3, 0, 90, 1};
  const XmlNode body = BodyOf(FacelessPage({Block{plain}, Block{item}}));
  EXPECT_EQ(PropertiesOf(body, "w:tabs"),
            "<w:tabs><w:tab w:val=\"left\" w:pos=\"6160\"/></w:tabs>\n"
            "<w:tabs><w:tab w:val=\"left\" w:pos=\"720\"/></w:tabs>\n");
  EXPECT_EQ(PropertiesOf(body, "w:ind"),
            "<w:ind w:left=\"0\" w:right=\"-60\" w:firstLine=\"0\"/>\n"
            "<w:ind w:left=\"720\" w:right=\"-60\" w:hanging=\"360\"/>\n");
  // Counting of the list would begin with 1: the item begins anew, with 3.
  EXPECT_EQ(PropertiesOf(body, "w:numPr"),
            "<w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"2\"/></w:numPr>\n");
  EXPECT_EQ(PropertiesOf(BodyOf(FacelessPage({Block{entry}})), "w:tabs"),
            "<w:tabs><w:tab w:val=\"right\" w:leader=\"dot\" w:pos=\"6560\"/></w:tabs>\n");
}

TEST(WordMarkup, NamesTheStylesOfParagraphs) {
  std::vector<Block> blocks;
  const auto add = [&blocks](ParagraphRole role, std::uint8_t level) {
    Paragraph paragraph =
        LineBetween(72, 200, 100 + 12 * static_cast<double>(blocks.size()), "Text");
    paragraph.role = role;
    paragraph.level = level;
    blocks.push_back(Block{paragraph});
  };
  add(ParagraphRole::kTitle, 0);
  for (std::uint8_t level = 0; level < 8; ++level) {
    add(ParagraphRole::kHeading, level);
  }
  for (std::uint8_t level = 0; level < 4; ++level) {
    add(ParagraphRole::kContents, level);
  }
  for (const ParagraphRole role :
       {ParagraphRole::kListItem, ParagraphRole::kCaption, ParagraphRole::kQuote,
        ParagraphRole::kCode, ParagraphRole::kBody}) {
    add(role, 0);
  }
  const OfficeDocument document = DocumentOf({FacelessPage(blocks)});
  EXPECT_THAT(Values(PartOf(document, "word/document.xml"), "w:pStyle", "w:val"),
              ElementsAre("Title", "Heading1", "Heading1", "Heading2", "Heading3", "Heading4",
                          "Heading5", "Heading6", "Heading6", "TOC1", "TOC2", "TOC3", "TOC3",
                          "ListParagraph", "Caption", "Quote", "Code"));
  const XmlNode styles = PartOf(document, "word/styles.xml");
  // Programs know the styles of their own by these names.
  EXPECT_THAT(Values(styles, "w:name", "w:val"),
              ElementsAre("Normal", "Title", "heading 1", "heading 2", "heading 3", "heading 4",
                          "heading 5", "heading 6", "List Paragraph", "caption", "toc 1", "toc 2",
                          "toc 3", "Quote", "Code", "header", "footer", "footnote text",
                          "Hyperlink", "footnote reference", "Normal Table"));
  EXPECT_THAT(Values(styles, "w:style", "w:styleId"),
              ElementsAre("Normal", "Title", "Heading1", "Heading2", "Heading3", "Heading4",
                          "Heading5", "Heading6", "ListParagraph", "Caption", "TOC1", "TOC2",
                          "TOC3", "Quote", "Code", "Header", "Footer", "FootnoteText", "Hyperlink",
                          "FootnoteReference", "TableNormal"));
  EXPECT_THAT(Values(styles, "w:outlineLvl", "w:val"), ElementsAre("0", "1", "2", "3", "4", "5"));
  EXPECT_EQ(All(styles, "w:next").size(), 6u);
  EXPECT_EQ(All(styles, "w:basedOn").size(), 17u);
  EXPECT_EQ(All(styles, "w:qFormat").size(), 18u);
  EXPECT_EQ(ShownAll(styles, "w:tblPr"),
            "<w:tblPr><w:tblInd w:w=\"0\" w:type=\"dxa\"/><w:tblCellMar>"
            "<w:top w:w=\"0\" w:type=\"dxa\"/><w:left w:w=\"0\" w:type=\"dxa\"/>"
            "<w:bottom w:w=\"0\" w:type=\"dxa\"/><w:right w:w=\"0\" w:type=\"dxa\"/>"
            "</w:tblCellMar></w:tblPr>\n");
  EXPECT_EQ(ShownAll(styles, "w:docDefaults"),
            "<w:docDefaults><w:rPrDefault><w:rPr><w:kern w:val=\"0\"/>"
            "<w:lang w:val=\"en-US\" w:eastAsia=\"en-US\" w:bidi=\"en-US\"/></w:rPr>"
            "</w:rPrDefault><w:pPrDefault><w:pPr><w:widowControl w:val=\"0\"/>"
            "<w:overflowPunct w:val=\"0\"/><w:spacing w:before=\"0\" w:after=\"0\" "
            "w:line=\"240\" w:lineRule=\"auto\"/></w:pPr></w:pPrDefault></w:docDefaults>\n");
}

// A line for each look of a page, as wide as its text comes.
OfficePage PageOfLooks(const std::vector<TextLook>& looks) {
  TextMeasure measure;
  OfficePage page = PageWith({});
  page.layout.looks = looks;
  for (std::uint32_t i = 0; i < looks.size(); ++i) {
    const double size = looks[i].size * (looks[i].raise == Raise::kNone ? 1 : kRaisedSize);
    const double width = looks[i].face ? measure.WidthOf(*looks[i].face, "Text", size) : 30;
    Paragraph line = LineBetween(72, 72 + width, 100 + 20 * i, "Text");
    line.lines[0].pieces[0].look = i;
    page.layout.bands[0].columns[0].blocks.push_back(Block{line});
  }
  return page;
}

TEST(WordMarkup, KeepsHowTextLooks) {
  const auto bold =
      std::make_shared<const Typeface>(Typeface{"Liberation Sans", true, false, false, false});
  const auto italic =
      std::make_shared<const Typeface>(Typeface{"Liberation Mono", false, true, false, true});
  std::vector<TextLook> looks(5);
  looks[0] = {bold, 10.5, Rgb{0x12, 0xAB, 0xFF}, Rgb{255, 255, 0}, true, true};
  looks[1] = {italic, 8, Rgb{}, std::nullopt};
  looks[2] = {bold, 12, Rgb{}, std::nullopt, false, false, false, Raise::kSuperscript};
  looks[3] = {bold, 12, Rgb{}, std::nullopt, false, false, false, Raise::kSubscript};
  looks[4] = {nullptr, 0, Rgb{}, std::nullopt, false, false, true};
  const OfficeDocument document = DocumentOf({PageOfLooks(looks)});
  const XmlNode body = PartOf(document, "word/document.xml");
  std::vector<std::string> shown;
  for (const XmlNode* run : All(body, "w:r")) {
    shown.push_back(Shown(run->children[0]));
  }
  const std::string sans =
      "<w:rFonts w:ascii=\"Liberation Sans\" w:hAnsi=\"Liberation Sans\" "
      "w:eastAsia=\"Liberation Sans\" w:cs=\"Liberation Sans\"/>";
  const std::string mono =
      "<w:rFonts w:ascii=\"Liberation Mono\" w:hAnsi=\"Liberation Mono\" "
      "w:eastAsia=\"Liberation Mono\" w:cs=\"Liberation Mono\"/>";
  const std::string strong = "<w:b/><w:bCs/><w:i w:val=\"0\"/><w:iCs w:val=\"0\"/>";
  const std::string slanted = "<w:b w:val=\"0\"/><w:bCs w:val=\"0\"/><w:i/><w:iCs/>";
  const std::string plain =
      "<w:b w:val=\"0\"/><w:bCs w:val=\"0\"/><w:i w:val=\"0\"/><w:iCs w:val=\"0\"/>";
  const std::string black = "<w:color w:val=\"000000\"/>";
  EXPECT_THAT(
      shown,
      ElementsAre(
          "<w:rPr>" + sans + strong +
              "<w:strike/><w:color w:val=\"12ABFF\"/><w:sz w:val=\"21\"/><w:szCs w:val=\"21\"/>"
              "<w:u w:val=\"single\"/><w:shd w:val=\"clear\" w:color=\"auto\" "
              "w:fill=\"FFFF00\"/></w:rPr>",
          "<w:rPr>" + mono + slanted + black +
              "<w:sz w:val=\"16\"/><w:szCs w:val=\"16\"/><w:u w:val=\"none\"/></w:rPr>",
          "<w:rPr>" + sans + strong + black +
              "<w:sz w:val=\"24\"/><w:szCs w:val=\"24\"/><w:u w:val=\"none\"/>"
              "<w:vertAlign w:val=\"superscript\"/></w:rPr>",
          "<w:rPr>" + sans + strong + black +
              "<w:sz w:val=\"24\"/><w:szCs w:val=\"24\"/><w:u w:val=\"none\"/>"
              "<w:vertAlign w:val=\"subscript\"/></w:rPr>",
          "<w:rPr>" + plain + black +
              "<w:sz w:val=\"2\"/><w:szCs w:val=\"2\"/><w:u w:val=\"none\"/><w14:textFill>"
              "<w14:solidFill><w14:srgbClr w14:val=\"000000\"><w14:alpha w14:val=\"99000\"/>"
              "</w14:srgbClr></w14:solidFill></w14:textFill></w:rPr>"));
  const XmlNode fonts = PartOf(document, "word/fontTable.xml");
  EXPECT_EQ(ShownAll(fonts, "w:font"),
            "<w:font w:name=\"Liberation Mono\"><w:altName w:val=\"Courier New\"/>"
            "<w:family w:val=\"modern\"/><w:pitch w:val=\"fixed\"/></w:font>\n"
            "<w:font w:name=\"Liberation Sans\"><w:altName w:val=\"Arial\"/>"
            "<w:family w:val=\"swiss\"/><w:pitch w:val=\"variable\"/></w:font>\n");
}

TEST(WordMarkup, GivesTheStyleThatMostTextOfItsKindHas) {
  std::vector<TextLook> looks(3);
  const auto serif = std::make_shared<const Typeface>(Typeface{"Arial", false, false, true, false});
  looks[0] = {serif, 9, Rgb{}, std::nullopt};
  looks[1] = {serif, 11, Rgb{}, std::nullopt};
  looks[2] = {serif, 30, Rgb{}, std::nullopt, false, false, true};  // is hidden: it does not count
  OfficePage page = PageOfLooks(looks);
  std::vector<Block>& blocks = page.layout.bands[0].columns[0].blocks;
  std::get<Paragraph>(blocks[1].content).lines[0].pieces[0].text = "Longer text";
  std::get<Paragraph>(blocks[2].content).lines[0].pieces[0].text = "The longest text of all";
  std::get<Paragraph>(blocks[0].content).role = ParagraphRole::kBody;
  const XmlNode styles = PartOf(DocumentOf({page}), "word/styles.xml");
  EXPECT_THAT(Values(*All(styles, "w:style")[0], "w:sz", "w:val"), ElementsAre("22"));
  EXPECT_THAT(Values(*All(styles, "w:style")[1], "w:sz", "w:val"), IsEmpty());
}

TEST(WordMarkup, WritesTables) {
  Table table = TableAt(72, 100, {"a", "b", "c", "d"});
  table.cells[0].borders = {Border{1, Rgb{1, 2, 3}}, Border{2, Rgb{4, 5, 6}},
                            Border{3, Rgb{7, 8, 9}}, Border{0.1, Rgb{10, 11, 12}}};
  table.cells[0].fill = Rgb{200, 220, 240};
  table.cells[1].row_span = 2;
  table.cells[1].angle = 90;
  table.cells[1].borders[1] = Border{20, Rgb{}};
  table.cells.pop_back();
  table.columns[1] = 132;
  Table low = TableAt(80, 300, {"e", "", "", ""});
  low.cells[0].column_span = 2;
  low.cells.resize(1);  // the places below are of no cell
  const XmlNode body =
      BodyOf(PageWith({Block{table}, Block{TextAt(72, 200, {"After it"})}, Block{low}}));
  const std::string margins =
      "<w:tblLayout w:type=\"fixed\"/><w:tblCellMar><w:top w:w=\"0\" w:type=\"dxa\"/>"
      "<w:left w:w=\"0\" w:type=\"dxa\"/><w:bottom w:w=\"0\" w:type=\"dxa\"/>"
      "<w:right w:w=\"0\" w:type=\"dxa\"/></w:tblCellMar></w:tblPr>\n";
  EXPECT_EQ(ShownAll(body, "w:tblPr"),
            "<w:tblPr><w:bidiVisual w:val=\"0\"/><w:tblW w:w=\"4000\" w:type=\"dxa\"/>"
            "<w:tblInd w:w=\"0\" w:type=\"dxa\"/>" +
                margins +
                "<w:tblPr><w:bidiVisual w:val=\"0\"/><w:tblW w:w=\"4000\" w:type=\"dxa\"/>"
                "<w:tblInd w:w=\"160\" w:type=\"dxa\"/>" +
                margins);
  EXPECT_THAT(Values(body, "w:gridCol", "w:w"), ElementsAre("1200", "2800", "2000", "2000"));
  EXPECT_EQ(ShownAll(*All(body, "w:tbl")[0], "w:trPr"),
            "<w:trPr><w:cantSplit/><w:trHeight w:val=\"400\" w:hRule=\"atLeast\"/>"
            "<w:tblHeader/></w:trPr>\n"
            "<w:trPr><w:cantSplit/><w:trHeight w:val=\"400\" w:hRule=\"atLeast\"/></w:trPr>\n");
  const std::string black = "w:space=\"0\" w:color=\"000000\"/>";
  const std::string left = "<w:left w:val=\"single\" w:sz=\"8\" " + black;
  const std::string right = "<w:right w:val=\"single\" w:sz=\"96\" " + black;
  EXPECT_EQ(
      ShownAll(*All(body, "w:tbl")[0], "w:tcPr"),
      "<w:tcPr><w:tcW w:w=\"1200\" w:type=\"dxa\"/><w:tcBorders>"
      "<w:top w:val=\"single\" w:sz=\"8\" w:space=\"0\" w:color=\"010203\"/>"
      "<w:left w:val=\"single\" w:sz=\"2\" w:space=\"0\" w:color=\"0A0B0C\"/>"
      "<w:bottom w:val=\"single\" w:sz=\"24\" w:space=\"0\" w:color=\"070809\"/>"
      "<w:right w:val=\"single\" w:sz=\"16\" w:space=\"0\" w:color=\"040506\"/></w:tcBorders>"
      "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"C8DCF0\"/></w:tcPr>\n"
      "<w:tcPr><w:tcW w:w=\"2800\" w:type=\"dxa\"/><w:vMerge w:val=\"restart\"/><w:tcBorders>"
      "<w:top w:val=\"single\" w:sz=\"8\" " +
          black + left + "<w:bottom w:val=\"nil\"/>" + right +
          "</w:tcBorders><w:textDirection w:val=\"tbRl\"/></w:tcPr>\n"
          "<w:tcPr><w:tcW w:w=\"1200\" w:type=\"dxa\"/><w:tcBorders>"
          "<w:top w:val=\"single\" w:sz=\"8\" " +
          black + left + "<w:bottom w:val=\"single\" w:sz=\"8\" " + black +
          "<w:right w:val=\"single\" w:sz=\"8\" " + black +
          "</w:tcBorders></w:tcPr>\n"
          "<w:tcPr><w:tcW w:w=\"2800\" w:type=\"dxa\"/><w:vMerge w:val=\"continue\"/><w:tcBorders>"
          "<w:top w:val=\"nil\"/>" +
          left + "<w:bottom w:val=\"single\" w:sz=\"8\" " + black + right +
          "</w:tcBorders><w:textDirection w:val=\"tbRl\"/></w:tcPr>\n");
  EXPECT_THAT(Values(*All(body, "w:tbl")[1], "w:tcW", "w:w"), ElementsAre("4000", "2000", "2000"));
  EXPECT_THAT(Values(body, "w:gridSpan", "w:val"), ElementsAre("2"));
  // A paragraph before the table that begins the page is a point high, its border above another.
  EXPECT_EQ(Shown(*All(body, "w:spacing")[0]),
            "<w:spacing w:before=\"0\" w:after=\"0\" w:line=\"20\" w:lineRule=\"exact\"/>");
  std::vector<std::string> before;
  for (const XmlNode& child : body.children[0].children) {
    if (child.name == "w:p" && TextWithin(child) == "After it") {
      before = Values(child, "w:spacing", "w:before");
    }
  }
  EXPECT_THAT(before, ElementsAre("976"));
}

constexpr std::string_view kAnchor =
    "<wp:anchor distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\" simplePos=\"0\" ";
constexpr std::string_view kAnchored =
    "locked=\"0\" layoutInCell=\"1\" allowOverlap=\"1\">"
    "<wp:simplePos x=\"0\" y=\"0\"/>";

std::string Placed(const std::string& x, const std::string& y, const std::string& cx,
                   const std::string& cy) {
  return "<wp:positionH relativeFrom=\"page\"><wp:posOffset>" + x +
         "</wp:posOffset></wp:positionH><wp:positionV relativeFrom=\"page\"><wp:posOffset>" + y +
         "</wp:posOffset></wp:positionV><wp:extent cx=\"" + cx + "\" cy=\"" + cy +
         "\"/><wp:effectExtent l=\"0\" t=\"0\" r=\"0\" b=\"0\"/><wp:wrapNone/>";
}

TEST(WordMarkup, AnchorsShapesAtTheirPlaces) {
  OfficePage page = PageWithPath(
      {PathShape::Kind::kRectangle, {100, 150, 300, 250}, Rgb{255, 0, 0}, Rgb{0, 0, 255}, 2});
  page.layout.background = Rgb{1, 2, 3};
  const XmlNode body = BodyOf(page);
  const std::vector<const XmlNode*> shapes = All(body, "w:drawing");
  ASSERT_EQ(shapes.size(), 2u);
  const auto shape = [](int number, const std::string& place, const std::string& cx,
                        const std::string& cy, const std::string& paint) {
    const std::string id = std::to_string(number);
    return "<w:drawing>" + std::string(kAnchor) + "relativeHeight=\"" + id + "\" behindDoc=\"1\" " +
           std::string(kAnchored) + place + "<wp:docPr id=\"" + id + "\" name=\"Object " + id +
           "\"/><wp:cNvGraphicFramePr/><a:graphic><a:graphicData "
           "uri=\"http://schemas.microsoft.com/office/word/2010/wordprocessingShape\"><wps:wsp>"
           "<wps:cNvSpPr/><wps:spPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"" +
           cx + "\" cy=\"" + cy + "\"/></a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom>" +
           paint +
           "</wps:spPr><wps:bodyPr/></wps:wsp></a:graphicData></a:graphic></wp:anchor>"
           "</w:drawing>";
  };
  EXPECT_EQ(Shown(*shapes[0]),
            shape(1, Placed("0", "0", "7556500", "10693400"), "7556500", "10693400",
                  "<a:solidFill><a:srgbClr val=\"010203\"/></a:solidFill>"
                  "<a:ln><a:noFill/></a:ln>"));
  EXPECT_EQ(Shown(*shapes[1]),
            shape(2, Placed("1270000", "1905000", "2540000", "1270000"), "2540000", "1270000",
                  "<a:solidFill><a:srgbClr val=\"FF0000\"/></a:solidFill><a:ln w=\"25400\">"
                  "<a:solidFill><a:srgbClr val=\"0000FF\"/></a:solidFill></a:ln>"));
}

std::string ShownPicture(int number, const std::string& side) {
  return "<wp:cNvGraphicFramePr/><a:graphic><a:graphicData "
         "uri=\"http://schemas.openxmlformats.org/drawingml/2006/picture\"><pic:pic>"
         "<pic:nvPicPr><pic:cNvPr id=\"" +
         std::to_string(number) +
         "\" name=\"Picture\"/><pic:cNvPicPr/></pic:nvPicPr><pic:blipFill>"
         "<a:blip r:embed=\"rId1\"/><a:stretch><a:fillRect/></a:stretch></pic:blipFill>"
         "<pic:spPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"" +
         side + "\" cy=\"" + side +
         "\"/></a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></pic:spPr></pic:pic>"
         "</a:graphicData></a:graphic>";
}

TEST(WordMarkup, WritesPicturesInTheFlowAndBehindIt) {
  Picture picture;
  picture.box = {172, 100, 272, 200};
  picture.description = "a <picture>";
  OfficePage page = PageWith({Block{picture}, Block{LineBetween(72, 300, 250, "Below")}});
  page.model.links = {{{170, 100, 272, 180}, "http://example.org/"}};  // covers most of it
  Floating behind;
  behind.box = {0, 0, 10, 10};
  behind.is_behind = true;
  Picture small;
  small.box = behind.box;
  behind.blocks = {Block{small}};
  page.layout.floats = {behind};
  const Parts parts = PartsOf(WordBytesOf(DocumentOf({page})));
  EXPECT_EQ(PackageComplaints(parts), "");
  const XmlNode body = ParsedXml(parts.at("word/document.xml"));
  ASSERT_EQ(All(body, "w:drawing").size(), 2u);
  EXPECT_EQ(Shown(*All(body, "w:drawing")[0]),
            "<w:drawing>" + std::string(kAnchor) + "relativeHeight=\"1\" behindDoc=\"1\" " +
                std::string(kAnchored) + Placed("0", "0", "127000", "127000") +
                "<wp:docPr id=\"1\" name=\"Object 1\"/>" + ShownPicture(1, "127000") +
                "</wp:anchor></w:drawing>");
  const XmlNode* link = All(body, "w:hyperlink").at(0);
  EXPECT_EQ(Shown(link->children[0]),
            "<w:r><w:rPr><w:sz w:val=\"2\"/></w:rPr><w:drawing>"
            "<wp:inline distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\">"
            "<wp:extent cx=\"1270000\" cy=\"1270000\"/>"
            "<wp:docPr id=\"2\" name=\"Object 2\" descr=\"a <picture>\"/>" +
                ShownPicture(2, "1270000") + "</wp:inline></w:drawing></w:r>");
  // A line as high as the picture, and what is below begins where it did: a quarter of a point is
  // the line's own.
  EXPECT_EQ(PropertiesOf(body, "w:spacing"),
            "<w:spacing w:before=\"0\" w:after=\"0\" w:line=\"240\" w:lineRule=\"auto\"/>\n"
            "<w:spacing w:before=\"811\" w:after=\"0\" w:line=\"230\" w:lineRule=\"exact\"/>\n");
  EXPECT_EQ(Shown(*All(body, "w:ind")[0]), "<w:ind w:left=\"2000\" w:right=\"0\"/>");
  EXPECT_EQ(parts.at("word/media/image1.png"), "picture of 0");
}

TEST(WordMarkup, PutsFloatingTextIntoBoxes) {
  OfficePage page = FacelessPage({Block{LineBetween(72, 200, 100, "Text")}});
  Floating upright;
  upright.box = {300, 190, 400, 202};
  upright.blocks = {Block{LineBetween(300, 400, 200, "upright")}};
  Floating turned;
  turned.box = {400, 500, 420, 600};
  turned.blocks = {Block{LineBetween(360, 460, 555, "turned")}};
  for (const double angle : {90.0, 270.0, 45.0}) {
    turned.angle = angle;
    page.layout.floats.push_back(turned);
  }
  page.layout.floats.insert(page.layout.floats.begin(), upright);
  const XmlNode body = BodyOf(page);
  EXPECT_THAT(Values(body, "wps:cNvSpPr", "txBox"), ElementsAre("1", "1", "1", "1"));
  EXPECT_EQ(ShownAll(body, "wps:bodyPr"),
            "<wps:bodyPr vert=\"horz\" wrap=\"square\" lIns=\"0\" tIns=\"0\" rIns=\"0\" bIns=\"0\" "
            "anchor=\"t\"/>\n"
            "<wps:bodyPr vert=\"vert\" wrap=\"square\" lIns=\"0\" tIns=\"0\" rIns=\"0\" bIns=\"0\" "
            "anchor=\"t\"/>\n"
            "<wps:bodyPr vert=\"vert270\" wrap=\"square\" lIns=\"0\" tIns=\"0\" rIns=\"0\" "
            "bIns=\"0\" anchor=\"t\"/>\n"
            "<wps:bodyPr vert=\"horz\" wrap=\"square\" lIns=\"0\" tIns=\"0\" rIns=\"0\" bIns=\"0\" "
            "anchor=\"t\"/>\n");
  EXPECT_THAT(Values(body, "a:xfrm", "rot"), ElementsAre("-", "-", "-", "2700000"));
  std::vector<std::string> places;
  for (const XmlNode* offset : All(body, "wp:posOffset")) {
    places.push_back(offset->text);
  }
  // Three points of room on the right and below; lines that run down need a narrow and high box,
  // around the middle of the text.
  EXPECT_THAT(places, ElementsAre("3810000", "2423160", "5135880", "6350000", "5135880", "6350000",
                                  "4572000", "6913880"));
  EXPECT_THAT(Values(body, "wp:extent", "cx"),
              ElementsAre("1308100", "180340", "180340", "1308100"));
  EXPECT_THAT(Values(body, "wp:extent", "cy"),
              ElementsAre("180340", "1308100", "1308100", "180340"));
  EXPECT_THAT(Values(body, "wp:anchor", "behindDoc"), ElementsAre("0", "0", "0", "0"));
  EXPECT_EQ(TextWithin(*All(body, "w:txbxContent")[0]), "upright");
}

TEST(WordMarkup, CountsPagesAsTheyAreNumbered) {
  const OfficeDocument book = RichDocuments().at("a book");
  const XmlNode body = PartOf(book, "word/document.xml");
  EXPECT_EQ(ShownAll(body, "w:pgNumType"),
            "<w:pgNumType w:fmt=\"lowerRoman\" w:start=\"1\"/>\n"
            "<w:pgNumType w:fmt=\"decimal\" w:start=\"1\"/>\n");
  EXPECT_THAT(Values(body, "w:headerReference", "w:type"),
              ElementsAre("default", "even", "default", "even"));
  EXPECT_THAT(Values(body, "w:footerReference", "w:type"),
              ElementsAre("default", "even", "default", "even"));
  // From the page's edge to the text: 30.8 points above, 29.7 below.
  EXPECT_THAT(Values(body, "w:pgMar", "w:header"), ElementsAre("616", "616"));
  EXPECT_THAT(Values(body, "w:pgMar", "w:footer"), ElementsAre("594", "594"));
  EXPECT_EQ(Shown(PartOf(book, "word/settings.xml").children[1]), "<w:evenAndOddHeaders/>");
  const Parts parts = PartsOf(WordBytesOf(book));
  std::set<std::string> texts;
  for (const auto& [name, part] : parts) {
    if (name.starts_with("word/header")) {
      const XmlNode header = ParsedXml(part);
      texts.insert(All(header, "w:t").front()->text);
    }
    if (name.starts_with("word/footer")) {
      EXPECT_EQ(Values(ParsedXml(part), "w:fldSimple", "w:instr"),
                std::vector<std::string>{" PAGE "});
    }
  }
  EXPECT_THAT(texts, ElementsAre("Left", "Preface", "Right", "Title"));
}

TEST(WordMarkup, SaysWhatTheDocumentSaysOfItself) {
  const OfficeDocument book = RichDocuments().at("a book");
  const XmlNode facts = PartOf(book, "docProps/core.xml");
  EXPECT_EQ(ShownAll(facts, "dc:title") + ShownAll(facts, "dc:subject") +
                ShownAll(facts, "dc:creator") + ShownAll(facts, "cp:keywords") +
                ShownAll(facts, "dc:language"),
            "<dc:title>A <title> & \"more\"</dc:title>\n<dc:subject>Something</dc:subject>\n"
            "<dc:creator>Someone</dc:creator>\n<cp:keywords>one, two</cp:keywords>\n"
            "<dc:language>de-CH</dc:language>\n");
  EXPECT_EQ(ShownAll(PartOf(book, "word/styles.xml"), "w:lang"),
            "<w:lang w:val=\"de-CH\" w:eastAsia=\"de-CH\" w:bidi=\"de-CH\"/>\n");
  EXPECT_TRUE(PartOf(DocumentOf({PageWith({})}), "docProps/core.xml").children.empty());
}

TEST(WordMarkup, CountsNotes) {
  const Parts parts = PartsOf(WordBytesOf(RichDocuments().at("notes")));
  const XmlNode body = ParsedXml(parts.at("word/document.xml"));
  const XmlNode notes = ParsedXml(parts.at("word/footnotes.xml"));
  EXPECT_THAT(Values(notes, "w:footnote", "w:type")[0], "separator");
  EXPECT_THAT(Values(notes, "w:footnote", "w:type")[1], "continuationSeparator");
  EXPECT_THAT(Values(notes, "w:footnote", "w:id")[0], "-1");
  EXPECT_THAT(Values(notes, "w:footnote", "w:id")[1], "0");
  // The first is "1", and counted; "*" is not.
  EXPECT_EQ(Shown(*All(body, "w:footnoteReference")[0]), "<w:footnoteReference w:id=\"1\"/>");
  EXPECT_EQ(Shown(*All(body, "w:footnoteReference")[1]),
            "<w:footnoteReference w:id=\"2\" w:customMarkFollows=\"1\"/>");
  const std::vector<const XmlNode*> written = All(notes, "w:footnote");
  EXPECT_EQ(All(*written[2], "w:footnoteRef").size(), 1u);
  EXPECT_EQ(TextWithin(*written[2]), " A note");
  EXPECT_THAT(Values(*written[2], "w:vertAlign", "w:val"), ElementsAre("superscript"));
}

TEST(WordMarkup, HasTheMarginsThatMostTextKeeps) {
  // One of twelve stands out on each side.
  std::vector<Block> blocks = {Block{LineBetween(300, 540, 100, "to the right")},
                               Block{LineBetween(20, 100, 120, "to the left")}};
  for (int i = 0; i < 10; ++i) {
    blocks.push_back(Block{LineBetween(72, 400, 140 + 20 * i, "Text")});
  }
  const XmlNode body = BodyOf(FacelessPage(blocks));
  EXPECT_EQ(Values(body, "w:pgMar", "w:left").at(0), "1440");
  EXPECT_EQ(Values(body, "w:pgMar", "w:right").at(0), "3900");
  // What stands further out has an indent that is less than none.
  EXPECT_EQ(Values(body, "w:ind", "w:left").at(1), "-1040");
}

TEST(WordMarkup, TellsLeftPagesFromRightOnesWhereMostAlternate) {
  const auto has_even_pages = [](const std::string& headers) {
    std::vector<OfficePage> pages;
    for (const char header : headers) {
      OfficePage page = FacelessPage({Block{LineBetween(72, 400, 200, "Text")}});
      page.layout.header = {Block{LineBetween(72, 200, 40, std::string(1, header))}};
      pages.push_back(page);
    }
    const XmlNode settings = PartOf(DocumentOf(pages), "word/settings.xml");
    return !All(settings, "w:evenAndOddHeaders").empty();
  };
  EXPECT_TRUE(has_even_pages("LRLRLRXX"));   // three of five
  EXPECT_FALSE(has_even_pages("LRLRLXXX"));  // two
  EXPECT_TRUE(has_even_pages("LRLR"));
  EXPECT_FALSE(has_even_pages("LRL"));
  EXPECT_FALSE(has_even_pages("XXXXXXXX"));
}

}  // namespace
}  // namespace TarnixTools::engines::office
