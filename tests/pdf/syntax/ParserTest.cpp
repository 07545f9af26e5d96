#include <gtest/gtest.h>

#include "pdf/Limits.h"
#include "pdf/syntax/Parser.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {
namespace {

struct Parsed {
  std::string text;
  bool is_regular;
};

// Reads one value and writes it again.
Parsed Reparse(std::string_view text) {
  Arena arena;
  Parser parser(arena);
  Lexer lexer(text, true);
  Object value;
  parser.Parse(lexer, nullptr, value);
  std::string out;
  AppendObject(out, value);
  return {out, parser.is_regular()};
}

TEST(Parser, ReadsEveryKindOfObject) {
  const Parsed parsed =
      Reparse("<< /A [ 1 2.50 true false null ] /B (x) /C <0A> /D 12 0 R /E << >> /F /G >>");
  EXPECT_EQ(parsed.text, "<</A[1 2.50 true false null]/B(x)/C<0A>/D 12 0 R/E<<>>/F/G>>");
  EXPECT_TRUE(parsed.is_regular);
}

TEST(Parser, TellsReferencesFromIntegers) {
  EXPECT_EQ(Reparse("[1 2 3 0 R 4]").text, "[1 2 3 0 R 4]");
  EXPECT_EQ(Reparse("7 0 R").text, "7 0 R");
  EXPECT_EQ(Reparse("7 0 obj").text, "7");
  EXPECT_EQ(Reparse("7").text, "7");
}

// Turns every byte around, as a cipher would.
class Flip : public StringTransform {
 public:
  void Apply(std::string& bytes) override {
    for (char& c : bytes) {
      c = static_cast<char>(c ^ 1);
    }
  }
};

std::string ReparseFlipped(std::string_view text) {
  Arena arena;
  Parser parser(arena);
  Lexer lexer(text, true);
  Flip flip;
  Object value;
  parser.Parse(lexer, &flip, value);
  std::string out;
  AppendObject(out, value);
  return out;
}

TEST(Parser, TransformsStrings) {
  EXPECT_EQ(ReparseFlipped("[(ab)<4142>/ab]"), "[(`c)<4043>/ab]");
  EXPECT_EQ(ReparseFlipped("<</Subtype/Text/Contents(ab)/T(ab)>>"),
            "<</Subtype/Text/Contents(`c)/T(`c)>>");
  EXPECT_EQ(ReparseFlipped("<</Contents(ab)/A<</Contents(ab)"),
            "<</Contents(`c)/A<</Contents(`c)>>>>");
  EXPECT_EQ(ReparseFlipped("<</Contents[(ab)]>>"), "<</Contents[(`c)]>>");
}

TEST(Parser, LeavesTheContentsOfASignatureAsTheyAre) {
  EXPECT_EQ(ReparseFlipped("<</Contents<4142>/M(ab)/ByteRange[0 1 2 3]>>"),
            "<</Contents<4142>/M(`c)/ByteRange[0 1 2 3]>>");
  // Of the signature itself, not of what is in it or around it.
  EXPECT_EQ(ReparseFlipped("<</Contents(ab)/V<</ByteRange[]/Contents(ab)/P<</Contents(ab)>>>>>>"),
            "<</Contents(`c)/V<</ByteRange[]/Contents(ab)/P<</Contents(`c)>>>>>>");
}

TEST(Parser, ReadsNumbersThatRunIntoAKeyword) {
  EXPECT_EQ(Reparse("20184endobj").text, "20184");
  EXPECT_EQ(Reparse("[1 0R 2.5R]").text, "[1 0 R 2.5 null]");
  EXPECT_EQ(Reparse("<</A 3endobj").text, "<</A 3>>");
}

TEST(Parser, LeavesTheLexerBehindTheValue) {
  Arena arena;
  Parser parser(arena);
  Lexer lexer("5 6 endobj", true);
  Object value;
  EXPECT_EQ(parser.Parse(lexer, nullptr, value), Parser::Status::kDone);
  EXPECT_EQ(lexer.Next().integer, 6);
}

TEST(Parser, MendsWhatIsNotClosed) {
  const Parsed dictionary = Reparse("<</A 1/B[2 3 endobj");
  EXPECT_EQ(dictionary.text, "<</A 1/B[2 3]>>");
  EXPECT_FALSE(dictionary.is_regular);
  EXPECT_EQ(Reparse("<</A[1 2>>").text, "<</A[1 2]>>");
  EXPECT_EQ(Reparse("<</A 1]/B 2>>").text, "<</A 1/B 2>>");
  EXPECT_EQ(Reparse("<</A").text, "<</A null>>");
}

TEST(Parser, TellsWhatIsNotRegular) {
  for (const char* text : {"<</A[1 2>>", "<</A 1]/B 2>>", "[1>>]", "<</A>>", "<</A", "[1 R]", "]",
                           "[0 0 R]", "foo", "[1 bar]", "<</A 1 2>>", "[--5]"}) {
    EXPECT_FALSE(Reparse(text).is_regular) << text;
  }
  for (const char* text : {"<</A[1 2]>>", "[]", "<<>>", "null", "[null]", "[65535 65535 R]"}) {
    EXPECT_TRUE(Reparse(text).is_regular) << text;
  }
}

TEST(Parser, PassesOverKeysThatAreNoNames) {
  const Parsed parsed = Reparse("<< 12 /A 1 (x) /B 2 >>");
  EXPECT_EQ(parsed.text, "<</A 1/B 2>>");
  EXPECT_FALSE(parsed.is_regular);
}

TEST(Parser, TakesTheLastOfEqualKeys) {
  Arena arena;
  Parser parser(arena);
  Lexer lexer("<</A 1/A 2>>", true);
  Object value;
  parser.Parse(lexer, nullptr, value);
  EXPECT_EQ(value.Get("A").IntegerOr(0), 2);
}

TEST(Parser, RefusesReferencesOutOfRange) {
  EXPECT_EQ(Reparse("[0 0 R -1 0 R 99999999999 0 R 1 70000 R]").text, "[null null null null]");
}

TEST(Parser, TakesReferencesBeyondFilesWhenAsked) {
  Arena arena;
  Parser parser(arena);
  parser.set_max_reference(9'000'000);
  Lexer lexer("[9000000 0 R 9000001 0 R]", true);
  Object value;
  parser.Parse(lexer, nullptr, value);
  EXPECT_EQ(value.Items()[0].AsReference().number, 9'000'000U);
  EXPECT_TRUE(value.Items()[1].IsNull());
}

TEST(Parser, BoundsNesting) {
  const int depth = 200000;
  const Parsed parsed = Reparse(std::string(depth, '[') + std::string(depth, ']') + " 1");
  EXPECT_FALSE(parsed.is_regular);
  EXPECT_EQ(parsed.text,
            std::string(limits::kMaxNesting, '[') + "null" + std::string(limits::kMaxNesting, ']'));
}

TEST(Parser, AsksForMoreWhenTheWindowEnds) {
  const std::string_view whole = "<</A[1 2 0 R(text)]/B<</C/D>>>> ";
  for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
    Arena arena;
    Parser parser(arena);
    Lexer lexer(whole.substr(0, size), false);
    Object value;
    EXPECT_EQ(parser.Parse(lexer, nullptr, value), Parser::Status::kMore) << size;
  }
}

TEST(Object, GivesNumbersInEitherForm) {
  EXPECT_EQ(Object::Real("-12.75").IntegerOr(0), -12);
  EXPECT_DOUBLE_EQ(Object::Real("+.5").NumberOr(0), 0.5);
  EXPECT_DOUBLE_EQ(Object::Integer(3).NumberOr(0), 3);
  EXPECT_EQ(Object::Name("x").IntegerOr(9), 9);
}

TEST(Serialize, ChoosesTheShorterString) {
  std::string out;
  AppendString(out, "a(b)\\\r\n", false);
  EXPECT_EQ(out, "(a\\(b\\)\\\\\\r\n)");
  out.clear();
  AppendString(out, "((((", false);
  EXPECT_EQ(out, "(\\(\\(\\(\\()");
  out.clear();
  AppendString(out, "AB", true);
  EXPECT_EQ(out, "<4142>");
}

TEST(Serialize, EscapesNames) {
  std::string out;
  AppendName(out, "A B#/\xE9");
  EXPECT_EQ(out, "/A#20B#23#2F#E9");
}

// What an object that was cut has left undone does not touch the next one.
TEST(Parser, BeginsAfresh) {
  class Marking : public StringTransform {
   public:
    void Apply(std::string& bytes) override { bytes += "!"; }
  };

  Marking marking;
  Arena arena;
  Parser parser(arena);
  Object value;
  Lexer cut("<</Contents(ab)/A[(c)", false);
  EXPECT_EQ(parser.Parse(cut, &marking, value), Parser::Status::kMore);
  Lexer whole("<</A(b)/B(c)>> ", true);
  EXPECT_EQ(parser.Parse(whole, &marking, value), Parser::Status::kDone);
  std::string out;
  AppendObject(out, value);
  EXPECT_EQ(out, "<</A(b!)/B(c!)>>");
  EXPECT_TRUE(parser.is_regular());
}

}  // namespace
}  // namespace TarnixTools::pdf
