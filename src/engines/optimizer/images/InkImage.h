// Images whose components are amounts of inks, of any number (DeviceN; ISO 32000-2, 8.6.6.5): they
// stay in these inks, in the pixels that are needed, and are coded without loss.
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_INKIMAGE_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_INKIMAGE_H_

#include <cstdint>
#include <optional>

#include "engines/optimizer/images/CodedPicture.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/images/SampleRows.h"

namespace TarnixTools::engines::optimizer {

struct InkTask {
  std::uint64_t encoded_bytes = 0;  // as it is now
  PictureSize wanted;               // pixels, not more than there are
  SampleRowsPtr samples;
};

// Nothing where that is not smaller than the image is now, and when the data ends within the
// picture. Uses up the samples.
std::optional<CodedPicture> CodeInks(InkTask& task);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_INKIMAGE_H_
