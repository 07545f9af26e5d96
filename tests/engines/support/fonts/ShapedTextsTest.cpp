// Lines of text in a face made in code that has many characters: how they are cut, and which glyphs
// show which characters.
#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/BidiLevels.h"
#include "engines/support/fonts/MadeTables.h"
#include "engines/support/fonts/TextItems.h"
#include "engines/support/fonts/TextShaper.h"
#include "support/Expected.h"
#include "support/TempDir.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::fonts {
namespace {

using testing::BigEndian;

// The test font, whose glyph 1 stands for letters of these alphabets, and for marks unless they are
// left out, and glyph 2 for spaces.
std::string FontOfManyCharacters(bool has_marks = true) {
  struct Range {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t glyph;
  };

  const std::vector<Range> ranges = {{0x20, 0x20, 2},     {0x21, 0x7E, 1},     {0xC0, 0xC5, 1},
                                     {0x300, 0x303, 1},   {0x3B1, 0x3C9, 1},   {0x410, 0x44F, 1},
                                     {0x5D0, 0x5EA, 1},   {0x621, 0x64A, 1},   {0x905, 0x94D, 1},
                                     {0x2010, 0x2010, 1}, {0x3041, 0x3096, 1}, {0x4E00, 0x4E20, 1},
                                     {0xAC00, 0xAC10, 1}};
  // Format 12, in which each code of a group has the next glyph: a group for each code.
  std::string groups;
  std::uint32_t count = 0;
  for (const Range& range : ranges) {
    if (range.first == 0x300 && !has_marks) {
      continue;
    }
    for (std::uint32_t code = range.first; code <= range.last; ++code, ++count) {
      groups += BigEndian(code, 4) + BigEndian(code, 4) + BigEndian(range.glyph, 4);
    }
  }
  testing::FontTables tables = testing::TablesOf(testing::TestFont().Bytes());
  tables["cmap"] = BigEndian(0, 2) + BigEndian(1, 2) + BigEndian(3, 2) + BigEndian(10, 2) +
                   BigEndian(12, 4) + BigEndian(12, 2) + BigEndian(0, 2) +
                   BigEndian(16 + 12 * count, 4) + BigEndian(0, 4) + BigEndian(count, 4) + groups;
  return testing::FontOf(tables);
}

std::string TagText(std::uint32_t tag) {
  return BigEndian(tag, 4);
}

// What stands for a letter and a mark together is taken where a face has no mark.
TEST(ShapedTexts, InAFaceWithoutMarks) {
  const testing::TempDir directory;
  const InstalledFace installed = {
      .file = testing::WriteBytes(directory.Path("few.ttf"), FontOfManyCharacters(false))};
  FaceStore faces;
  for (const char32_t* line : {U"A\u0301", U"A\u0300A\u0303", U"xA\u0308y", U"A\u030a"}) {
    const ShapedLine shaped = ShapeLine(faces, installed, line);
    EXPECT_EQ(shaped.missing, 0U);
    ASSERT_EQ(shaped.runs.size(), 1U);
    EXPECT_EQ(shaped.runs[0].face, faces.Load(installed));
    for (const ShapedGlyph& glyph : shaped.runs[0].glyphs) {
      EXPECT_EQ(glyph.glyph, 1U);
    }
  }
  EXPECT_EQ(ShapeLine(faces, installed, U"xA\u0308y").runs[0].clusters.size(), 3U);
}

// What is not seen, and spaces of any width, a face need not have.
TEST(ShapedTexts, InAFaceOfOneLetterAndASpace) {
  const testing::TempDir directory;
  const InstalledFace installed = {
      .file = testing::WriteBytes(directory.Path("one.ttf"), testing::TestFont().Bytes())};
  FaceStore faces;
  const auto stays = [&](char32_t character) {
    const std::u32string text = {U'A', character};
    const TextItems cut = CutIntoItems(faces, installed, text, {0, 0});
    return cut.missing == 0 &&
           std::all_of(cut.items.begin(), cut.items.end(),
                       [&](const auto& item) { return item.face == faces.Load(installed); });
  };
  for (const int character :
       {0x0,    0x1F,   0x20,   0x41,   0x7F,    0x9F,    0xA0,   0xAD,   0x34F,
        0x115F, 0x1160, 0x1680, 0x180B, 0x180D,  0x180E,  0x2000, 0x200A, 0x200B,
        0x200C, 0x200D, 0x200F, 0x202A, 0x202F,  0x205F,  0x2060, 0x2064, 0x3000,
        0x3164, 0xFE00, 0xFE0F, 0xFEFF, 0xE0001, 0xE0100, 0xE01EF}) {
    EXPECT_TRUE(stays(static_cast<char32_t>(character))) << std::hex << character;
  }
  for (const int character :
       {0x21,   0x40,   0x42,   0xC5,   0x34E,  0x350,  0x115E, 0x1161,  0x180A,  0x2010,
        0x2011, 0x212B, 0x3163, 0x3165, 0xFDFF, 0xFE10, 0xFF21, 0xE00FF, 0xE01F0, 0x1F3FB}) {
    EXPECT_FALSE(stays(static_cast<char32_t>(character))) << std::hex << character;
  }
}

TEST(ShapedTexts, InAFaceThatHasAllOfThem) {
  const testing::TempDir directory;
  const InstalledFace installed = {
      .file = testing::WriteBytes(directory.Path("many.ttf"), FontOfManyCharacters())};
  FaceStore faces;
  std::ostringstream text;
  const std::vector<std::u32string> lines = {
      U"",
      U"A",
      U"Ab c",
      U" A",
      U"12 ab",
      U"a 12",
      U"ab \u03b1\u03b2 \u0430\u0431",
      U"ab \u05d0\u05d1 12 \u05d2 cd",
      U"\u05d0 12 \u05d1",
      U"\u05d0(a)\u05d1",
      U"(\u05d0)",
      U"\u0628\u0629 a",
      U"a\u0301b",
      U"\u0301a",
      U"a\u0301\u0302",
      U"\u00c1",
      U"e\u0301\u00c5",
      U"\u212b",
      U"a\u200db\ufe0f",
      U"a\u2002b\u2011c",
      U"a\u00a0b",
      U"a\tb\nc\u0085",
      U"\u0939\u093f\u0928",
      U"\u4e00\u3042\uac00",
      U"a\u4e01b",
      U"\u200e\u200fa",
      U"a\u0301\u05d0\u0301",
      U"\u05d0\u0302 ",
  };
  for (const std::u32string& line : lines) {
    for (const char32_t character : line) {
      text << std::hex << static_cast<std::uint32_t>(character) << std::dec << ' ';
    }
    text << '\n';
    const TextItems cut = CutIntoItems(faces, installed, line, BidiLevels(line));
    for (const TextItem& item : cut.items) {
      text << "  item " << TagText(item.script) << " level " << int{item.level} << " from "
           << item.first << ", " << item.count
           << (item.face == faces.Load(installed) ? "" : ", another face") << '\n';
    }
    const ShapedLine shaped = ShapeLine(faces, installed, line);
    text << "  width " << shaped.width << ", " << shaped.text.size() << " characters"
         << (cut.missing != 0 || shaped.missing != 0 ? ", some are missing" : "") << '\n';
    for (const GlyphRun& run : shaped.runs) {
      text << (run.is_right_to_left ? "  from the right:" : "  from the left:");
      for (const ShapedGlyph& glyph : run.glyphs) {
        text << ' ' << glyph.glyph << '/' << glyph.advance;
      }
      text << ';';
      for (const GlyphCluster& cluster : run.clusters) {
        text << ' ' << cluster.first_glyph << '+' << cluster.glyph_count << " of "
             << cluster.first_character << '+' << cluster.character_count;
      }
      text << '\n';
    }
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/shaped.txt", text.str()));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
