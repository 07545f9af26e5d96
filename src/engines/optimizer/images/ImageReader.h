// Reads an image of a document for the optimizer: what it is, and its samples, so that the rest can
// be done without the document.
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEREADER_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEREADER_H_

#include <cstdint>
#include <optional>
#include <variant>

#include "engines/optimizer/OptimizerReport.h"
#include "engines/optimizer/images/ImageGoals.h"
#include "engines/optimizer/images/ImageOptimizer.h"
#include "engines/optimizer/images/InkImage.h"
#include "engines/optimizer/survey/DocumentSurvey.h"
#include "engines/support/images/SampleRows.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::optimizer {

enum class ImageRole : std::uint8_t { kDrawn, kSoftMask, kStencilMask };

// An image of one bit a pixel.
struct BitonalTask {
  std::uint64_t encoded_bytes = 0;
  SampleRowsPtr samples;
};

struct ImageInput {
  // The reason: it is not to be touched.
  std::variant<LeftAlone, BitonalTask, InkTask, ImageTask> task = LeftAlone::kUnhandled;
  std::uint64_t encoded_bytes = 0;
  std::uint64_t held_bytes = 0;  // that work on it takes
  std::uint32_t soft_mask = 0;   // numbers of its masks; 0 for none
  std::uint32_t stencil_mask = 0;
  std::optional<ImagePart> part;  // that the task is about, where the rest is never shown
  bool has_matte = false;         // image and soft mask have to have the same size
};

// Throws pdf::Error for a document that cannot be read any more.
ImageInput ReadImage(pdf::Document& document, std::uint32_t number, ImageRole role,
                     const ImagePlacement& placement, const ImageGoals& goals);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEREADER_H_
