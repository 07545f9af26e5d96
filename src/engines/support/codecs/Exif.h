// What a TIFF directory says about seeing a picture (TIFF 6.0, section 8), which is also what an
// Exif block says (Exif 2.32, 4.6): orientation and resolution.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_EXIF_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_EXIF_H_

#include <string_view>

#include "engines/support/codecs/TiffDirectory.h"
#include "engines/support/pictures/Orientation.h"

namespace TarnixTools::engines {

struct ExifFacts {
  int orientation = kUpright;  // 1 to 8; other values count as 1
  double dpi_x = 0;            // 0: not said
  double dpi_y = 0;
};

ExifFacts ExifFactsOf(const TiffDirectory& directory, ByteReader& reader);

// block: a TIFF header and what follows it, with "Exif\0\0" before it or without. What is damaged
// is left at its default.
ExifFacts ReadExif(std::string_view block);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_EXIF_H_
