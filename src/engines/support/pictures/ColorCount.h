// Finds pictures that need fewer bits than they have.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_COLORCOUNT_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_COLORCOUNT_H_

#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

// Stores gray of 8 bits in 1, 2 or 4 bits where its values are all among those that these can say.
// Nothing happens to a picture with a colour key.
void ReduceGray(Raster& raster);

// The same, and besides: RGB without colour becomes gray, unless a profile speaks of RGB; RGB of up
// to 256 colours, and gray of up to 16, get a palette.
void ReduceColors(Raster& raster);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_COLORCOUNT_H_
