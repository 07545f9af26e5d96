#include <string>
#include <vector>

#include "Job.h"
#include "JobContext.h"
#include "PdfRepairTask.h"
#include "Warnings.h"

namespace TarnixTools::cli {
namespace {

JobResult Repair(JobContext& context) {
  PdfRepairTask task(context.Document(), context.OutputName());
  context.SetOutput(task);
  ForPassword([&] { task.Execute(); });
  return {.outputs = {context.OutputPath()},
          .fields = {{"problems", task.GetErrorsInfo()}},
          .report = task.GetReport(),
          .warnings = RewriteWarningsOf(task.GetReport())};
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
