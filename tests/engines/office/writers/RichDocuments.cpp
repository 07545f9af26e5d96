#include "engines/office/writers/RichDocuments.h"

#include <utility>
#include <vector>

#include "engines/office/writers/WriterDocuments.h"

namespace TarnixTools::engines::office {

namespace {

std::vector<TextLook> LooksOfAllKinds() {
  const auto face =
      std::make_shared<const Typeface>(Typeface{"Liberation Sans", true, true, false, false});
  const auto fixed =
      std::make_shared<const Typeface>(Typeface{"Liberation Mono", false, false, false, true});
  std::vector<TextLook> looks(10, PageWith({}).layout.looks[0]);
  looks[1].face = face;
  looks[1].color = Rgb{0x12, 0xAB, 0xFF};
  looks[2].face = fixed;
  looks[2].is_underlined = looks[2].is_struck = true;
  looks[3].highlight = Rgb{255, 255, 0};
  looks[4].raise = Raise::kSuperscript;
  looks[5].raise = Raise::kSubscript;
  looks[6].is_hidden = true;
  looks[7].face = nullptr;
  looks[8].size = 0;
  looks[9].size = 300;
  return looks;
}

Paragraph TextOfAllLooks() {
  Paragraph paragraph = TextAt(72, 100, {"0 ", "1 ", "2 ", "3 ", "4 ", "5 ", "6 ", "7 ", "8 "});
  for (std::uint32_t i = 0; i < paragraph.lines.size(); ++i) {
    paragraph.lines[i].pieces[0].look = i;
  }
  paragraph.lines[2].joint = LineJoint::kNothing;
  paragraph.lines[3].joint = LineJoint::kBreak;
  return paragraph;
}

Paragraph LineWithTabs(double baseline, ParagraphRole role) {
  Paragraph paragraph = TextAt(72, baseline, {"before"});
  paragraph.role = role;
  TextPiece tab;
  tab.kind = PieceKind::kTab;
  TextPiece number = paragraph.lines[0].pieces[0];
  number.text = "12";
  number.x = 300;
  paragraph.lines[0].pieces.push_back(tab);
  paragraph.lines[0].pieces.push_back(number);
  return paragraph;
}

std::vector<Block> Lists() {
  std::vector<Block> blocks;
  const std::vector<std::pair<ListKind, std::string>> labels = {
      {ListKind::kBullet, "•"},       {ListKind::kBullet, "\uF0A7"},  {ListKind::kDecimal, "(1)"},
      {ListKind::kLowerLetter, "a)"}, {ListKind::kUpperLetter, "B."}, {ListKind::kLowerRoman, "iv"},
      {ListKind::kUpperRoman, "X."},  {ListKind::kDecimal, "100 %"},  {ListKind::kBullet, ""}};
  for (std::uint32_t i = 0; i < labels.size(); ++i) {
    Paragraph item = TextAt(100 + 5 * i, 500 + 14 * i, {"An item"});
    item.role = i % 2 == 0 ? ParagraphRole::kListItem : ParagraphRole::kBody;
    item.level = static_cast<std::uint8_t>(2 * i);
    item.is_right_to_left = i == 4;
    item.label = ListLabel{
        labels[i].first, labels[i].second, 7 - static_cast<std::int32_t>(i), i, 80, i / 2};
    blocks.push_back(Block{item});
  }
  return blocks;
}

OfficePage PageOfLinks(const std::string& bookmark) {
  Paragraph linked = TextAt(72, 100, {"out", "there", "nowhere", "beyond"});
  for (std::int32_t i = 0; i < 4; ++i) {
    linked.lines[static_cast<std::size_t>(i)].pieces[0].link = i + (i == 3 ? 4 : 0);
  }
  linked.bookmark = bookmark;
  Picture picture;
  picture.box = {72, 200, 172, 300};
  picture.description = "a \"quoted\" <picture>\n";
  OfficePage page = PageWith({Block{linked}, Block{picture}});
  page.layout.links = {{"http://example.org/a b?c=d&e=\"", "", -1, 0}, {"", bookmark, 0, 0}, {}};
  page.model.links = {{{60, 190, 180, 310}, "mailto:someone@example.org"}};
  return page;
}

OfficePage PageOfNotes() {
  Paragraph paragraph = TextAt(72, 100, {"Text", "1", "and", "*", "and", "7"});
  for (const std::size_t i : {1u, 3u, 5u}) {
    paragraph.lines[i].pieces[0].kind = PieceKind::kNoteMark;
    paragraph.lines[i].pieces[0].number = static_cast<std::uint32_t>(i / 2);
  }
  paragraph.lines[5].pieces[0].number = 9;  // there is no such note
  Paragraph beside = TextAt(300, 105, {"1"});
  beside.lines[0].pieces[0].kind = PieceKind::kNoteMark;
  Table table = TableAt(250, 110, {"1", "b", "c", "d"});
  std::get<Paragraph>(table.cells[0].blocks[0].content).lines[0].pieces[0].kind =
      PieceKind::kNoteMark;
  Floating floating;
  floating.box = {400, 300, 420, 320};
  floating.blocks = {Block{beside}};
  OfficePage page = PageWith({Block{paragraph}, Block{beside}, Block{table}});
  page.layout.floats = {floating};
  page.layout.notes = {{"1", {Block{TextAt(72, 700, {"A note"})}}},
                       {"*", {Block{TableAt(72, 715, {"a", "b", "c", "d"})}}},
                       {"", {}},
                       {"4", {Block{TextAt(72, 790, {"A stray one"})}}}};
  return page;
}

OfficePage PageOfTables() {
  Table table = TableAt(72, 100, {"wide", "", "c", ""});
  table.cells[0].column_span = 2;
  table.cells.erase(table.cells.begin() + 1);
  table.cells[0].fill = Rgb{200, 220, 240};
  table.cells[0].borders[1] = {};
  table.cells[2].borders.fill({40, Rgb{1, 2, 3}});
  table.cells[1].blocks.push_back(Block{TableAt(76, 125, {"within", "", "", "it"})});
  Table high = TableAt(72, 300, {"high", "b", "d", ""});
  high.cells[0].row_span = 2;
  high.cells[2] = high.cells[3];
  high.cells.pop_back();
  high.cells[1].angle = 90;
  high.cells[2].angle = 270;
  Table square = TableAt(72, 400, {"all", "", "", ""});
  square.cells[0].row_span = square.cells[0].column_span = 2;
  square.cells.resize(1);
  square.header_rows = 0;
  Table open = TableAt(72, 500, {"a", "b", "c", "d"});
  open.cells.erase(open.cells.begin() + 2);  // a place that no cell has
  Picture picture;
  picture.box = {80, 505, 100, 515};
  Drawing rule;
  rule.box = {80, 505, 100, 505};
  rule.is_simple = true;
  rule.paths = {0};
  open.cells[0].blocks = {Block{picture}, Block{rule}};
  OfficePage page =
      PageWith({Block{table}, Block{high}, Block{square}, Block{open}, Block{Table()}});
  page.model.paths = {{PathShape::Kind::kLine, rule.box, std::nullopt, Rgb{255, 0, 0}, 1, 0}};
  return page;
}

OfficePage PageOfImages() {
  Picture picture;
  picture.images = {0, 8};
  picture.box = {72, 100, 172, 200};
  picture.description = "a picture";
  Drawing shapes;
  shapes.box = {72, 220, 300, 300};
  shapes.paths = {0, 1, 2, 3, 9};
  shapes.is_simple = true;
  Drawing chart;
  chart.box = {72, 320, 300, 400};
  chart.description = "a chart";
  Picture flat;
  flat.box = {72, 420, 72, 420};
  OfficePage page = PageWith({Block{picture}, Block{shapes}, Block{chart}, Block{flat},
                              Block{TextAt(80, 350, {"over the chart"})}});
  page.model.images = {{5, {}, picture.box, 0}};
  page.model.paths = {
      {PathShape::Kind::kRectangle, {72, 220, 100, 240}, Rgb{1, 2, 3}, Rgb{4, 5, 6}, 0.01},
      {PathShape::Kind::kLine, {72, 250, 100, 270}, std::nullopt, Rgb{4, 5, 6}, 2, 0, true},
      {PathShape::Kind::kLine, {72, 280, 300, 280}, Rgb{4, 5, 6}, std::nullopt},
      {PathShape::Kind::kRectangle, {72, 290, 100, 300}, std::nullopt, Rgb{4, 5, 6}, 9000}};
  page.layout.background = Rgb{250, 250, 240};
  for (const double angle : {0.0, 45.0, 90.0, 270.0, -90.0}) {
    Floating floating;
    floating.angle = angle;
    floating.is_behind = angle == 0;
    floating.box = {400, 500 + angle, 440, 520 + angle};
    floating.blocks = {Block{TextAt(400, 510 + angle, {"Beside"})}, Block{picture}, Block{shapes},
                       Block{TableAt(400, 520 + angle, {"a", "b", "c", "d"})}};
    page.layout.floats.push_back(floating);
  }
  Floating image;
  image.box = picture.box;
  image.blocks = {Block{chart}};
  page.layout.floats.push_back(image);
  page.model.links = {{{70, 95, 180, 210}, "http://example.org/"}, {{0, 0, 9, 9}, ""}};
  return page;
}

OfficePage PageOfColumns() {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Over all"})}});
  AddBand(page, {{Block{TextAt(72, 200, {"left"})}}, {Block{TextAt(300, 200, {"right"})}}});
  AddBand(page, {{Block{TextAt(72, 300, {"1"})}},
                 {Block{TextAt(230, 300, {"2"})}, Block{TableAt(230, 310, {"a", "b", "c", "d"})}},
                 {}});
  AddBand(page, {{Block{TextAt(72, 400, {"below"})}}});
  AddBand(page, {{Block{TextAt(72, 450, {"left"})}}, {Block{TextAt(300, 450, {"right"})}}});
  std::swap(page.layout.bands.back().columns[0], page.layout.bands.back().columns[1]);
  return page;
}

OfficePage PageWithMargins(const std::string& header, const std::string& number) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"Text of the page"})}});
  Paragraph shown = TextAt(290, 810, {number});
  shown.lines[0].pieces[0].kind = PieceKind::kPageNumber;
  Picture logo;
  logo.box = {500, 20, 540, 40};
  page.layout.header = {Block{TextAt(72, 40, {header})}, Block{logo},
                        Block{TableAt(200, 30, {"a", "b", "c", "d"})}};
  page.layout.footer = {Block{shown}};
  return page;
}

OfficeDocument Book() {
  OfficeDocument book = DocumentOf({PageWithMargins("Title", "i"), PageWithMargins("Preface", "ii"),
                                    PageWithMargins("Left", "1"), PageWithMargins("Right", "2"),
                                    PageWithMargins("Left", "3"), PageWithMargins("Right", "4"),
                                    PageWithMargins("Left", "5"), PageWithMargins("Right", "6")});
  book.facts.title = "A <title> & \"more\"";
  book.facts.author = "Someone";
  book.facts.subject = "Something";
  book.facts.keywords = "one, two";
  book.facts.language = "de-CH";
  return book;
}

OfficePage Empty() {
  OfficePage page;
  page.layout.width = 1200;
  page.layout.height = 300;
  return page;
}

}  // namespace

OfficePage PageOfText() {
  std::vector<Block> blocks = {Block{TextOfAllLooks()}};
  double y = 220;
  for (const ParagraphRole role :
       {ParagraphRole::kTitle, ParagraphRole::kHeading, ParagraphRole::kCaption,
        ParagraphRole::kContents, ParagraphRole::kQuote, ParagraphRole::kCode}) {
    for (std::uint8_t level = 0; level < 8; level += 3) {
      Paragraph paragraph = LineWithTabs(y += 13, role);
      paragraph.level = level;
      paragraph.alignment = static_cast<Alignment>(level % 4);
      blocks.push_back(Block{paragraph});
    }
  }
  for (std::uint8_t i = 0; i < 4; ++i) {
    Paragraph paragraph = TextAt(72, 640 + 26 * i, {"עברית וגם עוד מילים בשורה", "עוד"});
    paragraph.is_right_to_left = true;
    paragraph.alignment = static_cast<Alignment>(i);
    paragraph.bookmark = "right" + std::to_string(i);
    blocks.push_back(Block{paragraph});
  }
  Paragraph empty;
  empty.box = {72, 750, 80, 760};
  blocks.push_back(Block{empty});
  for (Block& item : Lists()) {
    blocks.push_back(std::move(item));
  }
  OfficePage page = PageWith(std::move(blocks));
  page.layout.looks = LooksOfAllKinds();
  return page;
}

std::map<std::string, OfficeDocument> RichDocuments() {
  OfficePage wide = PageWith({Block{TextAt(9000, 9000, {"Far"})}});
  wide.layout.width = wide.layout.height = 20'000;
  OfficePage columns = PageOfColumns();
  columns.layout.width = 30;
  return {{"text", DocumentOf({PageOfText()})},
          {"links", DocumentOf({PageOfLinks("here"), PageOfLinks("there")})},
          {"notes", DocumentOf({PageOfNotes(), PageOfNotes()})},
          {"tables", DocumentOf({PageOfTables()})},
          {"images", DocumentOf({PageOfImages(), PageOfImages(), PageOfImages()})},
          {"columns", DocumentOf({PageOfColumns(), PageOfColumns(), columns})},
          {"a book", Book()},
          {"sizes", DocumentOf({Empty(), wide, PageWith({}), PageOfText(), Empty()})},
          {"no page", DocumentOf({})}};
}

}  // namespace TarnixTools::engines::office
