// Content that a walk through the pages does not come to: appearances that are not shown now, and
// what resources have though nothing uses it.
#ifndef TARNIX_PDF_CONTENT_UNSHOWNCONTENT_H_
#define TARNIX_PDF_CONTENT_UNSHOWNCONTENT_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_set>

#include "pdf/content/ContentWalker.h"

namespace TarnixTools::pdf {

// Has the walker run what of it is no page and not among the numbers, to which its visitor may add
// meanwhile.
//   begin_page - called with the index of each page before what that leads to is run; may be empty
void WalkUnshown(Document& document, const PageTree& pages, ContentWalker& walker,
                 const std::unordered_set<std::uint32_t>& entered,
                 const std::function<void(std::size_t)>& begin_page = {});

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_UNSHOWNCONTENT_H_
