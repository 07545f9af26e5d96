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

std::uint32_t ColorAt(const std::uint8_t* pixel, std::size_t components) {
  std::uint32_t color = 0;
  std::memcpy(&color, pixel, components);
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

}  // namespace

PictureFeatures FeaturesOf(const SamplePicture& picture) {
  const auto components = static_cast<std::size_t>(picture.components);
  ColorCounter colors(components == 1 ? kFewGrays : kFewColors);
  std::uint64_t repeated = 0;
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    const std::uint8_t* const row = picture.row(y);
    std::uint32_t last = ~ColorAt(row, components);
    for (std::uint32_t x = 0; x < picture.width; ++x) {
      const std::uint32_t color = ColorAt(row + x * components, components);
      if (color == last) {
        ++repeated;
        continue;
      }
      colors.Add(color);
      last = color;
    }
  }
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
