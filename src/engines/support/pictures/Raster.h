// A decoded picture, and how it becomes an image of a PDF document without losing anything.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_RASTER_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_RASTER_H_

#include <cstdint>
#include <string>

#include "engines/support/images/EncodedImage.h"
#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines {

struct Raster {
  PictureSpace space = PictureSpace::kGray;
  Plane color;
  std::string palette;            // of an indexed picture, as in ImageStream
  std::string profile;            // a usable one, or none
  bool is_inverted = false;       // gray of which 0 is white, CMYK of which 0 is all ink
  bool is_premultiplied = false;  // colours have been multiplied by the alpha
  std::string color_key;          // as in ImageStream
  Plane alpha;                    // one channel; empty when all is opaque
};

// Takes samples apart whose last channel is the alpha: sets color and alpha.
void SplitAlpha(const Plane& samples, Raster& raster);

// Makes a picture of indices of 1, 2, 4 or 8 bits and a palette of three bytes for each index: gray
// where the palette is black and white, with as few bits as the palette needs. transparent: an
// index that is not painted, or -1.
void ApplyPalette(Raster& raster, Plane&& indices, const std::string& palette,
                  int transparent = -1);

// Stores a picture losslessly, in the smallest of a few ways: without colour where there is none,
// in fewer bits, with a palette, and with the PNG predictor that suits it.
EncodedImage EncodeRaster(Raster&& raster);

// Whether black and white in this many bytes of fax data has text or drawings before it, which no
// other coding makes smaller: none needs to be tried.
bool IsBestAsFax(std::uint64_t fax_bytes, std::uint32_t width, std::uint32_t height);

// The soft mask for an alpha channel.
ImageStream EncodeMask(Plane&& alpha);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_RASTER_H_
