// The claim of PDF/A (ISO 19005) of a document that is written again. It holds for the file that it was
// proven of and for no other one: so it is left out, or it waits for a proof of the new file.
//
//   const CarriedClaim claim = CarryPdfAClaim(document, rewriter, options, proof != nullptr);
//   rewriter.Write(sink, options);
//   const ClaimFate fate = ProvePdfAClaim(claim.level, proof, file);
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_CARRIEDCLAIM_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_CARRIEDCLAIM_H_

#include <cstdint>
#include <cstdio>

#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines {

struct CarriedClaim {
  std::int32_t level = 0;        // code of the claim that is written and waits; 0 for none
  bool was_there = false;        // whether the document claims anything
  bool was_packet_lost = false;  // the XMP packet cannot be read: it is left out as a whole
};

// Writes the packet as it is, not compressed, or takes the claim out of it. A document that claims
// PDF/A-1 is written as readers of that read in either case: without object streams and
// cross-reference streams (ISO 19005-1, 6.1.4), in a version that has none.
//   can_be_proven - the claim will be, before anybody sees the file
CarriedClaim CarryPdfAClaim(pdf::Document& document, pdf::DocumentRewriter& rewriter,
                            pdf::RewriteOptions& options, bool can_be_proven);

// What became of a claim.
enum class ClaimFate : std::uint8_t {
  kKept,
  kLowered,   // a lower level of the same part is claimed
  kDropped,   // it does not hold
  kUnproven,  // nobody could prove it
};

// In a few words, for reports; empty for one that is kept.
const char* ReasonOf(ClaimFate fate);

// Has the claim of a file that is written proven. Throws pdf::Error(kWriteFailed) where that could not
// be done, so that nobody gets the file.
//   level - code of what is claimed; 0: nothing is, and nothing asked
//   proof - as contracts have it; null where level is 0
ClaimFate ProvePdfAClaim(std::int32_t level, std::int32_t (*proof)(std::FILE* file),
                         std::FILE* file);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_CARRIEDCLAIM_H_
