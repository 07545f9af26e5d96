// The outline of a document (ISO 32000-2, 12.3.3), as far as it leads to its pages.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_OUTLINEREADER_H_
#define TARNIX_ENGINES_OFFICE_PAGES_OUTLINEREADER_H_

#include <vector>

#include "engines/office/pages/Destinations.h"
#include "engines/office/pages/DocumentReader.h"

namespace TarnixTools::engines::office {

// Items in the order in which they are shown. Throws pdf::Error for a document that cannot be read
// any more.
std::vector<OutlineEntry> ReadOutline(pdf::Document& document, Destinations& destinations);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_OUTLINEREADER_H_
