// Where a picture goes on its page.
#ifndef TARNIX_ENGINES_IMG2PDF_PAGELAYOUT_H_
#define TARNIX_ENGINES_IMG2PDF_PAGELAYOUT_H_

#include <optional>

#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/Orientation.h"

namespace TarnixTools::engines::img2pdf {

// Pixels per inch of a picture whose file does not tell.
inline constexpr double kDefaultDpi = 96;
// The longest side of a page, in its own units (ISO 32000-1, annex C). A longer one gets larger
// units.
inline constexpr double kMaxPageUnits = 14400;

struct PageSettings {
  bool is_adjusted = false;  // the page has the size of the picture
  double width = 595;        // of a fixed page, points
  double height = 842;
  bool is_centered = false;
  bool is_fitted = false;
  int orientation = kUpright;
  bool makes_upright = false;  // turns pictures as their files ask, too
  double border = 0;           // points
};

struct PageLayout {
  double width = 0;  // of the page, in its units
  double height = 0;
  int user_unit = 1;   // points in a unit (ISO 32000-2, table 31)
  pdf::Matrix matrix;  // of the unit square of the image
};

// Nothing when the border leaves no space.
std::optional<PageLayout> LayOut(const ImageFrame& frame, const PageSettings& settings);

}  // namespace TarnixTools::engines::img2pdf

#endif  // TARNIX_ENGINES_IMG2PDF_PAGELAYOUT_H_
