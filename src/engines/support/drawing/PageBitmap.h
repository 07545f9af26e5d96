// A page as pixels, at a resolution.
//
//   const PageBitmap page = DrawPage(document, 0, 150);
//   const std::uint8_t* pixel = page.Row(y) + 4 * x;   // blue, green, red
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_PAGEBITMAP_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_PAGEBITMAP_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "engines/support/drawing/DrawnDocument.h"

namespace TarnixTools::engines {

struct PageBitmap {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;  // on white: blue, green, red and one that does not matter
  bool is_partial = false;           // something of the page is not there

  const std::uint8_t* Row(int y) const {
    return pixels.data() +
           std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(y);
  }
};

// Rows of a page's bitmap, in the same form.
struct PageBand {
  int width = 0;   // of the page's bitmap
  int height = 0;  // of the page's bitmap
  int top = 0;
  int row_count = 0;
  std::span<const std::uint8_t> pixels;
};

// How many rows of a bitmap of this size are drawn at once.
int BandHeightOf(int width, int height);

// Draws a page as it is seen and returns its bitmap.
//   page_index - zero-based
//   dpi        - more than 0
// Throws DrawingError: kPage for a page that cannot be drawn, kMemory for a bitmap of more than
// limits::kMaxBitmapBytes; and pdf::Error.
PageBitmap DrawPage(DrawnDocument& document, int page_index, double dpi);

// Draws a part of a page, without its text, and returns its bitmap.
//   region - in points on the page as it is seen, from its upper-left corner, y downwards: bottom
//            and top are the upper and the lower edge
// Throws as DrawPage does.
PageBitmap DrawRegionWithoutText(DrawnDocument& document, int page_index, const pdf::Box& region,
                                 double dpi);

// Draws a page, from top to bottom, without holding it whole. Returns whether all of it is there.
//   take - gets each band; its pixels live for the call
bool DrawPageInBands(DrawnDocument& document, int page_index, double dpi,
                     const std::function<void(const PageBand& band)>& take);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_PAGEBITMAP_H_
