// Colours of one ink (ISO 32000-2, 8.6.6.4), as the document says they look on other devices.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_SPOTCOLOR_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_SPOTCOLOR_H_

#include <optional>
#include <vector>

#include "engines/support/images/ColorSpace.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

struct SpotColor {
  ColorSpace alternate;
  // Components of the alternate space for tints from 0 to 1, evenly apart; two at least.
  std::vector<std::vector<double>> tints;

  // Components of the alternate space.
  std::vector<double> At(double tint) const;
};

// Nothing for what is no /Separation, and for tints that a program (/FunctionType 4) or several
// functions tell. Throws pdf::Error for a document that cannot be read any more.
//   space - resolved
std::optional<SpotColor> ReadSpotColor(pdf::Document& document, const pdf::Object& space,
                                       pdf::Arena& arena);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_SPOTCOLOR_H_
