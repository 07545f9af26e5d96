#include <string>

#include <gtest/gtest.h>

#include "pdf/syntax/HexText.h"

namespace TarnixTools::pdf {
namespace {

TEST(HexText, HasTheLastDigitsWithTheHighestFirst) {
  std::string text = "<";
  AppendHex(text, 0x1A2B, 4);
  AppendHex(text, 0x1A2B, 2);
  AppendHex(text, 5, 3);
  EXPECT_EQ(text, "<1A2B2B005");
}

TEST(HexText, TakesBytesForWhatHasNoSign) {
  std::string text;
  AppendHexByte(text, '\xFE');
  AppendHexByte(text, '\x07');
  EXPECT_EQ(text, "FE07");
}

}  // namespace
}  // namespace TarnixTools::pdf
