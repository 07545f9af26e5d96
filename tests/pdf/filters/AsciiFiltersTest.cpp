#include <string>

#include <gtest/gtest.h>

#include "pdf/filters/Filters.h"

namespace TarnixTools::pdf {
namespace {

using std::string_literals::operator""s;

constexpr std::size_t kAmple = 1 << 20;

Decoded Decode85(std::string_view encoded) {
  return Decode({{FilterKind::kAscii85, {}}}, encoded, kAmple);
}

Decoded DecodeHex(std::string_view encoded) {
  return Decode({{FilterKind::kAsciiHex, {}}}, encoded, kAmple);
}

void ExpectWhole(const Decoded& decoded, const std::string& data) {
  EXPECT_EQ(decoded.data, data);
  EXPECT_TRUE(decoded.complete);
}

void ExpectPart(const Decoded& decoded, const std::string& data) {
  EXPECT_EQ(decoded.data, data);
  EXPECT_FALSE(decoded.complete);
}

TEST(Ascii85, DecodesWholeAndPartialGroups) {
  ExpectWhole(Decode85("87cURD_*#4DfTZ)+T~>"), "Hello, World!");
  ExpectWhole(Decode85("s8W-!~>"), "\xFF\xFF\xFF\xFF");
  ExpectWhole(Decode85("5l~>"), "A");
  ExpectWhole(Decode85("~>"), "");
  ExpectWhole(Decode85("87cUR~>ignored"), "Hell");
}

TEST(Ascii85, DecodesZeroGroups) {
  ExpectWhole(Decode85("z@:E_Wz!!~>"), "\0\0\0\0abcd\0\0\0\0\0"s);
}

TEST(Ascii85, SkipsWhiteSpaceAndAnOpening) {
  ExpectWhole(Decode85(" <~87c\nURD_\t*#4DfT\r\nZ)+T ~>"), "Hello, World!");
  ExpectWhole(Decode85("87cURD_*#4DfTZ)+T~\n>"), "Hello, World!");
}

TEST(Ascii85, KeepsWhatComesBeforeDamage) {
  ExpectPart(Decode85("87cUR"), "Hell");         // no end
  ExpectPart(Decode85("87cURD~>"), "Hell");      // one digit stands for nothing
  ExpectPart(Decode85("87cUR\x7F~>"), "Hell");   // not a digit
  ExpectPart(Decode85("87cURuuuuu~>"), "Hell");  // more than 32 bits
  ExpectPart(Decode85("87cUR8z~>"), "Hell");     // zeros inside a group
}

TEST(AsciiHex, DecodesEitherCaseAndWhiteSpace) {
  ExpectWhole(DecodeHex("48 65\n6C6c\r\n6F>"), "Hello");
  ExpectWhole(DecodeHex(">"), "");
}

TEST(AsciiHex, FillsAnOddDigitWithZero) {
  ExpectWhole(DecodeHex("616>"), "a`");
}

TEST(AsciiHex, KeepsWhatComesBeforeDamage) {
  ExpectPart(DecodeHex("6162"), "ab");
  ExpectPart(DecodeHex("6162xx63>"), "ab");
}

TEST(RunLength, DecodesRunsAndLiterals) {
  const Decoded decoded =
      Decode({{FilterKind::kRunLength, {}}}, "\x04Hello\xFD-\x00!\x81~\x80more"s, kAmple);
  ExpectWhole(decoded, "Hello----!" + std::string(128, '~'));
}

TEST(RunLength, KeepsWhatComesBeforeACut) {
  const auto decode = [](std::string_view encoded) {
    return Decode({{FilterKind::kRunLength, {}}}, encoded, kAmple);
  };
  ExpectPart(decode("\x04Hel"), "Hel");
  ExpectPart(decode("\x01Hi\xFD"), "Hi");
  ExpectPart(decode("\x01Hi"), "Hi");
}

}  // namespace
}  // namespace TarnixTools::pdf
