// What an Exif block says about seeing the picture (Exif 2.32, 4.6): orientation and resolution.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_EXIF_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_EXIF_H_

#include <string_view>

#include "engines/support/pictures/Orientation.h"

namespace TarnixTools::engines {

struct ExifFacts {
  int orientation = kUpright;  // 1 to 8; other values in the block count as 1
  double dpi_x = 0;            // 0: not said
  double dpi_y = 0;
};

// block: a TIFF header and what follows it. What is damaged is left at its default.
ExifFacts ReadExif(std::string_view block);

// The same with "Exif\0\0" before it, which is not needed.
ExifFacts ReadExifSegment(std::string_view segment);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_EXIF_H_
