// What is written of pages that are made up as chance has it: text of any look and place, tables with
// any cells, pictures, drawings and boxes, in columns and beside them.
#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/writers/PackageText.h"
#include "engines/office/writers/RichDocuments.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/PackageCheck.h"
#include "engines/office/writers/sheets/SheetWriter.h"
#include "engines/support/layout/Dice.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

using TarnixTools::testing::IsAsExpected;

constexpr std::uint32_t kLooks = 6;
constexpr std::uint32_t kLinks = 3;
constexpr double kLetter = 0.5;  // ems

const std::vector<std::string> kTexts = {
    "one", "two words", "A text of several words", "12", "3.50", "x < y & z", "(a)", "end."};
const std::vector<Rgb> kColors = {{}, {200, 30, 30}, {255, 255, 255}, {18, 52, 86}};

class PageMaker {
 public:
  explicit PageMaker(Dice& dice) : dice_(&dice) {}

  OfficePage Make() {
    page_ = FacelessPage({});
    page_.layout.bands.clear();
    if (dice_->Chance(25)) {
      std::swap(page_.layout.width, page_.layout.height);
      page_.model.width = page_.layout.width;
      page_.model.height = page_.layout.height;
    }
    AddLooks();
    page_.layout.links = {{"http://example.org/", "", -1, 0}, {"", "place", 0, 100}, {}};
    double y = dice_->Between(40, 100, 2);
    for (std::size_t bands = dice_->Under(2) + 1; bands > 0; --bands) {
      y = AddColumns(y);
      y += dice_->Between(0, 40, 1);
    }
    Paragraph place = Text(70, 400, y);
    place.bookmark = "place";  // that links lead to
    page_.layout.bands.back().columns.front().blocks.push_back(Block{std::move(place)});
    AddBeside();
    if (dice_->Chance(15)) {
      page_.layout.background = dice_->Of(kColors);
    }
    return std::move(page_);
  }

 private:
  void AddLooks() {
    page_.layout.looks.clear();
    for (std::uint32_t i = 0; i < kLooks; ++i) {
      TextLook look{nullptr, i == 0 ? 10 : dice_->Between(6, 24, 0.5), dice_->Of(kColors), {}};
      if (dice_->Chance(30)) {
        look.highlight = dice_->Of(kColors);
      }
      if (dice_->Chance(50)) {
        static const std::vector<std::string> kFamilies = {"Liberation Sans", "Liberation Serif",
                                                           "Liberation Mono"};
        look.face = std::make_shared<const Typeface>(
            Typeface{dice_->Of(kFamilies), dice_->Chance(30), dice_->Chance(30)});
      }
      look.is_underlined = dice_->Chance(20);
      look.is_struck = dice_->Chance(20);
      look.is_hidden = dice_->Chance(5);
      look.raise = dice_->Chance(80)
                       ? Raise::kNone
                       : (dice_->Chance(50) ? Raise::kSuperscript : Raise::kSubscript);
      page_.layout.looks.push_back(look);
    }
  }

  double AddColumns(double top) {
    Band band;
    const std::size_t count = dice_->Chance(60) ? 1 : dice_->Under(2) + 2;
    const double width = (page_.layout.width - 140) / static_cast<double>(count);
    double end = top;
    for (std::size_t i = 0; i < count; ++i) {
      const double left = 70 + width * static_cast<double>(i);
      Column column;
      column.box = {left, top, left + width - (count > 1 ? 15 : 0), top};
      column.blocks = Blocks(left, column.box.right, top, dice_->Under(3) + 1);
      for (const Block& block : column.blocks) {
        column.box = {std::min(column.box.left, BoxOf(block).left), column.box.bottom,
                      std::max(column.box.right, BoxOf(block).right),
                      std::max(column.box.top, BoxOf(block).top)};
      }
      end = std::max(end, column.box.top);
      band.columns.push_back(std::move(column));
    }
    band.box = {70, top, page_.layout.width - 70, end};
    page_.layout.bands.push_back(std::move(band));
    return end;
  }

  std::vector<Block> Blocks(double left, double right, double top, std::size_t count) {
    std::vector<Block> blocks;
    double y = top;
    for (; count > 0 && y < page_.layout.height - 120; --count) {
      const std::size_t kind = dice_->Under(10);
      Block block = kind < 6   ? Block{Text(left, right, y)}
                    : kind < 8 ? Block{Grid(left, right, y)}
                    : kind < 9 ? Block{Image(left, right, y)}
                               : Block{Shapes(left, right, y)};
      y = BoxOf(block).top + (dice_->Chance(60) ? 0 : dice_->Between(-4, 30, 1));
      blocks.push_back(std::move(block));
    }
    return blocks;
  }

  TextPiece Piece(double x, double room) {
    TextPiece piece;
    piece.x = x;
    piece.look = static_cast<std::uint32_t>(dice_->Chance(50) ? 0 : dice_->Under(kLooks));
    if (dice_->Chance(8)) {
      piece.kind = PieceKind::kTab;
      piece.width = dice_->Between(4, 40, 1);
      return piece;
    }
    piece.text = dice_->Of(kTexts);
    piece.link = dice_->Chance(10) ? static_cast<std::int32_t>(dice_->Under(kLinks)) : -1;
    const double width = kLetter * page_.layout.looks[piece.look].size;
    piece.width = std::min(room, width * static_cast<double>(piece.text.size()));
    return piece;
  }

  TextLine Line(double left, double right, double baseline) {
    TextLine line;
    line.baseline = baseline;
    double x = left;
    double size = 0;
    for (std::size_t pieces = dice_->Under(4) + 1; pieces > 0 && x < right - 10; --pieces) {
      line.pieces.push_back(Piece(x, right - x));
      x += line.pieces.back().width + (dice_->Chance(80) ? 0 : 2.5);
      size = std::max(size, page_.layout.looks[line.pieces.back().look].size);
    }
    line.box = {left, baseline - 0.8 * size, x, baseline + 0.2 * size};
    line.joint = dice_->Chance(70) ? LineJoint::kSpace
                                   : (dice_->Chance(50) ? LineJoint::kNothing : LineJoint::kBreak);
    return line;
  }

  void AddLabel(Paragraph& paragraph) {
    static const std::vector<std::pair<ListKind, std::string>> kLabels = {
        {ListKind::kBullet, "•"},       {ListKind::kBullet, "-"},
        {ListKind::kDecimal, "1."},     {ListKind::kDecimal, "(2)"},
        {ListKind::kLowerLetter, "c)"}, {ListKind::kUpperLetter, "A."},
        {ListKind::kLowerRoman, "iv."}, {ListKind::kUpperRoman, "[X]"}};
    const auto& [kind, text] = dice_->Of(kLabels);
    ListLabel label;
    label.kind = kind;
    label.text = text;
    label.value = static_cast<std::int32_t>(dice_->Under(4) + 1);
    label.x = paragraph.box.left - dice_->Between(4, 30, 1);
    label.list = static_cast<std::uint32_t>(dice_->Under(2) + 1);
    label.look = static_cast<std::uint32_t>(dice_->Under(kLooks));
    paragraph.label = label;
    paragraph.role = ParagraphRole::kListItem;
    paragraph.level = static_cast<std::uint8_t>(dice_->Under(3));
  }

  Paragraph Text(double left, double right, double top) {
    Paragraph paragraph;
    const double indent = dice_->Chance(60) ? 0 : dice_->Between(0, 60, 1);
    const double pitch = dice_->Chance(60) ? 12 : dice_->Between(8, 30, 0.5);
    const double first = dice_->Chance(80) ? 0 : dice_->Between(-20, 20, 1);
    double baseline = top + 9;
    for (std::size_t lines = dice_->Under(4) + 1; lines > 0; --lines) {
      const double from = left + indent + (paragraph.lines.empty() ? first : 0);
      paragraph.lines.push_back(Line(from, right, baseline));
      const pdf::Box& box = paragraph.lines.back().box;
      paragraph.box = paragraph.lines.size() == 1
                          ? box
                          : pdf::Box{std::min(paragraph.box.left, box.left),
                                     std::min(paragraph.box.bottom, box.bottom),
                                     std::max(paragraph.box.right, box.right),
                                     std::max(paragraph.box.top, box.top)};
      baseline += pitch;
    }
    paragraph.line_pitch = paragraph.lines.size() > 1 ? pitch : 0;
    paragraph.first_indent = paragraph.lines.size() > 1 ? first : 0;
    paragraph.alignment = static_cast<Alignment>(dice_->Chance(50) ? 0 : dice_->Under(4));
    paragraph.is_right_to_left = dice_->Chance(6);
    paragraph.goes_on = dice_->Chance(4);
    if (dice_->Chance(25)) {
      AddLabel(paragraph);
    } else if (dice_->Chance(30)) {
      paragraph.role = static_cast<ParagraphRole>(dice_->Under(8));
      paragraph.level = static_cast<std::uint8_t>(dice_->Under(3) + 1);
    }
    return paragraph;
  }

  Picture Image(double left, double right, double top) {
    Picture picture;
    const double x = dice_->Chance(50) ? left : dice_->Between(left, left + 40, 1);
    picture.box = {x, top, std::min(right, x + dice_->Between(10, 200, 2)),
                   top + dice_->Between(10, 80, 2)};
    picture.images = {static_cast<std::uint32_t>(page_.model.images.size())};
    page_.model.images.push_back({.box = picture.box});
    picture.description = dice_->Chance(30) ? "a picture" : "";
    return picture;
  }

  Drawing Shapes(double left, double right, double top) {
    Drawing drawing;
    drawing.is_simple = dice_->Chance(80);
    drawing.box = {left, top, std::min(right, left + dice_->Between(20, 200, 2)),
                   top + (dice_->Chance(40) ? 0 : dice_->Between(2, 50, 2))};
    for (std::size_t count = dice_->Under(3) + 1; count > 0; --count) {
      PathShape path;
      const bool is_line = drawing.box.bottom == drawing.box.top || dice_->Chance(40);
      path.kind = is_line ? PathShape::Kind::kLine : PathShape::Kind::kRectangle;
      path.box = drawing.box;
      path.box.left += count > 1 ? dice_->Between(0, 10, 1) : 0;
      if (!is_line && dice_->Chance(70)) {
        path.fill = dice_->Of(kColors);
      }
      if (!path.fill || dice_->Chance(40)) {
        path.stroke = dice_->Of(kColors);
      }
      path.line_width = dice_->Between(0, 4, 0.25);
      drawing.paths.push_back(static_cast<std::uint32_t>(page_.model.paths.size()));
      page_.model.paths.push_back(path);
    }
    return drawing;
  }

  void FillCell(TableCell& cell, double left, double right) {
    for (Border& border : cell.borders) {
      border = {dice_->Chance(50) ? dice_->Between(0, 2, 0.25) : 0, dice_->Of(kColors)};
    }
    if (dice_->Chance(30)) {
      cell.fill = dice_->Of(kColors);
    }
    cell.angle = dice_->Chance(94) ? 0 : (dice_->Chance(50) ? 90 : 270);
    cell.alignment = static_cast<VerticalAlignment>(dice_->Under(3));
    const pdf::Box box = cell.TextBox();
    const double reach = dice_->Chance(90) ? 0 : dice_->Between(1, 60, 1);
    for (std::size_t count = dice_->Chance(20)   ? 0
                             : dice_->Chance(85) ? 1
                                                 : 2;
         count > 0; --count) {
      if (dice_->Chance(3) && depth_ == 0) {
        ++depth_;
        cell.blocks.push_back(Block{Grid(left + 2, right - 2, UpperOf(cell))});
        --depth_;
      } else {
        const double top = cell.blocks.empty() ? box.bottom + dice_->Between(0, 6, 1)
                                               : BoxOf(cell.blocks.back()).top;
        Paragraph text =
            Text(box.left + 2 - (dice_->Chance(50) ? reach : 0), box.right - 2 + reach, top);
        text.lines.resize(1);
        text.box = text.lines[0].box;
        text.line_pitch = 0;
        cell.blocks.push_back(Block{std::move(text)});
      }
    }
  }

  static double UpperOf(const TableCell& cell) { return cell.box.bottom + 2; }

  Table Grid(double left, double right, double top) {
    Table table;
    const std::size_t columns = dice_->Under(4) + 1;
    const std::size_t rows = dice_->Under(4) + 1;
    const double width = std::max(20.0, (right - left) / static_cast<double>(columns + 1));
    table.columns = {left + (dice_->Chance(70) ? 0 : dice_->Between(-6, 30, 1))};
    table.rows = {top};
    for (std::size_t i = 0; i < columns; ++i) {
      table.columns.push_back(table.columns.back() + width + dice_->Between(-8, 8, 0.5));
    }
    for (std::size_t i = 0; i < rows; ++i) {
      table.rows.push_back(table.rows.back() + dice_->Between(8, 40, 0.5));
    }
    std::vector<bool> is_taken(columns * rows);
    const std::size_t sparse = dice_->Under(30);  // a column that hardly has cells, if it is there
    for (std::size_t r = 0; r < rows; ++r) {
      for (std::size_t c = 0; c < columns; ++c) {
        if (is_taken[r * columns + c]) {
          continue;
        }
        const std::size_t wide =
            c + 1 < columns && dice_->Chance(15) && !is_taken[r * columns + c + 1] ? 2 : 1;
        const std::size_t high = r + 1 < rows && dice_->Chance(15) ? 2 : 1;
        for (std::size_t i = 0; i < wide * high; ++i) {
          is_taken[(r + i / wide) * columns + c + i % wide] = true;
        }
        TableCell cell;
        cell.row = static_cast<std::uint32_t>(r);
        cell.column = static_cast<std::uint32_t>(c);
        cell.row_span = static_cast<std::uint32_t>(high);
        cell.column_span = static_cast<std::uint32_t>(wide);
        cell.box = {table.columns[c], table.rows[r], table.columns[c + wide], table.rows[r + high]};
        if (dice_->Chance(c == sparse ? 60 : 2)) {
          continue;  // a place that no cell has
        }
        FillCell(cell, cell.box.left, cell.box.right);
        table.cells.push_back(std::move(cell));
      }
    }
    table.box = {table.columns.front(), table.rows.front(), table.columns.back(),
                 table.rows.back()};
    table.header_rows = static_cast<std::uint32_t>(dice_->Chance(50) ? 0 : dice_->Under(rows) + 1);
    table.is_ruled = dice_->Chance(50);
    table.goes_on = dice_->Chance(10);
    return table;
  }

  void AddBeside() {
    for (std::size_t count = dice_->Under(3); count > 0; --count) {
      Floating floating;
      const double x = dice_->Between(20, 400, 10);
      const double y = dice_->Between(40, 700, 10);
      const double right = x + dice_->Between(60, 160, 10);
      floating.blocks = Blocks(x, right, y, dice_->Under(2) + 1);
      if (floating.blocks.empty()) {
        continue;
      }
      floating.box = BoxOf(floating.blocks.front());
      floating.box.top = BoxOf(floating.blocks.back()).top;
      floating.angle = dice_->Chance(70) ? 0 : dice_->Between(0, 270, 45);
      floating.is_behind = dice_->Chance(15);
      page_.layout.floats.push_back(std::move(floating));
    }
    if (dice_->Chance(30)) {
      page_.layout.header = {Block{Text(70, 400, dice_->Between(10, 36, 2))}};
    }
    if (dice_->Chance(30)) {
      page_.layout.footer = {Block{Text(70, 400, page_.layout.height - dice_->Between(20, 50, 2))}};
    }
  }

  Dice* dice_;
  OfficePage page_;
  int depth_ = 0;  // of tables
};

OfficeDocument RandomDocument(std::uint64_t seed) {
  Dice dice(seed);
  OfficeDocument document = DocumentOf({PageMaker(dice).Make()});
  document.facts.language = seed % 2 == 0 ? "en" : "de";
  return document;
}

const OfficeDocument& Plain() {
  static const OfficeDocument plain = DocumentOf({FacelessPage({Block{TextAt(72, 100, {"a"})}})});
  return plain;
}

TEST(RandomPackages, AreThoseOfDocuments) {
  const Parts plain = PartsOf(WordBytesOf(Plain()));
  for (std::uint64_t seed = 1; seed <= 8; ++seed) {
    const Parts parts = PartsOf(WordBytesOf(RandomDocument(seed)));
    EXPECT_EQ(PackageComplaints(parts), "") << seed;
    EXPECT_TRUE(IsAsExpected("office/random-" + std::to_string(seed) + ".docx.txt",
                             PackageText(parts, plain)));
  }
}

TEST(RandomPackages, AreThoseOfPresentations) {
  const Parts plain = PartsOf(SlideBytesOf(Plain()));
  for (std::uint64_t seed = 1; seed <= 8; ++seed) {
    const Parts parts = PartsOf(SlideBytesOf(RandomDocument(seed)));
    EXPECT_EQ(PackageComplaints(parts), "") << seed;
    EXPECT_TRUE(IsAsExpected("office/random-" + std::to_string(seed) + ".pptx.txt",
                             PackageText(parts, plain)));
  }
}

// Programs tell what a file is by its first parts.
TEST(RandomPackages, HaveTheirPartsInOrder) {
  const auto names_of = [](const std::string& archive) {
    std::string names;
    for (std::size_t at = 0; archive.compare(at, 4, "PK\3\4", 4) == 0;) {
      const auto number = [&](std::size_t place, int count) {
        std::size_t value = 0;
        for (int i = count; i-- > 0;) {
          value = value << 8U |
                  static_cast<unsigned char>(archive.at(at + place + static_cast<std::size_t>(i)));
        }
        return value;
      };
      names += archive.substr(at + 30, number(26, 2)) + "\n";
      at += 30 + number(26, 2) + number(28, 2) + number(18, 4);
    }
    return names;
  };
  const OfficeDocument document = RichDocuments().at("a book");
  EXPECT_TRUE(IsAsExpected("office/random-order.txt", names_of(WordBytesOf(document)) + "\n" +
                                                          names_of(SlideBytesOf(document))));
}

TEST(RandomPackages, AreThoseOfSheets) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 16; ++seed) {
    const std::atomic<bool> is_cancelled = false;
    pdf::StringSink sink;
    if (!WriteSheets(RandomDocument(seed), seed % 3 == 0, is_cancelled, sink)) {
      text += "no tables\n";
      continue;
    }
    Parts parts = PartsOf(sink.bytes());
    std::erase_if(parts,
                  [](const auto& part) { return !part.first.starts_with("xl/worksheets/"); });
    text += PackageText(parts);
  }
  EXPECT_TRUE(IsAsExpected("office/random.xlsx.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::office
