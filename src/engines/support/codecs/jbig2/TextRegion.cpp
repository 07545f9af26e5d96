#include <optional>
#include <utility>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

constexpr std::int64_t kFarthest = std::int64_t{1} << 32U;

class Text {
 public:
  Text(const TextRegion& region, const Symbols& symbols, ArithmeticDecoder& decoder,
       TextContexts& contexts, Contexts& refinement)
      : region_(region),
        symbols_(symbols),
        decoder_(decoder),
        contexts_(contexts),
        refinement_(refinement),
        bitmap_(region.width, region.height, region.default_pixel) {}

  Bitmap Decode() {
    std::int64_t strip = -StripDistance();
    std::int64_t first = 0;
    std::uint32_t done = 0;
    while (done < region_.instances) {
      strip = Bounded(strip + StripDistance());
      first = Bounded(first + contexts_.fs.Need(decoder_));
      std::int64_t place = first;
      for (;;) {
        place = DecodeInstance(place, strip);
        ++done;
        const std::optional<std::int32_t> distance = contexts_.ds.Decode(decoder_);
        if (!distance) {
          break;
        }
        if (done >= region_.instances) {
          return std::move(bitmap_);
        }
        place = Bounded(place + *distance + region_.offset);
      }
    }
    return std::move(bitmap_);
  }

 private:
  static std::int64_t Bounded(std::int64_t value) {
    if (value > kFarthest || value < -kFarthest) {
      throw Failure();
    }
    return value;
  }

  std::int64_t StripDistance() {
    return std::int64_t{contexts_.dt.Need(decoder_)} * region_.strip_size;
  }

  // Paints a symbol and returns where along the strip it ends.
  std::int64_t DecodeInstance(std::int64_t place, std::int64_t strip) {
    const std::int64_t across = strip + (region_.strip_size == 1 ? 0 : contexts_.it.Need(decoder_));
    const std::uint32_t id = contexts_.id.Decode(decoder_);
    if (id >= symbols_.size()) {
      throw Failure();
    }
    const bool is_refined = region_.refines && contexts_.ri.Need(decoder_) != 0;
    if (!is_refined) {
      return Paint(*symbols_[id], place, across);
    }
    return Paint(Refined(*symbols_[id]), place, across);
  }

  Bitmap Refined(const Bitmap& symbol) {
    const std::int32_t dw = contexts_.rdw.Need(decoder_);
    const std::int32_t dh = contexts_.rdh.Need(decoder_);
    const std::int32_t dx = contexts_.rdx.Need(decoder_);
    const std::int32_t dy = contexts_.rdy.Need(decoder_);
    const std::int64_t width = symbol.width() + dw;
    const std::int64_t height = symbol.height() + dh;
    if (width < 0 || height < 0 || width > kFarthest || height > kFarthest) {
      throw Failure();
    }
    return DecodeRefinement({.width = static_cast<std::uint32_t>(width),
                             .height = static_cast<std::uint32_t>(height),
                             .pattern = region_.refinement_pattern,
                             .adaptive = region_.refinement_adaptive,
                             .reference = &symbol,
                             .dx = (dw >> 1) + std::int64_t{dx},
                             .dy = (dh >> 1) + std::int64_t{dy}},
                            decoder_, refinement_);
  }

  std::int64_t Paint(const Bitmap& symbol, std::int64_t place, std::int64_t across) {
    const bool is_right =
        region_.corner == Corner::kTopRight || region_.corner == Corner::kBottomRight;
    const bool is_bottom =
        region_.corner == Corner::kBottomLeft || region_.corner == Corner::kBottomRight;
    const std::int64_t along = (region_.is_transposed ? symbol.height() : symbol.width()) - 1;
    const bool moves_before = region_.is_transposed ? is_bottom : is_right;
    if (moves_before) {
      place += along;
    }
    std::int64_t x = region_.is_transposed ? across : place;
    std::int64_t y = region_.is_transposed ? place : across;
    x -= is_right ? symbol.width() - 1 : 0;
    y -= is_bottom ? symbol.height() - 1 : 0;
    decoder_.Spend(static_cast<std::uint64_t>(symbol.width() * symbol.height()) + 1);
    bitmap_.Combine(symbol, x, y, region_.combination);
    return Bounded(moves_before ? place : place + along);
  }

  const TextRegion& region_;
  const Symbols& symbols_;
  ArithmeticDecoder& decoder_;
  TextContexts& contexts_;
  Contexts& refinement_;
  Bitmap bitmap_;
};

}  // namespace

unsigned BitsFor(std::uint64_t count) {
  unsigned bits = 0;
  while ((std::uint64_t{1} << bits) < count) {
    ++bits;
  }
  return bits;
}

Bitmap DecodeText(const TextRegion& region, const Symbols& symbols, ArithmeticDecoder& decoder,
                  TextContexts& contexts, Contexts& refinement) {
  return Text(region, symbols, decoder, contexts, refinement).Decode();
}

}  // namespace TarnixTools::engines::jbig2
