// From where on text is a table, and how it is cut into rows and cells: every bound of the search for
// tables, found by moving things past it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/LayoutSketch.h"
#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/tables/TableScene.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::IsAsExpected;

// The cells of all tables of a scene in words, and the edges of their columns and rows in points.
std::string Found(const TableScene& scene) {
  return scene.TablesText() + (scene.RuledText().empty() ? "" : "ruled text");
}

TableScene& Cells(TableScene& scene, const std::vector<std::vector<std::string>>& rows,
                  double left = 105, double top = 113, double width = 100, double pitch = 18) {
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < rows[r].size(); ++c) {
      scene.Text(left + width * static_cast<double>(c), top + pitch * static_cast<double>(r),
                 rows[r][c]);
    }
  }
  return scene;
}

const std::vector<std::vector<std::string>> kWords = {
    {"name", "kind", "size"}, {"one", "big", "12"}, {"two", "small", "34"}, {"six", "flat", "56"}};
const std::vector<double> kXs = {100, 200, 300, 400};
const std::vector<double> kYs = {100, 118, 136, 154, 172};

std::string Ruled() {
  std::string text;
  const auto grid_with = [](auto add) {
    TableScene scene;
    scene.Grid(kXs, kYs);
    Cells(scene, kWords);
    add(scene);
    return Found(scene);
  };
  text += Sweep("where the rules of a grid end on the right", 196, 404, 1, [](double x) {
    TableScene scene;
    for (const double y : kYs) {
      scene.Line(100, y, x, y);
    }
    for (const double left : kXs) {
      scene.Line(left, 100, left, 172);
    }
    return Found(Cells(scene, kWords));
  });
  text += Sweep("where the upright rule between two columns ends", 100, 172, 1, [](double y) {
    TableScene scene;
    for (const double x : {100.0, 300.0, 400.0}) {
      scene.Line(x, 100, x, 172);
    }
    for (const double own : kYs) {
      scene.Line(100, own, 400, own);
    }
    return Found(Cells(scene.Line(200, 100, 200, y), kWords));
  });
  text += Sweep("where the rule between two rows ends", 100, 400, 2, [](double x) {
    TableScene scene;
    for (const double left : kXs) {
      scene.Line(left, 100, left, 172);
    }
    for (const double own : {100.0, 118.0, 154.0, 172.0}) {
      scene.Line(100, own, 400, own);
    }
    return Found(Cells(scene.Line(100, 136, x, 136), kWords));
  });
  text += Sweep("how far the parts of a dashed rule are apart", 0.5, 6, 0.125, [](double gap) {
    TableScene scene;
    for (const double x : kXs) {
      scene.Line(x, 100, x, 172);
    }
    for (const double y : {100.0, 118.0, 136.0, 154.0}) {
      scene.Line(100, y, 400, y);
    }
    for (double x = 100; x < 400; x += 8 + gap) {
      scene.Line(x, 172, std::min(x + 8, 400.0), 172);
    }
    return Found(Cells(scene, kWords));
  });
  text += Sweep("how far a rule and its second one are apart", 0.5, 12, 0.25, [&](double apart) {
    return grid_with(
        [apart](TableScene& scene) { scene.Line(100, 136 + apart, 400, 136 + apart); });
  });
  text += Sweep("how thick boxes are that are rules", 0.5, 6, 0.25, [](double thick) {
    TableScene scene;
    for (const double x : kXs) {
      scene.Fill(x, 100, x + thick, 172, {});
    }
    for (const double y : kYs) {
      scene.Fill(100, y, 400, y + thick, {});
    }
    return Found(Cells(scene, kWords));
  });
  text += Sweep("how far upright rules stay off the level ones", -1, 8, 0.25, [](double gap) {
    TableScene scene;
    for (const double y : kYs) {
      scene.Line(100, y, 400, y);
    }
    for (const double x : kXs) {
      for (const double y : {100.0, 118.0, 136.0, 154.0}) {
        scene.Line(x, y + gap, x, y + 18 - gap);
      }
    }
    return Found(Cells(scene, kWords));
  });
  text += Sweep("how far the text of a cell stands out of the table", 60, 120, 1, [](double x) {
    TableScene scene;
    scene.Grid(kXs, kYs);
    Cells(scene, kWords);
    return Found(scene.Text(x, 131, "outer"));
  });
  text += Sweep("how many cells of a grid have words", 0, 12, 1, [](double count) {
    TableScene scene;
    scene.Grid(kXs, kYs);
    for (int i = 0; i < count; ++i) {
      scene.Text(105 + 100 * (i % 3), 113 + 18 * (i / 3), "word");
    }
    return Found(scene);
  });
  text += Sweep("words in each cell of a grid", 1, 40, 1, [](double count) {
    TableScene scene;
    scene.Grid({100, 300, 500}, {100, 200, 300});
    for (const double x : {102.0, 302.0}) {
      for (const double y : {110.0, 210.0}) {
        for (int i = 0; i < count; ++i) {
          scene.Text(x + 22 * (i % 8), y + 14 * (i / 8), "word");
        }
      }
    }
    return Found(scene).substr(0, 10);
  });
  text += Sweep("where an upright rule cuts words", 100, 200, 1, [&](double x) {
    return grid_with([x](TableScene& scene) { scene.Line(x, 100, x, 172); });
  });
  text += Sweep("lines of text within one row of rules", 1, 6, 1, [](double lines) {
    TableScene scene;
    scene.Grid({100, 200, 300}, {100, 118, 118 + 14 * lines});
    scene.Text(105, 113, "name").Text(205, 113, "size");
    for (int i = 0; i < lines; ++i) {
      scene.Text(105, 129 + 14 * i, "label").Text(205, 129 + 14 * i, std::to_string(10 + i));
    }
    return Found(scene);
  });
  return text;
}

TEST(TableSweeps, FindRuledTables) {
  EXPECT_TRUE(IsAsExpected("layout/ruled-tables.txt", Ruled()));
}

std::string Open() {
  std::string text;
  const auto striped = [](const std::vector<std::vector<std::string>>& rows, double pitch,
                          double below) {
    TableScene scene;
    scene.Line(100, 100, 400, 100).Line(100, 118, 400, 118).Line(100, below, 400, below);
    return Found(Cells(scene, rows, 105, 113, 100, pitch));
  };
  text += Sweep("from row to row between two rules", 8, 40, 0.5,
                [&](double pitch) { return striped(kWords, pitch, 300); });
  text += Sweep("where the last rule is", 110, 260, 1,
                [&](double y) { return striped(kWords, 18, y); });
  text += Sweep("how much longer the last rule is", -20, 20, 0.5, [](double longer) {
    TableScene scene;
    scene.Line(100, 100, 400, 100).Line(100, 118, 400, 118).Line(100, 175, 400 + longer, 175);
    return Found(Cells(scene, kWords));
  });
  text += Sweep("how far below the last rule a shorter one is", -4, 4, 0.25, [](double below) {
    TableScene scene;
    scene.Line(100, 100, 400, 100).Line(100, 118, 400, 118).Line(100, 175, 400, 175);
    scene.Line(100, 175 + below, 200, 175 + below, 2);
    Cells(scene, kWords);
    std::string rows;
    for (const FoundTable& found : scene.Tables()) {
      for (const double row : found.table.rows) {
        rows += std::to_string(row).substr(0, 6) + " ";
      }
      rows += std::to_string(found.table.cells[9].borders[2].width).substr(0, 3);
    }
    return rows;
  });
  text += Sweep("how long the rules are", 10, 340, 5, [](double length) {
    TableScene scene;
    scene.Line(100, 100, 100 + length, 100).Line(100, 118, 100 + length, 118);
    return Found(Cells(scene.Line(100, 175, 100 + length, 175), kWords));
  });
  text += Sweep("how far columns of words are apart", 1, 40, 0.5, [](double gap) {
    TableScene scene;
    scene.Line(100, 100, 400, 100).Line(100, 118, 400, 118).Line(100, 175, 400, 175);
    return Found(
        Cells(scene, {{"name", "kind"}, {"ones", "bigs"}, {"twos", "flat"}}, 105, 113, 20 + gap));
  });
  text += Sweep("how far columns of numbers are apart", 1, 20, 0.25, [](double gap) {
    TableScene scene;
    scene.Line(100, 100, 400, 100).Line(100, 118, 400, 118).Line(100, 175, 400, 175);
    return Found(
        Cells(scene, {{"1995", "1996"}, {"12.5", "13.5"}, {"14.5", "15.5"}}, 105, 113, 20 + gap));
  });
  text += Sweep("where the second of three columns begins in one row", 105, 310, 1, [](double x) {
    TableScene scene;
    scene.Line(100, 100, 400, 100).Line(100, 118, 400, 118).Line(100, 193, 400, 193);
    Cells(scene, kWords);
    return Found(scene.Text(105, 185, "end").Text(x, 185, "wide"));
  });
  text += Sweep("where a heading over two columns ends", 1, 40, 1, [](double letters) {
    TableScene scene;
    scene.Line(100, 82, 400, 82).Line(100, 118, 400, 118).Line(100, 175, 400, 175);
    Cells(scene, kWords);
    return Found(scene.Text(205, 96, std::string(static_cast<std::size_t>(letters), 'h')));
  });
  text += Sweep("from row to row of numbers without rules", 8, 40, 0.5, [](double pitch) {
    TableScene scene;
    return Found(Cells(scene, kWords, 105, 113, 100, pitch));
  });
  text += Sweep("rows without rules", 1, 6, 1, [](double rows) {
    TableScene scene;
    for (int i = 0; i < rows; ++i) {
      scene.Text(100, 100 + 14 * i, "name").Text(200, 100 + 14 * i, std::to_string(50 - i));
      scene.Text(300, 100 + 14 * i, std::to_string(70 - 3 * i));
    }
    return Found(scene);
  });
  text += Sweep("rows of words without rules", 1, 8, 1, [](double rows) {
    TableScene scene;
    for (int i = 0; i < rows; ++i) {
      scene.Text(100, 100 + 14 * i, "name").Text(200, 100 + 14 * i, "kind");
      scene.Text(300, 100 + 14 * i, "shape");
    }
    return Found(scene);
  });
  text += Sweep("words in a column without rules", 1, 12, 1, [](double words) {
    TableScene scene;
    for (int i = 0; i < 5; ++i) {
      scene.Text(100, 100 + 14 * i, "name").Text(460, 100 + 14 * i, std::to_string(50 - i));
      for (int w = 0; w < words; ++w) {
        scene.Text(150 + 22.5 * w, 100 + 14 * i, "word");
      }
    }
    return Found(scene);
  });
  text += Sweep("rows that have a number in the last column", 0, 6, 1, [](double rows) {
    TableScene scene;
    for (int i = 0; i < 6; ++i) {
      scene.Text(100, 100 + 14 * i, "name of it").Text(200, 100 + 14 * i, "kind");
      scene.Text(300, 100 + 14 * i, i < rows ? std::to_string(50 - i) : "none");
    }
    return Found(scene);
  });
  text += Sweep("rows with something in the second column", 0, 8, 1, [](double rows) {
    TableScene scene;
    for (int i = 0; i < 8; ++i) {
      scene.Text(100, 100 + 14 * i, "name");
      if (i < rows) {
        scene.Text(200, 100 + 14 * i, std::to_string(50 - i));
      }
    }
    return Found(scene);
  });
  text += Sweep("how much the numbers of a list of pages grow", -2, 2, 1, [](double step) {
    TableScene scene;
    for (int i = 0; i < 5; ++i) {
      scene.Text(100, 100 + 14 * i, "title of")
          .Text(300, 100 + 14 * i, std::to_string(20 + static_cast<int>(step) * i));
    }
    return Found(scene);
  });
  return text;
}

TEST(TableSweeps, FindOpenTables) {
  EXPECT_TRUE(IsAsExpected("layout/open-tables.txt", Open()));
}

std::string Filled() {
  std::string text;
  const Rgb blue{200, 220, 255};
  text += Sweep("how much of a cell a fill covers", 0, 110, 1, [&](double width) {
    MadePage page;
    for (const double x : kXs) {
      page.Rule({x, 100, x, 172}, 0.5);
    }
    for (const double y : kYs) {
      page.Rule({100, y, 400, y}, 0.5);
    }
    page.Field({100, 118, 100 + width, 136});
    for (int i = 0; i < 12; ++i) {
      page.Text(105 + 100 * (i % 3), 113 + 18 * (i / 3), U"word");
    }
    return SketchOf(AnalyzePage(page.Take()));
  });
  text += Sweep("how far filled cells are apart", 0, 8, 0.25, [&](double gap) {
    TableScene scene;
    for (int r = 0; r < 4; ++r) {
      for (int c = 0; c < 3; ++c) {
        scene.Fill(100 + 100 * c, 100 + 18 * r, 200 + 100 * c - gap, 118 + 18 * r - gap,
                   (r + c) % 2 == 0 ? blue : Rgb{255, 220, 200});
      }
    }
    return Found(Cells(scene, kWords));
  });
  text += Sweep("how high the strips of one fill are", 1, 18, 1, [&](double height) {
    TableScene scene;
    for (double y = 100; y < 172; y += height) {
      for (int c = 0; c < 3; ++c) {
        scene.Fill(100 + 100 * c, y, 200 + 100 * c, std::min(y + height, 172.0),
                   c % 2 == 0 ? blue : Rgb{255, 220, 200});
      }
    }
    return Found(Cells(scene, kWords));
  });
  return text;
}

TEST(TableSweeps, FindFilledTables) {
  EXPECT_TRUE(IsAsExpected("layout/filled-tables.txt", Filled()));
}

std::string Panels() {
  const auto panels = [](double gutter, double heading, double first, double second) {
    TableScene scene;
    for (const double left : {100.0, 200.0 + gutter}) {
      scene.Line(left, 112, left + 100, 112).Text(left, heading, "Heading");
      scene.Text(left, first, "one").RightText(left + 98, first, "12");
      scene.Text(left, second, "two").RightText(left + 98, second, "34");
      scene.Text(left, second + 14, "six").RightText(left + 98, second + 14, "56");
    }
    return Found(scene);
  };
  std::string text;
  text += Sweep("how far panels are apart", -4, 20, 0.5,
                [&](double gutter) { return panels(gutter, 108, 126, 140); });
  text += Sweep("the baseline of the headings of panels", 92, 122, 0.5,
                [&](double y) { return panels(20, y, 126, 140); });
  text += Sweep("the first row of panels", 114, 160, 0.5,
                [&](double y) { return panels(20, 108, y, y + 14); });
  text += Sweep("the second row of panels", 126, 190, 0.5,
                [&](double y) { return panels(20, 108, 126, y); });
  const auto run_over = [](double left, std::size_t letters) {
    TableScene scene;
    for (const double x : {100.0, 220.0}) {
      scene.Line(x, 112, x + 100, 112).Text(x, 108, "Heading");
      scene.Text(x, 126, "one").RightText(x + 98, 126, "12");
      scene.Text(x, 140, "two").RightText(x + 98, 140, "34");
      scene.Text(x, 154, "six").RightText(x + 98, 154, "56");
    }
    return Found(scene.Text(left, 168, std::string(letters, 'x')));
  };
  text += Sweep("where a word over the gutter of panels begins", 190, 230, 0.5,
                [&](double x) { return run_over(x, 10); });
  text += Sweep("where a word over the gutter of panels ends", 170, 200, 0.5,
                [&](double x) { return run_over(x, 6); });
  text += Sweep("where a text beside panels begins", 40, 420, 2, [](double x) {
    TableScene scene;
    for (const double left : {100.0, 220.0}) {
      scene.Line(left, 112, left + 100, 112).Text(left, 108, "Heading");
      scene.Text(left, 126, "one").RightText(left + 98, 126, "12");
      scene.Text(left, 140, "two").RightText(left + 98, 140, "34");
    }
    return Found(scene.Text(x, 133, "label"));
  });
  return text;
}

TEST(TableSweeps, FindPanels) {
  EXPECT_TRUE(IsAsExpected("layout/panels.txt", Panels()));
}

std::string Tagged() {
  const auto cells = [](TableScene& scene, double x, double y, double rows) {
    std::uint32_t cell = 0;
    for (std::uint32_t r = 0; r < rows; ++r) {
      for (std::uint32_t c = 0; c < 2; ++c) {
        scene.TaggedCell(100 + (c == 1 ? x : 0), 113 + y * r, c == 0 ? "a few words" : "others",
                         r + 1, ++cell);
      }
    }
    return Found(scene);
  };
  std::string text;
  text += Sweep("where the second column of a tagged table begins", 20, 120, 1, [&](double x) {
    TableScene scene;
    return cells(scene, x, 18, 4);
  });
  text += Sweep("from row to row of a tagged table", 1, 30, 0.5, [&](double y) {
    TableScene scene;
    return cells(scene, 100, y, 4);
  });
  text += Sweep("rows of a tagged table", 1, 4, 1, [&](double rows) {
    TableScene scene;
    return cells(scene, 100, 18, rows);
  });
  text += Sweep("where a word that is not of the table stands", 80, 260, 2, [&](double x) {
    TableScene scene;
    scene.Text(x, 131, "other");
    return cells(scene, 100, 18, 4);
  });
  text += Sweep("where a cell over both columns ends", 1, 40, 1, [&](double letters) {
    TableScene scene;
    scene.TaggedCell(100, 95, std::string(static_cast<std::size_t>(letters), 'h'), 9, 99);
    return cells(scene, 100, 18, 4);
  });
  const auto edges = [&](const TableScene& scene) {
    std::string places;
    for (const FoundTable& found : scene.Tables()) {
      for (const double edge : found.table.columns) {
        places += std::to_string(edge).substr(0, 6) + " ";
      }
    }
    return places;
  };
  text += Sweep("where an upright rule beside a tagged table is", 70, 260, 1, [&](double x) {
    TableScene scene;
    scene.Line(x, 100, x, 180);
    cells(scene, 100, 18, 4);
    return edges(scene);
  });
  text += Sweep("how long that rule is", 1, 80, 1, [&](double length) {
    TableScene scene;
    scene.Line(90, 100, 90, 100 + length);
    cells(scene, 100, 18, 4);
    return edges(scene);
  });
  return text;
}

TEST(TableSweeps, BelieveTags) {
  EXPECT_TRUE(IsAsExpected("layout/tagged-tables.txt", Tagged()));
}

// Of the first cell of a table, with text in one or two looks, which are a paragraph each.
TEST(TableSweeps, AlignCells) {
  const auto aligned = [](double first, double second) {
    MadePage page;
    for (const double x : {100.0, 200.0, 300.0}) {
      page.Rule({x, 100, x, 260}, 0.5);
    }
    for (const double y : {100.0, 180.0, 260.0}) {
      page.Rule({100, y, 300, y}, 0.5);
    }
    page.Text(104, first, U"one").Text(204, 112, U"two").Text(104, 192, U"six");
    page.Text(204, 192, U"ten");
    if (second > 0) {
      page.Text(104, second, U"ones", {.is_bold = true});
    }
    const PageLayout layout = AnalyzePage(page.Take());
    const Block& block = layout.bands.at(0).columns.at(0).blocks.at(0);
    const auto* table = std::get_if<Table>(&block.content);
    return table == nullptr ? std::string("no table")
                            : std::to_string(static_cast<int>(table->cells[0].alignment));
  };
  std::string text = Sweep("the baseline of one line in a cell", 106, 180, 0.5,
                           [&](double y) { return aligned(y, 0); });
  text += Sweep("the baseline of the last line in a cell", 130, 180, 0.5,
                [&](double y) { return aligned(114, y); });
  text += Sweep("the baseline of the last line but one in a cell", 106, 160, 0.5,
                [&](double y) { return aligned(y, 174); });
  EXPECT_TRUE(IsAsExpected("layout/cell-alignments.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
