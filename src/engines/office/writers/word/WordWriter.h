// Documents for Word (ECMA-376, part 1, 11): text that flows, with styles, sections, lists and
// tables, laid out so that lines and pages end where they do in the document it is made from.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDWRITER_H_

#include <atomic>

#include "engines/office/layout/OfficeDocument.h"
#include "engines/office/pages/PictureSource.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines::office {

// The same document always gives the same bytes. Throws Cancelled once the flag is set, and what
// the sink and the source throw.
void WriteWord(const OfficeDocument& document, PictureSource& pictures,
               const std::atomic<bool>& is_cancelled, pdf::ByteSink& sink);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDWRITER_H_
