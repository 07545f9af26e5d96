// Makes of what a page shows what people read: paragraphs, tables, pictures and drawings in bands
// of columns.
//
//   for (OfficePage& page : document.pages) {
//     page.layout = AnalyzePage(page.model);
//   }
//   AnalyzeDocument(document);
//
// Nothing is shared between calls: pages may be analysed on several threads.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PAGEANALYSIS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PAGEANALYSIS_H_

#include "engines/support/layout/PageLayout.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// Headers, footers, notes and what goes on over pages are found when all pages are known.
PageLayout AnalyzePage(const PageModel& page);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PAGEANALYSIS_H_
