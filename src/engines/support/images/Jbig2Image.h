// JBIG2 images of documents that are decoded here rather than by PDFium.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_JBIG2IMAGE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_JBIG2IMAGE_H_

#include <optional>
#include <string>

#include "engines/support/images/DocumentImage.h"

namespace TarnixTools::engines {

// Whether it is a JBIG2 image that PDFium cannot be trusted with (Jbig2Decoder.h). Throws
// pdf::Error for a document that cannot be read any more.
bool IsOwnJbig2(const DocumentImage& image, const ImageFacts& facts);

// Its rows, as the filter gives them; nothing for an image that is PDFium's or cannot be decoded.
// Throws pdf::Error.
std::optional<std::string> DecodeOwnJbig2(const DocumentImage& image, const ImageFacts& facts);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_JBIG2IMAGE_H_
