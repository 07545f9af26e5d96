#include "engines/office/pages/PictureFile.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/office/Limits.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/codecs/PngWriter.h"
#include "engines/support/images/ImageAlpha.h"
#include "engines/support/images/ImageColors.h"
#include "engines/support/images/Picture.h"
#include "engines/support/images/ReadyJpeg.h"
#include "engines/support/pictures/ReducedPicture.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines::office {

namespace {

constexpr int kJpegQuality = 90;
constexpr std::size_t kManyColors = 3000;
constexpr std::size_t kSampledPixels = 40'000;

// A picture in memory: gray or RGB.
struct Pixels {
  Plane samples;
  PixelLayout layout = PixelLayout::kRgb;
};

OfficePicture Named(std::string bytes, bool is_jpeg, const Plane& samples) {
  return {std::move(bytes), is_jpeg, samples.width(), samples.height()};
}

// A photograph has more colours than any drawing, and is many times smaller as JPEG.
bool IsPhotograph(const Pixels& pixels) {
  const Plane& samples = pixels.samples;
  if (pixels.layout != PixelLayout::kRgb) {
    return false;
  }
  const std::size_t count = std::size_t{samples.width()} * samples.height();
  const std::size_t step = std::max<std::size_t>(1, count / kSampledPixels);
  std::unordered_set<std::uint32_t> colors;
  for (std::size_t i = 0; i < count && colors.size() <= kManyColors; i += step) {
    const unsigned char* pixel =
        samples.row(static_cast<std::uint32_t>(i / samples.width())) + 3 * (i % samples.width());
    colors.insert(static_cast<std::uint32_t>(pixel[0] << 16 | pixel[1] << 8 | pixel[2]));
  }
  return colors.size() > kManyColors;
}

OfficePicture JpegOf(const Pixels& pixels) {
  const Plane& samples = pixels.samples;
  pdf::StringSink sink;
  JpegWriter writer(sink, {.width = samples.width(),
                           .height = samples.height(),
                           .layout = pixels.layout,
                           .quality = kJpegQuality});
  writer.WriteRows(samples.row(0), samples.stride(), samples.height());
  writer.Finish();
  return Named(sink.Take(), true, samples);
}

OfficePicture FileOf(Pixels pixels) {
  if (IsPhotograph(pixels)) {
    return JpegOf(pixels);
  }
  OfficePicture picture = Named({}, false, pixels.samples);
  picture.bytes = EncodePng(std::move(pixels.samples));
  return picture;
}

RowSourcePtr NoLargerThan(RowSourcePtr picture, std::uint32_t most_width,
                          std::uint32_t most_height) {
  const std::uint32_t width = std::min(picture->width(), most_width);
  const std::uint32_t height = std::min(picture->height(), most_height);
  return width == picture->width() && height == picture->height()
             ? std::move(picture)
             : ReducePicture(std::move(picture), width, height);
}

// Pictures of documents are gray or RGB.
Pixels ReadAll(RowSource& picture) {
  const bool is_gray = picture.layout() == PixelLayout::kGray;
  Pixels pixels{Plane(picture.width(), picture.height(), is_gray ? 1 : 3, 8),
                is_gray ? PixelLayout::kGray : PixelLayout::kRgb};
  for (std::uint32_t y = 0; y < picture.height(); ++y) {
    picture.ReadRow(pixels.samples.row(y));
  }
  return pixels;
}

// One more channel: that of the alpha, of which each pixel takes the nearest sample.
Plane WithAlpha(const Pixels& pixels, const Plane& alpha) {
  const Plane& colors = pixels.samples;
  const auto channels = static_cast<std::size_t>(colors.channels());
  Plane joined(colors.width(), colors.height(), colors.channels() + 1, 8);
  for (std::uint32_t y = 0; y < colors.height(); ++y) {
    const unsigned char* in = colors.row(y);
    const unsigned char* mask =
        alpha.row(static_cast<std::uint32_t>(std::uint64_t{y} * alpha.height() / colors.height()));
    unsigned char* out = joined.row(y);
    for (std::uint32_t x = 0; x < colors.width(); ++x, in += channels) {
      std::memcpy(out, in, channels);
      out[channels] = mask[std::uint64_t{x} * alpha.width() / colors.width()];
      out += channels + 1;
    }
  }
  return joined;
}

// Nothing for an image that is opaque, and for one that is mixed with a colour already.
std::optional<OfficePicture> TransparentFile(const DocumentImage& image, const ImageFacts& facts,
                                             std::uint32_t most_width, std::uint32_t most_height) {
  if (AlphaKindOf(facts) == AlphaKind::kNone) {
    return std::nullopt;
  }
  auto alpha = OpenAlpha(image, facts);
  if (!alpha || !alpha->matte.empty() || alpha->is_premultiplied) {
    return std::nullopt;
  }
  ImageColors colors = OpenColors(image, facts);
  if (colors.colors == nullptr) {
    return std::nullopt;
  }
  const RowSourcePtr picture = NoLargerThan(std::move(colors.colors), most_width, most_height);
  const RowSourcePtr mask = NoLargerThan(std::move(alpha->rows), most_width, most_height);
  const Pixels pixels = ReadAll(*picture);
  OfficePicture file = Named({}, false, pixels.samples);
  file.bytes = EncodePng(WithAlpha(pixels, ReadAll(*mask).samples));
  return file;
}

}  // namespace

std::optional<OfficePicture> FileOfImage(const DocumentImage& image, std::uint32_t most_width,
                                         std::uint32_t most_height) {
  pdf::Arena arena;
  const ImageFacts facts = FactsOf(image, arena);
  if (facts.is_mask || facts.width == 0 || facts.height == 0) {
    return std::nullopt;
  }
  if (facts.width <= 2 * most_width && facts.height <= 2 * most_height &&
      IsReadyJpeg(image, facts, 1)) {
    return OfficePicture{EncodedData(image, limits::kMaxPictureBytes), true, facts.width,
                         facts.height};
  }
  if (auto transparent = TransparentFile(image, facts, most_width, most_height)) {
    return transparent;
  }
  RowSourcePtr picture = OpenPicture(image, facts, {most_width, most_height});
  if (picture == nullptr) {
    return std::nullopt;
  }
  return FileOf(ReadAll(*NoLargerThan(std::move(picture), most_width, most_height)));
}

OfficePicture FileOfBitmap(const PageBitmap& bitmap) {
  Pixels pixels{Plane(static_cast<std::uint32_t>(bitmap.width),
                      static_cast<std::uint32_t>(bitmap.height), 3, 8),
                PixelLayout::kRgb};
  for (int y = 0; y < bitmap.height; ++y) {
    const std::uint8_t* in = bitmap.Row(y);
    unsigned char* out = pixels.samples.row(static_cast<std::uint32_t>(y));
    for (int x = 0; x < bitmap.width; ++x, in += 4, out += 3) {
      out[0] = in[2];
      out[1] = in[1];
      out[2] = in[0];
    }
  }
  return FileOf(std::move(pixels));
}

}  // namespace TarnixTools::engines::office
