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
