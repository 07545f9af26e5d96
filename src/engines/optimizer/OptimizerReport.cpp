#include "engines/optimizer/OptimizerReport.h"

namespace TarnixTools::engines::optimizer {

void OptimizerReport::Kept(ReportedKind kind, const char* reason, std::uint64_t count) {
  if (count > 0) {
    entries.push_back({kind, TPdfOptimizeOutcome::kKept, count, reason});
  }
}

void OptimizerReport::Dropped(ReportedKind kind, const char* reason, std::uint64_t count) {
  if (count > 0) {
    entries.push_back({kind, TPdfOptimizeOutcome::kDropped, count, reason});
  }
}

void OptimizerReport::TakeBack() {
  for (ClassFigures& figures : images) {
    const auto count_of = [&](LeftAlone reason) -> std::size_t& {
      return figures.left_alone[static_cast<std::size_t>(reason)];
    };
    figures.bytes_after = figures.bytes_before;
    count_of(LeftAlone::kSmallest) =
        figures.images - count_of(LeftAlone::kUnreadable) - count_of(LeftAlone::kUnhandled);
  }
  entries.clear();
}

}  // namespace TarnixTools::engines::optimizer
