// What is in force for text while content runs (ISO 32000-2, 9.3 and 9.4.1).
#ifndef TARNIX_PDF_CONTENT_TEXTSTATE_H_
#define TARNIX_PDF_CONTENT_TEXTSTATE_H_

#include "pdf/Matrix.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

class Type3Font;

// What becomes of shown text (table 104).
enum class TextMode : std::uint8_t {
  kFill,
  kStroke,
  kFillAndStroke,
  kInvisible,
  kFillAndClip,
  kStrokeAndClip,
  kFillStrokeAndClip,
  kClip,
};

constexpr bool Fills(TextMode mode) {
  return mode == TextMode::kFill || mode == TextMode::kFillAndStroke ||
         mode == TextMode::kFillAndClip || mode == TextMode::kFillStrokeAndClip;
}

constexpr bool Strokes(TextMode mode) {
  return mode == TextMode::kStroke || mode == TextMode::kFillAndStroke ||
         mode == TextMode::kStrokeAndClip || mode == TextMode::kFillStrokeAndClip;
}

constexpr bool Clips(TextMode mode) {
  return mode >= TextMode::kFillAndClip;
}

struct TextState {
  Object font;  // as it is referred to: a reference or a dictionary; null for none
  const Type3Font* glyphs = nullptr;  // of a Type 3 font, in a walk that goes into them
  double size = 0;                    // of the font, in units of text space
  double char_spacing = 0;            // Tc and Tw, in units of text space that is not scaled
  double word_spacing = 0;
  double scale = 1;    // Tz: 1 for its 100
  double leading = 0;  // TL
  double rise = 0;     // Ts
  TextMode mode = TextMode::kFill;
  bool is_knockout = true;  // TK
  Matrix matrix;            // where the next glyph goes
  Matrix line_matrix;       // where the line begins

  // From glyph space, of which 1 is the height of the font, to user space.
  Matrix GlyphMatrix() const { return Matrix{size * scale, 0, 0, size, 0, rise} * matrix; }
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_TEXTSTATE_H_
