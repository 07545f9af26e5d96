// What an output lacks of the document beside what damage took, and what is told of it beside its
// problems.
#ifndef TARNIX_ENGINES_REPAIR_REPAIRREPORT_H_
#define TARNIX_ENGINES_REPAIR_REPAIRREPORT_H_

#include <vector>

#include "engines/repair/ProblemList.h"
#include "engines/repair/Repair.h"

namespace TarnixTools::engines::repair {

using RepairReport = std::vector<TPdfRepairReportEntry>;

// An entry for each kind of problem and outcome, lint included, in the order of the list.
RepairReport ReportOf(const ProblemList& problems);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_REPAIRREPORT_H_
