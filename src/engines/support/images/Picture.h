// Images of documents as they are seen: decoded, in sRGB or gray, what is transparent on white.
//
// ImageSamples.h has the samples as they are, ImageColors.h the colours without the masks, and
// ImageAlpha.h the masks alone.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_PICTURE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_PICTURE_H_

#include "engines/support/codecs/JpegReader.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

// An image mask is the black picture that it paints. Null for an image of which nothing can be
// read. The image is used until the picture is done. Throws pdf::Error.
//   least - it may come out smaller, where that saves time, but with that many pixels at least
RowSourcePtr OpenPicture(const DocumentImage& image, const ImageFacts& facts,
                         PictureSize least = kWholePicture);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_PICTURE_H_
