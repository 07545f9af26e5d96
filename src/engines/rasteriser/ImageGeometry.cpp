#include "engines/rasteriser/ImageGeometry.h"

#include <algorithm>
#include <cmath>

#include "engines/rasteriser/Pdf2ImgFailure.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines::rasteriser {
namespace {

constexpr double kPointsPerInch = 72;

// Nearest whole number of pixels, at least one.
int ToPixels(double length, double most) {
  if (!(length <= most)) {
    throw Pdf2ImgFailure(kPdf2ImgImageSizeError);
  }
  return std::max(1, static_cast<int>(std::lround(length)));
}

}  // namespace

ImageGeometry GeometryOf(const ImageSettings& settings, double width_points, double height_points) {
  const double resolution = settings.dpi / kPointsPerInch;
  double width = width_points * resolution;
  double height = height_points * resolution;
  ImageGeometry geometry;
  if (settings.size_kind == SizeKind::kOfPage) {
    geometry.image_width = ToPixels(width, kMaxJpegSide);
    geometry.image_height = ToPixels(height, kMaxJpegSide);
    geometry.page = {0, 0, geometry.image_width, geometry.image_height};
    return geometry;
  }
  const double unit = settings.size_kind == SizeKind::kPoints ? resolution : 1;
  geometry.image_width = ToPixels(settings.width * unit, kMaxJpegSide);
  geometry.image_height = ToPixels(settings.height * unit, kMaxJpegSide);
  if (settings.fits_page) {
    const double scale =
        std::min(geometry.image_width / width_points, geometry.image_height / height_points);
    width = width_points * scale;
    height = height_points * scale;
  }
  geometry.page.width = ToPixels(width, engines::limits::kMaxSide);
  geometry.page.height = ToPixels(height, engines::limits::kMaxSide);
  geometry.page.left = (geometry.image_width - geometry.page.width) / 2;
  geometry.page.top = (geometry.image_height - geometry.page.height) / 2;
  return geometry;
}

}  // namespace TarnixTools::engines::rasteriser
