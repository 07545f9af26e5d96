#include "pdf/Box.h"

#include <algorithm>

namespace TarnixTools::pdf {

Box Box::OfCorners(double x, double y, double other_x, double other_y) {
  return {std::min(x, other_x), std::min(y, other_y), std::max(x, other_x), std::max(y, other_y)};
}

Box Box::Within(const Box& other) const {
  return {std::max(left, other.left), std::max(bottom, other.bottom), std::min(right, other.right),
          std::min(top, other.top)};
}

// What a corner's x adds to the result does not depend on its y, so the extremes of both add up.
Box Box::Through(const Matrix& matrix) const {
  const auto [least_ax, most_ax] = std::minmax({matrix.a * left, matrix.a * right});
  const auto [least_cy, most_cy] = std::minmax({matrix.c * bottom, matrix.c * top});
  const auto [least_bx, most_bx] = std::minmax({matrix.b * left, matrix.b * right});
  const auto [least_dy, most_dy] = std::minmax({matrix.d * bottom, matrix.d * top});
  return {least_ax + least_cy + matrix.e, least_bx + least_dy + matrix.f,
          most_ax + most_cy + matrix.e, most_bx + most_dy + matrix.f};
}

}  // namespace TarnixTools::pdf
