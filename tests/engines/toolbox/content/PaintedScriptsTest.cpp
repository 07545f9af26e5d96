// How text of several scripts is written: which glyphs, where, and what readers are told they say.
#include "engines/toolbox/content/Painted.h"
#include "support/Expected.h"
#include "support/PaintedText.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using TarnixTools::testing::IsAsExpected;
using TarnixTools::testing::PaintedText;
using TarnixTools::testing::QpdfComplaints;
using TarnixTools::testing::TestPdf;

struct Line {
  const char* font;
  std::u32string text;
};

TEST(PaintedScripts, AreGlyphsInTheirPlacesAndTheirText) {
  TARNIX_NEED_PROGRAM("qpdf");
  TARNIX_NEED_FONT("Liberation Sans");
  TARNIX_NEED_FONT("DejaVu Sans");
  const std::vector<Line> lines = {
      {"Liberation Sans", U"office fluffy AVATAR"},
      {"DejaVu Sans", U"office fluffy \uFB03"},
      {"DejaVu Sans", U"q\u0323\u0307 x\u0301"},
      {"DejaVu Sans", U"\u0627\u0644\u0633\u0644\u0627\u0645 \u0644\u0627"},
      {"DejaVu Sans", U"\u0645\u064f\u062d\u064e\u0645\u064e\u0651\u062f 12"},
      {"DejaVu Sans", U"\u05e9\u05b8\u05c1\u05dc\u05d5\u05b9\u05dd"},
      {"Liberation Sans", U"ab\U0001D400 \U0001D401c"},
      {"DejaVu Sans", U"ne\u00ADver, no\u200Bbody"},
  };
  TestPdf pages;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    pages.Page("").Size(300, 100);
  }
  Painted painted(pages.Bytes());
  painted.Paint([&](Canvas& page) {
    const Line& line = lines[static_cast<std::size_t>(page.index())];
    EXPECT_EQ(page.Text(line.text, {.font = line.font, .size = 20, .x = 10, .y = 40}), 1);
  });
  EXPECT_EQ(QpdfComplaints(painted.path()), "");
  EXPECT_TRUE(IsAsExpected("decorations/scripts.txt", PaintedText(painted.path())));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
