// Appearances of check boxes and radio buttons, by their state (ISO 32000-2, 12.7.5.2).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_BUTTONAPPEARANCE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_BUTTONAPPEARANCE_H_

#include <string>

#include "engines/pdfa/convert/annotations/MadeAppearance.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

struct MadeButton {
  MadeAppearance on;
  MadeAppearance off;
  std::string on_state;  // its name
  bool is_on = false;
};

// Of a widget that is one of these.
MadeButton ButtonAppearance(const pdf::Object& annotation, pdf::Document& document);

// Whether it is one.
bool HasButtonStates(const pdf::Object& annotation, pdf::Document& document);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_BUTTONAPPEARANCE_H_
