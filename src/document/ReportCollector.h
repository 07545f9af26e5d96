// The engine's report of a created document as the library's.
#ifndef TARNIX_DOCUMENT_REPORT_COLLECTOR_H_
#define TARNIX_DOCUMENT_REPORT_COLLECTOR_H_

#include "PdfReport.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {

// Has the document's entries added to the report when it is completed; the report outlives it.
void CollectReport(engines::TPdfDocument* document, PdfReport& report);

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_REPORT_COLLECTOR_H_
