// Tables of all small shapes: which lines are rows of their own, which places are one cell, and which
// words are one text.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/LayoutSketch.h"
#include "engines/support/layout/tables/Ink.h"
#include "engines/support/layout/tables/TableScene.h"
#include "engines/support/layout/text/Characters.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::IsAsExpected;

std::string Found(const TableScene& scene) {
  const std::string text = scene.TablesText();
  return text.empty() ? "none" : text;
}

// A line of a table: what stands in its first column and in its others.
struct LineOfTable {
  const char* first;
  const char* second;
  const char* third;
};

const std::vector<LineOfTable> kLines = {
    {"La", "12", "34"}, {"Lb", "", ""}, {"on", "", ""},  {"", "56", "78"},
    {"Lc", "te", "xt"}, {"", "mo", ""}, {"Ld", "", "9"}, {"wide text over", "", ""}};

void AddLine(TableScene& scene, const LineOfTable& line, double y) {
  scene.Text(105, y, line.first);
  if (line.second[0] != '\0') {
    scene.Text(165, y, line.second);
  }
  if (line.third[0] != '\0') {
    scene.Text(225, y, line.third);
  }
}

enum class Kind { kGrid, kStripes, kText };

// A header, a line with numbers and two others, which stand so far below each other.
std::string WithLines(Kind kind, std::size_t second, std::size_t third, double pitch) {
  TableScene scene;
  const double last = 118 + 4 * pitch + 6;
  if (kind == Kind::kGrid) {
    scene.Grid({100, 160, 220, 280}, {100, 118, last});
  } else if (kind == Kind::kStripes) {
    scene.Line(100, 100, 280, 100).Line(100, 118, 280, 118).Line(100, last, 280, last);
  }
  AddLine(scene, {"Head", "On", "Two"}, 112);
  AddLine(scene, kLines[0], 118 + pitch);
  AddLine(scene, kLines[second], 118 + 2 * pitch);
  AddLine(scene, kLines[third], 118 + 3 * pitch);
  AddLine(scene, kLines[0], 118 + 4 * pitch);
  return Found(scene);
}

TEST(TableShapes, HaveTheLinesOfTheirRows) {
  std::string text;
  for (const double pitch : {12.0, 16.0, 22.0}) {
    for (std::size_t second = 0; second < kLines.size(); ++second) {
      for (std::size_t third = 0; third < kLines.size(); ++third) {
        const bool is_first = second == 0 && third == 0;
        text += is_first ? "== " + std::to_string(static_cast<int>(pitch)) + " from line to line\n"
                         : "";
        const std::string grid = WithLines(Kind::kGrid, second, third, pitch);
        const std::string stripes = WithLines(Kind::kStripes, second, third, pitch);
        const std::string open = WithLines(Kind::kText, second, third, pitch);
        text += "grid " + grid + (stripes == grid ? "" : "\n  stripes " + stripes) +
                (open == stripes ? "" : "\n  text " + open) + "\n";
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("layout/table-rows.txt", text));
}

// A grid of two by two cells of which some of the four inner lines and some of the words are there.
std::string WithInnerLines(unsigned lines, unsigned words, double share) {
  TableScene scene;
  scene.Grid({100, 300}, {100, 180}).Line(200, 60, 200, 100).Line(100, 60, 300, 60);
  scene.Line(100, 60, 100, 100).Line(300, 60, 300, 100);
  scene.Text(110, 80, "head").Text(210, 80, "head");
  if ((lines & 1U) != 0) {
    scene.Line(200, 100, 200, 100 + 40 * share);
  }
  if ((lines & 2U) != 0) {
    scene.Line(200, 180 - 40 * share, 200, 180);
  }
  if ((lines & 4U) != 0) {
    scene.Line(100, 140, 100 + 100 * share, 140);
  }
  if ((lines & 8U) != 0) {
    scene.Line(300 - 100 * share, 140, 300, 140);
  }
  const char* const names[] = {"a", "b", "c", "d"};
  for (unsigned i = 0; i < 4; ++i) {
    if ((words >> i & 1U) != 0) {
      scene.Text(110 + 100 * (i % 2), 120 + 40 * (i / 2), names[i]);
    }
  }
  return Found(scene);
}

TEST(TableShapes, JoinCellsWithoutLinesBetween) {
  std::string text;
  for (unsigned lines = 0; lines < 16; ++lines) {
    for (unsigned words = 0; words < 16; ++words) {
      text += std::to_string(lines) + " " + std::to_string(words) + " " +
              WithInnerLines(lines, words, 1) + "\n";
    }
  }
  text += Sweep("how much of its edge each inner line covers", 0, 1, 0.0625,
                [](double share) { return WithInnerLines(15, 13, share); });
  EXPECT_TRUE(IsAsExpected("layout/table-cells.txt", text));
}

// Whether two words are one text, by how far they are apart.
TEST(TableShapes, HaveTextsOfSeveralWords) {
  const std::vector<std::u32string> words = {U"text", U"12",   U"345", U"1,5",  U"$", U"%",  U"(1)",
                                             U"*",    U"n.a.", U"12a", U"....", U"•", U"1.", U"-"};
  std::string text;
  for (const std::u32string& first : words) {
    for (const std::u32string& second : words) {
      std::string result;
      for (const bool is_spaced : {false, true}) {
        const std::string sweep = Sweep("", -2, 90, 0.25, [&](double gap) {
          Ink one{.left = 0,
                  .right = 10,
                  .upper = 0,
                  .lower = 10,
                  .baseline = 8,
                  .size = 10,
                  .is_spaced = is_spaced};
          Ink two = one;
          two.left = 10 + gap;
          two.right = 20 + gap;
          Classify(first, one);
          Classify(second, two);
          const std::vector<Ink> inks = {one, two};
          const InkRow row = RowsOf(inks).front();
          std::string chunks;
          for (const Chunk& chunk : row.chunks) {
            chunks += chunk.is_numeric ? "n" : "t";
          }
          return chunks;
        });
        result += sweep.substr(sweep.find('\n') + 1);
      }
      for (char& c : result) {
        c = c == '\n' ? ' ' : c;
      }
      text += ToUtf8(first) + " " + ToUtf8(second) + ": " + result + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("layout/table-texts.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
