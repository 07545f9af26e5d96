// Takes out of a document what the bits of a setting name (OptimizerSettings.h): entries, and
// objects that other things may still refer to.
//
//   const StrippedCounts stripped = StripEntries(document, pages, settings.strip, rewriter);
#ifndef TARNIX_ENGINES_OPTIMIZER_STRUCTURE_STRIPENTRIES_H_
#define TARNIX_ENGINES_OPTIMIZER_STRUCTURE_STRIPENTRIES_H_

#include <cstdint>

#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

// Of what people may miss.
struct StrippedCounts {
  std::uint64_t structure_elements = 0;
  std::uint64_t beads = 0;  // of article threads
  std::uint64_t thumbnails = 0;
};

// strip: StripBits. Sets and removes entries only, so that it goes with any other change of the same
// objects; of the catalog's /Names and /ViewerPreferences it sets the whole where they are written
// in place.
StrippedCounts StripEntries(pdf::Document& document, const pdf::PageTree& pages,
                            std::uint32_t strip, pdf::DocumentRewriter& rewriter);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_STRUCTURE_STRIPENTRIES_H_
