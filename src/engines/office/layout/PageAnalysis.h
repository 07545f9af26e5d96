// Makes of what a page shows what people read: paragraphs, tables, pictures and drawings in bands
// of columns.
//
//   for (OfficePage& page : document.pages) {
//     page.layout = AnalyzePage(page.model);
//   }
//   AnalyzeDocument(document);
//
// Nothing is shared between calls: pages may be analysed on several threads.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_PAGEANALYSIS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_PAGEANALYSIS_H_

#include "engines/office/layout/PageLayout.h"
#include "engines/office/pages/PageModel.h"

namespace TarnixTools::engines::office {

// Headers, footers, notes and what goes on over pages are found when all pages are known.
PageLayout AnalyzePage(const PageModel& page);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_PAGEANALYSIS_H_
