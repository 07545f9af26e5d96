#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/Type1Code.h"
#include "engines/optimizer/fonts/Type1Program.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/ProgramFixture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using fonts::FontProgram;
using testing::Type1ProgramText;

// The decrypted part of a program.
std::string PrivateOf(const Type1Text& text) {
  return DecryptType1(text.bytes.substr(text.clear, text.encrypted), kType1ProgramKey);
}

TEST(Type1Program, KeepsTheGlyphsThatAreAskedFor) {
  const std::string bytes = Type1ProgramText({"A", "B", "C"});
  const auto program = Type1Program::Read(bytes);
  ASSERT_TRUE(program);
  const Type1Text cut = program->With({"B", "absent"});
  const std::string text = PrivateOf(cut);
  EXPECT_NE(text.find("/CharStrings 2 dict"), std::string::npos);
  EXPECT_NE(text.find("/B "), std::string::npos);
  EXPECT_EQ(text.find("/A "), std::string::npos);
  EXPECT_LT(cut.bytes.size(), bytes.size());
  const auto before = FontProgram::Open(bytes);
  const auto after = FontProgram::Open(cut.bytes);
  ASSERT_NE(after, nullptr);
  EXPECT_EQ(after->glyph_count(), 2U);
  EXPECT_EQ(after->ShapeOf(after->GlyphNamed("B")), before->ShapeOf(before->GlyphNamed("B")));
}

TEST(Type1Program, KeepsThePartsOfGlyphs) {
  const std::string bytes = Type1ProgramText({"A", "B"});
  const Type1Text cut = Type1Program::Read(bytes)->With({"eacute"});
  const auto before = FontProgram::Open(bytes);
  const auto after = FontProgram::Open(cut.bytes);
  ASSERT_NE(after, nullptr);
  EXPECT_NE(after->GlyphNamed("A"), 0U);
  EXPECT_EQ(after->GlyphNamed("B"), 0U);
  EXPECT_EQ(after->ShapeOf(after->GlyphNamed("eacute")),
            before->ShapeOf(before->GlyphNamed("eacute")));
}

TEST(Type1Program, TellsHowLongItsPartsAre) {
  const std::string bytes = Type1ProgramText({"A"});
  const Type1Text cut = Type1Program::Read(bytes)->With({"A"});
  EXPECT_TRUE(cut.bytes.substr(0, cut.clear).ends_with("currentfile eexec\n"));
  EXPECT_EQ(cut.bytes.substr(cut.clear + cut.encrypted).find_first_not_of("\n0"),
            cut.bytes.rfind("cleartomark") - cut.clear - cut.encrypted);
}

TEST(Type1Program, IsReadFromHexadecimalDigits) {
  const std::string bytes = Type1ProgramText({"A"});
  const std::size_t start = bytes.find("eexec\n") + 6;
  const std::size_t end = bytes.rfind("\n000");
  std::string text = bytes.substr(0, start);
  for (std::size_t i = start; i < end; ++i) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[static_cast<unsigned char>(bytes[i]) >> 4];
    text += kDigits[static_cast<unsigned char>(bytes[i]) & 15];
    text += i % 32 == 0 ? "\n" : "";
  }
  text += bytes.substr(end);
  const auto program = Type1Program::Read(text);
  ASSERT_TRUE(program);
  EXPECT_EQ(program->With({"A"}).bytes, Type1Program::Read(bytes)->With({"A"}).bytes);
}

TEST(Type1Program, IsLeftWhereItIsNotPlain) {
  const std::string bytes = Type1ProgramText({"A"});
  EXPECT_FALSE(Type1Program::Read(""));
  EXPECT_FALSE(Type1Program::Read("\x80\x01" + bytes));
  EXPECT_FALSE(Type1Program::Read("%!\n/WeightVector [1] def\n" + bytes));
  for (std::size_t size = 0; size < bytes.find("cleartomark") - 70; size += 7) {
    EXPECT_FALSE(Type1Program::Read(bytes.substr(0, size))) << size;
  }
}

TEST(Type1Code, TellsWhatItCalls) {
  const auto bytes = [](std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) {
      text += static_cast<char>(value);
    }
    return text;
  };
  // 5 callsubr; 9 1 3 callothersubr; 108 -108 1000 in their forms callsubr
  const Type1Calls calls =
      ReadType1Calls(bytes({144, 10, 148, 140, 142, 12, 16,  247, 0,  251, 0,
                            255, 0,  0,   3,   232, 10, 204, 205, 12, 6,   255}));
  EXPECT_EQ(calls.subroutines, (std::vector<std::int64_t>{5, 9, 1, 3, 108, -108, 1000}));
  EXPECT_EQ(calls.parts, (std::vector<std::uint8_t>{65, 66}));
  EXPECT_EQ(DecryptType1(EncryptType1("some text", 4330), 4330), "some text");
}

TEST(Type1Code, HasNumbersOfOneTwoAndFiveBytes) {
  const auto numbers_of = [](std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) {
      text += static_cast<char>(value);
    }
    return ReadType1Calls(text + "\x0A").subroutines;
  };
  using Numbers = std::vector<std::int64_t>;
  EXPECT_EQ(numbers_of({32, 139, 246}), (Numbers{-107, 0, 107}));
  EXPECT_EQ(numbers_of({247, 0, 247, 255, 248, 0, 250, 255}), (Numbers{108, 363, 364, 1131}));
  EXPECT_EQ(numbers_of({251, 0, 251, 255, 252, 0, 254, 255}), (Numbers{-108, -363, -364, -1131}));
  EXPECT_EQ(numbers_of({255, 0x12, 0x34, 0x56, 0x78}), (Numbers{0x12345678}));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
