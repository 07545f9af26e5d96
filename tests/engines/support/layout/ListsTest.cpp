#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/Lists.h"

namespace TarnixTools::engines {
namespace {

TEST(Lists, HaveItemsWithLabelsAndLevels) {
  MadePage page;
  page.Text(90, 100, U"1. The first of the items");
  page.Text(110, 112, U"\u2022 An item within it");
  page.Text(90, 124, U"2. The second of the items");
  page.Text(72, 300, U"Text that is no item");
  PageLayout layout = AnalyzePage(page.Take());
  FindLists({&layout});
  const std::vector<Paragraph*> flow = FlowParagraphs(layout);
  ASSERT_EQ(flow.size(), 4U);
  ASSERT_TRUE(flow[0]->label && flow[1]->label && flow[2]->label);
  EXPECT_EQ(flow[0]->label->text, "1.");
  EXPECT_EQ(flow[0]->label->kind, ListKind::kDecimal);
  EXPECT_EQ(TextOf(*flow[0]), "The first of the items");
  EXPECT_EQ(flow[0]->label->list, flow[2]->label->list);
  EXPECT_EQ(flow[1]->label->kind, ListKind::kBullet);
  EXPECT_EQ(flow[1]->level, 1);
  EXPECT_EQ(flow[2]->level, 0);
  EXPECT_FALSE(flow[3]->label);
}

TEST(Lists, GoOnOverPages) {
  PageLayout first = AnalyzePage(MadePage().Text(90, 700, U"1. One").Take());
  PageLayout second = AnalyzePage(MadePage().Text(90, 100, U"2. Two").Take());
  FindLists({&first});
  EXPECT_FALSE(FlowParagraphs(first)[0]->label);
  FindLists({&first, &second});
  ASSERT_TRUE(FlowParagraphs(first)[0]->label && FlowParagraphs(second)[0]->label);
  EXPECT_EQ(FlowParagraphs(first)[0]->label->list, FlowParagraphs(second)[0]->label->list);
}

TEST(Lists, KeepThePlacesOfLabelsAndTexts) {
  PageModel page = MadePage().Text(90, 100, U"1. One").Text(90, 112, U"2. Two").Take();
  for (std::uint32_t i = 0; i < page.glyphs.size(); ++i) {
    page.glyphs[i].place = i < 8 ? 1 : 2;  // "2." is shown with what is before it
  }
  PageLayout layout = AnalyzePage(page);
  FindLists({&layout});
  const std::vector<Paragraph*> flow = FlowParagraphs(layout);
  ASSERT_EQ(flow.size(), 2U);
  ASSERT_TRUE(flow[1]->label);
  EXPECT_EQ(flow[1]->label->places, std::vector<std::uint32_t>({1}));
  EXPECT_EQ(flow[1]->lines[0].pieces.back().places, std::vector<std::uint32_t>({2}));
}

// Whether two bullets with so many texts between them are of one list.
bool AreOneList(int between) {
  MadePage page;
  page.Text(72, 50, U"Text");
  page.Text(72, 80, U"Text");
  page.Text(90, 100, U"\u2022 One");
  for (int i = 0; i < between; ++i) {
    page.Text(72, 130 + 30 * i, U"Text");
  }
  page.Text(90, 140 + 30 * between, U"\u2022 Two");
  PageLayout layout = AnalyzePage(page.Take());
  FindLists({&layout});
  const std::vector<Paragraph*> flow = FlowParagraphs(layout);
  EXPECT_EQ(flow.size(), 4U + static_cast<std::size_t>(between));
  return flow[2]->label.value().list == flow.back()->label.value().list;
}

TEST(Lists, GoOnBehindAFewTexts) {
  EXPECT_TRUE(AreOneList(0));
  EXPECT_TRUE(AreOneList(4));
  EXPECT_FALSE(AreOneList(5));
}

// The items of paragraphs that begin with these labels, 40 on a page: the number of the list, the sort
// and the value of each; "-" is none.
std::string ItemsOf(const std::vector<std::u32string>& labels) {
  std::vector<PageLayout> pages;
  for (std::size_t i = 0; i < labels.size();) {
    MadePage page;
    for (int row = 0; row < 40 && i < labels.size(); ++row, ++i) {
      page.Text(90, 50 + 18 * row, labels[i], {.size = 8});
      page.Text(130, 50 + 18 * row, U"the text of an item", {.size = 8});
    }
    pages.push_back(AnalyzePage(page.Take()));
  }
  std::vector<PageLayout*> all;
  for (PageLayout& page : pages) {
    all.push_back(&page);
  }
  FindLists(all);
  std::string text;
  for (PageLayout& page : pages) {
    for (const Paragraph* paragraph : FlowParagraphs(page)) {
      text += text.empty() ? "" : " ";
      text += paragraph->label ? std::to_string(paragraph->label->list) +
                                     "*1aAiI"[static_cast<std::size_t>(paragraph->label->kind)] +
                                     std::to_string(paragraph->label->value)
                               : "-";
    }
  }
  return text;
}

TEST(Lists, TellRomanNumbersFromLetters) {
  EXPECT_EQ(ItemsOf({U"i.", U"ii.", U"iii.", U"iv.", U"v.", U"vi."}), "1i1 1i2 1i3 1i4 1i5 1i6");
  EXPECT_EQ(ItemsOf({U"I)", U"II)", U"III)", U"IV)", U"V)"}), "1I1 1I2 1I3 1I4 1I5");
  EXPECT_EQ(ItemsOf({U"ix.", U"x.", U"xi."}), "1i9 1i10 1i11");
  EXPECT_EQ(ItemsOf({U"g)", U"h)", U"i)", U"j)"}), "1a7 1a8 1a9 1a10");
  EXPECT_EQ(ItemsOf({U"b.", U"c.", U"d."}), "1a2 1a3 1a4");
  EXPECT_EQ(ItemsOf({U"i.", U"j.", U"k."}), "1a9 1a10 1a11");
}

TEST(Lists, HaveLabelsOfOneForm) {
  EXPECT_EQ(ItemsOf({U"1.", U"2.", U"3)", U"4)"}), "111 112 213 214");
  EXPECT_EQ(ItemsOf({U"(1)", U"2)", U"(2)", U"3)"}), "111 212 112 213");
}

TEST(Lists, AreForgottenBehindManyOthers) {
  const auto with_others = [](std::size_t others) {
    std::vector<std::u32string> labels = {U"1."};
    for (std::size_t i = 0; i < others; ++i) {
      labels.push_back(U"");
      for (const char digit : std::to_string(2 * i + 4)) {
        labels.back() += static_cast<char32_t>(digit);
      }
      labels.back() += U".";
    }
    labels.emplace_back(U"2.");
    const std::string items = ItemsOf(labels);
    return items.substr(items.rfind(' ') + 1);
  };
  EXPECT_EQ(with_others(2), "112");
  EXPECT_EQ(with_others(63), "112");
  EXPECT_EQ(with_others(64), "-");
}

}  // namespace
}  // namespace TarnixTools::engines
