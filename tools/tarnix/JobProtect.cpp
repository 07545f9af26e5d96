#include "Job.h"
#include "JobContext.h"
#include "PdfProtectTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "new-password",
     .kind = ValueKind::Text,
     .argument = "PW",
     .help = "password to protect the document with (other users may see it in the process list; "
             "--new-password-file does not show it)",
     .excludes = "new-password-file"},
    {.name = "new-password-file",
     .kind = ValueKind::File,
     .argument = "FILE",
     .help = "read that password from the first line of FILE ('-': standard input)"},
};

JobResult Protect(JobContext& context) {
  const PdfDoc document = context.Documents().front();
  PdfProtectTask task(document, context.ReadOutPassword("new-password"));
  return context.RunPrefixed(task, document);
}

const JobRegistration kRegistration({
    .name = "protect",
    .summary = "put a password on a document",
    .description = "Writes the input encrypted (AES-256) with the new password (default name: "
                   "locked_NAME.pdf; default directory: the current one).",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .has_prefix = true,
    .options = kOptions,
    .run = Protect,
});

}  // namespace
}  // namespace TarnixTools::cli
