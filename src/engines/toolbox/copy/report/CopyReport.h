// What a copy kept, renamed and dropped, and why: counted by kind, so that it stays small however
// large the documents are.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_REPORT_COPYREPORT_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_REPORT_COPYREPORT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engines/toolbox/Toolbox.h"

namespace TarnixTools::engines::toolbox {

using CopiedKind = TPdfCopiedKind;
using CopyOutcome = TPdfCopyOutcome;

struct CopyEntry {
  CopiedKind kind;
  CopyOutcome outcome;
  std::string reason;  // why it was renamed or dropped, in a few words; empty for what was kept
  std::uint64_t count = 0;
  // The one-based page of the output that the first of them is on; 0 for none in particular.
  std::uint32_t page = 0;
};

class CopyReport {
 public:
  // Counts one more, or `count`, of this kind, outcome and reason.
  void Add(CopiedKind kind, CopyOutcome outcome, std::string_view reason = {},
           std::uint64_t count = 1, std::uint32_t page = 0);

  void Kept(CopiedKind kind, std::uint64_t count = 1) { Add(kind, CopyOutcome::kKept, {}, count); }

  // The entries in the order in which they were first added.
  const std::vector<CopyEntry>& entries() const { return entries_; }

 private:
  std::vector<CopyEntry> entries_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_REPORT_COPYREPORT_H_
