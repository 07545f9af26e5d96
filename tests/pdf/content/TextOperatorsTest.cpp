// Text as content shows it, and marked content.
#include <string>

#include "pdf/content/WalkFixture.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using TextOperatorsTest = WalkTest;
using MarkOperatorsTest = WalkTest;

constexpr WalkOptions kText = {.text = true};
constexpr WalkOptions kMarks = {.marks = true};

const std::string kFonts = "/Resources<</Font<</F 5 0 R>>>>";

TEST_F(TextOperatorsTest, StringsWhereTheyAreShown) {
  EXPECT_THAT(
      Walk("BT /F 10 Tf 1 0 0 1 5 6 Tm (a)Tj 20 30 Td (b)Tj 0 -12 TD (c)Tj T*(d)Tj ET "
           "BT(e)Tj ET",
           kText, kFonts),
      ElementsAre("text a [10 0 0 10 5 6]", "text b [10 0 0 10 25 36]", "text c [10 0 0 10 25 24]",
                  "text d [10 0 0 10 25 12]", "text e [10 0 0 10 0 0]"));
}

TEST_F(TextOperatorsTest, ShowingInANewLine) {
  EXPECT_THAT(Walk("BT /F 10 Tf 14 TL (a)' 1 2(b)\" (c)Tj ET", kText, kFonts),
              ElementsAre("text a [10 0 0 10 0 -14]", "text b [10 0 0 10 0 -28]",
                          "text c [10 0 0 10 0 -28]"));
  recorder_.look = [](const GraphicsState& state) {
    EXPECT_EQ(state.text.word_spacing, 1);
    EXPECT_EQ(state.text.char_spacing, 2);
  };
  Walk("BT /F 10 Tf 1 2(b)\" ET", kText, kFonts);
}

TEST_F(TextOperatorsTest, Adjustments) {
  EXPECT_THAT(Walk("BT /F 10 Tf 50 Tz [-1000(a)500 500(b)null(c)-100]TJ(d)Tj ET", kText, kFonts),
              ElementsAre("text a [5 0 0 10 5 0]", "text b [5 0 0 10 0 0]", "text c [5 0 0 10 0 0]",
                          "text d [5 0 0 10 0.5 0]"));
}

TEST_F(TextOperatorsTest, TheVisitorSaysHowFarStringsGo) {
  recorder_.advance = TextAdvance{7, 1};
  EXPECT_THAT(
      Walk("BT /F 10 Tf 2 0 0 2 0 0 Tm [(a)(b)]TJ(c)Tj ET", kText, kFonts),
      ElementsAre("text a [20 0 0 20 0 0]", "text b [20 0 0 20 14 2]", "text c [20 0 0 20 28 4]"));
}

TEST_F(TextOperatorsTest, AdjustmentsOfVerticalText) {
  recorder_.is_vertical = true;
  EXPECT_THAT(Walk("BT /F 10 Tf [1000(a)]TJ ET", kText, kFonts),
              ElementsAre("text a [10 0 0 10 0 -10]"));
}

TEST_F(TextOperatorsTest, TheTextState) {
  recorder_.look = [](const GraphicsState& state) {
    EXPECT_EQ(state.text.font.AsReference().number, 5U);
    EXPECT_EQ(state.text.size, 12);
    EXPECT_EQ(state.text.char_spacing, 1);
    EXPECT_EQ(state.text.word_spacing, 2);
    EXPECT_EQ(state.text.scale, 0.8);
    EXPECT_EQ(state.text.leading, 14);
    EXPECT_EQ(state.text.rise, 3);
    EXPECT_EQ(state.text.mode, TextMode::kStroke);
    EXPECT_FALSE(state.text.is_knockout);
  };
  EXPECT_THAT(Walk("1 Tc 2 Tw 80 Tz 14 TL 3 Ts 1 Tr /F 12 Tf /G gs BT (a)Tj ET", kText,
                   "/Resources<</Font<</F 5 0 R>>/ExtGState<</G<</TK false>>>>>>"),
              ElementsAre("text a [9.6 0 0 12 0 3]"));
}

TEST_F(TextOperatorsTest, FontsOfGraphicsStates) {
  recorder_.look = [](const GraphicsState& state) {
    EXPECT_EQ(state.text.font.AsReference().number, 5U);
    EXPECT_EQ(state.text.size, 9);
  };
  EXPECT_THAT(Walk("/G gs /H gs BT (a)Tj ET", kText,
                   "/Resources<</ExtGState<</G<</Font[5 0 R 9]>>/H<</Font[]>>>>>>"),
              ElementsAre("text a [9 0 0 9 0 0]"));
}

TEST_F(TextOperatorsTest, StringsWithoutEscapes) {
  EXPECT_THAT(Walk("BT /F 1 Tf (a\\)\\142)Tj <4344>Tj ET", kText, kFonts),
              ElementsAre("text a)b [1 0 0 1 0 0]", "text CD [1 0 0 1 0 0]"));
}

TEST_F(TextOperatorsTest, WhatIsMissing) {
  EXPECT_THAT(
      Walk("BT Tj 1 Tj [(a)]Tj (b)TJ TJ 1 Td Tm Tc Tf 9 Tf /F Tf /G 9 Tf Tr 9 Tr -1 Tr ET", kText,
           kFonts),
      ElementsAre("trouble: operands missing", "trouble: operands missing",
                  "trouble: operands missing", "text b [0 0 0 0 0 0]", "trouble: operands missing",
                  "trouble: operands missing", "trouble: operands missing",
                  "trouble: operands missing", "trouble: operands missing",
                  "trouble: operands missing", "trouble: operands missing", "trouble: no resource",
                  "trouble: operands missing"));
}

TEST_F(TextOperatorsTest, ModesThatDoNotExistChangeNothing) {
  recorder_.look = [](const GraphicsState& state) { EXPECT_EQ(state.text.mode, TextMode::kClip); };
  Walk("7 Tr 8 Tr -1 Tr BT (a)Tj ET", kText);
}

TEST_F(MarkOperatorsTest, WithTagsAndProperties) {
  file_.Object(5, "<</MCID 7>>");
  EXPECT_THAT(Walk("/Artifact BMC EMC /P<</MCID 3>>BDC /Span/Q BDC EMC EMC /X MP /Y<<>>DP", kMarks,
                   "/Resources<</Properties<</Q 5 0 R>>>>"),
              ElementsAre("begin Artifact", "end Artifact", "begin P 3 with properties",
                          "begin Span 7 with properties", "end Span", "end P", "point X",
                          "point Y with properties"));
}

TEST_F(MarkOperatorsTest, WhatIsMissing) {
  EXPECT_THAT(Walk("EMC BMC EMC /P BDC EMC /P/Q BDC", kMarks),
              ElementsAre("trouble: surplus EMC", "trouble: operands missing", "begin ", "end ",
                          "trouble: operands missing", "begin P", "end P", "trouble: no resource",
                          "begin P", "trouble: unclosed mark", "end P"));
}

TEST_F(MarkOperatorsTest, ManyAreBounded) {
  std::string content = "/A BMC ";
  for (int i = 0; i < 150'000; ++i) {
    content += "/B BMC ";
  }
  for (int i = 0; i < 150'000; ++i) {
    content += "EMC ";
  }
  const Lines lines = Walk(content + "EMC", kMarks);
  EXPECT_EQ(lines.size(), 200'000U);
  EXPECT_EQ(lines.back(), "end A");
}

// Object 14 is a layer that is not seen, 15 one that is.
class LayersTest : public WalkTest {
 protected:
  LayersTest() {
    file_ = ContentDocument("/OCProperties<</D<</OFF[14 0 R]>>>>");
    file_.Object(14, "<</Type/OCG>>").Object(15, "<</Type/OCG>>");
    file_.Object(16, "<</Type/OCMD/OCGs[14 0 R 15 0 R]/VE[/And 14 0 R 15 0 R]>>");
    file_.Stream(5, kImageEntries, "x").Stream(6, kImageEntries + "/OC 14 0 R", "x");
    file_.Stream(7, kFormEntries + "/OC 16 0 R/Resources<<>>", "").Stream(8, kFormEntries, "");
  }

  Lines WalkLayers(const std::string& content, WalkOptions options) {
    file_.Page(
        "/Annots[9 0 R]/Resources<</XObject<</I 5 0 R/J 6 0 R/F 7 0 R>>/Properties<<"
        "/Off 14 0 R/On 15 0 R/Both 16 0 R>>/Shading<</S<<>>>>/Pattern<</P 8 0 R>>>>",
        content);
    file_.Object(9, "<</Subtype/Stamp/OC 14 0 R/AP<</N 8 0 R>>>>");
    const VisibleLayers layers(file_.Open());
    options.layers = &layers;
    ContentWalker walker(file_.document(), recorder_, options);
    walker.BeginPage(file_.pages(), 0);
    walker.Run();
    return recorder_.lines;
  }
};

TEST_F(LayersTest, WhatIsNotSeenIsPassedOver) {
  EXPECT_THAT(WalkLayers("/OC/Off BDC /I Do 0 0 9 9 re f /S sh BI/W 1/H 1/BPC 8/CS/G ID x EI EMC "
                         "/J Do /F Do /OC/On BDC /I Do EMC",
                         {.images = true,
                          .paths = true,
                          .shadings = true,
                          .forms = true,
                          .patterns = true,
                          .appearances = true}),
              ElementsAre("image 5 [1 0 0 1 0 0]"));
}

TEST_F(LayersTest, WhatLiesWithinIsNotSeenEither) {
  EXPECT_THAT(
      WalkLayers("/O#43/Both BDC /P<<>>BDC /OC/On BDC /I Do EMC EMC EMC /I Do", {.images = true}),
      ElementsAre("image 5 [1 0 0 1 0 0]"));
}

TEST_F(LayersTest, TextThatIsNotSeenMovesOn) {
  recorder_.advance = TextAdvance{5, 0};
  EXPECT_THAT(WalkLayers("BT /OC/Off BDC (a)Tj EMC (b)Tj ET", {.text = true}),
              ElementsAre("text a [0 0 0 0 0 0] hidden", "text b [0 0 0 0 5 0]"));
}

TEST_F(LayersTest, MarksSayWhetherTheyHide) {
  EXPECT_THAT(
      WalkLayers("/OC/Off BDC EMC /P/Off BDC EMC", {.marks = true}),
      ElementsAre("begin OC with properties hidden", "end OC", "begin P with properties", "end P"));
}

TEST_F(LayersTest, WithoutLayersEverythingIsSeen) {
  file_.Page("/Resources<</XObject<</J 6 0 R>>>>", "/OC/Off BDC /J Do EMC");
  EXPECT_THAT(WalkPage({.images = true}), ElementsAre("image 6 [1 0 0 1 0 0]"));
}

}  // namespace
}  // namespace TarnixTools::pdf
