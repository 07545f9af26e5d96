#include <limits>

#include <gmock/gmock.h>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/text/Characters.h"
#include "engines/support/layout/text/PageText.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::Lt;
using ::testing::SizeIs;

std::vector<std::string> WordsOf(const WordLine& line) {
  std::vector<std::string> words;
  for (const Word& word : line.words) {
    words.push_back(ToUtf8(word.text));
  }
  return words;
}

TEST(PageText, PartsWordsAtSpacesAndAtGaps) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"one two").Text(110, 100, U"three").Take());
  ASSERT_THAT(text.upright.lines, SizeIs(1));
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("one", "two", "three"));
}

TEST(PageText, JoinsGlyphsThatArePaintedOneByOne) {
  MadePage page;
  page.Text(82, 100, U"c").Text(72, 100, U"a").Text(77, 100, U"b");
  const PageText text = ReadPageText(page.Take());
  ASSERT_THAT(text.upright.lines, SizeIs(1));
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("abc"));
}

TEST(PageText, ReadsVerticalWritingFromTheRight) {
  const MadeStyle down{.advance = 1, .is_vertical = true};
  const PageText text =
      ReadPageText(MadePage().Text(280, 100, U"三行目", down).Text(300, 100, U"一二", down).Take());
  EXPECT_THAT(text.upright.lines, SizeIs(0));
  ASSERT_THAT(text.turned, SizeIs(1));
  EXPECT_TRUE(text.turned[0].is_vertical);
  EXPECT_DOUBLE_EQ(text.turned[0].angle, 90);
  ASSERT_THAT(text.turned[0].lines, SizeIs(2));
  EXPECT_THAT(WordsOf(text.turned[0].lines[0]), ElementsAre("一二"));
  EXPECT_THAT(WordsOf(text.turned[0].lines[1]), ElementsAre("三行目"));
  EXPECT_DOUBLE_EQ(text.turned[0].lines[0].box.left, 100);
  EXPECT_DOUBLE_EQ(text.turned[0].lines[0].box.right, 120);
}

TEST(PageText, EndsLinesAtWideGaps) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"left").Text(300, 100, U"right").Take());
  ASSERT_THAT(text.upright.lines, SizeIs(2));
  EXPECT_THAT(WordsOf(text.upright.lines[1]), ElementsAre("right"));
}

TEST(PageText, ReadsWideSpacingOfLettersAsOneWord) {
  MadePage page;
  for (int i = 0; i < 6; ++i) {
    page.Text(72 + 7 * i, 100, std::u32string(1, U'a' + i));  // two points apart
  }
  page.Text(72 + 7 * 6 + 5, 100, U"z");
  const PageText text = ReadPageText(page.Take());
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("abcdef", "z"));
}

TEST(PageText, KeepsRaisedTextWithItsWord) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"note").Text(92, 96, U"12", {.size = 6}).Take());
  ASSERT_THAT(text.upright.lines, SizeIs(1));
  const Word& word = text.upright.lines[0].words[0];
  EXPECT_EQ(ToUtf8(word.text), "note12");
  EXPECT_EQ(word.glyphs.front().raise, Raise::kNone);
  EXPECT_EQ(word.glyphs.back().raise, Raise::kSuperscript);
}

TEST(PageText, TellsTextsThatAreOverEachOtherApart) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"roll up").Text(78.5, 100, U"redacted").Take());
  ASSERT_THAT(text.upright.lines, SizeIs(2));
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("roll", "up"));
  EXPECT_THAT(WordsOf(text.upright.lines[1]), ElementsAre("redacted"));
}

TEST(PageText, LeavesWhatRemainsOfASecondPaintingInItsLine) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"painted").Text(72.3, 100, U"pa xted").Take());
  EXPECT_THAT(text.upright.lines, SizeIs(1));
}

TEST(PageText, KeepsSmallTextBelowLargeLettersApart) {
  const PageText text = ReadPageText(MadePage()
                                         .Text(72, 100, U"CX57C", {.size = 30})
                                         .Text(75, 110, U"MINI EXCAVATOR", {.size = 8})
                                         .Take());
  ASSERT_THAT(text.upright.lines, SizeIs(2));
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("CX57C"));
  EXPECT_THAT(WordsOf(text.upright.lines[1]), ElementsAre("MINI", "EXCAVATOR"));
}

TEST(PageText, TakesDoublePaintingAsBold) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"fat").Text(72.3, 100, U"fat").Take());
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("fat"));
  EXPECT_TRUE(text.upright.lines[0].words[0].glyphs[0].is_doubled);
}

TEST(PageText, WritesLigaturesAsLetters) {
  const PageText text = ReadPageText(MadePage().Text(72, 100, U"\uFB01ne").Take());
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("fine"));
}

TEST(PageText, MarksUnderlinedStruckAndHighlightedWords) {
  const PageText text = ReadPageText(MadePage()
                                         .Text(72, 100, U"one two")
                                         .Line({72, 101.5, 87, 102})
                                         .Line({92, 97, 107, 97.5})
                                         .Text(72, 200, U"lit")
                                         .Field({71, 191, 88, 203})
                                         .Take());
  const std::vector<WordLine>& lines = text.upright.lines;
  EXPECT_TRUE(lines[0].words[0].is_underlined);
  EXPECT_FALSE(lines[0].words[1].is_underlined);
  EXPECT_TRUE(lines[0].words[1].is_struck);
  EXPECT_EQ(lines[1].words[0].highlight, (Rgb{200, 30, 30}));
  EXPECT_THAT(text.marks, ElementsAre(0, 1, 2));
}

TEST(PageText, LeavesRulesThatGoBeyondTheText) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"cell").Line({60, 101, 300, 101.5}).Take());
  EXPECT_FALSE(text.upright.lines[0].words[0].is_underlined);
  EXPECT_THAT(text.marks, SizeIs(0));
}

TEST(PageText, StopsMarkingWhenThereIsTooMuchToCompare) {
  constexpr std::size_t kGlyphs = 2000;
  constexpr std::size_t kRules = limits::kMaxBoxComparisons / kGlyphs + 100;
  std::u32string word;
  for (std::size_t i = 0; i < kGlyphs; ++i) {
    word += static_cast<char32_t>(U'a' + i % 26);
  }
  MadePage page;
  page.Text(72, 100, word, {.advance = 0.02});
  for (std::size_t i = 0; i < kRules; ++i) {
    page.Line({72, 101, 272, 101.5});
  }
  const PageText text = ReadPageText(page.Take());
  EXPECT_TRUE(text.upright.lines[0].words[0].is_underlined);
  EXPECT_THAT(text.marks.size(), Lt(kRules - 50));
}

TEST(PageText, ReadsHebrewFromTheRight) {
  // As it is seen from the left: 12, then the letters in reverse, then Latin in its own order.
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"12 \u05D2\u05D1\u05D0 ab \u05D5\u05D4\u05D3").Take());
  ASSERT_THAT(text.upright.lines, SizeIs(1));
  EXPECT_TRUE(text.upright.lines[0].is_right_to_left);
  EXPECT_THAT(WordsOf(text.upright.lines[0]),
              ElementsAre("\u05D3\u05D4\u05D5", "ab", "\u05D0\u05D1\u05D2", "12"));
}

// The text of the only word of a page on which the characters are seen from the left.
std::string WordSeen(std::u32string_view seen) {
  const PageText text = ReadPageText(MadePage().Text(72, 100, seen).Take());
  EXPECT_EQ(text.upright.lines.size(), 1U);
  EXPECT_EQ(text.upright.lines.at(0).words.size(), 1U);
  return ToUtf8(text.upright.lines.at(0).words.at(0).text);
}

TEST(PageText, KeepsNumbersAndMarksInWordsFromTheRight) {
  EXPECT_EQ(WordSeen(U"12\u05D1\u05D0"), "\u05D0\u05D112");
  EXPECT_EQ(WordSeen(U"ab\u05D1"), "\u05D1ab");
  // Digits of Arabic are read from the left as well.
  EXPECT_EQ(WordSeen(U"\u0661\u0660\u0669\u05D1\u05D0"), "\u05D0\u05D1\u0661\u0660\u0669");
  EXPECT_EQ(WordSeen(U"\u06F1\u06F0\u06F9\u05D1\u05D0"), "\u05D0\u05D1\u06F1\u06F0\u06F9");
  EXPECT_EQ(WordSeen(U"\u066A\u066B\u05D1"), "\u05D1\u066B\u066A");  // signs are not
  // A mark stays behind its letter.
  EXPECT_EQ(WordSeen(U"\u05D1\u05BC\u05D0"), "\u05D0\u05D1\u05BC");
}

TEST(PageText, ReadsRunsOfADirectionTogether) {
  // More words from the left than from the right: the line runs to the right.
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"one two \u05D2\u05D1 12 \u05D0\u05D4 three").Take());
  ASSERT_THAT(text.upright.lines, SizeIs(1));
  EXPECT_FALSE(text.upright.lines[0].is_right_to_left);
  EXPECT_THAT(WordsOf(text.upright.lines[0]),
              ElementsAre("one", "two", "\u05D4\u05D0", "12", "\u05D1\u05D2", "three"));
}

TEST(PageText, MeasuresWordsAndLines) {
  const PageText text = ReadPageText(MadePage()
                                         .Text(72, 100, U"word")
                                         .Text(92, 97, U"2", {.size = 6})
                                         .Text(105, 100, U"x")
                                         .Take());
  const WordLine& line = text.upright.lines.at(0);
  EXPECT_EQ(line.size, 10);
  EXPECT_EQ(line.baseline, 100);
  // Eight tenths of the size above the baseline, two below.
  EXPECT_DOUBLE_EQ(line.box.left, 72);
  EXPECT_DOUBLE_EQ(line.box.right, 110);
  EXPECT_DOUBLE_EQ(line.box.bottom, 92);
  EXPECT_DOUBLE_EQ(line.box.top, 102);
  EXPECT_EQ(line.words[0].baseline, 100);
  EXPECT_DOUBLE_EQ(line.words[0].box.right, 95);
  EXPECT_EQ(line.words[0].glyphs.back().raise, Raise::kSuperscript);
}

TEST(PageText, CutsLinesAtANarrowGutter) {
  MadePage page;
  for (int i = 0; i < 6; ++i) {
    page.Text(72, 100 + 12 * i, U"some words here").Text(155, 100 + 12 * i, U"other words");
  }
  EXPECT_THAT(ReadPageText(page.Take()).upright.lines, SizeIs(12));
}

TEST(PageText, LeavesASingleGapOfThatWidth) {
  MadePage page;
  page.Text(72, 100, U"some words here").Text(155, 100, U"other words");
  EXPECT_THAT(ReadPageText(page.Take()).upright.lines, SizeIs(1));
}

TEST(PageText, ReadsTurnedTextApart) {
  const PageText text =
      ReadPageText(MadePage()
                       .Text(300, 500, U"up", {.direction_x = 0, .direction_y = -1})
                       .Text(72, 100, U"flat")
                       .Take());
  EXPECT_THAT(text.upright.lines, SizeIs(1));
  ASSERT_THAT(text.turned, SizeIs(1));
  EXPECT_EQ(text.turned[0].angle, 270);
  EXPECT_THAT(WordsOf(text.turned[0].lines[0]), ElementsAre("up"));
}

TEST(PageText, LeavesOutTextOfNoSizeThatCanBe) {
  PageModel page = MadePage().Text(72, 100, U"endless").Take();
  page.styles[0].size = std::numeric_limits<double>::infinity();
  EXPECT_THAT(ReadPageText(page).upright.lines, SizeIs(0));
}

TEST(PageText, LeavesOutWhatIsOutsideThePage) {
  EXPECT_THAT(ReadPageText(MadePage().Text(72, 900, U"below").Take()).upright.lines, SizeIs(0));
}

TEST(PageText, TurnsRunsOfSeveralWordsOnce) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"a b \u05D0 \u05D1 \u05D2 c d").Take());
  EXPECT_THAT(WordsOf(text.upright.lines.at(0)),
              ElementsAre("a", "b", "\u05D2", "\u05D1", "\u05D0", "c", "d"));
}

TEST(PageText, SortsTextsThatAreOverEachOther) {
  MadePage page;
  page.Text(72, 100, U"rollup").Text(91, 100, U"acted").Text(74, 100, U"red");
  const PageText text = ReadPageText(page.Take());
  ASSERT_THAT(text.upright.lines, SizeIs(2));
  EXPECT_EQ(WordsOf(text.upright.lines[1])[0], "red");
}

TEST(PageText, KeepsTextsBesideEachOtherInALine) {
  const PageText text =
      ReadPageText(MadePage().Text(72, 100, U"left").Text(107, 100, U"right").Take());
  ASSERT_THAT(text.upright.lines, SizeIs(1));  // one and a half ems apart
  EXPECT_THAT(WordsOf(text.upright.lines[0]), ElementsAre("left", "right"));
}

TEST(PageText, EndsLinesWhereTheTextIsAboutTwiceAsLarge) {
  const auto lines = [](double size) {
    return ReadPageText(
               MadePage().Text(72, 100, U"small").Text(99, 100, U"large", {.size = size}).Take())
        .upright.lines.size();
  };
  EXPECT_EQ(lines(18), 1U);
  EXPECT_EQ(lines(20), 2U);
}

}  // namespace
}  // namespace TarnixTools::engines
