// A document as its pages show it, written anew: for a reader that cannot make sense of the
// original.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_REPAIREDCOPY_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_REPAIREDCOPY_H_

#include "pdf/file/ByteSink.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines {

// Writes all pages with what they need to be drawn: resources, annotations, the form's settings and
// the layers; without what DrawingCost says is too much. Not encrypted, whatever the source is.
// Streams go through block by block. Throws pdf::Error.
void WriteRepairedCopy(pdf::Document& document, const pdf::PageTree& pages, pdf::ByteSink& sink);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_REPAIREDCOPY_H_
