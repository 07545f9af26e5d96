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

TEST(HeadingLooks, AreToldBySizeWithinBounds) {
  EXPECT_THAT(HeadingLevels({Short(112), kBody, Short(111)}), ElementsAre(1, 0, 0));
  HeadingLook sentence = Short(135);
  sentence.ends_a_sentence = true;
  HeadingLook smaller = Short(134);
  smaller.ends_a_sentence = true;
  EXPECT_THAT(HeadingLevels({sentence, kBody, smaller}), ElementsAre(1, 0, 0));
}

TEST(HeadingLooks, OfBoldTypeAreShort) {
  HeadingLook bold = Short(100, true);
  bold.bytes = 110;
  bold.lines = 2;
  EXPECT_THAT(HeadingLevels({bold, kBody}), ElementsAre(1, 0));
  bold.bytes = 111;
  EXPECT_THAT(HeadingLevels({bold, kBody}), ElementsAre(0, 0));
  bold.bytes = 110;
  bold.lines = 3;
  EXPECT_THAT(HeadingLevels({bold, kBody}), ElementsAre(0, 0));
  EXPECT_THAT(HeadingLevels({Short(99, true), kBody}), ElementsAre(0, 0));
  HeadingLook body = kBody;
  body.is_bold = true;
  EXPECT_THAT(HeadingLevels({Short(100, true), body}), ElementsAre(0, 0));
}

TEST(HeadingLooks, OfMuchOfALongDocumentAreNone) {
  // 120 of 1020 bytes are less than twelve of a hundred, 140 of 1040 are more.
  std::vector<HeadingLook> looks(7, Short(150));
  looks.push_back(kBody);
  looks[0].bytes = 0;
  EXPECT_EQ(HeadingLevels(looks)[1], 1);
  looks[0].bytes = 20;
  EXPECT_EQ(HeadingLevels(looks)[1], 0);
  looks.erase(looks.begin());  // of seven paragraphs, shares tell nothing
  looks[0].bytes = 900;
  looks.back().bytes = 1000;
  EXPECT_EQ(HeadingLevels(looks)[1], 1);
}

TEST(HeadingLooks, HaveSixLevels) {
  EXPECT_THAT(HeadingLevels({Short(200), Short(190), Short(180), Short(170), Short(160), Short(150),
                             Short(140), kBody}),
              ElementsAre(1, 2, 3, 4, 5, 6, 6, 0));
}

}  // namespace
}  // namespace TarnixTools::engines
