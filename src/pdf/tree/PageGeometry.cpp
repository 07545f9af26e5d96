#include "pdf/tree/PageGeometry.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "pdf/Limits.h"
#include "pdf/file/NumberArrays.h"

namespace TarnixTools::pdf {

namespace {

// Readers keep coordinates in 32 bits, where sides of less than that have no length.
bool HasArea(const Box& box) {
  return static_cast<float>(box.right) > static_cast<float>(box.left) &&
         static_cast<float>(box.top) > static_cast<float>(box.bottom);
}

bool IsUsable(const Box& box) {
  constexpr double kMost = limits::kMaxCoordinate;
  return HasArea(box) && box.left >= -kMost && box.bottom >= -kMost && box.right <= kMost &&
         box.top <= kMost;
}

// The box as far as it lies within the outer one.
Box Clipped(const std::optional<Box>& box, const Box& outer, const Box& fallback) {
  const Box clipped = box ? box->Within(outer) : fallback;
  return HasArea(clipped) ? clipped : fallback;
}

double UserUnitOf(const Object& value) {
  const double unit = value.NumberOr(1);
  return unit >= limits::kMinUserUnit && unit <= limits::kMaxUserUnit ? unit : 1;
}

}  // namespace

double PageGeometry::SeenWidth() const {
  return (rotation % 180 == 0 ? crop_box.width() : crop_box.height()) * user_unit;
}

double PageGeometry::SeenHeight() const {
  return (rotation % 180 == 0 ? crop_box.height() : crop_box.width()) * user_unit;
}

Matrix PageGeometry::ToSeen() const {
  switch (rotation) {
    case 90:
      return {0, -1, 1, 0, -crop_box.bottom, crop_box.right};
    case 180:
      return {-1, 0, 0, -1, crop_box.right, crop_box.top};
    case 270:
      return {0, 1, -1, 0, crop_box.top, -crop_box.left};
    default:
      return {1, 0, 0, 1, -crop_box.left, -crop_box.bottom};
  }
}

Matrix PageGeometry::FromSeen() const {
  switch (rotation) {
    case 90:
      return {0, 1, -1, 0, crop_box.right, crop_box.bottom};
    case 180:
      return {-1, 0, 0, -1, crop_box.right, crop_box.top};
    case 270:
      return {0, -1, 1, 0, crop_box.left, crop_box.top};
    default:
      return {1, 0, 0, 1, crop_box.left, crop_box.bottom};
  }
}

Matrix PageGeometry::ToSeenPoints() const {
  return ToSeen() * Matrix{user_unit, 0, 0, user_unit, 0, 0};
}

Matrix PageGeometry::FromSeenPoints() const {
  return Matrix{1 / user_unit, 0, 0, 1 / user_unit, 0, 0} * FromSeen();
}

PageGeometry PageGeometry::Turned(int degrees) const {
  PageGeometry turned = *this;
  turned.rotation = ((rotation + degrees) % 360 + 360) % 360;
  return turned;
}

PageGeometry PageGeometry::Within(const SeenSize& room) const {
  PageGeometry smaller = *this;
  smaller.user_unit *= std::min({1.0, room.width / SeenWidth(), room.height / SeenHeight()});
  return smaller;
}

int RotationOf(const Object& rotate) {
  const std::int64_t degrees = rotate.IntegerOr(0);
  if (degrees < std::numeric_limits<std::int32_t>::min() ||
      degrees > std::numeric_limits<std::int32_t>::max()) {
    return 0;
  }
  const std::int64_t quarters = degrees / 90 % 4;
  return static_cast<int>((quarters + 4) % 4) * 90;
}

std::optional<Box> ReadPageBox(Document& document, const Object& value) {
  const std::optional<Box> box = ReadBox(document, value);
  return box && IsUsable(*box) ? box : std::nullopt;
}

PageGeometry ReadPageGeometry(Document& document, const PageTree& pages,
                              const PageTree::Page& page) {
  Arena arena;
  return ReadPageGeometry(document, pages, page, pages.Load(page, arena));
}

PageGeometry ReadPageGeometry(Document& document, const PageTree& pages, const PageTree::Page& page,
                              const Object& dictionary) {
  Arena arena;
  const auto box_of = [&](const Object& value) { return ReadPageBox(document, value); };
  const auto inheritable = [&](InheritableKey key) {
    return pages.Attribute(page, dictionary, key, arena);
  };
  PageGeometry geometry;
  const Box media = box_of(inheritable(InheritableKey::kMediaBox)).value_or(kDefaultMediaBox);
  geometry.media_box = media;
  geometry.crop_box = Clipped(box_of(inheritable(InheritableKey::kCropBox)), media, media);
  const auto inner = [&](std::string_view key) {
    return Clipped(box_of(dictionary.Get(key)), media, geometry.crop_box);
  };
  geometry.bleed_box = inner("BleedBox");
  geometry.trim_box = inner("TrimBox");
  geometry.art_box = inner("ArtBox");
  geometry.rotation = RotationOf(inheritable(InheritableKey::kRotate));
  geometry.user_unit = UserUnitOf(document.Resolve(dictionary.Get("UserUnit"), arena));
  return geometry;
}

}  // namespace TarnixTools::pdf
