// How a decoded picture becomes an image of a document without losing anything.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_RASTERENCODER_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_RASTERENCODER_H_

#include <cstdint>

#include "engines/support/images/EncodedImage.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

enum class Packing : std::uint8_t {
  kQuick,  // a few per cent larger than it could be
  kDense,  // as small as Flate can be made, in several times the time
};

// Stores a picture losslessly, in the smallest of a few ways: without colour where there is none,
// in fewer bits, with a palette, and with the PNG predictor that suits it.
EncodedImage EncodeRaster(Raster&& raster, Packing packing = Packing::kQuick);

// Stores samples as they are: nothing is taken for a palette, for gray or for fewer bits.
ImageStream EncodePlane(Plane&& samples, PictureSpace space, Packing packing);

// Whether black and white in this many bytes of fax data has text or drawings before it, which no
// other coding makes smaller: none needs to be tried.
bool IsBestAsFax(std::uint64_t fax_bytes, std::uint32_t width, std::uint32_t height);

// The soft mask for an alpha channel.
ImageStream EncodeMask(Plane&& alpha, Packing packing = Packing::kQuick);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_RASTERENCODER_H_
