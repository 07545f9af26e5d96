#include "engines/img2pdf/PageLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TarnixTools::engines::img2pdf {

namespace {

constexpr double kPointsPerInch = 72;

struct Size {
  double width = 0;
  double height = 0;
};

double Points(std::uint32_t pixels, double dpi) {
  return pixels * kPointsPerInch / (dpi > 0 ? dpi : kDefaultDpi);
}

// Puts the turned unit square onto a rectangle.
pdf::Matrix Place(int orientation, double left, double bottom, Size size) {
  pdf::Matrix m = OrientationMatrix(orientation);
  m.a *= size.width;
  m.c *= size.width;
  m.e = m.e * size.width + left;
  m.b *= size.height;
  m.d *= size.height;
  m.f = m.f * size.height + bottom;
  return m;
}

void UseLargerUnits(PageLayout& layout) {
  const double longest = std::max(layout.width, layout.height);
  if (longest <= kMaxPageUnits) {
    return;
  }
  layout.user_unit = static_cast<int>(std::ceil(longest / kMaxPageUnits));
  for (double* value : {&layout.width, &layout.height, &layout.matrix.a, &layout.matrix.b,
                        &layout.matrix.c, &layout.matrix.d, &layout.matrix.e, &layout.matrix.f}) {
    *value /= layout.user_unit;
  }
}

}  // namespace

std::optional<PageLayout> LayOut(const ImageFrame& frame, const PageSettings& settings) {
  const int stored = settings.makes_upright ? frame.orientation : kUpright;
  const int orientation = Compose(stored, settings.orientation);
  Size size = {Points(frame.width, frame.dpi_x), Points(frame.height, frame.dpi_y)};
  if (SwapsSides(orientation)) {
    std::swap(size.width, size.height);
  }
  PageLayout layout;
  layout.width = settings.is_adjusted ? size.width + 2 * settings.border : settings.width;
  layout.height = settings.is_adjusted ? size.height + 2 * settings.border : settings.height;
  const Size space = {layout.width - 2 * settings.border, layout.height - 2 * settings.border};
  if (layout.width <= 0 || layout.height <= 0 || space.width <= 0 || space.height <= 0) {
    return std::nullopt;
  }
  if (!settings.is_adjusted && settings.is_fitted) {
    const double scale = std::min(space.width / size.width, space.height / size.height);
    size = {size.width * scale, size.height * scale};
  }
  double left = settings.border;
  double bottom = settings.border + space.height - size.height;
  if (!settings.is_adjusted && settings.is_centered) {
    left += (space.width - size.width) / 2;
    bottom = settings.border + (space.height - size.height) / 2;
  }
  layout.matrix = Place(orientation, left, bottom, size);
  UseLargerUnits(layout);
  return layout;
}

}  // namespace TarnixTools::engines::img2pdf
