// Operators of text (ISO 32000-2, 9.3 and 9.4).
#include <array>
#include <cmath>

#include "pdf/Limits.h"
#include "pdf/content/ContentFrame.h"
#include "pdf/content/Operands.h"

namespace TarnixTools::pdf {

namespace {

constexpr double kThousandths = 1000;

void MoveLine(TextState& text, double x, double y) {
  text.line_matrix = Matrix::Translation(x, y) * text.line_matrix;
  text.matrix = text.line_matrix;
}

// The numbers of an operator; false, and a report, when there are too few.
bool ReadNumbers(const ContentFrame& frame, const Operation& operation, std::span<double> numbers) {
  const bool are_there = LastNumbers(operation, numbers);
  if (!are_there) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
  }
  return are_there;
}

void MoveBy(ContentFrame& frame, const Operation& operation) {
  std::array<double, 2> by{};
  if (!ReadNumbers(frame, operation, by)) {
    return;
  }
  if (operation.code == OperatorCode("TD")) {
    frame.state.text.leading = -by[1];
  }
  MoveLine(frame.state.text, by[0], by[1]);
}

void SetMatrix(ContentFrame& frame, const Operation& operation) {
  std::array<double, 6> m{};
  if (ReadNumbers(frame, operation, m)) {
    frame.state.text.line_matrix = {m[0], m[1], m[2], m[3], m[4], m[5]};
    frame.state.text.matrix = frame.state.text.line_matrix;
  }
}

void SetParameter(ContentFrame& frame, const Operation& operation, double& value, double unit = 1) {
  std::array<double, 1> number{};
  if (ReadNumbers(frame, operation, number)) {
    value = number[0] / unit;
  }
}

void SetNamedFont(ContentFrame& frame, const Operation& operation) {
  const auto operands = LastNameAndNumber(operation, frame.walk->scratch);
  if (!operands) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
    return;
  }
  const Object font = LookUp(frame, operation, ResourceCategory::kFont, operands->name);
  SetFont(frame, font, operands->number, operands->name);
}

// The glyphs of a Type 3 font that is set; null for any other, and when there are too many.
const Type3Font* GlyphsOf(ContentFrame& frame, const Object& font, std::string_view name) {
  WalkContext& walk = *frame.walk;
  const Followed& followed = frame.names.Follow(font);
  if (KindOf(*walk.document, ResourceCategory::kFont, followed.value) != ResourceKind::kType3Font) {
    return nullptr;
  }
  auto& place =
      followed.number != 0 ? walk.fonts[followed.number] : frame.fonts_in_place[std::string(name)];
  if (place == nullptr && walk.fonts_read < limits::kMaxType3Fonts) {
    ++walk.fonts_read;
    place = std::make_unique<Type3Font>(*walk.document, font);
  }
  return place.get();
}

// Shows strings from where the text matrix is.
class StringRunner {
 public:
  StringRunner(ContentFrame& frame, const Operation& operation)
      : frame_(&frame), operation_(&operation), text_(&frame.state.text) {}

  void Run(const Object& strings) {
    if (strings.IsString()) {
      Show(strings.Text());
      return;
    }
    for (const Object& item : strings.Items()) {
      if (item.IsString()) {
        Show(item.Text());
      } else {
        adjustment_ += item.NumberOr(0);
      }
    }
    Adjust();
  }

 private:
  void Show(std::string_view bytes) {
    const double adjustment = adjustment_;
    Adjust();
    const WalkOptions& options = frame_->walk->options;
    std::optional<TextAdvance> advance;
    if (options.text) {
      advance = frame_->walk->visitor->ShowText({.bytes = bytes,
                                                 .adjustment = adjustment,
                                                 .index = index_++,
                                                 .is_hidden = frame_->hidden_marks > 0,
                                                 .state = frame_->state,
                                                 .scope = frame_->entry.scope});
    }
    if (text_->glyphs != nullptr) {
      const double width = ShowGlyphs(bytes);
      advance = advance ? advance : TextAdvance{width, 0};
    }
    if (advance) {
      Move(advance->x, advance->y);
    }
  }

  // Returns how wide they are.
  double ShowGlyphs(std::string_view bytes) {
    const Type3Font& font = *text_->glyphs;
    TextState at = *text_;
    double width = 0;
    for (const char c : bytes) {
      const auto code = static_cast<std::uint8_t>(c);
      if (frame_->hidden_marks == 0) {
        AddPending(*frame_, *operation_,
                   {.kind = ResourceKind::kGlyph,
                    .number = font.GlyphOf(code),
                    .user = font.number(),
                    .matrix = font.matrix() * at.GlyphMatrix() * frame_->state.matrix,
                    .has_matrix = false,
                    .font = &font});
      }
      const double spacing = at.char_spacing + (c == ' ' ? at.word_spacing : 0);
      const double step = (font.WidthOf(code) * at.size + spacing) * at.scale;
      at.matrix = Matrix::Translation(step, 0) * at.matrix;
      width += step;
    }
    return width;
  }

  void Adjust() {
    if (adjustment_ == 0) {
      return;
    }
    const double by = -adjustment_ / kThousandths * text_->size;
    adjustment_ = 0;
    if (frame_->walk->visitor->IsVertical(*text_)) {
      Move(0, by);
    } else {
      Move(by * text_->scale, 0);
    }
  }

  void Move(double x, double y) { text_->matrix = Matrix::Translation(x, y) * text_->matrix; }

  ContentFrame* frame_;
  const Operation* operation_;
  TextState* text_;
  double adjustment_ = 0;
  std::size_t index_ = 0;
};

// ' and " begin a new line, and " sets the spacing.
void BeginLine(ContentFrame& frame, const Operation& operation, std::span<const Object> operands) {
  TextState& text = frame.state.text;
  if (operation.code == OperatorCode("\"") && operands.size() >= 3) {
    text.word_spacing = operands[operands.size() - 3].NumberOr(0);
    text.char_spacing = operands[operands.size() - 2].NumberOr(0);
  }
  if (operation.code == OperatorCode("\"") || operation.code == OperatorCode("'")) {
    MoveLine(text, 0, -text.leading);
  }
}

void ShowStrings(ContentFrame& frame, const Operation& operation) {
  const std::vector<Object> operands = ParseOperands(operation.operands, frame.walk->scratch);
  BeginLine(frame, operation, operands);
  const bool wants_array = operation.code == OperatorCode("TJ");
  const bool is_usual = !operands.empty() &&
                        (operands.back().IsString() || (wants_array && operands.back().IsArray()));
  if (is_usual) {
    StringRunner(frame, operation).Run(operands.back());
  } else {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
  }
}

}  // namespace

void RunTextOperator(ContentFrame& frame, const Operation& operation) {
  TextState& text = frame.state.text;
  switch (operation.code) {
    case OperatorCode("BT"):
      text.matrix = {};
      text.line_matrix = {};
      break;
    case OperatorCode("Td"):
    case OperatorCode("TD"):
      return MoveBy(frame, operation);
    case OperatorCode("T*"):
      return MoveLine(text, 0, -text.leading);
    case OperatorCode("Tm"):
      return SetMatrix(frame, operation);
    case OperatorCode("Tf"):
      return SetNamedFont(frame, operation);
    case OperatorCode("Tc"):
      return SetParameter(frame, operation, text.char_spacing);
    case OperatorCode("Tw"):
      return SetParameter(frame, operation, text.word_spacing);
    case OperatorCode("Tz"):
      return SetParameter(frame, operation, text.scale, 100);
    case OperatorCode("TL"):
      return SetParameter(frame, operation, text.leading);
    case OperatorCode("Ts"):
      return SetParameter(frame, operation, text.rise);
    default:
      break;
  }
}

void RunTextModeOperator(ContentFrame& frame, const Operation& operation) {
  constexpr double kModes = 8;
  std::array<double, 1> mode{};
  if (!ReadNumbers(frame, operation, mode)) {
    return;
  }
  if (mode[0] >= 0 && mode[0] < kModes) {
    frame.state.text.mode = static_cast<TextMode>(mode[0]);
  }
}

void RunShowTextOperator(ContentFrame& frame, const Operation& operation) {
  const WalkOptions& options = frame.walk->options;
  GraphicsState& state = frame.state;
  if (options.text || options.glyphs) {
    ShowStrings(frame, operation);
  }
  state.clip.has_text = state.clip.has_text || Clips(state.text.mode);
  if (Fills(state.text.mode)) {
    AddPattern(frame, operation, state.fill);
  }
  if (Strokes(state.text.mode)) {
    AddPattern(frame, operation, state.stroke);
  }
}

void SetFont(ContentFrame& frame, const Object& font, double size, std::string_view name) {
  TextState& text = frame.state.text;
  text.font = font;
  text.size = size;
  text.glyphs = frame.walk->options.glyphs ? GlyphsOf(frame, font, name) : nullptr;
}

}  // namespace TarnixTools::pdf
