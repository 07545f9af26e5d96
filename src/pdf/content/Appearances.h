// Appearance streams of annotations (ISO 32000-2, 12.5.5): all of them, and the one that is shown.
#ifndef TARNIX_PDF_CONTENT_APPEARANCES_H_
#define TARNIX_PDF_CONTENT_APPEARANCES_H_

#include <cstdint>
#include <vector>

#include "pdf/Matrix.h"
#include "pdf/file/Document.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::pdf {

// Numbers of the normal, the rollover and the down appearance, each with all its states.
//   annotation - its dictionary
std::vector<std::uint32_t> AppearancesOf(Document& document, const Object& annotation);

// Number of the appearance that is seen on the screen; 0 for none: the annotation is hidden, lies
// on a layer that is, is a pop-up, or has no appearance for its state.
//   layers - null for all layers seen
std::uint32_t ShownAppearance(Document& document, const Object& annotation,
                              const VisibleLayers* layers);

// From the appearance's content to the page: puts its box into the annotation's rectangle.
//   appearance - its dictionary
Matrix AppearanceMatrix(Document& document, const Object& annotation, const Object& appearance);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_APPEARANCES_H_
