#include <gtest/gtest.h>

#include "foundation/Utf8.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::pdf {
namespace {

using namespace std::string_view_literals;

TEST(TextString, ReadsPdfDocEncoding) {
  EXPECT_EQ(TextStringToUtf8("A\xE9\xA0\x80\x18"sv), "A\u00E9\u20AC\u2022\u02D8");
}

TEST(TextString, ReadsUtf16OfEitherOrder) {
  EXPECT_EQ(TextStringToUtf8("\xFE\xFF\x00\x41\xD8\x3D\xDE\x00"sv), "A\U0001F600");
  EXPECT_EQ(TextStringToUtf8("\xFF\xFE\x41\x00"sv), "A");
  EXPECT_EQ(TextStringToUtf8("\xFE\xFF\xD8\x3D\x00\x41"sv),
            "\uFFFD"
            "A");
  EXPECT_EQ(TextStringToUtf8("\xFE\xFF\x00"sv), "");
}

TEST(TextString, LeavesLanguageEscapesOut) {
  EXPECT_EQ(TextStringToUtf8("\xFE\xFF\x00\x1B\x00\x65\x00\x6E\x00\x1B\x00\x41"sv), "A");
  EXPECT_EQ(TextStringToUtf8("\xFE\xFF\x00\x41\x00\x1B\x00\x65"sv), "A");
  EXPECT_EQ(TextStringToUtf8("\xFF\xFE\x1B\x00\x65\x00\x1B\x00\x41\x00"sv), "A");
  EXPECT_EQ(TextStringToUtf8("\xFE\xFF\x00\x1B\x01\x1B\x00\x1B\x00\x41"sv), "A");
}

TEST(TextString, ReadsUtf8AndMarksWhatIsNot) {
  EXPECT_EQ(TextStringToUtf8("\xEF\xBB\xBF\xC3\xA9"sv), "\u00E9");
  EXPECT_EQ(TextStringToUtf8("\xEF\xBB\xBF\xC3"
                             "A\xC0\x80\xE6\x96"sv),
            "\uFFFD"
            "A\uFFFD\uFFFD\uFFFD");
  // A surrogate: no byte of it continues the first.
  EXPECT_EQ(TextStringToUtf8("\xEF\xBB\xBF\xED\xA0\x80"sv), "\uFFFD\uFFFD\uFFFD");
}

TEST(TextString, WritesPdfDocEncodingWhereThatHasAllCharacters) {
  EXPECT_EQ(Utf8ToTextString("A\u00E9\u20AC\u2022\u02D8\u0141"sv), "A\xE9\xA0\x80\x18\x95"sv);
  EXPECT_EQ(Utf8ToTextString("\t\n\r ~"sv), "\t\n\r ~"sv);
  EXPECT_EQ(Utf8ToTextString(""sv), ""sv);
}

TEST(TextString, WritesUtf16WhereACharacterIsMissing) {
  EXPECT_EQ(Utf8ToTextString("A\U0001F600"sv), "\xFE\xFF\x00\x41\xD8\x3D\xDE\x00"sv);
  EXPECT_EQ(Utf8ToTextString("\u65E5"sv), "\xFE\xFF\x65\xE5"sv);
  // Code points whose bytes mean nothing, or something else, in PDFDocEncoding.
  EXPECT_EQ(Utf8ToTextString("\0"sv), "\xFE\xFF\x00\x00"sv);
  EXPECT_EQ(Utf8ToTextString("\x18"sv), "\xFE\xFF\x00\x18"sv);
  EXPECT_EQ(Utf8ToTextString("\x7F"sv), "\xFE\xFF\x00\x7F"sv);
  EXPECT_EQ(Utf8ToTextString("\u0080"sv), "\xFE\xFF\x00\x80"sv);
  EXPECT_EQ(Utf8ToTextString("\u00A0"sv), "\xFE\xFF\x00\xA0"sv);
  EXPECT_EQ(Utf8ToTextString("\u00AD"sv), "\xFE\xFF\x00\xAD"sv);
}

TEST(TextString, WritesNothingThatLooksLikeAnotherEncoding) {
  for (const std::string_view text :
       {"\u00FE\u00FFa"sv, "\u00FF\u00FEa"sv, "\u00EF\u00BB\u00BFa"sv}) {
    const std::string bytes = Utf8ToTextString(text);
    EXPECT_TRUE(bytes.starts_with("\xFE\xFF\x00"sv));
    EXPECT_EQ(TextStringToUtf8(bytes), text);
  }
}

TEST(TextString, WritesAReplacementForWhatIsNoText) {
  const auto round_trip = [](std::string_view text) {
    return TextStringToUtf8(Utf8ToTextString(text));
  };
  EXPECT_EQ(round_trip("a\xFF"
                       "b"sv),
            "a\uFFFD"
            "b");
  EXPECT_EQ(round_trip("\xC3"sv), "\uFFFD");
  EXPECT_EQ(round_trip("\xED\xA0\x80"sv), "\uFFFD\uFFFD\uFFFD");  // a surrogate
  EXPECT_EQ(round_trip("a\x1B"
                       "b"sv),
            "a\uFFFD"
            "b");  // would start a language escape
}

TEST(TextString, TellsItsEncoding) {
  EXPECT_EQ(EncodingOf("\xFE\xFF"sv), TextEncoding::kUtf16BigEndian);
  EXPECT_EQ(EncodingOf("\xFF\xFE\x41\x00"sv), TextEncoding::kUtf16LittleEndian);
  EXPECT_EQ(EncodingOf("\xEF\xBB\xBFz"sv), TextEncoding::kUtf8);
  for (const std::string_view text : {""sv, "a"sv, "\xFE"sv, "\xEF\xBB"sv, "\x00\xFE\xFF"sv}) {
    EXPECT_EQ(EncodingOf(text), TextEncoding::kPdfDoc) << text;
  }
}

TEST(TextString, GrowsInItsOwnEncoding) {
  EXPECT_EQ(TextStringWith("a\xE4"sv, "_2"), "a\xE4_2"sv);
  EXPECT_EQ(TextStringWith("\xEF\xBB\xBF\xC3\xA4"sv, "_2"), "\xEF\xBB\xBF\xC3\xA4_2"sv);
  EXPECT_EQ(TextStringWith("\xFE\xFF\x00\xE4"sv, "_2"), "\xFE\xFF\x00\xE4\x00_\x00\x32"sv);
  EXPECT_EQ(TextStringWith("\xFF\xFE\xE4\x00"sv, "_2"), "\xFF\xFE\xE4\x00_\x00\x32\x00"sv);
  EXPECT_EQ(TextStringWith("\xFE\xFF\x00\xE4\x00"sv, "_"), "\xFE\xFF\x00\xE4\x00_"sv);
  EXPECT_EQ(TextStringWith(""sv, "_"), "_"sv);
}

TEST(TextString, ReadsBackEveryCodePointItWrites) {
  for (std::uint32_t code_point = 0; code_point <= 0x10FFFF;
       code_point += code_point < 0x3000 ? 1 : 97) {
    if (code_point == 0x1B || (code_point >= 0xD800 && code_point < 0xE000)) {
      continue;
    }
    std::string text;
    AppendUtf8(text, code_point);
    ASSERT_EQ(TextStringToUtf8(Utf8ToTextString(text)), text) << code_point;
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
