#include "engines/optimizer/images/Similarity.h"

#include <algorithm>
#include <cstddef>

namespace TarnixTools::engines::optimizer {

namespace {

constexpr std::uint32_t kWindow = 7;
constexpr std::uint32_t kStep = 2;  // from one window to the next
// (0.01 * 255)^2 and (0.03 * 255)^2, which keep quotients of small numbers in bounds.
constexpr float kLuminanceFloor = 6.5025F;
constexpr float kContrastFloor = 58.5225F;

std::uint8_t LightnessOfRgb(const std::uint8_t* rgb) {
  return static_cast<std::uint8_t>((rgb[0] * 77U + rgb[1] * 150U + rgb[2] * 29U + 128U) >> 8U);
}

std::uint8_t LightnessOfInks(const std::uint8_t* cmyk, std::uint8_t turned) {
  const unsigned cyan = cmyk[0] ^ turned;
  const unsigned magenta = cmyk[1] ^ turned;
  const unsigned yellow = cmyk[2] ^ turned;
  const unsigned black = cmyk[3] ^ turned;
  const unsigned paper = 255U - ((cyan * 77U + magenta * 150U + yellow * 29U + 128U) >> 8U);
  return static_cast<std::uint8_t>(paper * (255U - black) / 255U);
}

// Sums over the seven rows of a line of windows, column by column.
struct ColumnSums {
  explicit ColumnSums(std::size_t width)
      : first(width), second(width), squares(width), products(width) {}

  void Add(const std::uint8_t* __restrict a, const std::uint8_t* __restrict b, std::size_t width,
           std::int32_t sign) {
    for (std::size_t x = 0; x < width; ++x) {
      const std::int32_t va = a[x];
      const std::int32_t vb = b[x];
      first[x] += sign * va;
      second[x] += sign * vb;
      squares[x] += sign * (va * va + vb * vb);
      products[x] += sign * (va * vb);
    }
  }

  std::vector<std::int32_t> first;
  std::vector<std::int32_t> second;
  std::vector<std::int32_t> squares;  // of both pictures together
  std::vector<std::int32_t> products;
};

// Sums over one window.
struct WindowSums {
  std::int32_t first = 0;
  std::int32_t second = 0;
  std::int32_t squares = 0;
  std::int32_t products = 0;

  void Add(const ColumnSums& columns, std::size_t x) {
    first += columns.first[x];
    second += columns.second[x];
    squares += columns.squares[x];
    products += columns.products[x];
  }

  void Remove(const ColumnSums& columns, std::size_t x) {
    first -= columns.first[x];
    second -= columns.second[x];
    squares -= columns.squares[x];
    products -= columns.products[x];
  }

  float Similarity() const {
    constexpr auto kCount = static_cast<float>(kWindow * kWindow);
    const float mean_a = static_cast<float>(first) / kCount;
    const float mean_b = static_cast<float>(second) / kCount;
    // Estimated from a sample: divided by one less.
    const float variances =
        (static_cast<float>(squares) - kCount * (mean_a * mean_a + mean_b * mean_b)) / (kCount - 1);
    const float covariance =
        (static_cast<float>(products) - kCount * mean_a * mean_b) / (kCount - 1);
    return (2 * mean_a * mean_b + kLuminanceFloor) * (2 * covariance + kContrastFloor) /
           ((mean_a * mean_a + mean_b * mean_b + kLuminanceFloor) * (variances + kContrastFloor));
  }
};

// The windows of a line, summed up. Returns how many there are.
std::size_t AddLine(const ColumnSums& columns, std::size_t width, double& total) {
  WindowSums window;
  for (std::size_t x = 0; x < kWindow; ++x) {
    window.Add(columns, x);
  }
  std::size_t count = 0;
  float line = 0;
  for (std::size_t x = 0;; ++x) {
    if (x % kStep == 0) {
      line += window.Similarity();
      ++count;
    }
    if (x + kWindow >= width) {
      break;
    }
    window.Remove(columns, x);
    window.Add(columns, x + kWindow);
  }
  total += static_cast<double>(line);
  return count;
}

// A picture of gray as common viewers show it when it has more pixels than they need: every pixel is
// the mean of whole ones, here one more and there one less. Where a viewer and this engine reduce
// a picture in different ways, it does not look the same; this is how that shows.
SamplePicture Viewed(const SamplePicture& picture, std::uint32_t width, std::uint32_t height) {
  SamplePicture viewed;
  viewed.width = width;
  viewed.height = height;
  viewed.samples.reserve(viewed.pixels());
  std::vector<std::uint32_t> sums(picture.width);
  for (std::uint32_t y = 0; y < height; ++y) {
    const auto top = static_cast<std::uint32_t>(std::uint64_t{y} * picture.height / height);
    const auto bottom =
        static_cast<std::uint32_t>((std::uint64_t{y} + 1) * picture.height / height);
    std::fill(sums.begin(), sums.end(), 0U);
    for (std::uint32_t row = top; row < bottom; ++row) {
      const std::uint8_t* const from = picture.row(row);
      for (std::uint32_t x = 0; x < picture.width; ++x) {
        sums[x] += from[x];
      }
    }
    std::uint32_t left = 0;
    for (std::uint32_t x = 0; x < width; ++x) {
      const auto right = static_cast<std::uint32_t>((std::uint64_t{x} + 1) * picture.width / width);
      const std::uint32_t count = std::max(1U, (right - left) * (bottom - top));
      std::uint32_t sum = count / 2;
      for (; left < right; ++left) {
        sum += sums[left];
      }
      viewed.samples.push_back(static_cast<std::uint8_t>(sum / count));
    }
  }
  return viewed;
}

SamplePicture Seen(SamplePicture lightness, std::uint32_t width, std::uint32_t height) {
  if (lightness.width == width && lightness.height == height) {
    return lightness;
  }
  if (lightness.width >= width && lightness.height >= height) {
    return Viewed(lightness, width, height);
  }
  return Scaled(lightness, width, height);
}

}  // namespace

SamplePicture LightnessOf(const SamplePicture& picture, bool is_inverted) {
  if (picture.components == 1) {
    return picture;
  }
  SamplePicture lightness;
  lightness.width = picture.width;
  lightness.height = picture.height;
  lightness.samples.resize(picture.pixels());
  const std::uint8_t* from = picture.samples.data();
  const std::uint8_t turned = is_inverted ? 255 : 0;
  for (std::uint8_t& value : lightness.samples) {
    value = picture.components == 3 ? LightnessOfRgb(from) : LightnessOfInks(from, turned);
    from += picture.components;
  }
  return lightness;
}

double StructuralSimilarity(const SamplePicture& first, const SamplePicture& second) {
  if (first.width < kWindow || first.height < kWindow) {
    return first.samples == second.samples ? 1 : 0;
  }
  ColumnSums columns(first.width);
  for (std::uint32_t y = 0; y < kWindow; ++y) {
    columns.Add(first.row(y), second.row(y), first.width, 1);
  }
  double total = 0;
  std::size_t count = 0;
  for (std::uint32_t y = 0;; ++y) {
    if (y % kStep == 0) {
      count += AddLine(columns, first.width, total);
    }
    if (y + kWindow >= first.height) {
      break;
    }
    columns.Add(first.row(y), second.row(y), first.width, -1);
    columns.Add(first.row(y + kWindow), second.row(y + kWindow), first.width, 1);
  }
  return total / static_cast<double>(count);
}

Look::Look(const SamplePicture& picture, bool is_inverted, std::uint32_t width,
           std::uint32_t height)
    : is_inverted_(is_inverted),
      lightness_(Seen(LightnessOf(picture, is_inverted), width, height)) {}

double Look::SimilarityOf(const SamplePicture& picture) const {
  return StructuralSimilarity(
      lightness_, Seen(LightnessOf(picture, is_inverted_), lightness_.width, lightness_.height));
}

}  // namespace TarnixTools::engines::optimizer
