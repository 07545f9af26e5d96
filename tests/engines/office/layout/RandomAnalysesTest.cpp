// What is told of whole documents whose pages are made up as chance has it: headers and footers of
// every sort, headings, contents, lists, notes, captions and what goes on from page to page.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/layout/DocumentAnalysis.h"
#include "engines/office/layout/MadeDocuments.h"
#include "engines/support/layout/Dice.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

using TarnixTools::testing::IsAsExpected;

constexpr std::size_t kPages = 3;

std::u32string Digits(std::size_t number) {
  std::u32string text;
  for (const char digit : std::to_string(number)) {
    text += static_cast<char32_t>(digit);
  }
  return text;
}

const std::vector<std::u32string> kLines = {
    U"A line of text that is as wide as the column that it is in",
    U"and another one that goes on with what the first one told",
    U"In words of which nobody will ever need to know anything,",
    U"until the last of them has been read and all is said now."};
const std::vector<std::u32string> kTitles = {U"What it is",     U"How it was made",
                                             U"Of what it was", U"1 In numbers",
                                             U"1.1 In parts",   U"Ends with a stop."};
const std::vector<std::u32string> kMarks = {U"1", U"2", U"*", U"†", U"12"};

// A thing that is on all pages, or on most of them.
struct Repeated {
  std::u32string text;
  double x = 72;
  double y = 40;
  double shift = 0;  // from page to page
  std::size_t first_number = 0;
  std::size_t step = 0;  // of the number behind the text; 0 for none
  std::size_t left_out = kPages;
  bool is_picture = false;
  bool takes_turns = false;  // on the left and on the right
};

class DocumentMaker {
 public:
  explicit DocumentMaker(Dice& dice) : dice_(&dice) {
    for (std::size_t i = dice.Under(4); i > 0; --i) {
      repeated_.push_back(Margin());
    }
    is_tagged_ = dice.Chance(25);
    heading_.size = dice.Chance(50) ? 14 : dice.Between(9, 18, 0.5);
    heading_.is_bold = dice.Chance(50);
  }

  std::vector<MadePage> Make() {
    std::vector<MadePage> pages;
    for (std::size_t i = 0; i < kPages; ++i) {
      MadePage page;
      AddMargins(page, i);
      if (dice_->Chance(15)) {
        AddBeside(page);
      }
      AddFlow(page);
      pages.push_back(std::move(page));
    }
    return pages;
  }

 private:
  Repeated Margin() {
    static const std::vector<std::u32string> kTexts = {U"The title", U"Page ", U"", U"Part 2, ",
                                                       U"- "};
    Repeated margin;
    margin.text = dice_->Of(kTexts);
    margin.x = dice_->Between(72, 420, 12);
    margin.y = dice_->Chance(50) ? dice_->Between(24, 60, 2) : dice_->Between(740, 790, 2);
    if (!repeated_.empty() && dice_->Chance(30)) {
      margin.y = repeated_.back().y;
    }
    margin.shift = dice_->Chance(85) ? 0 : dice_->Between(-4, 4, 0.5);
    margin.first_number = dice_->Under(30);
    margin.step = margin.text == U"The title" ? 0 : (dice_->Chance(90) ? 1 : dice_->Under(3));
    margin.left_out = dice_->Chance(80) ? kPages : dice_->Under(kPages);
    margin.is_picture = dice_->Chance(12);
    margin.takes_turns = dice_->Chance(15);
    return margin;
  }

  void AddMargins(MadePage& page, std::size_t index) {
    for (const Repeated& own : repeated_) {
      const double y = own.y + own.shift * static_cast<double>(index);
      const double x = own.takes_turns && index % 2 == 1 ? 500 - own.x : own.x;
      if (own.left_out == index) {
        continue;
      }
      if (own.is_picture) {
        page.Image({x, y - 10, x + 40, y + 10});
      } else {
        page.Text(x, y,
                  own.text + (own.step > 0 ? Digits(own.first_number + own.step * index) : U""),
                  {.size = 9});
      }
    }
  }

  // A thing that is on no other page.
  void AddBeside(MadePage& page) {
    const double x = dice_->Between(72, 400, 8);
    const double y = dice_->Chance(50) ? dice_->Between(20, 60, 4) : dice_->Between(740, 780, 4);
    const pdf::Box box{x, y, x + dice_->Between(10, 60, 2), y + dice_->Between(4, 20, 2)};
    if (dice_->Chance(50)) {
      page.Image(box);
    } else {
      page.Curve(box);
    }
  }

  void AddFlow(MadePage& page) {
    double y = dice_->Between(80, 120, 4);
    std::vector<std::u32string> marks;
    while (y < 600 && !dice_->Chance(10)) {
      const std::size_t kind = dice_->Under(12);
      if (kind < 5) {
        y = AddText(page, y, marks);
      } else if (kind < 7) {
        page.Text(72, y, dice_->Of(kTitles), heading_);
        Tag(page, dice_->Chance(70) ? "H1" : "P");
        y += 12;
      } else if (kind < 9) {
        y = AddList(page, y);
      } else if (kind < 10) {
        y = AddContents(page, y);
      } else if (kind < 11) {
        page.Image({72, y - 8, 200, y + 40});
        page.Text(72, y + 52, U"Figure " + Digits(++figures_) + U": What is seen");
        y += 64;
      } else {
        y = AddTable(page, y);
      }
      y += dice_->Between(4, 24, 2);
    }
    AddNotes(page, std::max(y, 560.0), marks);
  }

  double AddText(MadePage& page, double y, std::vector<std::u32string>& marks) {
    for (std::size_t line = dice_->Under(4) + 1; line > 0; --line) {
      const std::u32string& text = kLines[4 - line];
      page.Text(72, y, text);
      Tag(page, "P");
      if (dice_->Chance(15)) {
        marks.push_back(dice_->Of(kMarks));
        page.Text(72 + 5 * static_cast<double>(text.size()), y - 4, marks.back(), {.size = 6});
      }
      if (dice_->Chance(8)) {
        page.Text(80 + 5 * static_cast<double>(text.size()), y, U"larger", {.size = 13});
      }
      y += 12;
    }
    return y;
  }

  double AddList(MadePage& page, double y) {
    static const std::vector<std::u32string> kBullets = {U"•", U"–", U"*", U"§"};
    const std::size_t kind = dice_->Under(4);
    const std::u32string bullet = dice_->Of(kBullets);
    const double left = dice_->Chance(60) ? 80 : dice_->Between(72, 110, 2);
    std::size_t number = dice_->Chance(80) ? 1 : dice_->Under(5) + 1;
    for (std::size_t items = dice_->Under(4) + 1; items > 0; --items) {
      const double x = left + (dice_->Chance(75) ? 0 : dice_->Between(2, 20, 1));
      const std::u32string letter(1, static_cast<char32_t>(U'a' + number - 1));
      const std::vector<std::u32string> labels = {
          bullet, Digits(number) + U".", letter + U")",
          U"(" + std::u32string((number - 1) % 3 + 1, U'i') + U")"};
      page.Text(x, y, labels[kind]).Text(x + 30, y, U"an item of a list");
      Tag(page, "LI");
      number += dice_->Chance(90) ? 1 : dice_->Under(3);
      y += 13;
    }
    return y;
  }

  double AddContents(MadePage& page, double y) {
    std::size_t number = dice_->Under(9) + 1;
    for (std::size_t entries = dice_->Under(4) + 1; entries > 0; --entries) {
      const double x = dice_->Chance(60) ? 72 : dice_->Between(72, 100, 2);
      std::u32string text = dice_->Of(kTitles);
      text += U" " + std::u32string(dice_->Under(30) + 1, U'.');
      text += dice_->Chance(80) ? U" " : U"  ";
      page.Text(x, y, text + Digits(number));
      number += dice_->Under(3);
      y += 14;
    }
    return y;
  }

  double AddTable(MadePage& page, double y) {
    const std::size_t rows = dice_->Under(3) + 2;
    for (std::size_t row = 0; row <= rows; ++row) {
      const double at = y + 20 * static_cast<double>(row);
      page.Rule({72, at, 372, at}, 0.5);
      for (std::size_t column = 0; row < rows && column < 3; ++column) {
        page.Text(76 + 100 * static_cast<double>(column), at + 14, row == 0 ? U"Head" : U"cell");
      }
    }
    for (const double x : {72.0, 172.0, 272.0, 372.0}) {
      page.Rule({x, y, x, y + 20 * static_cast<double>(rows)}, 0.5);
    }
    return y + 20 * static_cast<double>(rows) + 10;
  }

  void AddNotes(MadePage& page, double y, const std::vector<std::u32string>& marks) {
    for (const std::u32string& mark : marks) {
      y += 14;
      if (!dice_->Chance(10)) {
        page.Text(72, y - 3.2, mark, {.size = 4.8});
        page.Text(72 + 2.4 * static_cast<double>(mark.size()), y, U"What it says", {.size = 8});
      }
    }
  }

  // What the tags tell of the text that was added last.
  void Tag(MadePage& page, const char* role) {
    if (is_tagged_) {
      page.Role({role}, ++elements_);
    }
  }

  Dice* dice_;
  std::vector<Repeated> repeated_;
  MadeStyle heading_;
  bool is_tagged_ = false;
  std::uint32_t elements_ = 0;
  std::size_t figures_ = 0;
};

TEST(RandomAnalyses, HaveTheirParts) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    Dice dice(seed);
    OfficeDocument document = PagesOf(DocumentMaker(dice).Make());
    if (dice.Chance(20)) {
      document.facts.outline = {{"What it is", 0, 0, 0}, {"How it was made", 1, 1, 0}};
    }
    AnalyzeDocument(document);
    for (const OfficePage& page : document.pages) {
      text += std::to_string(seed) + "." + std::to_string(page.layout.number) + " " +
              PartsText(page.layout) + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("office/random-analyses.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::office
