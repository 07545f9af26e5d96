// A page as a viewer shows it: crop box within media box, turned, in points.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_PAGEGEOMETRY_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_PAGEGEOMETRY_H_

#include <cstdint>

#include "engines/toolbox/Toolbox.h"
#include "pdf/Matrix.h"

namespace TarnixTools::engines {

class SourceDocument;

struct PageGeometry {
  // What is shown, in the units of the page.
  double left = 0;
  double bottom = 0;
  double right = 612;
  double top = 792;
  double unit = 1;   // points
  int rotation = 0;  // degrees clockwise: 0, 90, 180 or 270

  // In points.
  TPdfSize VisibleSize() const;
  // From points on the page as it is shown, counted from its lower-left corner, to the page's own
  // units.
  pdf::Matrix FromVisible() const;
};

// Of a page of a source, by its zero-based index, turned further by `rotation` degrees. Boxes that
// cannot be used are US Letter, an angle that is no multiple of 90 counts as 0.
PageGeometry ReadPageGeometry(SourceDocument& source, std::uint32_t index, int rotation);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_PAGEGEOMETRY_H_
