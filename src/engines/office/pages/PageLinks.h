// The places of a page that lead somewhere when they are clicked on (ISO 32000-2, 12.5.6.5).
#ifndef TARNIX_ENGINES_OFFICE_PAGES_PAGELINKS_H_
#define TARNIX_ENGINES_OFFICE_PAGES_PAGELINKS_H_

#include <vector>

#include "engines/office/pages/Destinations.h"
#include "engines/support/pages/PageModel.h"
#include "pdf/Matrix.h"

namespace TarnixTools::engines::office {

// Links to places of the document and to addresses; others are left out.
//   page   - its dictionary
//   matrix - from the page's own units to the model's
// Throws pdf::Error for a document that cannot be read any more.
std::vector<PageLink> ReadPageLinks(pdf::Document& document, const pdf::Object& page,
                                    const pdf::Matrix& matrix, Destinations& destinations);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_PAGELINKS_H_
