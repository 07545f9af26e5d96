#include <span>
#include <utility>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// A pixel of a template as the standard draws it. One that is adaptive has its number, from 1 on: the
// region says where it stands, and its coordinates here are those that it nominally has.
struct DrawnPixel {
  std::int8_t x;
  std::int8_t y;
  std::int8_t adaptive = 0;
};

// The templates (figures 3 to 6), from the highest bit of the context on, row by row.

constexpr std::array<DrawnPixel, 16> kTemplate0 = {{{-2, -2, 4},
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
constexpr std::array<DrawnPixel, 13> kTemplate1 = {{{-1, -2},
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
constexpr std::array<DrawnPixel, 10> kTemplate2 = {{{-1, -2},
                                                    {0, -2},
                                                    {1, -2},
                                                    {-2, -1},
                                                    {-1, -1},
                                                    {0, -1},
                                                    {1, -1},
                                                    {2, -1, 1},
                                                    {-2, 0},
                                                    {-1, 0}}};
constexpr std::array<DrawnPixel, 10> kTemplate3 = {{{-3, -1},
                                                    {-2, -1},
                                                    {-1, -1},
                                                    {0, -1},
                                                    {1, -1},
                                                    {2, -1, 1},
                                                    {-4, 0},
                                                    {-3, 0},
                                                    {-2, 0},
                                                    {-1, 0}}};

constexpr std::array<std::span<const DrawnPixel>, 4> kTemplates = {kTemplate0, kTemplate1,
                                                                   kTemplate2, kTemplate3};

std::vector<TemplatePixel> PixelsOf(const GenericRegion& region) {
  std::vector<TemplatePixel> pixels;
  for (const DrawnPixel& drawn : kTemplates[static_cast<std::size_t>(region.template_number)]) {
    const TemplatePixel pixel = drawn.adaptive == 0
                                    ? TemplatePixel{drawn.x, drawn.y}
                                    : region.adaptive[static_cast<std::size_t>(drawn.adaptive - 1)];
    if (pixel.y > 0 || (pixel.y == 0 && pixel.x >= 0)) {
      throw Failure();  // not decoded yet
    }
    pixels.push_back(pixel);
  }
  return pixels;
}

class GenericDecoder {
 public:
  GenericDecoder(const GenericRegion& region, ArithmeticDecoder& decoder, Contexts& contexts)
      : region_(region),
        decoder_(decoder),
        contexts_(contexts),
        pixels_(PixelsOf(region)),
        bitmap_(region.width, region.height) {}

  Bitmap Decode() {
    bool ltp = false;
    for (std::int64_t y = 0; y < bitmap_.height(); ++y) {
      ltp = ltp != DecodeSltp();
      if (ltp) {
        CopyRowAbove(y);
      } else {
        DecodeRow(y);
      }
    }
    return std::move(bitmap_);
  }

 private:
  bool DecodeSltp() {
    return region_.typical_prediction &&
           decoder_.Decode(
               contexts_[kTypicalContexts[static_cast<std::size_t>(region_.template_number)]]) == 1;
  }

  void CopyRowAbove(std::int64_t y) {
    for (std::int64_t x = 0; x < bitmap_.width(); ++x) {
      bitmap_.Set(x, y, static_cast<std::uint8_t>(bitmap_.Get(x, y - 1)));
    }
  }

  void DecodeRow(std::int64_t y) {
    for (std::int64_t x = 0; x < bitmap_.width(); ++x) {
      if (region_.skip != nullptr && region_.skip->Get(x, y) != 0) {
        continue;
      }
      std::uint32_t context = 0;
      for (const TemplatePixel& pixel : pixels_) {
        context = context << 1U | bitmap_.Get(x + pixel.x, y + pixel.y);
      }
      bitmap_.Set(x, y, static_cast<std::uint8_t>(decoder_.Decode(contexts_[context])));
    }
  }

  const GenericRegion& region_;
  ArithmeticDecoder& decoder_;
  Contexts& contexts_;
  std::vector<TemplatePixel> pixels_;
  Bitmap bitmap_;
};

}  // namespace

Contexts GenericContexts() {
  return Contexts(std::size_t{1} << 16U);
}

Bitmap DecodeGenericRegion(const GenericRegion& region, ArithmeticDecoder& decoder,
                           Contexts& contexts) {
  decoder.Spend(std::uint64_t{region.width} * region.height);
  return GenericDecoder(region, decoder, contexts).Decode();
}

}  // namespace TarnixTools::engines::jbig2
