// Presentations for PowerPoint (ECMA-376, part 1, 13): a slide for each page, of its size, with
// everything in its place: text in boxes, tables, shapes and pictures.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDEWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDEWRITER_H_

#include <atomic>

#include "engines/office/layout/OfficeDocument.h"
#include "engines/office/pages/PictureSource.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines::office {

// The same document always gives the same bytes. Throws Cancelled once the flag is set, and what
// the sink and the source throw.
void WriteSlides(const OfficeDocument& document, PictureSource& pictures,
                 const std::atomic<bool>& is_cancelled, pdf::ByteSink& sink);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDEWRITER_H_
