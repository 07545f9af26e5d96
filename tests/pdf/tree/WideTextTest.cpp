#include <gtest/gtest.h>

#include "pdf/tree/WideText.h"

namespace TarnixTools::pdf {
namespace {

TEST(WideText, WritesEveryLength) {
  EXPECT_EQ(Utf8OfWide(L""), "");
  EXPECT_EQ(Utf8OfWide(std::wstring{L'a', 0x7F, 0x80, 0x7FF, 0x800, 0xFFFF}),
            "a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF");
}

TEST(WideText, JoinsSurrogatePairs) {
  EXPECT_EQ(Utf8OfWide(std::wstring{0xD83D, 0xDE00, L'!'}), "\xF0\x9F\x98\x80!");
  EXPECT_EQ(Utf8OfWide(std::wstring{0xDBFF, 0xDFFF}), "\xF4\x8F\xBF\xBF");
}

TEST(WideText, TakesWholeCharactersToo) {
  EXPECT_EQ(Utf8OfWide(std::wstring{0x1F600}), "\xF0\x9F\x98\x80");
}

TEST(WideText, ReplacesWhatIsNoCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(Utf8OfWide(std::wstring{0xD83D}), replacement);
  EXPECT_EQ(Utf8OfWide(std::wstring{0xD83D, L'a'}), replacement + "a");
  EXPECT_EQ(Utf8OfWide(std::wstring{0xDE00, 0xD83D}), replacement + replacement);
  EXPECT_EQ(Utf8OfWide(std::wstring{0x110000}), replacement);
}

}  // namespace
}  // namespace TarnixTools::pdf
