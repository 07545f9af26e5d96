// Whether a page is scanned.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_SCANCHECK_H_
#define TARNIX_ENGINES_OFFICE_PAGES_SCANCHECK_H_

#include <cstddef>

#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::engines::office {

// A picture of a page: images cover most of it, what text is seen is no more than a stamp or a page
// number, and no text that is not seen lies over the picture for readers to find. Only the content is looked at, until it is
// clear: no font is read and no image decoded. Throws pdf::Error for a document that cannot be read
// any more.
bool IsScannedPage(pdf::Document& document, const pdf::PageTree& pages,
                   const pdf::VisibleLayers& layers, std::size_t page_index);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_SCANCHECK_H_
