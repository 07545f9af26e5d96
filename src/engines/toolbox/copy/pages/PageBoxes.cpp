#include "engines/toolbox/copy/pages/PageBoxes.h"

#include <algorithm>
#include <array>
#include <optional>

#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::InheritableKey;
using pdf::Object;

namespace {

constexpr std::array<std::string_view, 3> kOwnBoxes = {"BleedBox", "TrimBox", "ArtBox"};

bool HoldsOnlyNumbers(pdf::Document& document, const Object& value, pdf::Arena& arena) {
  const auto items = document.Resolve(value, arena).Items();
  return std::all_of(items.begin(), items.end(),
                     [&](const Object& item) { return document.Resolve(item, arena).IsNumber(); });
}

// Returns false for what is no box.
bool AppendBox(std::string& out, CopyContext& context, std::string_view key, const Object& value,
               pdf::Arena& arena) {
  const std::optional<pdf::Box> box = pdf::ReadPageBox(context.document(), value);
  if (!box) {
    return false;
  }
  pdf::AppendName(out, key);
  if (HoldsOnlyNumbers(context.document(), value, arena)) {
    context.objects().Append(out, value);
  } else {
    pdf::AppendBox(out, *box);
  }
  return true;
}

}  // namespace

bool IsPageBox(std::string_view key) {
  return key == "MediaBox" || key == "CropBox" ||
         std::find(kOwnBoxes.begin(), kOwnBoxes.end(), key) != kOwnBoxes.end();
}

void AppendPageBoxes(std::string& out, CopyContext& context, const pdf::PageTree::Page& page,
                     const Object& dictionary, pdf::Arena& arena) {
  const auto inherited = [&](InheritableKey key) {
    return context.source().pages().FindAttribute(page, dictionary, key).value;
  };
  if (!AppendBox(out, context, "MediaBox", inherited(InheritableKey::kMediaBox), arena)) {
    out += "/MediaBox";
    pdf::AppendBox(out, pdf::kDefaultMediaBox);
  }
  AppendBox(out, context, "CropBox", inherited(InheritableKey::kCropBox), arena);
  for (const std::string_view key : kOwnBoxes) {
    AppendBox(out, context, key, dictionary.Get(key), arena);
  }
}

}  // namespace TarnixTools::engines::toolbox
