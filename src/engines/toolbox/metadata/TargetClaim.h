// The claim of PDF/A (ISO 19005) of a document being made: what all of its sources claim, as far as it
// is proven of the file that was written.
#ifndef TARNIX_ENGINES_TOOLBOX_METADATA_TARGETCLAIM_H_
#define TARNIX_ENGINES_TOOLBOX_METADATA_TARGETCLAIM_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "engines/support/contract/ClaimProof.h"

namespace TarnixTools::engines::toolbox {

class CopyReport;

class TargetClaim {
 public:
  // file: what is written to.
  void SetProof(TPdfClaimProof proof, std::FILE* file) {
    proof_ = proof;
    file_ = file;
  }

  // Of one more source.
  //   level        - code of what it claims; 0 for nothing
  //   is_encrypted - the target, which claims nothing then
  void Add(std::int32_t level, bool is_encrypted);

  // Code of what is written; 0 for nothing.
  std::int32_t level() const { return proof_ != nullptr ? level_ : 0; }

  // Whether Settle reports what the sources claim.
  bool is_told() const { return !claimed_.empty(); }

  // Has the claim of the complete file proven, and adds what became of what the sources claim. Throws
  // pdf::Error where that could not be done.
  void Settle(CopyReport& report) const;

 private:
  const char* WhyNothing() const;

  TPdfClaimProof proof_ = nullptr;
  std::FILE* file_ = nullptr;
  std::vector<std::int32_t> claimed_;  // by the sources that claim something
  bool is_encrypted_ = false;
  std::size_t source_count_ = 0;
  std::int32_t level_ = 0;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_METADATA_TARGETCLAIM_H_
