#include <algorithm>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

constexpr std::uint64_t kMaxGrid = std::uint64_t{64} << 20U;

struct Place {
  std::int64_t x;
  std::int64_t y;
};

Place PlaceOf(const HalftoneRegion& region, std::int64_t column, std::int64_t row) {
  return {(region.grid_x + row * region.step_y + column * region.step_x) >> 8,
          (region.grid_y + row * region.step_x - column * region.step_y) >> 8};
}

// Pixels of the grid whose patterns lie outside.
Bitmap SkippedOf(const HalftoneRegion& region, const Bitmap& pattern) {
  Bitmap skipped(region.grid_width, region.grid_height);
  for (std::int64_t row = 0; row < skipped.height(); ++row) {
    for (std::int64_t column = 0; column < skipped.width(); ++column) {
      const Place place = PlaceOf(region, column, row);
      if (place.x + pattern.width() <= 0 || place.x >= region.width ||
          place.y + pattern.height() <= 0 || place.y >= region.height) {
        skipped.Set(column, row, 1);
      }
    }
  }
  return skipped;
}

}  // namespace

Bitmap DecodeHalftone(const HalftoneRegion& region, const Symbols& patterns,
                      ArithmeticDecoder& decoder) {
  const std::uint64_t grid = std::uint64_t{region.grid_width} * region.grid_height;
  if (patterns.empty() || grid > kMaxGrid) {
    throw Failure();
  }
  const Bitmap& first = *patterns.front();
  decoder.Spend(grid * static_cast<std::uint64_t>(first.width() * first.height()));
  const Bitmap skipped = region.skips ? SkippedOf(region, first) : Bitmap(0, 0);
  const GenericRegion plane_region = {
      .width = region.grid_width,
      .height = region.grid_height,
      .pattern = region.pattern,
      .adaptive = {{{region.pattern <= 1 ? 3 : 2, -1}, {-3, -1}, {2, -2}, {-2, -2}}},
      .skipped = region.skips ? &skipped : nullptr};
  // Gray-coded planes, the highest first (annex C).
  Contexts contexts = GenericContexts();
  std::vector<std::uint32_t> values(static_cast<std::size_t>(grid));
  for (unsigned left = BitsFor(patterns.size()); left > 0; --left) {
    const Bitmap plane = DecodeGeneric(plane_region, decoder, contexts);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const auto column = static_cast<std::int64_t>(i % region.grid_width);
      const auto row = static_cast<std::int64_t>(i / region.grid_width);
      values[i] = values[i] << 1U | (plane.Get(column, row) ^ (values[i] & 1U));
    }
  }
  Bitmap bitmap(region.width, region.height, region.default_pixel);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::size_t index = std::min<std::size_t>(values[i], patterns.size() - 1);
    const Place place = PlaceOf(region, static_cast<std::int64_t>(i % region.grid_width),
                                static_cast<std::int64_t>(i / region.grid_width));
    bitmap.Combine(*patterns[index], place.x, place.y, region.combination);
  }
  return bitmap;
}

}  // namespace TarnixTools::engines::jbig2
