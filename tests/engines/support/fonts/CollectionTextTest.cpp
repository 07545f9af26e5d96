#include <cstdio>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/CollectionText.h"

namespace TarnixTools::engines::fonts {
namespace {

TEST(CollectionText, TellsTheTextOfIdentifiers) {
  const std::string path = ::testing::TempDir() + "CollectionText-UCS2";
  std::ofstream(path) << "1 begincodespacerange <0000> <ffff> endcodespacerange\n"
                         "1 beginbfchar <0007> <65e5672c> endbfchar\n"
                         "1 beginbfrange <0010> <0012> <3042> endbfrange\n";
  const auto text = CollectionText::Read(path);
  std::remove(path.c_str());
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->TextOf(7), U"日本");
  EXPECT_EQ(text->TextOf(0x11), U"\u3043");
  EXPECT_EQ(text->TextOf(0x13), U"");
}

TEST(CollectionText, IsNoneOfWhatNobodyKnows) {
  EXPECT_EQ(CollectionText::Of("Identity"), nullptr);
  EXPECT_EQ(CollectionText::Of("../Japan1"), nullptr);
  EXPECT_EQ(CollectionText::Read("/nowhere/Adobe-Japan1-UCS2"), nullptr);
  EXPECT_EQ(CollectionText::Of("Japan1"), CollectionText::Of("Japan1"));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
