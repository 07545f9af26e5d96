#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/ContentCheck.h"
#include "engines/pdfa/checks/PaintedPage.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Expected.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::PaintedPage;

// Two contents over the same resources: the rule holds for the one and not for the other.
struct ContentCase {
  Level level;
  const char* rule;
  const char* good;
  const char* bad;
};

// Everything that the contents name.
PaintedPage PageOf(const std::string& content) {
  PaintedPage page(content);
  page.Output("RGB ").Resources(
      "/ExtGState<</Plain<</CA 1/ca 1.0/SMask/None/BM/Normal/TR2/Default/RI/Perceptual>>"
      "/Transfer<</TR/Identity>>/Newer<</TR2/Identity>>/Phase<</HTP[1 1]>>"
      "/Masked<</SMask<</S/Alpha>>>>/Blended<</BM/Multiply>>/Odd<</BM/Odd>>/Thin<</CA 0.5>>"
      "/Pale<</ca 0.5>>/Intent<</RI/Odd>>/Half<</HT<</HalftoneType 1>>>>"
      "/Half6<</HT<</HalftoneType 6>>>>/HalfName<</HT<</HalftoneType 1/HalftoneName(a)>>>>"
      "/HalfSpot<</HT<</HalftoneType 5/Default<</HalftoneType 1>>"
      "/Gold<</HalftoneType 1/TransferFunction/Identity>>>>>>"
      "/HalfBad<</HT<</HalftoneType 5/Gold<</HalftoneType 1>>>>>>>>"
      "/XObject<</Image 20 0 R/Smooth 21 0 R/Deep 22 0 R/Odd 23 0 R/Mask 24 0 R/Mask8 25 0 R"
      "/Alternate 26 0 R/OpiImage 27 0 R/Soft 28 0 R/ImageIntent 29 0 R"
      "/Form 30 0 R/Opi 31 0 R/Ps 32 0 R/Ps2 33 0 R/Ref 34 0 R/Group 35 0 R/PsObject 36 0 R>>");
  const std::string image = "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray";
  const std::string mask = "/Subtype/Image/Width 1/Height 1/ImageMask true";
  page.pdf()
      .Stream(20, image + "/BitsPerComponent 8/Interpolate false/Intent/Saturation", "x")
      .Stream(21, image + "/BitsPerComponent 8/Interpolate true", "x")
      .Stream(22, image + "/BitsPerComponent 16", "xx")
      .Stream(23, image + "/BitsPerComponent 3", "x")
      .Stream(24, mask + "/BitsPerComponent 1", "x")
      .Stream(25, mask + "/BitsPerComponent 8", "x")
      .Stream(26, image + "/Alternates[]", "x")
      .Stream(27, image + "/OPI<<>>", "x")
      .Stream(28, image + "/SMask 20 0 R", "x")
      .Stream(29, image + "/Intent/Odd", "x")
      .Stream(30, "/Subtype/Form/BBox[0 0 9 9]", "")
      .Stream(31, "/Subtype/Form/BBox[0 0 9 9]/OPI<<>>", "")
      .Stream(32, "/Subtype/Form/BBox[0 0 9 9]/PS 20 0 R", "")
      .Stream(33, "/Subtype/Form/BBox[0 0 9 9]/Subtype2/PS", "")
      .Stream(34, "/Subtype/Form/BBox[0 0 9 9]/Ref<<>>", "")
      .Stream(35, "/Subtype/Form/BBox[0 0 9 9]/Group<</S/Transparency>>", "")
      .Stream(36, "/Subtype/PS", "");
  return page;
}

std::string Saves(int count) {
  std::string content;
  for (int i = 0; i < count; ++i) {
    content += "q ";
  }
  return content;
}

const std::string k28 = Saves(28) + "Q q";
const std::string k29 = Saves(29);

TEST(ContentCheck, FindsWhatEachRuleIsAbout) {
  const ContentCase cases[] = {
      {Level::k1b, "6.2.10-1", "0 0 m", "BX 1 foo EX"},
      {Level::k2b, "6.2.2-1", "0 0 m", "1 fo"},
      {Level::k1b, "6.1.12-8", k28.c_str(), k29.c_str()},
      {Level::k2b, "6.1.13-8", k28.c_str(), k29.c_str()},
      {Level::k1b, "6.2.9-1", "/Perceptual ri", "/Odd ri"},
      {Level::k2b, "6.2.6-1", "/Plain gs", "/Intent gs"},
      {Level::k2b, "6.2.6-1", "/Image Do", "/ImageIntent Do"},
      {Level::k1b, "6.2.8-1", "/Plain gs", "/Transfer gs"},
      {Level::k2b, "6.2.5-1", "/Newer gs", "/Transfer gs"},
      {Level::k1b, "6.2.8-2", "/Plain gs", "/Newer gs"},
      {Level::k2b, "6.2.5-2", "/Plain gs", "/Newer gs"},
      {Level::k2b, "6.2.5-3", "/Plain gs", "/Phase gs"},
      {Level::k2b, "6.2.5-4", "/Half gs", "/Half6 gs"},
      {Level::k2b, "6.2.5-5", "/Half gs", "/HalfName gs"},
      {Level::k2b, "6.2.5-6", "/HalfSpot gs", "/HalfBad gs"},
      {Level::k1b, "6.4-1", "/Plain gs", "/Masked gs"},
      {Level::k1b, "6.4-2", "/Image Do", "/Soft Do"},
      {Level::k1b, "6.4-3", "/Form Do", "/Group Do"},
      {Level::k1b, "6.4-4", "/Plain gs", "/Blended gs"},
      {Level::k2b, "6.2.10-1", "/Blended gs", "/Odd gs"},
      {Level::k1b, "6.4-5", "/Pale gs", "/Thin gs"},
      {Level::k1b, "6.4-6", "/Thin gs", "/Pale gs"},
      {Level::k1b, "6.2.4-1", "/Image Do", "/Alternate Do"},
      {Level::k2b, "6.2.8-1", "/Image Do", "/Alternate Do"},
      {Level::k1b, "6.2.4-2", "/Image Do", "/OpiImage Do"},
      {Level::k1b, "6.2.4-2", "/Form Do", "/Opi Do"},
      {Level::k2b, "6.2.8-2", "/Image Do", "/OpiImage Do"},
      {Level::k1b, "6.2.4-3", "/Image Do", "/Smooth Do"},
      {Level::k2b, "6.2.8-3", "/Image Do", "/Smooth Do"},
      {Level::k2b, "6.2.8-3", "BI/W 1/H 1/CS/G/BPC 8 ID x EI",
       "BI/W 1/H 1/CS/G/BPC 8/I true ID x EI"},
      {Level::k1b, "6.2.4-4", "/Image Do", "/Deep Do"},
      {Level::k2b, "6.2.8-4", "/Deep Do", "/Odd Do"},
      {Level::k1b, "6.2.4-5", "/Mask Do", "/Mask8 Do"},
      {Level::k2b, "6.2.8-5", "/Mask Do", "/Mask8 Do"},
      {Level::k1b, "6.1.10-2", "BI/W 1/H 1/CS/G/BPC 8/F/Fl ID x EI",
       "BI/W 1/H 1/CS/G/BPC 8/F/LZW ID x EI"},
      {Level::k2b, "6.1.10-1", "BI/W 1/H 1/CS/G/BPC 8/F/Fl ID x EI",
       "BI/W 1/H 1/CS/G/BPC 8/F[/A85/LZW] ID x EI"},
      {Level::k1b, "6.2.5-1", "/Form Do", "/Ps Do"},
      {Level::k1b, "6.2.5-1", "/Form Do", "/Ps2 Do"},
      {Level::k2b, "6.2.9-1", "/Form Do", "/Opi Do"},
      {Level::k1b, "6.2.6-1", "/Form Do", "/Ref Do"},
      {Level::k2b, "6.2.9-2", "/Form Do", "/Ref Do"},
      {Level::k1b, "6.2.7-1", "/Form Do", "/PsObject Do"},
      {Level::k2b, "6.2.9-3", "/Form Do", "/PsObject Do"},
  };
  std::string text;
  for (const ContentCase& row : cases) {
    for (const char* content : {row.good, row.bad}) {
      text += std::string(content) + "\n" + PageOf(content).FindingsText();
    }
    EXPECT_EQ(PageOf(row.bad).BrokenRules(row.level), row.rule) << row.bad;
    EXPECT_EQ(PageOf(row.good).BrokenRules(row.level).find(row.rule), std::string::npos)
        << row.rule << ": " << row.good;
  }
  EXPECT_TRUE(testing::IsAsExpected("pdfa/findings/content.txt", text));
}

TEST(ContentCheck, FindsNothingWrongWithPlainContent) {
  for (const Level level : {Level::k1b, Level::k2b, Level::k3a}) {
    EXPECT_EQ(PageOf("q /Plain gs /Image Do /Form Do /Mask Do Q 1 0 0 RG 0 0 m 9 9 l S")
                  .BrokenRules(level),
              "");
  }
}

TEST(ContentCheck, WantsResourcesToBeExplicit) {
  const auto rules = [](const std::string& page, const std::string& form) {
    PaintedPage made("/F Do");
    made.Output("RGB ").PageEntries(page).PageTreeEntries("/Resources<</XObject<</F 20 0 R>>>>");
    made.pdf()
        .Stream(20, "/Subtype/Form/BBox[0 0 9 9]" + form, "/G Do")
        .Stream(21, "/Subtype/Form/BBox[0 0 9 9]", "");
    return made.BrokenRules(Level::k2b);
  };
  const std::string own = "/Resources<</XObject<</F 20 0 R/G 21 0 R>>>>";
  EXPECT_EQ(rules(own, own), "");
  EXPECT_EQ(rules(own, ""), "6.2.2-2");
  EXPECT_EQ(rules("", own), "6.2.2-2");
}

TEST(ContentCheck, LooksAtGlyphsThatAreNotShownToo) {
  PaintedPage page("BT /F 9 Tf (a) Tj ET");
  page.Output("RGB ").Resources("/Font<</F 20 0 R>>");
  page.pdf()
      .Object(20,
              "<</Type/Font/Subtype/Type3/FirstChar 97/LastChar 98/Widths[9 9]/Resources<<>>"
              "/Encoding<</Differences[97/a/b]>>/CharProcs<</a 21 0 R/b 22 0 R>>>>")
      .Stream(21, "", "9 0 0 0 9 9 d1 1 0 0 0 k 0 0 9 9 re f")
      .Stream(22, "", "9 0 d0 1 0 0 0 k");
  EXPECT_EQ(page.BrokenRules(Level::k2b), "6.2.4.3-3");
}

TEST(ContentCheck, TellsWhereImagesAre) {
  const std::string bytes =
      testing::RawPdf()
          .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
          .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
          .Object(3, "<</Type/Page/Parent 2 0 R/Contents 4 0 R/Resources<</XObject<</I 5 0 R>>>>>>")
          .Stream(4, "", "q 10 0 0 20 3 4 cm /I Do Q")
          .Stream(5, "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/Interpolate true", "x")
          .Table();
  const auto document = testing::OpenBytes(bytes);
  FindingList findings(Level::k2b);
  CheckedDocument checked(*document, findings);
  ContentCheck(checked).CheckPage(0);
  const std::vector<Finding> found = findings.Take();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].page_number, 1U);
  EXPECT_EQ(found[0].object, 5U);
  EXPECT_EQ(found[0].box, (pdf::Box{3, 4, 13, 24}));
}

TEST(ContentCheck, WantsABlendingSpaceWhereThereIsTransparency) {
  const auto rules = [](const std::string& content, const std::string& entries) {
    PaintedPage page(content);
    page.Resources("/ExtGState<</Blended<</BM/Multiply>>>>/XObject<</Group 20 0 R/Outer 21 0 R>>")
        .PageEntries(entries);
    page.pdf()
        .Stream(20, "/Subtype/Form/BBox[0 0 9 9]/Group<</S/Transparency>>", "")
        .Stream(21, "/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</Group 20 0 R>>>>",
                "/Group Do");
    return page.BrokenRules(Level::k2b);
  };
  const std::string group = "/Group<</S/Transparency/CS[/CalGray<<>>]>>";
  EXPECT_EQ(rules("", ""), "");
  for (const char* content : {"/Blended gs", "/Group Do", "/Outer Do", "/Outer Do /Outer Do"}) {
    EXPECT_EQ(rules(content, ""), "6.2.10-2") << content;
    EXPECT_EQ(rules(content, group), "") << content;
  }
  EXPECT_EQ(rules("", "/Annots[<</AP<</N 20 0 R>>>>]"), "6.2.10-2");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
