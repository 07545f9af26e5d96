// Images of one bit a pixel, coded without loss.
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_BITONALIMAGE_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_BITONALIMAGE_H_

#include <cstdint>
#include <variant>

#include "engines/optimizer/OptimizerReport.h"
#include "engines/optimizer/images/CodedPicture.h"
#include "engines/support/codecs/BitRows.h"
#include "engines/support/images/SampleRows.h"

namespace TarnixTools::engines::optimizer {

// The smallest coding of the very same samples, whatever they stand for. kSmallest when it is not
// smaller than the image is now, kUnreadable when the data ends within the picture.
//   codecs - OptimizerSettings::bitonal_codecs
std::variant<LeftAlone, CodedPicture> CodeBitonal(SampleRows& samples, std::uint32_t codecs,
                                                  std::uint64_t bytes_now);

// The smallest coding of a stencil that paints what is black.
//   codecs - OptimizerSettings::bitonal_codecs
CodedPicture CodeStencil(const BitPicture& bits, std::uint32_t codecs);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_BITONALIMAGE_H_
