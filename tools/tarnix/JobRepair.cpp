#include <string>
#include <vector>

#include "Job.h"
#include "JobContext.h"
#include "PdfException.h"
#include "PdfRepairTask.h"
#include "Warnings.h"

namespace TarnixTools::cli {
namespace {

// A document that cannot be opened fails when it is repaired.
bool IsProtected(PdfDoc& document) {
  try {
    return document.IsEncrypted();
  } catch (const PdfException&) {
    return false;
  }
}

JobResult Repair(JobContext& context) {
  PdfDoc document = context.Document();
  const bool is_protected = IsProtected(document);
  PdfRepairTask task(document, context.OutputName());
  context.SetOutput(task);
  ForPassword([&] { task.Execute(); });
  return {.outputs = {context.OutputPath()},
          .fields = {{"problems", task.GetErrorsInfo()}},
          .report = task.GetReport(),
          .warnings =
              RewriteWarningsOf(task.GetReport(), is_protected && context.OutPassword().empty())};
}

const JobRegistration kRegistration({
    .name = "repair",
    .summary = "put a damaged document right",
    .description = "Writes a sound copy of the input (STEM-repaired.pdf). With --json, what was "
                   "wrong is listed. The exit "
                   "status is 3 when something is lost.",
    .examples = {"tarnix repair report.pdf", "tarnix repair -o sound.pdf letter.pdf",
                 "tarnix repair -o sound letter.pdf report.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-repaired",
    .engine = EngineName::Rewriting,
    .run = Repair,
});

}  // namespace
}  // namespace TarnixTools::cli
