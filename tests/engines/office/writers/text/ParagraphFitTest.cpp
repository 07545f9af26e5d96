// How paragraphs are set so that their lines end where they did. Text without a face is as wide as
// its pieces say; gaps between scripts make it wider than that.
#include <vector>

#include <gmock/gmock.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/text/ParagraphFit.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

const std::vector<TextLook> kLooks = {TextLook{nullptr, 10, Rgb{}, std::nullopt},
                                      TextLook{nullptr, 20, Rgb{}, std::nullopt}};

FittedParagraph Fit(const Paragraph& paragraph, const FitSettings& settings = {}, double left = 50,
                    double right = 500) {
  TextMeasure measure;
  return FitParagraph(paragraph, kLooks, left, right, measure, settings);
}

Paragraph Lines(const std::vector<std::pair<double, double>>& sides,
                Alignment alignment = Alignment::kLeft) {
  Paragraph paragraph;
  for (const auto& [left, right] : sides) {
    const double y = 100 + 12 * static_cast<double>(paragraph.lines.size());
    paragraph.lines.push_back(LineBetween(left, right, y, "text").lines[0]);
  }
  paragraph.alignment = alignment;
  return paragraph;
}

void ExpectRoom(const FittedParagraph& fitted, double first_left, double left, double right) {
  EXPECT_NEAR(fitted.first_left, first_left, 1e-9);
  EXPECT_NEAR(fitted.left, left, 1e-9);
  EXPECT_NEAR(fitted.right, right, 1e-9);
}

TEST(ParagraphFit, GivesASingleLineTheRoomThatThereIs) {
  ExpectRoom(Fit(Lines({{72, 200}})), 72, 72, 500);
  ExpectRoom(Fit(Lines({{72, 499}})), 72, 72, 502);  // three points more than it takes
  ExpectRoom(Fit(Lines({{72, 200}}, Alignment::kJustified)), 72, 72, 500);
  ExpectRoom(Fit(Lines({{72, 200}}, Alignment::kRight)), 50, 50, 200);
  ExpectRoom(Fit(Lines({{52, 200}}, Alignment::kRight)), 49, 49, 200);
  // Centred about where it is, as far as the nearer side.
  ExpectRoom(Fit(Lines({{100, 200}}, Alignment::kCenter)), 50, 50, 250);
  ExpectRoom(Fit(Lines({{380, 480}}, Alignment::kCenter)), 360, 360, 500);
  ExpectRoom(Fit(Lines({{60, 160}}, Alignment::kCenter), {}, 60, 500), 59.4, 59.4, 160.6);
  ExpectRoom(Fit(Paragraph()), 50, 50, 500);
}

TEST(ParagraphFit, GivesSeveralLinesTheRoomTheyTake) {
  // What is left on the right is less than any word that would come up.
  ExpectRoom(Fit(Lines({{92, 400}, {72, 380}, {72, 300}}), {}, 50, 420), 92, 72, 420);
  // A point beside the longest, and two thousandths of it.
  ExpectRoom(Fit(Lines({{92, 400}, {72, 380}}), {}, 50, 401), 92, 72, 401.656);
  ExpectRoom(Fit(Lines({{72, 400}, {72, 300}}, Alignment::kJustified), {}, 50, 400.9), 72, 72,
             400.9);
  ExpectRoom(Fit(Lines({{72, 400}, {72, 300}}, Alignment::kJustified), {}, 50, 402), 72, 72, 400);
  ExpectRoom(Fit(Lines({{200, 400}, {300, 400}}, Alignment::kRight)), 199.2, 199.2, 400);
  ExpectRoom(Fit(Lines({{200, 400}, {250, 350}}, Alignment::kCenter)), 199.2, 199.2, 400.8);
}

// Of the first piece of each line.
std::vector<double> SpacingOf(const FittedParagraph& fitted) {
  std::vector<double> spacing;
  for (const FittedLine& line : fitted.lines) {
    spacing.push_back(line.spacing.at(0));
  }
  return spacing;
}

// A line of two characters with a gap between their scripts, as wide as if it had none.
Paragraph WithGap() {
  return LineBetween(100, 200, 100, "標A");
}

TEST(ParagraphFit, SpacesLettersSoThatLinesAreAsWideAsTheyWere) {
  // A fifth of ten points is a point too much for each character.
  FittedParagraph fitted = Fit(WithGap(), {.script_gap = 0.2});
  EXPECT_EQ(fitted.scale, 1);
  EXPECT_THAT(SpacingOf(fitted), ElementsAre(DoubleNear(-1, 1e-9)));
  // More than six per cent too wide: letters become narrower, to a hundredth.
  fitted = Fit(WithGap(), {.script_gap = 2});
  EXPECT_NEAR(fitted.scale, 0.83, 1e-9);
  EXPECT_THAT(SpacingOf(fitted), ElementsAre(DoubleNear(0.2, 1e-9)));
  fitted = Fit(WithGap(), {.script_gap = 30});
  EXPECT_EQ(fitted.scale, 0.6);  // and no more than that
  EXPECT_THAT(SpacingOf(fitted), ElementsAre(DoubleNear(-1.2, 1e-9)));
  // Where widths cannot change, letters come as close as they may: 0.12 of their size.
  fitted = Fit(WithGap(), {.may_scale = false, .script_gap = 2});
  EXPECT_EQ(fitted.scale, 1);
  EXPECT_THAT(SpacingOf(fitted), ElementsAre(DoubleNear(-1.2, 1e-9)));
  Paragraph larger = WithGap();
  larger.lines[0].pieces[0].look = 1;
  EXPECT_THAT(SpacingOf(Fit(larger, {.may_scale = false, .script_gap = 2})),
              ElementsAre(DoubleNear(-2.4, 1e-9)));
  EXPECT_THAT(SpacingOf(Fit(WithGap(), {.spacing_step = 0.3, .script_gap = 0.2})),
              ElementsAre(DoubleNear(-0.9, 1e-9)));
}

TEST(ParagraphFit, EndsLinesAsTheyWentOn) {
  const auto ends = [](const std::string& text, LineJoint joint) {
    Paragraph paragraph = LineBetween(72, 200, 100, text);
    paragraph.lines[0].joint = joint;
    paragraph.lines.push_back(LineBetween(72, 200, 112, "next").lines[0]);
    const FittedParagraph fitted = Fit(paragraph);
    EXPECT_EQ(fitted.lines[1].end, LineEnd::kNothing);
    return fitted.lines[0].end;
  };
  EXPECT_EQ(ends("one", LineJoint::kSpace), LineEnd::kSpace);
  EXPECT_EQ(ends("one", LineJoint::kBreak), LineEnd::kBreak);
  // A word that goes on, with a hyphen or without.
  for (const char* text : {"hyphe", "a", "z", "A", "Z", "À", "\u1FFF"}) {
    EXPECT_EQ(ends(text, LineJoint::kNothing), LineEnd::kSoftHyphen) << text;
  }
  for (const char* text : {"a`", "a{", "a@", "a[", "5", "http://example", "www.example",
                           "a@example", "\u00BF", "\u2000"}) {
    EXPECT_EQ(ends(text, LineJoint::kNothing), LineEnd::kSoftBreak) << text;
  }
  for (const char* text : {"mid-", "標準", ""}) {
    EXPECT_EQ(ends(text, LineJoint::kNothing), LineEnd::kNothing) << text;
  }
}

TEST(ParagraphFit, EndsLinesThatTheNextWordWouldComeUpTo) {
  // The second line begins with a piece of 10 points: a space as wide as that, too.
  Paragraph paragraph = Lines({{72, 100}, {72, 400}});
  TextPiece word = paragraph.lines[1].pieces[0];
  word.text = "so ";
  word.width = 10;
  TextPiece rest = paragraph.lines[1].pieces[0];
  rest.text = "on";
  rest.x = 82;
  rest.width = 318;
  paragraph.lines[1].pieces = {word, rest};
  const auto end_of = [&paragraph](double right) {
    paragraph.lines[0].pieces[0].width = right - 72;
    return Fit(paragraph, {}, 50, 400).lines[0].end;
  };
  EXPECT_EQ(end_of(100), LineEnd::kBreak);
  // 2 (a - 72) + 10 is more than the room of 329.656 and 0.4.
  EXPECT_EQ(end_of(232), LineEnd::kBreak);
  EXPECT_EQ(end_of(72 + 160.1), LineEnd::kSpace);
}

TEST(ParagraphFit, TellsSizesAndPitches) {
  Paragraph paragraph = Lines({{72, 100}, {72, 100}, {72, 100}});
  paragraph.lines[2].baseline = 130;
  paragraph.lines[1].pieces[0].look = 1;
  EXPECT_EQ(PitchOf(paragraph), 15);
  EXPECT_EQ(LargestSize(paragraph, kLooks), 20);
  paragraph.lines.resize(1);
  EXPECT_EQ(PitchOf(paragraph), 0);
  EXPECT_EQ(LargestSize(paragraph, kLooks), 10);
  EXPECT_EQ(LargestSize(Paragraph(), kLooks), 0);
}

}  // namespace
}  // namespace TarnixTools::engines::office
