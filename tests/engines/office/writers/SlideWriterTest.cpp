#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/OfficeSchema.h"
#include "engines/office/writers/schema/PackageCheck.h"
#include "engines/office/writers/schema/XmlNode.h"
#include "engines/office/writers/slides/SlideWriter.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

OfficePage PageOfShapes() {
  Drawing line;
  line.box = {72, 255, 300, 255};
  line.paths = {0};
  line.is_simple = true;
  Paragraph linked = TextAt(72, 120, {"To the next page"});
  linked.lines[0].pieces[0].link = 0;
  OfficePage page =
      PageWith({Block{TextAt(72, 100, {"First"})}, Block{linked}, Block{line},
                Block{TableAt(72, 260, {"a", "b", "c", "d"})}, Block{TextAt(72, 330, {"Last"})}});
  page.model.paths = {{PathShape::Kind::kLine, line.box, std::nullopt, Rgb{255, 0, 0}, 1, 0}};
  page.layout.links = {{"", "", 1, 0}};
  page.layout.background = Rgb{0, 0, 128};
  return page;
}

TEST(SlideWriter, WritesASoundPackage) {
  Picture picture;
  picture.box = {72, 150, 172, 250};
  const OfficeDocument document =
      DocumentOf({PageOfShapes(), PageOfShapes(), PageWith({Block{picture}})});
  EXPECT_EQ(PackageComplaints(PartsOf(SlideBytesOf(document))), "");
}

TEST(SlideWriter, WritesASlideForEachPage) {
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({PageOfShapes(), PageWith({})})));
  EXPECT_TRUE(parts.contains("ppt/slides/slide2.xml"));
  EXPECT_FALSE(parts.contains("ppt/slides/slide3.xml"));
  EXPECT_THAT(parts.at("ppt/presentation.xml"), HasSubstr("cx=\"7556500\" cy=\"10693400\""));
}

TEST(SlideWriter, PutsParagraphsThatFollowEachOtherIntoOneShape) {
  const Parts parts = PartsOf(SlideBytesOf(
      DocumentOf({PageWith({Block{TextAt(72, 100, {"One"})}, Block{TextAt(72, 130, {"Two"})}})})));
  const std::string& slide = parts.at("ppt/slides/slide1.xml");
  EXPECT_EQ(slide.find("<p:txBody>"), slide.rfind("<p:txBody>"));
  EXPECT_THAT(slide, HasSubstr("Two"));
}

TEST(SlideWriter, ShowsLargeInitialsApartFromTheirLines) {
  Paragraph paragraph = TextAt(72, 100, {"he first", "the second", "the third"});
  paragraph.lines[0].inset = paragraph.lines[1].inset = 20;
  paragraph.initial = Initial{TextAt(72, 112, {"T"}).lines[0], 2};
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({PageWith({Block{paragraph}})})));
  const std::string& slide = parts.at("ppt/slides/slide1.xml");
  EXPECT_LT(slide.find("<a:t>T</a:t>"), slide.find("he first"));
  EXPECT_LT(slide.find("the second"), slide.find("the third"));
  EXPECT_NE(slide.find("<a:t>T</a:t>"), std::string::npos);
}

TEST(SlideWriter, WritesVerticalWritingInShapesThatAreNotTurned) {
  Floating floating;
  floating.blocks = {Block{TextAt(100, 200, {"縦書きの文字"})}};
  floating.box = BoxOf(floating.blocks[0]);
  floating.angle = 90;
  floating.is_vertical = true;
  OfficePage page = PageWith({});
  page.layout.floats = {floating};
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({page})));
  const std::string& slide = parts.at("ppt/slides/slide1.xml");
  EXPECT_THAT(slide, HasSubstr("vert=\"eaVert\""));
  EXPECT_THAT(slide, Not(HasSubstr("rot=")));
  EXPECT_EQ(SchemaComplaints(slide), "");
}

TEST(SlideWriter, LinksToSlides) {
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({PageOfShapes(), PageOfShapes()})));
  EXPECT_THAT(parts.at("ppt/slides/slide1.xml"), HasSubstr("ppaction://hlinksldjump"));
  EXPECT_THAT(parts.at("ppt/slides/_rels/slide1.xml.rels"), HasSubstr("slide2.xml"));
}

TEST(SlideWriter, PutsWhatAllPagesShowOnTheMaster) {
  const Parts parts =
      PartsOf(SlideBytesOf(DocumentOf({PageOfShapes(), PageOfShapes(), PageOfShapes()})));
  EXPECT_THAT(parts.at("ppt/slideMasters/slideMaster1.xml"), HasSubstr("prst=\"line\""));
  EXPECT_THAT(parts.at("ppt/slideMasters/slideMaster1.xml"), HasSubstr("000080"));
  EXPECT_THAT(parts.at("ppt/slides/slide2.xml"), Not(HasSubstr("prst=\"line\"")));
}

TEST(SlideWriter, StaysWithinWhatPowerPointOpens) {
  OfficePage page = PageWithPath(
      {PathShape::Kind::kLine, {72, 200, 300, 200}, std::nullopt, Rgb{0, 0, 255}, 5000});
  Table table = TableAt(72, 300, {"", "b", "c", "d"});
  table.columns = {72, 60'000, 60'100};
  table.cells[0].blocks = {Block{TextAt(9000, 314, {"Far"})}};
  page.layout.bands[0].columns[0].blocks.push_back(Block{table});
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({page})));
  const std::string& slide = parts.at("ppt/slides/slide1.xml");
  EXPECT_THAT(slide, HasSubstr("<a:ln w=\"20116800\">"));
  EXPECT_THAT(slide, HasSubstr("marL=\"51206400\""));
}

// Readers make rows higher for text that is turned within a cell.
TEST(SlideWriter, LaysTurnedTextOverItsCell) {
  Table table = TableAt(72, 300, {"up", "down", "c", "d"});
  table.cells[0].angle = 270;
  table.cells[1].angle = 90;
  const Parts parts = PartsOf(SlideBytesOf(DocumentOf({PageWith({Block{table}})})));
  const std::string& slide = parts.at("ppt/slides/slide1.xml");
  const std::string cells = slide.substr(slide.find("<a:tbl>"), slide.find("</a:tbl>"));
  EXPECT_EQ(cells.substr(0, cells.find("</a:tbl>")).find("<a:t>up"), std::string::npos);
  EXPECT_THAT(slide, HasSubstr("rot=\"16200000\""));
  EXPECT_THAT(slide, HasSubstr("rot=\"5400000\""));
  EXPECT_THAT(slide, HasSubstr("<a:t>up"));
  EXPECT_THAT(slide, HasSubstr("<a:t>down"));
  EXPECT_EQ(SchemaComplaints(slide), "");
}

TEST(SlideWriter, StopsBeforeTextWhenCancelled) {
  const OfficeDocument document = DocumentOf({PageWith({Block{TextAt(72, 100, {"Text"})}})});
  EXPECT_THROW(SlideBytesOf(document, true), Cancelled);
}

TEST(SlideWriter, WritesTheSameBytesForTheSameDocument) {
  EXPECT_EQ(SlideBytesOf(DocumentOf({PageOfShapes()})), SlideBytesOf(DocumentOf({PageOfShapes()})));
}

TEST(SlideWriter, FillsRulesThatArePaintedAsAreas) {
  const PathShape rule{PathShape::Kind::kLine, {72, 255, 300, 256}, Rgb{0, 0, 255}, std::nullopt};
  const std::string xml =
      PartsOf(SlideBytesOf(DocumentOf({PageWithPath(rule)}))).at("ppt/slides/slide1.xml");
  EXPECT_THAT(xml, HasSubstr("prst=\"rect\""));
  EXPECT_THAT(xml, HasSubstr("0000FF"));
}

TEST(SlideWriter, DrawsSlantedLinesTheWayTheyLead) {
  PathShape line{PathShape::Kind::kLine, {72, 200, 300, 256}, std::nullopt, Rgb{0, 0, 255}, 1};
  for (const bool rises : {false, true}) {
    line.rises = rises;
    const std::string xml =
        PartsOf(SlideBytesOf(DocumentOf({PageWithPath(line)}))).at("ppt/slides/slide1.xml");
    EXPECT_THAT(xml, HasSubstr("prst=\"line\""));
    EXPECT_EQ(xml.find("flipV=\"1\"") != std::string::npos, rises);
  }
}

std::string SlideOf(const OfficePage& page) {
  return PartsOf(SlideBytesOf(DocumentOf({page}))).at("ppt/slides/slide1.xml");
}

TEST(SlideWriter, KeepsHiddenTextFromBeingWhollyTransparent) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Recognised"})}});
  page.layout.looks[0].is_hidden = true;
  EXPECT_THAT(SlideOf(page), HasSubstr("<a:alpha val=\"1000\"/>"));
}

// Two hundred points from the text to the number; a dot is a quarter of ten points wide.
TEST(SlideWriter, LeadsEntriesOfContentsByDots) {
  Paragraph entry = TextAt(72, 100, {"Scope"});
  entry.role = ParagraphRole::kContents;
  entry.lines[0].pieces[0].link = 0;
  const TextPiece text = entry.lines[0].pieces[0];
  TextPiece tab = text;
  tab.kind = PieceKind::kTab;
  tab.text = "\t";
  TextPiece number = text;
  number.text = "12";
  number.x = text.x + text.width + 200;
  number.width = 10;
  entry.lines[0].pieces = {text, tab, number};
  entry.lines[0].box.right = entry.box.right = number.x + number.width;
  OfficePage page = PageWith({Block{entry}});
  page.layout.links = {{"http://example.com/", "", -1, 0}};
  const std::string slide = SlideOf(page);
  const std::size_t dots = slide.find("<a:t>" + std::string(79, '.'));
  ASSERT_NE(dots, std::string::npos);
  const std::size_t run = slide.rfind("<a:r>", dots);
  EXPECT_THAT(slide.substr(run, dots - run), Not(HasSubstr("hlinkClick")));
}

TEST(SlideWriter, LeavesTheEndsOfLinesOutOfLinks) {
  Paragraph linked = TextAt(72, 100, {"A link over", "two lines"});
  linked.lines[0].pieces[0].link = linked.lines[1].pieces[0].link = 0;
  OfficePage page = PageWith({Block{linked}});
  page.layout.links = {{"http://example.com/", "", -1, 0}};
  page.layout.bands[0].columns[0].box.right = 72 + 60;  // no room for a third word
  const std::string slide = SlideOf(page);
  EXPECT_THAT(slide, HasSubstr("<a:t>A link over</a:t>"));
  EXPECT_THAT(slide, HasSubstr("<a:t>two lines</a:t>"));
}

TEST(SlideWriter, EndsLinesThatWouldTakeAWordOfTheNext) {
  const OfficePage page =
      PageWith({Block{TextAt(72, 100, {"Short", "A much longer second line"})}});
  EXPECT_THAT(SlideOf(page), HasSubstr("<a:br/>"));
}

TEST(SlideWriter, MakesJoinedLettersSmallerInsteadOfTearingThemApart) {
  Paragraph arabic = TextAt(200, 100, {"العربية"});
  arabic.is_right_to_left = true;
  arabic.alignment = Alignment::kRight;
  TextPiece& piece = arabic.lines[0].pieces[0];
  if (piece.width <= 0) {
    GTEST_SKIP() << "no installed face has these letters";
  }
  const double given = piece.width * 0.8;
  piece.x += piece.width - given;
  piece.width = given;
  const std::string slide = SlideOf(PageWith({Block{arabic}}));
  EXPECT_THAT(slide, HasSubstr("sz=\"800\""));
  EXPECT_THAT(slide, Not(HasSubstr("spc=")));
  EXPECT_THAT(slide, HasSubstr("marL=\"0\" marR=\"0\" indent=\"0\" algn=\"r\" rtl=\"1\""));
}

// The middle of the shape with the text, in points.
std::pair<double, double> MiddleOf(const std::string& slide, const std::string& text) {
  const std::size_t form = slide.rfind("<a:off ", slide.find("<a:t>" + text));
  const auto points = [&](const std::string& name) {
    return std::stod(slide.substr(slide.find(name, form) + name.size())) / 12700;
  };
  return {points(" x=\"") + points(" cx=\"") / 2, points(" y=\"") + points(" cy=\"") / 2};
}

TEST(SlideWriter, TurnsTextAsAWhole) {
  // Two paragraphs beside each other, each in a shape of its own: from 200 to 320 and from 300 to
  // about 320. Turned by a quarter, one is below the other.
  Floating floating;
  floating.angle = 90;
  floating.blocks = {Block{TextAt(200, 300, {"One"})}, Block{TextAt(300, 300, {"Two"})}};
  floating.box = {200, 290, 320, 302};
  OfficePage page = PageWith({});
  page.layout.floats = {floating};
  const std::string slide = SlideOf(page);
  const auto [one_x, one_y] = MiddleOf(slide, "One");
  const auto [two_x, two_y] = MiddleOf(slide, "Two");
  EXPECT_THAT(slide, HasSubstr("rot=\"5400000\""));
  EXPECT_NEAR(two_x, one_x, 0.1);
  EXPECT_NEAR(two_y - one_y, 50, 2);
}

TEST(SlideWriter, MakesRoomForTextThatRunsOverItsCell) {
  Table table = TableAt(72, 300, {"Text that runs over the edge of its cell", "", "c", "d"});
  for (TableCell& cell : table.cells) {
    cell.borders.fill({});
  }
  table.cells[1].blocks.clear();
  const std::string slide = SlideOf(PageWith({Block{table}}));
  EXPECT_THAT(slide, HasSubstr("gridSpan=\"2\""));
  EXPECT_EQ(SchemaComplaints(slide), "");
}

TEST(SlideWriter, ShowsImagesOverFilledCells) {
  Table table = TableAt(72, 300, {"a", "b", "c", "d"});
  table.cells[0].fill = table.cells[3].fill = Rgb{255, 240, 224};
  Picture picture;
  picture.box = {80, 300, 172, 320};
  const std::string slide = SlideOf(PageWith({Block{picture}, Block{table}}));
  const std::size_t fill = slide.find("FFF0E0");
  EXPECT_NE(fill, std::string::npos);
  EXPECT_EQ(fill, slide.rfind("FFF0E0"));
  EXPECT_GT(fill, slide.find("<a:t>d</a:t>"));
}

TEST(SlideWriter, PutsPicturesOfAllPagesOnTheMaster) {
  // How many pictures the master and the second of three slides have.
  const auto pictures = [](std::uint32_t number, double shift) {
    std::vector<OfficePage> pages;
    for (int i = 0; i < 3; ++i) {
      Picture logo;
      logo.box = {500 + shift * i, 20, 540 + shift * i, 40};
      logo.images = {0};
      OfficePage page = PageWith({Block{logo}});
      page.model.images = {{number, {}, logo.box, 0}};
      pages.push_back(page);
    }
    const Parts parts = PartsOf(SlideBytesOf(DocumentOf(pages)));
    const auto count = [&parts](const std::string& name) {
      return Values(ParsedXml(parts.at(name)), "p:pic", "id").size();
    };
    return std::pair(count("ppt/slideMasters/slideMaster1.xml"), count("ppt/slides/slide2.xml"));
  };
  EXPECT_EQ(pictures(5, 0), std::pair(std::size_t{1}, std::size_t{0}));
  EXPECT_EQ(pictures(0, 0), std::pair(std::size_t{0}, std::size_t{1}));  // inline: each is its own
  EXPECT_EQ(pictures(5, 2), std::pair(std::size_t{0}, std::size_t{1}));  // at other places
}

}  // namespace
}  // namespace TarnixTools::engines::office
