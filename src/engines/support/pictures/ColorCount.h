// Finds pictures that need fewer bits than they have.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_COLORCOUNT_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_COLORCOUNT_H_

#include <string>

#include "engines/support/pictures/Plane.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

// Makes a picture of indices of 1, 2, 4 or 8 bits and a palette of three bytes for each index: gray
// where the palette is black and white, with as few bits as the palette needs. transparent: an
// index that is not painted, or -1.
void ApplyPalette(Raster& raster, Plane&& indices, const std::string& palette,
                  int transparent = -1);

// Stores gray of 8 bits in 1, 2 or 4 bits where its values are all among those that these can say.
// Nothing happens to a picture with a colour key.
void ReduceGray(Raster& raster);

// Stores a picture with as few colours and bits as it needs: gray as ReduceGray does; RGB without
// colour becomes gray, unless a profile speaks of RGB; RGB of up to 256 colours, and gray of up to
// 16, get a palette.
void ReduceColors(Raster& raster);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_COLORCOUNT_H_
