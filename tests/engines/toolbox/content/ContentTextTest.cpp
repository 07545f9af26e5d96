#include <limits>

#include <gtest/gtest.h>

#include "engines/toolbox/content/ContentText.h"

namespace TarnixTools::engines::toolbox {
namespace {

std::string Number(double value, int decimals = 3) {
  std::string text;
  AppendNumber(text, value, decimals);
  return text;
}

TEST(ContentText, WritesNumbersInFewBytes) {
  EXPECT_EQ(Number(0), "0");
  EXPECT_EQ(Number(-0.0001), "0");
  EXPECT_EQ(Number(12), "12");
  EXPECT_EQ(Number(100), "100");
  EXPECT_EQ(Number(0.5), ".5");
  EXPECT_EQ(Number(-0.5), "-.5");
  EXPECT_EQ(Number(1.23456), "1.235");
  EXPECT_EQ(Number(1.5, 0), "2");
}

TEST(ContentText, WritesNoNumberThatReadersDoNotTake) {
  EXPECT_EQ(Number(1e300), "1000000000");
  EXPECT_EQ(Number(std::numeric_limits<double>::quiet_NaN()), "0");
  EXPECT_EQ(Number(std::numeric_limits<double>::infinity()), "0");
}

TEST(ContentText, SeparatesOperands) {
  std::string text = "Td";
  AppendOperand(text, 5);
  AppendOperand(text, -5);
  text += '[';
  AppendOperand(text, 7);
  EXPECT_EQ(text, "Td 5 -5[7");
}

TEST(ContentText, WritesTextInUtf16) {
  std::string text;
  AppendUtf16Hex(text, U"A\u20ac\U00010348");
  EXPECT_EQ(text, "004120ACD800DF48");
}

TEST(Matrix, TurnsExactlyByQuarters) {
  for (const double angle : {90.0, -270.0, 450.0}) {
    const pdf::Matrix turn = pdf::Matrix::Rotation(angle);
    EXPECT_EQ(turn.a, 0);
    EXPECT_EQ(turn.b, 1);
    EXPECT_EQ(turn.c, -1);
    EXPECT_EQ(turn.d, 0);
  }
  EXPECT_TRUE(pdf::Matrix::Rotation(360).IsIdentity());
  EXPECT_TRUE(pdf::Matrix::Rotation(-720).IsIdentity());
}

TEST(Matrix, AppliesTheInnerFirst) {
  const pdf::Matrix both = pdf::Matrix::Translation(10, 0) * pdf::Matrix::Rotation(90);
  EXPECT_NEAR(both.e, 0, 1e-9);
  EXPECT_NEAR(both.f, 10, 1e-9);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
