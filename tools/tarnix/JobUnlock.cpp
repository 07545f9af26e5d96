#include <string>

#include "Job.h"
#include "JobContext.h"
#include "PdfUnlockTask.h"

namespace TarnixTools::cli {
namespace {

JobResult Unlock(JobContext& context) {
  const PdfDoc document = context.Documents().front();
  PdfUnlockTask task(document, context.Password());
  task.SetOutPrefix(context.Options().Text("prefix"));
  task.SetOutPdfName(context.Options().Text("name"));
  task.SetKeepMetadata(true);
  context.SetOutput(task);
  task.Execute();
  const std::string name = task.GetOutPdfName().empty()
                               ? task.GetOutPrefix() + "_" + document.GetDocName(false) + ".pdf"
                               : task.GetOutPdfName();
  return {.outputs = {task.GetOutputPath() + name}, .report = task.GetReport()};
}

const JobRegistration kRegistration({
    .name = "unlock",
    .summary = "take the password off a document",
    .description = "Writes the input, opened with --password, without any protection (default "
                   "name: unlocked_NAME.pdf; default directory: the current one).",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .has_prefix = true,
    .run = Unlock,
});

}  // namespace
}  // namespace TarnixTools::cli
