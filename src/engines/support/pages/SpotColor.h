// Colours of inks (ISO 32000-2, 8.6.6.4 and 8.6.6.5), as the document says they look on other
// devices.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_SPOTCOLOR_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_SPOTCOLOR_H_

#include <optional>

#include "engines/support/images/ColorSpace.h"
#include "engines/support/pages/TintFunction.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

struct SpotColor {
  ColorSpace alternate;
  TintFunction function;  // from tints to components of the alternate space
};

// Nothing for what is no /Separation or /DeviceN, and where the function is none that is read here.
// Throws pdf::Error for a document that cannot be read any more.
//   space - resolved
std::optional<SpotColor> ReadSpotColor(pdf::Document& document, const pdf::Object& space,
                                       pdf::Arena& arena);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_SPOTCOLOR_H_
