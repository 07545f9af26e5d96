// What was wrong with a source, as entries of a copy's report.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_REPORT_DAMAGEREPORT_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_REPORT_DAMAGEREPORT_H_

#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/copy/report/CopyReport.h"

namespace TarnixTools::engines::toolbox {

// Adds what the core found in the source and no report has had yet.
void ReportDamage(SourceDocument& source, CopyReport& report);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_REPORT_DAMAGEREPORT_H_
