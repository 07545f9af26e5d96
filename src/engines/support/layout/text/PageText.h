// The text of a page as words and lines, made of its glyphs by where they stand.
//
//   const PageText text = ReadPageText(page);
//   for (const WordLine& line : text.upright.lines) ...
//
// A line here ends at every wide gap: what stands side by side in columns or in cells of a table are
// lines of their own.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_PAGETEXT_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_PAGETEXT_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engines/support/layout/PageLayout.h"
#include "engines/support/pages/PageModel.h"
#include "pdf/Box.h"

namespace TarnixTools::engines {

// How far letters reach from the baseline, in ems; what a font says of it is seldom true.
inline constexpr double kAscent = 0.8;
inline constexpr double kDescent = 0.2;

// A glyph along the direction of its text.
struct PlacedGlyph {
  std::uint32_t glyph = 0;  // in PageModel::glyphs
  double left = 0;
  double right = 0;
  double baseline = 0;
  double size = 0;
  bool is_doubled = false;  // it is painted again beside itself to look bold
  Raise raise = Raise::kNone;
};

struct Word {
  pdf::Box box;
  double baseline = 0;
  double size = 0;                  // of most of its glyphs
  std::vector<PlacedGlyph> glyphs;  // in the order in which they are read
  std::u32string text;              // of them; ligatures as the letters they are made of
  bool is_underlined = false;
  bool is_struck = false;
  std::optional<Rgb> highlight;
};

struct LargeInitial;

// Words on one baseline without a wide gap.
struct WordLine {
  pdf::Box box;
  double baseline = 0;
  double size = 0;          // of most of its glyphs
  std::vector<Word> words;  // in the order in which they are read
  bool is_right_to_left = false;
  double inset = 0;  // points from where its paragraph begins, beside a large initial
  // That the paragraph begins with; null for most lines.
  std::shared_ptr<const LargeInitial> initial;
};

// The text of one direction. Its lengths are those of the page turned about its upper-left corner,
// so that the text runs to the right; for upright text they are those of the page.
struct TurnedText {
  double angle = 0;             // degrees clockwise, of the text on the page
  bool is_vertical = false;     // its glyphs stand upright below each other, where the angle is 90
  std::vector<WordLine> lines;  // from top to bottom
};

struct PageText {
  TurnedText upright;
  std::vector<TurnedText> turned;
  std::vector<std::uint32_t> marks;  // in PageModel::paths: those that underline, strike, highlight
};

PageText ReadPageText(const PageModel& page);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_PAGETEXT_H_
