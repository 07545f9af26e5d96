#include "engines/optimizer/images/PictureFeatures.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_set>

namespace TarnixTools::engines::optimizer {

namespace {

// A picture of so few colours was drawn; gray has no more in any case.
constexpr std::size_t kFewColors = 256;
constexpr std::size_t kFewGrays = 32;
// Between the components of a gray pixel, as conversions round.
constexpr int kGrayTolerance = 2;

bool IsGrayPixel(const std::uint8_t* rgb) {
  const auto [least, most] = std::minmax({rgb[0], rgb[1], rgb[2]});
  return most - least <= kGrayTolerance;
}

bool IsGray(const SamplePicture& picture) {
  if (picture.components != 3) {
    return false;
  }
  for (std::size_t i = 0; i < picture.samples.size(); i += 3) {
    if (!IsGrayPixel(picture.samples.data() + i)) {
      return false;
    }
  }
  return true;
}

template <std::size_t kComponents>
std::uint32_t ColorAt(const std::uint8_t* pixel) {
  std::uint32_t color = 0;
  std::memcpy(&color, pixel, kComponents);
  return color;
}

// Counts colours until they are more than a few.
class ColorCounter {
 public:
  explicit ColorCounter(std::size_t few) : few_(few) {}

  bool has_few() const { return colors_.size() <= few_; }

  std::size_t count() const { return colors_.size(); }

  void Add(std::uint32_t color) {
    if (has_few()) {
      colors_.insert(color);
    }
  }

 private:
  std::size_t few_;
  std::unordered_set<std::uint32_t> colors_;
};

// Whether a pixel and the one behind it are the same. Of three components both are read by four bytes,
// none of which lies beyond them.
template <std::size_t kComponents>
bool IsRepeated(const std::uint8_t* pixel) {
  if constexpr (kComponents == 1) {
    return pixel[0] == pixel[1];
  } else {
    constexpr std::size_t kRead = sizeof(std::uint32_t);
    constexpr unsigned kOthers = 8 * (kRead - kComponents);  // bits of a reading
    const std::uint32_t behind = ColorAt<kRead>(pixel + 2 * kComponents - kRead) >> kOthers;
    return (ColorAt<kRead>(pixel) << kOthers) == (behind << kOthers);
  }
}

// How many pixels of a row are what their left neighbour is.
template <std::size_t kComponents>
std::uint32_t CountRepeated(const std::uint8_t* row, std::uint32_t width) {
  std::uint32_t repeated = 0;
  for (std::size_t x = 1; x < width; ++x, row += kComponents) {
    repeated += IsRepeated<kComponents>(row) ? 1U : 0U;
  }
  return repeated;
}

template <std::size_t kComponents>
void CountColors(const std::uint8_t* row, std::uint32_t width, ColorCounter& colors) {
  std::uint32_t last = ~ColorAt<kComponents>(row);
  for (std::size_t x = 0; x < width && colors.has_few(); ++x) {
    const std::uint32_t color = ColorAt<kComponents>(row + kComponents * x);
    if (color != last) {
      colors.Add(color);
      last = color;
    }
  }
}

// Adds the colours of a picture. Returns how many pixels are what their left neighbour is.
template <std::size_t kComponents>
std::uint64_t LookThrough(const SamplePicture& picture, ColorCounter& colors) {
  std::uint64_t repeated = 0;
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    CountColors<kComponents>(picture.row(y), picture.width, colors);
    repeated += CountRepeated<kComponents>(picture.row(y), picture.width);
  }
  return repeated;
}

}  // namespace

PictureFeatures FeaturesOf(const SamplePicture& picture) {
  ColorCounter colors(picture.components == 1 ? kFewGrays : kFewColors);
  const std::uint64_t repeated = picture.components == 1   ? LookThrough<1>(picture, colors)
                                 : picture.components == 3 ? LookThrough<3>(picture, colors)
                                                           : LookThrough<4>(picture, colors);
  return {.is_gray = IsGray(picture),
          .is_one_color = colors.count() == 1,
          .has_few_colors = colors.has_few(),
          .repeated_part = static_cast<double>(repeated) / static_cast<double>(picture.pixels())};
}

SamplePicture GrayOf(const SamplePicture& picture) {
  SamplePicture gray;
  gray.width = picture.width;
  gray.height = picture.height;
  gray.is_whole = picture.is_whole;
  gray.samples.resize(picture.pixels());
  for (std::size_t i = 0; i < gray.samples.size(); ++i) {
    gray.samples[i] = picture.samples[3 * i + 1];
  }
  return gray;
}

}  // namespace TarnixTools::engines::optimizer
