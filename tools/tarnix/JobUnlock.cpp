#include "Job.h"
#include "JobContext.h"
#include "PdfUnlockTask.h"

namespace TarnixTools::cli {
namespace {

JobResult Unlock(JobContext& context) {
  PdfUnlockTask task(context.Document(), context.Password());
  task.SetOutPdfName(context.OutputName());
  return context.Run(task);
}

const JobRegistration kRegistration({
    .name = "unlock",
    .summary = "take the password off a document",
    .description = "Writes the input, opened with --password, without any protection "
                   "(STEM-unlocked.pdf).",
    .examples = {"tarnix protect --new-password secret letter.pdf",
                 "tarnix unlock --password secret letter-locked.pdf",
                 "TARNIX_PASSWORD=secret tarnix unlock -o open.pdf letter-locked.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-unlocked",
    .can_protect = false,
    .run = Unlock,
});

}  // namespace
}  // namespace TarnixTools::cli
