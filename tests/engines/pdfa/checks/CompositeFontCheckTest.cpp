#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/checks/PaintedPage.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::PaintedPage;

const std::string kCff = "/Subtype/CIDFontType0/DW 0";
const std::string kCffProgram = "/FontDescriptor<</Flags 4/FontFile3 32 0 R>>";
const std::string kTrueType = "/Subtype/CIDFontType2/DW 400";
const std::string kTrueTypeProgram = "/FontDescriptor<</Flags 4/FontFile2 31 0 R>>";

// A composite font that the text is shown in. Object 32 is a CID-keyed CFF program with the
// identifiers 1 and 65, 31 a TrueType program of three glyphs, 40 an embedded map.
PaintedPage PageOf(const std::string& encoding, const std::string& descendant,
                   const std::string& text = "<0001>", const std::string& name = "Boxes",
                   const std::string& map = "", const std::string& map_entries = "") {
  PaintedPage page("BT /F 9 Tf " + text + " Tj ET");
  page.Output("RGB ").Resources("/Font<</F 20 0 R>>");
  page.pdf()
      .Object(20, "<</Type/Font/Subtype/Type0/BaseFont/Boxes/DescendantFonts[21 0 R]/Encoding " +
                      encoding + ">>")
      .Object(21, "<</Type/Font/BaseFont/" + name + descendant + ">>")
      .Stream(31, "", testing::TestFont().Bytes())
      .Stream(32, "/Subtype/CIDFontType0C", testing::CidProgram({1, 65}))
      .Stream(40, "/Type/CMap/CMapName/Own" + map_entries,
              "1 begincodespacerange<0000><FFFF>endcodespacerange" + map)
      .Stream(41, "", "\x40")
      .Stream(42, "", std::string("\x40\0\0\0\0\0\0\0\x40", 9))
      .Stream(43, "", "\x60")
      .Stream(44, "", std::string("\0\0\0\0\0\0\0\0\x40", 9));
  return page;
}

TEST(CompositeFontCheck, FindsNothingWrongWithTheUsual) {
  for (const Level level : {Level::k1b, Level::k2b}) {
    EXPECT_EQ(PageOf("/Identity-H", kCff + kCffProgram).BrokenRules(level), "");
    EXPECT_EQ(PageOf("/Identity-H", kTrueType + "/CIDToGIDMap/Identity" + kTrueTypeProgram)
                  .BrokenRules(level),
              "");
  }
}

TEST(CompositeFontCheck, WantsOneCharacterCollection) {
  const std::string info = "/CIDSystemInfo<</Registry(Adobe)/Ordering(Japan1)/Supplement ";
  const std::string japan = "/Registry(Adobe)def/Ordering(Japan1)def/Supplement 2 def";
  const auto rules = [&](Level level, const std::string& encoding, const std::string& supplement,
                         const std::string& map) {
    return PageOf(encoding, kCff + info + supplement + ">>", "()", "Boxes", map).BrokenRules(level);
  };
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "2", japan), "6.2.11.4.1-1");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "3", japan), "6.2.11.3.1-1 6.2.11.4.1-1");
  EXPECT_EQ(rules(Level::k1b, "40 0 R", "3", japan), "6.3.4-1");
  EXPECT_EQ(rules(Level::k1b, "40 0 R", "3", "/Registry(Adobe)def/Ordering(GB1)def"),
            "6.3.3.1-1 6.3.4-1");
  EXPECT_EQ(rules(Level::k2b, "/UniJIS-UTF16-H", "5", ""), "6.2.11.4.1-1");
  EXPECT_EQ(rules(Level::k2b, "/UniJIS-UCS2-H", "7", ""), "6.2.11.3.1-1 6.2.11.4.1-1");
}

TEST(CompositeFontCheck, WantsMapsThatReadersHave) {
  const auto rules = [](Level level, const std::string& encoding, const std::string& map = "",
                        const std::string& entries = "") {
    const std::string found =
        PageOf(encoding,
               kCff + "/CIDSystemInfo<</Registry(A)/Ordering(B)/Supplement 0>>" + kCffProgram, "()",
               "Boxes", map + "/Registry(A)def/Ordering(B)def/Supplement 0 def", entries)
            .BrokenRules(level);
    return found;
  };
  EXPECT_EQ(rules(Level::k1b, "40 0 R"), "");
  EXPECT_EQ(rules(Level::k1b, "/Identity-V"), "");
  EXPECT_EQ(rules(Level::k1b, "/UniJIS-UTF16-H"), "6.3.3.1-1 6.3.3.3-1");
  EXPECT_EQ(rules(Level::k2b, "/UniJIS-UTF16-H"), "6.2.11.3.1-1");
  EXPECT_EQ(rules(Level::k2b, "/Odd"), "6.2.11.3.1-1 6.2.11.3.3-1");
  EXPECT_EQ(rules(Level::k1b, "40 0 R", "/WMode 1 def"), "6.3.3.3-2");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "/WMode 1 def"), "6.2.11.3.3-2");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "/WMode 1 def", "/WMode 1"), "");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "/Odd usecmap "), "6.2.11.3.3-3");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "", "/UseCMap/Odd"), "6.2.11.3.3-3");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "", "/UseCMap/H"), "");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "", "/UseCMap<</CMapName/H>>"), "");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "", "/UseCMap<</CMapName/Odd>>"), "6.2.11.3.3-3");
  EXPECT_EQ(rules(Level::k1b, "40 0 R", "<0000><0001>65535 endcidrange "), "6.1.12-10");
  EXPECT_EQ(rules(Level::k2b, "40 0 R", "<0000><0001>65535 endcidrange "), "6.1.13-10");
}

TEST(CompositeFontCheck, WantsAMapOfGlyphsForTrueType) {
  const std::string bare = kTrueType + kTrueTypeProgram;
  EXPECT_EQ(PageOf("/Identity-H", bare).BrokenRules(Level::k1b), "6.3.3.2-1");
  EXPECT_EQ(PageOf("/Identity-H", bare + "/CIDToGIDMap/Odd").BrokenRules(Level::k2b),
            "6.2.11.3.2-1");
  EXPECT_EQ(PageOf("/Identity-H", bare, "3 Tr <0001>").BrokenRules(Level::k1b), "");
  EXPECT_EQ(PageOf("/Identity-H", bare, "3 Tr <0001>").BrokenRules(Level::k2b), "6.2.11.3.2-1");
}

TEST(CompositeFontCheck, WantsSubsetsToTellTheirIdentifiers) {
  const auto rules = [](Level level, const std::string& name, const std::string& set) {
    return PageOf("/Identity-H", kCff + "/FontDescriptor<</Flags 4/FontFile3 32 0 R" + set + ">>",
                  "<0001>", name)
        .BrokenRules(level);
  };
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CIDSet 42 0 R"), "");
  EXPECT_EQ(rules(Level::k2b, "ABCDEF+Boxes", "/CIDSet 42 0 R"), "");
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", ""), "6.3.5-3");
  EXPECT_EQ(rules(Level::k2b, "ABCDEF+Boxes", ""), "");
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CIDSet 43 0 R"), "6.3.5-3");
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CIDSet 41 0 R"), "") << "what is shown";
  EXPECT_EQ(rules(Level::k1b, "ABCDEF+Boxes", "/CIDSet 44 0 R"), "6.3.5-3");
  EXPECT_EQ(rules(Level::k2b, "ABCDEF+Boxes", "/CIDSet 41 0 R"), "6.2.11.4.2-2");
  EXPECT_EQ(rules(Level::k2b, "Boxes", "/CIDSet 41 0 R"), "");
}

TEST(CompositeFontCheck, FindsIdentifiersWithoutAGlyph) {
  const auto rules = [](const std::string& text) {
    return PageOf("/Identity-H", kCff + kCffProgram, text).BrokenRules(Level::k2b);
  };
  EXPECT_EQ(rules("<00010041>"), "");
  EXPECT_EQ(rules("<0002>"), "6.2.11.4.1-2");
  EXPECT_EQ(rules("<0000>"), "6.2.11.8-1");
  EXPECT_EQ(rules("<000100>"), "6.2.11.4.1-2 6.2.11.8-1");
  const auto with_widths = [](const std::string& widths) {
    return PageOf("/Identity-H",
                  kTrueType + "/CIDToGIDMap/Identity/W[" + widths + "]" + kTrueTypeProgram, "<00>")
        .BrokenRules(Level::k2b);
  };
  EXPECT_EQ(with_widths("0[500]"), "6.2.11.4.1-2 6.2.11.8-1") << "what .notdef is as wide as";
  EXPECT_EQ(with_widths("0[512]"), "6.2.11.4.1-2 6.2.11.5-1 6.2.11.8-1");
  EXPECT_EQ(with_widths("0[500 512]"), "6.2.11.4.1-2 6.2.11.8-1");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
