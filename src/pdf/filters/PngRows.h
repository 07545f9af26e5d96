// The row filters of PNG undone (ISO/IEC 15948, clause 9): for predictors 10 to 15 of streams, and
// for PNG files.
#ifndef TARNIX_PDF_FILTERS_PNGROWS_H_
#define TARNIX_PDF_FILTERS_PNGROWS_H_

#include <cstddef>
#include <cstdlib>

namespace TarnixTools::pdf {

// The filter types that a row is tagged with.
enum PngFilter : unsigned char { kNone = 0, kSub = 1, kUp = 2, kAverage = 3, kPaeth = 4 };

// Of a byte's neighbours (left, above, upper left), the one that is nearest to left + above - upper
// left; without branches, so that compilers make vector code of it.
inline int NearestNeighbour(int left, int above, int corner) {
  const int to_left = std::abs(above - corner);
  const int to_above = std::abs(left - corner);
  const int to_corner = std::abs(left + above - 2 * corner);
  const int upper = to_above <= to_corner ? above : corner;
  return to_left <= to_above && to_left <= to_corner ? left : upper;
}

// Turns a filtered row into samples, in place. False for a type that the standard lacks: the row
// stays as it is.
//   above       - the row before, as samples; zeros for the first one
//   pixel_bytes - from a byte to that of the pixel before, at least 1
bool UnfilterPngRow(unsigned char type, unsigned char* row, const unsigned char* above,
                    std::size_t size, std::size_t pixel_bytes);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILTERS_PNGROWS_H_
