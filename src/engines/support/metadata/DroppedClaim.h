// A claim of PDF/A (ISO 19005), which holds for the file that it was proven of and for no other one.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_DROPPEDCLAIM_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_DROPPEDCLAIM_H_

#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines {

struct DroppedClaim {
  bool was_there = false;
  bool was_packet_lost = false;  // the XMP packet cannot be read: it is left out as a whole
};

// Takes the claim out of what is to be written. A document that claimed PDF/A-1 is still written as
// readers of that read: without object streams and cross-reference streams (ISO 19005-1, 6.1.4), in
// a version that has none.
DroppedClaim DropPdfAClaim(pdf::Document& document, pdf::DocumentRewriter& rewriter,
                           pdf::RewriteOptions& options);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_DROPPEDCLAIM_H_
