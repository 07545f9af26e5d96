// How a paragraph has to be set so that each of its lines ends where it does in the document, though
// the faces that it is shown in are wider or narrower than those of the document.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_PARAGRAPHFIT_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_PARAGRAPHFIT_H_

#include <cstdint>
#include <vector>

#include "engines/office/writers/text/TextMeasure.h"
#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// What is written at the end of a line for the next one to follow.
enum class LineEnd : std::uint8_t {
  kNothing,  // the last line, and scripts without spaces
  kSpace,
  kSoftHyphen,  // a hyphen is seen only where a line ends there
  kSoftBreak,   // a line may end there, and nothing is seen
  kBreak,
};

struct FittedLine {
  std::vector<double> spacing;  // after each character, in points, of each piece
  LineEnd end = LineEnd::kNothing;
};

struct FittedParagraph {
  double first_left = 0;  // where the text of the first line begins, on the page
  double left = 0;        // the room of all other lines
  double right = 0;
  double scale = 1;  // of the characters' width, or of their size where only that can be changed
  std::vector<FittedLine> lines;
};

struct FitSettings {
  double size_step =
      0;  // what sizes of text are written as a multiple of, in points; 0: as they are
  double spacing_step = 0.05;  // what spacing is a multiple of, in points
  bool may_scale = true;
  double slack_share = 0.002;  // of a line's width, by which programs measure it differently
  double script_gap = 0;       // ems that are shown between ideographs and letters
  // Whether marks are letters there, and a space beside the gap does not close it.
  bool has_gap_at_marks = false;
  // Of a line's width, by which it may come out shorter without what follows coming up.
  double shortfall_share = 0;
  // Whether a part of a word up to its hyphen may come up to the line before.
  bool breaks_after_hyphens = false;
  // Scripts whose letters are joined get no spacing, which tears them apart, but a smaller size.
  bool keeps_joined = false;
};

// left, right: the room that a paragraph has, on the page.
FittedParagraph FitParagraph(const Paragraph& paragraph, const std::vector<TextLook>& looks,
                             double left, double right, TextMeasure& measure,
                             const FitSettings& settings);

// What raised text is reduced to.
inline constexpr double kRaisedSize = 0.58;

// From baseline to baseline; of a single line nothing is known, and it is 0.
double PitchOf(const Paragraph& paragraph);

// The pitch that is taken for a single line, in ems.
inline constexpr double kUsualPitch = 1.15;

// The largest size of its text; 0 without text.
double LargestSize(const Paragraph& paragraph, const std::vector<TextLook>& looks);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_PARAGRAPHFIT_H_
