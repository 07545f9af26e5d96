#include "engines/support/fonts/StandardFontNames.h"

#include <algorithm>
#include <array>

namespace TarnixTools::engines::fonts {

bool IsStandardFontName(std::string_view name) {
  constexpr std::array<std::string_view, 14> kNames = {
      "Courier",     "Courier-Bold",   "Courier-Oblique",   "Courier-BoldOblique",
      "Helvetica",   "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique",
      "Times-Roman", "Times-Bold",     "Times-Italic",      "Times-BoldItalic",
      "Symbol",      "ZapfDingbats"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace TarnixTools::engines::fonts
