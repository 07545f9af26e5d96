// The samples of an image of a document as they are behind all of its filters: in its own colour
// space and depth, nothing converted, no mask applied.
//
//   if (std::optional<ImageSamples> samples = OpenSamples(image, facts)) {
//     for (std::uint32_t y = 0; y < samples->rows->format().height; ++y) {
//       const std::span<const std::uint8_t> row = samples->rows->ReadRow();
//
// What they look like is a matter of ImageColors.h, where they are transparent one of ImageAlpha.h.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGESAMPLES_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGESAMPLES_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/SampleRows.h"

namespace TarnixTools::engines {

// The alpha channel of JPEG 2000 data.
struct AlphaChannel {
  std::vector<std::uint8_t> samples;  // a byte for each pixel; 255 is opaque
  bool is_premultiplied = false;      // the colours have been multiplied by it
};

struct ImageSamples {
  SampleRowsPtr rows;

  // What the components of a pixel mean. The colour space of the dictionary, unless the data has
  // another number of components, or is JPEG 2000 data with a colour space that goes before.
  ColorSpace space;

  // /Decode, which has not been applied: pairs of what the least and the greatest sample stand for.
  // Empty where there is none, or none that changes anything. JPEG 2000 data has none, but for an
  // image mask (ISO 32000-2, table 87).
  std::vector<double> decode;

  // Where the dictionary says that it is the image's soft mask.
  std::optional<AlphaChannel> alpha;

  // False when a part of JBIG2 data could not be decoded: it is white.
  bool is_complete = true;
};

// The colour space that the dictionary tells; gray for an image mask. Nothing for what is none.
// Throws pdf::Error for a document that cannot be read any more.
std::optional<ColorSpace> SpaceOf(const DocumentImage& image, const ImageFacts& facts);

// How fax data is coded; nothing for a number of columns that cannot be. Throws pdf::Error.
std::optional<CcittParameters> CcittParametersOf(const DocumentImage& image,
                                                 const ImageFacts& facts);

// JPEG data is decoded to gray, RGB or CMYK as /ColorTransform says and CMYK stays as it is stored,
// JPEG 2000 data to eight bits a component, an index of a palette as it is. There are fewer rows
// than the dictionary claims where it claims far more than there is data for. Nothing for data that
// is not decoded here: other JBIG2 data than Jbig2Decoder.h reads, filters that are unknown, what
// is damaged from the start. The image is used until the rows are read. Throws pdf::Error.
//   space - SpaceOf(image, facts), by who has it already
//   least - there may be fewer pixels, where that saves time, but as many as that at least
std::optional<ImageSamples> OpenSamples(const DocumentImage& image, const ImageFacts& facts);
std::optional<ImageSamples> OpenSamples(const DocumentImage& image, const ImageFacts& facts,
                                        const std::optional<ColorSpace>& space, PictureSize least);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGESAMPLES_H_
