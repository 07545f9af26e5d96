// How reports call a font.
#ifndef TARNIX_ENGINES_PDFA_FONTSUBJECT_H_
#define TARNIX_ENGINES_PDFA_FONTSUBJECT_H_

#include <string>

#include "engines/support/fonts/DocumentFont.h"

namespace TarnixTools::engines::pdfa {

// "font" and its name, where it has one.
inline std::string SubjectOf(const fonts::DocumentFont& font) {
  return font.name().empty() ? "font" : "font " + font.name();
}

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_FONTSUBJECT_H_
