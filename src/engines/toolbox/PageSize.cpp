// How large a page is on the screen.
#include <algorithm>
#include <array>
#include <optional>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"

namespace TarnixTools::engines {

using pdf::InheritableKey;
using pdf::Object;

namespace {

struct Box {
  double left, bottom, right, top;
};

constexpr Box kLetter = {0, 0, 612, 792};

class PageGeometry {
 public:
  PageGeometry(SourceDocument& source, std::uint32_t index)
      : source_(&source),
        page_(&source.pages().pages()[index]),
        dictionary_(source.pages().Load(*page_, arena_)) {}

  TPdfSize VisibleSize() {
    const Box media = BoxOf("MediaBox", InheritableKey::kMediaBox).value_or(kLetter);
    Box visible = BoxOf("CropBox", InheritableKey::kCropBox).value_or(media);
    visible = {std::max(visible.left, media.left), std::max(visible.bottom, media.bottom),
               std::min(visible.right, media.right), std::min(visible.top, media.top)};
    if (visible.right <= visible.left || visible.top <= visible.bottom) {
      visible = media;
    }
    const double unit = Resolve(dictionary_.Get("UserUnit")).NumberOr(1);
    const double scale = unit > 0 ? unit : 1;
    TPdfSize size{(visible.right - visible.left) * scale, (visible.top - visible.bottom) * scale};
    if (Attribute("Rotate", InheritableKey::kRotate).IntegerOr(0) % 180 != 0) {
      std::swap(size.width, size.height);
    }
    return size;
  }

 private:
  Object Resolve(const Object& value) { return source_->document().Resolve(value, arena_); }

  Object Attribute(std::string_view name, InheritableKey key) {
    const Object own = Resolve(dictionary_.Get(name));
    return own.IsNull() ? Resolve(source_->pages().InheritedBy(*page_, key).value) : own;
  }

  // The rectangle with its corners in order; none for what is no rectangle with an area.
  std::optional<Box> BoxOf(std::string_view name, InheritableKey key) {
    const auto items = Attribute(name, key).Items();
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

int PdfPageGetSize(TPdfPage* page, TPdfSize* size) {
  if (page == nullptr || size == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    *size = PageGeometry(*page->source, page->index).VisibleSize();
    if (page->rotation % 180 != 0) {
      std::swap(size->width, size->height);
    }
    return 1;
  });
}

}  // namespace TarnixTools::engines
