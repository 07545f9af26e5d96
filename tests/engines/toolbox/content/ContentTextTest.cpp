#include <gtest/gtest.h>

#include "engines/toolbox/content/ContentText.h"

namespace TarnixTools::engines::toolbox {
namespace {

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
