#include "engines/support/layout/LayoutSketch.h"

#include <array>
#include <string_view>
#include <utility>

#include "engines/support/layout/LayoutDump.h"

namespace TarnixTools::engines {

namespace {

class Sketch {
 public:
  explicit Sketch(const std::vector<TextLook>& looks) : looks_(&looks) {}

  void Add(const PageLayout& page);
  void Add(const Table& table);

  std::string Take() { return std::move(out_); }

 private:
  void Add(const Block& block);
  void Add(const Paragraph& paragraph);
  void Add(const TextLine& line);
  void Add(const TextPiece& piece);
  void Add(const TableCell& cell);
  void Add(const std::vector<Block>& blocks);

  const std::vector<TextLook>* looks_;
  std::string out_;
};

void Sketch::Add(const TextPiece& piece) {
  if (piece.kind == PieceKind::kTab) {
    out_ += "->";
    return;
  }
  const TextLook look = piece.look < looks_->size() ? (*looks_)[piece.look] : TextLook();
  out_ += look.is_underlined ? "<u" : "";
  out_ += look.is_struck ? "<s" : "";
  out_ += look.highlight ? "<h" : "";
  out_ += piece.link >= 0 ? "<a" + std::to_string(piece.link) : "";
  if (look.raise == Raise::kNone) {
    out_ += piece.text;
  } else {
    out_ += (look.raise == Raise::kSuperscript ? "^{" : "_{") + piece.text + "}";
  }
}

void Sketch::Add(const TextLine& line) {
  for (const TextPiece& piece : line.pieces) {
    Add(piece);
  }
}

void Sketch::Add(const Paragraph& paragraph) {
  const std::string_view letters = paragraph.is_right_to_left ? "lrcj" : "LRCJ";
  out_ += letters[static_cast<std::size_t>(paragraph.alignment)];
  out_ += paragraph.first_indent > 0 ? "> " : (paragraph.first_indent < 0 ? "< " : " ");
  if (paragraph.initial) {
    out_ += "(";
    Add(paragraph.initial->line);
    out_ += std::to_string(paragraph.initial->lines_beside) + ")";
  }
  for (const TextLine& line : paragraph.lines) {
    Add(line);
    if (&line != &paragraph.lines.back()) {
      constexpr std::array<std::string_view, 3> kJoints = {"/", "+", "//"};
      out_ += kJoints[static_cast<std::size_t>(line.joint)];
    }
  }
}

void Sketch::Add(const TableCell& cell) {
  if (cell.row_span > 1 || cell.column_span > 1) {
    out_ += std::to_string(cell.row_span) + "x" + std::to_string(cell.column_span) + ":";
  }
  out_ += cell.angle != 0 ? ShownNumber(cell.angle) + "*" : "";
  out_ += cell.fill ? "#" : "";
  for (const Block& block : cell.blocks) {
    out_ += &block == &cell.blocks.front() ? "" : "&";
    Add(block);
  }
}

void Sketch::Add(const Table& table) {
  out_ += table.is_ruled ? "[" : "(";
  out_ += table.header_rows > 0 ? std::to_string(table.header_rows) + "!" : "";
  for (std::size_t i = 0; i < table.cells.size(); ++i) {
    const bool is_new_row = i > 0 && table.cells[i].row != table.cells[i - 1].row;
    out_ += i == 0 ? "" : (is_new_row ? ";" : ",");
    Add(table.cells[i]);
  }
  out_ += table.is_ruled ? "]" : ")";
}

void Sketch::Add(const Block& block) {
  if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
    Add(*paragraph);
  } else if (const auto* table = std::get_if<Table>(&block.content)) {
    Add(*table);
  } else if (const auto* picture = std::get_if<Picture>(&block.content)) {
    out_ += "picture of " + std::to_string(picture->images.size());
  } else {
    const Drawing& drawing = std::get<Drawing>(block.content);
    out_ +=
        (drawing.is_simple ? "shapes of " : "drawing of ") + std::to_string(drawing.paths.size());
  }
}

void Sketch::Add(const std::vector<Block>& blocks) {
  for (const Block& block : blocks) {
    out_ += &block == &blocks.front() ? "" : " ";
    Add(block);
  }
}

void Sketch::Add(const PageLayout& page) {
  for (const Band& band : page.bands) {
    out_ += &band == &page.bands.front() ? "" : " || ";
    for (const Column& column : band.columns) {
      out_ += &column == &band.columns.front() ? "" : " | ";
      Add(column.blocks);
    }
  }
  for (const Floating& floating : page.floats) {
    out_ += floating.is_behind ? " {behind " : (floating.is_vertical ? " {down " : " {");
    out_ += floating.angle != 0 ? ShownNumber(floating.angle) + ": " : "";
    Add(floating.blocks);
    out_ += "}";
  }
  out_ += page.background ? " on a color" : "";
}

}  // namespace

std::string SketchOf(const PageLayout& page) {
  Sketch sketch(page.looks);
  sketch.Add(page);
  return sketch.Take();
}

std::string SketchOf(const Table& table) {
  static const std::vector<TextLook> kNone;
  Sketch sketch(kNone);
  sketch.Add(table);
  return sketch.Take();
}

std::string Sweep(const std::string& title, double first, double last, double step,
                  const std::function<std::string(double)>& sketch) {
  std::string text = "== " + title + "\n";
  std::string same;
  double begin = first;
  double end = first;
  const auto write = [&] {
    text +=
        ShownNumber(begin) + (end > begin ? " to " + ShownNumber(end) : "") + ": " + same + "\n";
  };
  for (int i = 0; first + i * step <= last; ++i) {
    const double value = first + i * step;
    std::string own = sketch(value);
    if (i > 0 && own != same) {
      write();
      begin = value;
    }
    same = std::move(own);
    end = value;
  }
  write();
  return text;
}

}  // namespace TarnixTools::engines
