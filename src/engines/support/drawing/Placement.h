// Places on a bitmap, in pixels; rows go downwards.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_PLACEMENT_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_PLACEMENT_H_

#include <algorithm>

namespace TarnixTools::engines {

// Where a page goes; it may reach beyond the bitmap on every side.
struct Placement {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

// The right and the bottom lie beyond it.
struct PixelBox {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int width() const { return right - left; }

  int height() const { return bottom - top; }

  bool IsEmpty() const { return left >= right || top >= bottom; }

  PixelBox With(const PixelBox& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
  }
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_PLACEMENT_H_
