#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

#include <libdeflate.h>

#include "engines/support/images/ColorCount.h"
#include "engines/support/images/PngFilters.h"
#include "engines/support/images/Raster.h"

namespace TarnixTools::engines::images {

namespace {

constexpr int kLevel = 6;
// Rows that are compressed on trial, and how.
constexpr std::size_t kTrialBytes = std::size_t{192} << 10;
constexpr int kTrialLevel = 1;

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

// A few bands of rows from all over the picture.
Plane Sample(const Plane& plane) {
  const std::size_t rows = std::clamp<std::size_t>(kTrialBytes / plane.stride(), 1, plane.height());
  if (rows * 2 >= plane.height()) {
    Plane all(plane.width(), plane.height(), plane.channels(), plane.bits());
    std::memcpy(all.data(), plane.data(), plane.size());
    return all;
  }
  const std::size_t bands = std::clamp<std::size_t>(rows / 8, 1, 4);
  Plane sample(plane.width(), static_cast<std::uint32_t>(rows), plane.channels(), plane.bits());
  std::size_t done = 0;
  for (std::size_t band = 0; band < bands; ++band) {
    const std::size_t count = (rows - done) / (bands - band);
    const std::size_t start = (plane.height() - count) * (2 * band + 1) / (2 * bands);
    std::memcpy(sample.data() + done * plane.stride(), plane.data() + start * plane.stride(),
                count * plane.stride());
    done += count;
  }
  return sample;
}

// Pictures of few bits or of a palette have no gradients that a filter could follow.
RowFilter ChooseFilter(const Plane& plane, ColorSpace space) {
  if (plane.bits() < 8 || space == ColorSpace::kIndexed) {
    return RowFilter::kNone;
  }
  const Plane sample = Sample(plane);
  RowFilter best = RowFilter::kNone;
  std::size_t smallest = 0;
  for (const RowFilter filter : {RowFilter::kBest, RowFilter::kPaeth, RowFilter::kNone}) {
    Plane trial(sample.width(), sample.height(), sample.channels(), sample.bits());
    std::memcpy(trial.data(), sample.data(), sample.size());
    Filter(trial, filter);
    const std::size_t size = Deflate(trial.data(), trial.size(), kTrialLevel).size;
    if (smallest == 0 || size < smallest) {
      best = filter;
      smallest = size;
    }
  }
  return best;
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
    image.decode = raster.space == ColorSpace::kCmyk ? "1 0 1 0 1 0 1 0" : "1 0";
  }
  return image;
}

void StoreFlate(ImageStream& image, Plane&& plane) {
  const RowFilter filter = ChooseFilter(plane, image.space);
  Filter(plane, filter);
  DataPiece piece;
  piece.held = Deflate(plane.data(), plane.size(), kLevel);
  image.filter = "FlateDecode";
  image.parameters = "/Predictor 15/Colors " + std::to_string(plane.channels()) +
                     "/BitsPerComponent " + std::to_string(plane.bits()) + "/Columns " +
                     std::to_string(plane.width());
  image.data.push_back(std::move(piece));
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
void ReduceDepth(Plane& plane) {
  if (plane.bits() != 16) {
    return;
  }
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* row = plane.row(y);
    for (std::size_t i = 0; i < plane.row_bytes(); i += 2) {
      if (row[i] != row[i + 1]) {
        return;
      }
    }
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

void CopyChannels(const unsigned char* from, unsigned char* to, std::uint32_t width,
                  std::size_t from_step, std::size_t bytes) {
  for (std::uint32_t x = 0; x < width; ++x, from += from_step, to += bytes) {
    for (std::size_t i = 0; i < bytes; ++i) {
      to[i] = from[i];
    }
  }
}

}  // namespace

void SplitAlpha(const Plane& samples, Raster& raster) {
  const int colors = samples.channels() - 1;
  const std::size_t alpha_bytes = static_cast<std::size_t>(samples.bits()) / 8;
  const std::size_t color_bytes = alpha_bytes * static_cast<std::size_t>(colors);
  const std::size_t step = color_bytes + alpha_bytes;
  raster.color = Plane(samples.width(), samples.height(), colors, samples.bits());
  raster.alpha = Plane(samples.width(), samples.height(), 1, samples.bits());
  for (std::uint32_t y = 0; y < samples.height(); ++y) {
    const unsigned char* row = samples.row(y);
    CopyChannels(row, raster.color.row(y), samples.width(), step, color_bytes);
    CopyChannels(row + color_bytes, raster.alpha.row(y), samples.width(), step, alpha_bytes);
  }
}

ImageStream EncodeMask(Plane&& alpha) {
  Raster raster;
  ReduceDepth(alpha);
  raster.color = std::move(alpha);
  ReduceGray(raster);
  ImageStream mask = Describe(raster);
  StoreFlate(mask, std::move(raster.color));
  return mask;
}

PdfImage Encode(Raster&& raster) {
  PdfImage result;
  if (!raster.alpha.empty() && !IsOpaque(raster.alpha)) {
    result.soft_mask = EncodeMask(std::move(raster.alpha));
    if (raster.is_premultiplied) {
      result.soft_mask->entries = raster.space == ColorSpace::kGray   ? "/Matte[0]"
                                  : raster.space == ColorSpace::kCmyk ? "/Matte[0 0 0 0]"
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
  StoreFlate(result.image, std::move(raster.color));
  return result;
}

}  // namespace TarnixTools::engines::images
