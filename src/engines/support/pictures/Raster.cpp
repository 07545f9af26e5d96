#include "engines/support/pictures/Raster.h"

#include <cstddef>

namespace TarnixTools::engines {

namespace {

void CopyChannels(const unsigned char* from, unsigned char* to, std::uint32_t width,
                  std::size_t from_step, std::size_t bytes) {
  for (std::uint32_t x = 0; x < width; ++x, from += from_step, to += bytes) {
    for (std::size_t i = 0; i < bytes; ++i) {
      to[i] = from[i];
    }
  }
}

}  // namespace

void SplitAlpha(const Plane& samples, Raster& raster) {
  const int colors = samples.channels() - 1;
  const std::size_t alpha_bytes = static_cast<std::size_t>(samples.bits()) / 8;
  const std::size_t color_bytes = alpha_bytes * static_cast<std::size_t>(colors);
  const std::size_t step = color_bytes + alpha_bytes;
  raster.color = Plane(samples.width(), samples.height(), colors, samples.bits());
  raster.alpha = Plane(samples.width(), samples.height(), 1, samples.bits());
  for (std::uint32_t y = 0; y < samples.height(); ++y) {
    const unsigned char* row = samples.row(y);
    CopyChannels(row, raster.color.row(y), samples.width(), step, color_bytes);
    CopyChannels(row + color_bytes, raster.alpha.row(y), samples.width(), step, alpha_bytes);
  }
}

}  // namespace TarnixTools::engines
