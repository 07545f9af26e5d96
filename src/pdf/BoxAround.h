// The smallest box around two.
#ifndef TARNIX_PDF_BOXAROUND_H_
#define TARNIX_PDF_BOXAROUND_H_

#include <algorithm>

#include "pdf/Box.h"

namespace TarnixTools::pdf {

constexpr Box BoxAround(const Box& one, const Box& other) {
  return {std::min(one.left, other.left), std::min(one.bottom, other.bottom),
          std::max(one.right, other.right), std::max(one.top, other.top)};
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_BOXAROUND_H_
