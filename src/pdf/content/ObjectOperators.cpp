// Operators that paint objects: XObjects, inline images and shadings (ISO 32000-2, 8.7.4.2
// to 8.10); the look-up of names, and the content that operators lead to.
#include <algorithm>
#include <array>
#include <utility>

#include "pdf/Limits.h"
#include "pdf/content/ContentFrame.h"
#include "pdf/content/Operands.h"

namespace TarnixTools::pdf {

namespace {

// Of an inline image, abbreviated or not (ISO 32000-2, table 92).
bool IsDeviceSpace(std::string_view name) {
  constexpr std::array<std::string_view, 6> kNames = {"G",          "RGB",       "CMYK",
                                                      "DeviceGray", "DeviceRGB", "DeviceCMYK"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace

void RunObjectOperator(ContentFrame& frame, const Operation& operation) {
  WalkContext& walk = *frame.walk;
  const Object entry = LookUpOperand(frame, operation, ResourceCategory::kXObject);
  if (frame.hidden_marks > 0 || entry.IsNull()) {
    return;
  }
  const Followed object = walk.document->Follow(entry, walk.scratch);
  if (walk.options.layers != nullptr && !walk.options.layers->IsSeen(object.value.Get("OC"))) {
    return;
  }
  switch (KindOf(*walk.document, ResourceCategory::kXObject, object.value)) {
    case ResourceKind::kImage:
      if (walk.options.images && object.number != 0) {
        walk.visitor->DrawImage(
            {.number = object.number,
             .dictionary = object.value,
             .color_spaces = frame.names.Category(ResourceCategory::kColorSpace),
             .state = frame.state,
             .scope = frame.entry.scope});
      }
      break;
    case ResourceKind::kForm:
      if (walk.options.forms) {
        AddPending(
            frame, operation,
            {.kind = ResourceKind::kForm, .number = object.number, .matrix = frame.state.matrix});
      }
      break;
    default:
      frame.Report(ContentTrouble::kResourceMissing, operation);
  }
}

void RunInlineImageOperator(ContentFrame& frame, const Operation& operation) {
  WalkContext& walk = *frame.walk;
  const Object entries = ParseInlineEntries(operation.image_entries, walk.scratch);
  const Object space = entries.Has("CS") ? entries.Get("CS") : entries.Get("ColorSpace");
  if (walk.options.names && space.IsName() && !IsDeviceSpace(space.Text())) {
    LookUp(frame, operation, ResourceCategory::kColorSpace, space.Text());
  }
  if (walk.options.images && frame.hidden_marks == 0) {
    walk.visitor->DrawImage({.dictionary = entries,
                             .data = operation.image_data,
                             .color_spaces = frame.names.Category(ResourceCategory::kColorSpace),
                             .state = frame.state,
                             .scope = frame.entry.scope});
  }
}

void RunShadingOperator(ContentFrame& frame, const Operation& operation) {
  WalkContext& walk = *frame.walk;
  const Object entry = LookUpOperand(frame, operation, ResourceCategory::kShading);
  if (walk.options.shadings && frame.hidden_marks == 0 && !entry.IsNull()) {
    const Followed shading = walk.document->Follow(entry, walk.scratch);
    walk.visitor->PaintShading(
        {.number = shading.number, .dictionary = shading.value, .state = frame.state});
  }
}

// The colours of a glyph that has only a shape do not count (ISO 32000-2, table 111).
void RunGlyphOperator(ContentFrame& frame, const Operation& operation) {
  if (operation.code == OperatorCode("d1") && frame.entry.kind == ResourceKind::kGlyph) {
    frame.has_own_colors = false;
  }
}

Object LookUpOperand(ContentFrame& frame, const Operation& operation, ResourceCategory category) {
  const auto name = LastName(operation, frame.walk->scratch);
  if (!name) {
    frame.Report(ContentTrouble::kOperandsMissing, operation);
    return {};
  }
  return LookUp(frame, operation, category, *name);
}

Object LookUp(ContentFrame& frame, const Operation& operation, ResourceCategory category,
              std::string_view name) {
  const Object entry = frame.names.Find(category, name);
  if (frame.walk->options.names) {
    frame.walk->visitor->LookUp(category, name, entry);
  }
  if (entry.IsNull()) {
    frame.Report(ContentTrouble::kResourceMissing, operation);
  }
  return entry;
}

void AddPending(ContentFrame& frame, const Operation& operation, const PendingContent& content) {
  if (content.number == 0) {
    return;
  }
  if (frame.walk->contents_run + frame.pending.size() < limits::kMaxContentsOfPage) {
    frame.pending.push_back(content);
  } else if (!std::exchange(frame.walk->is_exhausted, true)) {
    frame.Report(ContentTrouble::kTooMuch, operation);
  }
}

}  // namespace TarnixTools::pdf
