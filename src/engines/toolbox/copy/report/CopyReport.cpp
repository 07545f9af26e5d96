#include "engines/toolbox/copy/report/CopyReport.h"

#include <algorithm>

namespace TarnixTools::engines::toolbox {

void CopyReport::Add(CopiedKind kind, CopyOutcome outcome, std::string_view reason,
                     std::uint64_t count, std::uint32_t page) {
  if (count == 0) {
    return;
  }
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const CopyEntry& entry) {
    return entry.kind == kind && entry.outcome == outcome && entry.reason == reason;
  });
  if (found != entries_.end()) {
    found->count += count;
    return;
  }
  entries_.push_back({kind, outcome, std::string(reason), count, page});
}

}  // namespace TarnixTools::engines::toolbox
