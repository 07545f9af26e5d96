#include <gmock/gmock.h>

#include "engines/support/layout/paragraphs/ListLabels.h"

namespace TarnixTools::engines {
namespace {

struct LabelCase {
  std::u32string_view word;
  ListKind kind;
  std::int32_t value;
};

TEST(ListLabels, ReadsWhatListsBeginWith) {
  const LabelCase cases[] = {
      {U"\u2022", ListKind::kBullet, 0},  {U"3.", ListKind::kDecimal, 3},
      {U"(12)", ListKind::kDecimal, 12},  {U"2.1.", ListKind::kDecimal, 1},
      {U"b)", ListKind::kLowerLetter, 2}, {U"(C)", ListKind::kUpperLetter, 3},
      {U"iv.", ListKind::kLowerRoman, 4}, {U"XII)", ListKind::kUpperRoman, 12}};
  for (const LabelCase& one : cases) {
    const std::optional<FoundLabel> label = ReadLabel(one.word);
    ASSERT_TRUE(label.has_value());
    EXPECT_EQ(label->kind, one.kind);
    EXPECT_EQ(label->value, one.value);
  }
}

TEST(ListLabels, LeavesOtherWords) {
  for (const std::u32string_view word :
       {U"", U"a", U"the", U"1999", U"12345.", U"(see", U"etc.", U"1..", U"."}) {
    EXPECT_FALSE(ReadLabel(word).has_value());
  }
}

TEST(ListLabels, KnowsBullets) {
  const std::u32string_view bullets =
      U"•‣◦⁃∙▪▫●○■□▶▸►◆◇➢➤✓✔❖➔♦·–—−-*◼◻☐☑☒\uF0B7\uF0A7\uF0D8\uF076\uF0FC\uF0E0\uF06E\uF0A8\uF0B2"
      U"\uF02D\uF0BE§★☆⁌◘";
  for (std::size_t i = 0; i < bullets.size(); ++i) {
    const std::optional<FoundLabel> label = ReadLabel(bullets.substr(i, 1));
    ASSERT_TRUE(label.has_value()) << i;
    EXPECT_EQ(label->kind, ListKind::kBullet);
  }
  for (const std::u32string_view other : {U"+", U"#", U"x", U"1", U"…", U"••", U"?"}) {
    EXPECT_FALSE(ReadLabel(other).has_value());
  }
}

TEST(ListLabels, ReadsNumbersWithinBounds) {
  const auto value_of = [](std::u32string_view word) {
    const std::optional<FoundLabel> label = ReadLabel(word);
    return label ? label->value : -1;
  };
  EXPECT_EQ(value_of(U"999."), 999);
  EXPECT_EQ(value_of(U"1000."), -1);
  EXPECT_EQ(value_of(U"0)"), 0);
  EXPECT_EQ(value_of(U"1.2.3.4.5.6"), 6);
  EXPECT_EQ(value_of(U"1.2.3.4.5.6.7"), -1);
  EXPECT_EQ(value_of(U"[7]"), 7);
  EXPECT_EQ(value_of(U"(7."), -1);  // is not closed
  EXPECT_EQ(value_of(U"7"), -1);
  EXPECT_EQ(value_of(U".7)"), -1);
  EXPECT_EQ(value_of(U"1,2)"), -1);
  EXPECT_EQ(value_of(U"z."), 26);
  EXPECT_EQ(value_of(U"Z]"), 26);
  EXPECT_EQ(value_of(U"aB."), -1);
  EXPECT_EQ(value_of(U"()"), -1);
}

TEST(ListLabels, ReadsRomanNumbers) {
  const auto roman = [](std::u32string_view word) {
    const std::optional<FoundLabel> label = ReadLabel(word);
    return label && label->may_be_roman ? label->roman_value : -1;
  };
  EXPECT_EQ(roman(U"i."), 1);
  EXPECT_EQ(roman(U"ix."), 9);
  EXPECT_EQ(roman(U"xiv."), 14);
  EXPECT_EQ(roman(U"XL."), 40);
  EXPECT_EQ(roman(U"XCIX."), 99);
  EXPECT_EQ(roman(U"LXXXIII."), 83);  // seven letters
  EXPECT_EQ(roman(U"LXXXVIII."), -1);
  EXPECT_EQ(roman(U"a."), -1);
  EXPECT_EQ(roman(U"ivy."), -1);
  EXPECT_EQ(ReadLabel(U"ii.")->kind, ListKind::kLowerRoman);
  EXPECT_EQ(ReadLabel(U"II.")->kind, ListKind::kUpperRoman);
}

TEST(ListLabels, CountsThePartsOfNumbers) {
  const std::optional<FoundLabel> label = ReadLabel(U"3.14");
  ASSERT_TRUE(label.has_value());
  EXPECT_EQ(label->value, 14);
  EXPECT_EQ(label->parts, 2);
}

TEST(ListLabels, KnowsLettersThatAreRomanNumbers) {
  const std::optional<FoundLabel> label = ReadLabel(U"v.");
  ASSERT_TRUE(label.has_value());
  EXPECT_EQ(label->value, 22);
  EXPECT_TRUE(label->may_be_roman);
  EXPECT_EQ(label->roman_value, 5);
}

}  // namespace
}  // namespace TarnixTools::engines
