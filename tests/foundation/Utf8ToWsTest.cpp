// PdfDoc::Utf8ToWs, the library's way from UTF-8 to wide strings.
#include <gtest/gtest.h>

#include "PdfDoc.h"

namespace TarnixTools {
namespace {

std::wstring Wide(const std::string& text) {
  return PdfDoc::Utf8ToWs(text);
}

TEST(Utf8ToWs, KeepsAscii) {
  EXPECT_EQ(Wide(""), L"");
  EXPECT_EQ(Wide("C:\\a.pdf"), L"C:\\a.pdf");
}

TEST(Utf8ToWs, GivesOneUnitPerCharacterOfTheBasicPlane) {
  EXPECT_EQ(Wide("caf\xC3\xA9"), (std::wstring{L'c', L'a', L'f', 0xE9}));
  EXPECT_EQ(Wide("\xE6\x96\x87\xE6\x9B\xB8"), (std::wstring{0x6587, 0x66F8}));
  EXPECT_EQ(Wide("\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"),
            (std::wstring{0x80, 0x7FF, 0x800, 0xFFFF}));
}

TEST(Utf8ToWs, GivesSurrogatePairsBeyondIt) {
  EXPECT_EQ(Wide("\xF0\x90\x80\x80"), (std::wstring{0xD800, 0xDC00}));
  EXPECT_EQ(Wide("\xF0\x9F\x98\x80!"), (std::wstring{0xD83D, 0xDE00, L'!'}));
  EXPECT_EQ(Wide("\xF4\x8F\xBF\xBF"), (std::wstring{0xDBFF, 0xDFFF}));
}

TEST(Utf8ToWs, EndsAtTheFirstNul) {
  EXPECT_EQ(Wide(std::string("ab\0cd", 5)), L"ab");
}

TEST(Utf8ToWs, ReplacesEachMaximalPartOfAMalformedSequence) {
  constexpr wchar_t kReplacement = 0xFFFD;
  // A lone continuation byte, bytes that never occur.
  EXPECT_EQ(Wide("a\x80z"), (std::wstring{L'a', kReplacement, L'z'}));
  EXPECT_EQ(Wide("\xFF\xFE"), (std::wstring{kReplacement, kReplacement}));
  // Overlong forms, a surrogate, a value beyond the last character: no byte of them continues the
  // lead.
  EXPECT_EQ(Wide("\xC0\xAF"), std::wstring(2, kReplacement));
  EXPECT_EQ(Wide("\xE0\x80\xAF"), std::wstring(3, kReplacement));
  EXPECT_EQ(Wide("\xED\xA0\x80"), std::wstring(3, kReplacement));
  EXPECT_EQ(Wide("\xF4\x90\x80\x80"), std::wstring(4, kReplacement));
  // Cut sequences count once, whether text or the end follows.
  EXPECT_EQ(Wide("\xE6\x96z"), (std::wstring{kReplacement, L'z'}));
  EXPECT_EQ(Wide("\xF0\x9F\x98"), std::wstring{kReplacement});
  EXPECT_EQ(Wide("\xF0\x9F\xC3\xA9"), (std::wstring{kReplacement, 0xE9}));
}

}  // namespace
}  // namespace TarnixTools
