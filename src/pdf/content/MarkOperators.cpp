// Operators of marked content (ISO 32000-2, 14.6), and the layers that it lies on (8.11.3.2).
#include "pdf/Limits.h"
#include "pdf/content/ContentFrame.h"
#include "pdf/content/Operands.h"

namespace TarnixTools::pdf {

namespace {

bool MayBeLayer(std::string_view operands) {
  return operands.find("/OC") != std::string_view::npos ||
         operands.find('#') != std::string_view::npos;
}

// BDC and DP have properties: a dictionary, or the name of one in the resources.
void ReadProperties(ContentFrame& frame, const Operation& operation, MarkedContent& mark) {
  const WalkContext& walk = *frame.walk;
  const auto operands = ParseOperands(operation.operands, frame.walk->scratch);
  if (operands.size() < 2 || !operands[operands.size() - 2].IsName()) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
    return;
  }
  Object properties = operands.back();
  if (properties.IsName()) {
    const Object entry = LookUp(frame, operation, ResourceCategory::kProperties, properties.Text());
    mark.is_hidden = walk.options.layers != nullptr && operands[operands.size() - 2].IsName("OC") &&
                     !walk.options.layers->IsSeen(entry);
    properties = frame.names.Follow(entry).value;
  }
  mark.properties = properties;
  const Object id = frame.names.Follow(properties.Get("MCID")).value;
  mark.id = id.IsInteger() ? std::optional(id.IntegerOr(0)) : std::nullopt;
}

MarkedContent ReadMark(ContentFrame& frame, const Operation& operation) {
  MarkedContent mark;
  mark.tag = FirstRawName(operation.operands);
  const WalkOptions& options = frame.walk->options;
  const bool has_properties =
      operation.code == OperatorCode("BDC") || operation.code == OperatorCode("DP");
  if (has_properties && (options.marks || options.names || MayBeLayer(operation.operands))) {
    ReadProperties(frame, operation, mark);
  } else if (!has_properties && operation.operand_count == 0) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
  }
  return mark;
}

void Begin(ContentFrame& frame, const Operation& operation) {
  const MarkedContent mark = ReadMark(frame, operation);
  if (frame.marks.size() >= limits::kMaxSavedStates) {
    ++frame.uncounted_marks;
    return;
  }
  frame.marks.push_back(mark);
  frame.marks.back().properties = {};
  frame.hidden_marks += mark.is_hidden ? 1 : 0;
  if (frame.walk->options.marks) {
    frame.walk->visitor->BeginMarked(mark);
  }
}

void End(ContentFrame& frame, const Operation& operation) {
  if (frame.uncounted_marks > 0) {
    --frame.uncounted_marks;
  } else if (frame.marks.empty()) {
    frame.Report(ContentTrouble::kSurplusMarkEnd, operation);
  } else {
    EndMark(frame);
  }
}

void Mark(ContentFrame& frame, const Operation& operation) {
  const WalkOptions& options = frame.walk->options;
  if (options.marks || options.names) {
    const MarkedContent mark = ReadMark(frame, operation);
    if (options.marks) {
      frame.walk->visitor->MarkPoint(mark);
    }
  }
}

}  // namespace

void EndMark(ContentFrame& frame) {
  const MarkedContent mark = frame.marks.back();
  frame.marks.pop_back();
  frame.hidden_marks -= mark.is_hidden ? 1 : 0;
  if (frame.walk->options.marks) {
    frame.walk->visitor->EndMarked(mark);
  }
}

void RunMarkOperator(ContentFrame& frame, const Operation& operation) {
  switch (operation.code) {
    case OperatorCode("BMC"):
    case OperatorCode("BDC"):
      return Begin(frame, operation);
    case OperatorCode("EMC"):
      return End(frame, operation);
    default:
      Mark(frame, operation);
  }
}

}  // namespace TarnixTools::pdf
