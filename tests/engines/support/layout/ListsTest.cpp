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

}  // namespace
}  // namespace TarnixTools::engines
