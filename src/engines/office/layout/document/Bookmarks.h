// Leads the links of a document to the paragraphs that they point at.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_BOOKMARKS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_BOOKMARKS_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

void SetBookmarks(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_BOOKMARKS_H_
