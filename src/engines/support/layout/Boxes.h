// Boxes on a page whose y runs downwards: the upper edge of a box is its `bottom`, the lesser y.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_BOXES_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_BOXES_H_

#include <algorithm>

#include "pdf/Box.h"
#include "pdf/BoxAround.h"

namespace TarnixTools::engines {

inline double UpperEdge(const pdf::Box& box) {
  return box.bottom;
}

inline double LowerEdge(const pdf::Box& box) {
  return box.top;
}

inline double MiddleX(const pdf::Box& box) {
  return (box.left + box.right) / 2;
}

inline double MiddleY(const pdf::Box& box) {
  return (box.bottom + box.top) / 2;
}

inline double AreaOf(const pdf::Box& box) {
  return std::max(0.0, box.width()) * std::max(0.0, box.height());
}

inline pdf::Box Around(const pdf::Box& a, const pdf::Box& b) {
  return pdf::BoxAround(a, b);
}

// The box, this much larger on every side.
inline pdf::Box Grown(const pdf::Box& box, double margin) {
  return {box.left - margin, box.bottom - margin, box.right + margin, box.top + margin};
}

inline bool Holds(const pdf::Box& box, double x, double y) {
  return x >= box.left && x <= box.right && y >= box.bottom && y <= box.top;
}

// How much of their heights, or widths, both share; negative: how far they are apart.
inline double SharedHeight(const pdf::Box& a, const pdf::Box& b) {
  return std::min(a.top, b.top) - std::max(a.bottom, b.bottom);
}

inline double SharedWidth(const pdf::Box& a, const pdf::Box& b) {
  return std::min(a.right, b.right) - std::max(a.left, b.left);
}

// The share of a's area that b covers; of a box without area, whether its middle is in b.
inline double CoveredShare(const pdf::Box& a, const pdf::Box& b) {
  const double area = AreaOf(a);
  if (area <= 0) {
    return Holds(b, MiddleX(a), MiddleY(a)) ? 1 : 0;
  }
  return AreaOf(a.Within(b)) / area;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_BOXES_H_
