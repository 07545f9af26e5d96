#include "engines/support/images/RasterEncoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <libdeflate.h>

#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/HuffmanDeflate.h"
#include "engines/support/codecs/PngFilters.h"
#include "engines/support/pictures/ColorCount.h"
#include "pdf/file/StreamFilters.h"

namespace TarnixTools::engines {

namespace {

constexpr int kLevel = 6;
constexpr int kDenseLevel = 12;
// The level before it takes half the time for a hundredth more bytes.
constexpr int kDenseLevelOfMany = 9;
constexpr std::size_t kMany = std::size_t{1} << 20;
// Rows that are compressed on trial, and how.
constexpr std::size_t kTrialBytes = std::size_t{256} << 10;
constexpr int kTrialLevel = 1;
// Fax coding that makes a page this much smaller has text or drawings before it.
constexpr std::size_t kTextRatio = 10;
constexpr std::uint32_t kBandRows = 8;
// Pictures of so few bytes get a second try: what tells of a predictor may take more than it saves.
constexpr std::size_t kFew = std::size_t{64} << 10;
// How much larger a picture may become when repetitions are not looked for, which takes a tenth of
// the time.
constexpr std::size_t kToleratedPercent = 1;

struct CompressorDeleter {
  void operator()(libdeflate_compressor* compressor) const noexcept {
    libdeflate_free_compressor(compressor);
  }
};

HeldBytes Deflate(const unsigned char* data, std::size_t size, int level) {
  const std::unique_ptr<libdeflate_compressor, CompressorDeleter> compressor(
      libdeflate_alloc_compressor(level));
  if (compressor == nullptr) {
    throw std::bad_alloc();
  }
  HeldBytes packed;
  const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), size);
  packed.data = std::make_unique_for_overwrite<char[]>(bound);
  packed.size = libdeflate_zlib_compress(compressor.get(), data, size, packed.data.get(), bound);
  return packed;
}

// Bands of rows from all over a picture.
struct Sample {
  std::vector<std::uint32_t> starts;
  std::uint32_t rows = 0;  // of a band
};

Sample ChooseSample(const Plane& plane) {
  Sample sample;
  const std::uint32_t height = plane.height();
  const auto rows =
      static_cast<std::uint32_t>(std::clamp<std::size_t>(kTrialBytes / plane.stride(), 1, height));
  sample.rows = std::min(rows, kBandRows);
  const std::uint32_t bands = rows / sample.rows;
  for (std::uint32_t band = 0; band < bands; ++band) {
    sample.starts.push_back(static_cast<std::uint32_t>(std::uint64_t{height - sample.rows} *
                                                       (std::uint64_t{2} * band + 1) /
                                                       (std::uint64_t{2} * bands)));
  }
  return sample;
}

std::vector<unsigned char> FilterSample(const Plane& plane, const Sample& sample,
                                        RowFilter filter) {
  const std::size_t band_bytes = plane.stride() * sample.rows;
  std::vector<unsigned char> out(band_bytes * sample.starts.size());
  for (std::size_t band = 0; band < sample.starts.size(); ++band) {
    FilterRows(plane, sample.starts[band], sample.rows, filter, out.data() + band * band_bytes);
  }
  return out;
}

// How the rows of a picture are stored best.
struct Coding {
  RowFilter filter = RowFilter::kNone;
  bool has_repetitions = true;  // worth to be looked for
};

// Tries all filters on a sample. Pictures of few bits or of a palette have no gradients that a
// filter could follow.
Coding ChooseCoding(const Plane& plane, PictureSpace space) {
  Coding coding;
  if (plane.bits() < 8 || space == PictureSpace::kIndexed) {
    return coding;
  }
  const Sample sample = ChooseSample(plane);
  RowFilter best_literal = RowFilter::kNone;
  std::size_t smallest = ~std::size_t{0};
  std::size_t smallest_literal = ~std::size_t{0};
  for (const RowFilter filter : {RowFilter::kNone, RowFilter::kSub, RowFilter::kUp,
                                 RowFilter::kAverage, RowFilter::kPaeth, RowFilter::kBest}) {
    const std::vector<unsigned char> trial = FilterSample(plane, sample, filter);
    const std::size_t literal = HuffmanSize(trial.data(), trial.size());
    if (literal < smallest_literal) {
      smallest_literal = literal;
      best_literal = filter;
    }
    if (filter == RowFilter::kNone || filter == RowFilter::kBest) {
      const std::size_t size = Deflate(trial.data(), trial.size(), kTrialLevel).size;
      if (size < smallest) {
        smallest = size;
        coding.filter = filter;
      }
    }
  }
  if (smallest_literal <= smallest + smallest / 100 * kToleratedPercent) {
    return {best_literal, false};
  }
  return coding;
}

ImageStream Describe(const Raster& raster) {
  ImageStream image;
  image.width = raster.color.width();
  image.height = raster.color.height();
  image.bits = raster.color.bits();
  image.space = raster.space;
  image.palette = raster.palette;
  image.profile = raster.profile;
  image.color_key = raster.color_key;
  if (raster.is_inverted) {
    image.decode = raster.space == PictureSpace::kCmyk ? "1 0 1 0 1 0 1 0" : "1 0";
  }
  return image;
}

int LevelFor(Packing packing, std::size_t size) {
  return packing == Packing::kQuick ? kLevel : size > kMany ? kDenseLevelOfMany : kDenseLevel;
}

// The rows without what a predictor has before each.
std::string SamplesOf(const Plane& plane) {
  std::string samples;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    samples.append(reinterpret_cast<const char*>(plane.row(y)), plane.row_bytes());
  }
  return samples;
}

// Without a predictor, or without any filter, where that takes no more, what tells of them counted.
void PreferPlain(ImageStream& image, std::string_view samples) {
  constexpr std::size_t kFilterEntry = std::string_view("/Filter/FlateDecode").size();
  constexpr std::size_t kParametersEntry = std::string_view("/DecodeParms<<>>").size();
  HeldBytes& held = image.data.front().held;
  HeldBytes plain =
      Deflate(reinterpret_cast<const unsigned char*>(samples.data()), samples.size(), kDenseLevel);
  if (plain.size <= held.size + kParametersEntry + image.parameters.size()) {
    held = std::move(plain);
    image.parameters.clear();
  }
  const std::size_t parameters =
      image.parameters.empty() ? 0 : kParametersEntry + image.parameters.size();
  if (samples.size() <= held.size + parameters + kFilterEntry) {
    held = HoldCopy(samples);
    image.parameters.clear();
    image.filter.clear();
  }
}

void StoreFlate(ImageStream& image, Plane&& plane, Packing packing) {
  const bool is_few = packing == Packing::kDense && plane.size() <= kFew;
  const std::string samples = is_few ? SamplesOf(plane) : std::string();
  Coding coding = ChooseCoding(plane, image.space);
  coding.has_repetitions = coding.has_repetitions || packing == Packing::kDense;
  Filter(plane, coding.filter);
  DataPiece piece;
  piece.held = coding.has_repetitions
                   ? Deflate(plane.data(), plane.size(), LevelFor(packing, plane.size()))
                   : DeflateByHuffman(plane.data(), plane.size());
  image.filter = "FlateDecode";
  image.parameters = pdf::PredictorEntries({.predictor = 15,
                                            .colors = plane.channels(),
                                            .bits_per_component = plane.bits(),
                                            .columns = plane.width()});
  image.data.push_back(std::move(piece));
  if (is_few) {
    PreferPlain(image, samples);
  }
}

void Invert(Plane& plane) {
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    unsigned char* row = plane.row(y);
    std::transform(row, row + plane.row_bytes(), row,
                   [](unsigned char byte) { return static_cast<unsigned char>(~byte); });
  }
}

// Group 4 data of a plane of which 0 is black, for /CCITTFaxDecode with /K -1; nothing where it
// would be larger than the plane, as of halftones.
std::optional<HeldBytes> EncodeFax(const Plane& plane) {
  CcittEncoder encoder(plane.width());
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    encoder.AddRow(plane.row(y), 0);
    if (encoder.data().size() > plane.size()) {
      return std::nullopt;
    }
  }
  encoder.Finish();
  return HoldCopy(encoder.data());
}

// Black and white, coded for fax where that is smaller: text is, halftones are not.
void StoreBitonal(ImageStream& image, Plane&& plane, Packing packing) {
  if (!image.decode.empty()) {  // fax codes take it that most of a page is white
    Invert(plane);
    image.decode.clear();
  }
  std::optional<HeldBytes> fax = EncodeFax(plane);
  if (!fax || !IsBestAsFax(fax->size, image.width, image.height)) {
    StoreFlate(image, std::move(plane), packing);
    if (!fax || fax->size > image.data.front().held.size) {
      return;
    }
    image.data.clear();
  }
  image.filter = "CCITTFaxDecode";
  image.parameters =
      "/K -1/Columns " + std::to_string(image.width) + "/Rows " + std::to_string(image.height);
  DataPiece piece;
  piece.held = std::move(*fax);
  image.data.push_back(std::move(piece));
}

void Store(ImageStream& image, Plane&& plane, Packing packing) {
  if (plane.bits() == 1 && image.space == PictureSpace::kGray) {
    StoreBitonal(image, std::move(plane), packing);
  } else {
    StoreFlate(image, std::move(plane), packing);
  }
}

bool IsOpaque(const Plane& alpha) {
  for (std::uint32_t y = 0; y < alpha.height(); ++y) {
    const unsigned char* row = alpha.row(y);
    if (!std::all_of(row, row + alpha.row_bytes(), [](unsigned char b) { return b == 255; })) {
      return false;
    }
  }
  return true;
}

// 16 bits whose two bytes are the same say what 8 bits say.
bool SaysWhat8BitsSay(const Plane& plane) {
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* row = plane.row(y);
    for (std::size_t i = 0; i < plane.row_bytes(); i += 2) {
      if (row[i] != row[i + 1]) {
        return false;
      }
    }
  }
  return true;
}

void ReduceDepth(Plane& plane) {
  if (plane.bits() != 16 || !SaysWhat8BitsSay(plane)) {
    return;
  }
  Plane reduced(plane.width(), plane.height(), plane.channels(), 8);
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* from = plane.row(y);
    unsigned char* to = reduced.row(y);
    for (std::size_t i = 0; i < reduced.row_bytes(); ++i) {
      to[i] = from[2 * i];
    }
  }
  plane = std::move(reduced);
}

}  // namespace

bool IsBestAsFax(std::uint64_t fax_bytes, std::uint32_t width, std::uint32_t height) {
  return fax_bytes <= ((std::uint64_t{width} + 7) / 8 + 1) * height / kTextRatio;
}

ImageStream EncodeMask(Plane&& alpha, Packing packing) {
  Raster raster;
  ReduceDepth(alpha);
  raster.color = std::move(alpha);
  ReduceGray(raster);
  ImageStream mask = Describe(raster);
  Store(mask, std::move(raster.color), packing);
  return mask;
}

ImageStream EncodePlane(Plane&& samples, PictureSpace space, Packing packing) {
  ImageStream image;
  image.width = samples.width();
  image.height = samples.height();
  image.bits = samples.bits();
  image.space = space;
  StoreFlate(image, std::move(samples), packing);
  return image;
}

EncodedImage EncodeRaster(Raster&& raster, Packing packing) {
  EncodedImage result;
  if (!raster.alpha.empty() && !IsOpaque(raster.alpha)) {
    result.soft_mask = EncodeMask(std::move(raster.alpha), packing);
    if (raster.is_premultiplied) {
      result.soft_mask->entries = raster.space == PictureSpace::kGray   ? "/Matte[0]"
                                  : raster.space == PictureSpace::kCmyk ? "/Matte[0 0 0 0]"
                                                                        : "/Matte[0 0 0]";
    }
  }
  raster.alpha = Plane();
  if (!(raster.is_premultiplied &&
        result.soft_mask)) {  // a matte is in the colour space of the image
    ReduceDepth(raster.color);
    ReduceColors(raster);
  }
  result.image = Describe(raster);
  Store(result.image, std::move(raster.color), packing);
  return result;
}

}  // namespace TarnixTools::engines
