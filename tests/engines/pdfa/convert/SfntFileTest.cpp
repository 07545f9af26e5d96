#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/fonts/SfntFile.h"

namespace TarnixTools::engines::pdfa {
namespace {

// Numbers of 16 bits.
std::string Words(const std::vector<std::uint32_t>& words) {
  std::string bytes;
  for (const std::uint32_t word : words) {
    bytes += static_cast<char>(word >> 8);
    bytes += static_cast<char>(word);
  }
  return bytes;
}

std::string Long(std::uint32_t number) {
  return Words({number >> 16, number & 0xFFFF});
}

std::uint32_t LongAt(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
  }
  return number;
}

using Tables = std::map<std::string, std::string>;

// Of a font with three glyphs: .notdef has the first half of the outlines, the last one the other.
Tables ThreeGlyphs() {
  std::string head(54, '\x11');
  head.replace(18, 2, Words({1000}));
  head.replace(50, 2, Words({0}));
  return {{"glyf", "ABCDEFGH"},
          {"head", head},
          {"hhea", std::string(34, '\x22') + Words({2})},
          {"hmtx", Words({500, 10, 600, 20, 30})},
          {"loca", Words({0, 2, 2, 4})},
          {"maxp", Long(0x10000) + Words({3})}};
}

std::string FileOf(const Tables& tables) {
  std::string directory =
      Long(0x10000) + Words({static_cast<std::uint32_t>(tables.size()), 0, 0, 0});
  std::string data;
  const std::size_t start = 12 + 16 * tables.size();
  for (const auto& [tag, bytes] : tables) {
    directory += tag + Long(0) + Long(static_cast<std::uint32_t>(start + data.size())) +
                 Long(static_cast<std::uint32_t>(bytes.size()));
    data += bytes;
  }
  return directory + data;
}

SfntFile Opened(const Tables& tables) {
  auto file = SfntFile::Read(FileOf(tables));
  EXPECT_TRUE(file.has_value());
  return file.value_or(SfntFile());
}

std::uint32_t SumOf(const std::string& bytes) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < bytes.size(); at += 4) {
    sum += LongAt(bytes, at);
  }
  return sum;
}

TEST(SfntFile, WritesItsTablesWithTheirSums) {
  const std::string bytes = Opened(ThreeGlyphs()).Bytes();
  ASSERT_EQ(bytes.size(), 236U);
  EXPECT_EQ(bytes.substr(0, 12), Long(0x10000) + Words({6, 64, 2, 32}));
  EXPECT_EQ(SumOf(bytes), 0xB1B0AFBA);

  const struct {
    const char* tag;
    std::uint32_t offset;
    std::uint32_t length;
  } kRows[] = {{"glyf", 108, 8},  {"head", 116, 54}, {"hhea", 172, 36},
               {"hmtx", 208, 10}, {"loca", 220, 8},  {"maxp", 228, 6}};

  std::size_t entry = 12;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.tag);
    EXPECT_EQ(bytes.substr(entry, 4), row.tag);
    EXPECT_EQ(LongAt(bytes, entry + 8), row.offset);
    EXPECT_EQ(LongAt(bytes, entry + 12), row.length);
    std::string table = ThreeGlyphs()[row.tag];
    if (table.size() == 54) {
      table.replace(8, 4, 4, '\0');
    }
    std::string written = bytes.substr(row.offset, row.length);
    if (table.size() == 54) {
      written.replace(8, 4, 4, '\0');
    }
    EXPECT_EQ(written, table);
    table.resize((table.size() + 3) / 4 * 4);
    EXPECT_EQ(LongAt(bytes, entry + 4), SumOf(table));
    entry += 16;
  }
}

TEST(SfntFile, NeedsNoHead) {
  const std::string bytes = Opened({{"abcd", "12345"}}).Bytes();
  EXPECT_EQ(bytes, Long(0x10000) + Words({1, 16, 0, 0}) + "abcd" + Long(0x31323334 + 0x35000000) +
                       Long(28) + Long(5) + std::string("12345\0\0\0", 8));
}

TEST(SfntFile, KnowsItsEmAndItsGlyphs) {
  const SfntFile file = Opened(ThreeGlyphs());
  EXPECT_EQ(file.units_per_em(), 1000);
  EXPECT_EQ(file.glyph_count(), 3U);
  EXPECT_EQ(file.Table("glyf"), "ABCDEFGH");
  EXPECT_EQ(file.Table("none"), "");
}

TEST(SfntFile, IsNoneWithTablesOutsideOfIt) {
  const std::string head = Long(0x10000);
  EXPECT_FALSE(SfntFile::Read(head + Words({0, 0, 0, 0})));
  EXPECT_FALSE(SfntFile::Read(head + Words({1, 0, 0, 0}) + std::string(15, '\0')));
  EXPECT_TRUE(SfntFile::Read(head + Words({1, 0, 0, 0}) + "abcd" + Long(0) + Long(28) + Long(0)));
  EXPECT_FALSE(SfntFile::Read(head + Words({1, 0, 0, 0}) + "abcd" + Long(0) + Long(29) + Long(0)));
  EXPECT_FALSE(SfntFile::Read(head + Words({1, 0, 0, 0}) + "abcd" + Long(0) + Long(27) + Long(2)));
  EXPECT_TRUE(SfntFile::Read(head + Words({1, 0, 0, 0}) + "abcd" + Long(0) + Long(27) + Long(1)));
  EXPECT_TRUE(SfntFile::Read(head + Words({256, 0, 0, 0}) + std::string(256 * 16, '\0')));
  EXPECT_FALSE(SfntFile::Read(head + Words({257, 0, 0, 0}) + std::string(257 * 16, '\0')));
}

TEST(SfntFile, GivesEachGlyphAnAdvanceOfItsOwn) {
  SfntFile last = Opened(ThreeGlyphs());
  EXPECT_TRUE(last.SetAdvances({{2, 321}}));
  EXPECT_EQ(last.Table("hmtx"), Words({500, 10, 600, 20, 321, 30}));
  EXPECT_EQ(last.Table("hhea"), std::string(34, '\x22') + Words({3}));
  SfntFile first = Opened(ThreeGlyphs());
  EXPECT_TRUE(first.SetAdvances({{0, 7}}));
  EXPECT_EQ(first.Table("hmtx"), Words({7, 10, 600, 20, 600, 30}));
}

TEST(SfntFile, LeavesMetricsThatCannotBeRead) {
  const auto is_set = [](const char* tag, const std::string& bytes) {
    Tables tables = ThreeGlyphs();
    tables[tag] = bytes;
    return Opened(tables).SetAdvances({{0, 7}});
  };
  EXPECT_FALSE(is_set("hhea", std::string(34, '\0') + "\1"));
  EXPECT_FALSE(is_set("hhea", std::string(36, '\0')));
  EXPECT_FALSE(is_set("hmtx", Words({500, 10, 600}) + "\1"));
  EXPECT_TRUE(is_set("hmtx", Words({500, 10, 600, 20})));
}

TEST(SfntFile, MapsCodesInThePlaneOfSymbols) {
  SfntFile file = Opened(ThreeGlyphs());
  file.SetSymbolMap({{7, 2}, {9, 1}});
  EXPECT_EQ(file.Table("cmap"), Words({0, 1, 3, 0}) + Long(12) + Words({4, 40, 0, 6, 4, 1, 2}) +
                                    Words({0xF007, 0xF009, 0xFFFF, 0, 0xF007, 0xF009, 0xFFFF}) +
                                    Words({0x0FFB, 0x0FF8, 1, 0, 0, 0}));
  file.SetSymbolMap({{1, 1}, {2, 1}, {3, 0}});
  EXPECT_EQ(std::string(file.Table("cmap").substr(12, 14)), Words({4, 48, 0, 8, 8, 2, 0}));
}

TEST(SfntFile, AddsAGlyphLikeNotdef) {
  SfntFile file = Opened(ThreeGlyphs());
  EXPECT_EQ(file.AddGlyphLikeNotdef(), 3U);
  EXPECT_EQ(file.glyph_count(), 4U);
  EXPECT_EQ(file.Table("glyf"), "ABCDEFGHABCD");
  EXPECT_EQ(file.Table("loca"), Words({0, 2, 2, 4, 6}));
  EXPECT_EQ(file.Table("maxp"), Long(0x10000) + Words({4}));
  EXPECT_EQ(file.Table("hmtx"), Words({500, 10, 600, 20, 600, 30, 600, 0}));
  Tables uneven = ThreeGlyphs();
  uneven["glyf"] = "ABCDEF";
  uneven["loca"] = Words({0, 1, 2, 3});
  SfntFile padded = Opened(uneven);
  EXPECT_EQ(padded.AddGlyphLikeNotdef(), 3U);
  EXPECT_EQ(padded.Table("glyf"), std::string("ABCDEF\0\0AB\0\0", 12));
  EXPECT_EQ(padded.Table("loca"), Words({0, 1, 2, 4, 6}));
  Tables wide = ThreeGlyphs();
  wide["head"].replace(50, 2, Words({1}));
  wide["loca"] = Long(0) + Long(4) + Long(4) + Long(8);
  SfntFile with_longs = Opened(wide);
  EXPECT_EQ(with_longs.AddGlyphLikeNotdef(), 3U);
  EXPECT_EQ(with_longs.Table("loca"), Long(0) + Long(4) + Long(4) + Long(8) + Long(12));
}

TEST(SfntFile, AddsNoGlyphToOutlinesThatCannotBeRead) {
  const auto added = [](const char* tag, const std::string& bytes) {
    Tables tables = ThreeGlyphs();
    tables[tag] = bytes;
    return Opened(tables).AddGlyphLikeNotdef();
  };
  EXPECT_EQ(added("loca", Words({0, 2, 2})), 0U);
  EXPECT_EQ(added("loca", Words({2, 0, 2, 4})), 0U);
  EXPECT_EQ(added("loca", Words({0, 5, 5, 5})), 0U);
  EXPECT_EQ(added("loca", Words({0, 4, 4, 4})), 3U);
  EXPECT_EQ(added("hhea", ""), 0U);
  EXPECT_EQ(added("glyf", std::string(131'068, 'x')), 0U);
  EXPECT_EQ(added("glyf", std::string(131'064, 'x')), 3U);
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
