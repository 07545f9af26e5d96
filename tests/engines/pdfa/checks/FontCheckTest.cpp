#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/checks/PaintedPage.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "support/Expected.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::PaintedPage;

// A font that text is shown in, object 20. Programs are objects of their own: 30 a Type 1 program
// with A and eacute, 31 a TrueType program with a space and A in a map of Unicode, 32 a CID-keyed
// CFF program with the identifiers 1 and 65.
PaintedPage PageOf(const std::string& font, const std::string& text = "(A)",
                   const std::string& operators = "") {
  PaintedPage page("BT /F 9 Tf " + operators + " " + text + " Tj ET");
  page.Output("RGB ").Resources("/Font<</F 20 0 R>>");
  page.pdf()
      .Object(20, "<<" + font + ">>")
      .Stream(30, "", testing::Type1ProgramText({"A"}))
      .Stream(31, "", testing::TestFont().Bytes())
      .Stream(32, "/Subtype/CIDFontType0C", testing::CidProgram({1, 65}))
      .Stream(33, "/Subtype/OpenType", testing::CidProgram({1, 65}))
      .Stream(34, "/Subtype/Other", testing::CidProgram({1, 65}))
      .Stream(35, "", testing::CidProgram({1, 65}));
  return page;
}

std::string BrokenBy(Level level, const std::string& font, const std::string& text = "(A)",
                     const std::string& operators = "") {
  return PageOf(font, text, operators).BrokenRules(level);
}

const std::string kType1 = "/Type/Font/Subtype/Type1/BaseFont/Boxes";
const std::string kCodes = "/FirstChar 65/LastChar 65/Widths[150]";
const std::string kType1Program = "/FontDescriptor<</Flags 32/FontFile 30 0 R>>";
const std::string kTrueType =
    "/Type/Font/Subtype/TrueType/BaseFont/Boxes/FirstChar 65/LastChar 65"
    "/Widths[400]";
const std::string kWinAnsi = "/Encoding/WinAnsiEncoding";

std::string TrueTypeProgram(int flags) {
  return "/FontDescriptor<</Flags " + std::to_string(flags) + "/FontFile2 31 0 R>>";
}

// The two rules that a font of any part may break, with the dictionaries of two fonts: the rule
// holds for the one and not for the other.
struct FontCase {
  const char* part1;
  const char* later;
  std::string good;
  std::string bad;
};

TEST(FontCheck, FindsWhatIsWrongWithDictionaries) {
  const FontCase cases[] = {
      {"6.3.2-1", "6.2.11.2-1", kType1 + kCodes + kType1Program,
       "/Subtype/Type1/BaseFont/Boxes" + kCodes + kType1Program},
      {"6.3.2-2", "6.2.11.2-2", kTrueType + TrueTypeProgram(4),
       "/Type/Font/Subtype/Odd/BaseFont/Boxes" + kType1Program},
      {"6.3.2-3", "6.2.11.2-3", kType1 + kCodes + kType1Program,
       "/Type/Font/Subtype/Type1" + kCodes + kType1Program},
      {"6.3.2-4 6.3.2-6", "6.2.11.2-4 6.2.11.2-6", kType1 + kCodes + kType1Program,
       kType1 + "/LastChar 65/Widths[150]" + kType1Program},
      {"6.3.2-5 6.3.2-6", "6.2.11.2-5 6.2.11.2-6",
       "/Type/Font/Subtype/Type1/BaseFont/Courier" + kType1Program,
       kType1 + "/FirstChar 65/Widths[150]" + kType1Program},
      {"6.3.2-6", "6.2.11.2-6", kType1 + kCodes + kType1Program,
       kType1 + "/FirstChar 65/LastChar 66/Widths[150]" + kType1Program},
      {"6.3.4-1", "6.2.11.4.1-1", kType1 + kCodes + kType1Program,
       kType1 + kCodes + "/FontDescriptor<</Flags 32>>"},
  };
  for (const FontCase& row : cases) {
    EXPECT_EQ(BrokenBy(Level::k1b, row.good), "") << row.good;
    EXPECT_EQ(BrokenBy(Level::k2b, row.good), "") << row.good;
    EXPECT_NE(BrokenBy(Level::k1b, row.bad).find(row.part1), std::string::npos) << row.bad;
    EXPECT_NE(BrokenBy(Level::k2b, row.bad).find(row.later), std::string::npos) << row.bad;
  }
  EXPECT_EQ(BrokenBy(Level::k2b, "/Type/Font/Subtype/Type1/BaseFont/#FF" + kCodes + kType1Program),
            "6.1.8-1");
}

TEST(FontCheck, WantsNoProgramForWhatIsInvisible) {
  const std::string font = kType1 + kCodes + "/FontDescriptor<</Flags 32>>";
  EXPECT_EQ(BrokenBy(Level::k1b, font, "(A)", "3 Tr"), "");
  EXPECT_EQ(BrokenBy(Level::k2b, font, "(A)", "7 Tr"), "6.2.11.4.1-1");
}

TEST(FontCheck, FindsWhatIsWrongWithGlyphs) {
  const std::string named = kType1 + kType1Program + "/FirstChar 65/LastChar 66/Widths[150 0]";
  const FontCase cases[] = {
      {"6.3.5-1", "6.2.11.4.1-2", named, named + "/Encoding<</Differences[65/B]>>"},
      {"6.3.6-1", "6.2.11.5-1", kType1 + kType1Program + "/FirstChar 65/LastChar 65/Widths[150.9]",
       kType1 + kType1Program + "/FirstChar 65/LastChar 65/Widths[152]"},
      {"", "6.2.11.8-1", named + kWinAnsi, named + "/Encoding<</Differences[65/.notdef]>>"},
  };
  for (const FontCase& row : cases) {
    EXPECT_EQ(BrokenBy(Level::k1b, row.good), "") << row.good;
    EXPECT_EQ(BrokenBy(Level::k2b, row.good), "") << row.good;
    EXPECT_NE(BrokenBy(Level::k1b, row.bad).find(row.part1), std::string::npos) << row.bad;
    EXPECT_NE(BrokenBy(Level::k2b, row.bad).find(row.later), std::string::npos) << row.bad;
  }
  EXPECT_EQ(BrokenBy(Level::k1b, named + "/Encoding<</Differences[65/B]>>", "(A)", "3 Tr"), "");
  EXPECT_EQ(BrokenBy(Level::k2b,
                     "/Type/Font/Subtype/Type3/FirstChar 65/LastChar 65/Widths[1]"
                     "/Encoding<</Differences[65/.notdef]>>"),
            "6.2.11.8-1");
}

TEST(FontCheck, WantsSubsetsOfType1ToNameTheirGlyphs) {
  const auto rules = [](Level level, const std::string& name, const std::string& entries) {
    return BrokenBy(level, "/Type/Font/Subtype/Type1/BaseFont/" + name + kCodes +
                               "/FontDescriptor<</Flags 32/FontFile 30 0 R" + entries + ">>");
  };
  const std::string all = "/CharSet(/A/eacute)";
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", all), "");
  EXPECT_EQ(rules(Level::k2b, "ABCDEF+Boxes", all), "");
  EXPECT_EQ(rules(Level::k1b, "Boxes", ""), "");
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", ""), "6.3.5-2");
  EXPECT_EQ(rules(Level::k2b, "ABCDEF+Boxes", ""), "");
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CharSet(/A/eacute/B)"), "6.3.5-2");
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CharSet(/A)"), "") << "what is shown";
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CharSet(/eacute)"), "6.3.5-2");
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CharSet()"), "6.3.5-2");
  EXPECT_EQ(rules(Level::k2b, "ABCDEF+Boxes", "/CharSet(/A)"), "6.2.11.4.2-1");
}

TEST(FontCheck, WantsEncodingsOfTrueTypeThatFindGlyphs) {
  const auto rules = [](Level level, int flags, const std::string& encoding) {
    return BrokenBy(level, kTrueType + TrueTypeProgram(flags) + encoding);
  };
  const std::string differences = "/Encoding<</BaseEncoding/WinAnsiEncoding/Differences[66/";
  EXPECT_EQ(rules(Level::k1b, 32, kWinAnsi), "");
  EXPECT_EQ(rules(Level::k2b, 32, kWinAnsi), "");
  EXPECT_EQ(rules(Level::k1b, 32, "/Encoding/StandardEncoding"), "6.3.7-1");
  EXPECT_EQ(rules(Level::k2b, 32, "/Encoding/StandardEncoding"), "6.2.11.6-2");
  EXPECT_EQ(rules(Level::k1b, 32, differences + "B]>>"), "6.3.7-1");
  EXPECT_EQ(rules(Level::k2b, 32, differences + "B]>>"), "");
  EXPECT_EQ(rules(Level::k2b, 32, differences + "nonsense]>>"), "6.2.11.6-2");
  EXPECT_EQ(rules(Level::k1b, 4, ""), "");
  EXPECT_EQ(rules(Level::k1b, 4, kWinAnsi), "6.3.7-2");
  EXPECT_EQ(rules(Level::k2b, 4, kWinAnsi), "6.2.11.6-3");
}

std::string Big16(std::size_t value) {
  return {static_cast<char>(value >> 8 & 0xFF), static_cast<char>(value & 0xFF)};
}

std::string Big32(std::size_t value) {
  return Big16(value >> 16 & 0xFFFF) + Big16(value & 0xFFFF);
}

using Maps = std::vector<std::pair<int, int>>;  // platform and encoding

// A program that has these maps of codes, all with the same glyph for A, or with nothing.
std::string ProgramWith(const Maps& maps, bool has_glyphs) {
  const std::string map =
      has_glyphs ? Big16(6) + Big16(12) + Big16(0) + Big16('A') + Big16(1) + Big16(2) : "";
  std::string table = Big16(0) + Big16(maps.size());
  for (const auto& [platform, encoding] : maps) {
    table += Big16(static_cast<std::size_t>(platform)) + Big16(static_cast<std::size_t>(encoding)) +
             Big32(4 + 8 * maps.size());
  }
  table += map;
  std::string bytes = testing::TestFont().Bytes();
  const std::size_t entry = bytes.find("cmap");
  bytes.replace(entry + 8, 8, Big32(bytes.size()) + Big32(table.size()));
  return bytes + table;
}

// Of a symbolic font there is one map or one for symbols; another font has one that is for Unicode or
// of the Mac, and names that lead to glyphs.
TEST(FontCheck, WantsMapsOfTrueTypeThatGoWithItsFlags) {
  std::string text;
  for (const Maps& maps :
       {Maps{}, Maps{{3, 1}}, Maps{{3, 0}}, Maps{{1, 0}}, Maps{{1, 0}, {3, 1}},
        Maps{{1, 0}, {3, 0}}, Maps{{3, 0}, {3, 1}}, Maps{{0, 3}, {3, 10}}, Maps{{0, 3}, {3, 1}},
        Maps{{0, 0}, {1, 0}, {3, 0}}, Maps{{0, 1}, {1, 1}, {2, 0}, {3, 1}}, Maps{{0, 3}}}) {
    std::string name = "maps";
    for (const auto& [platform, encoding] : maps) {
      name += " " + std::to_string(platform) + "-" + std::to_string(encoding);
    }
    for (const int flags : {4, 32}) {
      for (const bool has_glyphs : {true, false}) {
        PaintedPage page =
            PageOf(kTrueType + TrueTypeProgram(flags) + (flags == 4 ? "" : kWinAnsi));
        page.pdf().Stream(31, "", ProgramWith(maps, has_glyphs));
        text += name + (has_glyphs ? " " : " empty ") + std::to_string(flags) + "\n" +
                page.FindingsText();
      }
    }
  }
  EXPECT_TRUE(testing::IsAsExpected("pdfa/findings/true-type-maps.txt", text));
}

TEST(FontCheck, KnowsProgramsByTheirSubtype) {
  const auto rules = [](Level level, const std::string& program) {
    PaintedPage page = PageOf(
        "/Type/Font/Subtype/Type0/BaseFont/Boxes/Encoding/Identity-H/DescendantFonts[21 0 R]",
        "<0041>");
    page.pdf().Object(21,
                      "<</Type/Font/Subtype/CIDFontType0/BaseFont/Boxes/DW 0"
                      "/FontDescriptor<</Flags 4/FontFile3 " +
                          program + " 0 R>>>>");
    return page.BrokenRules(level);
  };
  EXPECT_EQ(rules(Level::k1b, "32"), "");
  EXPECT_EQ(rules(Level::k1b, "33"), "6.3.2-7");
  EXPECT_EQ(rules(Level::k2b, "33"), "");
  EXPECT_EQ(rules(Level::k2b, "34"), "6.2.11.2-7");
  EXPECT_EQ(rules(Level::k1b, "35"), "6.3.4-1") << "nothing says what it is";
  EXPECT_EQ(rules(Level::k2b, "35"), "6.2.11.4.1-1");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
