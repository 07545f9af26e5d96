// Images as a document stores them: JPEG and JPEG 2000 data as it is, fax data as a TIFF file, everything
// else as a PNG file of what is seen.
#ifndef TARNIX_ENGINES_PARSER_ORIGINALIMAGE_H_
#define TARNIX_ENGINES_PARSER_ORIGINALIMAGE_H_

#include <cstdint>

#include "engines/support/images/DocumentImage.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines::parser {

enum class OriginalFormat : std::uint8_t { kJpeg, kJpx, kTiff, kPng };

// Throws pdf::Error for a document that cannot be read any more.
OriginalFormat OriginalFormatOf(const DocumentImage& image, const ImageFacts& facts);

// Writes the image in the format that OriginalFormatOf gives. False when a part of it could not be read
// and is white. Throws pdf::Error, and ExpaFailure(kExpaImageError) for one of which nothing can be read.
bool WriteOriginal(const DocumentImage& image, const ImageFacts& facts, pdf::ByteSink& sink);

}  // namespace TarnixTools::engines::parser

#endif  // TARNIX_ENGINES_PARSER_ORIGINALIMAGE_H_
