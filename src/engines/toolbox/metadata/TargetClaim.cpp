#include "engines/toolbox/metadata/TargetClaim.h"

#include "engines/support/metadata/CarriedClaim.h"
#include "engines/support/metadata/PdfAClaim.h"
#include "engines/toolbox/copy/report/CopyReport.h"

namespace TarnixTools::engines::toolbox {

void TargetClaim::Add(std::int32_t level, bool is_encrypted) {
  is_encrypted_ = is_encrypted;
  if (level != 0) {
    claimed_.push_back(level);
  }
  level_ = is_encrypted ? 0 : source_count_ == 0 ? level : CommonPdfACode(level_, level);
  ++source_count_;
}

void TargetClaim::Settle(CopyReport& report) const {
  const ClaimFate fate = ProvePdfAClaim(level(), proof_, file_);
  for (const std::int32_t claimed : claimed_) {
    const bool is_lower = fate == ClaimFate::kKept && claimed != level_;
    const ClaimFate own = is_lower ? ClaimFate::kLowered : fate;
    report.Add(CopiedKind::kPdfAClaim,
               own == ClaimFate::kKept ? CopyOutcome::kKept : CopyOutcome::kDropped,
               own == ClaimFate::kUnproven ? WhyNothing() : ReasonOf(own), 1);
  }
}

const char* TargetClaim::WhyNothing() const {
  return is_encrypted_       ? "what is encrypted cannot be PDF/A"
         : proof_ == nullptr ? ReasonOf(ClaimFate::kUnproven)
                             : "not every document claims that part";
}

}  // namespace TarnixTools::engines::toolbox
