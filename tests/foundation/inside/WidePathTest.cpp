// Paths as the contracts of engines take them.
#include <type_traits>

#include <gtest/gtest.h>

#include "foundation/Platform.h"
#include "support/TempDir.h"

namespace TarnixTools::platform {
namespace {

static_assert(!std::is_constructible_v<WidePath, std::wstring>);
static_assert(!std::is_convertible_v<std::string, WidePath>);
static_assert(!std::is_convertible_v<WidePath, std::wstring>);

TEST(WidePath, GivesBackEveryPath) {
  for (const std::string path :
       {"/a/b.pdf", "caf\xC3\xA9", "\xF0\x9F\x98\x80", "\xEF\xBF\xBD", "\xFF\xFE\x80",
        "caf\xE9/\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xED\xB2\xA9", "\xF0\x9F\x98",
        "\xF4\x90\x80\x80", "\xED\xA0\x80\xED\xB0\x80", "\xF0\x9F\x98\x80\xA9"}) {
    EXPECT_EQ(NativePath(WidePath(path)), path);
  }
  std::string all;
  for (int byte = 1; byte < 256; ++byte) {
    all += static_cast<char>(byte);
  }
  EXPECT_EQ(NativePath(WidePath(all)), NativePath(all));
}

TEST(WidePath, IsUtf16ForWellFormedNames) {
  EXPECT_EQ(WidePath("caf\xC3\xA9").units(), (std::wstring{L'c', L'a', L'f', 0xE9}));
  EXPECT_EQ(WidePath("\xF0\x9F\x98\x80").units(), (std::wstring{0xD83D, 0xDE00}));
}

TEST(WidePath, KeepsOtherBytesApart) {
  EXPECT_EQ(WidePath("a\xE9").units(), (std::wstring{L'a', 0xDCE9}));
  EXPECT_EQ(WidePath("\xE2\x82").units(), (std::wstring{0xDCE2, 0xDC82}));
}

TEST(WidePath, EndsAtTheFirstNul) {
  EXPECT_EQ(WidePath(std::string("a\0b", 3)).units(), L"a");
}

TEST(WidePath, HasSlashesForTheSystemOnly) {
  EXPECT_EQ(WidePath("a\\b").units(), L"a\\b");
  EXPECT_EQ(NativePath(WidePath("\\a\\b/c")), "/a/b/c");
}

TEST(WidePath, OpensAndCreatesWhatTheNarrowPathNames) {
  const testing::TempDir directory;
  const std::string path = directory.Path("J\xF6rg\xFF");
  std::optional<OutputFile> output = OutputFile::Create(WidePath(path));
  ASSERT_TRUE(output.has_value());
  output->TakeStream().reset();
  ASSERT_TRUE(output->Commit());
  EXPECT_TRUE(Exists(path));
  EXPECT_NE(OpenForReading(WidePath(path)), nullptr);
  EXPECT_EQ(OpenForReading(WidePath(path + "\xFF")), nullptr);
}

}  // namespace
}  // namespace TarnixTools::platform
