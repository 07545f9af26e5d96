#include <optional>
#include <utility>

#include "engines/support/codecs/jbig2/Jbig2Limits.h"
#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {
namespace {

class TextDecoder {
 public:
  TextDecoder(const TextRegion& region, const Symbols& symbols, ArithmeticDecoder& decoder,
              TextDecoders& decoders, Contexts& refinement_contexts)
      : region_(region),
        symbols_(symbols),
        decoder_(decoder),
        decoders_(decoders),
        refinement_contexts_(refinement_contexts),
        bitmap_(region.width, region.height, region.default_pixel) {}

  Bitmap Decode() {
    std::int64_t strip_t = -DecodeStripDistance();
    std::int64_t first_s = 0;
    while (decoded_ < region_.instances) {
      strip_t = Bounded(strip_t + DecodeStripDistance());
      first_s = Bounded(first_s + decoders_.iafs.Need(decoder_));
      DecodeStrip(first_s, strip_t);
    }
    return std::move(bitmap_);
  }

 private:
  // Instances of a strip up to OOB, or to the last one that the region has.
  void DecodeStrip(std::int64_t s, std::int64_t strip_t) {
    for (;;) {
      s = DecodeInstance(s, strip_t);
      ++decoded_;
      const std::optional<std::int32_t> distance = decoders_.iads.Decode(decoder_);
      if (!distance || decoded_ >= region_.instances) {
        return;
      }
      s = Bounded(s + *distance + region_.s_offset);
    }
  }

  static std::int64_t Bounded(std::int64_t value) {
    if (value > limits::kFarthest || value < -limits::kFarthest) {
      throw Failure();
    }
    return value;
  }

  std::int64_t DecodeStripDistance() {
    return std::int64_t{decoders_.iadt.Need(decoder_)} * region_.strip_size;
  }

  // Paints a symbol instance and returns where it ends (6.4.5, from step 3 c on).
  std::int64_t DecodeInstance(std::int64_t s, std::int64_t strip_t) {
    const std::int64_t t = strip_t + (region_.strip_size == 1 ? 0 : decoders_.iait.Need(decoder_));
    const std::uint32_t id = decoders_.iaid.Decode(decoder_);
    if (id >= symbols_.size()) {
      throw Failure();
    }
    const bool is_refined = region_.uses_refinement && decoders_.iari.Need(decoder_) != 0;
    return is_refined ? Paint(Refined(*symbols_[id]), s, t) : Paint(*symbols_[id], s, t);
  }

  // The bitmap of an instance that refines its symbol (6.4.11).
  Bitmap Refined(const Bitmap& symbol) {
    const std::int32_t dw = decoders_.iardw.Need(decoder_);
    const std::int32_t dh = decoders_.iardh.Need(decoder_);
    const std::int32_t dx = decoders_.iardx.Need(decoder_);
    const std::int32_t dy = decoders_.iardy.Need(decoder_);
    const std::int64_t width = symbol.width() + dw;
    const std::int64_t height = symbol.height() + dh;
    if (width < 0 || height < 0 || width > limits::kFarthest || height > limits::kFarthest) {
      throw Failure();
    }
    return DecodeRefinementRegion({.width = static_cast<std::uint32_t>(width),
                                   .height = static_cast<std::uint32_t>(height),
                                   .template_number = region_.refinement_template,
                                   .adaptive = region_.refinement_adaptive,
                                   .reference = &symbol,
                                   .reference_dx = (dw >> 1) + std::int64_t{dx},
                                   .reference_dy = (dh >> 1) + std::int64_t{dy}},
                                  decoder_, refinement_contexts_);
  }

  // S goes on by the instance's length before it is painted where the reference corner is at the far
  // end of it, and afterwards otherwise (6.4.5, step 3 c).
  std::int64_t Paint(const Bitmap& instance, std::int64_t s, std::int64_t t) {
    const ReferenceCorner corner = region_.reference_corner;
    const bool is_right =
        corner == ReferenceCorner::kTopRight || corner == ReferenceCorner::kBottomRight;
    const bool is_bottom =
        corner == ReferenceCorner::kBottomLeft || corner == ReferenceCorner::kBottomRight;
    const std::int64_t length = (region_.is_transposed ? instance.height() : instance.width()) - 1;
    const bool moves_before = region_.is_transposed ? is_bottom : is_right;
    const std::int64_t corner_s = moves_before ? s + length : s;
    const std::int64_t x = region_.is_transposed ? t : corner_s;
    const std::int64_t y = region_.is_transposed ? corner_s : t;
    decoder_.Spend(static_cast<std::uint64_t>(instance.width() * instance.height()) + 1);
    bitmap_.Combine(instance, is_right ? x - (instance.width() - 1) : x,
                    is_bottom ? y - (instance.height() - 1) : y, region_.combination_operator);
    return Bounded(s + length);
  }

  const TextRegion& region_;
  const Symbols& symbols_;
  ArithmeticDecoder& decoder_;
  TextDecoders& decoders_;
  Contexts& refinement_contexts_;
  Bitmap bitmap_;
  std::uint32_t decoded_ = 0;  // instances, NINSTANCES
};

}  // namespace

unsigned CodeLength(std::uint64_t count) {
  unsigned bits = 0;
  while ((std::uint64_t{1} << bits) < count) {
    ++bits;
  }
  return bits;
}

Bitmap DecodeTextRegion(const TextRegion& region, const Symbols& symbols,
                        ArithmeticDecoder& decoder, TextDecoders& decoders,
                        Contexts& refinement_contexts) {
  return TextDecoder(region, symbols, decoder, decoders, refinement_contexts).Decode();
}

}  // namespace TarnixTools::engines::jbig2
