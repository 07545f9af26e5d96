// Rectangles (ISO 32000-2, 7.9.5).
#ifndef TARNIX_PDF_BOX_H_
#define TARNIX_PDF_BOX_H_

#include "pdf/Matrix.h"

namespace TarnixTools::pdf {

struct Box {
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;

  // Of any two corners that lie opposite each other.
  static Box OfCorners(double x, double y, double other_x, double other_y);

  double width() const { return right - left; }

  double height() const { return top - bottom; }

  // Whether it has no area.
  bool IsEmpty() const { return !(right > left) || !(top > bottom); }

  // Whether all of the other one lies in this one; edges may coincide.
  bool Encloses(const Box& other) const {
    return other.left >= left && other.right <= right && other.bottom >= bottom && other.top <= top;
  }

  // What both cover; empty, and not to be used otherwise, when they do not overlap.
  Box Within(const Box& other) const;
  // The smallest box around what this one becomes.
  Box Through(const Matrix& matrix) const;

  friend bool operator==(const Box&, const Box&) = default;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_BOX_H_
