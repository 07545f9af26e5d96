// From where on glyphs are other words, other lines, raised text, underlined text: every bound of
// the analysis of text, found by moving things past it.
#include <cmath>

#include <gtest/gtest.h>

#include "engines/support/layout/LayoutSketch.h"
#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::IsAsExpected;

constexpr double kFine = 1.0 / 16;  // points

std::string Shown(MadePage& page) {
  return SketchOf(AnalyzePage(page.Take()));
}

// Three words, the last one of which stands this far behind the second one.
std::string WithGap(std::u32string_view first, std::u32string_view last, double gap,
                    MadeStyle style = {}) {
  MadePage page;
  const auto length = static_cast<double>(first.size());
  page.Text(100, 100, first, style);
  return Shown(page.Text(100 + length * style.advance * style.size + gap, 100, last, style));
}

std::string Gaps() {
  std::string text;
  text += Sweep("a gap between letters of ten points", -6, 30, kFine,
                [](double gap) { return WithGap(U"ab", U"cd", gap); });
  text += Sweep("a gap in a row with spaces", -2, 30, kFine,
                [](double gap) { return WithGap(U"ab cd ef", U"gh", gap); });
  text += Sweep("a gap behind a space", -6, 26, kFine,
                [](double gap) { return WithGap(U"abcd ", U"ef", gap); });
  text += Sweep("a gap between ideographs", -2, 30, kFine,
                [](double gap) { return WithGap(U"標準標準", U"標準", gap, {.advance = 1}); });
  text += Sweep("a gap between an ideograph and a letter", -2, 10, kFine,
                [](double gap) { return WithGap(U"標準標準", U"ab", gap, {.advance = 1}); });
  text += Sweep("letters that are spaced out", 0, 8, kFine, [](double gap) {
    MadePage page;
    for (int i = 0; i < 6; ++i) {
      page.Text(100 + (5 + gap) * i + (i > 2 ? 2 : 0), 100, i == 2 ? U"c" : U"a");
    }
    return Shown(page);
  });
  text += Sweep("a gap in a row of wide gaps", 8, 40, kFine, [](double gap) {
    MadePage page;
    page.Text(100, 100, U"ab").Text(118, 100, U"cd").Text(136, 100, U"ef");
    return Shown(page.Text(146 + gap, 100, U"gh"));
  });
  text += Sweep("text of another size in the line", 2, 24, 0.25, [](double size) {
    MadePage page;
    page.Text(100, 100, U"ab cd");
    return Shown(page.Text(128, 100, U"ef", {.size = size}));
  });
  return text;
}

TEST(TextSweeps, CutRowsIntoWordsAndLines) {
  EXPECT_TRUE(IsAsExpected("layout/gaps.txt", Gaps()));
}

std::string Raised() {
  std::string text;
  for (const double size : {5.0, 8.5, 9.0}) {
    const std::string of_size = " of " + std::to_string(size).substr(0, 3) + " points";
    text += Sweep("the height above the baseline of a number" + of_size, -10, 12, kFine,
                  [size](double above) {
                    MadePage page;
                    page.Text(100, 100, U"Some text").Text(145, 100 - above, U"12", {.size = size});
                    return Shown(page.Text(150 + size, 100, U"and more"));
                  });
  }
  text += Sweep("how large a raised number is", 2, 12, kFine, [](double size) {
    MadePage page;
    page.Text(100, 100, U"Some text").Text(145, 96, U"12", {.size = size});
    return Shown(page);
  });
  text += Sweep("how far a raised number stands behind its text", -8, 8, kFine, [](double gap) {
    MadePage page;
    page.Text(100, 100, U"Some text").Text(145 + gap, 95, U"12", {.size = 6});
    return Shown(page);
  });
  text += Sweep("how far a raised number stands before its text", -8, 8, kFine, [](double gap) {
    MadePage page;
    page.Text(114 + gap, 100, U"Some text").Text(108, 95, U"12", {.size = 6});
    return Shown(page);
  });
  text += Sweep("how far the parts of raised text stand apart", -2, 6, kFine, [](double gap) {
    MadePage page;
    page.Text(100, 100, U"Some text").Text(145, 95, U"12", {.size = 6});
    return Shown(page.Text(151 + gap, 95, U"34", {.size = 6}));
  });
  text += Sweep("how much larger the second part of raised text is", 5, 7, kFine, [](double size) {
    MadePage page;
    page.Text(100, 100, U"Some text").Text(145, 95, U"12", {.size = 6});
    return Shown(page.Text(151, 95, U"34", {.size = size}));
  });
  text += Sweep("how many letters are raised", 12, 20, 1, [](double count) {
    MadePage page;
    page.Text(100, 100, U"Some text");
    return Shown(
        page.Text(145, 95, std::u32string(static_cast<std::size_t>(count), U'1'), {.size = 6}));
  });
  return text;
}

TEST(TextSweeps, RaiseText) {
  EXPECT_TRUE(IsAsExpected("layout/raised.txt", Raised()));
}

std::string Placed() {
  std::string text;
  text += Sweep("the baseline of a word beside others", 96, 104, kFine, [](double y) {
    MadePage page;
    return Shown(page.Text(100, 100, U"one").Text(120, y, U"two").Text(140, 100, U"three"));
  });
  text += Sweep("the baseline of a word beside smaller ones", 96, 104, kFine, [](double y) {
    MadePage page;
    page.Text(100, 100, U"one", {.size = 6});
    return Shown(page.Text(120, y, U"two").Text(140, 100, U"three"));
  });
  text += Sweep("a text painted twice, to the right", 0, 6, kFine, [](double x) {
    MadePage page;
    page.Text(100, 100, U"abc");
    PageModel model = page.Text(100 + x, 100, U"abc").Take();
    const PageLayout layout = AnalyzePage(model);
    return SketchOf(layout) + (layout.looks.at(0).face->is_bold ? " bold" : "");
  });
  text += Sweep("a text painted twice, below", 0, 3, kFine, [](double y) {
    MadePage page;
    page.Text(100, 100, U"abc");
    PageModel model = page.Text(100, 100 + y, U"abc").Take();
    const PageLayout layout = AnalyzePage(model);
    return SketchOf(layout) + (layout.looks.at(0).face->is_bold ? " bold" : "");
  });
  text += Sweep("a text over another one", -30, 30, 0.5, [](double x) {
    MadePage page;
    page.Text(100, 100, U"abcd");
    return Shown(page.Text(100 + x, 100, U"WXYZ"));
  });
  text += Sweep("a text beyond the left edge", -20, 4, 0.25, [](double x) {
    MadePage page;
    return Shown(page.Text(x, 100, U"abcd").Text(100, 200, U"all"));
  });
  text += Sweep("a text beyond the right edge", 580, 610, 0.25, [](double x) {
    MadePage page;
    return Shown(page.Text(x, 100, U"abcd").Text(100, 200, U"all"));
  });
  text += Sweep("a text above the page", -6, 2, 0.25, [](double y) {
    MadePage page;
    return Shown(page.Text(100, y, U"abcd").Text(100, 200, U"all"));
  });
  text += Sweep("a text below the page", 796, 810, 0.25, [](double y) {
    MadePage page;
    return Shown(page.Text(100, y, U"abcd").Text(100, 200, U"all"));
  });
  const auto turned = [](double x, double y, double direction) {
    MadePage page;
    return Shown(page.Text(x, y, U"abcd", {.direction_x = 0, .direction_y = direction}));
  };
  text += Sweep("a text downwards above the page", -30, 4, 0.25,
                [&](double y) { return turned(100, y, 1); });
  text += Sweep("a text downwards below the page", 780, 810, 0.25,
                [&](double y) { return turned(100, y, 1); });
  text += Sweep("a text upwards below the page", 796, 830, 0.25,
                [&](double y) { return turned(100, y, -1); });
  text += Sweep("a text downwards beyond the right edge", 590, 606, 0.25,
                [&](double x) { return turned(x, 100, 1); });
  text += Sweep("degrees by which text is turned", -360, 360, 1, [](double degrees) {
    MadePage page;
    const double angle = degrees / 57.29577951308232;
    return Shown(page.Text(300, 400, U"abcd ef",
                           {.direction_x = std::cos(angle), .direction_y = std::sin(angle)}));
  });
  return text;
}

TEST(TextSweeps, PutGlyphsInRows) {
  EXPECT_TRUE(IsAsExpected("layout/places.txt", Placed()));
}

std::string Marks() {
  std::string text;
  const auto with_rule = [](pdf::Box box, double width) {
    MadePage page;
    page.Text(100, 100, U"some words of text").Rule(box, width);
    return Shown(page);
  };
  text += Sweep("the height of a rule against the baseline", 92, 106, kFine, [&](double y) {
    return with_rule({100, y, 190, y}, 0.5);
  });
  text += Sweep("the width of a rule below text", 0.25, 4, kFine, [&](double width) {
    return with_rule({100, 101, 190, 101}, width);
  });
  text += Sweep("where a rule below text begins", 90, 160, 0.25, [&](double left) {
    return with_rule({left, 101, 190, 101}, 0.5);
  });
  text += Sweep("where a rule below text ends", 101, 200, 0.25, [&](double right) {
    return with_rule({100, 101, right, 101}, 0.5);
  });
  const auto with_fill = [](pdf::Box box) {
    MadePage page;
    page.Text(100, 100, U"some words of text").Field(box);
    return Shown(page);
  };
  text += Sweep("the height of a fill behind text", 4, 20, 0.25, [&](double height) {
    return with_fill({100, 102 - height, 190, 102});
  });
  text += Sweep("the upper edge of a fill behind text", 84, 100, 0.25, [&](double y) {
    return with_fill({100, y, 190, y + 12});
  });
  text += Sweep("where a fill behind text begins", 90, 160, 0.5, [&](double left) {
    return with_fill({left, 91, 190, 103});
  });
  text += Sweep("how long a fill behind text is", 0.5, 8, 0.25, [&](double width) {
    return with_fill({100, 91, 100 + width, 103});
  });
  return text;
}

TEST(TextSweeps, MarkWords) {
  EXPECT_TRUE(IsAsExpected("layout/marks.txt", Marks()));
}

struct LetterCase {
  double x = 100;
  double y = 124;
  double size = 38;
  double lines_x = 130;
  double pitch = 12;
  double below_x = 100;
  double second_x = 130;
  double second_size = 10;
  std::u32string_view text = U"nce upon a time there was";
};

// A letter beside three lines, and a line below it.
std::string WithLetter(const LetterCase& made) {
  MadePage page;
  page.Text(made.x, made.y, U"O", {.size = made.size, .advance = 0.72});
  page.Text(made.lines_x, 100, made.text);
  page.Text(made.second_x, 100 + made.pitch, U"a letter that was as large",
            {.size = made.second_size});
  page.Text(made.lines_x, 100 + 2 * made.pitch, U"as all of the three lines");
  page.Text(made.below_x, 100 + 3 * made.pitch, U"and went on below of it as text does");
  return Shown(page);
}

std::string Initials() {
  std::string text;
  text += Sweep("how large the letter is", 12, 60, 0.5,
                [](double size) { return WithLetter({.size = size}); });
  text +=
      Sweep("where the letter begins", 84, 124, 0.5, [](double x) { return WithLetter({.x = x}); });
  text += Sweep("the baseline of the letter", 96, 140, 0.25,
                [](double y) { return WithLetter({.y = y}); });
  text += Sweep("from line to line", 4, 30, 0.25, [](double pitch) {
    return WithLetter({.y = 100 + 2 * pitch, .size = 10 + 2 * pitch, .pitch = pitch});
  });
  text += Sweep("where the second line begins", 110, 150, 0.25,
                [](double x) { return WithLetter({.second_x = x}); });
  text += Sweep("how large the second line is", 6, 18, 0.125,
                [](double size) { return WithLetter({.second_size = size}); });
  text += Sweep("where the line below begins", 80, 130, 0.5,
                [](double x) { return WithLetter({.below_x = x}); });
  return text;
}

TEST(TextSweeps, FindInitials) {
  EXPECT_TRUE(IsAsExpected("layout/initials.txt", Initials()));
}

std::string Gutters() {
  std::string text;
  const auto rows = [](int count, double gap, double pitch, int closed) {
    MadePage page;
    for (int i = 0; i < count; ++i) {
      const double y = 100 + pitch * i;
      page.Text(100, y, U"words on the left");
      page.Text(i == closed ? 187 : 185 + gap, y, U"words on the right");
    }
    return Shown(page);
  };
  text += Sweep("rows with a gap of six points at one place", 1, 9, 1,
                [&](double count) { return rows(static_cast<int>(count), 6, 12, -1); });
  text += Sweep("the gap of eight rows", 2, 12, kFine,
                [&](double gap) { return rows(8, gap, 12, -1); });
  text += Sweep("from row to row", 8, 30, 0.5, [&](double pitch) { return rows(6, 6, pitch, -1); });
  text += Sweep("the row that closes the gap", 0, 10, 1,
                [&](double closed) { return rows(10, 6, 12, static_cast<int>(closed)); });
  return text;
}

TEST(TextSweeps, CutAtGutters) {
  EXPECT_TRUE(IsAsExpected("layout/gutters.txt", Gutters()));
}

}  // namespace
}  // namespace TarnixTools::engines
