// What only a whole document tells of its pages: headers, footers and page numbers, headings, lists,
// notes, and what goes on from page to page.
//
//   AnalyzeDocument(document);
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENTANALYSIS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENTANALYSIS_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// The layouts are as AnalyzePage made them.
void AnalyzeDocument(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENTANALYSIS_H_
