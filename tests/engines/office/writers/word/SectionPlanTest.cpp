// Which pages and columns make a section of documents, and where its text begins and ends.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/word/SectionPlan.h"
#include "engines/support/layout/Dice.h"
#include "engines/support/layout/LayoutDump.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

Block Line(double left, double right, double baseline, const std::string& text = "a line") {
  return Block{LineBetween(left, right, baseline, text)};
}

// What the pages of a document have in common, and what they only may have.
class DocumentMaker {
 public:
  explicit DocumentMaker(Dice& dice) : dice_(&dice) {
    alternates_ = dice.Chance(30);
    has_numbers_ = dice.Chance(50);
    has_columns_ = dice.Chance(40);
    has_one_band_ = dice.Chance(40);
    runs_down_ = dice.Chance(12);
    first_number_ = dice.Chance(50) ? 1 : dice.Under(5) + 1;
    is_roman_ = dice.Chance(20);
    header_bottom_ = dice.Between(30, 90, 2);
    footer_top_ = dice.Between(740, 820, 4);
  }

  OfficePage Page(std::size_t index) {
    OfficePage page = FacelessPage({});
    page.layout.bands.clear();
    if (dice_->Chance(10)) {
      page.layout.width += dice_->Between(-2, 2, 0.25);
      page.layout.height += dice_->Chance(50) ? 0 : dice_->Between(-2, 2, 0.25);
    }
    if (dice_->Chance(runs_down_ ? 80 : 5)) {
      AddDownwards(page);
    } else if (!dice_->Chance(5)) {
      AddBands(page);
    }
    AddMargins(page, index);
    if (dice_->Chance(10)) {
      page.layout.notes = {{"1", {Line(72, 300, dice_->Between(700, 780, 4))}}};
    }
    return page;
  }

 private:
  void AddBands(OfficePage& page) {
    double y = dice_->Between(60, 110, 2);
    for (std::size_t bands = has_one_band_ ? 1 : dice_->Under(3) + 1; bands > 0; --bands) {
      const bool is_wide = !has_columns_ || dice_->Chance(has_one_band_ ? 10 : 30);
      const std::size_t count = is_wide ? 1 : (has_one_band_ ? 2 : dice_->Under(2) + 2);
      Band band;
      const double width = 450 / static_cast<double>(count);
      double bottom = y;
      for (std::size_t i = 0; i < count; ++i) {
        const double left = 72 + width * static_cast<double>(i) +
                            (dice_->Chance(90) ? 0 : dice_->Between(-12, 12, 1));
        const double right = left + width - (dice_->Chance(90) ? 20 : dice_->Between(-12, 12, 1));
        Column column;
        double own = y;
        for (std::size_t blocks = dice_->Under(3) + 1; blocks > 0; --blocks) {
          if (dice_->Chance(12)) {
            column.blocks.push_back(Block{TableAt(left, own, {"a", "b", "c", "d"})});
            own += 44;
          } else {
            column.blocks.push_back(Line(left + (dice_->Chance(85) ? 0 : 10), right, own + 9));
            own += dice_->Between(12, 120, 4);
          }
        }
        column.box = {left, y, right, own};
        bottom = std::max(bottom, own);
        band.columns.push_back(std::move(column));
      }
      if (count > 1 && dice_->Chance(15)) {
        std::reverse(band.columns.begin(), band.columns.end());
      }
      band.box = {72, y, 522, bottom};
      page.layout.bands.push_back(std::move(band));
      y = bottom + dice_->Between(0, 20, 2);
    }
  }

  // Lines that run downwards, from the right on.
  void AddDownwards(OfficePage& page) {
    double x = dice_->Between(400, 560, 4);
    const double top = dice_->Chance(85) ? dice_->Between(60, 120, 4) : 770;
    for (std::size_t count = dice_->Under(4) + 1; count > 0; --count) {
      const double length = dice_->Between(100, 600, 20);
      // As if it were turned upright about its middle.
      const double y = top + dice_->Between(0, 20, 4) + length / 2;
      Floating floating;
      floating.angle = dice_->Chance(97) ? 90 : 0;
      floating.is_vertical = true;
      floating.box = {x - length / 2, y - 6, x + length / 2, y + 6};
      floating.blocks = {Line(x - length / 2, x + length / 2, y + 3)};
      page.layout.floats.push_back(std::move(floating));
      x -= dice_->Between(10, 40, 2);
    }
  }

  void AddMargins(OfficePage& page, std::size_t index) {
    const std::string side = alternates_ && index % 2 == 1 ? "even" : "odd";
    if (dice_->Chance(90)) {
      const double bottom = dice_->Chance(95) ? header_bottom_ : header_bottom_ + 40;
      page.layout.header = {Line(72, 200, bottom - 2, dice_->Chance(95) ? side : "other")};
    }
    if (has_numbers_ && dice_->Chance(95)) {
      const std::vector<std::string> kRoman = {"i",   "ii",   "iii", "iv", "v",  "vi",
                                               "vii", "viii", "ix",  "x",  "xi", "xii"};
      const std::size_t number = first_number_ + index + (dice_->Chance(95) ? 0 : 1);
      Paragraph shown =
          LineBetween(290, 300, footer_top_ + 9,
                      is_roman_ && index < 2 ? kRoman.at(number - 1) : std::to_string(number));
      shown.lines[0].pieces[0].kind = PieceKind::kPageNumber;
      page.layout.footer = {Block{shown}};
    }
  }

  Dice* dice_;
  bool alternates_ = false;
  bool has_numbers_ = false;
  bool has_columns_ = false;
  bool has_one_band_ = false;
  bool runs_down_ = false;
  bool is_roman_ = false;
  std::size_t first_number_ = 1;
  double header_bottom_ = 0;
  double footer_top_ = 0;
};

std::string MarginText(const char* name, const std::optional<std::size_t>& page) {
  return page ? std::string(" ") + name + std::to_string(*page) : "";
}

// Its pages with their bands, its sides, its columns, whose margins it has and its first number.
std::string SectionText(const SectionPlan& section) {
  std::string text = section.is_continuous ? "+" : "";
  for (const SectionPart& part : section.parts) {
    text += (&part == &section.parts.front() ? "" : ",") + std::to_string(part.page) + ":" +
            std::to_string(part.first_band) + "-" + std::to_string(part.band_count);
    text += part.down.empty() ? "" : "v" + std::to_string(part.down.size());
  }
  text += " " + ShownNumber(section.width) + "x" + ShownNumber(section.height) + " [" +
          ShownNumber(section.left) + " " + ShownNumber(section.top) + " " +
          ShownNumber(section.right) + " " + ShownNumber(section.bottom) + "]";
  for (const ColumnPlace& column : section.columns) {
    text += " " + ShownNumber(column.left) + "-" + ShownNumber(column.right);
  }
  text += section.is_right_to_left ? " leftwards" : "";
  text += section.runs_down ? " down" : "";
  text += MarginText("first ", section.margins.first) + MarginText("odd ", section.margins.odd) +
          MarginText("even ", section.margins.even);
  if (section.start) {
    text += " from " + std::to_string(section.start->value) +
            "dlu"[static_cast<std::size_t>(section.start->format)];
  }
  return text + "\n";
}

TEST(SectionPlans, AreThoseOfPages) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    Dice dice(seed);
    DocumentMaker maker(dice);
    std::vector<OfficePage> pages;
    const std::size_t count = dice.Under(6) + 1;
    for (std::size_t i = 0; i < count; ++i) {
      pages.push_back(maker.Page(i));
    }
    const DocumentPlan plan = PlanSections(DocumentOf(std::move(pages)));
    std::size_t next = 0;
    text += std::to_string(seed) + (plan.has_even_pages ? " with even pages\n" : "\n");
    for (const SectionPlan& section : plan.sections) {
      EXPECT_LT(section.left, section.right) << seed;
      EXPECT_LT(section.top, section.bottom) << seed;
      for (const SectionPart& part : section.parts) {
        EXPECT_TRUE(part.page == next || (part.page + 1 == next && part.first_band > 0)) << seed;
        next = part.page + 1;
      }
      text += " " + SectionText(section);
    }
    EXPECT_EQ(next, count) << seed;
  }
  EXPECT_TRUE(TarnixTools::testing::IsAsExpected("office/random-sections.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::office
