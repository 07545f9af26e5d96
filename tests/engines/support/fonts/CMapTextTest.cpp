// Files of maps from codes, as they are written: word by word, and as they are read again.
#include <map>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/fonts/CMapFile.h"
#include "engines/support/fonts/CMapText.h"
#include "engines/support/fonts/CodeMap.h"

namespace TarnixTools::engines::fonts {
namespace {

using ::testing::HasSubstr;

TEST(CMapText, IsAProgramThatDefinesTheMap) {
  EXPECT_EQ(CodeMapText({{0x0102, 7}, {0xFFFE, 65535}}, 2, true),
            "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
            "/CIDSystemInfo 3 dict dup begin\n/Registry(Adobe)def\n/Ordering(Identity)def\n"
            "/Supplement 0 def\nend def\n/CMapName/TarnixCodes def\n/CMapType 1 def\n"
            "/WMode 1 def\n1 begincodespacerange\n<0000><FFFF>\nendcodespacerange\n"
            "2 begincidchar\n<0102> 7\n<FFFE> 65535\nendcidchar\n"
            "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n");
  EXPECT_EQ(ToUnicodeText({{0x41, U"A"}, {0x42, U"f\U0001F600"}}, 1),
            "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
            "/CIDSystemInfo 3 dict dup begin\n/Registry(Adobe)def\n/Ordering(UCS)def\n"
            "/Supplement 0 def\nend def\n/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
            "1 begincodespacerange\n<00><FF>\nendcodespacerange\n"
            "2 beginbfchar\n<41><0041>\n<42><0066D83DDE00>\nendbfchar\n"
            "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n");
}

TEST(CMapText, HasAHundredRowsInABlock) {
  std::map<std::uint32_t, std::uint32_t> cids;
  for (std::uint32_t code = 0; code < 201; ++code) {
    cids[code] = 2 * code;
  }
  const std::string text = CodeMapText(cids, 1, false);
  EXPECT_THAT(text, HasSubstr("/WMode 0 def\n"));
  EXPECT_THAT(text, HasSubstr("100 begincidchar\n<00> 0\n"));
  EXPECT_THAT(text, HasSubstr("<63> 198\nendcidchar\n100 begincidchar\n<64> 200\n"));
  EXPECT_THAT(text, HasSubstr("endcidchar\n1 begincidchar\n<C8> 400\nendcidchar\nendcmap"));
  const auto map = CodeMap::Read(text);
  ASSERT_TRUE(map);
  for (const auto& [code, cid] : cids) {
    EXPECT_EQ(map->CidOf(code), cid);
  }
  EXPECT_EQ(CMapFile::Read(text).highest_cid(), 400U);
}

TEST(CMapText, CutsTextsThatAreVeryLong) {
  const std::u32string text(300, U'x');
  EXPECT_EQ(CMapFile::Read(ToUnicodeText({{1, text}}, 1)).TextOf(1), std::u16string(256, u'x'));
}

TEST(CMapText, HasEntriesForItsStream) {
  EXPECT_EQ(CodeMapEntries(true),
            "/Type/CMap/CMapName/TarnixCodes/CIDSystemInfo"
            "<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/WMode 1");
  EXPECT_TRUE(CodeMapEntries(false).ends_with("/WMode 0"));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
