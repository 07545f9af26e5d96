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

}  // namespace
}  // namespace TarnixTools::pdf
