// Every object that a rewritten document's trailer leads to, added ones included, each told once.
//
//   ForEachReached(document, rewriter, [&](std::uint32_t number, const Object& value) { ... });
#ifndef TARNIX_PDF_WRITE_REACHEDOBJECTS_H_
#define TARNIX_PDF_WRITE_REACHEDOBJECTS_H_

#include <cstdint>
#include <functional>

#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::pdf {

using VisitReached = std::function<void(std::uint32_t number, const Object& value)>;

// Goes by what the rewriter has been told: what was dropped or merged into another is not visited,
// and the catalog goes by the rewriter's number for it. A stream gives its dictionary. The value is
// valid during the call, which may change the object. No recursion.
void ForEachReached(const Document& document, DocumentRewriter& rewriter,
                    const VisitReached& visit);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_REACHEDOBJECTS_H_
