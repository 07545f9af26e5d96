// A scanned page in its two layers (ScanLayers.h), coded: ink without loss as stencils, the paper as
// JPEG, or Flate where that is smaller, in as many pixels as the level asks for.
//
//   const CodedScan scan = CodeScan(layers, page, look, sizes, goals);
//   if (CostOf(scan.bytes(), scan.similarity, goals) < cost_now) ...
#ifndef TARNIX_ENGINES_OPTIMIZER_SCANS_SCANCODER_H_
#define TARNIX_ENGINES_OPTIMIZER_SCANS_SCANCODER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engines/optimizer/images/CodedPicture.h"
#include "engines/optimizer/images/ImageGoals.h"
#include "engines/optimizer/images/Similarity.h"
#include "engines/optimizer/scans/ScanLayers.h"
#include "engines/support/codecs/JpegReader.h"

namespace TarnixTools::engines::optimizer {

// A stencil, and what it is painted with: components of the picture's colours, 0 to 1.
struct CodedInk {
  CodedPicture stencil;
  std::size_t components = 1;
  std::array<double, 3> color{};
};

struct CodedScan {
  // What is stored, with all that a document needs for it.
  std::uint64_t bytes() const;

  CodedPicture background;
  std::vector<CodedInk> inks;
  double similarity = 0;  // to the look of the page
};

// The best by its bytes and its look together.
//   page  - the page in the pixels that it is seen in, in colours
//   look  - of the page in these pixels
//   sizes - that the background may have, smaller ones first
CodedScan CodeScan(const ScanLayers& layers, const SamplePicture& page, const Look& look,
                   const std::vector<PictureSize>& sizes, const ImageGoals& goals);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_SCANS_SCANCODER_H_
