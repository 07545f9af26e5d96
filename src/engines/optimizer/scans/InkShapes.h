// The ink of a scanned page as shapes: pixels of one hue that touch each other, letters for example.
//
//   const InkShapes ink = FindInk(picture, lightness, 300);
//   for (const InkRun& run : ink.runs) {
//     if (ink.shapes[run.shape].IsPrinted(300)) ...
#ifndef TARNIX_ENGINES_OPTIMIZER_SCANS_INKSHAPES_H_
#define TARNIX_ENGINES_OPTIMIZER_SCANS_INKSHAPES_H_

#include <array>
#include <cstdint>
#include <vector>

#include "engines/optimizer/images/SamplePicture.h"

namespace TarnixTools::engines::optimizer {

// Components of a colour, as many as the picture has; the others are 0.
using InkColor = std::array<double, 3>;

// Pixels side by side.
struct InkRun {
  std::uint32_t y = 0;
  std::uint32_t left = 0;
  std::uint32_t right = 0;  // behind the last one
  std::uint32_t shape = 0;
};

struct InkShape {
  std::uint64_t pixels = 0;
  std::uint64_t core_pixels = 0;  // all four neighbours of which are ink, too
  InkColor color{};               // the mean of the core, or of all pixels where there is none
  double spread = 0;              // of the core: its standard deviation
  std::uint64_t edges = 0;        // between one of its pixels and one that is none
  std::uint64_t soft_edges = 0;   // across which it hardly becomes lighter

  // Whether it looks like something in one colour with a sharp border, and no speck.
  bool IsPrinted(double dpi) const;
  bool IsSpeck(double dpi) const;
};

struct InkShapes {
  std::vector<InkRun> runs;  // by rows, from the left
  std::vector<InkShape> shapes;
};

// All that is darker than the paper around it; no shapes where that is too much for a page of text.
//   lightness - of the picture, a byte a pixel
InkShapes FindInk(const SamplePicture& picture, const SamplePicture& lightness, double dpi);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_SCANS_INKSHAPES_H_
