#include "engines/support/layout/LayoutDump.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace TarnixTools::engines {

namespace {

constexpr std::array<std::string_view, 8> kRoles = {"body",    "title",    "heading", "item",
                                                    "caption", "contents", "quote",   "code"};
constexpr std::array<std::string_view, 4> kAlignments = {"left", "right", "center", "justified"};
constexpr std::array<std::string_view, 4> kPieces = {"text", "tab", "page", "note"};
constexpr std::array<std::string_view, 3> kJoints = {"", " goes on", " ends"};
constexpr std::array<std::string_view, 3> kRaises = {"", " raised", " lowered"};
constexpr std::array<std::string_view, 6> kLists = {"bullet",       "decimal",     "lower letter",
                                                    "upper letter", "lower roman", "upper roman"};
constexpr std::array<std::string_view, 3> kPlaces = {"top", "middle", "bottom"};

template <typename Names, typename Value>
std::string NameOf(const Names& names, Value value) {
  return std::string(names.at(static_cast<std::size_t>(value)));
}

std::string ColorText(const Rgb& color) {
  std::array<char, 8> digits;
  std::snprintf(digits.data(), digits.size(), "#%02X%02X%02X", color.red, color.green, color.blue);
  return digits.data();
}

std::string BoxText(const pdf::Box& box) {
  return " [" + ShownNumber(box.left) + " " + ShownNumber(box.bottom) + " " +
         ShownNumber(box.right) + " " + ShownNumber(box.top) + "]";
}

template <typename Values>
std::string ListText(const Values& values) {
  std::string text;
  for (const auto& value : values) {
    text += " " + ShownNumber(static_cast<double>(value));
  }
  return text;
}

std::string LookText(const TextLook& look) {
  std::string text = look.face == nullptr ? "no face" : look.face->family;
  text += " " + ShownNumber(look.size) + " " + ColorText(look.color);
  if (look.face != nullptr) {
    text += look.face->is_bold ? " bold" : "";
    text += look.face->is_italic ? " italic" : "";
  }
  text += look.highlight ? " on " + ColorText(*look.highlight) : "";
  text += look.is_underlined ? " underlined" : "";
  text += look.is_struck ? " struck" : "";
  text += look.is_hidden ? " hidden" : "";
  return text + NameOf(kRaises, look.raise);
}

class Dump {
 public:
  void Add(const PageLayout& page);

  std::string Take() { return std::move(out_); }

 private:
  void Line(const std::string& text) { out_ += std::string(depth_, ' ') + text + "\n"; }

  void Add(const std::vector<Block>& blocks);
  void Add(const Paragraph& paragraph);
  void Add(const TextLine& line);
  void Add(const Table& table);
  void Add(const TableCell& cell);
  void Add(const Picture& picture);
  void Add(const Drawing& drawing);
  void Add(const std::string& name, const std::vector<Block>& blocks);

  std::string out_;
  std::size_t depth_ = 0;
};

void Dump::Add(const TextLine& line) {
  Line("line" + BoxText(line.box) + " on " + ShownNumber(line.baseline) +
       (line.inset != 0 ? " inset " + ShownNumber(line.inset) : "") + NameOf(kJoints, line.joint));
  for (const TextPiece& piece : line.pieces) {
    Line(" " + NameOf(kPieces, piece.kind) + " \"" + piece.text + "\" " +
         std::to_string(piece.look) + " at " + ShownNumber(piece.x) + " + " +
         ShownNumber(piece.width) + (piece.link >= 0 ? " link " + std::to_string(piece.link) : "") +
         (piece.number > 0 ? " number " + std::to_string(piece.number) : "") +
         ListText(piece.places));
  }
}

void Dump::Add(const Paragraph& paragraph) {
  Line(NameOf(kRoles, paragraph.role) + " " + std::to_string(paragraph.level) + " " +
       NameOf(kAlignments, paragraph.alignment) + (paragraph.is_tagged ? " tagged" : "") +
       (paragraph.is_right_to_left ? " to the left" : "") + (paragraph.goes_on ? " goes on" : "") +
       BoxText(paragraph.box) +
       (paragraph.first_indent != 0 ? " indent " + ShownNumber(paragraph.first_indent) : "") +
       " pitch " + ShownNumber(paragraph.line_pitch) +
       (paragraph.bookmark.empty() ? "" : " bookmark " + paragraph.bookmark));
  ++depth_;
  if (const auto& label = paragraph.label) {
    Line("label \"" + label->text + "\" " + NameOf(kLists, label->kind) + " " +
         std::to_string(label->value) + " look " + std::to_string(label->look) + " at " +
         ShownNumber(label->x) + " of list " + std::to_string(label->list));
  }
  if (paragraph.initial) {
    Line("initial of " + std::to_string(paragraph.initial->lines_beside));
    Add(paragraph.initial->line);
  }
  for (const TextLine& line : paragraph.lines) {
    Add(line);
  }
  --depth_;
}

void Dump::Add(const TableCell& cell) {
  std::string text = "cell " + std::to_string(cell.row) + "," + std::to_string(cell.column);
  if (cell.row_span > 1 || cell.column_span > 1) {
    text += " spans " + std::to_string(cell.row_span) + "x" + std::to_string(cell.column_span);
  }
  text += BoxText(cell.box) + " " + NameOf(kPlaces, cell.alignment);
  text += cell.fill ? " on " + ColorText(*cell.fill) : "";
  text += cell.angle != 0 ? " turned " + ShownNumber(cell.angle) : "";
  for (const Border& border : cell.borders) {
    text += border.width > 0 ? " " + ShownNumber(border.width) + ColorText(border.color) : " -";
  }
  Line(text);
  ++depth_;
  Add(cell.blocks);
  --depth_;
}

void Dump::Add(const Table& table) {
  Line("table" + BoxText(table.box) + (table.is_ruled ? " ruled" : "") +
       (table.goes_on ? " goes on" : "") + " headers " + std::to_string(table.header_rows));
  Line(" columns" + ListText(table.columns));
  Line(" rows" + ListText(table.rows));
  ++depth_;
  for (const TableCell& cell : table.cells) {
    Add(cell);
  }
  --depth_;
}

void Dump::Add(const Picture& picture) {
  Line("picture" + BoxText(picture.box) + " of" + ListText(picture.images) +
       (picture.description.empty() ? "" : " \"" + picture.description + "\""));
}

void Dump::Add(const Drawing& drawing) {
  Line((drawing.is_simple ? "shapes" : "drawing") + BoxText(drawing.box) + " of" +
       ListText(drawing.paths));
}

void Dump::Add(const std::vector<Block>& blocks) {
  for (const Block& block : blocks) {
    std::visit([this](const auto& content) { Add(content); }, block.content);
  }
}

void Dump::Add(const std::string& name, const std::vector<Block>& blocks) {
  if (!blocks.empty()) {
    Line(name);
    ++depth_;
    Add(blocks);
    --depth_;
  }
}

void Dump::Add(const PageLayout& page) {
  Line("page " + std::to_string(page.number) + " of " + ShownNumber(page.width) + " x " +
       ShownNumber(page.height) + (page.background ? " on " + ColorText(*page.background) : ""));
  for (std::size_t i = 0; i < page.looks.size(); ++i) {
    Line("look " + std::to_string(i) + ": " + LookText(page.looks[i]));
  }
  for (std::size_t i = 0; i < page.links.size(); ++i) {
    const LinkTarget& link = page.links[i];
    Line(
        "link " + std::to_string(i) + ": " + link.uri + link.bookmark +
        (link.page < 0 ? "" : " page " + std::to_string(link.page) + " at " + ShownNumber(link.y)));
  }
  Add("header", page.header);
  for (const Band& band : page.bands) {
    Line("band" + BoxText(band.box));
    ++depth_;
    for (const Column& column : band.columns) {
      Add("column" + BoxText(column.box), column.blocks);
    }
    --depth_;
  }
  for (const Floating& floating : page.floats) {
    Add("beside the flow" + BoxText(floating.box) + (floating.is_behind ? " behind" : "") +
            (floating.is_vertical ? " vertical" : "") + " turned " + ShownNumber(floating.angle),
        floating.blocks);
  }
  for (const Note& note : page.notes) {
    Add("note " + note.label, note.blocks);
  }
  Add("footer", page.footer);
}

}  // namespace

std::string ShownNumber(double value) {
  std::array<char, 400> digits;
  std::snprintf(digits.data(), digits.size(), "%.2f", value);
  std::string text = digits.data();
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') {
    text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string DumpLayout(const PageLayout& page) {
  Dump dump;
  dump.Add(page);
  return dump.Take();
}

}  // namespace TarnixTools::engines
