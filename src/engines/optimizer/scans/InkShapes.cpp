#include "engines/optimizer/scans/InkShapes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <utility>

#include "engines/optimizer/scans/InkLevels.h"

namespace TarnixTools::engines::optimizer {

namespace {

// Pages of text have far fewer runs than this part of their pixels.
constexpr std::uint64_t kPixelsPerRun = 8;
// One of so many pixels is dark at most: photographs have more.
constexpr std::uint64_t kPixelsPerDark = 2;
// Of the core of what is printed in one colour.
constexpr double kMostSpread = 26;
constexpr double kMostSoftEdges = 0.3;
// Of the contrast: what an edge has to become lighter by.
constexpr int kLeastSlope = 4;  // a quarter
constexpr double kSharpDpi = 150;

// What tells inks apart that touch each other.
class HueFinder {
 public:
  HueFinder(const SamplePicture& picture, const SamplePicture& lightness, int paper)
      : picture_(&picture) {
    std::array<std::uint64_t, 3> sums{};
    std::uint64_t count = 1;
    for (std::uint32_t y = 0; y < picture.height && picture.components == 3; y += kSampledRows) {
      for (std::uint32_t x = 0; x < picture.width; ++x) {
        if (lightness.row(y)[x] + kPaperNoise >= paper) {
          const std::uint8_t* const pixel = picture.row(y) + std::size_t{x} * 3;
          std::transform(sums.begin(), sums.end(), pixel, sums.begin(), std::plus<>());
          ++count;
        }
      }
    }
    std::transform(sums.begin(), sums.end(), paper_.begin(),
                   [&](std::uint64_t sum) { return static_cast<int>(sum / count); });
  }

  // A bit for each component of which the ink takes nearly as much of the paper's light as of that
  // which it takes most of.
  std::uint8_t HueAt(std::uint32_t x, std::uint32_t y) const {
    if (picture_->components != 3) {
      return 0;
    }
    const std::uint8_t* const pixel = picture_->row(y) + std::size_t{x} * 3;
    const std::array<int, 3> taken = {paper_[0] - pixel[0], paper_[1] - pixel[1],
                                      paper_[2] - pixel[2]};
    const int most = *std::max_element(taken.begin(), taken.end());
    unsigned hue = 0;
    for (std::size_t i = 0; i < taken.size(); ++i) {
      hue |= taken[i] * 2 > most ? 1U << i : 0U;
    }
    return static_cast<std::uint8_t>(hue);
  }

 private:
  static constexpr std::uint32_t kSampledRows = 8;
  static constexpr int kPaperNoise = 8;

  const SamplePicture* picture_;
  std::array<int, 3> paper_{};
};

// Pixels side by side that are ink, row after row, each with the one of its shape that came first.
class RunFinder {
 public:
  RunFinder(const SamplePicture& lightness, const InkLevels& levels, const HueFinder& hues)
      : lightness_(&lightness), levels_(&levels), hue_finder_(&hues), limits_(lightness.width) {}

  // False where there are too many, or too many pixels in them.
  bool Find() {
    const std::uint64_t most = lightness_->pixels() / kPixelsPerRun;
    const std::uint64_t most_dark = lightness_->pixels() / kPixelsPerDark;
    for (std::uint32_t y = 0; y < lightness_->height; ++y) {
      const std::size_t above = row_start_;
      row_start_ = runs_.size();
      AddRow(y);
      Join(above);
      if (runs_.size() > most || dark_pixels_ > most_dark) {
        return false;
      }
    }
    return true;
  }

  // The shapes get numbers from 0 on. Returns how many there are.
  std::uint32_t Number() {
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      const std::uint32_t first = FirstOf(static_cast<std::uint32_t>(i));
      runs_[i].shape = first == i ? count++ : runs_[first].shape;
    }
    return count;
  }

  std::vector<InkRun> TakeRuns() { return std::move(runs_); }

 private:
  void AddRow(std::uint32_t y) {
    levels_->ReadRow(y, limits_.data());
    const std::uint8_t* const pixels = lightness_->row(y);
    const std::uint32_t width = lightness_->width;
    for (std::uint32_t x = 0; x < width; ++x) {
      if (pixels[x] >= limits_[x]) {
        continue;
      }
      const std::uint32_t left = x;
      const std::uint8_t hue = hue_finder_->HueAt(x, y);
      while (x + 1 < width && pixels[x + 1] < limits_[x + 1] &&
             hue_finder_->HueAt(x + 1, y) == hue) {
        ++x;
      }
      firsts_.push_back(static_cast<std::uint32_t>(runs_.size()));
      runs_.push_back({.y = y, .left = left, .right = x + 1, .shape = 0});
      dark_pixels_ += x + 1 - left;
      hues_.push_back(hue);
    }
  }

  // Joins the runs of the last row with those of the row above that they touch, corners included.
  void Join(std::size_t above) {
    for (std::size_t i = row_start_; i < runs_.size(); ++i) {
      while (above < row_start_ && runs_[above].right < runs_[i].left) {
        ++above;
      }
      for (std::size_t j = above; j < row_start_ && runs_[j].left <= runs_[i].right; ++j) {
        if (hues_[j] == hues_[i]) {
          Unite(static_cast<std::uint32_t>(j), static_cast<std::uint32_t>(i));
        }
      }
    }
  }

  void Unite(std::uint32_t one, std::uint32_t other) {
    const std::uint32_t first = FirstOf(one);
    const std::uint32_t second = FirstOf(other);
    firsts_[std::max(first, second)] = std::min(first, second);
  }

  std::uint32_t FirstOf(std::uint32_t run) {
    while (firsts_[run] != run) {
      firsts_[run] = firsts_[firsts_[run]];
      run = firsts_[run];
    }
    return run;
  }

  const SamplePicture* lightness_;
  const InkLevels* levels_;
  const HueFinder* hue_finder_;
  std::vector<std::uint8_t> limits_;
  std::vector<InkRun> runs_;
  std::vector<std::uint8_t> hues_;     // of each run
  std::vector<std::uint32_t> firsts_;  // of each run: one of its shape that is no later
  std::size_t row_start_ = 0;
  std::uint64_t dark_pixels_ = 0;
};

// What is found out about shapes, pixel by pixel.
class ShapeMeasure {
 public:
  ShapeMeasure(const SamplePicture& picture, const SamplePicture& lightness,
               const InkLevels& levels, double dpi)
      : picture_(&picture),
        lightness_(&lightness),
        levels_(&levels),
        reach_(std::max(1, static_cast<int>(std::lround(dpi / kSharpDpi)))) {}

  void Run(InkShapes& ink) {
    MarkInk(ink.runs);
    sums_.resize(ink.shapes.size());
    for (const InkRun& run : ink.runs) {
      for (std::uint32_t x = run.left; x < run.right; ++x) {
        AddPixel(x, run.y, ink.shapes[run.shape], sums_[run.shape]);
      }
    }
    for (std::size_t i = 0; i < sums_.size(); ++i) {
      SetColor(sums_[i], ink.shapes[i]);
    }
  }

 private:
  struct Sums {
    std::array<std::uint64_t, 3> all{};
    std::array<std::uint64_t, 3> core{};
    std::uint64_t core_squares = 0;  // of all components
  };

  void MarkInk(const std::vector<InkRun>& runs) {
    is_ink_.assign(lightness_->pixels(), 0);
    for (const InkRun& run : runs) {
      std::fill_n(is_ink_.begin() + static_cast<std::ptrdiff_t>(At(run.left, run.y)),
                  run.right - run.left, std::uint8_t{1});
    }
  }

  std::size_t At(std::uint32_t x, std::uint32_t y) const {
    return std::size_t{y} * lightness_->width + x;
  }

  void AddPixel(std::uint32_t x, std::uint32_t y, InkShape& shape, Sums& sums) const {
    const std::uint64_t edges = shape.edges;
    const int slope = levels_->ContrastAt(x, y) / kLeastSlope;
    constexpr std::array<std::array<int, 2>, 4> kSides = {{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};
    for (const auto& [right, down] : kSides) {
      const std::int64_t beside_x = std::int64_t{x} + right;
      const std::int64_t beside_y = std::int64_t{y} + down;
      if (IsWithin(beside_x, beside_y) &&
          is_ink_[At(static_cast<std::uint32_t>(beside_x), static_cast<std::uint32_t>(beside_y))] ==
              0) {
        ++shape.edges;
        shape.soft_edges += IsSoft(x, y, right, down, slope) ? 1 : 0;
      }
    }
    const bool is_core = shape.edges == edges;
    const std::uint8_t* const pixel =
        picture_->row(y) + std::size_t{x} * static_cast<unsigned>(picture_->components);
    for (std::size_t i = 0; i < static_cast<std::size_t>(picture_->components); ++i) {
      sums.all[i] += pixel[i];
      sums.core[i] += is_core ? pixel[i] : 0U;
      sums.core_squares += is_core ? std::uint64_t{pixel[i]} * pixel[i] : 0U;
    }
    ++shape.pixels;
    shape.core_pixels += is_core ? 1 : 0;
  }

  bool IsWithin(std::int64_t x, std::int64_t y) const {
    return x >= 0 && y >= 0 && x < lightness_->width && y < lightness_->height;
  }

  bool IsSoft(std::uint32_t x, std::uint32_t y, int right, int down, int slope) const {
    const auto far_x = static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(x + std::int64_t{right} * reach_, 0, lightness_->width - 1));
    const auto far_y = static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(y + std::int64_t{down} * reach_, 0, lightness_->height - 1));
    return lightness_->row(far_y)[far_x] < lightness_->row(y)[x] + slope;
  }

  void SetColor(const Sums& sums, InkShape& shape) const {
    const bool has_core = shape.core_pixels > 0;
    const auto count = static_cast<double>(has_core ? shape.core_pixels : shape.pixels);
    double squares = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(picture_->components); ++i) {
      shape.color[i] = static_cast<double>(has_core ? sums.core[i] : sums.all[i]) / count;
      squares += shape.color[i] * shape.color[i];
    }
    if (has_core) {
      const double variance = static_cast<double>(sums.core_squares) / count - squares;
      shape.spread = std::sqrt(std::max(0.0, variance / picture_->components));
    }
  }

  const SamplePicture* picture_;
  const SamplePicture* lightness_;
  const InkLevels* levels_;
  int reach_;  // pixels over which an edge becomes lighter
  std::vector<std::uint8_t> is_ink_;
  std::vector<Sums> sums_;
};

}  // namespace

bool InkShape::IsSpeck(double dpi) const {
  return static_cast<double>(pixels) < std::max(2.0, dpi / 100 * dpi / 100);
}

bool InkShape::IsPrinted(double dpi) const {
  return !IsSpeck(dpi) && spread <= kMostSpread &&
         static_cast<double>(soft_edges) <= kMostSoftEdges * static_cast<double>(edges);
}

InkShapes FindInk(const SamplePicture& picture, const SamplePicture& lightness, double dpi) {
  const InkLevels levels(lightness, dpi);
  const HueFinder hues(picture, lightness, levels.paper());
  RunFinder finder(lightness, levels, hues);
  InkShapes ink;
  if (!finder.Find()) {
    return ink;
  }
  ink.shapes.resize(finder.Number());
  ink.runs = finder.TakeRuns();
  ShapeMeasure(picture, lightness, levels, dpi).Run(ink);
  return ink;
}

}  // namespace TarnixTools::engines::optimizer
