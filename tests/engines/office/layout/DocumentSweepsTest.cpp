// From where on parts of pages are headers, footers, notes, headings, entries of contents and items
// of lists: every bound of what only whole documents tell, found by moving things past it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/layout/DocumentAnalysis.h"
#include "engines/office/layout/MadeDocuments.h"
#include "engines/support/layout/LayoutSketch.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

using TarnixTools::testing::IsAsExpected;

constexpr std::u32string_view kLine = U"A line of text that is as wide as the page is";

// The parts of a page, the second one where it is not told, of the analysed document.
std::string Parts(std::vector<MadePage> pages, std::size_t index = 1) {
  OfficeDocument document = PagesOf(std::move(pages));
  AnalyzeDocument(document);
  return PartsText(document.pages.at(index).layout);
}

// Three pages with text, to which something is added.
template <typename Add>
std::vector<MadePage> Pages(const Add& add) {
  std::vector<MadePage> pages;
  for (int i = 0; i < 3; ++i) {
    MadePage page;
    page.Text(72, 300, kLine).Text(72, 400, std::u32string(1, static_cast<char32_t>(U'x' + i)));
    add(page, i);
    pages.push_back(std::move(page));
  }
  return pages;
}

std::u32string Number(int value) {
  std::u32string text;
  for (const char digit : std::to_string(value)) {
    text += static_cast<char32_t>(digit);
  }
  return text;
}

std::string Margins() {
  std::string text;
  text += Sweep("where a repeated line is at the top", 100, 180, 1, [](double y) {
    return Parts(Pages([&](MadePage& page, int) { page.Text(72, y, U"The title"); }));
  });
  text += Sweep("where a repeated line is at the foot", 630, 700, 1, [](double y) {
    return Parts(Pages([&](MadePage& page, int) { page.Text(72, y, U"The title"); }));
  });
  text += Sweep("how far down it is on the next page", -8, 8, 0.5, [](double shift) {
    return Parts(
        Pages([&](MadePage& page, int i) { page.Text(72, 60 + shift * i, U"The title"); }));
  });
  text += Sweep("how far to the right a repeated picture is on the next page", -8, 8, 0.5,
                [](double shift) {
                  return Parts(Pages([&](MadePage& page, int i) {
                    page.Image({72 + shift * i, 30, 172 + shift * i, 60});
                  }));
                });
  text +=
      Sweep("how much wider a repeated picture is on the next page", -8, 8, 0.5, [](double wider) {
        return Parts(Pages([&](MadePage& page, int i) {
          page.Image({72, 30, 172 + wider * i, 60});
        }));
      });
  text +=
      Sweep("where a repeated line is above which another one stands", 60, 180, 2, [](double y) {
        return Parts(Pages([&](MadePage& page, int i) {
          page.Text(72, 50, std::u32string(5, static_cast<char32_t>(U'a' + i)))
              .Text(72, y, U"The title");
        }));
      });
  text +=
      Sweep("where a repeated line is beside which another one stands", 100, 170, 2, [](double y) {
        return Parts(Pages([&](MadePage& page, int i) {
          page.Text(300, y + 5, std::u32string(5, static_cast<char32_t>(U'a' + i)));
          page.Text(72, y, U"The title");
        }));
      });
  text += Sweep("how much the numbers of pages grow", -2, 3, 1, [](double step) {
    return Parts(Pages([&](MadePage& page, int i) {
      page.Text(300, 780, Number(20 + static_cast<int>(step) * i));
    }));
  });
  text += Sweep("how much one of two numbers grows", -2, 3, 1, [](double step) {
    return Parts(Pages([&](MadePage& page, int i) {
      page.Text(300, 780, U"Part 20, page " + Number(20 + static_cast<int>(step) * i));
    }));
  });
  text += Sweep("the height of a line with a number on one page", 680, 795, 1, [](double y) {
    return Parts(Pages([&](MadePage& page, int i) {
      if (i == 1) {
        page.Text(300, y, U"page 9");
      }
    }));
  });
  text += Sweep("how long a line with a number on one page is", 30, 45, 1, [](double length) {
    return Parts(Pages([&](MadePage& page, int i) {
      if (i == 1) {
        page.Text(72, 780, std::u32string(static_cast<std::size_t>(length), U'x') + U" 9");
      }
    }));
  });
  text += Sweep("how far above such a line another one is", 8, 30, 0.5, [](double gap) {
    return Parts(Pages([&](MadePage& page, int i) {
      if (i == 1) {
        page.Text(72, 780 - gap, U"text").Text(300, 780, U"page 9");
      }
    }));
  });
  text += Sweep("lines of a header", 1, 8, 1, [](double lines) {
    return Parts(Pages([&](MadePage& page, int) {
      for (int line = 0; line < lines; ++line) {
        page.Text(72 + 30 * line, 20 + 16 * line, U"Line");
      }
    }));
  });
  text += Sweep("the baselines of two parts of a header", 36, 44, 0.25, [](double y) {
    return Parts(Pages([&](MadePage& page, int) {
      page.Text(72, 40, U"Left").Text(400, y, U"Right", {.size = 8});
    }));
  });
  return text;
}

TEST(DocumentSweeps, FindHeadersAndFooters) {
  EXPECT_TRUE(IsAsExpected("office/margins.txt", Margins()));
}

std::string Notes() {
  const auto with_note = [](double size, double y, std::u32string_view mark,
                            std::u32string_view own) {
    MadePage page;
    for (int i = 0; i < 3; ++i) {
      page.Text(72, 100 + 12 * i, kLine);
    }
    page.Text(72, 136, U"with a mark").Text(127, 132, mark, {.size = 6});
    page.Text(72, y - 0.4 * size, own, {.size = 0.6 * size});
    page.Text(72 + 0.3 * size * static_cast<double>(own.size()), y, U"What it says",
              {.size = size});
    return Parts({std::move(page)}, 0);
  };
  std::string text;
  text += Sweep("how large a note is", 6, 12, 0.125,
                [&](double size) { return with_note(size, 700, U"1", U"1"); });
  text +=
      Sweep("where a note is", 300, 360, 1, [&](double y) { return with_note(8, y, U"1", U"1"); });
  for (const std::u32string_view mark :
       {U"1", U"12", U"1234", U"12345", U"*", U"**", U"***", U"†", U"‡", U"a", U"1a"}) {
    text += with_note(8, 700, mark, mark) + "\n";
  }
  return text + with_note(8, 700, U"1", U"2") + "\n";
}

TEST(DocumentSweeps, FindNotes) {
  EXPECT_TRUE(IsAsExpected("office/notes.txt", Notes()));
}

std::string Structure() {
  std::string text;
  const auto with_heading = [](const std::u32string& heading, MadeStyle style) {
    MadePage page;
    page.Text(72, 60, heading, style);
    for (int i = 0; i < 10; ++i) {
      page.Text(72, 100 + 30 * i, kLine);
    }
    return Parts({std::move(page)}, 0).substr(0, 30);
  };
  text += Sweep("how large a heading is", 9, 16, 0.0625,
                [&](double size) { return with_heading(U"A heading", {.size = size}); });
  text += Sweep("how large one that is a sentence is", 9, 16, 0.0625,
                [&](double size) { return with_heading(U"A heading.", {.size = size}); });
  text += Sweep("how long a bold heading is", 50, 125, 1, [&](double length) {
    return with_heading(std::u32string(static_cast<std::size_t>(length), U'x'),
                        {.is_bold = true, .advance = 0.3});
  });
  text += Sweep("how large a bold heading is", 8, 11, 0.0625, [&](double size) {
    return with_heading(U"A heading", {.size = size, .is_bold = true});
  });
  for (const std::u32string heading : {U"A heading", U"A heading.", U"A heading,", U"A heading;",
                                       U"A heading:", U"A heading?", U"12", U"• A heading", U"Ä"}) {
    text += with_heading(heading, {.size = 13, .is_bold = true}) + "\n";
  }
  text += Sweep("where an entry of contents begins", 60, 130, 1, [](double x) {
    MadePage page;
    page.Text(72, 100, U"First ............ 1").Text(90, 116, U"Second ............ 2");
    return Parts({std::move(page.Text(x, 132, U"Third ............ 3"))}, 0);
  });
  text += Sweep("dots before a number", 1, 6, 1, [](double dots) {
    MadePage page;
    page.Text(72, 100, U"First " + std::u32string(static_cast<std::size_t>(dots), U'.') + U" 1");
    return Parts({std::move(page)}, 0);
  });
  text += Sweep("where an item of a list begins", 60, 130, 1, [](double x) {
    MadePage page;
    page.Text(72, 100, U"• one").Text(90, 116, U"– two").Text(90, 132, U"– three");
    return Parts({std::move(page.Text(x, 148, U"• four"))}, 0);
  });
  text += Sweep("paragraphs between items of a list", 1, 8, 1, [](double count) {
    MadePage page;
    page.Text(72, 60, U"• one");
    for (int i = 0; i < count; ++i) {
      page.Text(72, 80 + 30 * i, kLine);
    }
    return Parts({std::move(page.Text(72, 400, U"• two"))}, 0);
  });
  text +=
      Sweep("how much of the column the last line of a page covers", 20, 45, 1, [](double letters) {
        MadePage first;
        MadePage second;
        first.Text(72, 100, kLine)
            .Text(72, 160, kLine.substr(0, static_cast<std::size_t>(letters)));
        second.Text(72, 100, U"goes on with this").Text(72, 160, kLine);
        return Parts({std::move(first), std::move(second)});
      });
  text += Sweep("how much larger what goes on is", 9, 11, 0.0625, [](double size) {
    MadePage first;
    MadePage second;
    second.Text(72, 100, U"goes on with this", {.size = size}).Text(72, 160, kLine);
    return Parts({std::move(first.Text(72, 100, kLine)), std::move(second)});
  });
  return text;
}

TEST(DocumentSweeps, FindHeadingsContentsAndLists) {
  EXPECT_TRUE(IsAsExpected("office/structure.txt", Structure()));
}

std::string Tables() {
  const auto page_with = [](double top, double shift) {
    MadePage page;
    for (int i = 0; i < 4; ++i) {
      page.Rule({72, top + 20 * i, 372, top + 20.0 * i}, 0.5);
    }
    const double middle = 172 + shift;
    for (const double x : {72.0, middle, 272.0, 372.0}) {
      page.Rule({x, top, x, top + 60}, 0.5);
    }
    for (int i = 0; i < 9; ++i) {
      page.Text(i % 3 == 1 ? middle + 4 : 76 + 100 * (i % 3), top + 14 + 20 * (i / 3), U"cell");
    }
    return page;
  };
  std::string text;
  text += Sweep("where the first table is", 380, 520, 2, [&](double y) {
    return Parts({page_with(y, 0), page_with(100, 0)});
  });
  text += Sweep("where the second table is", 200, 320, 2, [&](double y) {
    return Parts({page_with(600, 0), page_with(y, 0)});
  });
  text += Sweep("how far an edge of the second table is off", -10, 10, 0.5, [&](double shift) {
    return Parts({page_with(600, 0), page_with(100, shift)});
  });
  return text;
}

TEST(DocumentSweeps, ContinueTables) {
  EXPECT_TRUE(IsAsExpected("office/continued-tables.txt", Tables()));
}

}  // namespace
}  // namespace TarnixTools::engines::office
