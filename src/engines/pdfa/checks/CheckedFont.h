// A font as checks hand it to each other.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_CHECKEDFONT_H_
#define TARNIX_ENGINES_PDFA_CHECKS_CHECKEDFONT_H_

#include "engines/pdfa/checks/ShownFonts.h"
#include "engines/pdfa/rules/FindingList.h"
#include "engines/support/fonts/DocumentFont.h"

namespace TarnixTools::engines::pdfa {

struct CheckedFont {
  const fonts::DocumentFont& font;
  const ShownFonts::Font& shown;
  pdf::Object dictionary;
  pdf::Object descendant;  // of a composite font; else null
  Place place;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_CHECKEDFONT_H_
