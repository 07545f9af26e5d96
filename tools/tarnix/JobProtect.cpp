#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Failure.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfProtectTask.h"
#include "Rights.h"

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
    {.name = "owner-password",
     .kind = ValueKind::Text,
     .argument = "PW",
     .help = "another password, for everything (default: the new password)"},
    {.name = "deny",
     .kind = ValueKind::Text,
     .argument = "print,copy,edit,annotate,fill,assemble",
     .help = "what needs the owner's password; any of these words, with commas between them",
     .needs = "owner-password"},
};

JobResult Protect(JobContext& context) {
  const std::uint32_t rights = RightsWithout(context.Options().Text("deny"));
  if (context.PasswordOf("new-password").empty() &&
      context.Options().Text("owner-password").empty()) {
    throw UsageError("protect needs --new-password, --new-password-file or --owner-password");
  }
  PdfProtectTask task(context.Document(), context.PasswordOf("new-password"));
  task.SetOwnerPassword(context.Options().Text("owner-password"));
  task.SetPermissions(rights);
  task.SetOutPdfName(context.OutputName());
  JobResult result = context.Run(task);
  result.password = context.PasswordOf("new-password");
  return result;
}

const JobRegistration kRegistration({
    .name = "protect",
    .summary = "put a password on a document",
    .description = "Writes the input encrypted (AES-256) with the new password "
                   "(STEM-locked.pdf).",
    .examples =
        {"tarnix protect --new-password secret letter.pdf",
         "tarnix protect --new-password read --owner-password all --deny print,copy report.pdf",
         "tarnix protect --new-password secret -o safe letter.pdf report.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-locked",
    .can_protect = false,
    .options = kOptions,
    .run = Protect,
});

}  // namespace
}  // namespace TarnixTools::cli
