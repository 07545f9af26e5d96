// Tables of what is written and what it is read as.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Parser.h"
#include "pdf/syntax/SyntaxObserver.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {
namespace {

using Table = std::vector<std::pair<std::string, std::string>>;

// Each token with a letter for its kind: "i17 r2.5 s(x)".
std::string TokensOf(std::string_view text, bool is_whole = true) {
  constexpr std::string_view kLetters = "MEirosxn[]<>k";  // as Token::Kind has them
  Lexer lexer(text, is_whole);
  std::string out;
  for (;;) {
    const Token token = lexer.Next();
    out += out.empty() ? "" : " ";
    out += kLetters.at(static_cast<std::size_t>(token.kind));
    if (token.kind == Token::Kind::kEnd || token.kind == Token::Kind::kMore) {
      return out + std::to_string(lexer.position());
    }
    out += token.text;
    if (token.kind == Token::Kind::kInteger) {
      out += "=" + std::to_string(token.integer);
    } else {
      EXPECT_EQ(token.integer, 0) << token.text;
    }
  }
}

TEST(TokenTable, OfNumbers) {
  const std::string eighteen = "123456789012345678";
  const Table table = {
      {"0 ", "i0=0 E2"},
      {"-0", "i-0=0 E2"},
      {"+7 ", "i+7=7 E3"},
      {"-12 ", "i-12=-12 E4"},
      {"007", "i007=7 E3"},
      {"1.", "r1. E2"},
      {"1. ", "r1. E3"},
      {".5 ", "r.5 E3"},
      {"-.5", "r-.5 E3"},
      {"+1.50]", "r+1.50 ]] E6"},
      {"-1.5(", "r-1.5 s( E5"},
      {eighteen + " ", "i" + eighteen + "=" + eighteen + " E19"},
      {"-" + eighteen, "i-" + eighteen + "=-" + eighteen + " E19"},
      {eighteen + "9 ", "o" + eighteen + "9 E20"},
      {eighteen + "9", "o" + eighteen + "9 E19"},
      {eighteen + ".5 ", "r" + eighteen + ".5 E21"},
      {eighteen + "9.5 ", "r" + eighteen + "9.5 E22"},
      {". ", "o. E2"},
      {"-", "o- E1"},
      {"+ ", "o+ E2"},
      {"-. ", "o-. E3"},
      {"+. ", "k+. E3"},
      {"-- ", "k-- E3"},
      {".. ", "k.. E3"},
      {"--5 ", "o--5 E4"},
      {"5-3", "o5-3 E3"},
      {"1.2.3 ", "o1.2.3 E6"},
      {"1..2", "o1..2 E4"},
      {"1e5", "k1e5 E3"},
      {"5/N", "i5=5 n/N E3"},
      {"5%c", "i5=5 E3"},
      {"5x ", "k5x E3"},
      {"5R ", "i5=5 kR E3"},
      {"5obj", "i5=5 kobj E4"},
      {"5.5endobj ", "r5.5 kendobj E10"},
      {"-5stream", "i-5=-5 kstream E8"},
      {"5-endstream", "o5- kendstream E11"},
      {"5endstreams", "k5endstreams E11"},
      {"-R", "o- kR E2"},
      {"--R", "k--R E3"},
      {"R5", "kR5 E2"},
  };
  for (const auto& [text, tokens] : table) {
    EXPECT_EQ(TokensOf(text), tokens) << text;
  }
}

TEST(TokenTable, OfRealNumbersAsLongAsTheyMayBe) {
  const std::string digits(59, '3');
  EXPECT_EQ(TokensOf("1." + digits + " "), "r1." + digits + " E62");
  EXPECT_EQ(TokensOf("1." + digits), "r1." + digits + " E61");
  EXPECT_EQ(TokensOf("1." + digits + "4"), "o1." + digits + "4 E62");
  EXPECT_EQ(TokensOf("1." + digits + "4 "), "o1." + digits + "4 E63");
  EXPECT_EQ(TokensOf("-." + digits + "4"), "r-." + digits + "4 E62");
  EXPECT_EQ(TokensOf("-." + digits + "44"), "o-." + digits + "44 E63");
}

TEST(TokenTable, OfEverythingElse) {
  const Table table = {
      {"", "E0"},
      {" \t\r\n\f", "E5"},
      {"% all\r%more\n %", "E14"},
      {"/A/B", "n/A n/B E4"},
      {"/ /", "n/ n/ E3"},
      {"/A#20(x)", "n/A#20 s(x) E8"},
      {"(a(b)\\)c)d", "s(a(b)\\)c) kd E10"},
      {"(open", "s(open E5"},
      {"(\\", "s(\\ E2"},
      {"(a))", "s(a) k) E4"},
      {"<4 1>", "x<4 1> E5"},
      {"<41", "x<41 E3"},
      {"<", "x< E1"},
      {"<<", "<<< E2"},
      {"<<<", "<<< x< E3"},
      {">", "k> E1"},
      {">>", ">>> E2"},
      {">>>", ">>> k> E3"},
      {"> >", "k> k> E3"},
      {"[]", "[[ ]] E2"},
      {"{a}", "k{ ka k} E3"},
      {"true)null", "ktrue k) knull E9"},
      {"a%b\nc", "ka kc E5"},
      {std::string("\0a\0", 3), "ka E3"},
  };
  for (const auto& [text, tokens] : table) {
    EXPECT_EQ(TokensOf(text), tokens) << text;
  }
}

TEST(TokenTable, OfWindowsThatEnd) {
  const Table table = {{"1", "M0"},       {"1 ", "i1=1 M2"}, {"1 2", "i1=1 M2"},
                       {"1.5", "M0"},     {"1.", "M0"},      {"-", "M0"},
                       {"1x", "M0"},      {"1x ", "k1x M3"}, {"/A", "M0"},
                       {"/A ", "n/A M3"}, {"(a", "M0"},      {"(a)", "s(a) M3"},
                       {"(a\\", "M0"},    {"<4", "M0"},      {"<41>", "x<41> M4"},
                       {"<", "M0"},       {">", "M0"},       {">>", ">>> M2"},
                       {"> ", "k> M2"},   {"[", "[[ M1"},    {"]", "]] M1"},
                       {"{", "k{ M1"},    {"tru", "M0"},     {"true ", "ktrue M5"},
                       {" %c", "M3"},     {"5R", "M0"},      {"5obj ", "i5=5 kobj M5"}};
  for (const auto& [text, tokens] : table) {
    EXPECT_EQ(TokensOf(text, false), tokens) << text;
  }
}

std::string Decoded(std::string_view text) {
  Lexer lexer(text, true);
  std::string out = "+";  // it is appended to what is there
  const Token token = lexer.Next();
  if (token.kind == Token::Kind::kName) {
    DecodeName(token.text, out);
  } else {
    DecodeString(token, out);
  }
  return out.substr(1);
}

TEST(TokenTable, OfStringsAndNames) {
  const Table table = {
      {"(\\n\\r\\t\\b\\f)", "\n\r\t\b\f"},
      {"(\\(\\)\\\\\\q\\8)", "()\\q8"},
      {"(\\0534)", "+4"},
      {"(\\53)", "+"},
      {"(\\5)", "\5"},
      {"(\\5x)", "\5x"},
      {"(\\400\\777)", std::string("\0\xFF", 2)},
      {"(\\7)", "\7"},
      {"(\\78)", "\a8"},
      {"(a\\\nb\\\rc\\\r\nd)", "abcd"},
      {"(a\\\r", "a"},
      {"(a\rb\r\nc\nd\r)", "a\nb\nc\nd\n"},
      {"(a\r", "a\n"},
      {"(a\n\rb)", "a\n\nb"},
      {"(\\", ""},
      {"(a\\1", "a\1"},
      {"(open", "open"},
      {"(", ""},
      {"<>", ""},
      {"<4>", "@"},
      {"<4a4B4>", "JK@"},
      {"<4 x\n1>", "A"},
      {"<41", "A"},
      {"<00fF09aA>", std::string("\0\xFF\t\xAA", 4)},
      {"<gG@`>", ""},
      {"/", ""},
      {"/A", "A"},
      {"/A#42C", "ABC"},
      {"/#4", "#4"},
      {"/#", "#"},
      {"/#4g", "#4g"},
      {"/#g4", "#g4"},
      {"/##41", "#A"},
      {"/#41#6f", "Ao"},
      {"/#00", std::string(1, '\0')},
  };
  for (const auto& [text, bytes] : table) {
    EXPECT_EQ(Decoded(text), bytes) << text;
  }
}

TEST(TokenTable, OfNumbersPutRight) {
  const Table table = {{"--5", "-5"},
                       {"+-5", "-5"},
                       {"-+5", "-5"},
                       {"++5", "5"},
                       {"5-", "5"},
                       {"5-6.7", "5"},
                       {"1.2.3", "1.2"},
                       {"..5", "0"},
                       {".5.6", "0.5"},
                       {"-.", "-0"},
                       {"-", "-0"},
                       {"", "0"},
                       {".-5", "0"},
                       {"00012", "12"},
                       {"000.5", "0.5"},
                       {"1.", "1"},
                       {"-0.0", "-0.0"},
                       {"999999999999999999", "999999999999999999"},
                       {"1000000000000000000", "999999999999999999"},
                       {"-1000000000000000000.5", "-999999999999999999"},
                       {"0.12345678901234567890123", "0.12345678901234567890"},
                       {"123456789012345678.5", "123456789012345678.5"}};
  for (const auto& [text, number] : table) {
    EXPECT_EQ(NormalizedNumber(text), number) << text;
  }
}

TEST(TokenTable, OfCharacters) {
  std::string spaces;
  std::string delimiters;
  std::string digits;
  std::string hex;
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    spaces += IsSpace(c) ? std::string(1, c) : "";
    delimiters += !IsSpace(c) && !IsRegular(c) ? std::string(1, c) : "";
    digits += IsDigit(c) ? std::string(1, c) : "";
    hex += HexValue(c) >= 0 ? std::string(1, c) + std::to_string(HexValue(c)) + " " : "";
    EXPECT_FALSE(IsSpace(c) && IsRegular(c)) << i;
  }
  EXPECT_EQ(spaces, std::string("\0\t\n\f\r ", 6));
  EXPECT_EQ(delimiters, "%()/<>[]{}");
  EXPECT_EQ(digits, "0123456789");
  EXPECT_EQ(hex, "00 11 22 33 44 55 66 77 88 99 A10 B11 C12 D13 E14 F15 a10 b11 c12 d13 e14 f15 ");
}

// The value written again, "?" for what is not regular, and where the parser stopped.
std::string ParsedAs(std::string_view text) {
  Arena arena;
  Parser parser(arena);
  Lexer lexer(text, true);
  Object value = Object::Integer(99);
  const Parser::Status status = parser.Parse(lexer, nullptr, value);
  std::string out;
  AppendObject(out, value);
  return out + (status == Parser::Status::kNothing ? " nothing" : "") +
         (parser.is_regular() ? " @" : " ?@") + std::to_string(lexer.position());
}

TEST(TokenTable, OfValues) {
  const Table table = {
      {"", "null nothing @0"},
      {" % c", "null nothing @0"},
      {"endobj", "null nothing @0"},
      {" stream", "null nothing @0"},
      {"12", "12 @2"},
      {"12 0", "12 @2"},
      {"12 0 R", "12 0 R @6"},
      {"12 7 R x", "12 7 R @6"},
      {"12 0 obj", "12 @2"},
      {"12 (x)", "12 @2"},
      {"12 0 0 R", "12 @2"},
      {"0 0 R", "null ?@5"},
      {"1 65535 R", "1 65535 R @9"},
      {"1 65536 R", "null ?@9"},
      {"1 -1 R", "null ?@6"},
      {"-1 0 R", "null ?@6"},
      {"8388607 0 R", "8388607 0 R @11"},
      {"8388608 0 R", "null ?@11"},
      {"1.5 0 R", "1.5 @3"},
      {"R", "null ?@1"},
      {"null", "null @4"},
      {"true", "true @4"},
      {"false", "false @5"},
      {"truE", "null ?@4"},
      {"(a) (b)", "(a) @3"},
      {"<61>", "<61> @4"},
      {"/N", "/N @2"},
      {"/#4e", "/N @4"},
      {"--5", "-5 ?@3"},
      {"1.2.3", "1.2 ?@5"},
      {"]", "null ?@1"},
      {">>", "null ?@2"},
      {"[1 2 0 R 3]", "[1 2 0 R 3] @11"},
      {"[1 R]", "[1 null] ?@5"},
      {"[1 2 R R]", "[1 2 R null] ?@9"},
      {"[/A 2 R]", "[/A 2 null] ?@8"},
      {"[1 2.0 R]", "[1 2.0 null] ?@9"},
      {"5[1 0 R]", "5 @1"},
      {"[[1 0]R]", "[[1 0]null] ?@8"},
      {"[1 0[R]]", "[1 0[null]] ?@8"},
      {"[[][[]]<<>>]", "[[][[]]<<>>] @12"},
      {"[1", "[1] ?@2"},
      {"[1 endobj", "[1] ?@2"},
      {"[<</A[1", "[<</A[1]>>] ?@7"},
      {"[1>>2]", "[1] ?@4"},
      {"[[1>>2]", "[[1 2]] ?@7"},
      {"<</A 1>>", "<</A 1>> @8"},
      {"<</A[1>>2", "<</A[1]>> ?@8"},
      {"<</A[[1>>]>>", "<</A[[1]]>> ?@12"},
      {"<</A<<]/B 1>>>>", "<</A<</B 1>>>> ?@15"},
      {"<</A>>", "<</A null>> ?@6"},
      {"<</A/B/C>>", "<</A/B/C null>> ?@10"},
      {"<<1/A 2>>", "<</A 2>> ?@9"},
      {"<</A 1 2/B 3>>", "<</A 1/B 3>> ?@14"},
      {"<</A 1 0 R/B 2 0 R>>", "<</A 1 0 R/B 2 0 R>> @20"},
      {"<</A x/B 1>>", "<</A null/B 1>> ?@12"},
      {"<</A null>>", "<</A null>> @11"},
      {"<</A true/B false>>", "<</A true/B false>> @19"},
      {"xref", "null nothing @0"},
      {"trailer", "null nothing @0"},
      {"startxref", "null nothing @0"},
      {"obj", "null nothing @0"},
      {"endstream", "null nothing @0"},
      {"endobject", "null ?@9"},
  };
  for (const auto& [text, value] : table) {
    EXPECT_EQ(ParsedAs(text), value) << text;
  }
}

TEST(TokenTable, OfValuesInWindowsThatEnd) {
  for (const char* text :
       {"1", "1 ", "1 0", "1 0 ", "1 0 R", "[", "[1 ", "<</A 1>", "(a", "tru", " "}) {
    Arena arena;
    Parser parser(arena);
    Lexer lexer(text, false);
    Object value;
    EXPECT_EQ(parser.Parse(lexer, nullptr, value), Parser::Status::kMore) << text;
  }
  for (const char* text : {"1 (", "1 0 R ", "1 0 obj ", "[]", "<<>>", "(a)", "/A "}) {
    Arena arena;
    Parser parser(arena);
    Lexer lexer(text, false);
    Object value;
    EXPECT_EQ(parser.Parse(lexer, nullptr, value),
              std::string_view(text) == "1 (" ? Parser::Status::kMore : Parser::Status::kDone)
        << text;
  }
}

TEST(TokenTable, OfNestingAndItsBound) {
  const auto nested = [](int depth) {
    return std::string(static_cast<std::size_t>(depth), '[') + "7" +
           std::string(static_cast<std::size_t>(depth), ']');
  };
  const int most = limits::kMaxNesting;
  EXPECT_EQ(ParsedAs(nested(most)), nested(most) + " @" + std::to_string(2 * most + 1));
  const std::string cut = std::string(static_cast<std::size_t>(most), '[') + "null" +
                          std::string(static_cast<std::size_t>(most), ']');
  EXPECT_EQ(ParsedAs(nested(most + 1)), cut + " ?@" + std::to_string(2 * most + 3));
  EXPECT_EQ(ParsedAs(nested(most + 2)), cut + " ?@" + std::to_string(2 * most + 5));
}

TEST(TokenTable, OfValuesAfterOneThatIsTooDeep) {
  Arena arena;
  Parser parser(arena);
  Object value;
  const std::string deep(static_cast<std::size_t>(limits::kMaxNesting) + 1, '[');
  Lexer first(deep, true);
  parser.Parse(first, nullptr, value);
  EXPECT_FALSE(parser.is_regular());
  Lexer second("[1(x)]", true);
  EXPECT_EQ(parser.Parse(second, nullptr, value), Parser::Status::kDone);
  EXPECT_TRUE(parser.is_regular());
  std::string text;
  AppendObject(text, value);
  EXPECT_EQ(text, "[1(x)]");
}

std::string HexSyntaxText(std::string_view text) {
  Lexer lexer(text, true);
  const HexSyntax syntax = HexSyntaxOf(lexer.Next());
  return std::to_string(syntax.digits) + "/" + std::to_string(syntax.others);
}

TEST(TokenTable, OfHexadecimalStringsAsWritten) {
  EXPECT_EQ(HexSyntaxText("<>"), "0/0");
  EXPECT_EQ(HexSyntaxText("<4>"), "1/0");
  EXPECT_EQ(HexSyntaxText("<4 1\n>"), "2/0");
  EXPECT_EQ(HexSyntaxText("<4gF%>"), "2/2");
  EXPECT_EQ(HexSyntaxText("<41"), "2/0");
}

TEST(TokenTable, OfLineEnds) {
  const std::vector<std::pair<std::string, std::string>> table = {
      {"", "---"},    {"\n", "isE"},  {"\r", "isE"}, {"\r\n", "isE"}, {"\n\r", "-sE"},
      {" \n", "--E"}, {"\n ", "-s-"}, {" ", "---"},  {"\n\n", "-sE"}, {"x", "---"}};
  for (const auto& [text, facts] : table) {
    EXPECT_EQ(std::string(IsLineEnd(text) ? "i" : "-") + (StartsWithLineEnd(text) ? "s" : "-") +
                  (EndsWithLineEnd(text) ? "E" : "-"),
              facts)
        << text.size();
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
