#include <limits>
#include <string>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace TarnixTools::pdf
