#include <gtest/gtest.h>

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
}

TEST(TextString, ReadsUtf8AndMarksWhatIsNot) {
  EXPECT_EQ(TextStringToUtf8("\xEF\xBB\xBF\xC3\xA9"sv), "\u00E9");
  EXPECT_EQ(TextStringToUtf8("\xEF\xBB\xBF\xC3"
                             "A\xC0\x80\xED\xA0\x80"sv),
            "\uFFFD"
            "A\uFFFD\uFFFD\uFFFD");
}

}  // namespace
}  // namespace TarnixTools::pdf
