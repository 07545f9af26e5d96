// Images of documents as JPEG and PNG files.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_PICTUREFILE_H_
#define TARNIX_ENGINES_OFFICE_PAGES_PICTUREFILE_H_

#include <cstdint>
#include <optional>

#include "engines/office/pages/PictureSource.h"
#include "engines/support/drawing/PageBitmap.h"
#include "engines/support/images/DocumentImage.h"

namespace TarnixTools::engines::office {

// The image itself, with its transparency: JPEG data that shows what is drawn as it is, all else as
// PNG, or as JPEG where it has many colours and is opaque. Nothing for an image of which nothing
// can be read, and for a mask, whose colour the page tells. Throws pdf::Error.
//   most_width, most_height - pixels; a larger one is made smaller
std::optional<OfficePicture> FileOfImage(const DocumentImage& image, std::uint32_t most_width,
                                         std::uint32_t most_height);

// A drawn page, or a part of it.
OfficePicture FileOfBitmap(const PageBitmap& bitmap);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_PICTUREFILE_H_
