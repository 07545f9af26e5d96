// Operators of the graphics state: where it is kept, its matrix and its parameters (ISO 32000-2,
// 8.4.4).
#include <algorithm>
#include <array>

#include "pdf/Limits.h"
#include "pdf/content/ContentFrame.h"
#include "pdf/content/Operands.h"

namespace TarnixTools::pdf {

namespace {

void Save(ContentFrame& frame) {
  if (frame.walk->saved_states >= limits::kMaxSavedStates) {
    ++frame.unsaved;
    return;
  }
  ++frame.walk->saved_states;
  frame.saved.push_back(frame.state);
}

void Restore(ContentFrame& frame, const Operation& operation) {
  if (frame.unsaved > 0) {
    --frame.unsaved;
  } else if (frame.saved.empty()) {
    frame.Report(ContentTrouble::kSurplusRestore, operation);
  } else {
    frame.state = frame.saved.back();
    frame.saved.pop_back();
    --frame.walk->saved_states;
  }
}

// An operator with one number.
template <typename Value>
void SetNumber(ContentFrame& frame, const Operation& operation, Value& value) {
  std::array<double, 1> number{};
  if (LastNumbers(operation, number)) {
    value = static_cast<Value>(std::clamp(number[0], -1e9, 1e9));
  } else {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
  }
}

class GraphicsStateReader {
 public:
  GraphicsStateReader(ContentFrame& frame, const Object& dictionary)
      : frame_(&frame), dictionary_(dictionary) {}

  void ReadLine(LineStyle& line) {
    SetNumber("LW", line.width);
    SetNumber("LC", line.cap);
    SetNumber("LJ", line.join);
    SetNumber("ML", line.miter_limit);
    if (const Object dash = Get("D"); dash.IsArray()) {
      line.dash = dash;
    }
  }

  void ReadTransparency(Transparency& transparency) {
    SetNumber("ca", transparency.fill_alpha);
    SetNumber("CA", transparency.stroke_alpha);
    SetFlag("AIS", transparency.alpha_is_shape);
    Set("BM", transparency.blend_mode);
    if (const Object mask = Get("SMask"); !mask.IsNull()) {
      transparency.soft_mask = mask.IsDictionary() ? mask : Object();
    }
  }

  void ReadRendering(RenderingParameters& rendering) {
    SetFlag("OP", rendering.overprints_strokes);
    if (dictionary_.Has("OP") && !dictionary_.Has("op")) {
      rendering.overprints_fills = rendering.overprints_strokes;
    }
    SetFlag("op", rendering.overprints_fills);
    SetNumber("OPM", rendering.overprint_mode);
    SetNumber("FL", rendering.flatness);
    SetFlag("SA", rendering.adjusts_strokes);
    Set("SM", rendering.smoothness);
    SetNewer("TR2", "TR", rendering.transfer_function);
    SetNewer("BG2", "BG", rendering.black_generation);
    SetNewer("UCR2", "UCR", rendering.undercolor_removal);
    Set("HT", rendering.halftone);
    if (const Object intent = Get("RI"); intent.IsName()) {
      rendering.intent = intent.Text();
    }
  }

  void ReadFont() {
    const auto items = Get("Font").Items();
    if (items.size() >= 2) {
      SetFont(*frame_, items[0], Resolve(items[1]).NumberOr(0), {});
    }
  }

  void ReadKnockout(TextState& text) { SetFlag("TK", text.is_knockout); }

 private:
  Object Resolve(const Object& value) { return frame_->names.Follow(value).value; }

  Object Get(std::string_view key) { return Resolve(dictionary_.Get(key)); }

  template <typename Value>
  void SetNumber(std::string_view key, Value& value) {
    if (const Object number = Get(key); number.IsNumber()) {
      value = static_cast<Value>(std::clamp(number.NumberOr(0), -1e9, 1e9));
    }
  }

  void SetFlag(std::string_view key, bool& value) { value = Get(key).BooleanOr(value); }

  void Set(std::string_view key, Object& value) {
    if (const Object entry = Get(key); !entry.IsNull()) {
      value = entry;
    }
  }

  // Of the keys of two versions, the newer one counts (table 57).
  void SetNewer(std::string_view newer, std::string_view older, Object& value) {
    Set(dictionary_.Has(newer) ? newer : older, value);
  }

  ContentFrame* frame_;
  Object dictionary_;
};

// gs
void SetParameters(ContentFrame& frame, const Operation& operation) {
  const Followed state =
      frame.names.Follow(LookUpOperand(frame, operation, ResourceCategory::kExtGState));
  const WalkOptions& options = frame.walk->options;
  GraphicsStateReader reader(frame, state.value);
  if (options.style) {
    reader.ReadLine(frame.state.line);
    reader.ReadTransparency(frame.state.transparency);
    reader.ReadRendering(frame.state.rendering);
  }
  if (options.text || options.glyphs) {
    reader.ReadFont();
    reader.ReadKnockout(frame.state.text);
  }
  if (options.soft_masks) {
    const ContentPlace group = SoftMaskOf(*frame.walk->document, state.value, frame.walk->scratch);
    AddPending(frame, operation,
               {.kind = group.kind, .number = group.number, .matrix = frame.state.matrix});
  }
}

}  // namespace

void RunSpaceOperator(ContentFrame& frame, const Operation& operation) {
  if (operation.code == OperatorCode("q")) {
    Save(frame);
  } else if (operation.code == OperatorCode("Q")) {
    Restore(frame, operation);
  } else {
    std::array<double, 6> m{};
    if (LastNumbers(operation, m)) {
      frame.state.matrix = Matrix{m[0], m[1], m[2], m[3], m[4], m[5]} * frame.state.matrix;
    } else {
      frame.Report(ContentTrouble::kOperandsMissing, operation);
    }
  }
}

void RunStateOperator(ContentFrame& frame, const Operation& operation) {
  GraphicsState& state = frame.state;
  switch (operation.code) {
    case OperatorCode("w"):
      SetNumber(frame, operation, state.line.width);
      break;
    case OperatorCode("J"):
      SetNumber(frame, operation, state.line.cap);
      break;
    case OperatorCode("j"):
      SetNumber(frame, operation, state.line.join);
      break;
    case OperatorCode("M"):
      SetNumber(frame, operation, state.line.miter_limit);
      break;
    case OperatorCode("i"):
      SetNumber(frame, operation, state.rendering.flatness);
      break;
    case OperatorCode("d"):
      state.line.dash = {};
      state.line.dash_operands = operation.operands;
      break;
    case OperatorCode("ri"):
      state.rendering.intent = FirstRawName(operation.operands);
      break;
    default:
      SetParameters(frame, operation);
  }
}

}  // namespace TarnixTools::pdf
