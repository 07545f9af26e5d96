// The graphics state as content sets it: parameters, colours, paths and clips.
#include <array>
#include <string>
#include <vector>

#include "pdf/content/WalkFixture.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using GraphicsStateTest = WalkTest;

std::vector<double> ComponentsOf(const Color& color) {
  std::array<double, 8> numbers{};
  const std::size_t count = color.ReadComponents(numbers);
  return {numbers.begin(),
          numbers.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(count, 8))};
}

TEST_F(GraphicsStateTest, IsAsTheStandardHasItAtFirst) {
  AfterRunning("", [](const GraphicsState& state) {
    EXPECT_TRUE(state.matrix.IsIdentity());
    EXPECT_TRUE(state.fill.space.IsNull());
    EXPECT_THAT(ComponentsOf(state.fill), IsEmpty());
    EXPECT_EQ(state.line.width, 1);
    EXPECT_EQ(state.line.miter_limit, 10);
    EXPECT_EQ(state.transparency.fill_alpha, 1);
    EXPECT_EQ(state.rendering.intent, "RelativeColorimetric");
    EXPECT_TRUE(state.clip.is_rectangle);
    EXPECT_FALSE(state.clip.box.IsEmpty());
    std::vector<double> lengths;
    EXPECT_EQ(state.line.ReadDash(lengths), 0);
    EXPECT_THAT(lengths, IsEmpty());
  });
}

TEST_F(GraphicsStateTest, LinesByOperators) {
  AfterRunning("2.5 w 1 J 2 j 4 M [3 5]6 d 7 i /Perceptual ri", [](const GraphicsState& state) {
    EXPECT_EQ(state.line.width, 2.5);
    EXPECT_EQ(state.line.cap, 1);
    EXPECT_EQ(state.line.join, 2);
    EXPECT_EQ(state.line.miter_limit, 4);
    EXPECT_EQ(state.rendering.flatness, 7);
    EXPECT_EQ(state.rendering.intent, "Perceptual");
    std::vector<double> lengths;
    EXPECT_EQ(state.line.ReadDash(lengths), 6);
    EXPECT_THAT(lengths, ElementsAre(3, 5));
  });
}

TEST_F(GraphicsStateTest, ParametersByDictionary) {
  file_
      .Object(5,
              "<</LW 2/LC 1/LJ 2/ML 3/D[[1 2]3]/RI/Saturation/OP true/OPM 1/FL 4/SM 0.1"
              "/SA true/ca .5/CA .25/AIS true/BM[/Odd/Multiply]/SMask 6 0 R/TR/Identity"
              "/TR2/Default/BG 7 0 R/UCR2 7 0 R/HT/Default>>")
      .Object(6, "<</S/Alpha/G 3 0 R>>")
      .Object(7, "<</FunctionType 2>>");
  AfterRunning(
      "/G gs",
      [](const GraphicsState& state) {
        EXPECT_EQ(state.line.width, 2);
        EXPECT_EQ(state.line.cap, 1);
        EXPECT_EQ(state.line.join, 2);
        EXPECT_EQ(state.line.miter_limit, 3);
        std::vector<double> lengths;
        EXPECT_EQ(state.line.ReadDash(lengths), 3);
        EXPECT_THAT(lengths, ElementsAre(1, 2));
        EXPECT_EQ(state.rendering.intent, "Saturation");
        EXPECT_TRUE(state.rendering.overprints_strokes);
        EXPECT_TRUE(state.rendering.overprints_fills);
        EXPECT_EQ(state.rendering.overprint_mode, 1);
        EXPECT_EQ(state.rendering.flatness, 4);
        EXPECT_EQ(state.rendering.smoothness.NumberOr(0), 0.1);
        EXPECT_TRUE(state.rendering.adjusts_strokes);
        EXPECT_TRUE(state.rendering.transfer_function.IsName("Default"));
        EXPECT_TRUE(state.rendering.black_generation.IsDictionary());
        EXPECT_TRUE(state.rendering.undercolor_removal.IsDictionary());
        EXPECT_TRUE(state.rendering.halftone.IsName("Default"));
        EXPECT_EQ(state.transparency.fill_alpha, 0.5);
        EXPECT_EQ(state.transparency.stroke_alpha, 0.25);
        EXPECT_TRUE(state.transparency.alpha_is_shape);
        EXPECT_TRUE(state.transparency.blend_mode.IsArray());
        EXPECT_TRUE(state.transparency.soft_mask.IsDictionary());
      },
      "/Resources<</ExtGState<</G 5 0 R>>>>");
}

TEST_F(GraphicsStateTest, NewerParametersBeforeOlderOnes) {
  AfterRunning(
      "/G gs",
      [](const GraphicsState& state) {
        EXPECT_TRUE(state.rendering.transfer_function.IsName("New"));
        EXPECT_TRUE(state.rendering.black_generation.IsName("New"));
        EXPECT_TRUE(state.rendering.undercolor_removal.IsName("New"));
      },
      "/Resources<</ExtGState<</G<</TR/Old/TR2/New/BG/Old/BG2/New/UCR2/New/UCR/Old>>>>>>");
  AfterRunning(
      "/G gs /H gs",
      [](const GraphicsState& state) {
        EXPECT_TRUE(state.rendering.transfer_function.IsName("Old"));
        EXPECT_TRUE(state.rendering.black_generation.IsName("Old"));
        EXPECT_TRUE(state.rendering.undercolor_removal.IsName("Old"));
        // What is said of fills holds, whatever is said of strokes.
        EXPECT_FALSE(state.rendering.overprints_strokes);
        EXPECT_TRUE(state.rendering.overprints_fills);
      },
      "/Resources<</ExtGState<</G<</TR2/New/BG2/New/UCR2/New>>"
      "/H<</TR/Old/BG/Old/UCR/Old/OP false/op true>>>>>>");
}

TEST_F(GraphicsStateTest, WhatADictionaryTakesBack) {
  AfterRunning(
      "/G gs /H gs",
      [](const GraphicsState& state) {
        EXPECT_TRUE(state.transparency.soft_mask.IsNull());
        EXPECT_TRUE(state.transparency.blend_mode.IsName("Normal"));
        EXPECT_TRUE(state.rendering.overprints_strokes);
        EXPECT_FALSE(state.rendering.overprints_fills);
        EXPECT_EQ(state.line.width, 5);
      },
      "/Resources<</ExtGState<</G<</SMask<</S/Alpha>>/BM/Screen/LW 5/OP true/op false>>"
      "/H<</SMask/None/BM/Normal/LW/Odd>>>>>>");
}

TEST_F(GraphicsStateTest, DashesOfTheLastWhoSetThem) {
  AfterRunning(
      "/G gs [9]1 d",
      [](const GraphicsState& state) {
        std::vector<double> lengths;
        EXPECT_EQ(state.line.ReadDash(lengths), 1);
        EXPECT_THAT(lengths, ElementsAre(9));
      },
      "/Resources<</ExtGState<</G<</D[[1 2]3]>>>>>>");
}

TEST_F(GraphicsStateTest, IsSavedAndRestored) {
  AfterRunning("1 0 0 rg q 2 0 0 2 0 0 cm 0 1 0 rg 5 w Q", [](const GraphicsState& state) {
    EXPECT_TRUE(state.matrix.IsIdentity());
    EXPECT_THAT(ComponentsOf(state.fill), ElementsAre(1, 0, 0));
    EXPECT_EQ(state.line.width, 1);
  });
}

TEST_F(GraphicsStateTest, DeviceColors) {
  AfterRunning(".25 g 1 0 0 RG", [](const GraphicsState& state) {
    EXPECT_TRUE(state.fill.space.IsName("DeviceGray"));
    EXPECT_THAT(ComponentsOf(state.fill), ElementsAre(0.25));
    EXPECT_TRUE(state.stroke.space.IsName("DeviceRGB"));
    EXPECT_THAT(ComponentsOf(state.stroke), ElementsAre(1, 0, 0));
  });
  AfterRunning("1 0 1 rg 0.5 G", [](const GraphicsState& state) {
    EXPECT_THAT(ComponentsOf(state.fill), ElementsAre(1, 0, 1));
    EXPECT_THAT(ComponentsOf(state.stroke), ElementsAre(0.5));
  });
  AfterRunning(".1 .2 .3 .4 k 0 0 0 1 K", [](const GraphicsState& state) {
    EXPECT_TRUE(state.fill.space.IsName("DeviceCMYK"));
    EXPECT_THAT(ComponentsOf(state.fill), ElementsAre(0.1, 0.2, 0.3, 0.4));
    EXPECT_THAT(ComponentsOf(state.stroke), ElementsAre(0, 0, 0, 1));
  });
}

TEST_F(GraphicsStateTest, ColorsOfSpaces) {
  file_.Object(5, "[/Separation/Gold/DeviceCMYK 6 0 R]");
  AfterRunning(
      "/S cs .5 scn /T CS .1 .2 .3 SC",
      [](const GraphicsState& state) {
        EXPECT_EQ(state.fill.space.AsReference().number, 5U);
        EXPECT_THAT(ComponentsOf(state.fill), ElementsAre(0.5));
        EXPECT_TRUE(state.stroke.space.IsArray());
        EXPECT_THAT(ComponentsOf(state.stroke), ElementsAre(0.1, 0.2, 0.3));
      },
      "/Resources<</ColorSpace<</S 5 0 R/T[/Lab<<>>]>>>>");
}

TEST_F(GraphicsStateTest, ASpaceBeginsWithItsInitialColor) {
  AfterRunning("1 0 0 rg /DeviceCMYK cs", [](const GraphicsState& state) {
    EXPECT_TRUE(state.fill.space.IsName("DeviceCMYK"));
    EXPECT_THAT(ComponentsOf(state.fill), IsEmpty());
  });
}

TEST_F(GraphicsStateTest, ColorsThatArePatterns) {
  AfterRunning(
      "/Pattern cs .5 /P#31 scn /Pattern CS /Odd SCN",
      [](const GraphicsState& state) {
        EXPECT_TRUE(state.fill.space.IsName("Pattern"));
        EXPECT_TRUE(state.fill.pattern.IsDictionary());
        EXPECT_THAT(ComponentsOf(state.fill), ElementsAre(0.5));
        EXPECT_TRUE(state.stroke.pattern.IsNull());
      },
      "/Resources<</Pattern<</P1<</PatternType 2>>>>>>");
  EXPECT_THAT(recorder_.lines, ::testing::Contains("trouble: no resource"));
}

TEST_F(GraphicsStateTest, MissingOperandsChangeNothing) {
  AfterRunning("1 w w 1 0 0 rg 1 rg scn sc cs 1 0 0 cm ri gs J", [](const GraphicsState& state) {
    EXPECT_EQ(state.line.width, 1);
    EXPECT_THAT(ComponentsOf(state.fill), ElementsAre(1, 0, 0));
    EXPECT_TRUE(state.matrix.IsIdentity());
  });
  EXPECT_EQ(std::count(recorder_.lines.begin(), recorder_.lines.end(), "trouble: operands missing"),
            8);
}

TEST_F(GraphicsStateTest, PathsInTheSpaceOfTheWalk) {
  std::vector<PathSegment> segments;

  class Keeper : public ContentVisitor {
   public:
    void PaintPath(const PathUse& path) override {
      segments.assign(path.segments.begin(), path.segments.end());
    }

    std::vector<PathSegment> segments;
  } keeper;

  file_.Page("", "2 0 0 2 10 0 cm 1 1 m 2 1 l 3 3 4 4 5 5 c 6 6 7 7 v 8 8 9 9 y h S");
  ContentWalker walker(file_.Open(), keeper, {.paths = true});
  walker.BeginPage(file_.pages(), 0);
  walker.Run();
  ASSERT_EQ(keeper.segments.size(), 6U);
  EXPECT_EQ(keeper.segments[0].kind, PathSegment::Kind::kMove);
  EXPECT_EQ(keeper.segments[0].end(), (Point{12, 2}));
  EXPECT_EQ(keeper.segments[1].end(), (Point{14, 2}));
  EXPECT_EQ(keeper.segments[2].points[0], (Point{16, 6}));
  EXPECT_EQ(keeper.segments[3].points[0], (Point{20, 10}));
  EXPECT_EQ(keeper.segments[3].points[1], (Point{22, 12}));
  EXPECT_EQ(keeper.segments[4].points[1], keeper.segments[4].end());
  EXPECT_EQ(keeper.segments[5].kind, PathSegment::Kind::kClose);
}

TEST_F(GraphicsStateTest, WaysToPaintAPath) {
  const std::string box = " [0 0 5 5]";
  EXPECT_THAT(Walk("0 0 5 5 re f 0 0 5 5 re F 0 0 5 5 re f* 0 0 5 5 re S 0 0 5 5 re s "
                   "0 0 5 5 re B 0 0 5 5 re B* 0 0 5 5 re b 0 0 5 5 re b* 0 0 5 5 re n f 1 re S",
                   {.paths = true}),
              ElementsAre("path f" + box, "path f" + box, "path f*" + box, "path s" + box,
                          "path s" + box, "path fs" + box, "path fs*" + box, "path fs" + box,
                          "path fs*" + box, "trouble: operands missing"));
}

TEST_F(GraphicsStateTest, Clips) {
  EXPECT_THAT(Walk("q 0 0 50 50 re W n 20 20 90 90 re W* f 0 0 m 9 9 l 0 9 l h W n Q "
                   "W n 30 30 60 60 re W n",
                   {.clips = true}),
              ElementsAre("clip [0 0 50 50]", "clip [20 20 50 50]", "clip [20 20 9 9] or less",
                          "clip [30 30 90 90]"));
}

TEST_F(GraphicsStateTest, FormsClipToTheirBox) {
  file_.Stream(5, "/Subtype/Form/BBox[10 10 20 20]/Matrix[2 0 0 2 0 0]", "0 0 9 9 re f")
      .Stream(6, "/Subtype/Form/BBox[10 10 20 20]/Matrix[1 1 -1 1 0 0]", "0 0 9 9 re f");
  std::vector<std::string> clips;
  recorder_.look = [&](const GraphicsState& state) {
    clips.push_back(TextOf(state.clip.box) + (state.clip.is_rectangle ? "" : " or less"));
  };
  Walk("/F Do /G Do 0 0 9 9 re f", {.paths = true, .clips = true, .forms = true},
       "/Resources<</XObject<</F 5 0 R/G 6 0 R>>>>");
  EXPECT_THAT(clips,
              ElementsAre("[20 20 40 40]", "[-10 20 10 40] or less", TextOf(Clip::kEndless)));
}

TEST_F(GraphicsStateTest, TextClips) {
  AfterRunning("BT (a)Tj ET",
               [](const GraphicsState& state) { EXPECT_FALSE(state.clip.has_text); });
  AfterRunning("BT 7 Tr (a)Tj 0 Tr ET",
               [](const GraphicsState& state) { EXPECT_TRUE(state.clip.has_text); });
  AfterRunning("q BT 5 Tr (a)Tj ET Q",
               [](const GraphicsState& state) { EXPECT_FALSE(state.clip.has_text); });
}

TEST_F(GraphicsStateTest, TransparencyGroupsBeginAnew) {
  file_.Stream(5, kFormEntries + "/Group<</S/Transparency>>", "0 0 9 9 re f")
      .Stream(6, kFormEntries, "0 0 9 9 re f");
  std::vector<double> alphas;
  recorder_.look = [&](const GraphicsState& state) {
    alphas.push_back(state.transparency.fill_alpha);
    EXPECT_EQ(state.line.width, 4);
  };
  Walk("4 w /G gs /F Do /H Do", {.paths = true, .style = true, .forms = true},
       "/Resources<</ExtGState<</G<</ca .5>>>>/XObject<</F 5 0 R/H 6 0 R>>>>");
  EXPECT_THAT(alphas, ElementsAre(1, 0.5));
}

TEST_F(GraphicsStateTest, NothingIsKeptThatNobodyWants) {
  file_.Stream(5, kImageEntries, "x");
  recorder_.look = [](const GraphicsState& state) {
    EXPECT_EQ(state.line.width, 1);
    EXPECT_TRUE(state.fill.space.IsNull());
    EXPECT_EQ(TextOf(state.clip.box), TextOf(Clip::kEndless));
  };
  EXPECT_THAT(Walk("9 w 1 0 0 rg 0 0 9 9 re W n /I Do", {.images = true},
                   "/Resources<</XObject<</I 5 0 R>>>>"),
              ElementsAre("image 5 [1 0 0 1 0 0]"));
}

}  // namespace
}  // namespace TarnixTools::pdf
