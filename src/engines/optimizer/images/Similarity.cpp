#include "engines/optimizer/images/Similarity.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

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

  template <int kSign>
  void Add(const std::uint8_t* __restrict a, const std::uint8_t* __restrict b) {
    Add<kSign>(a, b, first.data(), second.data(), squares.data(), products.data(), first.size());
  }

  std::vector<std::int32_t> first;
  std::vector<std::int32_t> second;
  std::vector<std::int32_t> squares;  // of both pictures together
  std::vector<std::int32_t> products;

 private:
  template <int kSign>
  static void Add(const std::uint8_t* __restrict a, const std::uint8_t* __restrict b,
                  std::int32_t* __restrict firsts, std::int32_t* __restrict seconds,
                  std::int32_t* __restrict squares, std::int32_t* __restrict products,
                  std::size_t width) {
    for (std::size_t x = 0; x < width; ++x) {
      // Squares of bytes fit 16 bits, of which processors multiply many at a time.
      const std::uint16_t va = a[x];
      const std::uint16_t vb = b[x];
      const auto square_a = static_cast<std::uint16_t>(va * va);
      const auto square_b = static_cast<std::uint16_t>(vb * vb);
      const auto product = static_cast<std::uint16_t>(va * vb);
      firsts[x] += kSign * va;
      seconds[x] += kSign * vb;
      squares[x] += kSign * (std::int32_t{square_a} + square_b);
      products[x] += kSign * std::int32_t{product};
    }
  }
};

// The sums over every second window of a line, beginning with the first.
void SumWindows(const std::int32_t* __restrict columns, std::size_t count,
                std::int32_t* __restrict windows) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t* const column = columns + kStep * i;
    windows[i] = column[0] + column[1] + column[2] + column[3] + column[4] + column[5] + column[6];
  }
}

float SimilarityOfWindow(std::int32_t first, std::int32_t second, std::int32_t squares,
                         std::int32_t products) {
  constexpr auto kCount = static_cast<float>(kWindow * kWindow);
  const float mean_a = static_cast<float>(first) / kCount;
  const float mean_b = static_cast<float>(second) / kCount;
  // Estimated from a sample: divided by one less.
  const float variances =
      (static_cast<float>(squares) - kCount * (mean_a * mean_a + mean_b * mean_b)) / (kCount - 1);
  const float covariance = (static_cast<float>(products) - kCount * mean_a * mean_b) / (kCount - 1);
  return (2 * mean_a * mean_b + kLuminanceFloor) * (2 * covariance + kContrastFloor) /
         ((mean_a * mean_a + mean_b * mean_b + kLuminanceFloor) * (variances + kContrastFloor));
}

// The windows of a line, which are compared many at a time.
class Line {
 public:
  explicit Line(std::size_t width)
      : first_((width - kWindow) / kStep + 1),
        second_(first_.size()),
        squares_(first_.size()),
        products_(first_.size()),
        similarities_(first_.size()) {}

  std::size_t count() const { return first_.size(); }

  // The sum of their similarities.
  double Compare(const ColumnSums& columns) {
    SumWindows(columns.first.data(), count(), first_.data());
    SumWindows(columns.second.data(), count(), second_.data());
    SumWindows(columns.squares.data(), count(), squares_.data());
    SumWindows(columns.products.data(), count(), products_.data());
    CompareWindows(first_.data(), second_.data(), squares_.data(), products_.data(),
                   similarities_.data(), count());
    return std::accumulate(similarities_.begin(), similarities_.end(), 0.0);
  }

 private:
  static void CompareWindows(const std::int32_t* __restrict first,
                             const std::int32_t* __restrict second,
                             const std::int32_t* __restrict squares,
                             const std::int32_t* __restrict products,
                             float* __restrict similarities, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      similarities[i] = SimilarityOfWindow(first[i], second[i], squares[i], products[i]);
    }
  }

  std::vector<std::int32_t> first_;
  std::vector<std::int32_t> second_;
  std::vector<std::int32_t> squares_;
  std::vector<std::int32_t> products_;
  std::vector<float> similarities_;
};

void AddRow(const std::uint8_t* __restrict row, std::size_t width, std::uint32_t* __restrict sums) {
  for (std::size_t x = 0; x < width; ++x) {
    sums[x] += row[x];
  }
}

// Columns that a pixel is the mean of.
struct Span {
  std::uint32_t left = 0;
  std::uint32_t right = 0;  // behind the last
};

std::vector<Span> SpansOf(std::uint32_t from, std::uint32_t to) {
  std::vector<Span> spans;
  spans.reserve(to);
  std::uint32_t left = 0;
  for (std::uint32_t x = 0; x < to; ++x) {
    const auto right = static_cast<std::uint32_t>((std::uint64_t{x} + 1) * from / to);
    spans.push_back({left, right});
    left = right;
  }
  return spans;
}

// A picture of gray as common viewers show it when it has more pixels than they need: every pixel is
// the mean of whole ones, here one more and there one less. Where a viewer and this engine reduce
// a picture in different ways, it does not look the same; this is how that shows.
SamplePicture Viewed(const SamplePicture& picture, std::uint32_t width, std::uint32_t height) {
  SamplePicture viewed;
  viewed.width = width;
  viewed.height = height;
  viewed.samples.resize(viewed.pixels());
  const std::vector<Span> columns = SpansOf(picture.width, width);
  std::vector<std::uint32_t> sums(picture.width);
  std::uint8_t* out = viewed.samples.data();
  for (const Span& rows : SpansOf(picture.height, height)) {
    std::fill(sums.begin(), sums.end(), 0U);
    for (std::uint32_t row = rows.left; row < rows.right; ++row) {
      AddRow(picture.row(row), picture.width, sums.data());
    }
    for (const Span& column : columns) {
      const std::uint32_t count = (column.right - column.left) * (rows.right - rows.left);
      std::uint32_t sum = 0;
      for (std::uint32_t x = column.left; x < column.right; ++x) {
        sum += sums[x];
      }
      *out++ = static_cast<std::uint8_t>((sum + count / 2) / count);
    }
  }
  return viewed;
}

template <std::size_t kComponents, typename Lightness>
void TakeLightness(const SamplePicture& picture, std::vector<std::uint8_t>& out,
                   Lightness lightness_of) {
  const std::uint8_t* from = picture.samples.data();
  for (std::uint8_t& value : out) {
    value = lightness_of(from);
    from += kComponents;
  }
}

}  // namespace

SamplePicture SeenIn(SamplePicture lightness, std::uint32_t width, std::uint32_t height) {
  if (lightness.width == width && lightness.height == height) {
    return lightness;
  }
  if (lightness.width >= width && lightness.height >= height) {
    return Viewed(lightness, width, height);
  }
  return Scaled(lightness, width, height);
}

SamplePicture LightnessOf(const SamplePicture& picture, bool is_inverted) {
  if (picture.components == 1) {
    return picture;
  }
  SamplePicture lightness;
  lightness.width = picture.width;
  lightness.height = picture.height;
  lightness.samples.resize(picture.pixels());
  if (picture.components == 3) {
    TakeLightness<3>(picture, lightness.samples, LightnessOfRgb);
  } else {
    const std::uint8_t turned = is_inverted ? 255 : 0;
    TakeLightness<4>(picture, lightness.samples,
                     [=](const std::uint8_t* cmyk) { return LightnessOfInks(cmyk, turned); });
  }
  return lightness;
}

double StructuralSimilarity(const SamplePicture& first, const SamplePicture& second) {
  if (first.width < kWindow || first.height < kWindow) {
    return first.samples == second.samples ? 1 : 0;
  }
  ColumnSums columns(first.width);
  for (std::uint32_t y = 0; y < kWindow; ++y) {
    columns.Add<1>(first.row(y), second.row(y));
  }
  Line line(first.width);
  double total = 0;
  std::size_t count = 0;
  for (std::uint32_t y = 0;; ++y) {
    if (y % kStep == 0) {
      total += line.Compare(columns);
      count += line.count();
    }
    if (y + kWindow >= first.height) {
      break;
    }
    columns.Add<-1>(first.row(y), second.row(y));
    columns.Add<1>(first.row(y + kWindow), second.row(y + kWindow));
  }
  return total / static_cast<double>(count);
}

Look::Look(const SamplePicture& picture, bool is_inverted, std::uint32_t width,
           std::uint32_t height)
    : is_inverted_(is_inverted),
      lightness_(SeenIn(LightnessOf(picture, is_inverted), width, height)) {}

double Look::SimilarityOf(const SamplePicture& picture) const {
  return StructuralSimilarity(
      lightness_, SeenIn(LightnessOf(picture, is_inverted_), lightness_.width, lightness_.height));
}

}  // namespace TarnixTools::engines::optimizer
