// Appearances of what shows text: free text, text fields, choices and the captions of buttons, in
// the font, size and colour of their default appearance (ISO 32000-2, 12.7.4.3).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_TEXTAPPEARANCE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_TEXTAPPEARANCE_H_

#include <cstddef>
#include <optional>

#include "engines/pdfa/convert/annotations/AppearanceFonts.h"
#include "engines/pdfa/convert/annotations/MadeAppearance.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// Whether it is an annotation of that kind.
bool ShowsText(const pdf::Object& annotation, pdf::Document& document);

// Nothing where no font is installed for its text. One that has none may show nothing.
//   characters_left - that may yet be written for annotations of the document; those of this one are
//                     taken off, and the others are left out
//   may_blend - whether there may be transparency
std::optional<MadeAppearance> TextAppearance(const pdf::Object& annotation, pdf::Document& document,
                                             AppearanceFonts& fonts, bool may_blend,
                                             std::size_t& characters_left);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_TEXTAPPEARANCE_H_
