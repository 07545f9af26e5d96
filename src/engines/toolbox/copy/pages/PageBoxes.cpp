#include "engines/toolbox/copy/pages/PageBoxes.h"

#include <algorithm>
#include <array>

#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::InheritableKey;
using pdf::Object;

namespace {

constexpr std::string_view kUsLetter = "[0 0 612 792]";
constexpr std::array<std::string_view, 3> kOwnBoxes = {"BleedBox", "TrimBox", "ArtBox"};

bool IsRectangle(pdf::Document& document, const Object& value, pdf::Arena& arena) {
  const auto items = document.Resolve(value, arena).Items();
  return items.size() >= 4 &&
         std::all_of(items.begin(), items.begin() + 4,
                     [&](const Object& item) { return document.Resolve(item, arena).IsNumber(); });
}

}  // namespace

bool IsPageBox(std::string_view key) {
  return key == "MediaBox" || key == "CropBox" ||
         std::find(kOwnBoxes.begin(), kOwnBoxes.end(), key) != kOwnBoxes.end();
}

void AppendPageBoxes(std::string& out, CopyContext& context, const pdf::PageTree::Page& page,
                     const Object& dictionary, pdf::Arena& arena) {
  const auto append = [&](std::string_view key, const Object& box) {
    if (!IsRectangle(context.document(), box, arena)) {
      return false;
    }
    pdf::AppendName(out, key);
    context.objects().Append(out, box);
    return true;
  };
  const auto append_inheritable = [&](std::string_view key, InheritableKey inherited) {
    return append(key, context.source().pages().FindAttribute(page, dictionary, inherited).value);
  };
  if (!append_inheritable("MediaBox", InheritableKey::kMediaBox)) {
    out += "/MediaBox";
    out += kUsLetter;
  }
  append_inheritable("CropBox", InheritableKey::kCropBox);
  for (const std::string_view key : kOwnBoxes) {
    append(key, dictionary.Get(key));
  }
}

}  // namespace TarnixTools::engines::toolbox
