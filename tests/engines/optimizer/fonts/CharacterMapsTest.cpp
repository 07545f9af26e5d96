#include <set>
#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/CharacterMaps.h"
#include "engines/optimizer/fonts/ProgramSubset.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::optimizer {
namespace {

using fonts::CodeGlyph;
using fonts::FontProgram;

void Append16(std::string& out, unsigned value) {
  out += static_cast<char>(value >> 8);
  out += static_cast<char>(value);
}

// A 'cmap' table with one map, of format 6, and the same one with another number of the system.
std::string TwoMaps(unsigned platform, unsigned encoding, unsigned first,
                    const std::vector<unsigned>& glyphs) {
  std::string table;
  for (const unsigned value : {0U, 2U, 1U, 0U, 0U, 20U, platform, encoding, 0U, 20U, 6U,
                               static_cast<unsigned>(10 + 2 * glyphs.size()), 0U, first,
                               static_cast<unsigned>(glyphs.size())}) {
    Append16(table, value);
  }
  for (const unsigned glyph : glyphs) {
    Append16(table, glyph);
  }
  return table;
}

// The test font with this table in place of its own.
std::string WithMaps(const std::string& maps) {
  const std::string font = testing::TestFont().Bytes();
  const auto program = FontProgram::Open(font);
  return SubsetOf(*program, {.glyphs = {0, 1, 2}, .maps = maps});
}

TEST(CharacterMaps, KeepTheCodesOfTheGlyphsThatAreLeft) {
  const std::string font = WithMaps(TwoMaps(3, 0, 0xF041, {1, 2, 0, 1}));
  const auto program = FontProgram::Open(font);
  ASSERT_NE(program, nullptr);
  ASSERT_EQ(program->maps().size(), 2U);
  const auto maps = CutCharacterMaps(*program, {0, 1});
  ASSERT_TRUE(maps);
  const std::string cut_font = WithMaps(*maps);
  const auto cut = FontProgram::Open(cut_font);
  ASSERT_EQ(cut->maps().size(), 2U);
  EXPECT_TRUE(cut->maps()[0].is_macintosh());
  EXPECT_TRUE(cut->maps()[1].is_symbol());
  EXPECT_EQ(cut->Mappings(1, 9), (std::vector<CodeGlyph>{{0xF041, 1}, {0xF044, 1}}));
  EXPECT_EQ(cut->Mappings(0, 9), cut->Mappings(1, 9));
}

TEST(CharacterMaps, OfFewCodesOfBytesAreLists) {
  const std::string font = WithMaps(TwoMaps(1, 0, 65, {1, 2, 1}));
  const auto program = FontProgram::Open(font);
  const std::string maps = *CutCharacterMaps(*program, {1});
  EXPECT_EQ(maps.substr(20, 2), std::string("\0\6", 2));
  const std::string cut_font = WithMaps(maps);
  const auto cut = FontProgram::Open(cut_font);
  EXPECT_EQ(cut->Mappings(0, 9), (std::vector<CodeGlyph>{{65, 1}, {67, 1}}));
}

TEST(CharacterMaps, OfNoGlyphsAreStillThere) {
  const std::string font = testing::TestFont().Bytes();
  const auto program = FontProgram::Open(font);
  const std::string cut_font = WithMaps(*CutCharacterMaps(*program, {0}));
  const auto cut = FontProgram::Open(cut_font);
  ASSERT_EQ(cut->maps().size(), 1U);
  EXPECT_TRUE(cut->Mappings(0, 9).empty());
}

TEST(CharacterMaps, ThatCannotBeReadStayAsTheyAre) {
  std::string damaged = TwoMaps(1, 0, 65, {1, 2, 1});
  damaged[20 + 1] = 77;  // a format that there is not
  const std::string font = WithMaps(damaged);
  const auto program = FontProgram::Open(font);
  ASSERT_NE(program, nullptr);
  EXPECT_EQ(CutCharacterMaps(*program, {1}), damaged);
  const std::string bare = WithMaps("");
  const auto without = FontProgram::Open(bare);
  EXPECT_EQ(CutCharacterMaps(*without, {1}), "");
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
