#include "engines/optimizer/scans/InkLevels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace TarnixTools::engines::optimizer {

namespace {

constexpr double kCellsPerInch = 12;
constexpr std::uint32_t kLeastSide = 8;
// Parts of the pixels of a cell.
constexpr double kNotBrighter = 0.8;
constexpr double kDarker = 0.02;
// Cells around one in which paper and ink are looked for: strokes may be wider than a cell.
constexpr std::size_t kPaperReach = 2;
constexpr std::size_t kInkReach = 1;
// Less is noise, or shows through from the other side.
constexpr int kLeastContrast = 48;
// Of the way from paper to ink.
constexpr double kInkFrom = 0.4;
// Of the page's paper: what is darker around ink is no paper.
constexpr double kDarkestPaper = 0.6;

using Histogram = std::array<std::uint32_t, 256>;

// The least value that so many of those counted do not exceed.
std::uint8_t Percentile(const Histogram& histogram, double part) {
  std::uint64_t total = 0;
  for (const std::uint32_t count : histogram) {
    total += count;
  }
  const auto wanted = static_cast<std::uint64_t>(part * static_cast<double>(total));
  std::uint64_t sum = 0;
  for (unsigned value = 0; value < 255; ++value) {
    sum += histogram[value];
    if (sum > wanted) {
      return static_cast<std::uint8_t>(value);
    }
  }
  return 255;
}

}  // namespace

InkLevels::InkLevels(const SamplePicture& lightness, double dpi)
    : side_(std::max(kLeastSide, static_cast<std::uint32_t>(std::lround(dpi / kCellsPerInch)))),
      width_(lightness.width),
      columns_((lightness.width + side_ - 1) / side_),
      rows_((lightness.height + side_ - 1) / side_),
      bright_(columns_ * rows_),
      dark_(columns_ * rows_),
      limits_(columns_ * rows_),
      contrasts_(columns_ * rows_) {
  Measure(lightness);
  SetLimits();
}

void InkLevels::Measure(const SamplePicture& lightness) {
  std::vector<Histogram> histograms(columns_);
  Histogram papers{};
  for (std::size_t row = 0; row < rows_; ++row) {
    std::fill(histograms.begin(), histograms.end(), Histogram{});
    const auto top = static_cast<std::uint32_t>(row * side_);
    const std::uint32_t bottom = std::min(top + side_, lightness.height);
    for (std::uint32_t y = top; y < bottom; ++y) {
      const std::uint8_t* const pixels = lightness.row(y);
      for (std::uint32_t x = 0; x < width_; ++x) {
        ++histograms[x / side_][pixels[x]];
      }
    }
    for (std::size_t column = 0; column < columns_; ++column) {
      const std::uint8_t bright = Percentile(histograms[column], kNotBrighter);
      bright_[row * columns_ + column] = bright;
      dark_[row * columns_ + column] = Percentile(histograms[column], kDarker);
      ++papers[bright];
    }
  }
  paper_ = Percentile(papers, 0.5);
}

int InkLevels::Most(std::size_t column, std::size_t row) const {
  int most = 0;
  for (std::size_t y = row - std::min(row, kPaperReach); y <= row + kPaperReach && y < rows_; ++y) {
    for (std::size_t x = column - std::min(column, kPaperReach);
         x <= column + kPaperReach && x < columns_; ++x) {
      most = std::max<int>(most, bright_[y * columns_ + x]);
    }
  }
  return most;
}

int InkLevels::Least(std::size_t column, std::size_t row) const {
  int least = 255;
  for (std::size_t y = row - std::min(row, kInkReach); y <= row + kInkReach && y < rows_; ++y) {
    for (std::size_t x = column - std::min(column, kInkReach);
         x <= column + kInkReach && x < columns_; ++x) {
      least = std::min<int>(least, dark_[y * columns_ + x]);
    }
  }
  return least;
}

void InkLevels::SetLimits() {
  for (std::size_t row = 0; row < rows_; ++row) {
    for (std::size_t column = 0; column < columns_; ++column) {
      const int paper = Most(column, row);
      const int contrast = paper - Least(column, row);
      if (contrast >= kLeastContrast && paper >= paper_ * kDarkestPaper) {
        limits_[row * columns_ + column] =
            static_cast<std::uint8_t>(paper - std::lround(contrast * kInkFrom));
        contrasts_[row * columns_ + column] = static_cast<std::uint8_t>(contrast);
      }
    }
  }
}

// Mixed of those of the four cells whose centres are nearest.
void InkLevels::ReadRow(std::uint32_t y, std::uint8_t* limits) const {
  const std::uint32_t half = side_ / 2;
  const std::size_t above = y < half ? 0 : std::min<std::size_t>((y - half) / side_, rows_ - 1);
  const std::size_t below = std::min(above + 1, rows_ - 1);
  const std::uint32_t down = y < half ? 0 : (y - half) % side_;
  const auto at = [&](std::size_t column) {
    return limits_[above * columns_ + column] * (side_ - down) +
           limits_[below * columns_ + column] * down;
  };
  const std::uint32_t whole = side_ * side_;
  std::fill(limits, limits + std::min(half, width_), static_cast<std::uint8_t>(at(0) / side_));
  for (std::size_t column = 0; column < columns_; ++column) {
    const std::uint32_t left = at(column);
    const std::uint32_t right = at(std::min(column + 1, columns_ - 1));
    const auto start = static_cast<std::uint32_t>(column * side_ + half);
    const std::uint32_t count = start < width_ ? std::min(side_, width_ - start) : 0;
    for (std::uint32_t x = 0; x < count; ++x) {
      limits[start + x] = static_cast<std::uint8_t>((left * (side_ - x) + right * x) / whole);
    }
  }
}

}  // namespace TarnixTools::engines::optimizer
