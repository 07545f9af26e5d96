#include <algorithm>

#include "engines/support/codecs/jbig2/Jbig2Limits.h"
#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

struct Position {
  std::int64_t x;
  std::int64_t y;
};

// Where the pattern of a grid's place has its upper left corner (6.6.5.2).
Position PositionOf(const HalftoneRegion& region, std::int64_t column, std::int64_t row) {
  return {(region.grid_x + row * region.grid_vector_y + column * region.grid_vector_x) >> 8,
          (region.grid_y + row * region.grid_vector_x - column * region.grid_vector_y) >> 8};
}

// HSKIP: places of the grid whose patterns lie outside the region (6.6.5.1).
Bitmap SkipOf(const HalftoneRegion& region, const Bitmap& pattern) {
  Bitmap skip(region.grid_width, region.grid_height);
  for (std::int64_t row = 0; row < skip.height(); ++row) {
    for (std::int64_t column = 0; column < skip.width(); ++column) {
      const Position at = PositionOf(region, column, row);
      if (at.x + pattern.width() <= 0 || at.x >= region.width || at.y + pattern.height() <= 0 ||
          at.y >= region.height) {
        skip.Set(column, row, 1);
      }
    }
  }
  return skip;
}

// The gray-scale image: bitplanes in Gray code, the highest first (annex C).
std::vector<std::uint32_t> DecodeGrayValues(const HalftoneRegion& region, unsigned bitplanes,
                                            const Bitmap* skip, ArithmeticDecoder& decoder) {
  const GenericRegion bitplane = {
      .width = region.grid_width,
      .height = region.grid_height,
      .template_number = region.template_number,
      .adaptive = {{{region.template_number <= 1 ? 3 : 2, -1}, {-3, -1}, {2, -2}, {-2, -2}}},
      .skip = skip};
  Contexts contexts = GenericContexts();
  std::vector<std::uint32_t> values(std::size_t{region.grid_width} * region.grid_height);
  for (; bitplanes > 0; --bitplanes) {
    const Bitmap plane = DecodeGenericRegion(bitplane, decoder, contexts);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const auto column = static_cast<std::int64_t>(i % region.grid_width);
      const auto row = static_cast<std::int64_t>(i / region.grid_width);
      values[i] = values[i] << 1U | (plane.Get(column, row) ^ (values[i] & 1U));
    }
  }
  return values;
}

}  // namespace

Bitmap DecodeHalftoneRegion(const HalftoneRegion& region, const Symbols& patterns,
                            ArithmeticDecoder& decoder) {
  const std::uint64_t grid = std::uint64_t{region.grid_width} * region.grid_height;
  if (patterns.empty() || grid > limits::kMaxGrid) {
    throw Failure();
  }
  const Bitmap& first = *patterns.front();
  decoder.Spend(grid * static_cast<std::uint64_t>(first.width() * first.height()));
  const Bitmap skip = region.enables_skip ? SkipOf(region, first) : Bitmap(0, 0);
  const std::vector<std::uint32_t> values = DecodeGrayValues(
      region, CodeLength(patterns.size()), region.enables_skip ? &skip : nullptr, decoder);
  Bitmap bitmap(region.width, region.height, region.default_pixel);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::size_t gray = std::min<std::size_t>(values[i], patterns.size() - 1);
    const Position at = PositionOf(region, static_cast<std::int64_t>(i % region.grid_width),
                                   static_cast<std::int64_t>(i / region.grid_width));
    bitmap.Combine(*patterns[gray], at.x, at.y, region.combination_operator);
  }
  return bitmap;
}

}  // namespace TarnixTools::engines::jbig2
