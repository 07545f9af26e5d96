// A decoded picture, its colours and its alpha apart.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_RASTER_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_RASTER_H_

#include <cstdint>
#include <string>

#include "engines/support/pictures/PictureSpace.h"
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

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_RASTER_H_
