#include <list>
#include <string>

#include "EachInput.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfRepairTask.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

std::string ToText(const std::string& path, const std::list<std::string>& problems) {
  std::string text = path + ": " + (problems.empty() ? "sound" : "damaged") + "\n";
  for (const std::string& problem : problems) {
    text += "  " + OneLine(problem) + "\n";
  }
  return text;
}

Json CheckOne(const JobContext& context, const Input& input, JobResult& result) {
  std::list<std::string> problems;
  const PdfDoc document = context.DocumentOf(input);
  const bool is_damaged = ForPassword([&] { return PdfRepairTask::IsDamaged(document, problems); });
  result.text += ToText(input.given, problems);
  result.exit_status = is_damaged ? kExitNo : result.exit_status;
  return {{"path", input.given}, {"damaged", is_damaged}, {"problems", problems}};
}

JobResult Check(JobContext& context) {
  return TellOfEach(context, [&](const Input& input, JobResult& result) {
    return CheckOne(context, input, result);
  });
}

const JobRegistration kRegistration({
    .name = "check",
    .summary = "tell whether documents are damaged",
    .description = "Looks through every input and lists what is wrong with it. Writes no file. The "
                   "exit status is 1 when an input is damaged. An input that fails does not stop "
                   "the others.",
    .examples = {"tarnix check report.pdf", "tarnix check letter.pdf report.pdf plan.pdf",
                 "tarnix check --json report.pdf"},
    .inputs = {.use = InputUse::Listed},
    .output = OutputKind::None,
    .engine = EngineName::Rewriting,
    .run = Check,
});

}  // namespace
}  // namespace TarnixTools::cli
