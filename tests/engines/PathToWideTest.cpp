// Paths as wide strings and back; what the contract of an engine is given.
#include <gtest/gtest.h>

#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

TEST(PathToWide, GivesBackEveryPath) {
  for (const std::string path : {"/a/b.pdf", "caf\xC3\xA9", "\xF0\x9F\x98\x80", "\xEF\xBF\xBD",
                                 "\xFF\xFE\x80", "caf\xE9/\xC3", "\xED\xA0\x80", "\xF0\x9F\x98"}) {
    EXPECT_EQ(WideToPath(PathToWide(path)), path);
  }
}

TEST(PathToWide, IsUtf16ForWellFormedText) {
  EXPECT_EQ(PathToWide("caf\xC3\xA9"), (std::wstring{L'c', L'a', L'f', 0xE9}));
  EXPECT_EQ(PathToWide("\xF0\x9F\x98\x80"), (std::wstring{0xD83D, 0xDE00}));
  EXPECT_EQ(PathToWide(std::string("a\0b", 3)), L"a");
}

}  // namespace
}  // namespace TarnixTools
