// Tables of contents: entries with leaders and the number of a page.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_CONTENTS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_CONTENTS_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// The dots that lead to a number become a tab.
void FindContents(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_CONTENTS_H_
