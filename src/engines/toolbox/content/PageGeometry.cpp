#include "engines/toolbox/content/PageGeometry.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "engines/toolbox/SourceDocument.h"

namespace TarnixTools::engines {

using pdf::InheritableKey;
using pdf::Object;

namespace {

struct Box {
  double left, bottom, right, top;
};

constexpr Box kLetter = {0, 0, 612, 792};

class PageReader {
 public:
  PageReader(SourceDocument& source, std::uint32_t index)
      : source_(&source),
        page_(&source.pages().pages()[index]),
        dictionary_(source.pages().Load(*page_, arena_)) {}

  Box VisibleBox() {
    const Box media = BoxOf(InheritableKey::kMediaBox).value_or(kLetter);
    const Box crop = BoxOf(InheritableKey::kCropBox).value_or(media);
    const Box visible = {std::max(crop.left, media.left), std::max(crop.bottom, media.bottom),
                         std::min(crop.right, media.right), std::min(crop.top, media.top)};
    return visible.right > visible.left && visible.top > visible.bottom ? visible : media;
  }

  double Unit() {
    const double unit = Resolve(dictionary_.Get("UserUnit")).NumberOr(1);
    return unit > 0 ? unit : 1;
  }

  int Rotation() {
    const std::int64_t angle = Attribute(InheritableKey::kRotate).IntegerOr(0) % 360;
    return angle % 90 == 0 ? static_cast<int>(angle) : 0;
  }

 private:
  Object Resolve(const Object& value) { return source_->document().Resolve(value, arena_); }

  Object Attribute(InheritableKey key) {
    return source_->pages().Attribute(*page_, dictionary_, key, arena_);
  }

  // The rectangle with its corners in order; none for what is no rectangle with an area.
  std::optional<Box> BoxOf(InheritableKey key) {
    const auto items = Attribute(key).Items();
    if (items.size() < 4) {
      return std::nullopt;
    }
    std::array<double, 4> corner{};
    for (std::size_t i = 0; i < 4; ++i) {
      const Object number = Resolve(items[i]);
      if (!number.IsNumber()) {
        return std::nullopt;
      }
      corner[i] = number.NumberOr(0);
    }
    const Box box = {std::min(corner[0], corner[2]), std::min(corner[1], corner[3]),
                     std::max(corner[0], corner[2]), std::max(corner[1], corner[3])};
    return box.right > box.left && box.top > box.bottom ? std::optional(box) : std::nullopt;
  }

  SourceDocument* source_;
  const pdf::PageTree::Page* page_;
  pdf::Arena arena_;
  Object dictionary_;
};

}  // namespace

PageGeometry ReadPageGeometry(SourceDocument& source, std::uint32_t index, int rotation) {
  PageReader page(source, index);
  const Box box = page.VisibleBox();
  return {box.left, box.bottom,  box.right,
          box.top,  page.Unit(), ((page.Rotation() + rotation) % 360 + 360) % 360};
}

TPdfSize PageGeometry::VisibleSize() const {
  TPdfSize size{(right - left) * unit, (top - bottom) * unit};
  if (rotation % 180 != 0) {
    std::swap(size.width, size.height);
  }
  return size;
}

pdf::Matrix PageGeometry::FromVisible() const {
  const double scale = 1 / unit;
  switch (rotation) {
    case 90:
      return {0, scale, -scale, 0, right, bottom};
    case 180:
      return {-scale, 0, 0, -scale, right, top};
    case 270:
      return {0, -scale, scale, 0, left, top};
    default:
      return {scale, 0, 0, scale, left, bottom};
  }
}

}  // namespace TarnixTools::engines
