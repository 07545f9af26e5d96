#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Failure.h"
#include "Job.h"
#include "JobContext.h"
#include "NearestWord.h"
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

// Bits of ISO 32000-2, table 22. Text may always be taken out for people who cannot see it.
struct Right {
  std::string_view word;
  std::uint32_t bits;
};

constexpr std::uint32_t kAllRights = 3900;

constexpr Right kRights[] = {{"print", 4U | 2048U}, {"edit", 8U},   {"copy", 16U},
                             {"annotate", 32U},     {"fill", 256U}, {"assemble", 1024U}};

std::uint32_t RightWithout(std::string_view word) {
  std::vector<std::string> words;
  for (const Right& right : kRights) {
    if (right.word == word) {
      return ~right.bits;
    }
    words.emplace_back(right.word);
  }
  throw UsageError("--deny: '" + std::string(word) +
                   "' is none of print,copy,edit,annotate,fill,assemble" + Suggestion(word, words));
}

std::uint32_t RightsOf(const std::string& denied) {
  std::uint32_t rights = kAllRights;
  std::string_view rest = denied;
  while (!denied.empty()) {
    const std::size_t comma = rest.find(',');
    rights &= RightWithout(rest.substr(0, comma));
    if (comma == std::string_view::npos) {
      break;
    }
    rest.remove_prefix(comma + 1);
  }
  return rights;
}

JobResult Protect(JobContext& context) {
  const std::uint32_t rights = RightsOf(context.Options().Text("deny"));
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
