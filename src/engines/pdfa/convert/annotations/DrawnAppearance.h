// Appearances for annotations that have none, as viewers draw them by their entries (ISO 32000-2,
// 12.5.6): shapes, marks of text, drawings by hand and the icons of notes.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_DRAWNAPPEARANCE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_DRAWNAPPEARANCE_H_

#include <cstddef>
#include <optional>

#include "engines/pdfa/convert/annotations/MadeAppearance.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// Nothing for an annotation of another type, or one that does not say what it looks like.
//   numbers_left - that may yet be read and written for annotations of the document; those of this
//                  one are taken off, and with none left nothing is drawn
//   may_blend - whether there may be transparency; without it nothing is drawn that would hide what
//               it marks, or half transparent
std::optional<MadeAppearance> DrawnAppearance(const pdf::Object& annotation,
                                              pdf::Document& document, bool may_blend,
                                              std::size_t& numbers_left);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_DRAWNAPPEARANCE_H_
