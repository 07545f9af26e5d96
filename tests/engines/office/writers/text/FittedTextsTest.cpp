// How paragraphs of all kinds are set in narrower and wider faces than their own, as documents and
// slides set them.
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/text/ParagraphFit.h"
#include "engines/support/layout/Dice.h"
#include "engines/support/layout/LayoutDump.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

using TarnixTools::testing::IsAsExpected;

// Text without a face is as wide as it was; that of Liberation Serif is narrower or wider than its
// place.
std::vector<TextLook> Looks() {
  const auto face =
      std::make_shared<const Typeface>(Typeface{"Liberation Serif", false, false, true, false});
  std::vector<TextLook> looks(4);
  looks[0] = {face, 10, {}, {}};
  looks[1] = {nullptr, 10, {}, {}};
  looks[2] = {face, 10.3, {}, {}};
  looks[3] = {face, 16, {}, {}};
  looks[2].raise = Raise::kSuperscript;
  return looks;
}

struct Part {
  std::string text;
  double width = 0;
  std::uint32_t look = 0;
  double gap = 0;  // before it; a tab fills one that is wider than 10 points
};

TextLine LineOf(double left, double baseline, const std::vector<Part>& parts,
                LineJoint joint = LineJoint::kSpace) {
  TextLine line;
  line.baseline = baseline;
  line.joint = joint;
  double x = left;
  for (const Part& part : parts) {
    if (part.gap > 10) {
      TextPiece tab;
      tab.kind = PieceKind::kTab;
      line.pieces.push_back(tab);
    }
    x += part.gap;
    TextPiece piece;
    piece.text = part.text;
    piece.look = part.look;
    piece.x = x;
    piece.width = part.width;
    line.pieces.push_back(piece);
    x += part.width;
  }
  line.box = {left, baseline - 9, x, baseline + 2};
  return line;
}

std::map<std::string, std::vector<TextLine>> Paragraphs() {
  std::map<std::string, std::vector<TextLine>> paragraphs;
  const std::string words = "Some words of a line";
  paragraphs["a line"] = {LineOf(72, 100, {{words, 90}})};
  paragraphs["a wide line"] = {LineOf(60, 100, {{words, 380}})};
  paragraphs["two lines"] = {LineOf(90, 100, {{words, 100}}), LineOf(72, 112, {{"and more", 40}})};
  paragraphs["full lines"] = {LineOf(72, 100, {{words + " that is full", 150}}),
                              LineOf(72, 112, {{"unbelievably long words there", 150}}),
                              LineOf(72, 124, {{"and the end", 50}})};
  paragraphs["hyphens"] = {
      LineOf(72, 100, {{"Some words that are full hyphe", 150}}, LineJoint::kNothing),
      LineOf(72, 112, {{"nated, and mid-", 130}}, LineJoint::kNothing),
      LineOf(72, 124, {{"way at http://www.example/", 150}}, LineJoint::kNothing),
      LineOf(72, 136, {{"address", 40}})};
  paragraphs["breaks"] = {LineOf(72, 100, {{"A line of a poem", 80}}, LineJoint::kBreak),
                          LineOf(84, 112, {{"and the next", 60}}, LineJoint::kBreak),
                          LineOf(72, 124, {{"", 0}})};
  paragraphs["tabs"] = {LineOf(72, 100, {{"Name", 30}, {"Value", 40, 0, 60}, {"7", 5, 1, 100}}),
                        LineOf(72, 112, {{"Name", 30}, {"Another", 40, 0, 60}})};
  paragraphs["pieces"] = {
      LineOf(72, 100, {{"Large", 50, 3}, {"2", 4, 2}, {" and", 25}, {" no face", 30, 1}}),
      LineOf(72, 118, {{"next", 20, 1}, {" line", 20}})};
  paragraphs["scripts"] = {LineOf(72, 100, {{"標準A標準 b標準", 90, 1}}, LineJoint::kNothing),
                           LineOf(72, 112, {{"標準。（a）", 60, 1}})};
  paragraphs["joined"] = {LineOf(72, 100, {{"كلمات عربية في السطر", 70}}),
                          LineOf(100, 112, {{"كلمات", 20}})};
  paragraphs["beside a letter"] = {LineOf(92, 100, {{words, 100}}), LineOf(92, 112, {{words, 100}}),
                                   LineOf(72, 124, {{words, 120}})};
  paragraphs["beside a letter"][0].inset = paragraphs["beside a letter"][1].inset = 20;
  return paragraphs;
}

std::string FitText(const FittedParagraph& fitted) {
  std::string text = ShownNumber(fitted.first_left) + " " + ShownNumber(fitted.left) + " " +
                     ShownNumber(fitted.right) + " x" + ShownNumber(fitted.scale);
  for (const FittedLine& line : fitted.lines) {
    text += " |";
    for (const double spacing : line.spacing) {
      text += " " + ShownNumber(spacing);
    }
    text += std::string(1, ".s-ib"[static_cast<std::size_t>(line.end)]);
  }
  return text;
}

// As documents, cells of them and slides are set.
const std::vector<std::pair<std::string, FitSettings>> kSettings = {
    {"document", {.size_step = 0.5, .script_gap = 0.2}},
    {"cell", {.size_step = 0.5, .slack_share = 0.008, .script_gap = 0.2}},
    {"slide",
     {.spacing_step = 72.0 / 2540,
      .may_scale = false,
      .slack_share = 0.004,
      .script_gap = 0.24,
      .has_gap_at_marks = true,
      .shortfall_share = 0.006,
      .breaks_after_hyphens = true,
      .keeps_joined = true}}};

std::string Fits(const std::string& kind, const FitSettings& settings) {
  TextMeasure measure;
  const std::vector<TextLook> looks = Looks();
  std::string text;
  for (const auto& [name, lines] : Paragraphs()) {
    text += kind + ", " + name + "\n";
    for (const bool is_right_to_left : {false, true}) {
      for (const Alignment alignment :
           {Alignment::kLeft, Alignment::kRight, Alignment::kCenter, Alignment::kJustified}) {
        for (const double right : {223.0, 226.0, 500.0}) {
          Paragraph paragraph;
          paragraph.lines = lines;
          paragraph.alignment = alignment;
          paragraph.is_right_to_left = is_right_to_left;
          if (is_right_to_left && (name != "joined" || right == 226)) {
            continue;
          }
          text += std::string(" ") + "lrcj"[static_cast<std::size_t>(alignment)] + " " +
                  FitText(FitParagraph(paragraph, looks, 60, right, measure, settings)) + "\n";
        }
      }
    }
  }
  return text;
}

TEST(FittedTexts, HaveTheirRoomAndTheirSpacing) {
  for (const auto& [kind, settings] : kSettings) {
    EXPECT_TRUE(IsAsExpected("office/fit." + kind + ".txt", Fits(kind, settings)));
  }
}

// Some words as wide as their letters would be, or narrower or wider, with tabs here and there.
TextLine RandomLine(Dice& dice, double left, double baseline, double stretch) {
  static const std::vector<std::string> kTexts = {
      "Some words",  " of a line", "and", " http://a.b/c",  "mid-way", "標準の",
      "A標準",       "نص عربي",    "12",  " (see there).",  "-",       "longerwordthanothers",
      "someone@a.b", "www.a",      "é",   " and more of it"};
  std::vector<Part> parts;
  for (std::size_t count = dice.Under(4) + 1; count > 0; --count) {
    const std::string& text = dice.Of(kTexts);
    const auto look = static_cast<std::uint32_t>(dice.Chance(50) ? 0 : dice.Under(4));
    const double letters = static_cast<double>(text.size());
    parts.push_back({text, 4.5 * letters * stretch, look,
                     dice.Chance(90) ? dice.Between(0, 2, 0.5) : dice.Between(12, 60, 2)});
  }
  return LineOf(left, baseline, parts,
                dice.Chance(60)   ? LineJoint::kSpace
                : dice.Chance(60) ? LineJoint::kNothing
                                  : LineJoint::kBreak);
}

TEST(FittedTexts, OfAnyLinesHaveTheirRoomToo) {
  TextMeasure measure;
  const std::vector<TextLook> looks = Looks();
  std::string text;
  for (std::uint64_t seed = 1; seed <= 110; ++seed) {
    Dice dice(seed);
    Paragraph paragraph;
    const double stretch = dice.Chance(50) ? 1 : dice.Between(0.5, 1.75, 0.0625);
    const std::size_t lines = dice.Under(4) + 1;
    for (std::size_t i = 0; i < lines; ++i) {
      const double left = 72 + (dice.Chance(70) ? 0 : dice.Between(-10, 20, 2));
      paragraph.lines.push_back(RandomLine(dice, left, 100 + 12 * static_cast<double>(i), stretch));
      paragraph.lines.back().inset = i < 2 && dice.Chance(5) ? 20 : 0;
    }
    paragraph.alignment = static_cast<Alignment>(dice.Under(4));
    paragraph.is_right_to_left = dice.Chance(15);
    double most = 0;
    for (const TextLine& line : paragraph.lines) {
      most = std::max(most, line.box.right);
    }
    const double right = dice.Chance(60) ? most + dice.Between(-4, 8, 0.5) : 400;
    for (const auto& [kind, settings] : kSettings) {
      const FittedParagraph fitted = FitParagraph(paragraph, looks, 60, right, measure, settings);
      EXPECT_LE(fitted.left, fitted.right) << seed;
      ASSERT_EQ(fitted.lines.size(), lines);
      EXPECT_NE(fitted.lines.back().end, LineEnd::kSoftHyphen);
      text += std::to_string(seed) + " " + kind.substr(0, 1) + " " + FitText(fitted) + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("office/fit.random.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::office
