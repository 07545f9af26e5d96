// How large an image becomes and where in it the page goes.
#ifndef TARNIX_ENGINES_RASTERISER_IMAGEGEOMETRY_H_
#define TARNIX_ENGINES_RASTERISER_IMAGEGEOMETRY_H_

#include <cstdint>

#include "engines/support/drawing/Placement.h"

namespace TarnixTools::engines::rasteriser {

enum class SizeKind : std::uint8_t { kOfPage, kPixels, kPoints };

// What the host asked for.
struct ImageSettings {
  double dpi = 100;
  int quality = 100;
  bool is_png = false;
  bool is_gray = false;
  SizeKind size_kind = SizeKind::kOfPage;
  double width = 0;  // in the unit of size_kind
  double height = 0;
  bool fits_page = false;
};

struct ImageGeometry {
  int image_width = 0;  // pixels
  int image_height = 0;
  Placement page;
};

// Throws Pdf2ImgFailure(kPdf2ImgImageSizeError) for an image that the format cannot hold.
ImageGeometry GeometryOf(const ImageSettings& settings, double width_points, double height_points);

}  // namespace TarnixTools::engines::rasteriser

#endif  // TARNIX_ENGINES_RASTERISER_IMAGEGEOMETRY_H_
