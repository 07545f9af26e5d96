#include <string>
#include <vector>

#include "Job.h"
#include "JobContext.h"
#include "Pdf2OfficeTask.h"

namespace TarnixTools::cli {
namespace {

JobResult ScanCheck(JobContext& context) {
  PdfDoc document = context.Document();
  ForPassword([&] {
    if (document.IsEncrypted()) {
      document.GetPagesNum();  // so that a wrong password is told as one
    }
  });
  Pdf2OfficeTask task(document);
  std::vector<int> pages;
  JobResult result;
  result.exit_status = task.CheckScan(pages) ? kExitNo : kExitDone;
  for (const int page : pages) {
    result.text += (result.text.empty() ? "scanned pages: " : ",") + std::to_string(page);
  }
  result.text += result.text.empty() ? "no page is scanned\n" : "\n";
  result.fields["scannedPages"] = pages;
  return result;
}

const JobRegistration kRegistration({
    .name = "scan-check",
    .summary = "tell whether pages are scanned",
    .description =
        "Lists the pages of the input that are pictures of pages, without text of their "
        "own. Writes no file and recognises nothing. The exit status is 1 when some are.",
    .examples = {"tarnix scan-check report.pdf", "tarnix scan-check --json letter.pdf",
                 "tarnix scan-check letter.pdf report.pdf"},
    .output = OutputKind::None,
    .run = ScanCheck,
});

}  // namespace
}  // namespace TarnixTools::cli
