// The colours of an image of a document in sRGB or gray, whoever decodes it, masks apart.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGECOLORS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGECOLORS_H_

#include <memory>
#include <optional>

#include "engines/support/codecs/JpegReader.h"
#include "engines/support/images/ColorRows.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

// One of the two, or none for an image of which nothing can be read.
struct ImageColors {
  std::unique_ptr<ColorRows> colors;
  std::optional<AlphaChannel> alpha;  // of colors, where JPEG 2000 data has it

  // The picture as PDFium draws it: with all masks, on white. For colour spaces that are not
  // computed and data that is not decoded here.
  RowSourcePtr drawn;
};

// The image is used until the rows are read. Throws pdf::Error.
//   least - the picture may come out smaller, where that saves time, but with that many pixels at
//           least
ImageColors OpenColors(const DocumentImage& image, const ImageFacts& facts,
                       PictureSize least = kWholePicture);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGECOLORS_H_
