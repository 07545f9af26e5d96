#include <span>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// The pixels of a pattern from the highest bit of the context on, row by row; those that adapt have
// their number, from 1 on, and stand where they are unless they are moved.
struct PatternPixel {
  std::int8_t x;
  std::int8_t y;
  std::int8_t adaptive = 0;
};

constexpr std::array<PatternPixel, 16> kPattern0 = {{{-2, -2, 4},
                                                     {-1, -2},
                                                     {0, -2},
                                                     {1, -2},
                                                     {2, -2, 3},
                                                     {-3, -1, 2},
                                                     {-2, -1},
                                                     {-1, -1},
                                                     {0, -1},
                                                     {1, -1},
                                                     {2, -1},
                                                     {3, -1, 1},
                                                     {-4, 0},
                                                     {-3, 0},
                                                     {-2, 0},
                                                     {-1, 0}}};
constexpr std::array<PatternPixel, 13> kPattern1 = {{{-1, -2},
                                                     {0, -2},
                                                     {1, -2},
                                                     {2, -2},
                                                     {-2, -1},
                                                     {-1, -1},
                                                     {0, -1},
                                                     {1, -1},
                                                     {2, -1},
                                                     {3, -1, 1},
                                                     {-3, 0},
                                                     {-2, 0},
                                                     {-1, 0}}};
constexpr std::array<PatternPixel, 10> kPattern2 = {{{-1, -2},
                                                     {0, -2},
                                                     {1, -2},
                                                     {-2, -1},
                                                     {-1, -1},
                                                     {0, -1},
                                                     {1, -1},
                                                     {2, -1, 1},
                                                     {-2, 0},
                                                     {-1, 0}}};
constexpr std::array<PatternPixel, 10> kPattern3 = {{{-3, -1},
                                                     {-2, -1},
                                                     {-1, -1},
                                                     {0, -1},
                                                     {1, -1},
                                                     {2, -1, 1},
                                                     {-4, 0},
                                                     {-3, 0},
                                                     {-2, 0},
                                                     {-1, 0}}};

constexpr std::array<std::span<const PatternPixel>, 4> kPatterns = {kPattern0, kPattern1, kPattern2,
                                                                    kPattern3};

// Of the decision whether a row is like the one above (figures 8 to 11).
constexpr std::array<std::uint32_t, 4> kRowContexts = {0x9B25, 0x0795, 0x00E5, 0x0195};

std::vector<Offset> PixelsOf(const GenericRegion& region) {
  std::vector<Offset> pixels;
  for (const PatternPixel& pixel : kPatterns[static_cast<std::size_t>(region.pattern)]) {
    const Offset offset = pixel.adaptive == 0
                              ? Offset{pixel.x, pixel.y}
                              : region.adaptive[static_cast<std::size_t>(pixel.adaptive - 1)];
    if (offset.y > 0 || (offset.y == 0 && offset.x >= 0)) {
      throw Failure();  // not decoded yet
    }
    pixels.push_back(offset);
  }
  return pixels;
}

}  // namespace

Contexts GenericContexts() {
  return Contexts(std::size_t{1} << 16U);
}

Bitmap DecodeGeneric(const GenericRegion& region, ArithmeticDecoder& decoder, Contexts& contexts) {
  const std::vector<Offset> pixels = PixelsOf(region);
  decoder.Spend(std::uint64_t{region.width} * region.height);
  Bitmap bitmap(region.width, region.height);
  bool is_like_above = false;
  for (std::int64_t y = 0; y < bitmap.height(); ++y) {
    if (region.predicts_rows) {
      Context& context = contexts[kRowContexts[static_cast<std::size_t>(region.pattern)]];
      is_like_above = is_like_above != (decoder.Decode(context) == 1);
      if (is_like_above) {
        for (std::int64_t x = 0; x < bitmap.width(); ++x) {
          bitmap.Set(x, y, static_cast<std::uint8_t>(bitmap.Get(x, y - 1)));
        }
        continue;
      }
    }
    for (std::int64_t x = 0; x < bitmap.width(); ++x) {
      if (region.skipped != nullptr && region.skipped->Get(x, y) != 0) {
        continue;
      }
      std::uint32_t context = 0;
      for (const Offset& pixel : pixels) {
        context = context << 1U | bitmap.Get(x + pixel.x, y + pixel.y);
      }
      bitmap.Set(x, y, static_cast<std::uint8_t>(decoder.Decode(contexts[context])));
    }
  }
  return bitmap;
}

}  // namespace TarnixTools::engines::jbig2
