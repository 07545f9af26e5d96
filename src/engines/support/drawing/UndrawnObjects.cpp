#include "engines/support/drawing/UndrawnObjects.h"

#include <string>

#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageHeaders.h"
#include "engines/support/images/Jbig2Image.h"
#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/PictureLimits.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines {

using pdf::Object;

void UndrawnObjects::FindOnPage(const pdf::PageTree& pages, std::size_t page_index) {
  graph_.AddPage(pages, page_index);
  while (const pdf::ResourceNode* node = graph_.Next()) {
    CheckResource(*node);
  }
}

void UndrawnObjects::CheckResource(const pdf::ResourceNode& node) {
  switch (node.kind) {
    case pdf::ResourceKind::kColorSpace:
      CheckSpace(node.value);
      break;
    case pdf::ResourceKind::kShading:
      CheckFunction(node.value.Get("Function"));
      break;
    case pdf::ResourceKind::kGraphicsState:
      CheckGraphicsState(node.value);
      break;
    case pdf::ResourceKind::kImage:
    case pdf::ResourceKind::kImageMask:
      if (IsOddImage(node.number, node.value)) {
        images_.push_back(node.number);
      }
      break;
    default:
      break;
  }
}

bool UndrawnObjects::IsOddImage(std::uint32_t number, const Object& dictionary) {
  pdf::Arena arena;
  const Object filter = document_->Resolve(dictionary.Get("Filter"), arena);
  const Object last =
      filter.Items().empty() ? filter : document_->Resolve(filter.Items().back(), arena);
  if (number != 0 && last.IsName("JBIG2Decode")) {
    return IsOddJbig2(number, dictionary);
  }
  if (number == 0 || filter.Items().size() > 1 || !last.IsName("JPXDecode")) {
    return false;
  }
  const DocumentImage image{.document = document_,
                            .number = number,
                            .dictionary = dictionary,
                            .data = {},
                            .color_spaces = {}};
  const std::optional<JpxHeader> header = JpxHeaderOf(image);
  if (!header) {
    return false;
  }
  const std::size_t found = header->components.size();
  const Object value = document_->Resolve(dictionary.Get("ColorSpace"), arena);
  if (value.IsNull()) {
    return found == 2 || (found == 4 && header->CountColors() == 3);
  }
  const auto space = ColorSpaceOf(*document_, value, arena);
  if (!space || !space->is_computed()) {
    return false;
  }
  const auto components = static_cast<std::size_t>(space->components);
  return found != components && !(found == 4 && components == 3);
}

bool UndrawnObjects::IsOddJbig2(std::uint32_t number, const Object& dictionary) {
  const DocumentImage image{.document = document_,
                            .number = number,
                            .dictionary = dictionary,
                            .data = {},
                            .color_spaces = {}};
  pdf::Arena arena;
  return IsOwnJbig2(image, FactsOf(image, arena));
}

void UndrawnObjects::CheckSpace(const Object& space) {
  pdf::Arena arena;
  const auto items = space.Items();
  if (items.size() > 1 && document_->Resolve(items[0], arena).IsName("ICCBased")) {
    Check(items[1].AsReference().number);
  }
  constexpr std::size_t kTintTransform = 3;  // of a Separation or DeviceN space
  if (items.size() > kTintTransform) {
    CheckFunction(items[kTintTransform]);
  }
}

void UndrawnObjects::CheckGraphicsState(const Object& state) {
  pdf::Arena arena;
  CheckFunction(state.Get("TR"));
  CheckFunction(state.Get("TR2"));
  CheckFunction(document_->Resolve(state.Get("SMask"), arena).Get("TR"));
}

// Of a function written in place it is those below it that are left out.
void UndrawnObjects::CheckFunction(const Object& function) {
  if (unfolding_.SizeOf(function) <= limits::kMaxUnfoldedFunctions) {
    return;
  }
  std::vector<Object> waiting = {function};
  while (!waiting.empty()) {
    const Object value = waiting.back();
    waiting.pop_back();
    if (value.IsReference()) {
      functions_.push_back(value.AsReference().number);
    } else if (value.IsDictionary()) {
      waiting.push_back(value.Get("Functions"));
    } else {
      waiting.insert(waiting.end(), value.Items().begin(), value.Items().end());
    }
  }
}

void UndrawnObjects::Check(std::uint32_t number) {
  if (number != 0 && seen_profiles_.insert(number).second && IsOdd(number)) {
    profiles_.push_back(number);
  }
}

bool UndrawnObjects::IsOdd(std::uint32_t number) {
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  const std::int64_t components = document_->Resolve(dictionary.Get("N"), arena).IntegerOr(0);
  const std::optional<pdf::Decoded> profile =
      document_->TryDecodeStream(number, limits::kMaxProfileBytes);
  const int found = profile ? ComponentsOfProfile(profile->data) : 0;
  return found != 0 && found != components;
}

}  // namespace TarnixTools::engines
