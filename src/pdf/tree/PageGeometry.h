// What a page measures and how it is seen: its boxes (ISO 32000-2, 14.11.2), its turn (table 31)
// and its unit (8.3.2.3).
//
//   const PageGeometry geometry = ReadPageGeometry(document, pages, pages.pages()[page_index]);
//   const Matrix to_pixels = geometry.ToSeenPoints() * scale;
//
// A page is seen as its crop box, turned, with the lower-left corner of what is seen at the origin.
#ifndef TARNIX_PDF_TREE_PAGEGEOMETRY_H_
#define TARNIX_PDF_TREE_PAGEGEOMETRY_H_

#include <limits>
#include <optional>

#include "pdf/Box.h"
#include "pdf/Matrix.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::pdf {

// US Letter: what readers take for a page without a usable media box.
inline constexpr Box kDefaultMediaBox = {0, 0, 612, 792};

// What a page measures as it is seen, or may measure, in points.
struct SeenSize {
  double width = std::numeric_limits<double>::infinity();
  double height = std::numeric_limits<double>::infinity();
};

struct PageGeometry {
  // In the page's own units, none of them empty. All lie within the media box.
  Box media_box = kDefaultMediaBox;
  Box crop_box = kDefaultMediaBox;
  Box bleed_box = kDefaultMediaBox;
  Box trim_box = kDefaultMediaBox;
  Box art_box = kDefaultMediaBox;
  int rotation = 0;      // degrees clockwise: 0, 90, 180 or 270
  double user_unit = 1;  // points in one of the page's own units

  // What is seen, in points.
  double SeenWidth() const;
  double SeenHeight() const;

  // From the page's own units to units of the page as it is seen, which are as large, and back.
  Matrix ToSeen() const;
  Matrix FromSeen() const;
  // From the page's own units to points on the page as it is seen, and back.
  Matrix ToSeenPoints() const;
  Matrix FromSeenPoints() const;

  // The page turned further by the degrees, a multiple of 90, clockwise.
  PageGeometry Turned(int degrees) const;

  // The page as a whole, by its unit, made so small that it is seen within the room.
  PageGeometry Within(const SeenSize& room) const;
};

// The turn that a /Rotate stands for. One that is no multiple of 90 is not allowed; readers differ,
// and what is more than whole quarters is cut off here: PDFium does that, and for most angles
// MuPDF, which rounds, or poppler, which does not turn such a page, comes to what it shows. What is
// no number, or none of 32 bits, does not turn.
int RotationOf(const Object& rotate);

// A box as a page may have it: none for a value that leads to no array of four, is empty, or
// reaches beyond limits::kMaxCoordinate. What is no number among the four counts as 0.
std::optional<Box> ReadPageBox(Document& document, const Object& value);

// The geometry of a page. Throws Error for a document that cannot be read any more. What is
// unusable counts as readers have it:
//  - a media box that ReadPageBox takes for none is US Letter;
//  - a crop box that it takes for none, or that lies beside the media box, is the media box;
//  - a bleed, trim or art box that it takes for none, or that lies beside the media box, is the
//    crop box;
//  - a unit that is no number from limits::kMinUserUnit to limits::kMaxUserUnit is 1.
PageGeometry ReadPageGeometry(Document& document, const PageTree& pages,
                              const PageTree::Page& page);
// For a page whose dictionary is loaded already.
PageGeometry ReadPageGeometry(Document& document, const PageTree& pages, const PageTree::Page& page,
                              const Object& dictionary);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_PAGEGEOMETRY_H_
