#include <utility>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// Of the decision whether a row's pixels are predicted: only the pixel of the reference at the same
// place is black (figures 14 and 15).
constexpr std::array<std::uint32_t, 2> kRowContexts = {0x0020, 0x0008};

class Refinement {
 public:
  Refinement(const RefinementRegion& region, ArithmeticDecoder& decoder, Contexts& contexts)
      : region_(region),
        decoder_(decoder),
        contexts_(contexts),
        bitmap_(region.width, region.height) {
    if (region.pattern == 0) {
      const Offset own = region.adaptive[0];
      if (own.y > 0 || (own.y == 0 && own.x >= 0)) {
        throw Failure();  // not decoded yet
      }
      own_ = {{0, -1}, {1, -1}, {-1, 0}, own};
      other_ = {{0, -1}, {1, -1}, {-1, 0},           {0, 0}, {1, 0}, {-1, 1},
                {0, 1},  {1, 1},  region.adaptive[1]};
    } else {
      own_ = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}};
      other_ = {{0, -1}, {-1, 0}, {0, 0}, {1, 0}, {0, 1}, {1, 1}};
    }
  }

  Bitmap Decode() {
    decoder_.Spend(std::uint64_t{region_.width} * region_.height);
    bool predicts = false;
    for (std::int64_t y = 0; y < bitmap_.height(); ++y) {
      if (region_.predicts_pixels) {
        Context& context = contexts_[kRowContexts[static_cast<std::size_t>(region_.pattern)]];
        predicts = predicts != (decoder_.Decode(context) == 1);
      }
      for (std::int64_t x = 0; x < bitmap_.width(); ++x) {
        const bool is_told = predicts && IsUniform(x, y);
        bitmap_.Set(x, y,
                    is_told ? static_cast<std::uint8_t>(Reference(x, y))
                            : static_cast<std::uint8_t>(decoder_.Decode(ContextOf(x, y))));
      }
    }
    return std::move(bitmap_);
  }

 private:
  std::uint32_t Reference(std::int64_t x, std::int64_t y) const {
    return region_.reference->Get(x - region_.dx, y - region_.dy);
  }

  // Whether all of the reference around the place has one colour.
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
    for (const Offset& pixel : own_) {
      context = context << 1U | bitmap_.Get(x + pixel.x, y + pixel.y);
    }
    for (const Offset& pixel : other_) {
      context = context << 1U | Reference(x + pixel.x, y + pixel.y);
    }
    return contexts_[context];
  }

  const RefinementRegion& region_;
  ArithmeticDecoder& decoder_;
  Contexts& contexts_;
  Bitmap bitmap_;
  std::vector<Offset> own_;
  std::vector<Offset> other_;
};

}  // namespace

Contexts RefinementContexts() {
  return Contexts(std::size_t{1} << 13U);
}

Bitmap DecodeRefinement(const RefinementRegion& region, ArithmeticDecoder& decoder,
                        Contexts& contexts) {
  return Refinement(region, decoder, contexts).Decode();
}

}  // namespace TarnixTools::engines::jbig2
