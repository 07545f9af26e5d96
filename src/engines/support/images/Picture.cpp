#include "engines/support/images/Picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/codecs/JpxDecoder.h"
#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/DecodedRows.h"
#include "engines/support/images/ImageLimits.h"
#include "engines/support/images/Jbig2Image.h"
#include "engines/support/images/PdfiumPicture.h"
#include "engines/support/images/RowConverter.h"
#include "engines/support/pictures/ComposedRows.h"
#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/filters/FlateReader.h"

namespace TarnixTools::engines {
namespace {

class PictureOpener {
 public:
  PictureOpener(const DocumentImage& image, const ImageFacts& facts, PictureSize least)
      : image_(image), facts_(facts), least_(least) {}

  RowSourcePtr Open() {
    if (facts_.filter == ImageFilter::kNone) {
      return OpenSamples();
    }
    if (facts_.filter == ImageFilter::kCcitt) {
      return OpenCcitt();
    }
    if (facts_.filter == ImageFilter::kJpx) {
      return OpenJpx();
    }
    if (facts_.filter == ImageFilter::kJbig2) {
      return OpenJbig2();
    }
    return facts_.filter == ImageFilter::kDct ? OpenJpeg() : OpenOther();
  }

  // Whether what Open gave is masked already.
  bool is_masked() const { return is_masked_; }

 private:
  // Nothing for one that is not computed here.
  std::optional<ColorSpace> Space() {
    if (facts_.is_mask) {
      return DeviceSpace(1);
    }
    auto space = ColorSpaceOf(*image_.document, facts_.color_space, arena_);
    return space && space->is_computed() ? std::move(space) : std::nullopt;
  }

  RowSourcePtr OpenSamples() {
    const std::optional<ColorSpace> space = Space();
    if (!space) {
      return OpenOther();
    }
    RowConverter converter(*space, facts_, facts_.bits, facts_.width);
    const std::uint64_t row = converter.packed_bytes();
    if (facts_.steps.size() == 1 && facts_.steps[0].kind == pdf::FilterKind::kFlate &&
        row * facts_.height > MostAtOnce()) {
      if (RowSourcePtr rows = OpenFlate(converter)) {
        return rows;
      }
    }
    std::string samples = DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes);
    const std::uint64_t height =
        HeightFor(samples.size() / row + (samples.size() % row != 0 ? 1 : 0));
    return std::make_unique<SampleRows>(std::move(converter), facts_.width,
                                        static_cast<std::uint32_t>(height), std::move(samples));
  }

  // Bytes. A picture that becomes a small one is not to take more memory than that.
  std::uint64_t MostAtOnce() const {
    return least_.width <= facts_.width ? limits::kMaxSamplesAtOnceForLess
                                        : limits::kMaxSamplesAtOnce;
  }

  // Null where it has to be decoded at once to know what there is.
  RowSourcePtr OpenFlate(const RowConverter& converter) {
    auto encoded =
        std::make_unique<const std::string>(EncodedData(image_, limits::kMaxSampleBytes));
    auto reader = pdf::FlateReader::Open(*encoded, facts_.steps[0].parameters);
    if (reader == nullptr) {
      return nullptr;
    }
    const std::uint64_t height =
        HeightFor(pdf::limits::kMaxExpansion * encoded->size() / converter.packed_bytes() + 1);
    if (height * converter.packed_bytes() > limits::kMaxStreamedSamples) {
      throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the image has too many samples");
    }
    return std::make_unique<FlateRows>(converter, facts_.width, static_cast<std::uint32_t>(height),
                                       std::move(encoded), std::move(reader));
  }

  // Images may claim a size that their data is far from having.
  std::uint64_t HeightFor(std::uint64_t rows_with_data) const {
    const std::uint64_t empty = limits::kMaxPixelsWithoutData / facts_.width;
    return std::clamp<std::uint64_t>(std::max(rows_with_data, empty), 1, facts_.height);
  }

  RowSourcePtr OpenJpeg() {
    auto encoded = std::make_unique<const std::string>(
        DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes));
    const auto transform = static_cast<int>(
        image_.document->Resolve(facts_.filter_parameters.Get("ColorTransform"), arena_)
            .IntegerOr(-1));
    std::unique_ptr<JpegReader> reader = JpegReader::Open(*encoded, transform, least_);
    if (reader == nullptr) {
      return nullptr;
    }
    std::optional<ColorSpace> space = Space();
    if (!space && !facts_.color_space.IsNull()) {
      return OpenOther();
    }
    if (!space || space->components != reader->components()) {
      space = DeviceSpace(reader->components());
    }
    RowConverter converter(*std::move(space), facts_, 8, reader->width());
    return std::make_unique<JpegRows>(std::move(converter), std::move(reader), std::move(encoded));
  }

  RowSourcePtr OpenJbig2() {
    const std::optional<ColorSpace> space = Space();
    const std::uint64_t row_bytes = (std::uint64_t{facts_.width} + 7) / 8;
    if (!space || space->components != 1 || row_bytes * facts_.height > limits::kMaxSampleBytes) {
      return OpenOther();
    }
    std::optional<Jbig2Rows> decoded =
        IsOwnJbig2(image_, facts_) ? DecodeJbig2Image(image_, facts_) : std::nullopt;
    if (!decoded) {
      return OpenOther();
    }
    return std::make_unique<SampleRows>(RowConverter(*space, facts_, 1, facts_.width), facts_.width,
                                        facts_.height, std::move(decoded->rows));
  }

  // Without a colour space in the dictionary that of the data counts; with one, its colours do.
  RowSourcePtr OpenJpx() {
    const bool has_space = facts_.is_mask || !facts_.color_space.IsNull();
    std::optional<ColorSpace> space = has_space ? Space() : std::nullopt;
    if (has_space && !space) {
      return OpenOther();
    }
    const bool is_index = space && space->kind == ColorKind::kIndexed;
    std::optional<JpxSamples> samples =
        DecodeJpx(DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes),
                  is_index ? JpxDepth::kIndex : JpxDepth::kScaled);
    if (!samples) {
      return OpenOther();
    }
    const auto wanted = space ? static_cast<std::size_t>(space->components) : 0;
    if (wanted == 0 || samples->components < wanted ||
        (samples->colors != 0 && samples->colors != wanted && !is_index && !facts_.is_mask)) {
      space = SpaceOfJpx(*samples);
    }
    const auto components = static_cast<std::size_t>(space->components);
    KeepComponents(*samples, components);
    ImageFacts facts = facts_;
    if (!facts_.is_mask) {
      facts.decode.clear();  // it is for other data (ISO 32000-2, table 87)
    }
    RowConverter converter(*std::move(space), facts, 8, samples->width);
    return std::make_unique<JpxRows>(std::move(converter), *std::move(samples),
                                     facts_.uses_jpx_alpha && facts_.soft_mask == 0);
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

  RowSourcePtr OpenCcitt() {
    const auto value = [&](std::string_view key) {
      return image_.document->Resolve(facts_.filter_parameters.Get(key), arena_);
    };
    CcittParameters parameters;
    parameters.k = value("K").IntegerOr(0);
    parameters.is_byte_aligned = value("EncodedByteAlign").BooleanOr(false);
    parameters.has_ends_of_line = value("EndOfLine").BooleanOr(false);
    parameters.black_is_1 = value("BlackIs1").BooleanOr(false);
    const std::int64_t columns = value("Columns").IntegerOr(1728);
    const std::optional<ColorSpace> space = Space();
    if (!space || space->components != 1 || columns < 1 || columns > limits::kMaxSide) {
      return OpenOther();
    }
    parameters.columns = static_cast<std::uint32_t>(columns);
    auto encoded = std::make_unique<const std::string>(
        DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes));
    return std::make_unique<CcittRows>(RowConverter(*space, facts_, 1, facts_.width), parameters,
                                       facts_.width, facts_.height, std::move(encoded));
  }

  RowSourcePtr OpenOther() {
    is_masked_ = true;
    return facts_.filter == ImageFilter::kUnknown ? nullptr
                                                  : OpenWithPdfium(image_, facts_, IsGray());
  }

  bool IsGray() {
    if (facts_.is_mask) {
      return true;
    }
    if (facts_.filter == ImageFilter::kJpx && facts_.color_space.IsNull()) {
      return false;
    }
    const std::optional<ColorSpace> space = Space();
    return space && space->kind == ColorKind::kGray;
  }

  const DocumentImage& image_;
  const ImageFacts& facts_;
  PictureSize least_;
  pdf::Arena arena_;
  bool is_masked_ = false;
};

// matte: gets what the mask says.
RowSourcePtr OpenMask(const DocumentImage& image, std::uint32_t number,
                      std::vector<double>& matte) {
  pdf::Arena arena;
  DocumentImage mask{.document = image.document,
                     .number = number,
                     .dictionary = {},
                     .data = {},
                     .color_spaces = {}};
  mask.dictionary = image.document->Load({.number = number, .generation = 0}, arena);
  ImageFacts facts = FactsOf(mask, arena);
  matte = facts.matte;
  facts.soft_mask = 0;  // masks have none themselves
  facts.stencil_mask = 0;
  facts.color_key.clear();
  if (facts.width == 0 || facts.height == 0) {
    return nullptr;
  }
  try {
    return PictureOpener(mask, facts, kWholePicture).Open();
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return nullptr;  // a picture without its mask is better than none
  }
}

// The colour that a matte is in the colour space of its picture; nothing for colour spaces in which
// mixing is not what it is in sRGB.
std::optional<Rgb> ColorOfMatte(const DocumentImage& image, const ImageFacts& facts,
                                const std::vector<double>& matte) {
  pdf::Arena arena;
  const auto space = ColorSpaceOf(*image.document, facts.color_space, arena);
  if (!space || matte.size() != static_cast<std::size_t>(space->components) ||
      !space->is_computed() || space->kind == ColorKind::kLab ||
      space->kind == ColorKind::kIndexed) {
    return std::nullopt;
  }
  std::vector<std::uint8_t> components;
  components.reserve(matte.size());
  for (const double value : matte) {
    components.push_back(static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255)));
  }
  Rgb color{};
  ToRgb(*space, components.data(), color.data(), 1);
  return color;
}

}  // namespace

RowSourcePtr OpenPicture(const DocumentImage& image, const ImageFacts& facts, PictureSize least) {
  if (facts.width == 0 || facts.height == 0) {
    return nullptr;
  }
  PictureOpener opener(image, facts, least);
  RowSourcePtr picture = opener.Open();
  const std::uint32_t mask_number = facts.soft_mask != 0 ? facts.soft_mask : facts.stencil_mask;
  if (picture == nullptr || mask_number == 0 || opener.is_masked()) {
    return picture;
  }
  std::vector<double> matte;
  RowSourcePtr mask = OpenMask(image, mask_number, matte);
  if (mask == nullptr) {
    return picture;
  }
  const bool is_stencil = facts.soft_mask == 0;
  return std::make_unique<MaskedRows>(
      std::move(picture), std::move(mask), is_stencil,
      is_stencil || matte.empty() ? std::nullopt : ColorOfMatte(image, facts, matte));
}

}  // namespace TarnixTools::engines
