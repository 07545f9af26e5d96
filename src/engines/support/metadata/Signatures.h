// Digital signatures (ISO 32000-2, 12.8), none of which holds for a file that is written anew.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_SIGNATURES_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_SIGNATURES_H_

#include <cstdint>

#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines {

// Leaves signatures out, with what is there to check them by; their fields stay, to be signed again.
// Returns how many there were.
std::uint64_t DropSignatures(pdf::Document& document, pdf::DocumentRewriter& rewriter);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_SIGNATURES_H_
