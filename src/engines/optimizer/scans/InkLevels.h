// How dark a pixel of a scanned page has to be to count as ink, place by place: neither the light
// nor the ink is the same all over a page.
//
//   const InkLevels levels(lightness, 300);
//   levels.ReadRow(y, limits);
//   if (lightness.row(y)[x] < limits[x]) ...   // ink
#ifndef TARNIX_ENGINES_OPTIMIZER_SCANS_INKLEVELS_H_
#define TARNIX_ENGINES_OPTIMIZER_SCANS_INKLEVELS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engines/optimizer/images/SamplePicture.h"

namespace TarnixTools::engines::optimizer {

class InkLevels {
 public:
  //   lightness - a byte a pixel
  //   dpi       - its pixels per inch
  InkLevels(const SamplePicture& lightness, double dpi);

  // The lightness below which pixels of a row are ink; 0 where no ink is near.
  void ReadRow(std::uint32_t y, std::uint8_t* limits) const;

  // What half of the page is at least as bright as.
  int paper() const { return paper_; }

  // Between paper and ink around a pixel; 0 where no ink is near.
  int ContrastAt(std::uint32_t x, std::uint32_t y) const {
    return contrasts_[y / side_ * columns_ + x / side_];
  }

 private:
  void Measure(const SamplePicture& lightness);
  void SetLimits();
  int Most(std::size_t column, std::size_t row) const;
  int Least(std::size_t column, std::size_t row) const;

  std::uint32_t side_;  // of a cell, in pixels
  std::uint32_t width_;
  std::size_t columns_;
  std::size_t rows_;
  std::vector<std::uint8_t> bright_;  // of each cell: what most of its pixels are not brighter than
  std::vector<std::uint8_t> dark_;    // and what hardly any are darker than
  std::vector<std::uint8_t> limits_;
  std::vector<std::uint8_t> contrasts_;
  int paper_ = 255;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_SCANS_INKLEVELS_H_
