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
  std::size_t left_for_others = 0;
  for (std::size_t reason = 1; reason < kFontLeftAloneCount; ++reason) {
    left_for_others += fonts.left_alone[reason];
  }
  fonts.left_alone[static_cast<std::size_t>(FontLeftAlone::kSmallest)] =
      fonts.programs - left_for_others;
  fonts.merged = 0;
  fonts.dropped = 0;
  fonts.bytes_after = fonts.bytes_before;
  entries.clear();
}

}  // namespace TarnixTools::engines::optimizer
