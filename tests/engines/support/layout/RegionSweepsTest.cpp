// From where on things of a page are other columns, other bands, pictures, drawings or what lies
// behind text: every bound found by moving things past it.
#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/layout/LayoutSketch.h"
#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::IsAsExpected;

// Of letters that are there several times, one and their number.
std::string Shortened(const std::string& text) {
  std::string shortened;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t end = std::min(text.find_first_not_of(text[i], i), text.size());
    shortened += text[i];
    shortened += end - i > 2 ? std::to_string(end - i) : std::string(end - i - 1, text[i]);
    i = end;
  }
  return shortened;
}

std::string Shown(MadePage& page) {
  return Shortened(SketchOf(AnalyzePage(page.Take())));
}

struct Columns {
  double gutter = 20;
  int left = 6;  // lines
  int right = 6;
  std::size_t left_letters = 30;
  std::size_t right_letters = 30;
  double right_y = 100;
  double above = 70;  // the baseline of a line over both
  double below = 190;
  double tail = 0;  // the baseline of lines below the left column; 0 for none
};

MadePage PageOf(const Columns& made) {
  MadePage page;
  page.Text(100, made.above, U"one line over all of the width of both columns");
  for (int i = 0; i < made.left; ++i) {
    page.Text(100, 100 + 12 * i, std::u32string(made.left_letters, U'l'));
  }
  const double right = 100 + 5 * static_cast<double>(made.left_letters) + made.gutter;
  for (int i = 0; i < made.right; ++i) {
    page.Text(right, made.right_y + 12 * i, std::u32string(made.right_letters, U'r'));
  }
  if (made.tail > 0) {
    page.Text(100, made.tail, U"tail").Text(100, made.tail + 12, U"tail");
  }
  page.Text(100, made.below, U"another line over all of the width of both columns");
  return page;
}

std::string Sketched(const Columns& made) {
  MadePage page = PageOf(made);
  return Shown(page);
}

std::string Bands() {
  std::string text;
  text += Sweep("the gutter between two columns", 2, 24, 0.25,
                [](double gutter) { return Sketched({.gutter = gutter}); });
  text += Sweep("lines of the right column", 0, 10, 1,
                [](double lines) { return Sketched({.right = static_cast<int>(lines)}); });
  text += Sweep("lines of the left column", 0, 10, 1,
                [](double lines) { return Sketched({.left = static_cast<int>(lines)}); });
  text += Sweep("letters of the lines on the right", 1, 16, 1, [](double letters) {
    return Sketched({.right_letters = static_cast<std::size_t>(letters)});
  });
  text += Sweep("letters of the lines on the left", 1, 16, 1, [](double letters) {
    return Sketched({.left_letters = static_cast<std::size_t>(letters)});
  });
  text += Sweep("where the right column begins", 80, 200, 1, [](double y) {
    return Sketched({.left = 9, .right = 3, .right_y = y, .below = 250});
  });
  text += Sweep("where the line above the columns is", 70, 100, 0.25,
                [](double y) { return Sketched({.above = y}); });
  text += Sweep("where the line below the columns is", 160, 200, 0.25,
                [](double y) { return Sketched({.below = y}); });
  text += Sweep("where lines below the left column begin", 166, 210, 0.5,
                [](double y) { return Sketched({.below = 240, .tail = y}); });
  text += Sweep("how many columns there are", 1, 8, 1, [](double count) {
    MadePage page;
    for (int i = 0; i < 4 * count; ++i) {
      page.Text(20 + 70 * (i / 4), 100 + 12 * (i % 4), U"elevenlette");
    }
    return Shown(page);
  });
  text += Sweep("columns that go on below a gap", 150, 260, 2, [](double y) {
    MadePage page;
    for (int i = 0; i < 4; ++i) {
      page.Text(100, 100 + 12 * i, U"on the left side")
          .Text(250, 100 + 12 * i, U"on the right one");
      page.Text(100, y + 12 * i, U"below on the left").Text(260, y + 12 * i, U"below on the right");
    }
    return Shown(page);
  });
  text += Sweep("a number beside one of two columns", 20, 420, 4, [](double x) {
    MadePage page = PageOf({});
    return Shown(page.Text(x, 130, U"7"));
  });
  text += Sweep("columns of lines from the right", 0, 6, 1, [](double lines) {
    MadePage page;
    for (int i = 0; i < 6; ++i) {
      page.Text(100, 100 + 12 * i, i < lines ? U"אבגדהוזחטיכ" : U"letters of latin");
      page.Text(250, 100 + 12 * i, i < lines ? U"מנסעפצקרשתא" : U"letters of right");
    }
    return Shown(page);
  });
  return text;
}

TEST(RegionSweeps, CutBands) {
  EXPECT_TRUE(IsAsExpected("layout/bands.txt", Bands()));
}

std::string Pictures() {
  std::string text;
  text += Sweep("how large a picture is", 0.5, 30, 0.25, [](double side) {
    MadePage page;
    return Shown(page.Text(100, 100, U"text").Image({200, 200, 200 + side, 200 + side}));
  });
  text += Sweep("how much of the page a picture covers", 480, 800, 4, [](double height) {
    MadePage page;
    return Shown(page.Text(100, 20, U"text").Image({0, 0, 600, height}));
  });
  text += Sweep("how far parts of a picture are apart", -2, 4, 0.125, [](double gap) {
    MadePage page;
    page.Text(100, 100, U"text").Image({200, 200, 260, 260});
    return Shown(page.Image({260 + gap, 200, 300, 260}));
  });
  const auto beside_table = [](double left) {
    MadePage page;
    for (const double x : {100.0, 200.0, 300.0}) {
      page.Rule({x, 100, x, 180}, 0.5);
    }
    for (const double y : {100.0, 140.0, 180.0}) {
      page.Rule({100, y, 300, y}, 0.5);
    }
    page.Text(104, 112, U"one")
        .Text(204, 112, U"two")
        .Text(104, 152, U"six")
        .Text(204, 152, U"ten");
    return Shown(page.Image({left, 120, left + 20, 136}));
  };
  text += Sweep("how far a picture stands out of a table", 276, 304, 0.5, beside_table);
  text += Sweep("how far a picture is in another cell", 176, 204, 0.5, beside_table);
  text += Sweep("the baseline of a word beside a drawing in a cell", 100, 150, 0.5, [](double y) {
    MadePage page;
    for (const double x : {100.0, 200.0, 300.0}) {
      page.Rule({x, 100, x, 260}, 0.5);
    }
    for (const double at : {100.0, 180.0, 260.0}) {
      page.Rule({100, at, 300, at}, 0.5);
    }
    page.Text(204, 112, U"two").Text(104, 192, U"six").Text(204, 192, U"ten");
    return Shown(page.Curve({110, 110, 150, 130}).Text(154, y, U"one"));
  });
  text += Sweep("words over a picture", 20, 30, 1, [](double words) {
    MadePage page;
    page.Image({100, 100, 500, 400});
    for (int i = 0; i < words; ++i) {
      page.Text(120 + 90 * (i % 4), 120 + 30 * (i / 4), U"word");
    }
    return Shown(page);
  });
  text += Sweep("the width of a line over a picture", 4, 60, 1, [](double letters) {
    MadePage page;
    page.Image({100, 100, 400, 300});
    return Shown(page.Text(110, 200, std::u32string(static_cast<std::size_t>(letters), U'x')));
  });
  text += Sweep("how high a line stands over a picture", 90, 110, 0.25, [](double y) {
    MadePage page;
    return Shown(page.Image({100, 100, 400, 300}).Text(110, y, U"label"));
  });
  text += Sweep("how far apart labels are", 8, 24, 0.25, [](double pitch) {
    MadePage page;
    page.Image({100, 100, 400, 300}).Text(110, 150, U"one");
    return Shown(page.Text(110, 150 + pitch, U"two"));
  });
  return text;
}

TEST(RegionSweeps, PlacePictures) {
  EXPECT_TRUE(IsAsExpected("layout/pictures.txt", Pictures()));
}

std::string Drawings() {
  std::string text;
  text += Sweep("how large a drawing is", 0.5, 40, 0.5, [](double side) {
    MadePage page;
    return Shown(page.Text(100, 100, U"text").Curve({200, 200, 200 + side, 200 + side}));
  });
  text += Sweep("how high a field is", 0.5, 40, 0.5, [](double height) {
    MadePage page;
    return Shown(page.Text(100, 100, U"text").Field({200, 200, 300, 200 + height}));
  });
  text += Sweep("how wide a field is", 0.5, 40, 0.5, [](double width) {
    MadePage page;
    return Shown(page.Text(100, 100, U"text").Field({200, 200, 200 + width, 300}));
  });
  text += Sweep("how far the parts of a drawing are apart", -2, 10, 0.125, [](double gap) {
    MadePage page;
    page.Text(100, 100, U"text").Curve({200, 200, 260, 260});
    return Shown(page.Curve({200, 260 + gap, 260, 330}));
  });
  text += Sweep("how much of the page a field covers", 480, 800, 4, [](double height) {
    MadePage page;
    return Shown(page.Text(100, 20, U"text").Field({0, 0, 600, height}));
  });
  text += Sweep("how far a field reaches beyond the page", 590, 620, 0.5, [](double x) {
    MadePage page;
    return Shown(page.Text(100, 20, U"text").Field({x, 100, x + 40, 140}));
  });
  text += Sweep("lines of text over a curve", 0, 20, 1, [](double lines) {
    MadePage page;
    page.Curve({100, 100, 300, 400});
    for (int i = 0; i < lines; ++i) {
      page.Text(110, 120 + 13 * i, U"a few words");
    }
    return Shown(page);
  });
  text += Sweep("fields behind lines of text", 1, 14, 1, [](double fields) {
    MadePage page;
    for (int i = 0; i < fields; ++i) {
      page.Field({100, 100 + 20.0 * i, 300, 118 + 20.0 * i});
    }
    for (int i = 0; i < 4; ++i) {
      page.Text(110, 114 + 20 * i, U"a few");
    }
    return Shown(page);
  });
  text += Sweep("words in wide lines over a curve", 20, 30, 1, [](double words) {
    MadePage page;
    page.Curve({100, 100, 600, 500});
    for (int i = 0; i < words; ++i) {
      page.Text(110 + 30 * (i % 13), 300 + 30 * (i / 13), U"words");
    }
    return Shown(page);
  });
  text += Sweep("where text stands over a field", 80, 330, 2, [](double y) {
    MadePage page;
    return Shown(page.Field({100, 100, 400, 300}).Text(110, y, U"some text over it"));
  });
  text += Sweep("how far turned texts are apart", 4, 24, 0.25, [](double gap) {
    MadePage page;
    const MadeStyle up{.direction_x = 0, .direction_y = -1};
    return Shown(page.Text(300, 400, U"upwards", up).Text(300 + gap, 400, U"beside", up));
  });
  text += Sweep("how far lines downwards are apart", 8, 60, 0.5, [](double gap) {
    MadePage page;
    const MadeStyle down{.advance = 1, .is_vertical = true};
    page.Text(500, 200, U"縦に書く行", down);
    return Shown(page.Text(500 - gap, 200, U"続いている", down));
  });
  return text;
}

TEST(RegionSweeps, PlaceDrawings) {
  EXPECT_TRUE(IsAsExpected("layout/drawings.txt", Drawings()));
}

}  // namespace
}  // namespace TarnixTools::engines
