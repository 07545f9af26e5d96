// Typefaces by the names that documents give their fonts.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_TYPEFACENAMES_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_TYPEFACENAMES_H_

#include <string_view>

#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// "ABCDEF+TimesNewRomanPS-BoldItalicMT" is Times New Roman, bold and italic.
Typeface TypefaceNamed(std::string_view name);

// As the font is named, and where the name does not say it, as its descriptor or its program has it.
//   program - null for a font without one
Typeface TypefaceOf(const fonts::DocumentFont& font, const fonts::FontProgram* program);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_TYPEFACENAMES_H_
