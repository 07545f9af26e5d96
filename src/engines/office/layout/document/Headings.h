// The headings of a document: by its tags, by its outline, by size and weight of its type.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_HEADINGS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_HEADINGS_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// A document whose tags tell of headings has no other ones.
void FindHeadings(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_HEADINGS_H_
