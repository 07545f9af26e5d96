// The wide strings of the engines' interfaces and UTF-8: what public tests of Utf8ToWs cannot
// reach.
#include <gtest/gtest.h>

#include "foundation/Unicode.h"

namespace TarnixTools {
namespace {

TEST(WideToUtf8, WritesEveryLength) {
  EXPECT_EQ(WideToUtf8(L""), "");
  EXPECT_EQ(WideToUtf8(std::wstring{L'a', 0x7F, 0x80, 0x7FF, 0x800, 0xFFFF}),
            "a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF");
}

TEST(WideToUtf8, JoinsSurrogatePairs) {
  EXPECT_EQ(WideToUtf8(std::wstring{0xD83D, 0xDE00, L'!'}), "\xF0\x9F\x98\x80!");
  EXPECT_EQ(WideToUtf8(std::wstring{0xDBFF, 0xDFFF}), "\xF4\x8F\xBF\xBF");
}

TEST(WideToUtf8, TakesWholeCharactersToo) {
  EXPECT_EQ(WideToUtf8(std::wstring{0x1F600}), "\xF0\x9F\x98\x80");
}

TEST(WideToUtf8, ReplacesWhatIsNoCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(WideToUtf8(std::wstring{0xD83D}), replacement);
  EXPECT_EQ(WideToUtf8(std::wstring{0xD83D, L'a'}), replacement + "a");
  EXPECT_EQ(WideToUtf8(std::wstring{0xDE00, 0xD83D}), replacement + replacement);
  EXPECT_EQ(WideToUtf8(std::wstring{0x110000}), replacement);
}

TEST(WideToUtf8, ComesBackFromUtf8) {
  const std::string text = "C:\\\xC3\xA9\xE6\x96\x87\xF0\x9F\x98\x80.pdf";
  EXPECT_EQ(WideToUtf8(Utf8ToWide(text)), text);
}

}  // namespace
}  // namespace TarnixTools
