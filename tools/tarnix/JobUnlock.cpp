#include "Job.h"
#include "JobContext.h"
#include "PdfUnlockTask.h"

namespace TarnixTools::cli {
namespace {

JobResult Unlock(JobContext& context) {
  const PdfDoc document = context.Documents().front();
  PdfUnlockTask task(document, context.Password());
  return context.RunPrefixed(task, document);
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
