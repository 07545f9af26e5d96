// A scanned page taken apart: ink in a few colours, sharp, over the paper with all that is no ink.
//
//   if (std::optional<ScanLayers> layers = TakeApart(picture, 300, {1240, 1754})) {
//     Code(layers->background);
//     for (const InkLayer& ink : layers->inks) ...
#ifndef TARNIX_ENGINES_OPTIMIZER_SCANS_SCANLAYERS_H_
#define TARNIX_ENGINES_OPTIMIZER_SCANS_SCANLAYERS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engines/optimizer/images/SamplePicture.h"
#include "engines/optimizer/scans/InkShapes.h"
#include "engines/support/codecs/JpegReader.h"

namespace TarnixTools::engines::optimizer {

// What is printed in one colour. No pixel is of two inks.
struct InkLayer {
  std::vector<std::uint8_t> bits;  // rows of ScanLayers::stride bytes; 1 for ink
};

struct ScanLayers {
  std::uint32_t width = 0;  // pixels of the inks
  std::uint32_t height = 0;
  std::size_t stride = 0;
  std::vector<InkLayer> inks;
  SamplePicture background;  // paper where the ink has been
};

// Nothing for what is no text on paper.
//   picture    - gray or RGB
//   dpi        - its pixels per inch
//   background - pixels of the background, not more than the picture has
std::optional<ScanLayers> TakeApart(const SamplePicture& picture, double dpi,
                                    PictureSize background);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_SCANS_SCANLAYERS_H_
