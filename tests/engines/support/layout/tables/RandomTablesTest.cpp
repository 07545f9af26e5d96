// What tables are found on pages that are drawn as chance has it: tables as programs make them, of
// which rules are missing, too long or doubled, cells are empty, wide or of several lines, and about
// which other things stand.
#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/Dice.h"
#include "engines/support/layout/LayoutDump.h"
#include "engines/support/layout/tables/TableScene.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::IsAsExpected;

using Words = std::vector<std::string>;

const Words kLabels = {
    "one",    "two of",  "Three", "four and five", "Six", "A long label of words",
    "total",  "(seven)", "1.",    "- eight",       "(a)", "of which",
    "1.2.3.", "12a.",    "Sum",   "nine....."};
const Words kNumbers = {"12",   "3.50",  "1 234",   "$ 5",   "$",     "7%",
                        "-",    "n.a.",  "(6)",     "8 (a)", "1995",  "10*",
                        "12 %", "1,000", "9 10 11", "2 345", "12 **", "4a"};
const Words kHeads = {"Name",        "Kind", "1995", "1996",      "In all",
                      "Of the year", "%",    "Sum",  "Price in $"};
const Words kProse = {"This is a line of text that says a few words of the table",
                      "and one that goes on with it in as many words", "See below."};
const std::vector<double> kOffsets = {-4, -3, -2.5, -2, -1, 1, 2, 2.5, 3, 4, 6};
const std::vector<Rgb> kColors = {{200, 220, 255}, {255, 220, 200}, {255, 255, 255}};

// A table that is drawn on a scene piece by piece.
class Sketcher {
 public:
  Sketcher(Dice& dice, TableScene& scene, double top) : dice_(&dice), scene_(&scene), top_(top) {
    const std::size_t columns = dice.Under(4) + 2;
    const std::size_t rows = dice.Under(5) + 2;
    const double width = dice.Between(40, 480.0 / static_cast<double>(columns), 4);
    pitch_ = dice.Chance(70) ? 16 : dice.Between(10, 30, 0.5);
    leading_ = dice.Chance(70) ? 12 : dice.Between(10, 20, 0.5);
    xs_ = {dice.Between(40, 100, 4)};
    ys_ = {top};
    for (std::size_t i = 0; i < columns; ++i) {
      xs_.push_back(xs_.back() + width + Off(20));
    }
    for (std::size_t i = 0; i < rows; ++i) {
      lines_.push_back(dice.Chance(15) ? dice.Under(3) + 1 : 1);
      ys_.push_back(ys_.back() + pitch_ + leading_ * static_cast<double>(lines_.back() - 1));
    }
  }

  // Rules between all places, but for some.
  void Grid() {
    for (const double y : ys_) {
      Rules(xs_, y, true);
    }
    for (const double x : xs_) {
      Rules(ys_, x, false);
    }
  }

  // Tags tell that some of its text is no table.
  void TagSome() {
    scene_->TreeWithTables();
    tagged_ = dice_->Under(100);
  }

  // Rules over the whole width alone.
  void Stripes() {
    for (std::size_t i = 0; i < ys_.size(); ++i) {
      if (i < 2 || i + 1 == ys_.size() || dice_->Chance(15)) {
        const pdf::Box line{xs_.front() + Off(10), ys_[i] + Off(10), xs_.back() + Off(10), ys_[i]};
        scene_->Line(line.left, line.bottom, line.right, line.top);
      }
    }
    if (dice_->Chance(15)) {
      scene_->Text(xs_.front() + 2, ys_.back() - 20, std::string(dice_->Under(30) + 4, '-'));
    }
  }

  // A box behind each cell.
  void Fills() {
    const double gap = dice_->Chance(30) ? dice_->Between(0, 4, 0.25) : 0;
    for (std::size_t r = 0; r + 1 < ys_.size(); ++r) {
      for (std::size_t c = 0; c + 1 < xs_.size(); ++c) {
        if (!dice_->Chance(6)) {
          const pdf::Box box{xs_[c], ys_[r] + Off(3), xs_[c + 1] - gap, ys_[r + 1] - gap + Off(3)};
          scene_->Fill(box.left, box.bottom, box.right, box.top,
                       kColors[(r + (dice_->Chance(80) ? c : 0)) % 2]);
        }
      }
    }
  }

  // Colours behind some of the cells.
  void Colors() {
    for (std::size_t r = 0; r + 1 < ys_.size(); ++r) {
      for (std::size_t c = 0; c + 1 < xs_.size(); ++c) {
        if (dice_->Chance(12)) {
          const double part = dice_->Chance(30) ? dice_->Between(0.25, 1, 0.125) : 1;
          const double upper = ys_[r] + Off(10);
          scene_->Fill(xs_[c], upper, xs_[c] + part * (xs_[c + 1] - xs_[c]), ys_[r + 1],
                       dice_->Of(kColors));
        }
      }
    }
  }

  void Texts() {
    const std::size_t header = dice_->Chance(80) ? 1 : dice_->Under(3);
    const bool is_bold = dice_->Chance(50);
    const bool has_labels = dice_->Chance(90);
    const std::size_t numbers = dice_->Chance(80) ? 85 : dice_->Under(100);
    for (std::size_t r = 0; r + 1 < ys_.size(); ++r) {
      for (std::size_t c = 0; c + 1 < xs_.size(); ++c) {
        if (dice_->Chance(8)) {
          continue;
        }
        const bool is_number = r >= header && (c > 0 || !has_labels) && dice_->Chance(numbers);
        for (std::size_t line = 0; line < (is_number ? 1 : lines_[r]); ++line) {
          const double baseline = ys_[r] + 11 + leading_ * static_cast<double>(line) + Off(6);
          Write(c, baseline, dice_->Of(r < header ? kHeads : (is_number ? kNumbers : kLabels)),
                is_number, r < header && is_bold);
        }
      }
    }
  }

  // Tables beside each other, each under headings with rules below them.
  void Panels() {
    const std::size_t count = dice_->Under(3) + 1;
    const std::size_t sections = dice_->Under(2) + 1;
    const std::size_t rows = dice_->Under(4) + 1;
    const double width = dice_->Between(56, 120, 4);
    const double gutter = dice_->Chance(70) ? 20 : dice_->Between(0, 12, 0.5);
    double end = top_;
    for (std::size_t i = 0; i < count; ++i) {
      const double left = 60 + static_cast<double>(i) * (width + gutter);
      double y = top_;
      for (std::size_t section = 0; section < sections; ++section) {
        y = Panel(left, width, y, rows + (dice_->Chance(10) ? 1 : 0)) + 16;
      }
      end = std::max(end, y);
    }
    if (dice_->Chance(10)) {
      const double from = 60 + Off(30);
      const double upper = end - dice_->Between(10, 60, 2);
      scene_->Line(from, upper, 60 + width + gutter + Off(30), end - 30);
    }
    if (dice_->Chance(30)) {
      const double x = dice_->Between(20, 400, 4);
      const double baseline = dice_->Between(top_ - 20, end, 2);
      scene_->Text(x, baseline, dice_->Of(kLabels));
    }
    ys_ = {end};
  }

  // A table whose cells are tagged.
  void Tags() {
    std::uint32_t cell = 0;
    const std::size_t untagged = dice_->Chance(20) ? dice_->Under(90) : 1;
    if (dice_->Chance(30)) {
      scene_->TreeWithTables();
    }
    for (std::size_t r = 0; r + 1 < ys_.size(); ++r) {
      for (std::size_t c = 0; c + 1 < xs_.size(); ++c) {
        const bool is_wide = c + 2 < xs_.size() && dice_->Chance(10);
        ++cell;
        const std::size_t lines = dice_->Chance(15) ? 2 : 1;
        for (std::size_t line = 0; line < lines; ++line) {
          const std::string text = is_wide ? "A wide cell over two columns" : dice_->Of(kLabels);
          const double y = ys_[r] + 11 + 12 * static_cast<double>(line) + Off(8);
          if (dice_->Chance(untagged)) {
            scene_->Text(xs_[c] + 3, y, text);
          } else if (!dice_->Chance(5)) {
            const double x = xs_[c] + 3 + Off(10);
            scene_->TaggedCell(x, y, text, static_cast<std::uint32_t>(r + 1),
                               dice_->Chance(98) ? cell : cell - 1);
          }
        }
        c += is_wide ? 1 : 0;
      }
    }
    if (dice_->Chance(30)) {  // a box to tick
      const double x = xs_[0] + dice_->Between(0, 60, 4);
      const double y = ys_[0] + dice_->Between(0, 20, 4);
      const pdf::Box dot{x, y, x + dice_->Between(2.5, 4, 0.5), y + dice_->Between(2.5, 4, 0.5)};
      scene_->Fill(dot.left, dot.bottom, dot.right, dot.top, {});
      const pdf::Box box{x, y, x + dice_->Between(19.5, 20.5, 0.5),
                         y + dice_->Between(19, 21, 0.5)};
      scene_->Fill(box.left, box.bottom, box.right, box.top, {255, 255, 255});
    }
    for (const double x : xs_) {
      if (dice_->Chance(20)) {
        const double from = x + Off(50);
        scene_->Line(from, ys_.front() + dice_->Between(-8, 60, 4), x, ys_.back());
      }
    }
    for (const double y : ys_) {
      if (dice_->Chance(20)) {
        const double from = xs_.front() + dice_->Between(0, 200, 8);
        scene_->Line(from, y + Off(50), xs_.back(), y);
      }
    }
  }

  // Text above, below or beside it.
  void Others() {
    if (dice_->Chance(20)) {
      const double x = xs_.front() + Off(30);
      const double baseline = ys_.front() - dice_->Between(1, 14, 1);
      scene_->Text(x, baseline, dice_->Of(kProse));
    }
    if (dice_->Chance(20)) {
      const double x = xs_.front() + Off(30);
      const double baseline = ys_.back() + dice_->Between(7, 24, 1);
      scene_->Text(x, baseline, dice_->Of(kProse));
    }
    if (dice_->Chance(15)) {
      const double x = dice_->Between(20, 560, 4);
      scene_->Text(x, dice_->Between(top_, ys_.back(), 2), "other");
    }
    if (dice_->Chance(15)) {
      const std::size_t row = dice_->Under(ys_.size() - 1);
      scene_->Text(xs_[0] + 30, ys_[row] + 11, std::string(dice_->Under(30) + 3, '.'));
    }
  }

  double bottom() const { return ys_.back(); }

 private:
  // Seldom something else than nothing.
  double Off(std::size_t percent) { return dice_->Chance(percent) ? dice_->Of(kOffsets) : 0; }

  // A heading, its rule and rows.
  //   returns where the last row is
  double Panel(double left, double width, double y, std::size_t rows) {
    const double x = left + Off(8);
    double baseline = y - dice_->Between(2, 4, 1);
    baseline += Off(6);
    scene_->Text(x, baseline, dice_->Of(dice_->Chance(95) ? kHeads : kNumbers));
    if (!dice_->Chance(4)) {
      const double from = left + Off(5);
      scene_->Line(from, y, left + width + Off(5), y);
    }
    y += dice_->Chance(90) ? 12 : dice_->Between(12, 50, 1);
    for (std::size_t row = 0; row < rows; ++row) {
      const double indented = left + Off(4);
      scene_->Text(indented, y, dice_->Of(kLabels));
      if (!dice_->Chance(5)) {
        const double end = left + width - 2 + Off(8);
        scene_->RightText(end, y, dice_->Of(kNumbers));
      }
      y += dice_->Chance(92) ? 13 : dice_->Between(8, 50, 1);
    }
    return y;
  }

  // What is along one line, of pieces between the places.
  void Rules(const std::vector<double>& places, double at, bool is_level) {
    const bool is_thick = dice_->Chance(10);
    const double thickness =
        is_thick ? dice_->Between(0.5, 4, 0.5) : dice_->Between(0.125, 1, 0.125);
    const std::size_t missing = dice_->Chance(30) ? 25 : 0;
    const double away = Off(4);
    for (std::size_t i = 0; i + 1 < places.size();) {
      std::size_t end = i + 1;
      while (end + 1 < places.size() && !dice_->Chance(20)) {
        ++end;
      }
      if (!dice_->Chance(missing)) {
        const double from = places[i] + Off(5);
        Rule(from, places[end] + Off(5), at + away, thickness, is_level, is_thick);
        if (dice_->Chance(3)) {
          Rule(places[i], places[end], at + dice_->Of(kOffsets), 0.25, is_level, false);
        }
      }
      i = end;
    }
  }

  void Rule(double from, double to, double at, double thickness, bool is_level, bool is_box) {
    if (is_box && is_level) {
      scene_->Fill(from, at, to, at + thickness, {0, 0, 120});
    } else if (is_box) {
      scene_->Fill(at, from, at + thickness, to, {0, 0, 120});
    } else if (is_level) {
      scene_->Line(from, at, to, at, thickness);
    } else {
      scene_->Line(at, from, at, to, thickness);
    }
  }

  void Write(std::size_t column, double y, const std::string& text, bool is_number, bool is_bold) {
    scene_->OfSize(dice_->Chance(8) ? dice_->Between(6, 14, 2) : TableScene::kSize);
    const double left = xs_[column] + 3 + Off(8);
    if (is_number) {
      scene_->RightText(xs_[column + 1] - 3 + Off(8), y, text);
    } else if (is_bold) {
      scene_->Bold(left, y, text);
    } else if (tagged_ > 0 && dice_->Chance(tagged_)) {
      scene_->TaggedText(left, y, text);
    } else if (dice_->Chance(5)) {
      scene_->Typed(left, y, text);
    } else {
      scene_->Text(left, y, text);
    }
    scene_->OfSize(TableScene::kSize);
  }

  Dice* dice_;
  TableScene* scene_;
  double top_;
  double pitch_ = 0;        // of rows
  double leading_ = 0;      // of lines in a row
  std::size_t tagged_ = 0;  // of a hundred words
  std::vector<double> xs_;
  std::vector<double> ys_;
  std::vector<std::size_t> lines_;  // of each row
};

std::string Places(const std::vector<double>& places) {
  std::string text;
  for (const double place : places) {
    text += (text.empty() ? "" : ",") + ShownNumber(place);
  }
  return text;
}

// The borders of the cells, each as the widths from the top on, with "b" for blue; "-" for none, "."
// for those of the cell before.
std::string Looks(const Table& table) {
  std::string text;
  std::string last = "none";
  for (const TableCell& cell : table.cells) {
    std::string own;
    for (const Border& border : cell.borders) {
      own += (own.empty() ? "" : " ") + ShownNumber(border.width);
      own += border.color == Rgb{} ? "" : "b";
    }
    own = own == "0 0 0 0" ? "" : own;
    own += cell.fill ? " #" + std::to_string(cell.fill->red) : "";
    text += own == last ? "." : (own.empty() ? "-" : "{" + own + "}");
    last = own;
  }
  return text;
}

// Every place of a table is in one cell, and no word is in two.
void ExpectSound(const std::vector<FoundTable>& tables) {
  std::set<std::uint32_t> words;
  for (const FoundTable& found : tables) {
    const Table& table = found.table;
    EXPECT_TRUE(std::is_sorted(table.columns.begin(), table.columns.end()));
    EXPECT_TRUE(std::is_sorted(table.rows.begin(), table.rows.end()));
    std::vector<int> covered((table.rows.size() - 1) * (table.columns.size() - 1));
    for (const TableCell& cell : table.cells) {
      for (std::size_t r = cell.row; r < cell.row + cell.row_span; ++r) {
        for (std::size_t c = cell.column; c < cell.column + cell.column_span; ++c) {
          ++covered.at(r * (table.columns.size() - 1) + c);
        }
      }
    }
    EXPECT_TRUE(std::all_of(covered.begin(), covered.end(), [](int times) { return times == 1; }));
    for (const std::vector<std::uint32_t>& cell : found.words) {
      for (const std::uint32_t word : cell) {
        EXPECT_TRUE(words.insert(word).second);
      }
    }
  }
}

// Each table as its columns, its rows, its cells in words, how they look and how many paths it has.
std::string Found(const TableScene& scene) {
  const std::vector<FoundTable> tables = scene.Tables();
  ExpectSound(tables);
  const std::vector<std::vector<std::string>> cells = scene.Find();
  std::string text;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const Table& table = tables[i].table;
    text += " " + Places(table.columns) + " x " + Places(table.rows) + "\n  ";
    for (const std::string& row : cells[i]) {
      text += row + ";";
    }
    text += table.header_rows > 0 ? " " + std::to_string(table.header_rows) + "!" : "";
    text += table.is_ruled ? "\n  " : " open\n  ";
    text += Looks(table) + " " + std::to_string(tables[i].paths.size());
    text += tables[i].fillers.empty() ? "" : " dots " + std::to_string(tables[i].fillers.size());
    text += "\n";
  }
  for (const pdf::Box& box : scene.RuledText()) {
    text += " ruled text to " + ShownNumber(box.top) + "\n";
  }
  return text.empty() ? " none\n" : text;
}

template <typename Draw>
std::string Scenes(std::uint64_t first, int count, const Draw& draw) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    Dice dice(first + static_cast<std::uint64_t>(i));
    TableScene scene;
    double top = 100;
    for (std::size_t tables = dice.Chance(15) ? 2 : 1; tables > 0; --tables) {
      Sketcher table(dice, scene, top);
      draw(table);
      top = table.bottom() + dice.Between(10, 60, 2);
    }
    text += std::to_string(i + 1) + ":" + Found(scene);
  }
  return text;
}

TEST(RandomTables, AreFoundBetweenRules) {
  EXPECT_TRUE(IsAsExpected("layout/random-ruled.txt", Scenes(1000, 85, [](Sketcher& table) {
                             table.Grid();
                             table.Colors();
                             table.Texts();
                             table.Others();
                           })));
}

TEST(RandomTables, AreFoundBetweenStripes) {
  EXPECT_TRUE(IsAsExpected("layout/random-stripes.txt", Scenes(2000, 110, [](Sketcher& table) {
                             table.Stripes();
                             table.Colors();
                             table.Texts();
                             table.Others();
                           })));
}

TEST(RandomTables, AreNoTablesWhereTagsTellOfNone) {
  std::string text;
  for (std::uint64_t seed = 8000; seed < 8060; ++seed) {
    Dice dice(seed);
    TableScene scene;
    Sketcher table(dice, scene, 100);
    table.TagSome();
    if (dice.Chance(30)) {
      table.Panels();
    } else {
      table.Stripes();
      table.Texts();
    }
    text += std::to_string(seed - 7999) + ":" + Found(scene);
  }
  EXPECT_TRUE(IsAsExpected("layout/random-untold.txt", text));
}

TEST(RandomTables, AreFoundOverFills) {
  EXPECT_TRUE(IsAsExpected("layout/random-fills.txt", Scenes(3000, 80, [](Sketcher& table) {
                             table.Fills();
                             table.Texts();
                             table.Others();
                           })));
}

TEST(RandomTables, AreFoundInTheOpen) {
  EXPECT_TRUE(IsAsExpected("layout/random-open.txt", Scenes(4000, 200, [](Sketcher& table) {
                             table.Texts();
                             table.Others();
                           })));
}

TEST(RandomTables, AreFoundBesideOthers) {
  std::string text;
  for (std::uint64_t seed = 7000; seed < 7060; ++seed) {
    Dice dice(seed);
    TableScene scene;
    double top = 80;
    for (std::size_t tables = dice.Under(2) + 2; tables > 0; --tables) {
      Sketcher table(dice, scene, top);
      const std::size_t kind = dice.Under(4);
      if (kind == 0) {
        table.Grid();
      } else if (kind == 1) {
        table.Stripes();
      } else if (kind == 2) {
        table.Fills();
      }
      table.Texts();
      top = table.bottom() + (dice.Chance(70) ? dice.Between(4, 40, 2) : dice.Between(-60, 4, 2));
    }
    text += std::to_string(seed - 6999) + ":" + Found(scene);
  }
  EXPECT_TRUE(IsAsExpected("layout/random-tables.txt", text));
}

TEST(RandomTables, AreFoundBelowHeadings) {
  EXPECT_TRUE(IsAsExpected("layout/random-panels.txt",
                           Scenes(5000, 170, [](Sketcher& table) { table.Panels(); })));
}

TEST(RandomTables, AreFoundByTags) {
  EXPECT_TRUE(IsAsExpected("layout/random-tagged.txt",
                           Scenes(6000, 160, [](Sketcher& table) { table.Tags(); })));
}

}  // namespace
}  // namespace TarnixTools::engines
