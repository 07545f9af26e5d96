#include <gmock/gmock.h>

#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/text/Initials.h"

namespace TarnixTools::engines {
namespace {

using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr std::u32string_view kFull = U"A line of text that reaches the right margin of its page";

// A letter of 44 points beside lines of 10 points, 12 points apart; its baseline is at 124.
constexpr MadeStyle kLetter{.size = 44};

// A page with an initial beside three lines.
MadePage PageWithInitial() {
  MadePage page;
  page.Text(72, 80, U"A heading", {.is_bold = true})
      .Text(72, 124, U"T", kLetter)
      .Text(97, 100, U"he first line goes on beside the letter it needs")
      .Text(97, 112, U"and so does the second one of the three that are")
      .Text(97, 124, U"as high as the letter is, up to the last of them.")
      .Text(72, 136, kFull)
      .Text(72, 148, U"and ends.");
  return page;
}

TEST(Initials, BelongToTheParagraphThatGoesOnBesideThem) {
  PageLayout page = AnalyzePage(PageWithInitial().Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(page);
  ASSERT_THAT(paragraphs, SizeIs(2));
  const Paragraph& paragraph = *paragraphs[1];
  ASSERT_TRUE(paragraph.initial.has_value());
  EXPECT_EQ(paragraph.initial->lines_beside, 3U);
  EXPECT_EQ(paragraph.initial->line.pieces.at(0).text, "T");
  EXPECT_THAT(TextOf(paragraph), StartsWith("The first line"));
  ASSERT_THAT(paragraph.lines, SizeIs(5));
  EXPECT_DOUBLE_EQ(paragraph.lines[2].inset, 25);
  EXPECT_DOUBLE_EQ(paragraph.lines[3].inset, 0);
  EXPECT_DOUBLE_EQ(paragraph.box.left, 72);
}

TEST(Initials, BeginAParagraphRightBelowAnother) {
  PageLayout page =
      AnalyzePage(MadePage()
                      .Text(72, 76, kFull)
                      .Text(72, 88, kFull)
                      .Text(72, 112, U"W", {.size = 28})
                      .Text(90, 100, U"hat begins here has a large letter that two")
                      .Text(90, 112, U"lines of the paragraph run beside, and one more line")
                      .Text(72, 124, U"runs below.")
                      .Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(page);
  ASSERT_THAT(paragraphs, SizeIs(2));
  EXPECT_THAT(TextOf(*paragraphs[1]), StartsWith("What begins"));
}

TEST(Initials, MayHaveAllOfTheirParagraphBesideThem) {
  PageLayout page = AnalyzePage(MadePage()
                                    .Text(72, 112, U"O", {.size = 28})
                                    .Text(90, 100, U"nly two lines are all that there is of text")
                                    .Text(90, 112, U"in this paragraph.")
                                    .Take());
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(page);
  ASSERT_THAT(paragraphs, SizeIs(1));
  EXPECT_TRUE(paragraphs[0]->initial.has_value());
}

std::size_t InitialsOf(const MadePage& made) {
  PageLayout page = AnalyzePage(MadePage(made).Take());
  std::size_t count = 0;
  for (const Paragraph* paragraph : FlowParagraphs(page)) {
    count += paragraph->initial ? 1 : 0;
  }
  return count;
}

// The same with something else than a letter, or with lines that do not go on below it.
TEST(Initials, AreNoNumbersOrLettersOfOtherTexts) {
  MadePage number;
  number.Text(72, 124, U"3", kLetter)
      .Text(97, 100, U"he first line goes on beside it")
      .Text(97, 112, U"and so does the second one too")
      .Text(97, 124, U"and the third.")
      .Text(72, 136, kFull);
  EXPECT_EQ(InitialsOf(number), 0U);
  MadePage grade;
  grade.Text(72, 112, U"A", {.size = 28})
      .Text(90, 100, U"The grade is explained beside it")
      .Text(90, 112, U"in two lines, and in a third one")
      .Text(90, 124, U"that does not run below it.");
  EXPECT_EQ(InitialsOf(grade), 0U);
  MadePage high;
  high.Text(72, 124, U"T", {.size = 90})
      .Text(125, 112, U"he lines beside it are much lower")
      .Text(125, 124, U"than the letter.")
      .Text(72, 136, kFull);
  EXPECT_EQ(InitialsOf(high), 0U);
  EXPECT_EQ(InitialsOf(PageWithInitial()), 1U);
}

}  // namespace
}  // namespace TarnixTools::engines
