// The row filters of PNG (PNG, clause 9), on planes in place.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_PNGFILTERS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_PNGFILTERS_H_

#include <cstddef>
#include <cstdint>

#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines {

// Turns filtered rows into samples: what each row's first byte says; unknown types count as none.
//   data        - rows of stride bytes
//   pixel_bytes - bytes from a sample to the same one of the pixel before, at least 1
void Unfilter(unsigned char* data, std::size_t rows, std::size_t stride, std::size_t pixel_bytes);

enum class RowFilter : std::uint8_t {
  kNone = 0,
  kSub = 1,
  kUp = 2,
  kAverage = 3,
  kPaeth = 4,
  kBest
};

// Filters all rows, kBest choosing for each row the filter whose result has the smallest sum of
// absolute values.
void Filter(Plane& plane, RowFilter filter);

// Filters `count` rows from `first` on; they go to `out`, rows of plane.stride() bytes, and the
// plane stays as it is.
void FilterRows(const Plane& plane, std::uint32_t first, std::uint32_t count, RowFilter filter,
                unsigned char* out);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_PNGFILTERS_H_
