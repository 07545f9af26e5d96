#include <vector>

#include <gtest/gtest.h>

#include "pdf/syntax/Lexer.h"

namespace TarnixTools::pdf {
namespace {

std::vector<Token> Tokens(std::string_view text) {
  Lexer lexer(text, true);
  std::vector<Token> tokens;
  for (Token token = lexer.Next(); token.kind != Token::Kind::kEnd; token = lexer.Next()) {
    tokens.push_back(token);
  }
  return tokens;
}

Token::Kind KindOf(std::string_view text) {
  return Tokens(text).at(0).kind;
}

std::string DecodedString(std::string_view text) {
  std::string bytes;
  DecodeString(Tokens(text).at(0), bytes);
  return bytes;
}

std::string DecodedName(std::string_view text) {
  std::string name;
  DecodeName(text, name);
  return name;
}

TEST(Lexer, CutsAdjoiningTokens) {
  const auto tokens = Tokens("<</A[1 -2.5(x)<41>]/B true>>");
  ASSERT_EQ(tokens.size(), 11U);
  EXPECT_EQ(tokens[0].kind, Token::Kind::kDictionaryOpen);
  EXPECT_EQ(tokens[1].text, "/A");
  EXPECT_EQ(tokens[3].integer, 1);
  EXPECT_EQ(tokens[4].kind, Token::Kind::kReal);
  EXPECT_EQ(tokens[6].kind, Token::Kind::kHexString);
  EXPECT_EQ(tokens[10].kind, Token::Kind::kDictionaryClose);
}

TEST(Lexer, TellsNumbersFromKeywords) {
  EXPECT_EQ(KindOf("+17"), Token::Kind::kInteger);
  EXPECT_EQ(KindOf(".5"), Token::Kind::kReal);
  EXPECT_EQ(KindOf("5."), Token::Kind::kReal);
  EXPECT_EQ(KindOf("--5"), Token::Kind::kOddNumber);
  EXPECT_EQ(KindOf("1.2.3"), Token::Kind::kOddNumber);
  EXPECT_EQ(KindOf("1e5"), Token::Kind::kKeyword);
  EXPECT_EQ(KindOf("12345678901234567890"), Token::Kind::kOddNumber);
  EXPECT_EQ(KindOf("endobj"), Token::Kind::kKeyword);
}

TEST(Lexer, CutsANumberFromTheKeywordBehindIt) {
  const auto tokens = Tokens("1 0obj 12endobj 0.5stream 3x 4Robj");
  ASSERT_EQ(tokens.size(), 9U);
  EXPECT_EQ(tokens[1].kind, Token::Kind::kInteger);
  EXPECT_EQ(tokens[2].text, "obj");
  EXPECT_EQ(tokens[3].integer, 12);
  EXPECT_EQ(tokens[4].text, "endobj");
  EXPECT_EQ(tokens[5].kind, Token::Kind::kReal);
  EXPECT_EQ(tokens[7].text, "3x");
  EXPECT_EQ(tokens[8].kind, Token::Kind::kKeyword);
}

TEST(Lexer, SkipsCommentsAndEveryKindOfSpace) {
  const auto tokens = Tokens(std::string_view("% note\r1%\n\f\t\0 2", 16));
  ASSERT_EQ(tokens.size(), 2U);
  EXPECT_EQ(tokens[1].integer, 2);
}

TEST(Lexer, AsksForMoreAtTheEndOfAWindow) {
  for (const char* text : {"123", "/Nam", "(ab", "<41", "<", "  ", "% comment"}) {
    Lexer lexer(text, false);
    EXPECT_EQ(lexer.Next().kind, Token::Kind::kMore) << text;
  }
  Lexer lexer("123 ", false);
  EXPECT_EQ(lexer.Next().integer, 123);
}

TEST(Lexer, DecodesStrings) {
  EXPECT_EQ(DecodedString("(a(b)c)"), "a(b)c");
  EXPECT_EQ(DecodedString("(\\n\\r\\t\\b\\f\\(\\)\\\\\\x)"), "\n\r\t\b\f()\\x");
  EXPECT_EQ(DecodedString("(\\101\\53\\0061)"), "A+\0061");
  EXPECT_EQ(DecodedString("(a\\\r\nb\r\nc\rd)"), "ab\nc\nd");
  EXPECT_EQ(DecodedString("<4 1\n42 5>"), "ABP");
  EXPECT_EQ(DecodedString("()"), "");
}

TEST(Lexer, DecodesNames) {
  EXPECT_EQ(DecodedName("/A#20B"), "A B");
  EXPECT_EQ(DecodedName("/A#2"), "A#2");
  EXPECT_EQ(DecodedName("/A#zz"), "A#zz");
  EXPECT_EQ(DecodedName("/"), "");
}

TEST(Lexer, NormalizesOddNumbers) {
  EXPECT_EQ(NormalizedNumber("--5"), "-5");
  EXPECT_EQ(NormalizedNumber("+-3.50"), "-3.50");
  EXPECT_EQ(NormalizedNumber("12-34"), "12");
  EXPECT_EQ(NormalizedNumber("1.2.3"), "1.2");
  EXPECT_EQ(NormalizedNumber("."), "0");
  EXPECT_EQ(NormalizedNumber(std::string(400, '9')), "999999999999999999");
}

}  // namespace
}  // namespace TarnixTools::pdf
