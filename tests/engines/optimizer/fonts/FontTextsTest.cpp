// What becomes of font programs and the maps in them, compared whole with texts.
#include <algorithm>
#include <cstdint>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/CharacterMaps.h"
#include "engines/optimizer/fonts/FontFixture.h"
#include "engines/optimizer/fonts/ProgramSubset.h"
#include "engines/optimizer/fonts/Type1Code.h"
#include "engines/optimizer/fonts/Type1Program.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "pdf/write/DocumentText.h"
#include "support/Expected.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::optimizer {
namespace {

using fonts::CodeGlyph;
using fonts::FontProgram;
using testing::FontCase;
using testing::RawPdf;

std::string Big(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) {
    text += static_cast<char>(value >> (8 * static_cast<unsigned>(i)));
  }
  return text;
}

// Format 12, with a group for each pair of a code and a glyph.
std::string LongMap(const std::vector<CodeGlyph>& pairs) {
  std::string map = Big(12, 2) + Big(0, 2) +
                    Big(static_cast<std::uint32_t>(16 + 12 * pairs.size()), 4) + Big(0, 4) +
                    Big(static_cast<std::uint32_t>(pairs.size()), 4);
  for (const CodeGlyph& pair : pairs) {
    map += Big(pair.code, 4) + Big(pair.code, 4) + Big(pair.glyph, 4);
  }
  return map;
}

struct Map {
  std::uint32_t platform;
  std::uint32_t encoding;
  std::string data;
};

std::string MapTable(const std::vector<Map>& maps) {
  std::string table = Big(0, 2) + Big(static_cast<std::uint32_t>(maps.size()), 2);
  std::string data;
  for (const Map& map : maps) {
    table += Big(map.platform, 2) + Big(map.encoding, 2) +
             Big(static_cast<std::uint32_t>(4 + 8 * maps.size() + data.size()), 4);
    data += map.data;
  }
  return table + data;
}

std::string Hex(const std::string& bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[static_cast<unsigned char>(bytes[i]) >> 4U];
    text += kDigits[static_cast<unsigned char>(bytes[i]) & 15U];
    text += i % 2 == 1 ? (i % 32 == 31 ? "\n" : " ") : "";
  }
  return text + "\n";
}

// The test font with this table in place of its own: its glyphs are 0, 1 and 2.
std::string WithMaps(const std::string& maps) {
  const std::string font = testing::TestFont().Bytes();
  const auto program = FontProgram::Open(font);
  return SubsetOf(*program, {.glyphs = {0, 1, 2}, .maps = maps});
}

TEST(FontTexts, OfCharacterMaps) {
  std::vector<CodeGlyph> many;
  for (std::uint32_t i = 0; i < 20; ++i) {
    many.push_back({0x100 + 3 * i, 1 + i % 2});
  }
  const std::vector<std::pair<const char*, std::vector<Map>>> tables = {
      {"one code", {{3, 1, LongMap({{0x41, 1}})}}},
      {"codes in a row",
       {{3, 1, LongMap({{0x41, 1}, {0x42, 2}, {0x43, 1}, {0x45, 1}, {0x46, 1}})}}},
      {"the last short code", {{3, 1, LongMap({{0xFFFD, 1}, {0xFFFE, 2}})}}},
      {"the first long code", {{3, 10, LongMap({{0xFFFE, 1}, {0xFFFF, 2}})}}},
      {"long codes", {{3, 10, LongMap({{0x41, 1}, {0x1F600, 1}, {0x1F601, 2}})}}},
      {"of the Macintosh", {{1, 0, LongMap({{0x20, 2}, {0x41, 1}, {0x43, 2}})}}},
      {"of the Macintosh, to its end", {{1, 0, LongMap({{0xFE, 2}, {0xFF, 1}})}}},
      {"of the Macintosh, beyond", {{1, 0, LongMap({{0xFF, 2}, {0x100, 1}})}}},
      {"two that are the same", {{0, 3, LongMap({{0x41, 1}})}, {3, 1, LongMap({{0x41, 1}})}}},
      {"two that differ", {{1, 0, LongMap({{0x41, 1}})}, {3, 0, LongMap({{0xF041, 1}})}}},
      {"empty", {{3, 1, LongMap({})}}},
      {"empty, of the Macintosh", {{1, 0, LongMap({})}}},
      {"many", {{3, 1, LongMap(many)}}},
      {"a map that cannot be read", {{3, 1, LongMap({{0x41, 1}})}, {3, 4, Big(77, 2) + Big(4, 2)}}},
      {"and variants of characters",
       {{3, 1, LongMap({{0x41, 1}})}, {0, 5, Big(14, 2) + Big(10, 4) + Big(0, 4)}}},
  };
  std::string text;
  for (const auto& [name, maps] : tables) {
    const std::string font = WithMaps(MapTable(maps));
    const auto program = FontProgram::Open(font);
    ASSERT_NE(program, nullptr) << name;
    for (const std::set<std::uint32_t>& glyphs :
         std::vector<std::set<std::uint32_t>>{{0}, {1}, {0, 1, 2}}) {
      const auto cut = CutCharacterMaps(*program, glyphs);
      text += std::string(name) + ", glyphs to " + std::to_string(*glyphs.rbegin()) + "\n" +
              (cut ? Hex(*cut) : "none\n");
      const std::string cut_font = WithMaps(cut.value_or(""));
      const auto after = FontProgram::Open(cut_font);
      for (std::size_t map = 0; map < after->maps().size(); ++map) {
        std::vector<CodeGlyph> wanted = program->Mappings(map, 99);
        if (cut != MapTable(maps)) {
          std::erase_if(wanted,
                        [&](const CodeGlyph& pair) { return !glyphs.contains(pair.glyph); });
        }
        EXPECT_EQ(after->Mappings(map, 99), wanted) << name;
      }
    }
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/cut_maps.txt", text));
}

// What of bytes is no text as "\xAB".
std::string Escaped(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if ((value >= 32 && value < 127 && byte != '\\') || byte == '\n') {
      text += byte;
    } else {
      constexpr char kDigits[] = "0123456789ABCDEF";
      text += {'\\', 'x', kDigits[value >> 4U], kDigits[value & 15U]};
    }
  }
  return text;
}

// The program with a part of its private text replaced.
std::string Changed(const std::string& program, const std::string& part, const std::string& by) {
  const std::size_t start = program.find("eexec\n") + 6;
  const std::size_t end = program.rfind("\n0000");
  std::string text = DecryptType1(program.substr(start, end - start), kType1ProgramKey);
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  if (at != std::string::npos) {
    text.replace(at, part.size(), by);
  }
  return program.substr(0, start) + EncryptType1(text, kType1ProgramKey) + program.substr(end);
}

std::string CutText(const std::string& bytes, const std::set<std::string>& names) {
  const auto program = Type1Program::Read(bytes);
  if (!program) {
    return "not read\n";
  }
  const Type1Text cut = program->With(names);
  const std::string text =
      DecryptType1(cut.bytes.substr(cut.clear, cut.encrypted), kType1ProgramKey);
  return std::to_string(cut.clear) + " and " + std::to_string(cut.encrypted) + " of " +
         std::to_string(cut.bytes.size()) + " bytes, at the end " +
         Escaped(cut.bytes.substr(cut.clear + cut.encrypted).substr(0, 9)) + "\n" +
         Escaped(text.substr(std::min(text.find("/Subrs"), text.find("/CharStrings")))) + "\n";
}

TEST(FontTexts, OfType1Programs) {
  const std::string whole = testing::Type1ProgramText({"A", "B"});
  std::string text = CutText(whole, {}) + CutText(whole, {"A"}) + CutText(whole, {"eacute"}) +
                     CutText(whole, {"A", "B", "eacute", ".notdef"});
  const std::vector<std::pair<std::string, std::string>> changes = {
      {"/password", "/lenIV 4 def /password"},
      {"/password", "/lenIV 0 def /password"},
      {"/password", "/lenIV 5 def /password"},
      {"/password", "/lenIV x def /password"},
      {"/password", "/lenIV -1 def /password"},
      {"/password", "/Subrs 0 array /password"},
      {"/password", "/CharStrings /password"},
      {"/Subrs 7", "/Sobrs 7"},
      {"/Subrs 7", "/Subrs 6"},
      {"/Subrs 7", "/Subrs 9"},
      {"/Subrs 7", "/Subrs x"},
      {"/Subrs 7", "/Subrs 65537"},
      {"/Subrs 7 array", "/Subrs 7 list"},
      {"dup 1 5", "dup 0 5"},
      {"dup 1 5", "dup x 5"},
      {"dup 1 5", "dup 1 999999"},
      {"dup 1 5", "dap 1 5"},
      {"/CharStrings 4 dict dup begin", "/CharStrings 44 dict dup begin"},
      {"/CharStrings 4 dict dup begin", "/CharStrings x dict dup begin"},
      {"/CharStrings 4 dict dup begin", "/CharStrings 4 list dup begin"},
      {"/CharStrings 4 dict dup begin", "/CharStrings 4 dict begin"},
      {"/CharStrings 4 dict dup begin", "/CharStrings 4 dict dup start"},
      {"/.notdef", "/notdef"},
      {"/A ", "/B "},
      {"/A ", "A "},
      {"end\nend", "stop\nend"},
      {"currentfile closefile", "currentfile"},
      {"closefile", "closefile closefile"},
  };
  for (const auto& [part, by] : changes) {
    text += part + " as " + by + "\n" + CutText(Changed(whole, part, by), {"B"});
  }
  std::string without_zeros = whole;
  without_zeros.erase(without_zeros.rfind(std::string(64, '0')), 64);
  text += "without zeros\n" + CutText(without_zeros, {"A"});
  text += "without an end\n" + CutText(whole.substr(0, whole.rfind("cleartomark")), {"A"});
  EXPECT_TRUE(testing::IsAsExpected("fonts/type1.txt", text));
}

TEST(FontTexts, OfType1Definitions) {
  std::string program = testing::Type1ProgramText({"A"});
  program = Changed(program, " NP\ndup 1", " noaccess put\ndup 1");
  program = Changed(program, " ND\n/A", " noaccess def\n/A");
  EXPECT_TRUE(testing::IsAsExpected("fonts/type1_definitions.txt",
                                    CutText(program, {}) + CutText(program, {"A"})));
}

TEST(FontTexts, OfSubsetsTables) {
  const std::string font = testing::TestFont().Bytes();
  const auto program = FontProgram::Open(font);
  const auto tags = [&](const SubsetWishes& wishes) {
    const std::string bytes = SubsetOf(*program, wishes);
    std::vector<std::string> found;
    for (std::size_t i = 0; i < static_cast<unsigned char>(bytes.at(5)); ++i) {
      found.push_back(bytes.substr(12 + 16 * i, 4));
    }
    std::sort(found.begin(), found.end());
    std::string text;
    for (const std::string& tag : found) {
      text += tag + " ";
    }
    return text;
  };
  EXPECT_EQ(tags({.glyphs = {0, 1}}), "glyf head hhea hmtx loca maxp ");
  EXPECT_EQ(tags({.glyphs = {0, 1}, .keeps_names = true}), "glyf head hhea hmtx loca maxp post ");
  EXPECT_EQ(tags({.glyphs = {0, 1}, .maps = MapTable({{3, 1, LongMap({})}})}),
            "cmap glyf head hhea hmtx loca maxp ");
  for (const std::uint32_t glyph : {0U, 1U, 2U}) {
    const std::string bytes = SubsetOf(*program, {.glyphs = {0, glyph}});
    const auto cut = FontProgram::Open(bytes);
    ASSERT_NE(cut, nullptr);
    EXPECT_EQ(cut->ShapeOf(glyph), program->ShapeOf(glyph));
    EXPECT_EQ(cut->units_per_em(), 1000);
  }
}

TEST(FontTexts, OfBareSubsets) {
  const std::string cff = testing::CffProgram({"A", "B", "C"});
  const auto program = FontProgram::Open(cff);
  const std::string bytes = SubsetOf(*program, {.glyphs = {0, 2}});
  const auto cut = FontProgram::Open(bytes);
  ASSERT_NE(cut, nullptr);
  EXPECT_EQ(cut->kind(), fonts::ProgramKind::kCff);
  EXPECT_EQ(cut->ShapeOf(2), program->ShapeOf(2));
  EXPECT_EQ(cut->NameOf(2), "B");
  const std::string keyed = testing::CidProgram({7, 3, 500});
  const auto by_cid = FontProgram::Open(keyed);
  const std::string cut_bytes = SubsetOf(*by_cid, {.glyphs = {0, 3}});
  const auto cut_by_cid = FontProgram::Open(cut_bytes);
  ASSERT_NE(cut_by_cid, nullptr);
  EXPECT_EQ(cut_by_cid->GlyphOfCid(500), 3U);
  EXPECT_EQ(cut_by_cid->ShapeOf(3), by_cid->ShapeOf(3));
}

std::string ReportText(const FontReport& report) {
  std::ostringstream text;
  text << report.programs << " programs, " << report.merged << " merged, " << report.dropped
       << " dropped, to "
       << report.bytes_after * 20 / std::max<std::uint64_t>(report.bytes_before, 1)
       << " twentieths of their bytes, left";
  for (const std::size_t count : report.left_alone) {
    text << ' ' << count;
  }
  return text.str() + "\n";
}

// Two fonts that show text, and how they share programs.
TEST(FontTexts, OfPlans) {
  std::vector<std::string> names;
  for (char c = 'A'; c <= 'J'; ++c) {
    names.emplace_back(1, c);
  }
  const std::string program = testing::Type1ProgramText(names);
  const std::string kinds = "/Type/Font/Subtype/Type1/Encoding/WinAnsiEncoding/FontDescriptor";
  const auto fonts = [&](const std::string& first, const std::string& second,
                         const std::string& descriptor = "/Flags 32/FontFile 9 0 R",
                         const std::string& other = "/Flags 32/FontFile 10 0 R") {
    RawPdf file;
    file.Stream(4, "", "BT /F 9 Tf (C) Tj /G 9 Tf (D) Tj ET")
        .Object(5, "<<" + first + ">>")
        .Object(6, "<<" + second + ">>")
        .Object(7, "<<" + other + ">>")
        .Object(8, "<<" + descriptor + ">>")
        .Stream(9, "/Length1 1/Length2 2/Length3 3/Own 4", program)
        .Stream(10, "/Length1 9/Length2 9/Length3 9", program)
        .Stream(11, "/Subtype/Type1C", "no program")
        .Object(12, "[/A/B]");
    return file;
  };
  const std::string first = kinds + " 8 0 R";
  const std::string second = kinds + " 7 0 R";
  const std::vector<std::pair<const char*, RawPdf>> cases = {
      {"one program", fonts(first, first)},
      {"equal programs", fonts(first, second)},
      {"lists of glyphs",
       fonts(first, second, "/Flags 32/FontFile 9 0 R/CharSet(/A)/CIDSet 12 0 R")},
      {"lists in place", fonts(kinds + "<</Flags 32/FontFile 9 0 R/CharSet(/A)>>", second)},
      {"an encoding that is not known",
       fonts("/Type/Font/Subtype/Type1/Encoding/MacExpertEncoding/FontDescriptor 8 0 R", second)},
      {"no program", fonts(first, second, "/Flags 32", "/Flags 32/FontFile3 11 0 R")},
      {"another entry",
       fonts(first, second, "/Flags 32/FontFile 9 0 R", "/Flags 32/FontFile3 9 0 R")},
      {"unsure codes",
       fonts(first,
             "/Type/Font/Subtype/Type0/Encoding/Own-H/DescendantFonts[<</Subtype/CIDFontType0"
             "/FontDescriptor 7 0 R>>]")},
  };
  std::string text;
  for (const auto& [name, file] : cases) {
    for (const bool keeps_lists : {false, true}) {
      FontCase test(file);
      text += std::string(name) + "\n" + ReportText(test.Cut({.keeps_glyph_lists = keeps_lists}));
      if (!keeps_lists) {
        pdf::Document& written = test.written();
        for (const char* font : {"F", "G"}) {
          const std::string all = testing::Expanded(written, test.WrittenFont(font), 3);
          text += all.substr(0, std::min(all.find("/Length "), all.find("/Filter"))) + "\n";
          const pdf::Followed found = test.ProgramOf(font, "FontFile");
          for (const char* key : {"Length1", "Length2", "Length3", "Own"}) {
            text += " " + std::to_string(found.value.Get(key).IntegerOr(-1));
          }
          text += " of object " + std::to_string(found.number) + "\n";
        }
      }
    }
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/plans.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
