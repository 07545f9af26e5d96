// What the search for tables tells of words, and which of them it takes together.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/tables/Ink.h"
#include "engines/support/layout/text/Characters.h"

namespace TarnixTools::engines {
namespace {

using Words = std::vector<std::u32string>;

// Those of the words for which the question is answered with yes.
template <typename Question>
std::string Those(const Words& words, const Question& question) {
  std::string those;
  for (const std::u32string& word : words) {
    those += question(word) ? ToUtf8(word) + " " : "";
  }
  return those;
}

std::string AllOf(const Words& words) {
  return Those(words, [](const std::u32string& /*word*/) { return true; });
}

bool IsNumber(const std::u32string& word) {
  return KindOfWord(word) == InkKind::kNumber;
}

Ink Classified(const std::u32string& word) {
  Ink ink;
  Classify(word, ink);
  return ink;
}

TEST(Ink, TellsNumbersFromText) {
  const Words numbers = {U"0",  U"1,234", U"1.5", U"5'000", U"12%",        U"$3",         U"€3",
                         U"£3", U"¥3",    U"(5)", U"+5",    U"-5",         U"5–9",        U"−5",
                         U"5*", U"10:30", U"1/2", U"5’000", U"5‰",         U"5†",         U"5‡",
                         U"5¹", U"5²",    U"5³",  U"5ⁿ",    U"5\u00a0000", U"5\u2009000", U"12a",
                         U"7z", U"%",     U"$",   U"€",     U"£",          U"¥"};
  EXPECT_EQ(Those(numbers, IsNumber), AllOf(numbers));
  EXPECT_EQ(Those({U"", U"a", U"aa", U"1ab", U"12A", U"5`", U"5{", U"A5", U"()", U"+", U"‰", U"5;6",
                   U"5#", U"a1"},
                  IsNumber),
            "");
}

TEST(Ink, TellsWhatStandsForANumberThatThereIsNot) {
  const Words blanks = {U"-",   U"–",    U"—",   U"−",  U"--", U"---", U"NA", U"N/A",
                        U"n/a", U"n.a.", U"n.d", U"na", U"..", U"...", U":",  U"†"};
  const auto is_blank = [](const std::u32string& word) {
    return KindOfWord(word) == InkKind::kBlank;
  };
  EXPECT_EQ(Those(blanks, is_blank), AllOf(blanks));
  EXPECT_EQ(Those({U"", U".", U"....", U"----", U"Na", U"n.a", U"*", U";"}, is_blank), "");
}

TEST(Ink, TellsDotsThatLead) {
  const auto leads = [](const std::u32string& word) { return Classified(word).is_leader; };
  EXPECT_EQ(Those({U"...", U"....", U"………………", U"____", U"..-.", U"12345", U"", U"._…."}, leads),
            ".... ……………… ____ ._…. ");
}

TEST(Ink, TellsLabelsOfItems) {
  const auto is_label = [](const std::u32string& word) { return Classified(word).is_label; };
  const Words labels = {U"•", U"◦", U"▪", U"■",  U"●",  U"○",   U"–",     U"-",      U"*",     U"·",
                        U"❖", U"➢", U"✓", U"1.", U"a)", U"iv.", U"(iii)", U"12345.", U"(abcd)"};
  EXPECT_EQ(Those(labels, is_label), AllOf(labels));
  EXPECT_EQ(Those({U"", U"a", U"1", U"123456.", U"(abcde)", U"etc.", U"1,", U"12", U"+"}, is_label),
            "");
}

TEST(Ink, TellsMarksOfNotes) {
  const auto is_mark = [](const std::u32string& word) { return Classified(word).is_mark; };
  EXPECT_EQ(Those({U"", U"(1)", U"(a)", U"(12)", U"()", U"*", U"**", U"***", U"****", U"†", U"‡†",
                   U"*a", U"1)", U"(12"},
                  is_mark),
            "(1) (a) * ** *** † ‡† ");
}

TEST(Ink, TellsPartsOfNumbers) {
  const Words words = {U"", U"1", U"12", U"123", U"1234", U"12345", U"123.5", U"12a", U"0"};
  const auto leads = [](const std::u32string& word) { return Classified(word).is_lead; };
  const auto goes_on = [](const std::u32string& word) { return Classified(word).is_group; };
  const auto has_number = [](const std::u32string& word) { return Classified(word).number >= 0; };
  EXPECT_EQ(Those(words, leads), "1 12 123 0 ");
  EXPECT_EQ(Those(words, goes_on), "123 123.5 ");
  EXPECT_EQ(Those(words, has_number), "1 12 123 1234 0 ");
  EXPECT_EQ(Classified(U"1907").number, 1907);
  EXPECT_EQ(Classified(U"0").number, 0);
}

TEST(Ink, TellsSignsAndSmallBeginnings) {
  const Words words = {U"$", U"€", U"£", U"¥", U"%", U"$5", U"a",
                       U"z", U"A", U"(", U"`", U"{", U""};
  const auto is_sign = [](const std::u32string& word) { return Classified(word).is_sign; };
  const auto is_unit = [](const std::u32string& word) { return Classified(word).is_unit; };
  const auto is_small = [](const std::u32string& word) { return Classified(word).starts_small; };
  EXPECT_EQ(Those(words, is_sign), "$ € £ ¥ ");
  EXPECT_EQ(Those(words, is_unit), "$ € £ ¥ % ");
  EXPECT_EQ(Those(words, is_small), "a z ( ");
}

// A word of a place, ten points high, whose baseline is two points above its lower edge.
Ink InkAt(double left, double right, double baseline, const std::u32string& word = U"word",
          double size = 10) {
  Ink ink = Classified(word);
  ink.left = left;
  ink.right = right;
  ink.upper = baseline - 8;
  ink.lower = baseline + 2;
  ink.baseline = baseline;
  ink.size = size;
  return ink;
}

// Whether the second word, this far behind the first one, is of another chunk.
bool AreParted(Ink first, Ink second, double gap) {
  first.left = 0;
  first.right = 20;
  second.left = 20 + gap;
  second.right = second.left + 20;
  const std::vector<InkRow> rows = RowsOf(std::vector<Ink>{first, second});
  EXPECT_EQ(rows.size(), 1u);
  return rows[0].chunks.size() == 2;
}

// The gap by which two words are parted, to a tenth of a point.
double LeastGap(const Ink& first, const Ink& second) {
  double gap = 0;
  while (gap < 200 && !AreParted(first, second, gap)) {
    gap += 0.1;
  }
  return gap;
}

TEST(Ink, PartsChunksAtGaps) {
  const Ink word = InkAt(0, 0, 100);
  const Ink small = InkAt(0, 0, 100, U"word", 5);
  Ink spaced = word;
  spaced.is_spaced = true;
  const auto number = [](const std::u32string& text) { return InkAt(0, 0, 100, text); };
  // Words of a text, beside larger ones too, and with the wide spaces of a typewriter.
  EXPECT_NEAR(LeastGap(word, word), 6, 0.11);
  EXPECT_NEAR(LeastGap(small, word), 6, 0.11);
  EXPECT_NEAR(LeastGap(spaced, word), 10, 0.11);
  EXPECT_NEAR(LeastGap(word, spaced), 10, 0.11);
  EXPECT_NEAR(LeastGap(word, number(U"12")), 6, 0.11);
  // Numbers, groups of digits, marks of notes, and signs before a number.
  EXPECT_NEAR(LeastGap(number(U"1.5"), number(U"2.5")), 1.8, 0.11);
  EXPECT_NEAR(LeastGap(number(U"12"), number(U"345")), 3.6, 0.11);
  EXPECT_NEAR(LeastGap(number(U"1234"), number(U"345")), 1.8, 0.11);
  EXPECT_NEAR(LeastGap(number(U"12"), number(U"3456")), 1.8, 0.11);
  EXPECT_NEAR(LeastGap(number(U"5.5"), number(U"(a)")), 8, 0.11);
  EXPECT_NEAR(LeastGap(number(U"$"), number(U"5.5")), 80, 0.11);
  EXPECT_NEAR(LeastGap(number(U"$"), word), 6, 0.11);
}

TEST(Ink, PartsChunksAtRules) {
  const std::vector<Ink> inks = {InkAt(0, 20, 100), InkAt(22, 40, 100), InkAt(0, 20, 130),
                                 InkAt(22, 40, 130)};
  const std::vector<Rule> rules = {{21, 80, 110, 0.5, Rgb{}, false}};
  const std::vector<InkRow> rows = RowsOf(inks, rules);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].chunks.size(), 2u);
  EXPECT_EQ(rows[1].chunks.size(), 1u);
  EXPECT_EQ(rows[1].chunks[0].left, 0);
  EXPECT_EQ(rows[1].chunks[0].right, 40);
}

TEST(Ink, MakesRowsOfWhatIsLevel) {
  // From the right, on lines that are not quite level; the last is a row below.
  std::vector<Ink> inks = {InkAt(60, 80, 101, U"12", 14), InkAt(30, 50, 103), InkAt(0, 20, 100),
                           InkAt(0, 20, 112, U"%"), InkAt(40, 60, 112, U"x")};
  inks[0].word = 7;
  const std::vector<InkRow> rows = RowsOf(inks);
  ASSERT_EQ(rows.size(), 2u);
  ASSERT_EQ(rows[0].inks.size(), 3u);
  EXPECT_EQ(rows[0].inks[2].word, 7u);
  EXPECT_EQ(rows[0].upper, 92);
  EXPECT_EQ(rows[0].lower, 105);
  EXPECT_EQ(rows[0].size, 14);  // of the largest, whose baseline counts
  EXPECT_EQ(rows[0].baseline, 101);
  EXPECT_TRUE(rows[0].HasNumber());
  EXPECT_FALSE(rows[1].HasNumber());  // a sign of percent alone is none
  EXPECT_EQ(rows[1].inks[1].row, 1u);
  // Three tenths of the size apart is level, more is not; and not without end.
  EXPECT_EQ(RowsOf(std::vector<Ink>{InkAt(0, 9, 100), InkAt(20, 29, 103)}).size(), 1u);
  EXPECT_EQ(RowsOf(std::vector<Ink>{InkAt(0, 9, 100), InkAt(20, 29, 103.1)}).size(), 2u);
  EXPECT_EQ(RowsOf(std::vector<Ink>{InkAt(0, 9, 100), InkAt(20, 29, 103), InkAt(30, 39, 106),
                                    InkAt(40, 49, 109)})
                .size(),
            2u);
}

}  // namespace
}  // namespace TarnixTools::engines
