#include "engines/support/layout/LayoutDump.h"

#include <array>
#include <charconv>
#include <string_view>

namespace TarnixTools::engines {

namespace {

constexpr std::array<std::string_view, 8> kRoles = {"body",    "title",    "heading", "item",
                                                    "caption", "contents", "quote",   "code"};
constexpr std::array<std::string_view, 4> kAlignments = {"left", "right", "center", "justified"};
constexpr std::array<std::string_view, 5> kPieces = {"text", "tab", "page", "note", "picture"};
constexpr std::array<std::string_view, 3> kJoints = {"space", "nothing", "break"};

// Writes values with the commas that go between them.
class Dump {
 public:
  void Open(char bracket) {
    Separate();
    out_ += bracket;
  }

  void Close(char bracket) { out_ += bracket; }

  void Key(std::string_view name) {
    String(name);
    out_ += ':';
  }

  void String(std::string_view text);
  void Number(double value);
  void Box(const pdf::Box& box);
  void Write(const Block& block);
  void Write(const Paragraph& paragraph);
  void Write(const Table& table);
  void Write(const TextLine& line);

  template <typename Things>
  void List(std::string_view name, const Things& things) {
    Key(name);
    Open('[');
    for (const auto& thing : things) {
      Write(thing);
    }
    Close(']');
  }

  void Write(const Band& band);
  void Write(const Column& column);
  void Write(const Floating& floating);
  void Write(const Note& note);
  void Write(const TextLook& look);

  std::string Take() { return std::move(out_); }

 private:
  void Separate() {
    if (!out_.empty() && out_.back() != '[' && out_.back() != '{' && out_.back() != ':') {
      out_ += ',';
    }
  }

  std::string out_;
};

void Dump::String(std::string_view text) {
  Separate();
  out_ += '"';
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      out_ += '\\';
    }
    out_ += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  }
  out_ += '"';
}

void Dump::Number(double value) {
  Separate();
  std::array<char, 400> digits;  // the longest number in this form has 309 before the point
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::fixed, 1);
  out_.append(digits.data(), end.ptr);
}

void Dump::Box(const pdf::Box& box) {
  Key("box");
  Open('[');
  for (const double edge : {box.left, box.bottom, box.right, box.top}) {
    Number(edge);
  }
  Close(']');
}

void Dump::Write(const TextLine& line) {
  Open('{');
  Box(line.box);
  Key("joint");
  String(kJoints[static_cast<std::size_t>(line.joint)]);
  Key("pieces");
  Open('[');
  for (const TextPiece& piece : line.pieces) {
    Open('{');
    Key("kind");
    String(kPieces[static_cast<std::size_t>(piece.kind)]);
    Key("text");
    String(piece.text);
    Key("look");
    Number(piece.look);
    Key("link");
    Number(piece.link);
    Close('}');
  }
  Close(']');
  Close('}');
}

void Dump::Write(const Paragraph& paragraph) {
  Open('{');
  Key("paragraph");
  String(kRoles[static_cast<std::size_t>(paragraph.role)]);
  Key("level");
  Number(paragraph.level);
  Key("alignment");
  String(kAlignments[static_cast<std::size_t>(paragraph.alignment)]);
  Key("indent");
  Number(paragraph.first_indent);
  Key("pitch");
  Number(paragraph.line_pitch);
  if (paragraph.goes_on) {
    Key("goes_on");
    Number(1);
  }
  if (paragraph.label) {
    Key("label");
    String(paragraph.label->text);
    Key("list");
    Number(paragraph.label->list);
  }
  Box(paragraph.box);
  List("lines", paragraph.lines);
  Close('}');
}

void Dump::Write(const Table& table) {
  Open('{');
  Key("table");
  Number(static_cast<double>(table.rows.size()));
  Box(table.box);
  Key("cells");
  Open('[');
  for (const TableCell& cell : table.cells) {
    Open('{');
    Key("row");
    Number(cell.row);
    Key("column");
    Number(cell.column);
    Box(cell.box);
    List("blocks", cell.blocks);
    Close('}');
  }
  Close(']');
  Close('}');
}

void Dump::Write(const Block& block) {
  if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
    Write(*paragraph);
  } else if (const auto* table = std::get_if<Table>(&block.content)) {
    Write(*table);
  } else {
    const auto* picture = std::get_if<Picture>(&block.content);
    Open('{');
    Key(picture != nullptr ? "picture" : "drawing");
    Number(static_cast<double>(picture != nullptr ? picture->images.size()
                                                  : std::get<Drawing>(block.content).paths.size()));
    Box(picture != nullptr ? picture->box : std::get<Drawing>(block.content).box);
    Close('}');
  }
}

void Dump::Write(const Column& column) {
  Open('{');
  Box(column.box);
  List("blocks", column.blocks);
  Close('}');
}

void Dump::Write(const Band& band) {
  Open('{');
  Box(band.box);
  List("columns", band.columns);
  Close('}');
}

void Dump::Write(const Floating& floating) {
  Open('{');
  Box(floating.box);
  Key("angle");
  Number(floating.angle);
  Key("behind");
  Number(floating.is_behind ? 1 : 0);
  List("blocks", floating.blocks);
  Close('}');
}

void Dump::Write(const Note& note) {
  Open('{');
  Key("label");
  String(note.label);
  List("blocks", note.blocks);
  Close('}');
}

void Dump::Write(const TextLook& look) {
  Open('{');
  Key("family");
  String(look.face != nullptr ? std::string_view(look.face->family) : std::string_view());
  Key("bold");
  Number(look.face != nullptr && look.face->is_bold ? 1 : 0);
  Key("italic");
  Number(look.face != nullptr && look.face->is_italic ? 1 : 0);
  Key("size");
  Number(look.size);
  Key("hidden");
  Number(look.is_hidden ? 1 : 0);
  Key("underlined");
  Number(look.is_underlined ? 1 : 0);
  Close('}');
}

}  // namespace

std::string DumpLayout(const PageLayout& page) {
  Dump dump;
  dump.Open('{');
  dump.Key("page");
  dump.Number(page.number);
  dump.Key("size");
  dump.Open('[');
  dump.Number(page.width);
  dump.Number(page.height);
  dump.Close(']');
  dump.List("looks", page.looks);
  dump.List("header", page.header);
  dump.List("bands", page.bands);
  dump.List("floats", page.floats);
  dump.List("notes", page.notes);
  dump.List("footer", page.footer);
  dump.Close('}');
  return dump.Take();
}

}  // namespace TarnixTools::engines
