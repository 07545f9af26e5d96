#include "engines/toolbox/copy/report/DamageReport.h"

namespace TarnixTools::engines::toolbox {

void ReportDamage(SourceDocument& source, CopyReport& report) {
  for (const pdf::Finding& finding : source.TakeFindings()) {
    report.Add(CopiedKind::kDamage,
               pdf::IsLoss(finding.code) ? CopyOutcome::kDropped : CopyOutcome::kKept,
               pdf::TextOf(finding.code));
  }
}

}  // namespace TarnixTools::engines::toolbox
