#include "engines/support/images/ImageSamples.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "engines/support/codecs/JpxDecoder.h"
#include "engines/support/images/DecodedSamples.h"
#include "engines/support/images/ImageLimits.h"
#include "engines/support/images/Jbig2Image.h"
#include "engines/support/pictures/PictureLimits.h"
#include "pdf/Error.h"
#include "pdf/Limits.h"

namespace TarnixTools::engines {
namespace {

using Opened = std::optional<ImageSamples>;

class SampleOpener {
 public:
  SampleOpener(const DocumentImage& image, const ImageFacts& facts,
               const std::optional<ColorSpace>& space, PictureSize least)
      : image_(image), facts_(facts), space_(space), least_(least) {}

  Opened Open() {
    switch (facts_.filter) {
      case ImageFilter::kNone:
        return space_ ? Opened(OpenPlain()) : std::nullopt;
      case ImageFilter::kCcitt:
        return IsBilevel() ? OpenCcitt() : std::nullopt;
      case ImageFilter::kJbig2:
        return IsBilevel() ? OpenJbig2() : std::nullopt;
      case ImageFilter::kDct:
        return OpenJpeg();
      case ImageFilter::kJpx:
        return OpenJpx();
      default:
        return std::nullopt;
    }
  }

 private:
  // Whether a component of one bit can be the colour.
  bool IsBilevel() const { return space_ && space_->components == 1; }

  SampleFormat FormatOf(int bits, std::uint64_t height) const {
    return {.width = facts_.width,
            .height = static_cast<std::uint32_t>(height),
            .components = space_->components,
            .bits = bits};
  }

  // Samples in the colour space of the dictionary.
  ImageSamples Made(SampleRowsPtr rows) const {
    return {.rows = std::move(rows), .space = *space_, .decode = facts_.decode, .alpha = {}};
  }

  ImageSamples OpenPlain() const {
    const std::uint64_t row = FormatOf(facts_.bits, 0).row_bytes();
    if (facts_.steps.size() == 1 && facts_.steps[0].kind == pdf::FilterKind::kFlate &&
        row * facts_.height > MostAtOnce()) {
      if (SampleRowsPtr rows = OpenFlate(row)) {
        return Made(std::move(rows));
      }
    }
    std::string samples = DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes);
    const std::uint64_t height =
        HeightFor(samples.size() / row + (samples.size() % row != 0 ? 1 : 0));
    return Made(std::make_unique<HeldSamples<std::string>>(FormatOf(facts_.bits, height),
                                                           std::move(samples)));
  }

  // Bytes. A picture that becomes a small one is not to take more memory than that.
  std::uint64_t MostAtOnce() const {
    return least_.width <= facts_.width ? limits::kMaxSamplesAtOnceForLess
                                        : limits::kMaxSamplesAtOnce;
  }

  // Null where it has to be decoded at once to know what there is.
  SampleRowsPtr OpenFlate(std::uint64_t row) const {
    auto encoded =
        std::make_unique<const std::string>(EncodedData(image_, limits::kMaxSampleBytes));
    auto reader = pdf::FlateReader::Open(*encoded, facts_.steps[0].parameters);
    if (reader == nullptr) {
      return nullptr;
    }
    const std::uint64_t height = HeightFor(pdf::limits::kMaxExpansion * encoded->size() / row + 1);
    if (height * row > limits::kMaxStreamedSamples) {
      throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the image has too many samples");
    }
    return std::make_unique<FlateSamples>(FormatOf(facts_.bits, height), std::move(encoded),
                                          std::move(reader));
  }

  // Images may claim a size that their data is far from having.
  std::uint64_t HeightFor(std::uint64_t rows_with_data) const {
    const std::uint64_t empty = limits::kMaxPixelsWithoutData / facts_.width;
    return std::clamp<std::uint64_t>(std::max(rows_with_data, empty), 1, facts_.height);
  }

  Opened OpenCcitt() {
    const std::optional<CcittParameters> parameters = CcittParametersOf(image_, facts_);
    if (!parameters) {
      return std::nullopt;
    }
    auto encoded = std::make_unique<const std::string>(
        DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes));
    // A row takes a bit at least.
    const std::uint64_t height = HeightFor(8 * std::uint64_t{encoded->size()});
    return Made(
        std::make_unique<CcittSamples>(FormatOf(1, height), *parameters, std::move(encoded)));
  }

  Opened OpenJbig2() const {
    const SampleFormat format = FormatOf(1, facts_.height);
    if (std::uint64_t{format.row_bytes()} * format.height > limits::kMaxSampleBytes) {
      return std::nullopt;
    }
    std::optional<Jbig2Rows> decoded = DecodeJbig2Image(image_, facts_);
    if (!decoded) {
      return std::nullopt;
    }
    ImageSamples samples =
        Made(std::make_unique<HeldSamples<std::string>>(format, std::move(decoded->rows)));
    samples.is_complete = decoded->is_complete;
    return samples;
  }

  Opened OpenJpeg() {
    auto encoded = std::make_unique<const std::string>(
        DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes));
    const auto transform = static_cast<int>(
        image_.document->Resolve(facts_.filter_parameters.Get("ColorTransform"), arena_)
            .IntegerOr(-1));
    std::unique_ptr<JpegReader> reader = JpegReader::Open(*encoded, transform, least_);
    if (reader == nullptr) {
      return std::nullopt;
    }
    ColorSpace space = SpaceOfJpeg(reader->components());
    return ImageSamples{
        .rows = std::make_unique<JpegSamples>(std::move(reader), std::move(encoded)),
        .space = std::move(space),
        .decode = facts_.decode,
        .alpha = {}};
  }

  // What the components of the data mean.
  ColorSpace SpaceOfJpeg(int components) const {
    if (space_ && space_->components == components) {
      return *space_;
    }
    ColorSpace space = DeviceSpace(components);
    if (!space_ || !space_->is_computed()) {
      space.kind = ColorKind::kInks;  // of some kind: nobody can tell
    }
    return space;
  }

  // Without a colour space in the dictionary that of the data counts; with one, its colours do.
  Opened OpenJpx() const {
    const bool has_space = facts_.is_mask || !facts_.color_space.IsNull();
    if (has_space && !space_) {
      return std::nullopt;
    }
    const bool is_index = has_space && space_->kind == ColorKind::kIndexed;
    std::optional<JpxSamples> decoded =
        DecodeJpx(DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes),
                  is_index ? JpxDepth::kIndex : JpxDepth::kScaled);
    if (!decoded) {
      return std::nullopt;
    }
    const auto wanted = has_space ? static_cast<std::size_t>(space_->components) : 0;
    const bool has_others =
        wanted == 0 || decoded->components < wanted ||
        (decoded->colors != 0 && decoded->colors != wanted && !is_index && !facts_.is_mask);
    return MadeOfJpx(*std::move(decoded), has_others);
  }

  // has_own_space: the dictionary's colour space is not that of the data.
  ImageSamples MadeOfJpx(JpxSamples decoded, bool has_own_space) const {
    ImageSamples samples;
    samples.space = has_own_space ? SpaceOfJpx(decoded) : *space_;
    KeepComponents(decoded, static_cast<std::size_t>(samples.space.components));
    const SampleFormat format{.width = decoded.width,
                              .height = decoded.height,
                              .components = samples.space.components,
                              .bits = 8};
    if (facts_.is_mask) {
      samples.decode = facts_.decode;
    }
    if (facts_.uses_jpx_alpha && facts_.soft_mask == 0 && !decoded.alpha.empty()) {
      samples.alpha = AlphaChannel{.samples = std::move(decoded.alpha),
                                   .is_premultiplied = decoded.is_alpha_mixed_in};
    }
    samples.rows = std::make_unique<HeldSamples<std::vector<std::uint8_t>>>(
        format, std::move(decoded.samples));
    return samples;
  }

  static ColorSpace SpaceOfJpx(const JpxSamples& samples) {
    const std::size_t known = std::min(samples.colors, samples.components);
    const std::size_t colors = known != 0 && known != 2 ? known : samples.components;
    const int components = colors >= 4 ? 4 : colors == 3 ? 3 : 1;
    ColorSpace space = DeviceSpace(components);
    if (components > 1 && !samples.profile.empty() && !IccTransform::IsSrgb(samples.profile)) {
      space.icc = IccTransform::Make(samples.profile, components);
      space.kind = space.icc != nullptr ? ColorKind::kIcc : space.kind;
    }
    return space;
  }

  // The first of every pixel.
  static void KeepComponents(JpxSamples& samples, std::size_t components) {
    if (samples.components == components) {
      return;
    }
    const std::size_t pixels = std::size_t{samples.width} * samples.height;
    for (std::size_t i = 0; i < pixels; ++i) {
      for (std::size_t c = 0; c < components; ++c) {
        samples.samples[i * components + c] = samples.samples[i * samples.components + c];
      }
    }
    samples.components = components;
    samples.samples.resize(pixels * components);
  }

  const DocumentImage& image_;
  const ImageFacts& facts_;
  const std::optional<ColorSpace>& space_;
  PictureSize least_;
  pdf::Arena arena_;
};

}  // namespace

std::optional<ColorSpace> SpaceOf(const DocumentImage& image, const ImageFacts& facts) {
  if (facts.is_mask) {
    return DeviceSpace(1);
  }
  pdf::Arena arena;
  return ColorSpaceOf(*image.document, facts.color_space, arena);
}

std::optional<ImageSamples> OpenSamples(const DocumentImage& image, const ImageFacts& facts) {
  return OpenSamples(image, facts, SpaceOf(image, facts), kWholePicture);
}

std::optional<ImageSamples> OpenSamples(const DocumentImage& image, const ImageFacts& facts,
                                        const std::optional<ColorSpace>& space, PictureSize least) {
  if (facts.width == 0 || facts.height == 0) {
    return std::nullopt;
  }
  return SampleOpener(image, facts, space, least).Open();
}

std::optional<CcittParameters> CcittParametersOf(const DocumentImage& image,
                                                 const ImageFacts& facts) {
  pdf::Arena arena;
  const auto value = [&](std::string_view key) {
    return image.document->Resolve(facts.filter_parameters.Get(key), arena);
  };
  CcittParameters parameters;
  parameters.k = value("K").IntegerOr(0);
  parameters.is_byte_aligned = value("EncodedByteAlign").BooleanOr(false);
  parameters.has_ends_of_line = value("EndOfLine").BooleanOr(false);
  parameters.black_is_1 = value("BlackIs1").BooleanOr(false);
  const std::int64_t columns = value("Columns").IntegerOr(1728);
  if (columns < 1 || columns > limits::kMaxSide) {
    return std::nullopt;
  }
  parameters.columns = static_cast<std::uint32_t>(columns);
  return parameters;
}

}  // namespace TarnixTools::engines
