#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/HeadingLooks.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;

constexpr HeadingLook kBody = {.size = 100, .lines = 9, .bytes = 900};

HeadingLook Short(std::int32_t size, bool is_bold = false) {
  return {.size = size, .is_bold = is_bold, .may_be_heading = true, .lines = 1, .bytes = 20};
}

TEST(HeadingLooks, LargerTypeIsAHigherLevel) {
  EXPECT_THAT(HeadingLevels({Short(140), kBody, Short(180), kBody, Short(120), Short(100)}),
              ElementsAre(2, 0, 1, 0, 3, 0));
}

TEST(HeadingLooks, BoldTypeIsAHeadingAndOfOneSizeTheHigherOne) {
  EXPECT_THAT(HeadingLevels({Short(100, true), kBody, Short(140), Short(140, true)}),
              ElementsAre(3, 0, 2, 1));
}

TEST(HeadingLooks, SentencesAreHeadingsOnlyInMuchLargerType) {
  HeadingLook sentence = Short(120);
  sentence.ends_a_sentence = true;
  HeadingLook large = Short(200);
  large.ends_a_sentence = true;
  EXPECT_THAT(HeadingLevels({sentence, kBody, large}), ElementsAre(0, 0, 1));
}

TEST(HeadingLooks, AreNoneWithoutText) {
  EXPECT_THAT(HeadingLevels({HeadingLook{}, HeadingLook{}}), ElementsAre(0, 0));
}

TEST(HeadingLooks, AreThoseOfMostOfAParagraph) {
  MadePage made;
  made.Text(72, 100, U"A title", {.size = 18, .is_bold = true});
  made.Text(72, 200, U"\u2022 An item");
  const PageLayout page = AnalyzePage(made.Take());
  const auto look_of = [&page](const Block& block) {
    const auto& paragraph = std::get<Paragraph>(block.content);
    return LookOf(page, paragraph, TextOf(paragraph));
  };
  const HeadingLook title = look_of(page.bands.front().columns.front().blocks.front());
  EXPECT_EQ(title.size, 180);
  EXPECT_TRUE(title.is_bold);
  EXPECT_TRUE(title.may_be_heading);
  EXPECT_EQ(title.bytes, 7U);
  EXPECT_FALSE(look_of(page.bands.back().columns.back().blocks.back()).may_be_heading);
}

}  // namespace
}  // namespace TarnixTools::engines
