#include "engines/office/layout/MadeDocuments.h"

#include <utility>

#include "engines/office/layout/DocumentAnalysis.h"
#include "engines/support/layout/PageAnalysis.h"

namespace TarnixTools::engines::office {

namespace {

constexpr const char* kFamily = "Liberation Sans";
constexpr std::u32string_view kText =
    U"Some words that are there for no other purpose than to fill a line of the page";

// Lines of a paragraph, the last one of which is short.
void AddLines(MadePage& page, double x, double y, int count, std::size_t letters = 78) {
  for (int i = 0; i < count; ++i) {
    page.Text(x, y + 12 * i, kText.substr(0, i + 1 == count ? letters / 2 : letters));
  }
}

// With a header and a footer.
MadePage ReportPage(int number) {
  MadePage page(kFamily);
  page.Text(72, 40, U"The yearly report");
  page.Text(480, 40, number % 2 == 0 ? U"Left" : U"Right");
  page.Image({520, 20, 560, 44});
  page.Rule({72, 48, 530, 48}, 0.5);
  page.Text(280, 780,
            U"Page " + std::u32string(1, static_cast<char32_t>(U'4' + number)) + U" of 9");
  return page;
}

MadePage ContentsPage() {
  MadePage page = ReportPage(0);
  page.Text(72, 100, U"Contents", {.size = 20, .is_bold = true});
  page.Text(72, 140, U"1 What it is ...................................... 5");
  page.Text(90, 156, U"1.1 How it was made ........................... 5");
  page.Text(90, 172, U"1.2 What it was made of")
      .Text(250, 172, U".............")
      .Text(340, 172, U"6");
  page.Text(72, 188, U"2 What it was for ................................. vii");
  page.LinkTo({72, 130, 330, 142}, 1, 90).LinkTo({90, 146, 330, 158}, 1, 300);
  page.LinkTo({90, 162, 350, 174}, 7, 0);
  AddLines(page, 72, 230, 3);
  return page;
}

MadePage TextPage() {
  MadePage page = ReportPage(1);
  page.Text(72, 100, U"1 What it is", {.size = 16, .is_bold = true});
  AddLines(page, 72, 124, 4);
  page.Text(267, 156, U"1", {.size = 6}).Text(275, 160, U"with more");
  page.Text(72, 190, U"1.1 How it was made", {.size = 12, .is_bold = true});
  page.Text(84, 210, kText).Text(72, 222, kText).Text(72, 234, U"and an end with a link to it.");
  page.Link({150, 224, 200, 238});
  double y = 260;
  for (const std::u32string_view label : {U"•", U"•", U"–", U"–", U"•", U"1.", U"2.", U"a)", U"b)",
                                          U"c)", U"3.", U"i.", U"ii.", U"(A)", U"(B)"}) {
    const bool is_inner = label == U"–" || label == U"a)" || label == U"b)" || label == U"c)";
    const double x = is_inner ? 100 : 80;
    page.Text(x, y, label).Text(x + 22, y, U"an item of the list");
    y += 14;
  }
  page.Text(102, y, U"with a second line").Image({72, 500, 220, 580});
  page.Text(72, 595, U"Figure 1: A picture").Text(72, 615, U"Words before the notes");
  page.Text(182, 611, U"2", {.size = 6}).Text(190, 615, U"and behind");
  for (const int i : {0, 1}) {
    page.Text(72, 696 + 24 * i, i == 0 ? U"1" : U"2", {.size = 4});
    page.Text(75, 700 + 24 * i, U"A note that tells of something", {.size = 8});
    page.Text(75, 710 + 24 * i, U"in two lines", {.size = 8});
  }
  return page;
}

// The lower or the upper part of one table.
void AddTable(MadePage& page, double top, int rows) {
  for (int r = 0; r <= rows; ++r) {
    page.Rule({72, top + 20 * r, 372, top + 20.0 * r}, 0.5);
  }
  for (const double x : {72.0, 172.0, 272.0, 372.0}) {
    page.Rule({x, top, x, top + 20.0 * rows}, x == 72 ? 1.5 : 0.5, {0, 0, 200});
  }
  for (int i = 0; i < 3 * rows; ++i) {
    const bool is_head = i < 3;
    const std::u32string text = is_head      ? (i == 0 ? U"Name" : U"Value")
                                : i % 3 == 0 ? U"A name"
                                             : U"1,234." + std::u32string(1, U'0' + i % 10);
    page.Text(76 + 100 * (i % 3), top + 14 + 20 * (i / 3), text, {.is_bold = is_head});
  }
}

OfficeDocument Report() {
  MadePage third = ReportPage(2);
  AddLines(third, 72, 100, 5);
  third.Text(72, 172, U"Table 1: Names and values");
  third.Text(72, 560, U"2 What it was for", {.size = 16, .is_bold = true});
  AddTable(third, 600, 6);
  MadePage fourth = ReportPage(3);
  AddTable(fourth, 80, 4);
  AddLines(fourth, 72, 200, 3);
  fourth.Text(72, 400, std::u32string(kText.substr(0, 60)) + U"that goes");
  OfficeDocument document =
      PagesOf({ContentsPage(), TextPage(), std::move(third), std::move(fourth)});
  document.facts.title = "The yearly report";
  document.facts.language = "en-GB";
  document.facts.outline = {{"What it is", 1, 0}, {"1.1 How it was made", 1, 1}};
  return document;
}

MadePage ColumnPage() {
  MadePage page(kFamily);
  page.Text(180, 60, U"A JOURNAL OF MANY THINGS", {.size = 18, .is_bold = true});
  page.Text(220, 84, U"by someone who wrote it", {.color = {90, 90, 90}});
  page.Text(60, 140, U"O", {.size = 34, .advance = 0.72});
  for (int i = 0; i < 14; ++i) {
    const bool is_beside = i < 2;
    page.Text(is_beside ? 88 : 60, 128 + 12 * i,
              kText.substr(0, is_beside ? 38
                              : i == 13 ? 20
                                        : 44));
    page.Text(310, 128 + 12 * i,
              i == 6 ? std::u32string(kText.substr(0, 39)) + U"par-"
                     : std::u32string(kText.substr(0, 44)));
  }
  page.Rule({60, 165.5, 100, 165.5}, 0.6).Rule({60, 173, 130, 173}, 0.6).Field({60, 180, 110, 190});
  page.Text(60, 330, U"hidden words", {.is_hidden = true});
  page.Text(310, 330, U"מילים בעברית 12 בשורה אחת").Text(310, 342, U"ועוד שורה");
  page.Text(60, 360, U"E = mc").Text(90, 356, U"2", {.size = 6}).Text(60, 376, U"H");
  page.Text(65, 378, U"2", {.size = 6}).Text(68, 376, U"O and more of it");
  return page;
}

MadePage DrawingPage() {
  MadePage page(kFamily);
  page.Field({0, 0, 600, 800});
  page.Text(60, 60, U"Over all of the page");
  page.Curve({100, 100, 300, 250}).Rule({100, 250, 300, 100}, 1).Field({120, 200, 140, 250});
  page.Text(150, 180, U"label").Text(150, 192, U"of two lines").Text(240, 120, U"12 %");
  page.Field({60, 300, 540, 340}).Text(70, 320, U"A box with text in it");
  page.Image({350, 100, 450, 200}).Image({450.5, 100, 540, 200}).Image({200, 400, 208, 408});
  const MadeStyle up{.direction_x = 0, .direction_y = -1};
  const MadeStyle down{.direction_x = 0, .direction_y = 1};
  const MadeStyle slanted{
      .size = 30, .direction_x = 0.6, .direction_y = 0.8, .color = {200, 200, 200}};
  page.Text(30, 700, U"Upwards on the edge", up).Text(42, 700, U"and one more", up);
  page.Text(570, 300, U"Downwards", down).Text(250, 450, U"SLANTED", slanted);
  const MadeStyle vertical{.advance = 1, .is_vertical = true};
  page.Text(520, 500, U"縦に書く行がここに", vertical).Text(500, 500, U"続いている。", vertical);
  AddLines(page, 60, 720, 3);
  return page;
}

MadePage GridPage() {
  MadePage page(kFamily);
  AddTable(page, 60, 5);
  page.Field({72, 100, 172, 120}).Text(76, 172, U"below the table");
  // Merged cells, turned text, a picture in one.
  for (const double y : {182.0, 220.0, 300.0}) {
    page.Rule({72, y, 472, y}, 1);
  }
  page.Rule({122, 260, 472, 260}, 1);
  for (const double x : {72.0, 122.0, 472.0}) {
    page.Rule({x, 182, x, 300}, 1);
  }
  page.Rule({272, 182, 272, 220}, 1).Rule({272, 260, 272, 300}, 1);
  page.Text(80, 205, U"first")
      .Text(130, 205, U"second")
      .Text(280, 215, U"third")
      .Text(400, 290, U"fourth");
  page.Text(102, 295, U"turned", {.direction_x = 0, .direction_y = -1});
  page.Text(130, 245, U"over two columns").Text(130, 275, U"one").Text(130, 290, U"two");
  page.Image({300, 265, 350, 295});
  // Between rules.
  page.Rule({72, 340, 472, 340}, 1).Rule({72, 358, 472, 358}, 0.5).Rule({72, 420, 472, 420}, 1);
  for (int r = 0; r < 4; ++r) {
    const bool is_head = r == 0;
    page.Text(76, 353 + 18 * r, is_head ? U"Year" : U"199" + std::u32string(1, U'5' + r));
    page.Text(200, 353 + 18 * r, is_head ? U"Men" : U"15.1 %").Text(350, 353 + 18 * r, U"8.25");
  }
  // Without any.
  for (int r = 0; r < 4; ++r) {
    page.Text(72, 470 + 16 * r, U"a label").Text(200, 470 + 16 * r, U"$ 12.50");
    page.Text(300, 470 + 16 * r, U"2011-09-2" + std::u32string(1, U'0' + r % 2));
  }
  return page;
}

}  // namespace

std::string PartsText(const PageLayout& page) {
  std::string text;
  const auto add = [&text](const char* where, const std::vector<Block>& blocks) {
    for (const Block& block : blocks) {
      text += where;
      const auto* paragraph = std::get_if<Paragraph>(&block.content);
      const auto* table = std::get_if<Table>(&block.content);
      if (paragraph == nullptr) {
        text += table == nullptr ? "image; " : table->goes_on ? "more of a table; " : "table; ";
        continue;
      }
      constexpr const char* kRoles[] = {"", "T", "H", "I", "C", "E", "Q", "P"};
      text += kRoles[static_cast<int>(paragraph->role)];
      text += paragraph->level > 0 ? std::to_string(paragraph->level) + " " : " ";
      text += paragraph->label
                  ? "(" + paragraph->label->text + std::to_string(paragraph->label->list) + ")"
                  : "";
      text += paragraph->goes_on ? "... " : "";
      for (const TextPiece& piece : paragraph->lines.front().pieces) {
        text += piece.kind == PieceKind::kPageNumber ? "#"
                : piece.kind == PieceKind::kNoteMark ? "^"
                                                     : "";
        text += piece.kind == PieceKind::kTab ? "->" : piece.text.substr(0, 9);
      }
      text += "; ";
    }
  };
  add("header:", page.header);
  for (const Band& band : page.bands) {
    for (const Column& column : band.columns) {
      add("", column.blocks);
    }
  }
  for (const Note& note : page.notes) {
    text += "note " + note.label + ":";
    add("", note.blocks);
  }
  add("footer:", page.footer);
  for (const Floating& floating : page.floats) {
    text += floating.is_behind ? "behind; " : "beside; ";
  }
  return text;
}

OfficeDocument PagesOf(std::vector<MadePage> pages) {
  OfficeDocument document;
  for (MadePage& made : pages) {
    OfficePage page;
    page.model = made.Take();
    page.model.number = static_cast<std::uint32_t>(document.pages.size());
    page.layout = AnalyzePage(page.model);
    document.pages.push_back(std::move(page));
  }
  return document;
}

std::map<std::string, OfficeDocument> MadeDocuments() {
  std::map<std::string, OfficeDocument> documents;
  documents["report"] = Report();
  documents["journal"] = PagesOf({ColumnPage(), DrawingPage()});
  documents["tables"] = PagesOf({GridPage()});
  for (auto& [name, document] : documents) {
    AnalyzeDocument(document);
  }
  return documents;
}

}  // namespace TarnixTools::engines::office
