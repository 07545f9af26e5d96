// From where on lines are other paragraphs, and how they are aligned: every bound of the analysis of
// paragraphs, found by moving things past it.
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

// Letters of five points; the text is the first ones of the alphabet, in words of four.
std::u32string Words(std::size_t letters) {
  std::u32string text;
  for (std::size_t i = 0; i < letters; ++i) {
    text += i % 5 == 4 ? U' ' : static_cast<char32_t>(U'a' + i % 26);
  }
  return text;
}

// A line of the page that gives the column its width, from 100 to 400.
MadePage WithColumn() {
  MadePage page;
  page.Text(100, 50, Words(60), {.color = {9, 9, 9}});
  return page;
}

std::string Breaks() {
  std::string text;
  text += Sweep("from the second to the third line, where the first two are 12 apart", 4, 30, kFine,
                [](double pitch) {
                  MadePage page;
                  page.Text(100, 100, Words(40)).Text(100, 112, Words(40));
                  return Shown(page.Text(100, 112 + pitch, Words(40)));
                });
  text += Sweep("from line to line of four", 4, 40, 0.25, [](double pitch) {
    MadePage page;
    for (int i = 0; i < 4; ++i) {
      page.Text(100, 100 + pitch * i, Words(38));
    }
    return Shown(page);
  });
  text += Sweep("the size of the second line", 8, 12, kFine, [](double size) {
    MadePage page;
    page.Text(100, 100, Words(40)).Text(100, 112, Words(40), {.size = size});
    return Shown(page.Text(100, 124, Words(40)));
  });
  for (const int line : {1, 2, 3}) {
    text += Sweep("where line " + std::to_string(line) + " of four begins", 60, 180, 0.5,
                  [line](double x) {
                    MadePage page = WithColumn();
                    for (int i = 0; i < 4; ++i) {
                      page.Text(i == line ? x : 100, 100 + 12 * i, Words(36));
                    }
                    return Shown(page);
                  });
    text += Sweep("how much line " + std::to_string(line) + " of four leaves free", 0, 60, 0.5,
                  [line](double free) {
                    MadePage page;
                    for (int i = 0; i < 4; ++i) {
                      const double size = i == line ? 10 * (200 - free) / 200 : 10;
                      page.Text(100, 100 + 12 * i, Words(40), {.advance = 0.05 * size});
                    }
                    return Shown(page);
                  });
  }
  text += Sweep("where the second line of two begins", 60, 180, 0.5, [](double x) {
    MadePage page = WithColumn();
    return Shown(page.Text(100, 100, Words(36)).Text(x, 112, Words(30)));
  });
  text += Sweep("how many letters the first line of a poem has", 1, 60, 1, [](double letters) {
    MadePage page = WithColumn();
    page.Text(100, 100, Words(static_cast<std::size_t>(letters)));
    return Shown(page.Text(100, 112, Words(30)).Text(100, 124, Words(25)));
  });
  return text;
}

TEST(ParagraphSweeps, PartParagraphs) {
  EXPECT_TRUE(IsAsExpected("layout/paragraphs.txt", Breaks()));
}

std::string Alignments() {
  std::string text;
  text += Sweep("where one line begins", 96, 340, 0.5, [](double x) {
    MadePage page = WithColumn();
    return Shown(page.Text(x, 100, Words(12)));
  });
  text += Sweep("where one line from the right begins", 96, 340, 0.5, [](double x) {
    MadePage page = WithColumn();
    return Shown(page.Text(x, 100, U"אבג דהוז חט"));
  });
  text += Sweep("where the second of two lines that end alike begins", 96, 300, 0.5, [](double x) {
    MadePage page = WithColumn();
    page.Text(200, 100, Words(40));
    return Shown(page.Text(x, 112, Words(40), {.advance = (400 - x) / 400}));
  });
  text += Sweep("where the second of two lines in the middle ends", 90, 260, 0.5, [](double half) {
    MadePage page = WithColumn();
    page.Text(250 - half / 4, 100, Words(40), {.advance = half / 2 / 400});
    return Shown(page.Text(200, 112, Words(20)));
  });
  text +=
      Sweep("how far the middle line of three is off the middle", -20, 20, kFine, [](double shift) {
        MadePage page = WithColumn();
        page.Text(150, 100, Words(40)).Text(165 + shift, 112, Words(34));
        return Shown(page.Text(175, 124, Words(30)));
      });
  text += Sweep("how uneven the ends of four lines are", -4, 4, kFine, [](double uneven) {
    MadePage page;
    for (int i = 0; i < 4; ++i) {
      const double width = i == 3 ? 100 : 200 + (i == 1 ? uneven : 0);
      page.Text(100, 100 + 12 * i, Words(40), {.advance = width / 400});
    }
    return Shown(page);
  });
  text += Sweep("how uneven the starts of four lines are", -8, 8, kFine, [](double uneven) {
    MadePage page = WithColumn();
    for (int i = 0; i < 4; ++i) {
      const double left = i == 3 ? 200 : 100 + (i == 1 ? uneven : 0);
      page.Text(left, 100 + 12 * i, Words(40), {.advance = (300 - left) / 400});
    }
    return Shown(page);
  });
  text += Sweep("how uneven the ends of three lines from the right are", -8, 8, kFine,
                [](double uneven) {
                  MadePage page = WithColumn();
                  page.Text(200, 100, U"אבגד הוזח טיכל מנסע פצקר שתאב גדהו");
                  page.Text(200 + uneven, 112, U"אבגד הוזח טיכל מנסע פצקר שתאב גדהו");
                  return Shown(page.Text(250, 124, U"אבגד הוזח טיכל מנסע פצקר"));
                });
  text += Sweep("where the first of three lines from the right ends", 250, 370, 1, [](double x) {
    MadePage page = WithColumn();
    page.Text(x - 150, 100, U"אבגד הוזח טיכל מנסע פצקר שתאב");
    page.Text(180, 112, U"אבגד הוזח טיכל מנסע פצקר שתאב גד");
    return Shown(page.Text(180, 124, U"אבגד הוזח טיכל מנסע פצקר שתאב גד"));
  });
  return text;
}

TEST(ParagraphSweeps, AlignParagraphs) {
  EXPECT_TRUE(IsAsExpected("layout/alignments.txt", Alignments()));
}

std::string Rows() {
  std::string text;
  text += Sweep("a gap behind a label", 2, 60, kFine, [](double gap) {
    MadePage page;
    return Shown(page.Text(100, 100, U"(a)").Text(115 + gap, 100, Words(30)));
  });
  text += Sweep("a gap between texts of one line", 8, 60, 0.25, [](double gap) {
    MadePage page;
    return Shown(page.Text(100, 100, Words(9)).Text(145 + gap, 100, Words(30)));
  });
  text += Sweep("the baseline of what is far to the right", 92, 108, kFine, [](double y) {
    MadePage page;
    return Shown(page.Text(100, 100, Words(9)).Text(300, y, Words(9)));
  });
  text += Sweep("the baseline of a small bullet", 90, 104, kFine, [](double y) {
    MadePage page;
    return Shown(page.Text(100, y, U"•", {.size = 6}).Text(120, 100, Words(30)));
  });
  text += Sweep("the size of a bullet at the middle of letters", 4, 14, 0.25, [](double size) {
    MadePage page;
    return Shown(page.Text(100, 97, U"•", {.size = size}).Text(120, 100, Words(30)));
  });
  text += Sweep("how far a line stands over the one beside it", 0, 20, 0.25, [](double over) {
    MadePage page;
    page.Text(100, 100, Words(9));
    return Shown(page.Text(145 - over, 102.8, Words(9), {.size = 9.5}));
  });
  text += Sweep("the link on a word", 80, 180, 0.5, [](double x) {
    MadePage page;
    return Shown(page.Text(100, 100, U"abcd efgh").Link({x, 90, x + 12, 102}));
  });
  text += Sweep("how high a link stands", 70, 115, 0.5, [](double y) {
    MadePage page;
    return Shown(page.Text(100, 100, U"abcd efgh").Link({90, y, 200, y + 12}));
  });
  text += Sweep("two links on a word", 96, 130, 0.5, [](double x) {
    MadePage page;
    page.Text(100, 100, U"abcdefgh").Link({90, 90, x, 102});
    return Shown(page.Link({x, 90, 200, 102}));
  });
  return text;
}

TEST(ParagraphSweeps, JoinRows) {
  EXPECT_TRUE(IsAsExpected("layout/rows.txt", Rows()));
}

// What ends a line and what begins the next one.
TEST(ParagraphSweeps, JoinWords) {
  std::string text;
  for (const std::u32string_view end :
       {U"word", U"wo-", U"WO-", U"12-", U"-", U"wo\u00AD", U"wo\u2010", U"wo\u2013", U"標準",
        U"標-", U"ไทย", U"éà-", U"ﬁ-"}) {
    for (const std::u32string_view start :
         {U"next", U"Next", U"12", U"標準", U"ไทย", U"é", U"(a"}) {
      MadePage page;
      page.Text(100, 100, std::u32string(Words(45)) + std::u32string(end), {.size = 10});
      text += Shown(page.Text(100, 112, std::u32string(start) + U" " + Words(45))) + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("layout/joints.txt", text));
}

TEST(ParagraphSweeps, BeginAtLabelsAndOtherLooks) {
  std::string text;
  for (const std::u32string_view label : {U"•", U"-", U"–", U"1.", U"(a)", U"iv)", U"A.", U"12",
                                          U"word", U"*", U"§", U"[1]", U"1.2"}) {
    for (const std::u32string_view next : {U"•", U"2.", U"(b)", U"word"}) {
      for (const double x : {100.0, 115.0}) {
        MadePage page;
        page.Text(100, 100, std::u32string(label) + U" " + Words(45));
        page.Text(x, 112, std::u32string(next) + U" " + Words(44));
        text += Shown(page) + "\n";
      }
    }
  }
  const MadeStyle plain;
  for (const MadeStyle& other :
       {MadeStyle{.is_bold = true}, MadeStyle{.is_hidden = true}, MadeStyle{.color = {1, 0, 0}},
        MadeStyle{.size = 10.6}, MadeStyle{.size = 10.8}, plain}) {
    MadePage page;
    page.Text(100, 100, Words(44)).Text(100, 112, Words(43), other);
    text += Shown(page) + "\n";
    page = MadePage();
    page.Text(100, 100, Words(44)).Role({"P"}, 1).Text(100, 112, Words(43), other).Role({"P"}, 1);
    text += Shown(page) + "\n";
    page = MadePage();
    page.Text(100, 100, Words(44)).Role({"P"}, 1).Text(100, 112, Words(43), other).Role({"P"}, 2);
    text += Shown(page) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("layout/labels.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
