// Widths of glyphs of fonts that are not embedded and that do not tell them: those of the installed
// face that readers show instead.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_STANDINFACE_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_STANDINFACE_H_

#include <string_view>

#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// In thousandths of the size. For several threads at once.
double StandInAdvance(const Typeface& face, std::u32string_view text);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_STANDINFACE_H_
