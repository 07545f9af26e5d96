// The lists of a document: items with their labels and levels, over columns and pages.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_LISTS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_LISTS_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// Takes the labels out of the lines of the items.
void FindLists(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_LISTS_H_
