// Writes PNG files (PNG, third edition) of pictures in memory.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_PNGWRITER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_PNGWRITER_H_

#include <string>

#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines {

// The file. Channels: gray, gray and alpha, RGB, or RGB and alpha, each of 8 bits. Throws
// std::bad_alloc.
std::string EncodePng(Plane&& samples);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_PNGWRITER_H_
