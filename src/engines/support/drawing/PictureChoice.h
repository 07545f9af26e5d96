// Which images of a page can be painted before it is drawn, and how they become rows.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_PICTURECHOICE_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_PICTURECHOICE_H_

#include <cstdint>
#include <optional>
#include <utility>

#include "engines/support/drawing/PageObjects.h"
#include "engines/support/pictures/RowSource.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

// Where on the bitmap an image goes, and how it is turned.
struct PictureFit {
  PixelBox box;                 // all pixels that it touches: what PDFium would fill
  bool is_across = false;       // the image's rows go along the bitmap's columns
  bool goes_left = false;       // what is to the right in the image is to the left, or above
  bool goes_up = false;         // what is below in the image is above, or to the left
  bool comes_in_order = false;  // row for row

  // The size that the image gets before it is turned.
  int width() const { return is_across ? box.height() : box.width(); }

  int height() const { return is_across ? box.width() : box.height(); }

  // Column and row of the fitted image that are seen at a place in the box.
  std::pair<int, int> SourceOf(int x, int y) const;
};

// Nothing for an image that is not plainly painted, that is skewed, that becomes larger in one
// direction and smaller in the other, or that becomes much larger.
std::optional<PictureFit> FitOf(const ImageObject& image);

// Whether both put the unit square into the same place, in points.
bool IsSamePlace(const pdf::Matrix& first, const pdf::Matrix& second);

// Whether a page with these resources may show images in other colours than the images say: by
// default colour spaces (ISO 32000-2, 8.6.5.6) or transfer functions (10.5).
bool ChangesColors(pdf::Document& document, const pdf::Object& resources);

// The image as it fits, not turned. Null for one that is transparent somewhere, whose colours
// PDFium computes in its own way, or which cannot be read. Throws pdf::Error for a document that
// cannot be read any more.
RowSourcePtr OpenFitted(pdf::Document& document, std::uint32_t number, const ImageObject& object,
                        const PictureFit& fit);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_PICTURECHOICE_H_
