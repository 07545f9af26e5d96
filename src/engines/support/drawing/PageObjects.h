// What PDFium found on a page: where its images go, and what is painted before them.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_PAGEOBJECTS_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_PAGEOBJECTS_H_

#include <cstdint>
#include <vector>

#include "engines/support/drawing/Placement.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "engines/support/pictures/DrawnOrientation.h"

namespace TarnixTools::engines {

// An image that the page itself draws, XObject or inline.
struct ImageObject {
  pdfium::PageObject* object = nullptr;
  std::size_t objects_before = 0;  // how many of PageObjects::boxes were painted before it
  std::uint32_t width = 0;         // pixels that it has
  std::uint32_t height = 0;
  pdf::Matrix matrix;      // from the unit square to the bitmap: pixels, rows downwards
  pdf::Matrix to_page;     // to the page as it is seen, in points
  PixelBox clip;           // of the bitmap, outside of which it is not seen
  bool is_opaque = false;  // painted as it is, within the clip, and in no layer
};

struct PageObjects {
  // The images in the order of painting. PDFium owns them; they live as long as the page.
  std::vector<ImageObject> images;
  // Around everything that is painted, with a margin; empty for what is not seen.
  std::vector<PixelBox> boxes;
};

// Nothing for a page without images or with very many objects. The lock is held.
//   placement - of the page, on the bitmap
PageObjects ObjectsOf(const PdfiumLock& pdfium, pdfium::Page* page, const Placement& placement);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_PAGEOBJECTS_H_
