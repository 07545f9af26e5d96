// Captions, and paragraphs that go on in the next column or on the next page.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_CONTINUATIONS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_CONTINUATIONS_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

void FindContinuations(OfficeDocument& document);

// Paragraphs beside pictures, drawings and tables that begin as captions do.
void FindCaptions(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_CONTINUATIONS_H_
