// The graphics state while content runs (ISO 32000-2, 8.4). It is copied each time that it is
// saved, so it holds nothing of its own: text is within the content, objects are in the keeping of
// the walk, and both live as long as the content that set them runs.
#ifndef TARNIX_PDF_CONTENT_GRAPHICSSTATE_H_
#define TARNIX_PDF_CONTENT_GRAPHICSSTATE_H_

#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

#include "pdf/Box.h"
#include "pdf/Matrix.h"
#include "pdf/content/TextState.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

// A current colour.
struct Color {
  Object space;                 // a name, or as the resources have it; null for DeviceGray at first
  std::string_view components;  // operands as they stand; empty for the initial colour of the space
  Object pattern;               // as the resources have it; null for a colour
  const Matrix* pattern_space = nullptr;  // that the pattern's matrix leads to

  // The components, as many as there is room for. Returns how many there are.
  std::size_t ReadComponents(std::span<double> numbers) const;
};

// Where is painted at most.
struct Clip {
  static constexpr Box kEndless = {-1e300, -1e300, 1e300, 1e300};

  Box box = kEndless;        // around all of it, in the space of the walk
  bool is_rectangle = true;  // whether it is the box
  bool has_text = false;     // shown text clips

  bool IsEmpty() const { return box.IsEmpty(); }
};

// How lines are stroked (8.4.3).
struct LineStyle {
  double width = 1;
  int cap = 0;
  int join = 0;
  double miter_limit = 10;
  std::string_view dash_operands;  // of the operator d, as they stand
  Object dash;                     // of a graphics state: an array and a phase; null: see operands

  // Lengths of dashes and gaps; none for a solid line. Returns the phase.
  double ReadDash(std::vector<double>& lengths) const;
};

// How what is painted is put over what is there (11.6).
struct Transparency {
  double fill_alpha = 1;
  double stroke_alpha = 1;
  bool alpha_is_shape = false;
  Object blend_mode;  // a name or an array of names; null for Normal
  Object soft_mask;   // a dictionary; null for none
};

// What is for printing (8.6.7, 10.4, 10.5) and for the quality of painting (10.7), as graphics
// states have it; null for what was not set.
struct RenderingParameters {
  bool overprints_strokes = false;
  bool overprints_fills = false;
  int overprint_mode = 0;
  std::string_view intent = "RelativeColorimetric";
  double flatness = 0;
  Object smoothness;
  Object transfer_function;   // /TR2, or /TR
  Object black_generation;    // /BG2, or /BG
  Object undercolor_removal;  // /UCR2, or /UCR
  Object halftone;
  bool adjusts_strokes = false;
};

// What is kept depends on the options of the walk; everything else stays as it is at first.
struct GraphicsState {
  Matrix matrix;  // from user space to the space of the walk
  Clip clip;
  Color fill;
  Color stroke;
  LineStyle line;
  Transparency transparency;
  RenderingParameters rendering;
  TextState text;
};

static_assert(std::is_trivially_copyable_v<GraphicsState>);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_GRAPHICSSTATE_H_
