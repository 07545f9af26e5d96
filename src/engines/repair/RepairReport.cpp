#include "engines/repair/RepairReport.h"

#include <algorithm>
#include <span>

namespace TarnixTools::engines::repair {

namespace {

void AddProblems(std::span<const Problem> problems, RepairReport& report) {
  for (const Problem& problem : problems) {
    const TPdfRepairReportEntry entry = {
        .kind = TPdfRepairedKind::kDamage,
        .is_lost = problem.outcome == Outcome::kLost,
        .count = 1,
        .reason = KindOf(problem.code).sentence,
    };
    const auto same = std::ranges::find_if(report, [&](const TPdfRepairReportEntry& other) {
      return other.reason == entry.reason && other.is_lost == entry.is_lost;
    });
    if (same != report.end()) {
      ++same->count;
    } else {
      report.push_back(entry);
    }
  }
}

}  // namespace

RepairReport ReportOf(const ProblemList& problems) {
  RepairReport report;
  AddProblems(problems.damage(), report);
  AddProblems(problems.lint(), report);
  return report;
}

}  // namespace TarnixTools::engines::repair
