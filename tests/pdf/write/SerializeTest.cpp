#include <algorithm>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Parser.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {
namespace {

std::string Number(double value, int decimals = 3) {
  std::string text;
  AppendNumber(text, value, decimals);
  return text;
}

TEST(Serialize, WritesNumbersInFewBytes) {
  EXPECT_EQ(Number(0), "0");
  EXPECT_EQ(Number(-0.0001), "0");
  EXPECT_EQ(Number(12), "12");
  EXPECT_EQ(Number(100), "100");
  EXPECT_EQ(Number(0.5), ".5");
  EXPECT_EQ(Number(-0.5), "-.5");
  EXPECT_EQ(Number(1.23456), "1.235");
  EXPECT_EQ(Number(1.5, 0), "2");
}

TEST(Serialize, WritesNoNumberThatReadersDoNotTake) {
  EXPECT_EQ(Number(1e300), "2147483647");
  EXPECT_EQ(Number(std::numeric_limits<double>::quiet_NaN()), "0");
  EXPECT_EQ(Number(std::numeric_limits<double>::infinity()), "0");
}

TEST(Serialize, SeparatesNumbers) {
  std::string text = "Td";
  AppendNumber(text, 5);
  AppendNumber(text, -5);
  text += '[';
  AppendNumber(text, 7);
  EXPECT_EQ(text, "Td 5 -5[7");
}

TEST(Serialize, WritesBoxes) {
  std::string text = "/MediaBox";
  AppendBox(text, {-0.25, 0, 595.276001, 841.89});
  EXPECT_EQ(text, "/MediaBox[-.25 0 595.276001 841.89]");
}

TEST(Serialize, AsksForWhatStandsInArraysAndDictionaries) {
  Arena arena;
  Object value;
  Lexer lexer("<</A<</B[1<</C 2>>]>>/D[<<>>/E]>>", true);
  Parser(arena).Parse(lexer, nullptr, value);
  std::string text;
  SerializeHooks hooks;
  hooks.nested = [](std::string& out, const Object& nested) {
    const bool is_replaced =
        nested.Has("C") || (nested.Items().size() == 2 && nested.Items()[1].IsName("E"));
    if (is_replaced) {
      AppendReference(out, 7);
    }
    return is_replaced;
  };
  AppendObject(text, value, hooks);
  EXPECT_EQ(text, "<</A<</B[1 7 0 R]>>/D 7 0 R>>");
}

// Each kind of value, as it stands and as hooks would have it.
TEST(Serialize, WritesEveryKindOfValue) {
  class Reversing : public StringTransform {
   public:
    void Apply(std::string& bytes) override { std::reverse(bytes.begin(), bytes.end()); }
  };

  Arena arena;
  Object value;
  Lexer lexer(
      "<</Null null/Yes true/No false/Int -12/Real +1.50/#4eame/a#20b#23#28/Text(a(b)\\))/Hex<6162>"
      "/Empty()/NoHex<>/Ref 7 3 R/List[1 2.0(c)/d 8 0 R null[]]/Map<</In 9 0 R>>>>",
      true);
  Parser(arena).Parse(lexer, nullptr, value);
  std::string text;
  AppendObject(text, value);
  EXPECT_EQ(text,
            "<</Null null/Yes true/No false/Int -12/Real "
            "+1.50/Name/a#20b#23#28/Text(a\\(b\\)\\))/Hex<6162>"
            "/Empty()/NoHex<>/Ref 7 3 R/List[1 2.0(c)/d 8 0 R null[]]/Map<</In 9 0 R>>>>");
  Reversing strings;
  SerializeHooks hooks;
  hooks.strings = &strings;
  hooks.real = [](std::string& out, std::string_view real) { out += " r" + std::string(real); };
  hooks.reference = [](std::string& out, Reference reference) {
    AppendReference(out, reference.number + 100, reference.generation);
  };
  hooks.leaves_out = [](Reference reference) { return reference.number > 7; };
  text.clear();
  AppendObject(text, value, hooks);
  EXPECT_EQ(text,
            "<</Null null/Yes true/No false/Int -12/Real "
            "r+1.50/Name/a#20b#23#28/Text<2929622861>/Hex<6261>"
            "/Empty<>/NoHex<>/Ref 107 3 R/List[1 r2.0<63>/d null[]]/Map<<>>>>");
}

}  // namespace
}  // namespace TarnixTools::pdf
