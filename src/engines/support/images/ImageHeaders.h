// What the data of an image of a document says of its picture, read from the start of the data.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEHEADERS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEHEADERS_H_

#include <optional>

#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/JpxHeader.h"
#include "engines/support/images/DocumentImage.h"

namespace TarnixTools::engines {

// Of an image whose only filter is /DCTDecode. Nothing when there is no frame header in the first
// limits::kMaxHeaderBytes. Throws pdf::Error.
std::optional<JpegHeader> JpegHeaderOf(const DocumentImage& image);

// Of an image whose only filter is /JPXDecode. Nothing when there is no code stream in the first
// limits::kMaxHeaderBytes. Throws pdf::Error.
std::optional<JpxHeader> JpxHeaderOf(const DocumentImage& image);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEHEADERS_H_
