#include <gtest/gtest.h>

#include "engines/support/fonts/CMapFile.h"

namespace TarnixTools::engines::fonts {
namespace {

TEST(CMapFile, TellsWhatTheMapIsAbout) {
  const CMapFile map = CMapFile::Read(
      "/Base-H usecmap /CIDSystemInfo 3 dict dup begin /Registry (Adobe) def /Ordering (Japan1) "
      "def "
      "/Supplement 2 def end def /WMode 1 def 1 begincidrange <0000><00FF> 65400 endcidrange "
      "1 begincidchar <0100> 7 endcidchar");
  EXPECT_EQ(map.write_mode(), 1);
  EXPECT_EQ(map.used_map(), "Base-H");
  EXPECT_EQ(map.collection().registry, "Adobe");
  EXPECT_EQ(map.collection().ordering, "Japan1");
  EXPECT_EQ(map.collection().supplement, 2);
  EXPECT_EQ(map.highest_cid(), 65655U);
}

TEST(CMapFile, TakesTheCollectionFromADictionaryToo) {
  const CMapFile map =
      CMapFile::Read("/CIDSystemInfo <</Registry(A)/Ordering(B)/Supplement 0>> def");
  EXPECT_EQ(map.collection().registry, "A");
  EXPECT_EQ(map.collection().ordering, "B");
  EXPECT_EQ(map.collection().supplement, 0);
  EXPECT_EQ(CMapFile::Read("").collection().registry, std::nullopt);
}

TEST(CMapFile, TellsTheTextOfCodes) {
  const CMapFile map = CMapFile::Read(
      "2 beginbfchar <01><0041> <02><00660069> endbfchar "
      "2 beginbfrange <10><12><0061> <20><21>[<0078><D83DDE00>] endbfrange");
  EXPECT_EQ(map.TextOf(1), u"A");
  EXPECT_EQ(map.TextOf(2), u"fi");
  EXPECT_EQ(map.TextOf(0x12), u"c");
  EXPECT_EQ(map.TextOf(0x20), u"x");
  EXPECT_EQ(map.TextOf(0x21), u"\U0001F600");
  EXPECT_EQ(map.TextOf(3), std::nullopt);
  EXPECT_EQ(map.TextOf(0x22), std::nullopt);
  EXPECT_TRUE(map.has_right_counts());
}

TEST(CMapFile, ComparesCountsOfTexts) {
  const auto has = [](const char* cmap) { return CMapFile::Read(cmap).has_right_counts(); };
  EXPECT_TRUE(has(""));
  EXPECT_TRUE(has("1 beginbfchar <01><0041> endbfchar 0 beginbfrange endbfrange"));
  EXPECT_FALSE(has("2 beginbfchar <01><0041> endbfchar"));
  EXPECT_FALSE(has("1 beginbfchar <01><0041> <02><0042> endbfchar"));
  EXPECT_FALSE(has("2 beginbfrange <10><12>[<0061><0062><0063>] endbfrange"));
  EXPECT_TRUE(has("beginbfchar <01><0041> endbfchar"));
}

TEST(CMapFile, OfDamageTakesWhatCanBeRead) {
  const CMapFile map = CMapFile::Read(
      "<01> beginbfchar <01> endbfchar beginbfrange <05><03><0041> <06><06>[<0042> endbfrange "
      "begincidrange <09><01> 5 <00> endcidrange");
  EXPECT_EQ(map.TextOf(1), std::nullopt);
  EXPECT_EQ(map.TextOf(4), std::nullopt);
  EXPECT_EQ(map.TextOf(6), u"B");
  EXPECT_EQ(map.highest_cid(), 0U);
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
