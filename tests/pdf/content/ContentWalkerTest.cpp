// Which content a walk goes into, and what it tells of images, paths and shadings.
#include <string>

#include "pdf/content/WalkFixture.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr WalkOptions kDrawn = {.images = true,
                                .forms = true,
                                .patterns = true,
                                .soft_masks = true,
                                .glyphs = true,
                                .appearances = true};

TEST_F(WalkTest, ImagesWithTheirMatrix) {
  file_.Stream(5, kImageEntries, "x");
  EXPECT_THAT(
      Walk("q 2 0 0 2 10 20 cm /I Do 3 0 0 3 1 1 cm /I Do Q /I Do", {.images = true},
           "/Resources<</XObject<</I 5 0 R>>>>"),
      ElementsAre("image 5 [2 0 0 2 10 20]", "image 5 [6 0 0 6 12 22]", "image 5 [1 0 0 1 0 0]"));
}

TEST_F(WalkTest, InlineImages) {
  recorder_.look = [](const GraphicsState&) {};
  EXPECT_THAT(Walk("q 5 0 0 5 0 0 cm BI/W 1/H 1/BPC 8/CS/G ID x EI Q", {.images = true}),
              ElementsAre("image 0 [5 0 0 5 0 0]"));
}

TEST_F(WalkTest, BeginsWithTheMatrixGiven) {
  file_.Page("/Resources<</XObject<</I 5 0 R>>>>", "2 0 0 2 0 0 cm /I Do");
  file_.Stream(5, kImageEntries, "x");
  EXPECT_THAT(WalkPage({.images = true}, {1, 0, 0, 1, 7, 8}), ElementsAre("image 5 [2 0 0 2 7 8]"));
}

TEST_F(WalkTest, FormsWithinForms) {
  file_
      .Stream(5, kFormEntries + "/Matrix[2 0 0 2 0 0]/Resources<</XObject<</G 6 0 R>>>>",
              "1 0 0 1 5 0 cm /G Do")
      .Stream(6, kFormEntries + "/Resources<</XObject<</I 7 0 R>>>>", "/I Do")
      .Stream(7, kImageEntries, "x");
  EXPECT_THAT(
      Walk("1 0 0 1 0 50 cm /F Do", kDrawn, "/Resources<</XObject<</F 5 0 R>>>>"),
      ElementsAre("enter form 5", "enter form 6", "image 7 [2 0 0 2 10 50]", "leave 6", "leave 5"));
}

TEST_F(WalkTest, FormsAreNotGoneIntoUnlessAsked) {
  file_.Stream(5, kFormEntries, "");
  EXPECT_THAT(Walk("/F Do", {.images = true}, "/Resources<</XObject<</F 5 0 R>>>>"), IsEmpty());
}

TEST_F(WalkTest, TheVisitorMayDecline) {
  file_.Stream(5, kFormEntries, "/I Do").Stream(6, kImageEntries, "x");
  recorder_.declined = 5;
  EXPECT_THAT(Walk("/F Do /I Do", kDrawn, "/Resources<</XObject<</F 5 0 R/I 6 0 R>>>>"),
              ElementsAre("enter form 5", "image 6 [1 0 0 1 0 0]"));
  recorder_.lines.clear();
  recorder_.declined = 3;
  EXPECT_THAT(WalkPage(kDrawn), IsEmpty());
}

TEST_F(WalkTest, FormsWithoutResourcesTakeThoseOfTheirUser) {
  file_.Stream(5, kFormEntries + "/Resources<</XObject<</G 6 0 R/I 7 0 R>>>>", "/G Do")
      .Stream(6, kFormEntries, "/I Do")
      .Stream(7, kImageEntries, "x");
  EXPECT_THAT(
      Walk("/F Do", kDrawn, "/Resources<</XObject<</F 5 0 R>>>>"),
      ElementsAre("enter form 5", "enter form 6", "image 7 [1 0 0 1 0 0]", "leave 6", "leave 5"));
}

TEST_F(WalkTest, FormsInACircle) {
  file_.Stream(5, kFormEntries + "/Resources<</XObject<</G 6 0 R>>>>", "/G Do")
      .Stream(6, kFormEntries + "/Resources<</XObject<</F 5 0 R>>>>", "/F Do");
  EXPECT_THAT(Walk("/F Do", kDrawn, "/Resources<</XObject<</F 5 0 R>>>>"),
              ElementsAre("enter form 5", "enter form 6", "trouble: loop", "leave 6", "leave 5"));
}

TEST_F(WalkTest, DeepFormsComeToAnEnd) {
  for (int number = 5; number < 105; ++number) {
    file_.Stream(
        number,
        kFormEntries + "/Resources<</XObject<</F " + std::to_string(number + 1) + " 0 R>>>>",
        "/F Do");
  }
  const Lines lines = Walk("/F Do", kDrawn, "/Resources<</XObject<</F 5 0 R>>>>");
  EXPECT_THAT(lines, SizeIs(31 + 1 + 31));
  EXPECT_EQ(lines[31], "trouble: too deep");
}

// Each draws the next ten times: ten million times the last one.
TEST_F(WalkTest, FormsThatUnfoldComeToAnEnd) {
  std::string often;
  for (int i = 0; i < 10; ++i) {
    often += "/F Do ";
  }
  for (int number = 5; number < 12; ++number) {
    file_.Stream(
        number,
        kFormEntries + "/Resources<</XObject<</F " + std::to_string(number + 1) + " 0 R>>>>",
        often);
  }
  file_.Stream(12, kFormEntries, "");
  const Lines lines = Walk("/F Do", kDrawn, "/Resources<</XObject<</F 5 0 R>>>>");
  EXPECT_LT(lines.size(), 200'100U);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "trouble: too much"), 1);
  recorder_.lines.clear();
  ContentWalker walker(file_.Open(), recorder_, kDrawn);
  for (int round = 1; round <= 2; ++round) {  // each page has its own bound, and its own trouble
    walker.BeginPage(file_.pages(), 0);
    while (walker.Step()) {
    }
    EXPECT_EQ(std::count(recorder_.lines.begin(), recorder_.lines.end(), "trouble: too much"),
              round);
  }
}

TEST_F(WalkTest, WhatIsNoFormAndNoImage) {
  file_.Stream(5, "/Subtype/PS", "").Object(6, "<</Subtype/Form>>").Object(7, "7 0 R");
  EXPECT_THAT(Walk("/P Do /F Do /N Do /L Do Do 1 Do", kDrawn,
                   "/Resources<</XObject<</P 5 0 R/F 6 0 R/L 7 0 R>>>>"),
              ElementsAre("trouble: no resource", "enter form 6", "trouble: unreadable", "leave 6",
                          "trouble: no resource", "trouble: no resource",
                          "trouble: operands missing", "trouble: operands missing"));
}

TEST_F(WalkTest, TilingPatternsThatSomethingIsPaintedWith) {
  file_.Stream(5, "/PatternType 1/Matrix[3 0 0 3 0 0]/Resources<</XObject<</I 6 0 R>>>>", "/I Do")
      .Stream(6, kImageEntries, "x")
      .Object(7, "<</PatternType 2/Shading<<>>>>");
  EXPECT_THAT(Walk("2 0 0 2 0 0 cm /Pattern cs /P scn /S SCN 0 0 9 9 re f 0 0 9 9 re S", kDrawn,
                   "/Resources<</Pattern<</P 5 0 R/S 7 0 R>>>>"),
              ElementsAre("enter tiling 5", "image 6 [3 0 0 3 0 0]", "leave 5"));
}

TEST_F(WalkTest, PatternsOfFillsAndStrokes) {
  file_.Stream(5, "/PatternType 1", "").Stream(6, "/PatternType 1", "");
  const std::string resources = "/Resources<</Pattern<</P 5 0 R/Q 6 0 R>>>>";
  file_.Page(resources, "/P scn /Q SCN 0 0 9 9 re B b* n 1 g f 1 G S BT (a)Tj 1 Tr(b)Tj ET");
  EXPECT_THAT(WalkPage({.patterns = true}),
              ElementsAre("enter tiling 5", "leave 5", "enter tiling 6", "leave 6",
                          "enter tiling 5", "leave 5", "enter tiling 6", "leave 6"));
}

TEST_F(WalkTest, PatternsOfText) {
  file_.Stream(5, "/PatternType 1", "").Stream(6, "/PatternType 1", "");
  EXPECT_THAT(Walk("/P scn /Q SCN BT (a)Tj 1 Tr [(b)]TJ 2 Tr(c)' 3 Tr (d)Tj 7 Tr(e)Tj ET",
                   {.patterns = true}, "/Resources<</Pattern<</P 5 0 R/Q 6 0 R>>>>"),
              ElementsAre("enter tiling 5", "leave 5", "enter tiling 6", "leave 6",
                          "enter tiling 5", "leave 5", "enter tiling 6", "leave 6"));
}

TEST_F(WalkTest, FormsArePaintedWithThePatternOfTheirUser) {
  file_.Stream(5, "/PatternType 1/Resources<</XObject<</I 7 0 R>>>>", "/I Do")
      .Stream(6, kFormEntries + "/Matrix[2 0 0 2 0 0]/Resources<<>>", "0 0 9 9 re f")
      .Stream(7, kImageEntries, "x");
  EXPECT_THAT(
      Walk("/P scn /F Do", kDrawn, "/Resources<</Pattern<</P 5 0 R>>/XObject<</F 6 0 R>>>>"),
      ElementsAre("enter form 6", "enter tiling 5", "image 7 [1 0 0 1 0 0]", "leave 5", "leave 6"));
}

TEST_F(WalkTest, CellsWithoutColorsTakeThoseOfTheirUser) {
  file_.Stream(5, "/PatternType 1/PaintType 2", "1 0 0 rg 0 0 9 9 re f");
  std::vector<std::string> colors;
  recorder_.look = [&](const GraphicsState& state) {
    colors.push_back(std::string(state.fill.components) + (state.fill.pattern.IsNull() ? "" : "|"));
  };
  Walk("/CS cs .5 /P scn 0 0 9 9 re f", {.paths = true, .style = true, .patterns = true},
       "/Resources<</ColorSpace<</CS[/Pattern/DeviceGray]>>/Pattern<</P 5 0 R>>>>");
  EXPECT_THAT(colors, ElementsAre(".5 /P |", ".5 /P "));
}

TEST_F(WalkTest, SoftMasks) {
  file_.Object(5, "<</SMask<</S/Alpha/G 6 0 R>>>>")
      .Stream(6, kFormEntries + "/Matrix[2 0 0 2 0 0]/Resources<</XObject<</I 7 0 R>>>>", "/I Do")
      .Stream(7, kImageEntries, "x");
  const std::string resources = "/Resources<</ExtGState<</G 5 0 R/N<</SMask/None>>>>>>";
  EXPECT_THAT(Walk("1 0 0 1 0 9 cm /G gs /N gs", kDrawn, resources),
              ElementsAre("enter group 6", "image 7 [2 0 0 2 0 9]", "leave 6"));
}

TEST_F(WalkTest, GlyphsOfType3Fonts) {
  file_
      .Object(5,
              "<</Subtype/Type3/FontMatrix[.01 0 0 .01 0 0]/FirstChar 97/Widths[50 100]"
              "/Encoding<</Differences[97/a/b 300/c]>>/CharProcs<</a 6 0 R/b 7 0 R/c 7 0 R>>"
              "/Resources<</XObject<</I 8 0 R>>>>>>")
      .Stream(6, "", "50 0 d0 /I Do")
      .Stream(7, "", "100 0 0 0 9 9 d1 /I Do")
      .Stream(8, kImageEntries, "x");
  EXPECT_THAT(Walk("BT /T 10 Tf 1 0 0 1 5 6 Tm (axb)Tj[(a)-1000(a)]TJ ET", kDrawn,
                   "/Resources<</Font<</T 5 0 R>>>>"),
              ElementsAre("enter glyph 6", "image 8 [0.1 0 0 0.1 5 6]", "leave 6",  //
                          "enter glyph 7", "image 8 [0.1 0 0 0.1 10 6]", "leave 7", "enter glyph 6",
                          "image 8 [0.1 0 0 0.1 20 6]", "leave 6", "enter glyph 6",
                          "image 8 [0.1 0 0 0.1 35 6]", "leave 6"));
}

TEST_F(WalkTest, GlyphsWithSpacingAndScale) {
  file_
      .Object(5,
              "<</Subtype/Type3/FontMatrix[.1 0 0 .1 0 0]/FirstChar 32/Widths[10]"
              "/Encoding<</Differences[32/s]>>/CharProcs<</s 6 0 R>>>>")
      .Stream(6, "", "/I Do")
      .Stream(7, kImageEntries, "x");
  EXPECT_THAT(Walk("BT /T 1 Tf 2 Tc 3 Tw 50 Tz 4 Ts (  )Tj ET", kDrawn,
                   "/Resources<</Font<</T 5 0 R>>/XObject<</I 7 0 R>>>>"),
              ElementsAre("enter glyph 6", "image 7 [0.05 0 0 0.1 0 4]", "leave 6", "enter glyph 6",
                          "image 7 [0.05 0 0 0.1 3 4]", "leave 6"));
}

TEST_F(WalkTest, Type3FontsThatAreNoObjects) {
  file_.Stream(6, "", "")
      .Object(7, "<</Font[8 0 R 9]>>")
      .Object(8, "<</Subtype/Type3/Encoding<</Differences[97/a]>>/CharProcs<</a 6 0 R>>>>");
  EXPECT_THAT(Walk("BT /T 1 Tf (a)Tj /T 2 Tf (a)Tj /H 1 Tf (a)Tj /G gs (a)Tj ET", kDrawn,
                   "/Resources<</ExtGState<</G 7 0 R>>/Font<</H<</Subtype/Type1>>/T<</Subtype/Type3"
                   "/Encoding<</Differences[97/a]>>/CharProcs<</a 6 0 R>>>>>>>>"),
              ElementsAre("enter glyph 6", "leave 6", "enter glyph 6", "leave 6", "enter glyph 6",
                          "leave 6"));
}

TEST_F(WalkTest, AGlyphThatShowsItself) {
  file_
      .Object(5,
              "<</Subtype/Type3/Encoding<</Differences[97/a]>>/CharProcs<</a 6 0 R>>"
              "/Resources<</Font<</T 5 0 R>>>>>>")
      .Stream(6, "", "BT /T 1 Tf (aa)Tj ET");
  EXPECT_THAT(Walk("BT /T 1 Tf (a)Tj ET", kDrawn, "/Resources<</Font<</T 5 0 R>>>>"),
              ElementsAre("enter glyph 6", "trouble: loop", "trouble: loop", "leave 6"));
}

TEST_F(WalkTest, ColorsOfShapesDoNotCount) {
  file_
      .Object(5,
              "<</Subtype/Type3/Encoding<</Differences[97/a/b]>>/CharProcs<</a 6 0 R/b 7 0 R>>>>")
      .Stream(6, "", "9 0 0 0 9 9 d1 1 0 0 rg 0 0 9 9 re f")
      .Stream(7, "", "9 0 d0 0 0 1 rg 0 0 9 9 re f");
  std::vector<std::string> colors;
  recorder_.look = [&](const GraphicsState& state) { colors.emplace_back(state.fill.components); };
  Walk("BT 0 1 0 rg /T 1 Tf (ab)Tj ET", {.paths = true, .style = true, .glyphs = true},
       "/Resources<</Font<</T 5 0 R>>>>");
  EXPECT_THAT(colors, ElementsAre("0 1 0 ", "0 0 1 "));
}

TEST_F(WalkTest, AppearancesComeAfterThePage) {
  file_.Object(5, "<</Subtype/Stamp/Rect[10 10 30 30]/AP<</N 6 0 R/D 8 0 R>>>>")
      .Stream(6, kFormEntries + "/Resources<</XObject<</I 7 0 R>>>>", "/I Do")
      .Stream(7, kImageEntries, "x")
      .Stream(8, kFormEntries, "")
      .Object(9, "<</Subtype/Widget/Rect[0 0 100 100]/AS/On/AP<</N<</On 10 0 R/Off 8 0 R>>>>>>")
      .Stream(10, kFormEntries, "/I Do")
      .Object(11, "<</Subtype/Stamp/F 2/AP<</N 8 0 R>>>>");
  const std::string entries = "/Resources<</XObject<</I 7 0 R>>>>/Annots[11 0 R 5 0 R null 9 0 R]";
  EXPECT_THAT(
      Walk("/I Do", kDrawn, entries),
      ElementsAre("image 7 [1 0 0 1 0 0]", "enter appearance 6", "image 7 [0.2 0 0 0.2 10 10]",
                  "leave 6", "enter appearance 10", "image 7 [1 0 0 1 0 0]", "leave 10"));
  recorder_.lines.clear();
  EXPECT_THAT(WalkPage({.images = true}), ElementsAre("image 7 [1 0 0 1 0 0]"));
}

TEST_F(WalkTest, AppearancesThatAreNoStreams) {
  file_.Object(5, "<</Subtype/Stamp/AP<</N<</On 3 0 R>>>>/AS/On>>");
  EXPECT_THAT(Walk("", kDrawn, "/Annots[5 0 R]"),
              ElementsAre("enter appearance 3", "trouble: unreadable", "leave 3"));
}

TEST_F(WalkTest, ContentThatCannotBeRead) {
  file_.Stream(5, kFormEntries + "/Filter/Nothing", "")
      .Stream(6, kFormEntries + "/Filter/FlateDecode", "no deflated data");
  EXPECT_THAT(Walk("/F Do /G Do", kDrawn, "/Resources<</XObject<</F 5 0 R/G 6 0 R>>>>"),
              ElementsAre("enter form 5", "trouble: unreadable", "leave 5", "enter form 6",
                          "trouble: unreadable", "leave 6"));
}

TEST_F(WalkTest, PagesThatCannotBeRead) {
  file_.Object(3, "<</Type/Page/Parent 2 0 R/Contents[5 0 R 6 0 R]>>")
      .Stream(5, "/Filter/Nothing", "")
      .Stream(6, "", "q");
  EXPECT_THAT(WalkPage(kDrawn), ElementsAre("trouble: unreadable", "trouble: unclosed q"));
}

TEST_F(WalkTest, TellsWhichStreamsMakeUpAPage) {
  file_.Object(3, "<</Type/Page/Parent 2 0 R/Contents[5 0 R 6 0 R]>>")
      .Stream(5, "", "q")
      .Stream(6, "", "Q");

  class PartReader : public ContentVisitor {
   public:
    bool EnterContent(const ContentEntry& entry) override {
      for (const PageContents::Part& part : entry.parts) {
        numbers.push_back(part.number);
      }
      return true;
    }

    std::vector<std::uint32_t> numbers;
  } reader;

  ContentWalker walker(file_.Open(), reader, {});
  walker.BeginPage(file_.pages(), 0);
  EXPECT_THAT(reader.numbers, ElementsAre(5U, 6U));
}

TEST_F(WalkTest, BeginsWithAnyContent) {
  file_.Page("").Stream(5, kFormEntries + "/Matrix[2 0 0 2 0 0]", "/I Do");
  file_.Object(6, "<</XObject<</I 7 0 R>>>>").Stream(7, kImageEntries, "x");
  ContentWalker walker(file_.Open(), recorder_, kDrawn);
  Arena arena;
  const Object resources = file_.document().Load({.number = 6, .generation = 0}, arena);
  walker.BeginContent({ResourceKind::kForm, 5}, {resources, 6}, {1, 0, 0, 1, 3, 0});
  walker.Run();
  EXPECT_THAT(recorder_.lines, ElementsAre("enter form 5", "image 7 [2 0 0 2 3 0]", "leave 5"));
  EXPECT_FALSE(walker.Step());
  walker.BeginContent({ResourceKind::kForm, 77}, {}, {});
  walker.Run();
  EXPECT_EQ(recorder_.lines.back(), "leave 77");
}

TEST_F(WalkTest, GoesByOneOperatorAStep) {
  file_.Page("", "q /Tag BMC Q EMC");
  ContentWalker walker(file_.Open(), recorder_, {.marks = true});
  EXPECT_TRUE(walker.marks().empty());
  walker.BeginPage(file_.pages(), 0);
  EXPECT_TRUE(walker.Step());
  EXPECT_TRUE(walker.Step());
  EXPECT_THAT(walker.marks(), SizeIs(1));
  while (walker.Step()) {
  }
  EXPECT_THAT(recorder_.lines, ElementsAre("begin Tag", "end Tag"));
  walker.BeginPage(file_.pages(), 0);
  EXPECT_TRUE(walker.Step());
}

TEST_F(WalkTest, EachOperationAsItStands) {
  EXPECT_THAT(Walk("q 1 w\nBX unknown EX Q", {.operators = true}),
              ElementsAre("q@0", "w@4", "BX@6", "unknown@9", "EX@17", "Q@20"));
}

TEST_F(WalkTest, NamesThatAreLookedUp) {
  file_.Stream(5, kImageEntries, "x");
  EXPECT_THAT(
      Walk("/A cs /DeviceRGB CS /B scn /C gs BT /D 9 Tf ET /E sh /F Do /G/H BDC EMC /G/H DP "
           "BI/CS/I ID x EI BI/CS/RGB ID x EI",
           {.names = true}, "/Resources<</XObject<</F 5 0 R>>/Properties<</H<<>>>>>>"),
      ElementsAre("look up ColorSpace/A in vain", "trouble: no resource",
                  "look up Pattern/B in vain", "trouble: no resource",
                  "look up ExtGState/C in vain", "trouble: no resource", "look up Font/D in vain",
                  "trouble: no resource", "look up Shading/E in vain", "trouble: no resource",
                  "look up XObject/F", "look up Properties/H", "look up Properties/H",
                  "look up ColorSpace/I in vain", "trouble: no resource"));
}

TEST_F(WalkTest, Shadings) {
  file_.Object(5, "<</ShadingType 2>>");
  EXPECT_THAT(Walk("/S sh /T sh", {.shadings = true}, "/Resources<</Shading<</S 5 0 R/T<<>>>>>>"),
              ElementsAre("shading 5", "shading 0"));
}

TEST_F(WalkTest, ManySavedStatesAreBounded) {
  std::string content;
  for (int i = 0; i < 150'000; ++i) {
    content += "q ";
  }
  content += "2 0 0 2 0 0 cm ";
  for (int i = 0; i < 150'000; ++i) {
    content += "Q ";
  }
  file_.Stream(5, kImageEntries, "x");
  EXPECT_THAT(Walk(content + "/I Do Q", {.images = true}, "/Resources<</XObject<</I 5 0 R>>>>"),
              ElementsAre("image 5 [1 0 0 1 0 0]", "trouble: surplus Q"));
}

TEST_F(WalkTest, DamagedContent) {
  EXPECT_THAT(Walk("q q ] (abc", {}),
              ElementsAre("trouble: damaged", "trouble: operands left", "trouble: unclosed q"));
}

}  // namespace
}  // namespace TarnixTools::pdf
