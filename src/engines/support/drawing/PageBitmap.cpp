#include "engines/support/drawing/PageBitmap.h"

#include <algorithm>
#include <cmath>

#include "engines/support/drawing/DrawingError.h"
#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {
namespace {

constexpr double kPointsPerInch = 72;

std::size_t RowBytes(int width) {
  return std::size_t{4} * static_cast<std::size_t>(width);
}

int ToPixels(double points, double dpi) {
  const double pixels = points * dpi / kPointsPerInch;
  if (!(pixels <= limits::kMaxSide)) {
    throw DrawingError(DrawingErrorCode::kMemory);
  }
  return std::max(1, static_cast<int>(std::lround(pixels)));
}

// Has the loaded page placed on a bitmap of the size that it has at that resolution.
PageBand PlaceAt(DrawnDocument& document, double dpi) {
  const PageBand whole = {.width = ToPixels(document.width_points(), dpi),
                          .height = ToPixels(document.height_points(), dpi),
                          .top = 0,
                          .row_count = 0,
                          .pixels = {}};
  document.Place({.left = 0, .top = 0, .width = whole.width, .height = whole.height});
  return whole;
}

}  // namespace

int BandHeightOf(int width, int height) {
  const std::size_t row_bytes = RowBytes(width);
  const std::size_t bytes =
      std::clamp(row_bytes * static_cast<std::size_t>(height) / limits::kBands,
                 limits::kMinBandBytes, limits::kMaxBandBytes);
  return static_cast<int>(
      std::clamp<std::size_t>(bytes / row_bytes, 1, static_cast<std::size_t>(height)));
}

namespace {

// Draws the loaded page on a bitmap of its own, and is done with it.
PageBitmap DrawPlaced(DrawnDocument& document, int width, int height) {
  const std::size_t row_bytes = RowBytes(width);
  if (row_bytes * static_cast<std::size_t>(height) > limits::kMaxBitmapBytes) {
    throw DrawingError(DrawingErrorCode::kMemory);
  }
  PageBitmap bitmap{.width = width, .height = height, .pixels = {}, .is_partial = false};
  bitmap.pixels.assign(row_bytes * static_cast<std::size_t>(height), 0xFF);
  const int step = BandHeightOf(width, height);
  for (int top = 0; top < height; top += step) {
    document.Draw(bitmap.pixels.data() + row_bytes * static_cast<std::size_t>(top), width, top,
                  std::min(step, height - top));
  }
  document.ReleasePage();
  bitmap.is_partial = document.is_page_partial();
  return bitmap;
}

}  // namespace

PageBitmap DrawPage(DrawnDocument& document, int page_index, double dpi) {
  document.LoadPage(page_index);
  const PageBand whole = PlaceAt(document, dpi);
  return DrawPlaced(document, whole.width, whole.height);
}

PageBitmap DrawRegionWithoutText(DrawnDocument& document, int page_index, const pdf::Box& region,
                                 double dpi) {
  document.LoadPage(page_index);
  document.LeaveTextOut();
  const auto place = [dpi](double points) {
    return static_cast<int>(std::lround(points * dpi / kPointsPerInch));
  };
  document.Place({.left = -place(region.left),
                  .top = -place(region.bottom),
                  .width = ToPixels(document.width_points(), dpi),
                  .height = ToPixels(document.height_points(), dpi)});
  return DrawPlaced(document, ToPixels(region.width(), dpi), ToPixels(region.height(), dpi));
}

bool DrawPageInBands(DrawnDocument& document, int page_index, double dpi,
                     const std::function<void(const PageBand& band)>& take) {
  document.LoadPage(page_index);
  PageBand band = PlaceAt(document, dpi);
  const int step = BandHeightOf(band.width, band.height);
  std::vector<std::uint8_t> pixels;
  for (band.top = 0; band.top < band.height; band.top += step) {
    band.row_count = std::min(step, band.height - band.top);
    pixels.assign(RowBytes(band.width) * static_cast<std::size_t>(band.row_count), 0xFF);
    document.Draw(pixels.data(), band.width, band.top, band.row_count);
    band.pixels = pixels;
    take(band);
  }
  document.ReleasePage();
  return !document.is_page_partial();
}

}  // namespace TarnixTools::engines
