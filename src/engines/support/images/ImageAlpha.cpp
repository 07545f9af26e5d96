#include "engines/support/images/ImageAlpha.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "engines/support/images/ImageColors.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

// The picture of a mask as alpha.
class MaskRows : public RowSource {
 public:
  // is_stencil: what the mask paints, black, is what is opaque.
  MaskRows(RowSourcePtr mask, bool is_stencil)
      : RowSource(mask->width(), mask->height(), PixelLayout::kGray),
        mask_(std::move(mask)),
        is_stencil_(is_stencil),
        pixels_(mask_->row_bytes()) {}

  bool ReadRow(std::uint8_t* row) override {
    const bool is_there = mask_->ReadRow(pixels_.data());
    const std::size_t bytes = BytesPerPixel(mask_->layout());
    const std::uint8_t turned = is_stencil_ ? 0xFF : 0;
    for (std::size_t x = 0; x < width(); ++x) {
      row[x] = pixels_[x * bytes] ^ turned;
    }
    return is_there;
  }

  std::uint64_t held_bytes() const override { return mask_->held_bytes(); }

 private:
  RowSourcePtr mask_;
  bool is_stencil_;
  std::vector<std::uint8_t> pixels_;
};

class ChannelRows : public RowSource {
 public:
  ChannelRows(std::vector<std::uint8_t> samples, std::uint32_t width, std::uint32_t height)
      : RowSource(width, height, PixelLayout::kGray), samples_(std::move(samples)) {}

  bool ReadRow(std::uint8_t* row) override {
    std::copy_n(samples_.data() + next_, width(), row);
    next_ += width();
    return true;
  }

  std::uint64_t held_bytes() const override { return samples_.size(); }

 private:
  std::vector<std::uint8_t> samples_;
  std::size_t next_ = 0;
};

class KeyRows : public RowSource {
 public:
  KeyRows(SampleRowsPtr samples, ColorKey key)
      : RowSource(samples->format().width, samples->format().height, PixelLayout::kGray),
        samples_(std::move(samples)),
        key_(std::move(key)) {}

  bool ReadRow(std::uint8_t* row) override {
    const std::span<const std::uint8_t> samples = samples_->ReadRow();
    key_.AlphaOf(samples, row);
    return samples.size() == samples_->format().row_bytes();
  }

  std::uint64_t held_bytes() const override { return samples_->held_bytes(); }

 private:
  SampleRowsPtr samples_;
  ColorKey key_;
};

RowSourcePtr OpenPictureOfMask(const DocumentImage& mask, const ImageFacts& facts) {
  try {
    ImageColors picture = OpenColors(mask, facts);
    return picture.colors != nullptr ? std::move(picture.colors) : std::move(picture.drawn);
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return nullptr;  // an image without its mask is better than none
  }
}

std::optional<ImageAlpha> OpenKey(const DocumentImage& image, const ImageFacts& facts) {
  std::optional<ImageSamples> samples = OpenSamples(image, facts);
  std::optional<ColorKey> key =
      samples ? ColorKey::Make(facts.color_key, samples->rows->format()) : std::nullopt;
  if (!key) {
    return std::nullopt;
  }
  ImageAlpha alpha;
  alpha.rows = std::make_unique<KeyRows>(std::move(samples->rows), *std::move(key));
  return alpha;
}

std::optional<ImageAlpha> OpenChannel(const DocumentImage& image, const ImageFacts& facts) {
  std::optional<ImageSamples> samples = OpenSamples(image, facts);
  if (!samples || !samples->alpha) {
    return std::nullopt;
  }
  const SampleFormat& format = samples->rows->format();
  return AlphaOfChannel(*std::move(samples->alpha), format.width, format.height);
}

}  // namespace

AlphaKind AlphaKindOf(const ImageFacts& facts) {
  if (facts.soft_mask != 0) {
    return AlphaKind::kSoftMask;
  }
  if (facts.uses_jpx_alpha && facts.filter == ImageFilter::kJpx) {
    return AlphaKind::kChannel;
  }
  if (facts.stencil_mask != 0) {
    return AlphaKind::kStencilMask;
  }
  return facts.color_key.empty() ? AlphaKind::kNone : AlphaKind::kColorKey;
}

std::optional<ImageAlpha> OpenAlpha(const DocumentImage& image, const ImageFacts& facts) {
  switch (AlphaKindOf(facts)) {
    case AlphaKind::kSoftMask:
    case AlphaKind::kStencilMask:
      return OpenMask(image, facts);
    case AlphaKind::kChannel:
      return OpenChannel(image, facts);
    case AlphaKind::kColorKey:
      return OpenKey(image, facts);
    default:
      return std::nullopt;
  }
}

std::optional<ImageAlpha> OpenMask(const DocumentImage& image, const ImageFacts& facts) {
  const bool is_stencil = facts.soft_mask == 0;
  const std::uint32_t number = is_stencil ? facts.stencil_mask : facts.soft_mask;
  if (number == 0) {
    return std::nullopt;
  }
  pdf::Arena arena;
  const DocumentImage mask = ImageObjectOf(*image.document, number, arena);
  const ImageFacts facts_of_mask = FactsOf(mask, arena);
  RowSourcePtr picture = OpenPictureOfMask(mask, facts_of_mask);
  if (picture == nullptr) {
    return std::nullopt;
  }
  ImageAlpha alpha;
  const bool is_alpha = !is_stencil && picture->layout() == PixelLayout::kGray;
  alpha.rows =
      is_alpha ? std::move(picture) : std::make_unique<MaskRows>(std::move(picture), is_stencil);
  if (!is_stencil) {
    alpha.matte = facts_of_mask.matte;
  }
  return alpha;
}

ImageAlpha AlphaOfChannel(AlphaChannel channel, std::uint32_t width, std::uint32_t height) {
  ImageAlpha alpha;
  alpha.rows = std::make_unique<ChannelRows>(std::move(channel.samples), width, height);
  alpha.is_premultiplied = channel.is_premultiplied;
  return alpha;
}

std::optional<ColorKey> ColorKey::Make(const std::vector<std::int64_t>& ranges,
                                       const SampleFormat& format) {
  if (ranges.empty() || ranges.size() < 2 * static_cast<std::size_t>(format.components)) {
    return std::nullopt;
  }
  return ColorKey(ranges, format);
}

ColorKey::ColorKey(const std::vector<std::int64_t>& ranges, const SampleFormat& format)
    : format_(format) {
  const int shift = format.bits == 16 ? 8 : 0;
  for (std::size_t c = 0; c < static_cast<std::size_t>(format.components); ++c) {
    ranges_.push_back({ranges[2 * c] >> shift, ranges[2 * c + 1] >> shift});
  }
}

void ColorKey::AlphaOf(std::span<const std::uint8_t> samples, std::uint8_t* alpha) {
  const std::size_t components = ranges_.size();
  const std::size_t there = std::min<std::size_t>(
      samples.size() * 8 / (components * static_cast<std::size_t>(format_.bits)), format_.width);
  samples_.resize(there * components);
  UnpackSamples(samples.data(), format_.bits, samples_.size(), samples_.data());
  for (std::size_t x = 0; x < there; ++x) {
    bool is_keyed = true;
    for (std::size_t c = 0; c < components && is_keyed; ++c) {
      const std::uint8_t sample = samples_[x * components + c];
      is_keyed = sample >= ranges_[c].least && sample <= ranges_[c].most;
    }
    alpha[x] = is_keyed ? 0 : 255;
  }
  std::fill(alpha + there, alpha + format_.width, std::uint8_t{255});
}

}  // namespace TarnixTools::engines
