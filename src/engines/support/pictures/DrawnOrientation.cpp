#include "engines/support/pictures/DrawnOrientation.h"

#include <algorithm>
#include <cmath>

namespace TarnixTools::engines {

std::int32_t OrientationOf(const pdf::Matrix& matrix) {
  // The image's own directions, to the right and up, as vectors of length one.
  const double right = std::hypot(matrix.a, matrix.b);
  const double up = std::hypot(matrix.c, matrix.d);
  const double along =
      (right > 0 ? std::abs(matrix.a) / right : 0) + (up > 0 ? std::abs(matrix.d) / up : 0);
  const double across =
      (right > 0 ? std::abs(matrix.b) / right : 0) + (up > 0 ? std::abs(matrix.c) / up : 0);
  if (!(across > along)) {  // also where nothing can be told
    const bool is_mirrored = matrix.a < 0;
    const bool is_upside_down = matrix.d < 0;
    return is_mirrored ? (is_upside_down ? 3 : 2) : (is_upside_down ? 4 : 1);
  }
  const bool right_goes_up = matrix.b > 0;
  const bool up_goes_right = matrix.c > 0;
  return right_goes_up ? (up_goes_right ? 7 : 8) : (up_goes_right ? 6 : 5);
}

bool IsSkewed(const pdf::Matrix& matrix) {
  constexpr double kTolerance = 1e-3;
  const double size =
      std::max({std::abs(matrix.a), std::abs(matrix.b), std::abs(matrix.c), std::abs(matrix.d)});
  const bool is_along =
      std::abs(matrix.b) <= kTolerance * size && std::abs(matrix.c) <= kTolerance * size;
  const bool is_across =
      std::abs(matrix.a) <= kTolerance * size && std::abs(matrix.d) <= kTolerance * size;
  return !is_along && !is_across;
}

}  // namespace TarnixTools::engines
