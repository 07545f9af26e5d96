#include "Job.h"
#include "JobContext.h"
#include "PdfMergeTask.h"

namespace TarnixTools::cli {
namespace {

JobResult Merge(JobContext& context) {
  PdfMergeTask task;
  context.AddDocuments(task);
  context.SetOutput(task);
  task.SetOutDocName(context.Options().Text("name"));
  task.Execute();
  return {.outputs = {task.GetMergedDocPath()}, .report = task.GetReport()};
}

const JobRegistration kRegistration({
    .name = "merge",
    .summary = "join documents into one",
    .description =
        "Joins all pages of the inputs, in the order given, into one document (default name: "
        "merged_doc.pdf).",
    .inputs = {.min = 2},
    .output = OutputKind::OneFile,
    .run = Merge,
});

}  // namespace
}  // namespace TarnixTools::cli
