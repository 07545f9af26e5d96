// Images of documents whose data is a JPEG file that any viewer shows as the document does.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_READYJPEG_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_READYJPEG_H_

#include "engines/support/images/DocumentImage.h"

namespace TarnixTools::engines {

// Whether the data is a JPEG file that shows, as it is, what is drawn. Throws pdf::Error.
//   orientation - as in EXIF: how the image is drawn
bool IsReadyJpeg(const DocumentImage& image, const ImageFacts& facts, int orientation);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_READYJPEG_H_
