#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/checks/PaintedPage.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::PaintedPage;

// What is broken where a font shows "A" invisibly: only its text counts.
std::string BrokenBy(Level level, const std::string& font, const std::string& map = "",
                     const std::string& before = "", const std::string& after = "") {
  PaintedPage page(before + " BT 3 Tr /F 9 Tf <41> Tj ET " + after);
  page.Output("RGB ").Resources("/Font<</F 20 0 R>>");
  page.pdf()
      .Object(20, "<</Type/Font/BaseFont/Boxes/FirstChar 65/LastChar 65/Widths[1]" + font + ">>")
      .Stream(21, "", map);
  return page.BrokenRules(level);
}

const std::string kType3 = "/Subtype/Type3/Encoding<</Differences[65/";
const std::string kMapped = "/Subtype/Type3/Encoding<</Differences[65/g1]>>/ToUnicode 21 0 R";

TEST(CodeText, IsThatOfNamesWithoutAMap) {
  for (const Level level : {Level::k1a, Level::k2u, Level::k3a}) {
    EXPECT_EQ(BrokenBy(level, "/Subtype/Type1/Encoding/WinAnsiEncoding"), "");
    EXPECT_EQ(BrokenBy(level, "/Subtype/Type1"), "");
    EXPECT_EQ(BrokenBy(level, kType3 + "eacute]>>"), "");
    EXPECT_EQ(BrokenBy(level, kType3 + "uni0041]>>"), "");
  }
  for (const char* name : {"nonsense", "g12", "A.odd"}) {
    EXPECT_EQ(BrokenBy(Level::k1a, kType3 + name + "]>>"), "6.3.8-1") << name;
    EXPECT_EQ(BrokenBy(Level::k2u, kType3 + name + "]>>"), "6.2.11.7.2-1") << name;
    EXPECT_EQ(BrokenBy(Level::k1b, kType3 + name + "]>>"), "") << name;
    EXPECT_EQ(BrokenBy(Level::k2b, kType3 + name + "]>>"), "") << name;
  }
}

TEST(CodeText, IsThatOfTheMap) {
  EXPECT_EQ(BrokenBy(Level::k2u, kMapped, "<41><0041>endbfchar"), "");
  EXPECT_EQ(BrokenBy(Level::k1a, kMapped, "<41><0041>endbfchar"), "");
  EXPECT_EQ(BrokenBy(Level::k2u, kMapped, "<42><0041>endbfchar"), "6.2.11.7.2-1");
  for (const char* text : {"0000", "FEFF", "0041FFFE"}) {
    EXPECT_EQ(BrokenBy(Level::k2u, kMapped, "<41><" + std::string(text) + ">endbfchar"),
              "6.2.11.7.2-2")
        << text;
  }
}

TEST(CodeText, WantsActualTextForPrivateUse) {
  const std::string map = "<41><E000>endbfchar";
  EXPECT_EQ(BrokenBy(Level::k2u, kMapped, map), "");
  EXPECT_EQ(BrokenBy(Level::k2a, kMapped, map), "6.2.11.7.3-1");
  EXPECT_EQ(BrokenBy(Level::k2a, kMapped, map, "/Span<</ActualText(x)>>BDC", "EMC"), "");
  EXPECT_EQ(BrokenBy(Level::k2a, kMapped, map, "/Span<</ActualText(x)>>BDC EMC"), "6.2.11.7.3-1");
}

TEST(CodeText, TakesActualTextFromTheStructure) {
  const auto rules = [](const std::string& element) {
    PaintedPage page("/P<</MCID 0>>BDC BT 3 Tr /F 9 Tf <41> Tj ET EMC");
    page.Output("RGB ")
        .Resources("/Font<</F 20 0 R>>")
        .PageEntries("/StructParents 4")
        .CatalogEntries("/StructTreeRoot<</ParentTree<</Nums[4[22 0 R]]>>>>");
    page.pdf()
        .Object(20,
                "<</Type/Font/BaseFont/Boxes/FirstChar 65/LastChar 65/Widths[1]" + kMapped + ">>")
        .Stream(21, "", "<41><E000>endbfchar")
        .Object(22, "<</P 23 0 R>>")
        .Object(23, element);
    return page.BrokenRules(Level::k2a);
  };
  EXPECT_EQ(rules("<</ActualText(x)>>"), "");
  EXPECT_EQ(rules("<</P 22 0 R>>"), "6.2.11.7.3-1");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
