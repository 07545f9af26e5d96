// What is read of pages on which text stands as chance has it: paragraphs of any alignment and look,
// with labels, marks, links, raised letters and large initials, in columns, turned, over and beside
// pictures and drawings.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

#include "engines/support/layout/Dice.h"
#include "engines/support/layout/LayoutDump.h"
#include "engines/support/layout/LayoutSketch.h"
#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::IsAsExpected;

const std::vector<std::u32string> kWords = {
    U"a",   U"An", U"of",  U"words", U"Some", U"1996", U"12.5", U"end.", U"(b)", U"letters,",
    U"x-y", U"it", U"IT.", U"und",   U"co-",  U"$5",   U"“so”", U"é",    U"ﬁne", U"longerword"};
const std::vector<std::u32string> kLabels = {U"•", U"–", U"1.", U"2.", U"(a)", U"ii.", U"A)", U"*"};
const std::vector<std::u32string> kHebrew = {U"אבג", U"דה", U"וזחט", U"12", U"יכל", U"(מ)"};

// A paragraph as it is set.
struct Setting {
  double left = 100;
  double right = 300;
  double size = 10;
  double leading = 12;
  double first_indent = 0;
  int alignment = 0;  // left, right, in the middle, on both sides
  bool is_hebrew = false;
};

class Setter {
 public:
  explicit Setter(Dice& dice) : dice_(&dice) {}

  PageModel Take() { return page_.Take(); }

  // Paragraphs below each other.
  //   returns where the next line would be
  double Column(double left, double right, double y, std::size_t count) {
    Setting setting{.left = left, .right = right};
    for (; count > 0; --count) {
      Change(setting, left);
      if (dice_->Chance(8)) {
        y = WithInitial(setting, y);
      } else {
        y = Paragraph(setting, y);
      }
      y += dice_->Chance(50) ? 0 : dice_->Between(0, 14, 0.5);
    }
    return y;
  }

  // Things that are no text, and text that is not of the flow.
  void Others(double bottom) {
    for (std::size_t count = dice_->Under(3); count > 0; --count) {
      const double x = dice_->Between(40, 320, 4);
      const double y = dice_->Between(60, bottom, 4);
      const pdf::Box box{x, y, x + dice_->Between(4, 100, 4), y + dice_->Between(4, 60, 4)};
      switch (dice_->Under(7)) {
        case 0:
          page_.Image(box);
          break;
        case 1:
          page_.Curve(box);
          break;
        case 2:
          page_.Field(box);
          break;
        case 3:
          page_.Rule({x, y, box.right, y}, dice_->Between(0.25, 2, 0.25));
          break;
        case 4:
          page_.Text(x, y, U"turned",
                     {.direction_x = 0, .direction_y = dice_->Chance(50) ? 1.0 : -1.0});
          break;
        case 5:
          page_.Text(x, y, U"beside");
          break;
        default:
          page_.Text(x, y, U"縦に書く", {.advance = 1, .is_vertical = true});
      }
    }
  }

 private:
  void Change(Setting& setting, double left) {
    if (dice_->Chance(30)) {
      setting.size = dice_->Chance(60) ? 10 : dice_->Between(7, 16, 0.5);
      setting.leading = dice_->Chance(70) ? 1.2 * setting.size : dice_->Between(9, 24, 0.5);
    }
    if (dice_->Chance(30)) {
      setting.first_indent = dice_->Chance(60) ? 0 : dice_->Between(-16, 24, 2);
    }
    if (dice_->Chance(20)) {
      setting.left = left + (dice_->Chance(50) ? 0 : dice_->Between(2, 40, 2));
    }
    if (dice_->Chance(25)) {
      setting.alignment = static_cast<int>(dice_->Under(4));
    }
    setting.is_hebrew = dice_->Chance(6);
  }

  double Paragraph(const Setting& setting, double y, std::size_t lines = 0) {
    lines = lines > 0 ? lines : dice_->Under(4) + 1;
    const std::size_t columns = lines;
    const bool has_label = dice_->Chance(15);
    for (std::size_t i = 0; i < columns; ++i) {
      double left = setting.left + (i == 0 ? setting.first_indent : 0);
      if (has_label && i == 0) {
        page_.Text(left, y, dice_->Of(kLabels), {.size = setting.size});
        left += dice_->Between(8, 24, 1);
      } else if (has_label) {
        left += dice_->Chance(50) ? 0 : 16;
      }
      const double right = i + 1 == lines ? left + (setting.right - left) / 2 : setting.right;
      Line(setting, left, right, y, i + 1 == lines);
      y += setting.leading + (dice_->Chance(5) ? dice_->Between(-2, 6, 0.5) : 0);
    }
    return y;
  }

  // With lines beside a large letter.
  double WithInitial(Setting setting, double y) {
    const std::size_t lines = dice_->Under(3) + 1;
    const double size = dice_->Between(14, 50, 2);
    page_.Text(setting.left, y + setting.leading * static_cast<double>(lines - 1) + Off(20), U"T",
               {.size = size});
    Setting beside = setting;
    beside.left += size / 2 + dice_->Between(0, 4, 1);
    beside.first_indent = 0;
    y = Paragraph(beside, y, lines);
    return Paragraph(setting, y);
  }

  std::u32string Words(const Setting& setting, double room) {
    std::u32string text;
    while (true) {
      const std::u32string& word = dice_->Of(setting.is_hebrew ? kHebrew : kWords);
      if (static_cast<double>(text.size() + 1 + word.size()) * setting.size / 2 > room) {
        return text.empty() ? word : text;
      }
      text += (text.empty() ? U"" : U" ") + word;
    }
  }

  void Line(const Setting& setting, double left, double right, double y, bool is_last) {
    const std::u32string text = Words(setting, right - left);
    const double width = static_cast<double>(text.size()) * setting.size / 2;
    MadeStyle style{.size = setting.size};
    double x = left;
    if (setting.alignment == 1) {
      x = setting.right - width;
    } else if (setting.alignment == 2) {
      x = (setting.left + setting.right - width) / 2;
    } else if (setting.alignment == 3 && !is_last) {
      style.advance = (right - left) / static_cast<double>(text.size()) / setting.size;
    }
    const double letter = style.advance * setting.size;
    double baseline = y + Off(2) / 4;
    std::size_t at = 0;
    while (at < text.size()) {
      MadeStyle own = style;
      const std::size_t end =
          dice_->Chance(75) ? text.size() : std::min(text.size(), text.find(U' ', at + 1));
      own.is_bold = dice_->Chance(12);
      own.is_hidden = dice_->Chance(1);
      if (dice_->Chance(8)) {
        own.color = {200, 0, 0};
      }
      double raise = 0;
      if (end < text.size() && dice_->Chance(12)) {
        own.size = dice_->Between(5, 8, 0.5);
        own.advance = letter / own.size;
        raise = dice_->Between(-5, 3, 0.5);
      }
      page_.Text(x, baseline + raise, text.substr(at, end - at), own);
      if (dice_->Chance(2)) {
        page_.Text(x + dice_->Between(0, 0.5, 0.125), baseline + raise, text.substr(at, end - at),
                   own);
      }
      const double next = x + letter * static_cast<double>(end - at);
      Mark(x, next, baseline);
      x = next + (dice_->Chance(4) ? dice_->Between(1, 30, 0.5) : 0);
      at = end;
    }
  }

  // A rule, a field or a link on a part of a line.
  void Mark(double left, double right, double y) {
    const double from = left + (dice_->Chance(80) ? 0 : dice_->Between(-4, 8, 1));
    const double to = right + (dice_->Chance(80) ? 0 : dice_->Between(-8, 4, 1));
    if (to <= from || dice_->Chance(85)) {
      return;
    }
    switch (dice_->Under(4)) {
      case 0: {
        const double at = y + dice_->Between(0.5, 4, 0.5);
        page_.Rule({from, at, to, at}, dice_->Between(0.25, 2, 0.25));
        break;
      }
      case 1: {
        const double at = y - dice_->Between(1, 6, 0.5);
        page_.Rule({from, at, to, at}, 0.5);
        break;
      }
      case 2:
        page_.Field({from, y - dice_->Between(6, 12, 1), to, y + dice_->Between(0, 5, 1)});
        break;
      default:
        page_.Link({from, y - dice_->Between(4, 12, 1), to, y + dice_->Between(-2, 4, 1)});
    }
  }

  double Off(std::size_t percent) {
    return dice_->Chance(percent) ? dice_->Between(-4, 4, 0.5) : 0;
  }

  Dice* dice_;
  MadePage page_;
};

// Of what the sketch does not show.
std::string Checksum(const std::string& text) {
  std::array<char, 9> digits;
  const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(text.data()), text.size());
  std::snprintf(digits.data(), digits.size(), "%08lx", static_cast<unsigned long>(sum));
  return digits.data();
}

std::string Read(Setter& setter) {
  const PageLayout layout = AnalyzePage(setter.Take());
  return SketchOf(layout) + "\n   " + Checksum(DumpLayout(layout)) + "\n";
}

TEST(RandomPages, OfOneColumnAreRead) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 120; ++seed) {
    Dice dice(seed);
    Setter setter(dice);
    const double right = dice.Between(180, 280, 20);
    setter.Column(100, right, 100, dice.Under(5) + 1);
    text += std::to_string(seed) + ": " + Read(setter);
  }
  EXPECT_TRUE(IsAsExpected("layout/random-paragraphs.txt", text));
}

TEST(RandomPages, OfColumnsAndOtherThingsAreRead) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 90; ++seed) {
    Dice dice(700 + seed);
    Setter setter(dice);
    const double left = setter.Column(60, 170, 100, dice.Under(4) + 2);
    const double right = dice.Chance(50) ? setter.Column(190, 300, 100, dice.Under(4) + 2) : left;
    setter.Others(std::max(left, right));
    text += std::to_string(seed) + ": " + Read(setter);
  }
  EXPECT_TRUE(IsAsExpected("layout/random-pages.txt", text));
}

// Letters each of which stands where chance put it.
void AddLooseLine(Dice& dice, MadePage& page, double x, double y) {
  static const std::vector<std::u32string> kScripts = {
      U"abcdefgh", U"ABC123.,", U"標準文字書体", U"אבגדהוזח", U"a\u0301e\u0308", U"(1).-*"};
  const double size = dice.Chance(60) ? 10 : dice.Between(6, 20, 1);
  const double loose = dice.Chance(30) ? dice.Between(0, 8, 0.25) : 0;
  const std::u32string* script = &dice.Of(kScripts);
  MadeStyle style{.size = size};
  for (std::size_t letters = dice.Under(14) + 2; letters > 0; --letters) {
    script = dice.Chance(90) ? script : &dice.Of(kScripts);
    const std::u32string letter(1, dice.Of(*script));
    MadeStyle own = style;
    own.size = dice.Chance(92) ? size : dice.Between(4, 14, 1);
    own.advance = script == &kScripts[2] ? 1 : 0.5;
    own.is_bold = dice.Chance(4);
    const double baseline = y + (dice.Chance(90) ? 0 : dice.Between(-5, 5, 0.25));
    page.Text(x, baseline, letter, own);
    if (dice.Chance(5)) {  // painted again to look bold, or as a shadow
      const double beside = x + dice.Between(-1, 4, 0.125);
      page.Text(beside, baseline + dice.Between(-1, 1, 0.125), letter, own);
    }
    x += own.advance * own.size + loose;
    if (dice.Chance(25)) {
      if (dice.Chance(50)) {
        page.Text(x, baseline, U" ", own);
      }
      x += dice.Between(-2, 14, 0.25);
    }
  }
}

TEST(RandomPages, OfLooseLettersAreRead) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 400; ++seed) {
    Dice dice(3000 + seed);
    MadePage page;
    double y = 100;
    for (std::size_t lines = dice.Under(4) + 1; lines > 0; --lines) {
      AddLooseLine(dice, page, dice.Chance(70) ? 100 : dice.Between(-6, 140, 2), y);
      y += dice.Chance(60) ? 14 : dice.Between(2, 24, 0.5);
    }
    const PageLayout layout = AnalyzePage(page.Take());
    text +=
        std::to_string(seed) + ": " + SketchOf(layout) + " " + Checksum(DumpLayout(layout)) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("layout/random-letters.txt", text));
}

// Pictures, drawings, rules and fields near each other, with text over and beside them.
TEST(RandomPages, OfDrawingsAreRead) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 450; ++seed) {
    Dice dice(4000 + seed);
    MadePage page;
    double left = dice.Between(60, 300, 4);
    double top = dice.Between(60, 300, 4);
    for (std::size_t things = dice.Under(7) + 1; things > 0; --things) {
      const double width = dice.Between(0.5, dice.Chance(90) ? 120 : 560, 0.5);
      const double height = dice.Between(0.5, dice.Chance(90) ? 90 : 760, 0.5);
      const pdf::Box box{left, top, left + width, top + height};
      const std::size_t kind = dice.Under(8);
      if (kind < 2) {
        page.Image(box);
      } else if (kind < 4) {
        page.Field(box);
      } else if (kind < 5) {
        page.Curve(box);
      } else if (kind < 6) {
        page.Rule({left, top, left + width, top}, dice.Between(0.25, 4, 0.25));
      } else {
        const double x = left + dice.Between(-10, 20, 2);
        const double baseline = top + dice.Between(0, 40, 2);
        page.Text(x, baseline, std::u32string(dice.Under(12) + 1, U'w'));
      }
      left = dice.Chance(50) ? box.right + dice.Between(-4, 6, 0.5) : dice.Between(40, 300, 4);
      top = dice.Chance(70) ? top + dice.Between(-4, 6, 0.5) : dice.Between(40, 500, 4);
    }
    const PageLayout layout = AnalyzePage(page.Take());
    text +=
        std::to_string(seed) + ": " + SketchOf(layout) + " " + Checksum(DumpLayout(layout)) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("layout/random-drawings.txt", text));
}

// A cell with a few things in it, one below the other.
void FillCell(Dice& dice, MadePage& page, const pdf::Box& cell) {
  double y = cell.bottom + dice.Between(8, 14, 1);
  for (std::size_t things = dice.Under(3); things > 0; --things) {
    const double x = cell.left + dice.Between(2, 30, 2);
    const double width = dice.Between(8, 60, 4);
    const double height = dice.Between(6, 30, 2);
    const pdf::Box box{x, y - 8, x + width, y - 8 + height};
    const std::size_t kind = dice.Under(9);
    if (kind < 3) {
      page.Text(x, y, std::u32string(dice.Under(8) + 1, U'w'));
    } else if (kind < 4) {
      page.Image(box);
    } else if (kind < 5) {
      page.Curve(box);
    } else if (kind < 6) {
      page.Field(box);
    } else if (kind < 7) {
      page.Text(x + 20, y + 30, U"up", {.direction_x = 0, .direction_y = -1});
    } else if (kind < 8) {
      page.Text(x + 20, y, U"down", {.direction_x = 0, .direction_y = 1});
    } else {
      page.Text(x, y, U"גב");
    }
    y += dice.Between(4, 30, 2);
  }
}

TEST(RandomPages, OfThingsInCellsAreRead) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 220; ++seed) {
    Dice dice(5000 + seed);
    MadePage page;
    const double width = dice.Between(60, 120, 10);
    const double height = dice.Between(30, 70, 5);
    for (const double i : {0.0, 1.0, 2.0}) {
      page.Rule({100 + i * width, 100, 100 + i * width, 100 + 2 * height}, 0.5);
      page.Rule({100, 100 + i * height, 100 + 2 * width, 100 + i * height}, 0.5);
    }
    for (const double row : {0.0, 1.0}) {
      for (const double column : {0.0, 1.0}) {
        const double left = 100 + column * width;
        const double top = 100 + row * height;
        if (dice.Chance(80)) {
          page.Text(left + 3, top + 11, U"word");
        }
        FillCell(dice, page, {left, top, left + width, top + height});
      }
    }
    const PageLayout layout = AnalyzePage(page.Take());
    text +=
        std::to_string(seed) + ": " + SketchOf(layout) + " " + Checksum(DumpLayout(layout)) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("layout/random-cells.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
