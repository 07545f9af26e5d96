// Operators that construct, paint and clip with paths (ISO 32000-2, 8.5).
#include <utility>

#include "pdf/content/ContentFrame.h"

namespace TarnixTools::pdf {

namespace {

struct Painting {
  bool closes = false;
  bool fills = false;
  bool strokes = false;
  FillRule rule = FillRule::kNonZero;
};

Painting PaintingOf(std::uint32_t code) {
  constexpr FillRule kEvenOdd = FillRule::kEvenOdd;
  switch (code) {
    case OperatorCode("S"):
      return {.strokes = true};
    case OperatorCode("s"):
      return {.closes = true, .strokes = true};
    case OperatorCode("f"):
    case OperatorCode("F"):
      return {.fills = true};
    case OperatorCode("f*"):
      return {.fills = true, .rule = kEvenOdd};
    case OperatorCode("B"):
      return {.fills = true, .strokes = true};
    case OperatorCode("B*"):
      return {.fills = true, .strokes = true, .rule = kEvenOdd};
    case OperatorCode("b"):
      return {.closes = true, .fills = true, .strokes = true};
    case OperatorCode("b*"):
      return {.closes = true, .fills = true, .strokes = true, .rule = kEvenOdd};
    default:
      return {};
  }
}

PathUse UseOf(const ContentFrame& frame, const Painting& painting) {
  return {.segments = frame.path.segments(),
          .box = frame.path.box(),
          .is_whole = frame.path.is_whole(),
          .fills = painting.fills,
          .strokes = painting.strokes,
          .rule = painting.rule,
          .state = frame.state};
}

void Paint(ContentFrame& frame, const Operation& operation, const Painting& painting) {
  const WalkOptions& options = frame.walk->options;
  const bool has_path = !frame.path.segments().empty();
  if (has_path && painting.closes) {
    frame.path.Close();
  }
  if (has_path && options.paths && (painting.fills || painting.strokes)) {
    frame.walk->visitor->PaintPath(UseOf(frame, painting));
  }
  if (painting.fills) {
    AddPattern(frame, operation, frame.state.fill);
  }
  if (painting.strokes) {
    AddPattern(frame, operation, frame.state.stroke);
  }
}

void ClipWithPath(ContentFrame& frame, FillRule rule) {
  if (!frame.walk->options.clips) {
    return;
  }
  Clip& clip = frame.state.clip;
  clip.box = clip.box.Within(frame.path.box());
  clip.is_rectangle = clip.is_rectangle && frame.path.IsRectangle();
  frame.walk->visitor->SetClip(UseOf(frame, {.rule = rule}));
}

}  // namespace

void RunPathOperator(ContentFrame& frame, const Operation& operation) {
  if (!frame.path.Run(operation, frame.state.matrix)) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
  }
}

void RunPaintOperator(ContentFrame& frame, const Operation& operation) {
  const Painting painting = PaintingOf(operation.code);
  if (frame.hidden_marks == 0) {
    Paint(frame, operation, painting);
  }
  const std::optional<FillRule> rule = std::exchange(frame.clip_rule, std::nullopt);
  if (rule && !frame.path.segments().empty()) {
    ClipWithPath(frame, *rule);
  }
  frame.path.Clear();
}

void RunClipOperator(ContentFrame& frame, const Operation& operation) {
  frame.clip_rule = operation.code == OperatorCode("W") ? FillRule::kNonZero : FillRule::kEvenOdd;
}

}  // namespace TarnixTools::pdf
