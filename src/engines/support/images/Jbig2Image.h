// JBIG2 images of documents that are decoded here.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_JBIG2IMAGE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_JBIG2IMAGE_H_

#include <optional>

#include "engines/support/codecs/Jbig2Decoder.h"
#include "engines/support/images/DocumentImage.h"

namespace TarnixTools::engines {

// Whether it is a JBIG2 image that PDFium cannot be trusted with (Jbig2Decoder.h). Throws
// pdf::Error for a document that cannot be read any more.
bool IsOwnJbig2(const DocumentImage& image, const ImageFacts& facts);

// Its rows, as the filter gives them; nothing for an image that is no JBIG2 image or cannot be
// decoded here. Throws pdf::Error.
std::optional<Jbig2Rows> DecodeJbig2Image(const DocumentImage& image, const ImageFacts& facts);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_JBIG2IMAGE_H_
