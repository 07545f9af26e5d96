#include "engines/optimizer/scans/PaperFill.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <utility>

#include "engines/support/pictures/ReducedPicture.h"

namespace TarnixTools::engines::optimizer {

namespace {

// Pixels on a side of what gaps are filled by.
constexpr std::uint32_t kSquare = 8;
// Of the components of a colour: up to so much, what is beside ink is taken for paper.
constexpr int kTraces = 12;

// Sums of pixels that are paper.
struct PaperSum {
  std::array<std::uint32_t, 3> components{};
  std::uint32_t pixels = 0;

  // Counts as one pixel.
  void AddMean(const PaperSum& other) {
    for (std::size_t i = 0; i < components.size(); ++i) {
      components[i] += other.pixels > 0 ? other.Mean(i) : 0U;
    }
    pixels += other.pixels > 0 ? 1 : 0;
  }

  std::uint32_t Mean(std::size_t i) const { return (components[i] + pixels / 2) / pixels; }
};

struct PaperGrid {
  PaperGrid(std::uint32_t wide, std::uint32_t high)
      : width(wide), height(high), sums(std::size_t{wide} * high) {}

  PaperSum& at(std::uint32_t x, std::uint32_t y) { return sums[std::size_t{y} * width + x]; }

  const PaperSum& at(std::uint32_t x, std::uint32_t y) const {
    return sums[std::size_t{y} * width + x];
  }

  std::uint32_t width;
  std::uint32_t height;
  std::vector<PaperSum> sums;
};

// A quarter of the pixels: each is the mean of what is paper among four.
PaperGrid Halved(const PaperGrid& grid) {
  PaperGrid half((grid.width + 1) / 2, (grid.height + 1) / 2);
  for (std::uint32_t y = 0; y < grid.height; ++y) {
    for (std::uint32_t x = 0; x < grid.width; ++x) {
      half.at(x / 2, y / 2).AddMean(grid.at(x, y));
    }
  }
  return half;
}

// What lacks paper gets that of a coarser grid, which gets its own from a still coarser one.
void FillGaps(PaperGrid& grid) {
  std::vector<PaperGrid> levels;
  levels.push_back(std::move(grid));
  while (levels.back().width > 1 || levels.back().height > 1) {
    levels.push_back(Halved(levels.back()));
  }
  for (std::size_t level = levels.size() - 1; level-- > 0;) {
    PaperGrid& fine = levels[level];
    for (std::uint32_t y = 0; y < fine.height; ++y) {
      for (std::uint32_t x = 0; x < fine.width; ++x) {
        if (fine.at(x, y).pixels == 0) {
          fine.at(x, y).AddMean(levels[level + 1].at(x / 2, y / 2));
        }
      }
    }
  }
  grid = std::move(levels.front());
}

std::uint32_t SquaresIn(std::uint32_t pixels) {
  return (pixels + kSquare - 1) / kSquare;
}

// A pixel for each square of pixels of a picture.
PaperGrid GridOf(const SamplePicture& picture, const std::vector<std::uint8_t>& is_covered) {
  const auto components = static_cast<std::size_t>(picture.components);
  PaperGrid grid(SquaresIn(picture.width), SquaresIn(picture.height));
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    const std::uint8_t* pixel = picture.row(y);
    const std::uint8_t* const covered = is_covered.data() + std::size_t{y} * picture.width;
    for (std::uint32_t x = 0; x < picture.width; ++x, pixel += components) {
      if (covered[x] == 0) {
        PaperSum& sum = grid.at(x / kSquare, y / kSquare);
        for (std::size_t i = 0; i < components; ++i) {
          sum.components[i] += pixel[i];
        }
        ++sum.pixels;
      }
    }
  }
  return grid;
}

// The rows of a picture, with what a grid has where it is covered.
class FilledRows : public RowSource {
 public:
  FilledRows(const SamplePicture& picture, const std::vector<std::uint8_t>& is_covered,
             const std::vector<std::uint8_t>& is_beside_ink, PaperGrid grid)
      : RowSource(picture.width, picture.height,
                  picture.components == 1 ? PixelLayout::kGray : PixelLayout::kRgb),
        picture_(&picture),
        is_covered_(&is_covered),
        is_beside_ink_(&is_beside_ink),
        grid_(std::move(grid)) {}

  bool ReadRow(std::uint8_t* row) override {
    const std::size_t components = BytesPerPixel(layout());
    std::copy_n(picture_->row(next_), row_bytes(), row);
    const std::uint8_t* const covered = is_covered_->data() + std::size_t{next_} * width();
    for (std::uint32_t x = 0; x < width(); ++x) {
      const std::size_t square = std::size_t{next_ / kSquare} * grid_.width + x / kSquare;
      const PaperSum& paper = grid_.sums[square];
      std::uint8_t* const pixel = row + x * components;
      if (covered[x] != 0 ||
          ((*is_beside_ink_)[square] != 0 && IsAlmost(paper, pixel, components))) {
        for (std::size_t i = 0; i < components; ++i) {
          pixel[i] = static_cast<std::uint8_t>(paper.pixels > 0 ? paper.Mean(i) : 255);
        }
      }
    }
    ++next_;
    return true;
  }

  std::uint64_t held_bytes() const override { return 0; }

 private:
  static bool IsAlmost(const PaperSum& paper, const std::uint8_t* pixel, std::size_t components) {
    for (std::size_t i = 0; i < components; ++i) {
      if (std::abs(static_cast<int>(paper.Mean(i)) - pixel[i]) > kTraces) {
        return false;
      }
    }
    return true;
  }

  const SamplePicture* picture_;
  const std::vector<std::uint8_t>* is_covered_;
  const std::vector<std::uint8_t>* is_beside_ink_;
  PaperGrid grid_;
  std::uint32_t next_ = 0;
};

// Of squares that have ink, and of those next to them.
std::vector<std::uint8_t> Widened(const std::vector<std::uint8_t>& squares, std::uint32_t columns) {
  std::vector<std::uint8_t> wide(squares.size());
  for (std::size_t i = 0; i < squares.size(); ++i) {
    if (squares[i] == 0) {
      continue;
    }
    const std::size_t left = i % columns > 0 ? 1 : 0;
    const std::size_t right = i % columns + 1 < columns ? 1 : 0;
    for (std::size_t row = i < columns ? i : i - columns; row <= i + columns && row < wide.size();
         row += columns) {
      std::fill(wide.begin() + static_cast<std::ptrdiff_t>(row - left),
                wide.begin() + static_cast<std::ptrdiff_t>(row + right + 1), std::uint8_t{1});
    }
  }
  return wide;
}

}  // namespace

PaperFill::PaperFill(const SamplePicture& picture, std::uint32_t halo)
    : picture_(&picture),
      halo_(halo),
      columns_(SquaresIn(picture.width)),
      is_covered_(picture.pixels()),
      has_ink_(std::size_t{columns_} * SquaresIn(picture.height)) {}

void PaperFill::Cover(std::uint32_t y, std::uint32_t left, std::uint32_t right) {
  const std::uint32_t from = left - std::min(left, halo_);
  const std::uint32_t to = std::min(picture_->width, right + halo_);
  const std::uint32_t last = std::min(picture_->height - 1, y + halo_);
  for (std::uint32_t row = y - std::min(y, halo_); row <= last; ++row) {
    std::fill_n(is_covered_.begin() +
                    static_cast<std::ptrdiff_t>(std::size_t{row} * picture_->width + from),
                to - from, std::uint8_t{1});
  }
  const std::size_t square = std::size_t{y / kSquare} * columns_;
  for (std::uint32_t column = left / kSquare; column <= (right - 1) / kSquare; ++column) {
    has_ink_[square + column] = 1;
  }
}

SamplePicture PaperFill::Fill(PictureSize size) const {
  PaperGrid grid = GridOf(*picture_, is_covered_);
  FillGaps(grid);
  const std::vector<std::uint8_t> is_beside_ink = Widened(has_ink_, columns_);
  return ReadPicture(*ReducePicture(
      std::make_unique<FilledRows>(*picture_, is_covered_, is_beside_ink, std::move(grid)),
      size.width, size.height));
}

}  // namespace TarnixTools::engines::optimizer
