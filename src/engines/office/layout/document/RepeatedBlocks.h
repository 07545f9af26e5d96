// Headers and footers: what stands at one place on several pages, and the numbers of pages.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_REPEATEDBLOCKS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_REPEATEDBLOCKS_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// Moves headers and footers out of the flow of their pages; numbers of pages become such pieces.
void FindHeadersAndFooters(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_REPEATEDBLOCKS_H_
