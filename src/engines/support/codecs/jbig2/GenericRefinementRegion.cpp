#include <utility>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// The contexts of the decision SLTP: whether LTP changes, which says that a row has pixels that are
// predicted. In them only the pixel of the reference that lies under the decoded one is 1 (figures 14
// and 15).
constexpr std::array<std::uint32_t, 2> kTypicalContexts = {0x0020, 0x0008};

class RefinementDecoder {
 public:
  RefinementDecoder(const RefinementRegion& region, ArithmeticDecoder& decoder, Contexts& contexts)
      : region_(region),
        decoder_(decoder),
        contexts_(contexts),
        bitmap_(region.width, region.height) {
    if (region.template_number == 0) {
      UseTemplate0(region.adaptive);
    } else {
      decoded_pixels_ = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}};
      reference_pixels_ = {{0, -1}, {-1, 0}, {0, 0}, {1, 0}, {0, 1}, {1, 1}};
    }
  }

  Bitmap Decode() {
    decoder_.Spend(std::uint64_t{region_.width} * region_.height);
    bool ltp = false;
    for (std::int64_t y = 0; y < bitmap_.height(); ++y) {
      if (region_.typical_prediction) {
        Context& context =
            contexts_[kTypicalContexts[static_cast<std::size_t>(region_.template_number)]];
        ltp = ltp != (decoder_.Decode(context) == 1);
      }
      for (std::int64_t x = 0; x < bitmap_.width(); ++x) {
        const bool is_predicted = ltp && IsUniform(x, y);
        bitmap_.Set(x, y,
                    is_predicted ? static_cast<std::uint8_t>(Reference(x, y))
                                 : static_cast<std::uint8_t>(decoder_.Decode(ContextOf(x, y))));
      }
    }
    return std::move(bitmap_);
  }

 private:
  void UseTemplate0(const RefinementAdaptivePixels& adaptive) {
    const auto [decoded, reference] = adaptive;
    if (decoded.y > 0 || (decoded.y == 0 && decoded.x >= 0)) {
      throw Failure();  // not decoded yet
    }
    decoded_pixels_ = {{0, -1}, {1, -1}, {-1, 0}, decoded};
    reference_pixels_ = {{0, -1}, {1, -1}, {-1, 0}, {0, 0},   {1, 0},
                         {-1, 1}, {0, 1},  {1, 1},  reference};
  }

  std::uint32_t Reference(std::int64_t x, std::int64_t y) const {
    return region_.reference->Get(x - region_.reference_dx, y - region_.reference_dy);
  }

  // Whether the reference's pixel there and the eight around it have one value (6.3.5.6).
  bool IsUniform(std::int64_t x, std::int64_t y) const {
    const std::uint32_t value = Reference(x, y);
    for (int dy = -1; dy <= 1; ++dy) {
      for (int dx = -1; dx <= 1; ++dx) {
        if (Reference(x + dx, y + dy) != value) {
          return false;
        }
      }
    }
    return true;
  }

  Context& ContextOf(std::int64_t x, std::int64_t y) {
    std::uint32_t context = 0;
    for (const TemplatePixel& pixel : decoded_pixels_) {
      context = context << 1U | bitmap_.Get(x + pixel.x, y + pixel.y);
    }
    for (const TemplatePixel& pixel : reference_pixels_) {
      context = context << 1U | Reference(x + pixel.x, y + pixel.y);
    }
    return contexts_[context];
  }

  const RefinementRegion& region_;
  ArithmeticDecoder& decoder_;
  Contexts& contexts_;
  Bitmap bitmap_;
  // The pixels of the template: in the bitmap that is decoded, and in the reference.
  std::vector<TemplatePixel> decoded_pixels_;
  std::vector<TemplatePixel> reference_pixels_;
};

}  // namespace

Contexts RefinementContexts() {
  return Contexts(std::size_t{1} << 13U);
}

Bitmap DecodeRefinementRegion(const RefinementRegion& region, ArithmeticDecoder& decoder,
                              Contexts& contexts) {
  return RefinementDecoder(region, decoder, contexts).Decode();
}

}  // namespace TarnixTools::engines::jbig2
