// Walks through content as a whole: all that is told, and the state with which it is.
#include <map>
#include <sstream>
#include <string>

#include "pdf/content/Operands.h"
#include "pdf/content/WalkFixture.h"
#include "pdf/content/WholeWalk.h"
#include "pdf/write/Serialize.h"
#include "support/Expected.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::IsAsExpected;

std::string ObjectText(const Object& value) {
  std::string text;
  AppendObject(text, value);
  return text;
}

std::string ColorText(const Color& color) {
  std::array<double, 4> numbers{};
  std::ostringstream text;
  text << ObjectText(color.space) << " of " << color.ReadComponents(numbers);
  for (const double number : numbers) {
    text << ' ' << number;
  }
  text << ' ' << ObjectText(color.pattern);
  return text.str() + (color.pattern_space != nullptr ? " in " + TextOf(*color.pattern_space) : "");
}

// All that is in force, piece by piece.
std::map<std::string, std::string> PiecesOf(const GraphicsState& state) {
  std::map<std::string, std::string> pieces;
  const auto add = [&pieces](const char* name, const auto&... values) {
    std::ostringstream joined;
    ((joined << ' ' << values), ...);
    pieces[name] = joined.str();
  };
  add("matrix", TextOf(state.matrix));
  add("clip", TextOf(state.clip.box), state.clip.is_rectangle, state.clip.has_text);
  add("fill", ColorText(state.fill));
  add("stroke", ColorText(state.stroke));
  std::vector<double> lengths;
  const double phase = state.line.ReadDash(lengths);
  std::string dash;
  for (const double length : lengths) {
    dash += std::to_string(length) + ",";
  }
  add("line", state.line.width, state.line.cap, state.line.join, state.line.miter_limit);
  add("dash", phase, dash);
  const Transparency& over = state.transparency;
  add("alpha", over.fill_alpha, over.stroke_alpha, over.alpha_is_shape, ObjectText(over.blend_mode),
      ObjectText(over.soft_mask));
  const RenderingParameters& print = state.rendering;
  add("overprint", print.overprints_strokes, print.overprints_fills, print.overprint_mode);
  add("rendering", print.intent, print.flatness, ObjectText(print.smoothness),
      print.adjusts_strokes);
  add("printing", ObjectText(print.transfer_function), ObjectText(print.black_generation),
      ObjectText(print.undercolor_removal), ObjectText(print.halftone));
  const TextState& text = state.text;
  add("font", ObjectText(text.font), text.size, text.glyphs != nullptr);
  add("spacing", text.char_spacing, text.word_spacing, text.scale, text.leading, text.rise);
  add("mode", static_cast<int>(text.mode), text.is_knockout);
  add("text", TextOf(text.matrix), TextOf(text.line_matrix));
  return pieces;
}

// Tells of states what has become another since the last.
class FullRecorder : public Recorder {
 public:
  FullRecorder() {
    look = [this](const GraphicsState& state) { Tell(state); };
  }

  void PaintPath(const PathUse& path) override {
    Recorder::PaintPath(path);
    TellSegments(path);
  }

  void SetClip(const PathUse& path) override {
    Recorder::SetClip(path);
    lines.back() += path.rule == FillRule::kEvenOdd ? " even" : "";
    TellSegments(path);
  }

  void PaintShading(const ShadingUse& shading) override {
    Recorder::PaintShading(shading);
    lines.back() += " " + ObjectText(shading.dictionary);
    Tell(shading.state);
  }

  void DrawImage(const ImageUse& image) override {
    Recorder::DrawImage(image);
    lines.push_back("  data " + std::string(image.data) + " of " + ObjectText(image.dictionary) +
                    " among " + ObjectText(image.color_spaces));
  }

  std::optional<TextAdvance> ShowText(const StringUse& string) override {
    std::ostringstream line;
    line << "string " << string.index << " after " << string.adjustment;
    lines.push_back(line.str());
    Recorder::ShowText(string);
    return advance ? std::optional(TextAdvance{advance->x * string.bytes.size(), advance->y})
                   : std::nullopt;
  }

  bool EnterContent(const ContentEntry& entry) override {
    std::ostringstream line;
    line << "in " << NameOf(entry.kind) << ' ' << entry.number << " by " << entry.user << " depth "
         << entry.depth << ' ' << TextOf(entry.matrix) << ' ' << ObjectText(entry.scope.resources)
         << " owner " << entry.scope.owner;
    for (const PageContents::Part& part : entry.parts) {
      line << ", part " << part.number << " at " << part.begin;
    }
    lines.push_back(line.str());
    Tell(*entry.state);
    return Recorder::EnterContent(entry);
  }

  void LeaveContent(const ContentEntry& entry) override {
    lines.push_back("out of " + std::to_string(entry.bytes));
    Recorder::LeaveContent(entry);
  }

  void Trouble(ContentTrouble trouble, std::size_t offset) override {
    Recorder::Trouble(trouble, offset);
    lines.back() += " at " + std::to_string(offset);
  }

 private:
  void TellSegments(const PathUse& path) {
    std::ostringstream line;
    line << "  " << (path.is_whole ? "segments" : "some segments");
    for (const PathSegment& segment : path.segments) {
      line << ' ' << static_cast<int>(segment.kind);
      for (const Point& point : segment.points) {
        line << ' ' << point.x << ',' << point.y;
      }
    }
    lines.push_back(line.str());
  }

  void Tell(const GraphicsState& state) {
    for (const auto& [name, piece] : PiecesOf(state)) {
      if (std::exchange(told_[name], piece) != piece) {
        lines.push_back("  " + name + piece);
      }
    }
  }

  std::map<std::string, std::string> told_;
};

constexpr const char* kResources =
    "/Resources<</XObject<</F 10 0 R/G 11 0 R/I 12 0 R/L 13 0 R/X 14 0 R/H 15 0 R>>"
    "/Font<</T 20 0 R/U 21 0 R/D<</Type/Font/Subtype/Type3/FontMatrix[1 0 0 1 0 0]"
    "/Encoding<</Differences[65/a]>>/CharProcs<</a 24 0 R>>/FirstChar 65/Widths[2]>>>>"
    "/ExtGState<</S 30 0 R/N<</SMask/None/BM/Normal/Font[20 0 R 3]/TK false/OP false/op true>>"
    "/O<</OP true>>/M<</SMask<</S/Luminosity/G 16 0 R>>/BM/Screen>>>>"
    "/Pattern<</P 40 0 R/Q 41 0 R/Z 42 0 R>>/ColorSpace<</C[/Separation/Red/DeviceRGB 9 0 "
    "R]/A/DeviceRGB>>"
    "/Shading<</B 45 0 R/J<</ShadingType 2>>>>/Properties<</R 50 0 R/V<</MCID 7/A "
    "1>>/W<</MCID(x)>>>>>>"
    "/Annots[60 0 R 61 0 R 62 0 R 63 0 R 64 0 R]";

// Everything that content can lead to.
void AddObjects(ContentDocument& file) {
  file.Stream(10,
              "/Type/XObject/Subtype/Form/BBox[0 0 50 50]/Matrix[2 0 0 3 4 "
              "5]/Resources<</XObject<</G 11 0 R>>>>",
              "1 0 0 rg 0 0 5 5 re f /G Do q /K BMC")
      .Stream(
          11,
          "/Type/XObject/Subtype/Form/BBox[1 2 3 4]/Matrix[0 1 1 0 0 0]/Group<</S/Transparency>>",
          "0 0 1 1 re S /G Do")
      .Stream(12, kImageEntries, "x")
      .Stream(13, kFormEntries + "/OC 50 0 R", "n")
      .Stream(14, "/Type/XObject/Subtype/PS", "x")
      .Stream(15, kFormEntries + "/Matrix[1 1 0 1 0 0]/Filter/NoSuchDecode", "x")
      .Stream(16, kFormEntries, "0.5 g 0 0 2 2 re f")
      .Object(20, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>")
      .Object(21,
              "<</Type/Font/Subtype/Type3/FontMatrix[0.01 0 0 0.02 0 "
              "0]/Encoding<</Differences[65/a/b]>>"
              "/CharProcs<</a 22 0 R/b 23 0 R>>/FirstChar 65/Widths[50 60]/Resources<</XObject<</F "
              "11 0 R>>>>>>")
      .Stream(22, "", "50 0 d0 1 0 0 rg 0 0 9 9 re f")
      .Stream(23, "", "60 0 0 0 9 9 d1 1 0 0 rg 0 0 8 8 re f /F Do")
      .Stream(24, "", "1 0 d0 0 0 7 7 re f")
      .Object(30,
              "<</LW 2/LC 1/LJ 2/ML 3/D[[1 2]3]/RI/Saturation/op true/OPM 1/FL 4/SM 0.1/SA true"
              "/ca .5/CA .25/AIS true/BM/Multiply/SMask<</S/Alpha/G 16 0 R>>/TR 9 0 R/TR2/Default"
              "/BG 9 0 R/UCR2 9 0 R/UCR/Old/HT/Default/Font[21 0 R 5]/TK true>>")
      .Stream(40,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 4 4]/XStep 4/YStep 4/Matrix[1 0 0 "
              "1 7 7]"
              "/Resources<<>>",
              "0 1 0 rg 0 0 1 1 re f")
      .Stream(41, "/PatternType 1/PaintType 2/TilingType 1/BBox[0 0 4 4]/XStep 4/YStep 4",
              "0 1 0 rg 0 0 1 1 re B")
      .Object(42, "<</PatternType 2/Shading 45 0 R>>")
      .Object(45, "<</ShadingType 3/ColorSpace/DeviceGray>>")
      .Object(50, "<</Type/OCG/Name(off)>>")
      .Object(60, "<</Type/Annot/Subtype/Stamp/Rect[10 20 30 60]/AP<</N 61 0 R/D 62 0 R>>>>")
      .Stream(61, "/Subtype/Form/BBox[0 0 10 10]/Matrix[0 1 -1 0 0 0]", "0 0 3 3 re s")
      .Object(62, "<</Subtype/Widget/Rect[0 0 5 5]/AS/On/AP<</N<</On 16 0 R/Off 61 0 R>>>>/F 4>>")
      .Object(63, "<</Subtype/Stamp/Rect[0 0 5 5]/AP<</N 61 0 R>>/F 2>>")
      .Object(64, "<</Subtype/Popup/Rect[0 0 5 5]/AP<</N 61 0 R>>>>");
}

std::string Told(const std::string& content, const WalkOptions& options,
                 const Matrix& matrix = {}) {
  ContentDocument file("/OCProperties<</OCGs[50 0 R]/D<</OFF[50 0 R]>>>>");
  file.Page(kResources, content);
  AddObjects(file);
  FullRecorder recorder;
  recorder.advance = TextAdvance{2, 0};
  Document& document = file.Open();
  ContentWalker walker(document, recorder, options);
  walker.BeginPage(file.pages(), 0, matrix);
  walker.Run();
  std::string text;
  for (const std::string& line : recorder.lines) {
    text += line + "\n";
  }
  return text;
}

TEST(WalkTexts, OfStates) {
  EXPECT_TRUE(IsAsExpected(
      "content/states.txt",
      Told("0 0 1 1 re f q 2 0 0 2 1 1 cm 3 w 1 J 2 j 5 M [1 2 3]4 d 6 i /Perceptual ri 0 0 1 1 re "
           "f "
           "Q 0 0 1 1 re f /S gs 0 0 1 1 re f /N gs 0 0 1 1 re f /O gs 0 0 1 1 re f /M gs 0 0 1 1 "
           "re f "
           "/Missing gs gs 1 gs w /x w 1e9 w 99999999999 w 0 0 1 1 re f 1 0 cm q q Q Q Q Q "
           "[]0 d 0 0 1 1 re f [4 -1 (x)] d 0 0 1 1 re f 5 d ri /A /B ri 0 0 1 1 re f q",
           kEverything, {2, 0, 0, 2, 0, 0})));
}

TEST(WalkTexts, OfColors) {
  EXPECT_TRUE(IsAsExpected(
      "content/colors.txt",
      Told("0.5 g 1 G 0 0 1 1 re B 1 0 0 rg 0 1 0 RG 0 0 1 1 re B 1 2 3 4 k 5 6 7 8 K 0 0 1 1 re b "
           "/C cs 0.3 scn /A CS 1 2 3 SC 0 0 1 1 re B* /Pattern cs /P scn /Pattern CS /Z SCN 0 0 1 "
           "1 re b* "
           "/C cs 0.7 /Q scn 0 0 1 1 re f* 1 rg /Missing cs cs 5 cs sc /Missing scn scn SCN G "
           "1 2 3 4 5 rg 0 0 1 1 re F /DeviceCMYK cs /DeviceRGB CS 0 0 1 1 re B /DeviceGray cs "
           "1 0 0 sc 0 0 1 1 re f BT /T 1 Tf /Pattern cs /P scn 2 Tr (t) Tj ET",
           kEverything)));
}

TEST(WalkTexts, OfPaths) {
  EXPECT_TRUE(IsAsExpected(
      "content/paths.txt",
      Told("1 2 m 3 4 l 5 6 7 8 9 10 c 11 12 13 14 v 15 16 17 18 y h 1 1 l S 1 2 m 3 4 l s "
           "1 2 3 4 re n 1 2 3 -4 re W n 0 0 m 9 0 l 9 9 l 0 9 l h W* f 0 0 m 9 0 l 9 9 l 0 9 l 0 "
           "0 l W S "
           "0 0 m 0 9 l 9 9 l 9 0 l W n 0 0 m 9 1 l 9 9 l 0 9 l h W n W n W* 5 5 m n 1 m 1 2 3 re "
           "1 l 5 c "
           "f 1 2 m 3 4 m 5 6 l f* 7 8 l B q 0 1 -1 0 0 0 cm 1 2 3 4 re W n Q 1 2 3 4 re B* "
           "2 2 m h 3 3 l b W /K BMC 1 1 2 2 re b* EMC 1 2 1 2 3 4 re f (x) 1 2 3 re S",
           kEverything, {1, 0, 0, 1, 10, 20})));
}

TEST(WalkTexts, OfText) {
  EXPECT_TRUE(
      IsAsExpected("content/text.txt", Told("BT /T 10 Tf 1 Tc 2 Tw 50 Tz 12 TL 3 Ts 1 Tr 1 2 Td "
                                            "(one) Tj 3 -4 TD (two) Tj T* (three) Tj "
                                            "1 0 0 2 5 6 Tm [(a)-500(b)(c) 250]TJ (next)' 7 8 "
                                            "(own)\" [(x)/N<41>1 2]TJ 9 Tr 7 Tr (clip) Tj ET "
                                            "BT 0 Tr -1 Tr 3.9 Tr (y) Tj Tc Td 1 Tm Tf /T Tf 5 /T "
                                            "6 Tf /Missing 3 Tf (z) Tj Tj 5 Tj [(q)] Tj "
                                            "(r)TJ 1 (few)\" ' \" TJ ET 4 TL T* (after) Tj",
                                            kEverything)));
}

TEST(WalkTexts, OfGlyphs) {
  EXPECT_TRUE(IsAsExpected(
      "content/glyphs.txt",
      Told("BT /U 10 Tf 1 Tc 5 Tw 200 Tz 1 0 0 1 3 4 Tm (AB A) Tj [(A)100(B)]TJ /D 2 Tf (A) Tj "
           "/S gs (B) Tj ET",
           kEverything)));
  WalkOptions glyphs_alone;
  glyphs_alone.glyphs = true;
  EXPECT_TRUE(IsAsExpected("content/glyphs_alone.txt",
                           Told("BT /U 10 Tf 1 Tc 5 Tw (AB A)Tj [(A)100(B)]TJ ET", glyphs_alone)));
}

TEST(WalkTexts, OfObjectsAndMarks) {
  EXPECT_TRUE(IsAsExpected(
      "content/objects.txt",
      Told("/F Do q 1 0 0 1 5 5 cm /I Do /G Do Q /X Do /H Do /L Do /Missing Do Do 3 Do /B sh /J sh "
           "sh "
           "BI /W 1/H 1/BPC 8/CS/G ID x\nEI BI/W 1/H 1/BPC 8/CS/C ID y EI BI/ColorSpace/Own/F/AHx "
           "ID 61>EI "
           "/P <</MCID 3>>BDC /Q BMC /P/V DP /P MP EMC /P/W BDC EMC EMC EMC /P/Missing BDC EMC "
           "5 BDC EMC BMC EMC MP DP /A /B /C BDC EMC BX foo EX 1 2 bar /OC/R BDC /I Do 0 0 1 1 re "
           "f (h)Tj",
           kEverything)));
  ContentDocument file("/OCProperties<</OCGs[50 0 R]/D<</OFF[50 0 R]>>>>");
  file.Page(
      kResources,
      "/OC/R BDC /I Do 0 0 1 1 re W f BT /T 1 Tf (h)Tj ET /B sh BI/W 1/H 1/BPC 8/CS/G ID x EI "
      "/F Do EMC /L Do /OC/V BDC /I Do EMC /P/R BDC /I Do EMC /OC/R DP");
  AddObjects(file);
  FullRecorder recorder;
  Document& document = file.Open();
  const VisibleLayers layers(document);
  WalkOptions options = kEverything;
  options.layers = &layers;
  ContentWalker walker(document, recorder, options);
  walker.BeginPage(file.pages(), 0, {});
  walker.Run();
  std::string text;
  for (const std::string& line : recorder.lines) {
    text += line + "\n";
  }
  EXPECT_TRUE(IsAsExpected("content/layers.txt", text));
}

// What is told with one option alone.
TEST(WalkTexts, OfEachOptionAlone) {
  const std::string content =
      "q /S gs 1 0 0 rg 0 0 1 1 re W f BT /T 1 Tf 1 Tr (t)Tj /U 2 Tf (A)Tj ET /I Do /F Do /P/V BDC "
      "EMC "
      "/P/V DP /Pattern cs /P scn 0 0 1 1 re f /B sh BI/W 1/H 1/BPC 8/CS/C ID x EI Q Q EMC 1";
  std::string text;
  for (bool WalkOptions::*option :
       {&WalkOptions::images, &WalkOptions::text, &WalkOptions::paths, &WalkOptions::shadings,
        &WalkOptions::clips, &WalkOptions::style, &WalkOptions::marks, &WalkOptions::names,
        &WalkOptions::operators, &WalkOptions::forms, &WalkOptions::patterns,
        &WalkOptions::soft_masks, &WalkOptions::glyphs, &WalkOptions::appearances}) {
    WalkOptions options;
    options.*option = true;
    text += "--\n" + Told(content, options);
  }
  EXPECT_TRUE(IsAsExpected("content/options.txt", text));
}

}  // namespace
}  // namespace TarnixTools::pdf
