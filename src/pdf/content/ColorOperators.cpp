// Operators of colour (ISO 32000-2, 8.6.8), and what is painted with patterns.
#include <algorithm>
#include <array>

#include "pdf/content/ContentFrame.h"
#include "pdf/content/Operands.h"

namespace TarnixTools::pdf {

namespace {

// The name as a text that stays; empty for a space that is no device's, but the resources'.
std::string_view DeviceName(std::string_view name) {
  constexpr std::array<std::string_view, 4> kNames = {"DeviceGray", "DeviceRGB", "DeviceCMYK",
                                                      "Pattern"};
  const auto found = std::find(kNames.begin(), kNames.end(), name);
  return found == kNames.end() ? std::string_view() : *found;
}

// g rg k
void SetDeviceColor(ContentFrame& frame, const Operation& operation, Color& color,
                    std::string_view space, std::size_t components) {
  if (operation.operand_count < components) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
    return;
  }
  color = {.space = Object::Name(space), .components = operation.operands};
}

// cs
void SetSpace(ContentFrame& frame, const Operation& operation, Color& color) {
  const auto name = LastName(operation, frame.walk->scratch);
  if (!name) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
    return;
  }
  const std::string_view device = DeviceName(*name);
  const Object space = device.empty()
                           ? LookUp(frame, operation, ResourceCategory::kColorSpace, *name)
                           : Object::Name(device);
  color = {.space = space};
}

// sc scn
void SetComponents(ContentFrame& frame, const Operation& operation, Color& color) {
  if (operation.operand_count == 0) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
    return;
  }
  color.components = operation.operands;
  color.pattern = {};
  if (operation.operands.find('/') != std::string_view::npos) {
    color.pattern = LookUpOperand(frame, operation, ResourceCategory::kPattern);
    color.pattern_space = &frame.entry.matrix;
  }
}

}  // namespace

void RunColorOperator(ContentFrame& frame, const Operation& operation) {
  if (!frame.has_own_colors) {
    return;
  }
  Color& fill = frame.state.fill;
  Color& stroke = frame.state.stroke;
  switch (operation.code) {
    case OperatorCode("g"):
      return SetDeviceColor(frame, operation, fill, "DeviceGray", 1);
    case OperatorCode("G"):
      return SetDeviceColor(frame, operation, stroke, "DeviceGray", 1);
    case OperatorCode("rg"):
      return SetDeviceColor(frame, operation, fill, "DeviceRGB", 3);
    case OperatorCode("RG"):
      return SetDeviceColor(frame, operation, stroke, "DeviceRGB", 3);
    case OperatorCode("k"):
      return SetDeviceColor(frame, operation, fill, "DeviceCMYK", 4);
    case OperatorCode("K"):
      return SetDeviceColor(frame, operation, stroke, "DeviceCMYK", 4);
    case OperatorCode("cs"):
      return SetSpace(frame, operation, fill);
    case OperatorCode("CS"):
      return SetSpace(frame, operation, stroke);
    case OperatorCode("sc"):
    case OperatorCode("scn"):
      return SetComponents(frame, operation, fill);
    default:
      return SetComponents(frame, operation, stroke);
  }
}

void AddPattern(ContentFrame& frame, const Operation& operation, const Color& color) {
  WalkContext& walk = *frame.walk;
  if (!walk.options.patterns || frame.hidden_marks > 0 || color.pattern.IsNull()) {
    return;
  }
  const Followed& pattern = frame.names.Follow(color.pattern);
  if (KindOf(*walk.document, ResourceCategory::kPattern, pattern.value) ==
      ResourceKind::kTilingPattern) {
    AddPending(frame, operation,
               {.kind = ResourceKind::kTilingPattern,
                .number = pattern.number,
                .matrix = *color.pattern_space,
                .color = &color});
  }
}

}  // namespace TarnixTools::pdf
